// What hardware is able to do and what it does for mirror-on-drop, as a platform agent writes it.
#include "tests/FlowTracker/HwStatusTables.h"
#include "tests/support/EnumTable.h"
#include "tests/support/Recorder.h"
#include "tests/support/ReplicatedTree.h"

#include "FlowTracker/HwFlowTrackingStatus.h"
#include "FlowTracker/HwFlowWatcherStatus.h"

#include <gtest/gtest.h>

namespace {

using namespace FlowTrackerTest;
using namespace HwFlowTracking;
using TestSupport::Heard;
using TestSupport::Recorder;

TEST( HwCapabilitiesTest, fresh )
{
   const auto capabilities = capabilitiesFactory( "hardware" );
   EXPECT_EQ( capabilities->name(), "hardware" );
   EXPECT_FALSE( capabilities->supported() );
   EXPECT_EQ( capabilities->maxTrackers(), 1U );
   EXPECT_EQ( capabilities->maxExportersPerTracker(), 1U );
   EXPECT_EQ( capabilities->maxCollectorsPerExporter(), 1U );
   EXPECT_EQ( capabilities->maxSflowExportersPerTracker(), 1U );
   EXPECT_EQ( capabilities->maxFlows(), 0U );
   EXPECT_EQ( capabilities->maxSampleLimit(), 4294967295U );
   EXPECT_TRUE( capabilities->sampleLimitDisabledSupported() );
   EXPECT_FALSE( capabilities->modDefaultTrapSuppression().has_value() );
   EXPECT_FALSE( capabilities->systemObserverSupported().has_value() );
   EXPECT_FALSE( capabilities->defaultSampleLimit().has_value() );
   EXPECT_EQ( capabilities->packetTruncation(), noTruncation );
   EXPECT_TRUE( capabilities->exportFormatHwSupported().empty() );
   EXPECT_TRUE( capabilities->monitoredCpuQueueSupported().empty() );
   EXPECT_EQ( HwFlowTracking::Capabilities::CapabilitiesIs( "x" )->maxTrackers(), 1U );
}

TEST( HwCapabilitiesTest, settingWhatIsThereIsSilent )
{
   const auto capabilities = capabilitiesFactory( "hardware" );
   Recorder recorder( *capabilities );
   capabilities->supportedIs( false );
   capabilities->maxTrackersIs( 1 );
   EXPECT_EQ( recorder.take(), Heard{} );
   capabilities->maxTrackersIs( 0 );
   EXPECT_EQ( recorder.take(), Heard{ "261 was 1" } );
}

TEST( HwCapabilitiesTest, noIsAnotherValueThanNone )
{
   const auto capabilities = capabilitiesFactory( "hardware" );
   Recorder recorder( *capabilities );
   capabilities->modDefaultTrapSuppressionIs( std::nullopt );
   EXPECT_EQ( recorder.take(), Heard{} );
   capabilities->modDefaultTrapSuppressionIs( false );
   capabilities->modDefaultTrapSuppressionIs( false );
   EXPECT_EQ( recorder.take(), Heard{ "298 was " } );
   capabilities->modDefaultTrapSuppressionIs( true );
   capabilities->modDefaultTrapSuppressionIs( std::nullopt );
   EXPECT_EQ( recorder.take(), ( Heard{ "298 was false", "298 was true" } ) );
   capabilities->defaultSampleLimitIs( 0 );
   EXPECT_EQ( recorder.take(), Heard{ "292 was " } );
   EXPECT_EQ( capabilities->defaultSampleLimit(), 0U );
}

TEST( HwCapabilitiesTest, formatsAreASet )
{
   const auto capabilities = capabilitiesFactory( "hardware" );
   Recorder recorder( *capabilities );
   capabilities->exportFormatHwSupportedIs( FlowTracking::formatSflow );
   capabilities->exportFormatHwSupportedIs( FlowTracking::formatSflow );
   EXPECT_EQ( recorder.take(), Heard{ "285[formatSflow]" } );
   EXPECT_TRUE( capabilities->exportFormatHwSupported( FlowTracking::formatSflow ) );
   capabilities->exportFormatHwSupportedDel( FlowTracking::formatIpfix );
   EXPECT_EQ( recorder.take(), Heard{} );
   capabilities->exportFormatHwSupportedDelAll();
   EXPECT_EQ( recorder.take(), Heard{ "285[formatSflow]" } );
}

TEST( HwCapabilitiesTest, aQueueHasOneNumber )
{
   const auto capabilities = capabilitiesFactory( "hardware" );
   Recorder recorder( *capabilities );
   capabilities->monitoredCpuQueueSupportedIs( "q", 3 );
   capabilities->monitoredCpuQueueSupportedIs( "q", 3 );
   EXPECT_EQ( recorder.take(), Heard{ "300[q]" } );
   capabilities->monitoredCpuQueueSupportedIs( "q", 4 );
   EXPECT_EQ( recorder.take(), Heard{ "300[q] was 3" } );
   EXPECT_EQ( capabilities->monitoredCpuQueueSupported( "q" ), 4 );
   EXPECT_EQ( capabilities->monitoredCpuQueueSupported( "r" ), 0 );
   EXPECT_EQ( capabilities->monitoredCpuQueueSupportedDel( "r" ), 0 );
   EXPECT_EQ( capabilities->monitoredCpuQueueSupportedDel( "q" ), 4 );
   EXPECT_EQ( recorder.take(), Heard{ "300[q] was 4" } );
}

TEST( HwCapabilitiesTest, noShaperRateIsAnotherThanNought )
{
   const auto status = mirrorOnDropHwStatusFactory( "mod" );
   EXPECT_EQ( status->modEnable(), FlowTracking::disable );
   EXPECT_EQ( status->pbStatus(), FlowTracking::PacketBuffer::disabled );
   EXPECT_FALSE( status->pbShaperRate().has_value() || status->pbShaperBurst().has_value() );
   Recorder recorder( *status );
   status->pbShaperRateIs( std::nullopt );
   EXPECT_EQ( recorder.take(), Heard{} );
   status->pbShaperRateIs( 0 );
   status->pbShaperRateIs( 0 );
   EXPECT_EQ( recorder.take(), Heard{ "260 was " } );
   EXPECT_EQ( status->pbShaperRate(), 0U );
   status->pbShaperRateIs( std::nullopt );
   EXPECT_EQ( recorder.take(), Heard{ "260 was 0" } );
   EXPECT_EQ( MirrorOnDropHwStatus::MirrorOnDropHwStatusIs( "x" )->name(), "x" );
}

TEST( HwCapabilitiesDeathTest, packetTruncation )
{
   TestSupport::expectEnumeration( { "HwFlowTracking::PacketTruncation",
         TestSupport::enumOps< PacketTruncation, PacketTruncationInstance,
               PacketTruncationInstance >(),
         8,
         { { 0, "noTruncation" }, { 1, "truncated" }, { 2, "networkHeaders" } } } );
   EXPECT_EQ( PacketTruncationInstance( 2 ), networkHeaders );
   EXPECT_EQ( Corvo::strepToValue< PacketTruncation >( "networkHeaders" ), networkHeaders );
   const Vok::TypeData & type =
         *Corvo::ModuleInspectData::findType( "HwFlowTracking::PacketTruncation" );
   EXPECT_EQ( &type.module().types()[ 5 ], &type ) << "it is number 5 of its module's types";
}

TEST( HwCapabilitiesTest, everyAttributeAwayFromItsDefaultReplicatesAndSurvivesAResync )
{
   for ( const auto & table :
         { hwCapabilities(), mirrorOnDropHwStatus(), flowWatcherCapabilities() } ) {
      TestSupport::ReplicatedTree tree( table );
      ASSERT_NO_FATAL_FAILURE( tree.follow() );
      setAll( *tree.root, table );
      TestSupport::Away away;
      away.add( *tree.root );
      EXPECT_EQ( away.missing( { table } ), "" );
      ASSERT_NO_FATAL_FAILURE( tree.follow() );
      ASSERT_NO_FATAL_FAILURE( tree.resync() );
   }
}

TEST( HwCapabilitiesTest, randomOnesFollow )
{
   for ( const auto & table :
         { hwCapabilities(), mirrorOnDropHwStatus(), flowWatcherCapabilities() } ) {
      TestSupport::Away away;
      ASSERT_NO_FATAL_FAILURE( expectRandomTreesFollow( table, { 20, 20, 10 }, away ) );
      EXPECT_EQ( away.missing( { table } ), "" );
   }
}

TEST( HwFlowWatcherTest, attributesAreAsTheTableSays )
{
   TestSupport::expectEntity( flowWatcherCapabilities() );
   using Watcher = HwFlowWatcher::Capabilities;
   static_assert( Watcher::awakeSupportedAttrId == 258 );
   static_assert( Watcher::broadscanSupportedAttrId == 259 );
   static_assert( Watcher::featureAttrId == 260 );
}

TEST( HwFlowWatcherTest, aFreshOneHasNoFeatures )
{
   const auto watcher = HwFlowWatcher::capabilitiesFactory( "watcher" );
   EXPECT_EQ( watcher->name(), "watcher" );
   EXPECT_FALSE( watcher->awakeSupported() || watcher->broadscanSupported() );
   EXPECT_EQ( watcher->feature(), FlowTracking::FlowTrackingType::none );
   Recorder recorder( *watcher );
   watcher->featureIs( FlowTracking::FlowTrackingType::none );
   EXPECT_EQ( recorder.take(), Heard{} );
   watcher->featureIs( FlowTracking::FlowTrackingType::hardware );
   EXPECT_EQ( recorder.take(), Heard{ "260 was none" } );
   EXPECT_EQ( HwFlowWatcher::Capabilities::CapabilitiesIs( "x" )->name(), "x" );
}

} // namespace
