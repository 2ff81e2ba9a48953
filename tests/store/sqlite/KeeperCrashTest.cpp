// Processes that are killed and machines that lose their power, at any moment.
#include "tests/store/sqlite/Keeping.h"
#include "tests/store/sqlite/TestDisk.h"

#include <gtest/gtest.h>

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace TestSupport;

/// What a child tells, before it asks and once it has been told.
struct Event {
   enum class Kind {
      asked,
      removing,
      kept
   };
   Kind kind = Kind::asked;
   std::uint64_t number = 0;
   bool whole = false;
   std::size_t size = 0;
   char path[ 16 ] = {};
};

/// Keeps and removes at random until it is killed.
[[noreturn]] void beTheChild( const std::string & folder, std::uint64_t seed, int out )
{
   const auto tell = [ out ]( Event event, const std::string & path ) {
      path.copy( event.path, sizeof event.path - 1 );
      if ( write( out, &event, sizeof event ) != sizeof event ) {
         _exit( 1 );
      }
   };
   Keeping one( folder );
   History history;
   if ( const auto kept = one.load(); one.keeper.results().empty() ) {
      history.found( kept );
   }
   RandomAsker asker( seed, seed * 1000000 );
   while ( true ) {
      for ( int i = 0; i != 3; ++i ) {
         const auto step = asker.next( history );
         if ( step && step->request ) {
            const auto & request = *step->request;
            tell( { Event::Kind::asked, request.number, request.whole, request.batch->size() },
                  step->path );
            one.keeper.keep( request );
         } else if ( step ) {
            tell( { Event::Kind::removing }, step->path );
            one.keeper.remove( step->path );
         }
      }
      if ( !history.idle() ) {
         for ( const auto & result : one.next() ) {
            if ( !result.problem.empty() ) {
               _exit( 2 );
            }
            tell( { Event::Kind::kept, result.number }, result.path );
            history.told( result );
         }
      }
   }
}

void take( const Event & event, History & history )
{
   switch ( event.kind ) {
   case Event::Kind::asked:
      history.asked( requestOf( event.path, event.number, event.whole, event.size ) );
      break;
   case Event::Kind::removing:
      history.removing( event.path );
      break;
   case Event::Kind::kept:
      history.told( { event.path, event.number, "" } );
      break;
   }
}

/// Takes what a child tells, and kills it after a time.
std::size_t takeAndKill( pid_t child, int in, std::chrono::microseconds time, History & history )
{
   const auto end = std::chrono::steady_clock::now() + time;
   bool killed = false;
   std::size_t acknowledged = 0;
   while ( true ) {
      if ( !killed && std::chrono::steady_clock::now() >= end ) {
         kill( child, SIGKILL );
         killed = true;
      }
      pollfd wait{ in, POLLIN, 0 };
      if ( poll( &wait, 1, killed ? -1 : 1 ) == 1 ) {
         Event event;
         if ( read( in, &event, sizeof event ) != sizeof event ) {
            return acknowledged;
         }
         take( event, history );
         acknowledged += event.kind == Event::Kind::kept ? 1U : 0U;
      }
   }
}

TEST( KeeperCrashTest, whatAKilledProcessHasKeptIsThere )
{
   const Folder folder( Folder::Where::disk ); // where what is killed may wait for it
   History history;
   std::mt19937_64 random( 11 );
   std::size_t acknowledged = 0;
   for ( std::uint64_t round = 1; round <= 80 && !HasFailure(); ++round ) {
      SCOPED_TRACE( round );
      int ends[ 2 ];
      ASSERT_EQ( pipe( ends ), 0 );
      const pid_t child = fork();
      ASSERT_GE( child, 0 );
      if ( child == 0 ) {
         close( ends[ 0 ] );
         beTheChild( folder.kept(), round, ends[ 1 ] );
      }
      close( ends[ 1 ] );
      const std::chrono::microseconds time( static_cast< long >( random() % 150000 ) );
      acknowledged += takeAndKill( child, ends[ 0 ], time, history );
      close( ends[ 0 ] );
      int status = 0;
      ASSERT_EQ( waitpid( child, &status, 0 ), child );
      EXPECT_TRUE( WIFSIGNALED( status ) ) << "it ended with " << WEXITSTATUS( status );

      Keeping later( folder.kept() );
      EXPECT_EQ( history.found( later.load() ), "" );
      const auto results = later.keeper.results();
      EXPECT_TRUE( results.empty() ) << results[ 0 ].problem;
   }
   EXPECT_GT( acknowledged, 100U );
}

// Not only where it has ended, but with the next process's changes, too.
TEST( KeeperCrashTest, whatWasKeptIsThereAfterThePowerWent )
{
   std::mt19937_64 random( 12 );
   std::size_t acknowledged = 0;
   for ( std::uint64_t round = 1; round <= 150 && !HasFailure(); ++round ) {
      SCOPED_TRACE( round );
      const Folder folder;
      TestDisk disk( round );
      History history;
      RandomAsker asker( round, 0 );
      {
         Keeping one( folder.kept(), disk );
         disk.failAt( 1 + random() % 600, TestDisk::Fault::on );
         for ( bool on = true; on; ) {
            for ( int i = 0; i != 3; ++i ) {
               const auto step = asker.next( history );
               if ( step && step->request ) {
                  one.keeper.keep( *step->request );
               } else if ( step ) {
                  one.keeper.remove( step->path );
               }
            }
            if ( history.idle() ) {
               continue;
            }
            for ( const auto & result : one.next() ) {
               history.told( result );
               acknowledged += result.problem.empty() ? 1U : 0U;
               on = on && result.problem.empty();
            }
         }
      }
      for ( int i = 0; i != 5; ++i ) {
         const std::string after = folder.path() + "/after" + std::to_string( i );
         disk.restore( folder.kept(), after, random );
         History then = history;
         TestDisk sound( 0 ); // which does not wait for syncs
         Keeping later( after, sound );
         EXPECT_EQ( then.found( later.load() ), "" );
         const auto results = later.keeper.results();
         EXPECT_TRUE( results.empty() ) << results[ 0 ].problem;
      }
   }
   EXPECT_GT( acknowledged, 1000U );
}

} // namespace
