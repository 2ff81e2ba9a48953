// Whatever happens to a writer's tree, its replica follows: random changes, and readers that are
// lost, late or new.
#include "tests/Vok/RandomTree.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using TestSupport::describeTree;
using TestSupport::Random;
using TestSupport::RandomTree;
using Vok::NboAttrLog::In;
using Vok::NboAttrLog::Out;

/// A replica and its reader.
struct Replica {
   Corvo::Ptr< ::Test::Root > root = ::Test::Root::RootIs( "replica" );
   Vok::EntityVokNboAttrLogReader reader{ root };

   void read( const Out & out )
   {
      In in( out.data(), out.size() );
      while ( in.remaining() != 0 ) {
         reader.read( in );
      }
   }
};

void expectEqual( const ::Test::Root & writer, const ::Test::Root & replica )
{
   ASSERT_EQ( describeTree( writer ), describeTree( replica ) );
   ASSERT_EQ( Vok::treeDigest( writer ).text(), Vok::treeDigest( replica ).text() );
}

class StreamProperty : public testing::TestWithParam< std::uint64_t > {
};

TEST_P( StreamProperty, replicaFollowsRandomChanges )
{
   Random random( GetParam() );
   const auto root = ::Test::Root::RootIs( "writer" );
   RandomTree tree( *root, random );
   Vok::EntityVokNboAttrLogSa writer( root );
   Replica replica;
   for ( unsigned batch = 0; batch != 60; ++batch ) {
      tree.changes( 1 + random.below( 30 ) );
      if ( random.oneIn( 10 ) ) {
         writer.resync();
      }
      Out out;
      writer.write( out );
      EXPECT_FALSE( writer.hasChanges() );
      ASSERT_NO_THROW( replica.read( out ) );
      ASSERT_NO_FATAL_FAILURE( expectEqual( *root, *replica.root ) ) << "batch " << batch;
   }
}

TEST_P( StreamProperty, lostBatchesAreRefusedAndMendedByResync )
{
   Random random( GetParam() + 1000 );
   const auto root = ::Test::Root::RootIs( "writer" );
   RandomTree tree( *root, random );
   Vok::EntityVokNboAttrLogSa writer( root );
   Replica replica;
   bool lost = true;
   for ( unsigned batch = 0; batch != 60; ++batch ) {
      tree.changes( 1 + random.below( 20 ) );
      const bool whole = batch == 0 || random.oneIn( 6 );
      if ( whole ) {
         writer.resync();
      }
      Out out;
      writer.write( out );
      if ( out.size() == 0 ) {
         continue;
      }
      if ( random.oneIn( 4 ) ) {
         lost = true;
         continue;
      }
      if ( lost && !whole ) {
         const auto before = Vok::treeDigest( *replica.root );
         EXPECT_THROW( replica.read( out ), Vok::NboAttrLog::Exception );
         EXPECT_EQ( before, Vok::treeDigest( *replica.root ) );
         continue;
      }
      lost = false;
      ASSERT_NO_THROW( replica.read( out ) );
      ASSERT_NO_FATAL_FAILURE( expectEqual( *root, *replica.root ) ) << "batch " << batch;
   }
}

TEST_P( StreamProperty, anotherWriterTakesOverTheReplica )
{
   Random random( GetParam() + 2000 );
   Replica replica;
   for ( unsigned restart = 0; restart != 5; ++restart ) {
      const auto root = ::Test::Root::RootIs( "writer" );
      RandomTree tree( *root, random );
      Vok::EntityVokNboAttrLogSa writer( root );
      for ( unsigned batch = 0; batch != 5; ++batch ) {
         tree.changes( random.below( 60 ) );
         Out out;
         writer.write( out );
         ASSERT_NO_THROW( replica.read( out ) );
         ASSERT_NO_FATAL_FAILURE( expectEqual( *root, *replica.root ) );
      }
   }
}

INSTANTIATE_TEST_SUITE_P( Seeds, StreamProperty, testing::Range< std::uint64_t >( 1, 41 ) );

} // namespace
