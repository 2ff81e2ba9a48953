// Whole hardware configurations as change streams: what a reader has is what the writer has.
#include "tests/FlowTracker/ConfigTables.h"
#include "tests/FlowTracker/HwConfigTables.h"
#include "tests/support/Recorder.h"
#include "tests/support/ReplicatedTree.h"

#include "FlowTracker/HwFlowTrackingConfig.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace FlowTrackerTest;
using namespace HwFlowTracking;
using FlowTracking::FtId;
using TestSupport::Away;
using TestSupport::childOf;
using TestSupport::EntityPtr;
using TestSupport::EntityTable;
using TestSupport::Heard;
using TestSupport::Recorder;
using TestSupport::ReplicatedTree;
using TestSupport::setAll;
using Wyre::IntfId;
using Root = HwFlowTracking::Config;

/// The types of a hardware configuration that have anything to change.
std::vector< EntityTable > types()
{
   return { hwConfig(), ftConfig(), fgConfig(), hwFgConfigMap(), hwExporterConfig(),
      localCollectorConfig(), monitoredCpuQueue(), effectiveCongestionConfig() };
}

/// Gives every attribute of every entity of a hardware configuration another value than its
/// default.
void setTree( const EntityPtr & root )
{
   setAll( *root, hwConfig() );
   const EntityPtr tracker = childOf( root, "hwFtConfig", "tracker" );
   setAll( *tracker, ftConfig() );
   setAll( *childOf( tracker, "hwFgConfig", "100" ), fgConfig() );
   setAll( *childOf( tracker, "hwFgConfigMap", "group" ), hwFgConfigMap() );
   setAll( *childOf( tracker, "monitoredCpuQueue", "queue" ), monitoredCpuQueue() );
   setAll( *childOf( tracker, "congestionConfig" ), effectiveCongestionConfig() );
   setAll( *childOf( tracker, "expConfig", "exporter" ), hwExporterConfig() );
   setAll( *childOf( tracker, "localCollectorConfig" ), localCollectorConfig() );
}

struct HwConfigReplicationTest : testing::Test {
   Root & root() { return static_cast< Root & >( *tree.root ); }
   Root & replica() { return static_cast< Root & >( *tree.replica ); }

   ReplicatedTree tree{ hwConfig() };
};

TEST_F( HwConfigReplicationTest, everyAttributeAwayFromItsDefaultReplicatesAndSurvivesAResync )
{
   expectWholeTreeFollows( hwConfig(), types(), setTree );
}

TEST_F( HwConfigReplicationTest, randomTreesFollow )
{
   Away away;
   ASSERT_NO_FATAL_FAILURE( expectRandomTreesFollow( hwConfig(), { 60, 40, 60 }, away ) );
   EXPECT_EQ( away.missing( types() ), "" );
   EXPECT_TRUE( away.referredTo( "HwFlowTracking::IntfFtConfig::hwFtConfig" ) );
}

TEST_F( HwConfigReplicationTest, aBindingLeadsToTheReplicasOwnTracker )
{
   const auto tracker = root().hwFtConfigIs( "t", FtId( 7 ) );
   const auto binding =
         root().hwIntfFtConfigIs( IntfId( "Ethernet1" ), tracker, FlowTracking::sampleModeAll );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   const auto there = replica().hwIntfFtConfig( IntfId( "Ethernet1" ) );
   EXPECT_EQ( there->hwFtConfig(), replica().hwFtConfig( "t" ) );
   tracker->mplsExportIs( true );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   EXPECT_EQ( replica().hwIntfFtConfig( IntfId( "Ethernet1" ) ), there );
   EXPECT_TRUE( there->hwFtConfig()->mplsExport() );
}

TEST_F( HwConfigReplicationTest, aTrackerThatLeftIsFollowedThroughItsBinding )
{
   root().hwIntfFtConfigIs( IntfId( "Ethernet1" ), root().hwFtConfigIs( "t", FtId( 7 ) ),
         FlowTracking::sampleModeAll );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   const auto there = replica().hwFtConfig( "t" );
   const auto gone = root().hwFtConfigDel( "t" );
   gone->hwFgConfigIs( "g", 5 )->flowDomainIs( "campus" );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   EXPECT_EQ( replica().hwFtConfig( "t" ), nullptr );
   const auto binding = replica().hwIntfFtConfig( IntfId( "Ethernet1" ) );
   EXPECT_EQ( binding->hwFtConfig(), there ) << "it keeps its identity";
   EXPECT_EQ( there->parent(), nullptr );
   ASSERT_NE( there->hwFgConfig( 5 ), nullptr );
   EXPECT_EQ( there->hwFgConfig( 5 )->flowDomain(), "campus" );
   root().hwIntfFtConfigDel( IntfId( "Ethernet1" ) );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   EXPECT_EQ( there->refCount(), 2U ) << "the binding above still holds it, and so does there";
}

TEST_F( HwConfigReplicationTest, aTrackerThatNeverWasInTheTreeTravelsWhole )
{
   const auto stranger = ftConfigFactory( "s", FtId( 9 ) );
   stranger->activeIntervalIs( FlowTracking::ActiveInterval( 60000 ) );
   stranger->expConfigIs( "e" )->rxPort4Is( 4739 );
   root().hwEgressIntfFtConfigIs( IntfId( "Ethernet1" ), stranger, FlowTracking::sampleModeAll );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   const auto there = replica().hwEgressIntfFtConfig( IntfId( "Ethernet1" ) )->hwFtConfig();
   EXPECT_EQ( there->parent(), nullptr );
   EXPECT_EQ( there->name(), "s" );
   EXPECT_EQ( there->ftId(), FtId( 9 ) );
   EXPECT_EQ( there->activeInterval(), FlowTracking::ActiveInterval( 60000 ) );
   EXPECT_EQ( there->expConfig( "e" )->rxPort4(), 4739 );
   EXPECT_TRUE( replica().hwFtConfig().empty() );
   root().sampleRateIs( 1 );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   ASSERT_NO_FATAL_FAILURE( tree.resync() );
   EXPECT_EQ( replica().hwEgressIntfFtConfig( IntfId( "Ethernet1" ) )->hwFtConfig(), there )
         << "while it does not change it stays the same object";
}

/// One batch in which the tracker, its group and its binding are deleted and made again otherwise.
TEST_F( HwConfigReplicationTest, childrenThatWereMadeAnewInOneBatchAreNewOnes )
{
   const IntfId port( "Ethernet1" );
   const auto first = root().hwFtConfigIs( "t", FtId( 7 ) );
   first->hwFgConfigIs( "a", 10 )->flowDomainIs( "before" );
   first->hwFgConfigIs( "b", 20 );
   root().hwIntfFtConfigIs( port, first, FlowTracking::sampleModeAll );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   const auto before = replica().hwFtConfig( "t" );

   root().hwIntfFtConfigDel( port );
   root().hwFtConfigDel( "t" );
   const auto second = root().hwFtConfigIs( "t", FtId( 8 ) );
   second->hwFgConfigIs( "b", 10 );
   second->hwFgConfigIs( "a", 5 );
   root().hwIntfFtConfigIs( port, second, FlowTracking::sampleModeTargeted );
   Recorder recorder( *tree.replica );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   const auto after = replica().hwFtConfig( "t" );
   EXPECT_NE( after, before );
   EXPECT_EQ( after->ftId(), FtId( 8 ) );
   EXPECT_EQ( after->hwFgConfig( 10 )->fgName(), "b" );
   EXPECT_TRUE( after->hwFgConfig( 10 )->flowDomain().empty() );
   EXPECT_EQ( after->hwFgConfig( 20 ), nullptr );
   EXPECT_EQ( replica().hwIntfFtConfig( port )->hwFtConfig(), after );
   EXPECT_EQ( recorder.take().size(), 4U ) << "each was heard as deleted and as made";
}

TEST_F( HwConfigReplicationTest, aGroupThatWasMadeAnewUnderItsNumberIsANewOne )
{
   const auto tracker = root().hwFtConfigIs( "t", FtId( 7 ) );
   tracker->hwFgConfigIs( "a", 10 )->genIdInc( 3 );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   const auto before = replica().hwFtConfig( "t" )->hwFgConfig( 10 );
   tracker->hwFgConfigDel( 10 );
   tracker->hwFgConfigIs( "b", 10 );
   Recorder recorder( *replica().hwFtConfig( "t" ) );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   const auto after = replica().hwFtConfig( "t" )->hwFgConfig( 10 );
   EXPECT_NE( after, before );
   EXPECT_EQ( after->fgName(), "b" );
   EXPECT_EQ( after->genId(), 0U );
   EXPECT_EQ( recorder.take(), ( Heard{ "259[10] was a", "259[10]" } ) );
}

} // namespace
