// The event loop, without the store.
#include "store/net/Loop.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <array>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <thread>

namespace {

using std::chrono::milliseconds;
using Vok::Store::Loop;
using Vok::Store::Watch;

class LoopTest : public testing::Test {
 protected:
   LoopTest() { EXPECT_EQ( pipe( ends.data() ), 0 ); }
   ~LoopTest() override
   {
      close( ends[ 0 ] );
      close( ends[ 1 ] );
   }

   void write() { EXPECT_EQ( ::write( ends[ 1 ], "x", 1 ), 1 ); }
   void read()
   {
      char one = 0;
      EXPECT_EQ( ::read( ends[ 0 ], &one, 1 ), 1 );
   }
   void turn()
   {
      for ( int i = 0; i != 3; ++i ) {
         loop.run();
      }
   }

   std::array< int, 2 > ends{};
   Loop loop;
};

TEST_F( LoopTest, watchesUntilTheWatchEnds )
{
   unsigned called = 0;
   auto watch = loop.watch( ends[ 0 ], [ & ] {
      ++called;
      read();
   } );
   turn();
   EXPECT_EQ( called, 0U );
   for ( unsigned i = 1; i != 4; ++i ) {
      write();
      turn();
      EXPECT_EQ( called, i );
   }
   watch.reset();
   write();
   turn();
   EXPECT_EQ( called, 3U );
}

TEST_F( LoopTest, whatIsNotReadIsToldAgain )
{
   unsigned called = 0;
   const auto watch = loop.watch( ends[ 0 ], [ & ] { ++called; } );
   write();
   turn();
   EXPECT_GE( called, 2U );
}

TEST_F( LoopTest, aWatchMayEndItself )
{
   std::unique_ptr< Watch > watch;
   unsigned called = 0;
   watch = loop.watch( ends[ 0 ], [ & ] {
      ++called;
      watch.reset();
   } );
   write();
   turn();
   EXPECT_EQ( called, 1U );
}

TEST_F( LoopTest, whatAWatchThrowsComesOut )
{
   const auto watch = loop.watch( ends[ 0 ], [] { throw std::runtime_error( "thrown" ); } );
   write();
   EXPECT_THROW( turn(), std::runtime_error );
}

TEST_F( LoopTest, filesCannotBeWatched )
{
   EXPECT_THROW( loop.watch( -1, [] {} ), std::system_error );
   std::FILE * const file = std::tmpfile();
   EXPECT_THROW( loop.watch( fileno( file ), [] {} ), std::system_error );
   std::fclose( file );
}

TEST_F( LoopTest, waitsNoLongerThanItIsTold )
{
   EXPECT_FALSE( loop.runUntil( [] { return false; }, milliseconds( 10 ) ) );
   EXPECT_TRUE( loop.runUntil( [] { return true; }, milliseconds( 0 ) ) );
   loop.run();
   EXPECT_EQ( loop.timeout(), Loop::never );
}

/// Where nothing else comes, only that ends it.
TEST_F( LoopTest, aDeadlineThatPassesBeforeItWaitsEndsIt )
{
   const auto watch = loop.watch( ends[ 0 ], [] {} );
   const auto slow = [] {
      std::this_thread::sleep_for( milliseconds( 30 ) );
      return false;
   };
   EXPECT_FALSE( loop.runUntil( slow, milliseconds( 5 ) ) );
}

} // namespace
