// Mounts that outlive the store: nothing is shown or acknowledged that is not kept, and what is
// kept comes back.
#include "tests/store/TestKeeper.h"
#include "tests/store/World.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using Corvo::Ptr;
using ::Test::Root;
using TestSupport::Mounts;
using TestSupport::settle;
using TestSupport::TestClient;
using TestSupport::TestKeeper;
using TestSupport::TestStore;
using Vok::Store::Reading;
using Vok::Store::Writing;

/// A writer of a kept mount and a reader of it.
class KeptTest : public testing::Test {
 protected:
   KeptTest()
   {
      writer.connect();
      reader.connect();
   }

   void settled() { settle( store, { &writer, &reader, &other } ); }

   Root & replica() { return static_cast< Root & >( *mounts.roots.at( "kept/tree" ) ); }

   /// The process of the store ends, and what was on its way to the disk is not kept.
   void crash( std::size_t done = 0 )
   {
      writer.disconnect();
      reader.disconnect();
      other.disconnect();
      store.server.reset();
      keeper.crash( done );
      store.restart();
   }

   TestKeeper keeper;
   TestStore store{ { .keeper = &keeper } };
   Mounts mounts;
   TestClient writer{ store, "the writer" };
   TestClient reader{ store, "the reader" };
   TestClient other{ store, "another" };
   Ptr< Root > root = Root::RootIs( "root" );
   std::unique_ptr< Writing > writing = writer.client.write( "kept/tree", root );
   std::unique_ptr< Reading > reading = reader.client.read( "kept/tree", mounts );
};

TEST_F( KeptTest, aBatchIsShownAndAcknowledgedOnceItIsKept )
{
   keeper.slow = true;
   root->midIs( 1 );
   settled();
   EXPECT_TRUE( writing->open() );
   EXPECT_FALSE( writing->settled() );
   EXPECT_FALSE( mounts.roots.contains( "kept/tree" ) );
   keeper.work( 1 );
   settled();
   EXPECT_TRUE( writing->settled() );
   EXPECT_EQ( replica().mid(), 1 );
   root->midIs( 2 );
   settled();
   EXPECT_FALSE( writing->settled() );
   EXPECT_EQ( replica().mid(), 1 );
   keeper.work( 1 );
   settled();
   EXPECT_TRUE( writing->settled() );
   EXPECT_EQ( replica().mid(), 2 );
}

TEST_F( KeptTest, whatChangesWhileABatchIsKeptGoesInTheNextOne )
{
   settled();
   keeper.slow = true;
   for ( std::uint16_t i = 0; i != 100; ++i ) {
      root->midIs( i );
      settled();
   }
   EXPECT_EQ( keeper.waiting.size(), 1U );
   keeper.slow = false;
   keeper.work( 1 );
   settled();
   EXPECT_TRUE( writing->settled() );
   EXPECT_EQ( keeper.batches, 3U ); // the tree, the first change, the last one
   EXPECT_EQ( replica().mid(), 99 );
}

TEST_F( KeptTest, aNewReaderIsNotShownWhatIsNotKeptYet )
{
   root->midIs( 1 );
   settled();
   keeper.slow = true;
   root->midIs( 2 );
   settled();
   Mounts late;
   other.connect();
   const auto again = other.client.read( "*/*", late );
   settled();
   EXPECT_FALSE( late.roots.contains( "kept/tree" ) );
   keeper.work( 1 );
   settled();
   EXPECT_EQ( static_cast< Root & >( *late.roots.at( "kept/tree" ) ).mid(), 2 );
}

TEST_F( KeptTest, aProblemStopsAcknowledgementsAndIsTold )
{
   root->midIs( 1 );
   settled();
   keeper.problem = "the disk is full";
   root->midIs( 2 );
   settled();
   EXPECT_FALSE( writing->settled() );
   EXPECT_EQ( writing->problem(), "the disk is full" );
   EXPECT_EQ( mounts.states[ "kept/tree" ].problem, "the disk is full" );
   EXPECT_EQ( store.server->mounts().front().problem, "the disk is full" );
   EXPECT_EQ( replica().mid(), 1 );
   root->midIs( 3 );
   store.server->keepAgain();
   settled();
   EXPECT_FALSE( writing->settled() );
   keeper.problem.clear();
   store.server->keepAgain();
   settled();
   EXPECT_TRUE( writing->settled() );
   EXPECT_EQ( writing->problem(), "" );
   EXPECT_EQ( mounts.states[ "kept/tree" ].problem, "" );
   EXPECT_EQ( replica().mid(), 3 );
   crash();
   reader.connect();
   settled();
   EXPECT_EQ( replica().mid(), 3 );
}

TEST_F( KeptTest, aWriterThatComesDuringAProblemIsTold )
{
   settled();
   keeper.problem = "the disk is full";
   root->midIs( 2 );
   settled();
   writer.disconnect();
   writer.connect();
   settled();
   EXPECT_FALSE( writing->open() );
   EXPECT_EQ( writing->problem(), "the disk is full" );
   keeper.problem.clear();
   store.server->keepAgain();
   settled();
   EXPECT_TRUE( writing->settled() );
   EXPECT_EQ( writing->problem(), "" );
   EXPECT_EQ( replica().mid(), 2 );
}

TEST_F( KeptTest, aStoreThatBeginsAnewHasWhatWasKept )
{
   root->midIs( 1 );
   root->treeIs( "t" )->depthIs( 3 );
   settled();
   root->midIs( 2 );
   settled();
   const Ptr< ::Test::Tree > tree = replica().tree( "t" );
   crash();
   reader.connect();
   other.connect();
   Mounts fresh;
   const auto again = other.client.read( "kept/*", fresh );
   settled();
   EXPECT_EQ( Vok::treeDigest( *fresh.roots.at( "kept/tree" ) ), Vok::treeDigest( *root ) );
   EXPECT_TRUE( fresh.states[ "kept/tree" ].stale );
   EXPECT_EQ( fresh.states[ "kept/tree" ].writer, "the writer" );
   EXPECT_EQ( replica().tree( "t" ), tree ); // of the reader that was there before
   root->midIs( 5 );
   writer.connect();
   settled();
   EXPECT_EQ( replica().mid(), 5 );
   EXPECT_EQ( replica().tree( "t" ), tree );
   EXPECT_FALSE( mounts.states[ "kept/tree" ].stale );
   crash();
   reader.connect();
   settled();
   EXPECT_EQ( replica().mid(), 5 );
}

TEST_F( KeptTest, whatWasKeptStaysThoughAWriterComesAndGoesWithoutAWord )
{
   root->midIs( 1 );
   settled();
   crash();
   reader.connect();
   settled();
   writer.connect();
   while ( store.server->mounts().front().stale && writer.toStore( 1 ) ) {
   }
   ASSERT_FALSE( store.server->mounts().front().stale );
   writer.disconnect();
   settled();
   ASSERT_EQ( store.server->mounts().size(), 1U );
   EXPECT_TRUE( mounts.gone.empty() );
   EXPECT_EQ( replica().mid(), 1 );
}

TEST_F( KeptTest, aWriterThatComesBackDuringABatchGoesOnBehindIt )
{
   settled();
   keeper.slow = true;
   root->midIs( 2 );
   settled();
   writer.disconnect();
   root->midIs( 3 );
   writer.connect();
   settled();
   EXPECT_FALSE( writing->open() );
   keeper.slow = false;
   keeper.work( 1 );
   settled();
   EXPECT_TRUE( writing->settled() );
   EXPECT_EQ( replica().mid(), 3 );
}

TEST_F( KeptTest, whatIsNotAcknowledgedMayBeKeptAllTheSame )
{
   root->midIs( 1 );
   settled();
   keeper.slow = true;
   root->midIs( 2 );
   settled();
   crash( 1 );
   reader.connect();
   settled();
   EXPECT_EQ( replica().mid(), 2 );
}

TEST_F( KeptTest, whatIsKeptStaysInProportionToTheTree )
{
   for ( std::uint32_t i = 0; i != 2000; ++i ) {
      root->namesIs( i, "a member that is there from the first batch on, and stays" );
   }
   settled();
   const std::size_t tree = keeper.bytes( "kept/tree" );
   for ( std::uint32_t i = 0; i != 5000; ++i ) {
      root->namesIs( i % 10, "a text that changes again and again: " + std::to_string( i ) );
      settled();
      ASSERT_LE( keeper.bytes( "kept/tree" ), 2 * tree + 1000 );
   }
   crash();
   reader.connect();
   settled();
   EXPECT_EQ( Vok::treeDigest( replica() ), Vok::treeDigest( *root ) );
}

TEST_F( KeptTest, aMountThatIsRemovedIsNotKept )
{
   settled();
   EXPECT_TRUE( keeper.disk.contains( "kept/tree" ) );
   writing->remove();
   writing.reset();
   settled();
   EXPECT_TRUE( keeper.disk.empty() );
}

TEST_F( KeptTest, otherPathsAreNotKept )
{
   const auto more = writer.client.write( "passing/tree", Root::RootIs( "passing" ) );
   settled();
   EXPECT_EQ( keeper.disk.size(), 1U );
   EXPECT_TRUE( keeper.disk.contains( "kept/tree" ) );
}

TEST_F( KeptTest, whatMakesNoSenseIsSetAsideAndTheRestIsServed )
{
   root->midIs( 7 );
   settled();
   const auto & good = keeper.disk[ "kept/tree" ];
   auto odd = good;
   odd.path = "kept/cut";
   odd.batches.front().pop_back();
   keeper.disk[ odd.path ] = odd;
   odd = good;
   odd.path = "kept/type";
   odd.type = "Test::NoSuchThing";
   keeper.disk[ odd.path ] = odd;
   odd = good;
   odd.path = "kept//path";
   keeper.disk[ odd.path ] = odd;
   crash();
   reader.connect();
   Mounts all;
   const auto again = reader.client.read( "kept/*", all );
   settled();
   EXPECT_EQ( all.roots.size(), 1U );
   EXPECT_EQ( static_cast< Root & >( *all.roots.at( "kept/tree" ) ).mid(), 7 );
   ASSERT_EQ( keeper.aside.size(), 3U );
   EXPECT_EQ( keeper.aside[ "kept/type" ], "the store knows no entity type Test::NoSuchThing" );
   EXPECT_NE( keeper.aside[ "kept/cut" ], "" );
   EXPECT_NE( keeper.aside[ "kept//path" ], "" );
}

} // namespace
