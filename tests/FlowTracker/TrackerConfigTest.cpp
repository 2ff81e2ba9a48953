// Trackers as a client writes them.
#include "tests/support/Recorder.h"

#include "FlowTracker/FlowTrackerConfig.h"

#include <gtest/gtest.h>

namespace {

using namespace FlowTracking;
using TestSupport::Heard;
using TestSupport::Recorder;

TEST( TrackerConfigTest, aFreshTrackerHasItsDefaultsAndWhereToDump )
{
   const auto tracker = flowTrackerConfigFactory( "t" );
   EXPECT_EQ( tracker->name(), "t" );
   EXPECT_EQ( tracker->inactiveTimeout(), InactiveTimeout( 15000 ) );
   EXPECT_EQ( tracker->activeInterval(), ActiveInterval( 300000 ) );
   EXPECT_EQ( tracker->flowTableSize(), FlowTableSize( 153600 ) );
   EXPECT_FALSE( tracker->tcpStateChangeExport() || tracker->mplsExport() ||
         tracker->ingressLabelExport() || tracker->groupResequencingInProgress() ||
         tracker->groupResequencingDone() || tracker->groupsCommitted() ||
         tracker->groupsCommitInProgress() || tracker->systemObserver() );
   EXPECT_TRUE( tracker->expConfig().empty() && tracker->fgConfig().empty() );
   EXPECT_TRUE( tracker->monitoredCpuQueue().empty() );
   EXPECT_EQ( tracker->congestionConfig(), nullptr );
   ASSERT_NE( tracker->cpuQueuesBuffersDumpLocation(), nullptr );
   EXPECT_EQ( tracker->cpuQueuesBuffersDumpLocation()->parent(), tracker.get() );
   EXPECT_TRUE( tracker->cpuQueuesBuffersDumpLocation()->pcapFilePath().empty() );
}

TEST( TrackerConfigTest, addingAGroupAgainBringsItsNumberUpToDateOnTheGroup )
{
   const auto tracker = flowTrackerConfigFactory( "t" );
   Recorder onTracker( *tracker );
   const auto group = tracker->fgConfigIs( "g", 100 );
   EXPECT_EQ( onTracker.take(), Heard{ "259[g]" } );
   Recorder onGroup( *group );
   EXPECT_EQ( tracker->fgConfigIs( "g", 100 ), group );
   EXPECT_EQ( onGroup.take(), Heard{} );
   EXPECT_EQ( tracker->fgConfigIs( "g", 200 ), group );
   EXPECT_EQ( onGroup.take(), Heard{ "258 was 100" } );
   EXPECT_EQ( group->seqno(), 200U );
   EXPECT_EQ( onTracker.take(), Heard{} );
   EXPECT_EQ( tracker->fgConfig().size(), 1U );
}

TEST( TrackerConfigTest, exportersAreMadeOnce )
{
   const auto tracker = flowTrackerConfigFactory( "t" );
   Recorder recorder( *tracker );
   const auto exporter = tracker->expConfigIs( "e" );
   EXPECT_EQ( tracker->expConfigIs( "e" ), exporter );
   EXPECT_EQ( recorder.take(), Heard{ "258[e]" } );
   EXPECT_EQ( exporter->parent(), tracker.get() );
   EXPECT_EQ( tracker->expConfig( "f" ), nullptr );
   EXPECT_EQ( tracker->expConfigDel( "f" ), nullptr );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( tracker->expConfigDel( "e" ), exporter );
   EXPECT_EQ( exporter->parent(), nullptr );
   EXPECT_EQ( recorder.take(), Heard{ "258[e] was e" } );
}

TEST( TrackerConfigTest, congestionSettingsOfAnotherNameReplaceThoseBefore )
{
   const auto tracker = flowTrackerConfigFactory( "t" );
   Recorder recorder( *tracker );
   const auto first = tracker->congestionConfigIs( "a" );
   EXPECT_EQ( tracker->congestionConfigIs( "a" ), first );
   EXPECT_EQ( recorder.take(), Heard{ "261" } );
   first->dampingTimeoutIs( DampingTimeout( 5 ) );
   const auto second = tracker->congestionConfigIs( "b" );
   EXPECT_EQ( recorder.take(), Heard{ "261 was a" } );
   EXPECT_EQ( first->parent(), nullptr );
   EXPECT_EQ( second->parent(), tracker.get() );
   EXPECT_FALSE( second->dampingTimeout().has_value() );
   EXPECT_EQ( tracker->congestionConfigDel(), second );
   EXPECT_EQ( tracker->congestionConfig(), nullptr );
   EXPECT_EQ( recorder.take(), Heard{ "261 was b" } );
   EXPECT_EQ( tracker->congestionConfigDel(), nullptr );
   EXPECT_EQ( recorder.take(), Heard{} );
}

TEST( TrackerConfigTest, whereToDumpIsKeptUntilItIsDeleted )
{
   const auto tracker = flowTrackerConfigFactory( "t" );
   Recorder recorder( *tracker );
   const auto dump = tracker->cpuQueuesBuffersDumpLocation();
   EXPECT_EQ( tracker->cpuQueuesBuffersDumpLocationIs(), dump );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( tracker->cpuQueuesBuffersDumpLocationDel(), dump );
   EXPECT_EQ( tracker->cpuQueuesBuffersDumpLocation(), nullptr );
   EXPECT_NE( tracker->cpuQueuesBuffersDumpLocationIs(), dump );
   EXPECT_EQ( recorder.take().size(), 2U );
}

TEST( TrackerConfigTest, thePathOfADumpIsHeardOnce )
{
   const auto dump = dumpBuffersInstructionsFactory();
   EXPECT_TRUE( dump->pcapFilePath().empty() );
   EXPECT_TRUE( dump->name().empty() );
   Recorder recorder( *dump );
   dump->pcapFilePathIs( "/var/tmp/a.pcap" );
   dump->pcapFilePathIs( "/var/tmp/a.pcap" );
   EXPECT_EQ( recorder.take(), Heard{ R"(258 was "")" } );
}

TEST( TrackerConfigTest, anActiveIntervalIsNotValidatedWhenItIsSet )
{
   const auto tracker = flowTrackerConfigFactory( "t" );
   tracker->activeIntervalIs( ActiveInterval( 999 ) );
   EXPECT_EQ( tracker->activeInterval().value(), 999U );
   EXPECT_THROW( tracker->activeInterval().validate(), Corvo::RangeException );
   tracker->activeIntervalIs( ActiveInterval( 0 ) );
   EXPECT_EQ( tracker->activeInterval().stringValue(), "disabled" );
}

} // namespace
