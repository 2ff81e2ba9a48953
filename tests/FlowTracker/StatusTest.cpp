// The root of the status and its trackers, as an agent writes them.
#include "tests/support/Recorder.h"

#include "FlowTracker/FlowTrackerStatus.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace FlowTracking;
using TestSupport::Heard;
using TestSupport::Recorder;
using Response = PktDropCounterUpdateResponse;

TEST( StatusTest, aFreshRootIsEmpty )
{
   const auto status = statusFactory( "sampled" );
   EXPECT_EQ( status->name(), "sampled" );
   EXPECT_EQ( status->parent(), nullptr );
   EXPECT_EQ( status->refCount(), 1U );
   EXPECT_FALSE( status->publisher().hasNotifiee() );
   EXPECT_TRUE( status->ftStatus().empty() && status->pktDropResp().empty() );
   EXPECT_EQ( Status::StatusIs( "hardware" )->nameString(), "hardware" );
}

TEST( StatusTest, aFreshTrackerIsInactiveWithoutAKnownReason )
{
   const auto tracker = trackerStatusFactory( "campus" );
   EXPECT_EQ( tracker->name(), "campus" );
   EXPECT_EQ( tracker->parent(), nullptr );
   EXPECT_EQ( tracker->inactiveReason(), trackerInactiveReasonUnknown );
   EXPECT_FALSE( tracker->active() );
   EXPECT_TRUE( tracker->expStatus().empty() );
   EXPECT_EQ( TrackerStatus::TrackerStatusIs( "edge" )->name(), "edge" );
}

TEST( StatusTest, aTrackerThatIsMadeTwiceIsTheSameAndHeardOnce )
{
   const auto status = statusFactory( "sampled" );
   Recorder recorder( *status );
   const auto tracker = status->ftStatusIs( "campus" );
   EXPECT_EQ( recorder.take(), Heard{ "258[campus]" } );
   EXPECT_EQ( status->ftStatusIs( "campus" ), tracker );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( tracker->parent(), status.get() );
   EXPECT_EQ( status->ftStatus( "campus" ), tracker );
   EXPECT_EQ( status->ftStatus().size(), 1U );
}

TEST( StatusTest, deletingATrackerGivesItBackWithoutAParent )
{
   const auto status = statusFactory( "sampled" );
   const auto tracker = status->ftStatusIs( "campus" );
   tracker->activeIs( true );
   Recorder recorder( *status );
   const Corvo::Ptr< TrackerStatus > gone = status->ftStatusDel( "campus" );
   EXPECT_EQ( gone, tracker );
   EXPECT_EQ( gone->parent(), nullptr );
   EXPECT_TRUE( gone->active() );
   EXPECT_EQ( recorder.take(), Heard{ "258[campus] was campus" } );
   EXPECT_EQ( status->ftStatus( "campus" ), nullptr );
   const auto again = status->ftStatusIs( "campus" );
   EXPECT_NE( again, gone );
   EXPECT_FALSE( again->active() );
}

TEST( StatusTest, aChangeOfTheTrackersCarriesTheOldTracker )
{
   const auto status = statusFactory( "sampled" );
   const auto tracker = status->ftStatusIs( "campus" );
   Recorder recorder( *status );
   bool told = false;
   recorder.then = [ & ]( const Corvo::Change & change ) {
      told = true;
      EXPECT_EQ( &change.entity, status.get() );
      EXPECT_EQ( change.attrId, Status::ftStatusAttrId );
      ASSERT_NE( change.key< Corvo::String >(), nullptr );
      EXPECT_EQ( *change.key< Corvo::String >(), "campus" );
      ASSERT_NE( change.oldValue< Corvo::Ptr< TrackerStatus > >(), nullptr );
      EXPECT_EQ( *change.oldValue< Corvo::Ptr< TrackerStatus > >(), tracker );
   };
   status->ftStatusDel( "campus" );
   EXPECT_TRUE( told );
}

TEST( StatusTest, deletingATrackerThatIsAbsentIsSilent )
{
   const auto status = statusFactory( "sampled" );
   status->ftStatusIs( "campus" );
   Recorder recorder( *status );
   EXPECT_EQ( status->ftStatusDel( "edge" ), nullptr );
   EXPECT_EQ( status->ftStatusDel( "" ), nullptr );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( status->ftStatus().size(), 1U );
}

TEST( StatusTest, deletingAllTrackersIsHeardOncePerTracker )
{
   const auto status = statusFactory( "sampled" );
   std::vector< Corvo::Ptr< TrackerStatus > > trackers;
   for ( const char * name : { "a", "b", "c" } ) {
      trackers.push_back( status->ftStatusIs( name ) );
   }
   Recorder recorder( *status );
   status->ftStatusDelAll();
   EXPECT_EQ( recorder.take().size(), 3U );
   EXPECT_TRUE( status->ftStatus().empty() );
   for ( const auto & tracker : trackers ) {
      EXPECT_EQ( tracker->parent(), nullptr );
   }
   status->ftStatusDelAll();
   EXPECT_EQ( recorder.take(), Heard{} );
}

TEST( StatusTest, deletingAllTrackersUnheardClearsTheirParentsToo )
{
   const auto status = statusFactory( "sampled" );
   const auto tracker = status->ftStatusIs( "campus" );
   const auto exporter = tracker->expStatusIs( "operators" );
   status->ftStatusDelAll();
   EXPECT_EQ( tracker->parent(), nullptr );
   EXPECT_EQ( exporter->parent(), tracker.get() );
   tracker->expStatusDelAll();
   EXPECT_EQ( exporter->parent(), nullptr );
}

TEST( StatusTest, settingWhatIsThereIsSilent )
{
   const auto tracker = trackerStatusFactory( "campus" );
   Recorder recorder( *tracker );
   tracker->activeIs( false );
   tracker->inactiveReasonIs( trackerInactiveReasonUnknown );
   EXPECT_EQ( recorder.take(), Heard{} );
   tracker->activeIs( true );
   tracker->activeIs( true );
   EXPECT_EQ( recorder.take(), Heard{ "259 was false" } );
}

TEST( StatusTest, aTrackerMayBeActiveAndHaveAReason )
{
   const auto tracker = trackerStatusFactory( "campus" );
   Recorder recorder( *tracker );
   tracker->inactiveReasonIs( maxTrackersLimit );
   tracker->activeIs( true );
   EXPECT_EQ( recorder.take(),
         ( Heard{ "258 was trackerInactiveReasonUnknown", "259 was false" } ) );
   EXPECT_EQ( tracker->inactiveReason(), maxTrackersLimit );
   EXPECT_TRUE( tracker->active() );
}

TEST( StatusTest, exportersAreMadeOnce )
{
   const auto tracker = trackerStatusFactory( "campus" );
   Recorder recorder( *tracker );
   const auto exporter = tracker->expStatusIs( "operators" );
   EXPECT_EQ( tracker->expStatusIs( "operators" ), exporter );
   EXPECT_EQ( recorder.take(), Heard{ "260[operators]" } );
   EXPECT_EQ( exporter->parent(), tracker.get() );
   EXPECT_EQ( tracker->expStatusDel( "archive" ), nullptr );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( tracker->expStatusDel( "operators" ), exporter );
   EXPECT_EQ( recorder.take(), Heard{ "260[operators] was operators" } );
   EXPECT_EQ( exporter->parent(), nullptr );
   tracker->expStatusIs( "a" );
   tracker->expStatusIs( "b" );
   recorder.take();
   tracker->expStatusDelAll();
   EXPECT_EQ( recorder.take().size(), 2U );
   EXPECT_TRUE( tracker->expStatus().empty() );
}

TEST( StatusTest, aResponseThatIsEqualInAllFieldsIsSilent )
{
   const auto status = statusFactory( "sampled" );
   Recorder recorder( *status );
   status->pktDropRespIs( Response( kernelDrops, 5, 100, 1 ) );
   EXPECT_EQ( recorder.take(), Heard{ "259[kernelDrops]" } );
   status->pktDropRespIs( Response( kernelDrops, 5, 100, 1 ) );
   status->pktDropRespIs( status->pktDropResp( kernelDrops ) );
   EXPECT_EQ( recorder.take(), Heard{} );
}

TEST( StatusTest, aResponseThatDiffersInOneFieldReplacesTheOneBefore )
{
   const auto status = statusFactory( "sampled" );
   status->pktDropRespIs( Response( kernelDrops, 5, 100, 1 ) );
   Recorder recorder( *status );
   const std::string before =
         "259[kernelDrops] was FlowTracking::PktDropCounterUpdateResponse[";
   status->pktDropRespIs( Response( kernelDrops, 5, 100, 2 ) );
   EXPECT_EQ( recorder.take(),
         Heard{ before + "pktDropReason=kernelDrops,pktDrops=5,pkts=100,writerSeqNo=1]" } );
   status->pktDropRespIs( Response( kernelDrops, 5, 101, 2 ) );
   EXPECT_EQ( recorder.take(),
         Heard{ before + "pktDropReason=kernelDrops,pktDrops=5,pkts=100,writerSeqNo=2]" } );
   status->pktDropRespIs( Response( kernelDrops, 6, 101, 2 ) );
   EXPECT_EQ( recorder.take(),
         Heard{ before + "pktDropReason=kernelDrops,pktDrops=5,pkts=101,writerSeqNo=2]" } );
   EXPECT_EQ( status->pktDropResp( kernelDrops ), Response( kernelDrops, 6, 101, 2 ) );
   EXPECT_EQ( status->pktDropResp().size(), 1U );
}

TEST( StatusTest, aResponseIsReplacedWhereItLies )
{
   const auto status = statusFactory( "sampled" );
   status->pktDropRespIs( Response( kernelDrops, 5, 100, 1 ) );
   const Response & stored = status->pktDropResp( kernelDrops );
   status->pktDropRespIs( Response( kernelDrops, 6, 101, 2 ) );
   EXPECT_EQ( &status->pktDropResp( kernelDrops ), &stored );
   EXPECT_EQ( stored.writerSeqNo(), 2 );
}

TEST( StatusTest, responsesForBothReasonsLiveSideBySide )
{
   const auto status = statusFactory( "sampled" );
   status->pktDropRespIs( Response( kernelDrops, 1, 10, 7 ) );
   status->pktDropRespIs( Response( ftFullDrops, 2, 20, 8 ) );
   EXPECT_EQ( status->pktDropResp().size(), 2U );
   EXPECT_EQ( status->pktDropResp( kernelDrops ).pktDrops(), 1U );
   EXPECT_EQ( status->pktDropResp( ftFullDrops ).pktDrops(), 2U );
   Recorder recorder( *status );
   EXPECT_EQ( status->pktDropRespDel( kernelDrops ), Response( kernelDrops, 1, 10, 7 ) );
   EXPECT_EQ( recorder.take().size(), 1U );
   EXPECT_EQ( status->pktDropRespDel( kernelDrops ), Response() );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( status->pktDropResp( kernelDrops ), Response() );
   EXPECT_EQ( status->pktDropResp( ftFullDrops ), Response( ftFullDrops, 2, 20, 8 ) );
   status->pktDropRespDelAll();
   EXPECT_EQ( recorder.take().size(), 1U );
   EXPECT_TRUE( status->pktDropResp().empty() );
}

TEST( StatusTest, flowOutTracksChangedTrackers )
{
   const auto status = statusFactory( "sampled" );
   Status::FlowOut ofRoot( status );
   const auto tracker = status->ftStatusIs( "campus" );
   EXPECT_TRUE( ofRoot.hasDirtyCollKeys() );
   TrackerStatus::FlowOut ofTracker( tracker );
   tracker->activeIs( true );
   EXPECT_TRUE( ofTracker.hasChanges() );
   EXPECT_FALSE( ofTracker.hasDirtyCollKeys() );
   tracker->expStatusIs( "operators" );
   EXPECT_TRUE( ofTracker.hasDirtyCollKeys() );
}

} // namespace
