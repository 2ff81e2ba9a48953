// Clients that are too slow, too many, or send too much. The limits hold, and who is to be gone is
// told why.
#include "tests/store/Hostile.h"
#include "tests/support/HeapMeter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <span>
#include <string>

namespace {

using namespace Vok::Store;
using std::chrono::milliseconds;
using TestSupport::bytes;
using TestSupport::frame;
using TestSupport::greeting;
using TestSupport::HostileTest;
using TestSupport::RawClient;
using TestSupport::wholeTree;

class CrowdTest : public HostileTest {};

/// The time to say who one is, short.
class GreetingTimeTest : public HostileTest {
 protected:
   static Limits shortTime()
   {
      Limits limits = HostileTest::limits();
      limits.greetingTime = milliseconds( 1500 );
      return limits;
   }

   GreetingTimeTest() : HostileTest( shortTime() ) {}

   static constexpr auto late = "the client has not said who it is within 1500 milliseconds";
};

TEST_P( GreetingTimeTest, partialFramesAndThenNothing )
{
   const Bytes whole = greeting();
   for ( const std::size_t size : { std::size_t( 0 ), std::size_t( 5 ), whole.size() - 1 } ) {
      world.raw().send( std::span( whole ).first( size ) );
   }
   for ( const auto & one : world.raws ) {
      EXPECT_EQ( endOf( *one ), late );
   }
}

TEST_P( GreetingTimeTest, aByteNowAndThen )
{
   RawClient & one = world.raw();
   for ( const std::byte & byte : greeting() ) {
      one.send( std::span( &byte, 1 ) );
      world.pass( milliseconds( 150 ) );
   }
   EXPECT_EQ( endOf( one ), late );
   EXPECT_FALSE( one.has< Welcome >() );
}

/// One who has said so takes his time.
TEST_P( GreetingTimeTest, whoHasGreetedMayBeSlow )
{
   RawClient & one = world.greeted();
   for ( const std::byte & byte : frame( OpenReader{ 1, "no pattern", {} } ) ) {
      one.send( std::span( &byte, 1 ) );
      world.pass( milliseconds( 70 ) );
   }
   EXPECT_NE( refusalOf( one, 1 ), "nothing" );
   EXPECT_FALSE( one.closed() );
}

/// What is to be gone is gone, though it neither reads nor closes.
TEST_P( CrowdTest, halfOpenConnections )
{
   for ( int i = 0; i != 20; ++i ) {
      RawClient & one = world.greeted();
      one.reading( false );
      one.send( bytes( { 'n', 'o', 'n', 'e' } ) );
   }
   EXPECT_TRUE( world.until( [ & ] { return world.server.sessions() == 2; } ) );
   EXPECT_EQ( world.listener->connections(), 2U );
}

TEST_P( CrowdTest, halfClosedConnections )
{
   for ( int i = 0; i != 20; ++i ) {
      RawClient & one = world.greeted();
      one.send( OpenWriter{ 1, "hostile", "Test::Root", true } );
      EXPECT_TRUE( world.until( [ & ] { return one.has< Opened >(); } ) );
      one.finish();
      EXPECT_TRUE( world.until( [ & ] { return one.closed(); } ) );
   }
   EXPECT_EQ( world.listener->connections(), 2U );
}

/// The system tells of it when the store reads or writes: where it writes, that must not end it.
TEST_P( CrowdTest, connectionsThatAreReset )
{
   for ( int i = 0; i != 50; ++i ) {
      RawClient & one = world.greeted();
      one.send( OpenReader{ 1, "*", {} } );
      one.step();
      one.reset();
      EXPECT_TRUE( i % 10 != 0 || bystanders.undisturbed() );
   }
}

TEST_P( CrowdTest, connectionsThatComeAndGo )
{
   for ( int i = 0; i != 300; ++i ) {
      world.raw();
      if ( i % 3 == 0 ) {
         world.until( [] { return true; } );
      }
      world.raws.clear();
   }
}

TEST_P( CrowdTest, aThousandIdleConnections )
{
   for ( int i = 0; i != 1000; ++i ) {
      world.raw().send( greeting() );
      if ( i % 100 == 99 ) {
         ASSERT_TRUE( world.until( [ & ] {
            return std::all_of( world.raws.begin(), world.raws.end(),
                  []( const auto & one ) { return one->template has< Welcome >(); } );
         } ) );
      }
   }
   EXPECT_EQ( world.listener->connections(), 1002U );
   EXPECT_TRUE( bystanders.undisturbed() );
}

/// Few connections, mounts and channels.
class FewTest : public HostileTest {
 protected:
   static Limits few()
   {
      Limits limits = HostileTest::limits();
      limits.sessions = 10;
      limits.channels = 5;
      return limits;
   }

   FewTest() : HostileTest( few() ) {}
};

TEST_P( FewTest, moreConnectionsThanThereMayBe )
{
   for ( int i = 0; i != 8; ++i ) {
      world.greeted();
   }
   RawClient & one = world.raw();
   EXPECT_EQ( endOf( one ), "the store has 10 connections, and takes no more" );
   // A crowd is not even told.
   const std::size_t most = 10 + 128;
   for ( int i = 0; i != 300; ++i ) {
      world.raw().reading( false );
      world.until( [] { return true; } );
      ASSERT_LE( world.listener->connections(), most );
   }
   EXPECT_TRUE( bystanders.undisturbed() );
   world.raws.clear();
   EXPECT_TRUE( world.until( [ & ] { return world.listener->connections() == 2; } ) );
   world.greeted();
}

TEST_P( FewTest, moreChannelsThanThereMayBe )
{
   RawClient & one = world.greeted();
   for ( std::uint32_t channel = 1; channel != 7; ++channel ) {
      one.send( OpenReader{ channel, "hostile/*", {} } );
   }
   EXPECT_EQ( refusalOf( one, 6 ), "a connection has 5 channels at most" );
}

/// A client asks and asks, and does not listen to the answers: it is not listened to either, until
/// it does.
TEST_P( CrowdTest, floods )
{
   RawClient & one = world.greeted();
   Bytes questions;
   constexpr unsigned atOnce = 1000;
   for ( unsigned i = 0; i != atOnce; ++i ) {
      const Bytes question = frame( OpenReader{ 7, "no pattern", {} } );
      questions.insert( questions.end(), question.begin(), question.end() );
   }
   one.reading( false );
   const TestSupport::HeapMeter heap;
   unsigned asked = 0;
   unsigned idle = 0; // turns in which the system took nothing
   while ( idle != 200 ) {
      const std::size_t before = one.sent();
      if ( one.unsent() == 0 ) {
         one.send( questions );
         asked += atOnce;
      }
      world.until( [] { return true; } );
      idle = one.sent() == before ? idle + 1 : 0;
      ASSERT_LT( one.sent(), std::size_t{ 64 } << 20 ) << "the store takes all";
   }
   EXPECT_LT( heap.held(), std::size_t{ 16 } << 20 );
   EXPECT_TRUE( bystanders.undisturbed() );
   one.reading( true );
   EXPECT_TRUE( world.until( [ & ] { return one.frames().size() == 1 + asked; } ) );
}

/// A reader that does not read costs the same, however often what it reads changes, and its writer
/// comes and goes.
TEST_P( CrowdTest, whoDoesNotReadWhatChanges )
{
   RawClient & writer = world.greeted();
   writer.send( OpenWriter{ 1, "hostile", "Test::Root", false } );
   writer.send( BatchPiece{ 1, 0, true, wholeTree() } );
   writer.send( Close{ 1, false } );
   RawClient & reader = world.greeted();
   reader.send( OpenReader{ 1, "**", {} } );
   ASSERT_TRUE( world.until( [ & ] { return reader.frames().size() >= 7; } ) ); // both mounts
   reader.reading( false );
   std::size_t most = 0;
   const TestSupport::HeapMeter heap;
   for ( std::uint32_t i = 0; i != 200; ++i ) {
      bystanders.root->titleIs( std::string( 50000, static_cast< char >( 'a' + i % 26 ) ) );
      for ( unsigned again = 0; again != 20; ++again ) {
         writer.send( OpenWriter{ 1, "hostile", "Test::Root", false } );
         writer.send( Close{ 1, false } );
      }
      ASSERT_TRUE( bystanders.undisturbed() );
      most = std::max( most, heap.held() );
   }
   EXPECT_LT( most, std::size_t{ 4 } << 20 );
}

INSTANTIATE_TEST_SUITE_P( Kinds, CrowdTest, TestSupport::eachKind, TestSupport::nameOf );
INSTANTIATE_TEST_SUITE_P( Kinds, GreetingTimeTest, TestSupport::eachKind, TestSupport::nameOf );
INSTANTIATE_TEST_SUITE_P( Kinds, FewTest, TestSupport::eachKind, TestSupport::nameOf );

} // namespace
