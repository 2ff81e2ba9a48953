// Trackers and CPU queues of the hardware configuration as a client writes them.
#include "tests/support/Recorder.h"

#include "FlowTracker/HwFlowTrackingConfig.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace HwFlowTracking;
using FlowTracking::FtId;
using TestSupport::Heard;
using TestSupport::Recorder;

TEST( HwTrackerTest, aFreshTrackerHasItsDefaults )
{
   const auto tracker = ftConfigFactory( "t", FtId( 7 ) );
   EXPECT_EQ( tracker->name(), "t" );
   EXPECT_EQ( tracker->ftId(), FtId( 7 ) );
   EXPECT_EQ( tracker->inactiveTimeout().value(), 15000U );
   EXPECT_EQ( tracker->activeInterval().value(), 300000U );
   EXPECT_EQ( tracker->flowTableSize().value(), 153600U );
   EXPECT_EQ( tracker->hwFgConfigGenId(), 0U );
   EXPECT_FALSE( tracker->hwFgConfigGenIdUpdateNeeded() || tracker->tcpStateChangeExport() ||
         tracker->mplsExport() || tracker->ingressLabelExport() || tracker->systemObserver() );
   EXPECT_EQ( tracker->congestionConfig(), nullptr );
   EXPECT_EQ( tracker->localCollectorConfig(), nullptr );
   EXPECT_TRUE( tracker->hwFgConfig().empty() && tracker->hwFgConfigMap().empty() );
   EXPECT_TRUE( tracker->monitoredCpuQueue().empty() && tracker->expConfig().empty() );
   EXPECT_TRUE( tracker->resolvedExporter().empty() && tracker->waitingExporter().empty() );
   EXPECT_EQ( FtConfig::FtConfigIs( "u", FtId( 1 ) )->ftId(), FtId( 1 ) );
}

TEST( HwTrackerTest, groupsIterateByTheirNumbers )
{
   const auto tracker = ftConfigFactory( "t", FtId( 7 ) );
   tracker->hwFgConfigIs( "c", 30 );
   tracker->hwFgConfigIs( "a", 10 );
   tracker->hwFgConfigIs( "b", 20 );
   std::vector< std::uint32_t > order;
   for ( const Corvo::Ptr< FgConfig > & group : tracker->hwFgConfig() ) {
      EXPECT_EQ( group->parent(), tracker.get() );
      order.push_back( group->seqno() );
   }
   EXPECT_EQ( order, ( std::vector< std::uint32_t >{ 10, 20, 30 } ) );
   EXPECT_EQ( tracker->hwFgConfig( 20 )->fgName(), "b" );
   EXPECT_EQ( tracker->hwFgConfig( 15 ), nullptr );
}

TEST( HwTrackerTest, aGroupOfAnotherNameUnderATakenNumberFails )
{
   const auto tracker = ftConfigFactory( "t", FtId( 7 ) );
   const auto group = tracker->hwFgConfigIs( "a", 10 );
   Recorder recorder( *tracker );
   EXPECT_EQ( tracker->hwFgConfigIs( "a", 10 ), group );
   try {
      tracker->hwFgConfigIs( "b", 10 );
      ADD_FAILURE() << "another name was taken";
   } catch ( const Corvo::ReinstantiationException & e ) {
      EXPECT_EQ( std::string( e.what() ),
            R"(HwFlowTracking::FgConfig "a" exists with another fgName (attribute 258): )"
            R"(old "a", new "b")" );
   }
   EXPECT_EQ( tracker->hwFgConfig( 10 ), group );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_NE( tracker->hwFgConfigIs( "a", 11 ), group ) << "one name may have two numbers";
   EXPECT_EQ( tracker->hwFgConfigDel( 10 ), group );
   EXPECT_EQ( group->parent(), nullptr );
   EXPECT_EQ( tracker->hwFgConfigDel( 10 ), nullptr );
}

TEST( HwTrackerTest, anIndexOfATakenNameWithAnotherNumberFails )
{
   const auto tracker = ftConfigFactory( "t", FtId( 7 ) );
   const auto index = tracker->hwFgConfigMapIs( "g", 5 );
   Recorder recorder( *tracker );
   EXPECT_EQ( tracker->hwFgConfigMapIs( "g", 5 ), index );
   try {
      tracker->hwFgConfigMapIs( "g", 6 );
      ADD_FAILURE() << "another number was taken";
   } catch ( const Corvo::ReinstantiationException & e ) {
      EXPECT_EQ( std::string( e.what() ),
            R"(HwFlowTracking::HwFgConfigMap "g" exists with another seqno (attribute 259): )"
            R"(old "5", new "6")" );
   }
   EXPECT_EQ( tracker->hwFgConfigMap( "g" ), index );
   EXPECT_EQ( index->seqno(), 5U );
   EXPECT_EQ( recorder.take(), Heard{} );
}

TEST( HwTrackerTest, aQueueThatIsAddedAgainTakesTheNewNumber )
{
   const auto tracker = ftConfigFactory( "t", FtId( 7 ) );
   Recorder onTracker( *tracker );
   const auto queue = tracker->monitoredCpuQueueIs( "q", 3 );
   EXPECT_EQ( onTracker.take(), Heard{ "263[q]" } );
   Recorder onQueue( *queue );
   EXPECT_EQ( tracker->monitoredCpuQueueIs( "q", 3 ), queue );
   EXPECT_EQ( onQueue.take(), Heard{} );
   EXPECT_EQ( tracker->monitoredCpuQueueIs( "q", 4 ), queue );
   EXPECT_EQ( onQueue.take(), Heard{ "259 was 3" } );
   EXPECT_EQ( onTracker.take(), Heard{} );
   EXPECT_EQ( queue->cpuQueueId(), 4 );
   EXPECT_EQ( tracker->monitoredCpuQueue().size(), 1U );
}

TEST( HwTrackerTest, aNewQueueIsActive )
{
   const auto queue = monitoredCpuQueueFactory( "q", 3 );
   EXPECT_EQ( queue->name(), "q" );
   EXPECT_EQ( queue->cpuQueueName(), "q" );
   EXPECT_EQ( queue->status(), monitoredCpuQueueActive );
   EXPECT_TRUE( queue->active() );
   const Vok::AttributeData & active = *queue->typeData().attribute( "active" );
   EXPECT_EQ( active.call( *queue ), "true" );
   Recorder recorder( *queue );
   queue->statusIs( monitoredCpuQueueInactiveUnknown );
   queue->statusIs( monitoredCpuQueueInactiveUnknown );
   EXPECT_FALSE( queue->active() );
   EXPECT_EQ( active.call( *queue ), "false" );
   queue->cpuQueueIdIs( 3 );
   EXPECT_EQ( recorder.take(), Heard{ "260 was monitoredCpuQueueActive" } );
}

TEST( HwTrackerTest, theGenerationOfGroupsWrapsAroundAndStandsStillForNought )
{
   const auto tracker = ftConfigFactory( "t", FtId( 7 ) );
   Recorder recorder( *tracker );
   EXPECT_EQ( tracker->hwFgConfigGenIdInc( 0 ), 0U );
   EXPECT_EQ( recorder.take(), Heard{} );
   tracker->hwFgConfigGenIdIs( 4294967295 );
   EXPECT_EQ( tracker->hwFgConfigGenIdInc( 1 ), 0U );
   EXPECT_EQ( recorder.take(), ( Heard{ "261 was 0", "261 was 4294967295" } ) );
}

TEST( HwTrackerTest, anExporterMayBeResolvedAndWaitingAndBoth )
{
   const auto tracker = ftConfigFactory( "t", FtId( 7 ) );
   tracker->resolvedExporterIs( "e" );
   tracker->waitingExporterIs( "e" );
   EXPECT_TRUE( tracker->resolvedExporter( "e" ) && tracker->waitingExporter( "e" ) );
   EXPECT_TRUE( tracker->expConfig().empty() );
   tracker->waitingExporterDel( "e" );
   EXPECT_TRUE( tracker->resolvedExporter( "e" ) );
   tracker->resolvedExporterDelAll();
   EXPECT_TRUE( tracker->resolvedExporter().empty() && tracker->waitingExporter().empty() );
}

TEST( HwTrackerTest, singleChildrenOfAnotherNameReplaceThoseBefore )
{
   const auto tracker = ftConfigFactory( "t", FtId( 7 ) );
   Recorder recorder( *tracker );
   const auto congestion = tracker->congestionConfigIs( "a" );
   EXPECT_EQ( tracker->congestionConfigIs( "a" ), congestion );
   EXPECT_NE( tracker->congestionConfigIs( "b" ), congestion );
   EXPECT_EQ( congestion->parent(), nullptr );
   EXPECT_EQ( tracker->congestionConfigDel()->name(), "b" );
   EXPECT_EQ( recorder.take(), ( Heard{ "264", "264 was a", "264 was b" } ) );
   const auto local = tracker->localCollectorConfigIs( "a" );
   EXPECT_EQ( local->parent(), tracker.get() );
   EXPECT_EQ( tracker->localCollectorConfigIs( "a" ), local );
   EXPECT_NE( tracker->localCollectorConfigIs( "b" ), local );
   EXPECT_EQ( tracker->localCollectorConfigDel()->name(), "b" );
   EXPECT_EQ( tracker->localCollectorConfigDel(), nullptr );
   EXPECT_EQ( recorder.take(), ( Heard{ "274", "274 was a", "274 was b" } ) );
}

TEST( HwTrackerTest, aFreshOneLikeItHasItsNameAndNumberAndNothingElse )
{
   const auto tracker = ftConfigFactory( "t", FtId( 7 ) );
   tracker->hwFgConfigIs( "g", 10 );
   tracker->mplsExportIs( true );
   const auto fresh = tracker->instantiate();
   EXPECT_EQ( fresh->name(), "t" );
   EXPECT_EQ( fresh->ftId(), FtId( 7 ) );
   EXPECT_FALSE( fresh->mplsExport() );
   EXPECT_TRUE( fresh->hwFgConfig().empty() );
}

} // namespace
