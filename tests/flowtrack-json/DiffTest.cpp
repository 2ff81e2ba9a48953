// What differs between two trees.
#include "tests/flowtrack-json/Trees.h"

#include "tools/flowtrack/json/Diff.h"

#include "FlowTracker/FlowTrackerConfig.h"
#include "FlowTracker/HwFlowTrackingConfig.h"

#include <gtest/gtest.h>

using FlowtrackJson::differences;
using FlowtrackJson::textOf;

namespace {

TEST( DiffTest, EveryKindOfDifference )
{
   const auto a = FlowTracking::configFactory( "a" );
   const auto b = FlowTracking::configFactory( "b" );
   a->flowTrackerConfigIs( "gone" )->mplsExportIs( true );
   b->flowTrackerConfigIs( "new" )->fgConfigIs( "g", 4 );
   a->flowTrackerConfigIs( "both" )->expConfigIs( "e" )->collectorHostAndPortIs( { "h", 1 } );
   b->flowTrackerConfigIs( "both" )->expConfigIs( "e" )->collectorHostAndPortIs( { "h", 2 } );
   b->flowTrackerConfigIs( "both" )->expConfigIs( "e" )->useSflowCollectorConfigIs( true );
   b->sampleSizeIs( FlowTracking::SampleSize( 9 ) );
   a->encapIs( FlowTracking::encapGre );
   a->bgpExportIs( false );
   EXPECT_EQ( textOf( differences( *a, *b ) ),
         "~ /flowTrackerConfig[both]/expConfig[e] useSflowCollectorConfig: false -> true\n"
         "~ /flowTrackerConfig[both]/expConfig[e] collectorHostAndPort[h]: {\"port\":1} -> "
         "{\"port\":2}\n"
         "- / flowTrackerConfig[gone]: {\"mplsExport\":true}\n"
         "+ / flowTrackerConfig[new]: {\"fgConfig\":{\"g\":{\"seqno\":4}}}\n"
         "~ / bgpExport: false -> true\n"
         "+ / sampleSize: 9\n"
         "- / encap[encapGre]: \"encapGre\"\n" );
   EXPECT_EQ( jsonOf( differences( *a, *b ) )[ 1 ].dump(),
         R"({"path":"/flowTrackerConfig[both]/expConfig[e]","attribute":"collectorHostAndPort",)"
         R"("key":"h","old":{"port":1},"new":{"port":2}})" );
   EXPECT_EQ( jsonOf( differences( *a, *b ) )[ 5 ].dump(),
         R"({"path":"/","attribute":"sampleSize","new":9})" );
}

TEST( DiffTest, ASingleChildOfAnotherNameIsAnother )
{
   const auto a = FlowTracking::configFactory( "a" );
   const auto b = FlowTracking::configFactory( "b" );
   a->flowTrackerConfigIs( "t" )->congestionConfigIs( "x" );
   b->flowTrackerConfigIs( "t" )->congestionConfigIs( "y" );
   EXPECT_EQ( textOf( differences( *a, *b ) ),
         "~ /flowTrackerConfig[t] congestionConfig: {\"name\":\"x\"} -> {\"name\":\"y\"}\n" );
}

TEST( DiffTest, TreesOfTwoTypesAreNotCompared )
{
   const EntityPtr config = newTree( "FlowTracking::Config" );
   const EntityPtr status = newTree( "FlowTracking::Status" );
   EXPECT_THROW( differences( *config, *status ), std::invalid_argument );
}

/// There is a difference where digests differ, and none where they do not.
TEST( DiffTest, AgreesWithDigests )
{
   unsigned differ = 0;
   for ( const std::string & type : rootTypes() ) {
      for ( std::uint64_t seed = 1; seed != 40; ++seed ) {
         const EntityPtr tree = randomTree( type, seed, 60 );
         const EntityPtr other = copyOf( *tree );
         EXPECT_EQ( textOf( differences( *tree, *other ) ), "" );
         TestSupport::Random random( seed );
         TestSupport::RandomEntity( *other, random ).changes( 1 );
         const bool same = Vok::treeDigest( *tree ) == Vok::treeDigest( *other );
         EXPECT_EQ( differences( *tree, *other ).empty(), same ) << type << ' ' << seed;
         differ += same ? 0 : 1;
      }
   }
   EXPECT_GT( differ, 100U );
}

} // namespace
