// Random trees through reflection alone: of the test module, which has every kind of attribute.
#include "tests/support/RandomEntity.h"
#include "tests/Vok/Streams.h"

#include <gtest/gtest.h>

namespace {

using TestSupport::Bytes;
using TestSupport::expectEqual;
using TestSupport::Random;
using TestSupport::RandomEntity;
using TestSupport::Replica;
using TestSupport::Source;

TEST( RandomEntityTest, replicasFollow )
{
   for ( std::uint64_t seed = 0; seed != 20; ++seed ) {
      Random random( seed );
      Source source;
      RandomEntity tree( *source.root, random );
      Replica replica;
      for ( unsigned round = 0; round != 40; ++round ) {
         tree.changes( 1 + random.below( 60 ) );
         const Bytes batch = source.batch();
         ASSERT_NO_THROW( replica.read( batch ) );
         ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) )
               << "seed " << seed << " round " << round;
      }
   }
}

/// The next draw tells whether there were as many before it.
TEST( RandomEntityTest, aSeedMeansTheSameChangesEverywhere )
{
   Random random( 7 );
   Source source;
   RandomEntity( *source.root, random ).changes( 3000 );
   EXPECT_EQ( random.word(), 17916357762843375469U );
}

} // namespace
