// Thousands of schedules: writers and readers, connections that break, stall and deliver a byte at
// a time, processes that end, a disk that is slow and fails, all drawn from a seed that a failure
// prints. At any moment a reader has a state that its writer had, and never an older one than
// before; what was acknowledged of a kept mount outlives the store; in the end every reader has the
// last state.
#include "Vok/detail/Hash.h"
#include "tests/store/TestKeeper.h"
#include "tests/store/World.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

using Corvo::Ptr;
using ::Test::Root;
using TestSupport::Mounts;
using TestSupport::Random;
using TestSupport::RandomTree;
using TestSupport::settle;
using TestSupport::TestClient;
using TestSupport::TestKeeper;
using TestSupport::TestStore;
using Vok::Store::Reading;
using Vok::Store::Writing;

/// A process that writes one tree. What it wrote last is told by two attributes that always change
/// together.
struct WriterProcess {
   WriterProcess( TestStore & store, const std::string & path, std::uint32_t & clock )
         : client( store, "writer of " + path ),
           count( clock )
   {
      stamp();
      writing = client.client.write( path, root, true );
   }

   void stamp()
   {
      ++count;
      root->bigIs( count );
      root->ratioIs( static_cast< double >( count ) );
   }

   /// Takes note of what the store has.
   void look()
   {
      if ( writing->settled() ) {
         acknowledged = root->big();
      }
   }

   TestClient client;
   std::uint32_t & count; // goes on when the process begins anew
   std::uint64_t acknowledged = 0; // what the store had for certain
   Ptr< Root > root = Root::RootIs( "writer" );
   std::unique_ptr< Writing > writing;
};

/// A process that reads all trees.
struct ReaderProcess {
   explicit ReaderProcess( TestStore & store )
         : client( store, "reader" ),
           reading( client.client.read( "*/tree", mounts ) )
   {
   }

   void check()
   {
      for ( const auto & [ path, tree ] : mounts.roots ) {
         const auto & root = static_cast< const Root & >( *tree );
         const auto stamp = static_cast< double >( root.big() );
         ASSERT_EQ( stamp, root.ratio() ) << "half a batch of " << path;
         ASSERT_GE( root.big(), newest[ path ] ) << "an older state of " << path;
         newest[ path ] = root.big();
      }
      ASSERT_TRUE( mounts.failures.empty() ) << mounts.failures.front();
   }

   Mounts mounts;
   TestClient client;
   std::unique_ptr< Reading > reading;
   std::map< std::string, std::uint64_t > newest;
};

class Simulation {
 public:
   explicit Simulation( std::uint64_t seed ) : random_( seed )
   {
      keeper_.slow = true;
      for ( std::size_t i = 0; i != 2; ++i ) {
         writers_.push_back( newWriter( i ) );
         readers_.push_back( std::make_unique< ReaderProcess >( store_ ) );
      }
   }

   void run( unsigned steps )
   {
      for ( unsigned i = 0; i != steps; ++i ) {
         step();
         if ( testing::Test::HasFatalFailure() ) {
            return;
         }
      }
      end();
   }

 private:
   std::unique_ptr< WriterProcess > newWriter( std::size_t i )
   {
      return std::make_unique< WriterProcess >( store_, paths[ i ], counts_[ i ] );
   }

   void step()
   {
      store_.clock.advance( std::chrono::milliseconds( random_.below( 20 ) ) );
      const std::size_t one = random_.below( 2 );
      if ( random_.oneIn( 200 ) ) {
         restart( one );
         return;
      }
      if ( random_.oneIn( 3 ) ) {
         RandomTree( *writers_[ one ]->root, random_ ).changes( 1 + random_.below( 4 ) );
         writers_[ one ]->stamp();
      }
      if ( random_.oneIn( 2 ) ) {
         writers_[ one ]->client.client.flush();
      }
      move( writers_[ one ]->client );
      if ( random_.oneIn( 2 ) ) {
         store_.server->publish();
      }
      if ( random_.oneIn( 2 ) ) {
         keeper_.problem = random_.oneIn( 10 ) ? "the disk is full" : "";
         keeper_.work( random_.below( 3 ) );
         store_.server->keepAgain();
      }
      move( readers_[ random_.below( 2 ) ]->client );
      for ( const auto & writer : writers_ ) {
         writer->look();
      }
      for ( const auto & reader : readers_ ) {
         reader->check();
      }
   }

   /// A process ends, and another takes its place.
   void restart( std::size_t one )
   {
      std::uint64_t acknowledged = 0;
      switch ( random_.below( 3 ) ) {
      case 0:
         for ( const auto & writer : writers_ ) {
            writer->client.disconnect();
         }
         for ( const auto & reader : readers_ ) {
            reader->client.disconnect();
         }
         crash();
         break;
      case 1:
         writers_[ one ]->client.disconnect();
         acknowledged = writers_[ one ]->acknowledged;
         writers_[ one ] = newWriter( one );
         writers_[ one ]->acknowledged = acknowledged;
         break;
      default:
         readers_[ one ]->client.disconnect();
         readers_[ one ] = std::make_unique< ReaderProcess >( store_ );
         break;
      }
   }

   void crash()
   {
      const WriterProcess & kept = *writers_[ 1 ];
      store_.server.reset();
      keeper_.crash( random_.below( 3 ) );
      store_.restart();
      ASSERT_TRUE( keeper_.aside.empty() ) << keeper_.aside.begin()->second;
      // What the writer was told last that the store has, it has.
      const auto at = keeper_.disk.find( paths[ 1 ] );
      if ( at == keeper_.disk.end() ) {
         EXPECT_EQ( kept.acknowledged, 0U );
         return;
      }
      const Ptr< Root > root = Root::RootIs( "kept" );
      Vok::EntityVokNboAttrLogReader reader( root );
      for ( const auto & batch : at->second.batches ) {
         Vok::NboAttrLog::In in( batch );
         reader.read( in );
      }
      ASSERT_GE( root->big(), kept.acknowledged ) << "an acknowledged state is lost";
   }

   void move( TestClient & client )
   {
      if ( !client.connected() ) {
         if ( random_.oneIn( 4 ) ) {
            client.connect();
         }
      } else if ( random_.oneIn( 60 ) ) {
         client.disconnect();
      } else {
         const std::size_t most = random_.oneIn( 3 ) ? 1 + random_.below( 40 ) : 100000;
         if ( random_.oneIn( 2 ) ) {
            client.toStore( most );
         }
         if ( random_.oneIn( 2 ) ) {
            client.toClient( most );
         }
      }
   }

   void end()
   {
      keeper_.slow = false;
      keeper_.problem.clear();
      keeper_.work( std::size_t( -1 ) );
      store_.server->publish();
      store_.server->keepAgain();
      std::vector< TestClient * > clients;
      for ( const auto & writer : writers_ ) {
         clients.push_back( &writer->client );
      }
      for ( const auto & reader : readers_ ) {
         clients.push_back( &reader->client );
      }
      for ( TestClient * const client : clients ) {
         if ( !client->connected() ) {
            client->connect();
         }
      }
      settle( store_, clients );
      for ( const auto & reader : readers_ ) {
         reader->check();
         for ( std::size_t i = 0; i != writers_.size(); ++i ) {
            EXPECT_TRUE( writers_[ i ]->writing->settled() )
                  << paths[ i ] << writers_[ i ]->writing->refusal()
                  << writers_[ i ]->writing->problem();
            const std::string path = paths[ i ];
            ASSERT_TRUE( reader->mounts.roots.contains( path ) );
            EXPECT_EQ( Vok::treeDigest( *reader->mounts.roots[ path ] ),
                  Vok::treeDigest( *writers_[ i ]->root ) );
            EXPECT_FALSE( reader->mounts.states[ path ].stale );
         }
      }
   }

   /// The second one is kept.
   static constexpr const char * paths[] = { "passing/tree", "kept/tree" };

   Random random_;
   TestKeeper keeper_;
   TestStore store_{ { .keeper = &keeper_ } };
   std::uint32_t counts_[ 2 ] = { 0, 0 };
   std::vector< std::unique_ptr< WriterProcess > > writers_;
   std::vector< std::unique_ptr< ReaderProcess > > readers_;
};

/// SIMULATION_SCHEDULES says how many, for more than the suite has time for.
TEST( SimulationTest, everyScheduleEndsWithWhatWasWritten )
{
   const char * const told = std::getenv( "SIMULATION_SCHEDULES" );
   const std::uint64_t schedules = told ? std::stoull( told ) : 1000;
   for ( std::uint64_t seed = 0; seed != schedules; ++seed ) {
      Vok::Detail::pinHashSeed( { seed, seed << 32 | 1 } ); // batches are of the same bytes, too
      Simulation( seed ).run( 300 );
      ASSERT_FALSE( testing::Test::HasFailure() ) << "seed " << seed;
   }
}

} // namespace
