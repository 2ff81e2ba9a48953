// Whatever happens to a writer's tree, its replica follows: random changes, and readers that are
// lost, late or new.
#include "tests/Vok/Streams.h"

#include <gtest/gtest.h>

namespace {

using TestSupport::Bytes;
using TestSupport::expectEqual;
using TestSupport::Random;
using TestSupport::RandomTree;
using TestSupport::Replica;
using TestSupport::Source;

class StreamProperty : public testing::TestWithParam< std::uint64_t > {
};

TEST_P( StreamProperty, replicaFollowsRandomChanges )
{
   Random random( GetParam() );
   Source source;
   RandomTree tree( *source.root, random );
   Replica replica;
   for ( unsigned round = 0; round != 60; ++round ) {
      tree.changes( 1 + random.below( 30 ) );
      if ( random.oneIn( 10 ) ) {
         source.writer.resync();
      }
      const Bytes batch = source.batch();
      EXPECT_FALSE( source.writer.hasChanges() );
      ASSERT_NO_THROW( replica.read( batch ) );
      ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) ) << "round " << round;
   }
}

TEST_P( StreamProperty, lostBatchesAreRefusedAndMendedByResync )
{
   Random random( GetParam() + 1000 );
   Source source;
   RandomTree tree( *source.root, random );
   Replica replica;
   bool lost = true;
   for ( unsigned round = 0; round != 60; ++round ) {
      tree.changes( 1 + random.below( 20 ) );
      const bool whole = round == 0 || random.oneIn( 6 );
      if ( whole ) {
         source.writer.resync();
      }
      const Bytes batch = source.batch();
      if ( batch.empty() ) {
         continue;
      }
      if ( random.oneIn( 4 ) ) {
         lost = true;
         continue;
      }
      if ( lost && !whole ) {
         const auto before = Vok::treeDigest( *replica.root );
         EXPECT_THROW( replica.read( batch ), Vok::NboAttrLog::Exception );
         EXPECT_EQ( before, Vok::treeDigest( *replica.root ) );
         continue;
      }
      lost = false;
      ASSERT_NO_THROW( replica.read( batch ) );
      ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) ) << "round " << round;
   }
}

TEST_P( StreamProperty, anotherWriterTakesOverTheReplica )
{
   Random random( GetParam() + 2000 );
   Replica replica;
   for ( unsigned restart = 0; restart != 5; ++restart ) {
      Source source;
      RandomTree tree( *source.root, random );
      for ( unsigned round = 0; round != 5; ++round ) {
         tree.changes( random.below( 60 ) );
         const Bytes batch = source.batch();
         ASSERT_NO_THROW( replica.read( batch ) );
         ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
      }
   }
}

INSTANTIATE_TEST_SUITE_P( Seeds, StreamProperty, testing::Range< std::uint64_t >( 1, 41 ) );

} // namespace
