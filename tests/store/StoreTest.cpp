// What the store promises to writers and readers, rule by rule.
#include "tests/store/World.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <numeric>
#include <span>
#include <string>
#include <vector>

namespace {

using Corvo::Ptr;
using ::Test::Root;
using TestSupport::Mounts;
using TestSupport::settle;
using TestSupport::TestClient;
using TestSupport::TestStore;
using Vok::Store::PathException;
using Vok::Store::Reading;
using Vok::Store::Writing;

/// A writer of one mount and a reader of it.
class StoreTest : public testing::Test {
 protected:
   StoreTest()
   {
      writer.connect();
      reader.connect();
   }

   void settled() { settle( store, { &writer, &reader, &other } ); }

   Root & replica( const std::string & path = "a/tree" )
   {
      return static_cast< Root & >( *mounts.roots.at( path ) );
   }

   TestStore store;
   Mounts mounts;
   TestClient writer{ store, "the writer" };
   TestClient reader{ store, "the reader" };
   TestClient other{ store, "another" };
   Ptr< Root > root = Root::RootIs( "root" );
   std::unique_ptr< Writing > writing = writer.client.write( "a/tree", root );
   std::unique_ptr< Reading > reading = reader.client.read( "a/tree", mounts );
};

TEST_F( StoreTest, aReaderHasWhatTheWriterHas )
{
   root->midIs( 5 );
   settled();
   EXPECT_TRUE( writing->open() );
   EXPECT_TRUE( writing->settled() );
   EXPECT_EQ( replica().mid(), 5 );
   root->midIs( 6 );
   root->treeIs( "t" )->depthIs( 3 );
   EXPECT_FALSE( writing->settled() );
   settled();
   EXPECT_TRUE( writing->settled() );
   EXPECT_EQ( Vok::treeDigest( replica() ), Vok::treeDigest( *root ) );
   EXPECT_EQ( reading->root( "a/tree" ).get(), &replica() );
   EXPECT_FALSE( mounts.states[ "a/tree" ].stale );
   EXPECT_EQ( mounts.states[ "a/tree" ].writer, "the writer" );
   EXPECT_TRUE( mounts.failures.empty() );
}

TEST_F( StoreTest, aMountIsShownOnceItsWriterHasToldIt )
{
   TestClient silent( store, "silent" );
   silent.connect();
   const auto silence = silent.client.write( "b", Root::RootIs( "b" ) );
   const auto all = reader.client.read( "*", mounts );
   silent.toStore( std::size_t( -1 ) );
   settled();
   EXPECT_FALSE( mounts.roots.contains( "b" ) );
   settle( store, { &silent, &reader } );
   EXPECT_TRUE( mounts.roots.contains( "b" ) );
}

/// Whoever was told of it in a list would wait for its tree for ever.
TEST_F( StoreTest, aMountOfWhichNothingWasToldGoesWithItsWriter )
{
   const auto writingOther = other.client.write( "a/second", root );
   other.connect();
   while ( other.toStore( 1 ) && store.server->mounts().size() != 1 ) {
   }
   ASSERT_EQ( store.server->mounts().front().path, "a/second" );
   other.disconnect();
   EXPECT_TRUE( store.server->mounts().empty() );
   settled();
   EXPECT_EQ( store.server->mounts().size(), 1U );
   other.connect();
   settled();
   EXPECT_EQ( store.server->mounts().size(), 2U );
   other.disconnect();
   EXPECT_EQ( store.server->mounts().size(), 2U );
}

TEST_F( StoreTest, patternsMatchMountsThatComeLater )
{
   const auto all = reader.client.read( "x/*/y", mounts );
   settled();
   const auto one = writer.client.write( "x/1/y", Root::RootIs( "1" ) );
   const auto two = writer.client.write( "x/2/y", Root::RootIs( "2" ) );
   const auto no = writer.client.write( "x/2/z", Root::RootIs( "3" ) );
   settled();
   EXPECT_EQ( mounts.roots.size(), 3U );
   EXPECT_TRUE( mounts.roots.contains( "x/1/y" ) );
   EXPECT_TRUE( mounts.roots.contains( "x/2/y" ) );
   EXPECT_THROW( reader.client.read( "x//y", mounts ), PathException );
   EXPECT_THROW( writer.client.write( "x/*", root ), PathException );
}

TEST_F( StoreTest, aSecondWriterIsRefused )
{
   settled();
   other.connect();
   const auto second = other.client.write( "a/tree", Root::RootIs( "second" ) );
   settled();
   EXPECT_FALSE( second->open() );
   EXPECT_EQ( second->refusal(), "a/tree is written by the writer" );
   root->midIs( 7 );
   settled();
   EXPECT_EQ( replica().mid(), 7 );
}

TEST_F( StoreTest, aWriterTakesOverWhereItAsksTo )
{
   root->midIs( 7 );
   root->treeIs( "stays" );
   settled();
   const Ptr< ::Test::Tree > before = replica().tree( "stays" );
   const Ptr< Root > root2 = Root::RootIs( "second" );
   root2->midIs( 8 );
   root2->treeIs( "stays" );
   other.connect();
   const auto second = other.client.write( "a/tree", root2, true );
   settled();
   EXPECT_TRUE( second->open() );
   EXPECT_FALSE( writing->open() );
   EXPECT_EQ( writing->refusal(), "a/tree is taken over by another" );
   EXPECT_EQ( replica().mid(), 8 );
   EXPECT_EQ( replica().tree( "stays" ), before );
   EXPECT_EQ( mounts.states[ "a/tree" ].writer, "another" );
   root->midIs( 9 );
   settled();
   EXPECT_EQ( replica().mid(), 8 );
}

TEST_F( StoreTest, anotherTypeIsRefused )
{
   settled();
   other.connect();
   const auto odd = other.client.write( "a/tree", ::Test::Tree::TreeIs( "t" ), true );
   settled();
   EXPECT_EQ( odd->refusal(), "a/tree is a Test::Root, not a Test::Tree" );
   EXPECT_TRUE( writing->open() );
}

TEST_F( StoreTest, aMountWithoutItsWriterIsReadableAndStale )
{
   root->midIs( 3 );
   settled();
   store.clock.advance( std::chrono::milliseconds( 500 ) );
   writer.disconnect();
   settled();
   EXPECT_TRUE( mounts.states[ "a/tree" ].stale );
   EXPECT_EQ( mounts.states[ "a/tree" ].since, 1500U );
   EXPECT_EQ( replica().mid(), 3 );
   Mounts late;
   other.connect();
   const auto again = other.client.read( "a/tree", late );
   settled();
   EXPECT_TRUE( late.states.at( "a/tree" ).stale );
   EXPECT_EQ( late.states.at( "a/tree" ).writer, "the writer" );
   EXPECT_EQ( Vok::treeDigest( *late.roots.at( "a/tree" ) ), Vok::treeDigest( *root ) );
}

TEST_F( StoreTest, aWriterThatComesBackTellsWhatChanged )
{
   for ( std::uint32_t i = 0; i != 10000; ++i ) {
      root->namesIs( i, "a member of the map" );
   }
   settled();
   writer.disconnect();
   root->namesIs( 5, "another" );
   root->namesDel( 6 );
   settled();
   reader.received = 0;
   writer.connect();
   settled();
   EXPECT_TRUE( writing->settled() );
   EXPECT_LT( reader.received, 500U );
   EXPECT_EQ( Vok::treeDigest( replica() ), Vok::treeDigest( *root ) );
   EXPECT_FALSE( mounts.states[ "a/tree" ].stale );
}

TEST_F( StoreTest, aReaderThatComesBackIsToldWhatItMissed )
{
   for ( std::uint32_t i = 0; i != 10000; ++i ) {
      root->namesIs( i, "a member of the map" );
   }
   root->treeIs( "t" );
   settled();
   const Ptr< ::Test::Tree > tree = replica().tree( "t" );
   reader.disconnect();
   for ( std::uint32_t i = 0; i != 5000; ++i ) {
      root->namesIs( i % 10, std::to_string( i ) );
      settled();
   }
   root->namesDel( 3 );
   settled();
   reader.received = 0;
   reader.connect();
   settled();
   EXPECT_LT( reader.received, 1000U );
   EXPECT_EQ( replica().tree( "t" ), tree );
   EXPECT_EQ( Vok::treeDigest( replica() ), Vok::treeDigest( *root ) );
}

TEST_F( StoreTest, aReaderThatDoesNotReadIsBehindAndNobodyWaits )
{
   settled();
   const std::string text( 1000, 'x' );
   for ( std::uint32_t i = 0; i != 2000; ++i ) {
      root->namesIs( i % 20, text + std::to_string( i ) );
      settle( store, { &writer } ); // nothing reaches the reader
   }
   EXPECT_TRUE( writing->settled() );
   reader.received = 0;
   settled();
   EXPECT_LT( reader.received, 200000U ); // of two million
   EXPECT_EQ( Vok::treeDigest( replica() ), Vok::treeDigest( *root ) );
}

/// Whoever writes faster than the store takes it keeps no queue: one batch says what is.
TEST_F( StoreTest, aStoreThatDoesNotTakeWhatIsWrittenIsToldWhatIsInTheEnd )
{
   settled();
   const auto write = [ & ]( int first ) {
      for ( int i = 0; i != 10000; ++i ) {
         root->midIs( static_cast< std::uint16_t >( first + i % 7 ) );
         writer.client.flush();
      }
   };
   const auto waiting = [ & ] {
      std::vector< std::span< const std::byte > > pieces( 1000 );
      pieces.resize( writer.wire.outputs( pieces ) );
      return std::accumulate( pieces.begin(), pieces.end(), std::size_t{ 0 },
            []( std::size_t sum, const auto & piece ) { return sum + piece.size(); } );
   };
   write( 1 );
   const std::size_t waits = waiting();
   EXPECT_GE( waits, 4096U );
   EXPECT_LT( waits, 3 * 4096U ); // with the heads of messages
   write( 10 );
   EXPECT_EQ( waiting(), waits );
   const std::uint64_t before = store.server->counters().batchesIn;
   root->midIs( 100 );
   settled();
   EXPECT_EQ( replica().mid(), 100 );
   EXPECT_LT( store.server->counters().batchesIn - before, 200U );
   EXPECT_TRUE( writing->settled() );
   root->midIs( 101 ); // what was acknowledged is not under way any more
   writer.client.flush();
   EXPECT_GT( waiting(), 0U );
}

TEST_F( StoreTest, aMountThatIsRemovedIsGone )
{
   settled();
   writing->remove();
   writing.reset();
   settled();
   EXPECT_EQ( mounts.gone, std::vector< std::string >{ "a/tree" } );
   EXPECT_EQ( reading->root( "a/tree" ), nullptr );
   EXPECT_TRUE( store.server->mounts().empty() );
}

TEST_F( StoreTest, theStoreListsItsMounts )
{
   settled();
   const auto list = store.server->mounts();
   ASSERT_EQ( list.size(), 1U );
   EXPECT_EQ( list[ 0 ].path, "a/tree" );
   EXPECT_EQ( list[ 0 ].type, "Test::Root" );
   EXPECT_EQ( list[ 0 ].writer, "the writer" );
   EXPECT_FALSE( list[ 0 ].stale );
   EXPECT_EQ( list[ 0 ].readers, 1U );
}

TEST_F( StoreTest, whatMakesNoSenseEndsItsConnectionAndNoOther )
{
   settled();
   const auto session = store.server->connected();
   session->receive( std::as_bytes( std::span( "GET / HTTP/1.1\r\n\r\n" ) ) );
   EXPECT_TRUE( session->finished() );
   EXPECT_FALSE( session->output().empty() );
   root->midIs( 9 );
   settled();
   EXPECT_EQ( replica().mid(), 9 );
}

TEST_F( StoreTest, aStoreThatBeginsAnewIsToldTheWholeTree )
{
   root->midIs( 4 );
   root->treeIs( "t" );
   settled();
   const Ptr< ::Test::Tree > tree = replica().tree( "t" );
   writer.disconnect();
   reader.disconnect();
   store.restart();
   root->midIs( 5 );
   reader.connect();
   settled();
   EXPECT_EQ( replica().mid(), 4 );
   writer.connect();
   settled();
   EXPECT_EQ( replica().mid(), 5 );
   EXPECT_EQ( replica().tree( "t" ), tree );
}

} // namespace
