// Whole hardware statuses as change streams: what a reader has is what the writer has.
#include "tests/FlowTracker/HwStatusTables.h"
#include "tests/support/Recorder.h"
#include "tests/support/ReplicatedTree.h"

#include "FlowTracker/HwFlowTrackingStatus.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace FlowTrackerTest;
using namespace HwFlowTracking;
using Ipfix::TemplateId;
using TestSupport::Away;
using TestSupport::EntityPtr;
using TestSupport::EntityTable;
using TestSupport::Heard;
using TestSupport::Recorder;
using TestSupport::ReplicatedTree;
using TestSupport::setAll;

/// The types of a hardware status that have anything to change.
std::vector< EntityTable > types()
{
   return { hwStatus(), ftStatus(), fgStatus(), ftMirrorStatus() };
}

/// Gives every attribute of every entity of a hardware status another value than its default.
void setTree( const EntityPtr & root )
{
   setAll( *root, hwStatus() );
   auto & status = static_cast< Status & >( *root );
   const auto tracker = status.hwFtStatus( "tracker" );
   setAll( *tracker, ftStatus() );
   tracker->templateStatusIs( status.templateStatus( TemplateId( 300 ) ) );
   setAll( *tracker->hwFgStatus( "group" ), fgStatus() );
   setAll( *tracker->hwFgStatus( "group" )->mirrorStatus(), ftMirrorStatus() );
}

struct HwStatusReplicationTest : testing::Test {
   Status & root() { return static_cast< Status & >( *tree.root ); }
   Status & replica() { return static_cast< Status & >( *tree.replica ); }

   ReplicatedTree tree{ hwStatus() };
};

TEST_F( HwStatusReplicationTest, everyAttributeAwayFromItsDefaultReplicatesAndSurvivesAResync )
{
   expectWholeTreeFollows( hwStatus(), types(), setTree );
}

TEST_F( HwStatusReplicationTest, randomTreesFollow )
{
   Away away;
   ASSERT_NO_FATAL_FAILURE( expectRandomTreesFollow( hwStatus(), { 60, 40, 60 }, away ) );
   EXPECT_EQ( away.missing( types() ), "" );
   EXPECT_TRUE( away.referredTo( "HwFlowTracking::FtStatus::templateStatus" ) );
}

TEST_F( HwStatusReplicationTest, aTrackersTemplateIsTheReplicasOwnUntilItLeaves )
{
   const auto made = root().templateStatusIs( TemplateId( 300 ) );
   root().hwFtStatusIs( "t" )->templateStatusIs( made );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   const auto there = replica().templateStatus( TemplateId( 300 ) );
   const auto tracker = replica().hwFtStatus( "t" );
   EXPECT_EQ( tracker->templateStatus( TemplateId( 300 ) ), there );
   Recorder recorder( *tracker );
   root().templateStatusDel( TemplateId( 300 ) );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   EXPECT_EQ( tracker->templateStatus( TemplateId( 300 ) ), there ) << "it keeps its identity";
   EXPECT_EQ( there->parent(), nullptr );
   EXPECT_EQ( recorder.take(), Heard{} );
}

/// In one batch a template is deleted and made again, and the reference goes to the new one.
TEST_F( HwStatusReplicationTest, aTemplateThatWasMadeAnewIsReferredToAnew )
{
   root().hwFtStatusIs( "t" )->templateStatusIs( root().templateStatusIs( TemplateId( 300 ) ) );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   const auto before = replica().templateStatus( TemplateId( 300 ) );
   root().templateStatusDel( TemplateId( 300 ) );
   root().hwFtStatus( "t" )->templateStatusIs( root().templateStatusIs( TemplateId( 300 ) ) );
   Recorder recorder( *replica().hwFtStatus( "t" ) );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   const auto after = replica().templateStatus( TemplateId( 300 ) );
   EXPECT_NE( after, before );
   EXPECT_EQ( replica().hwFtStatus( "t" )->templateStatus( TemplateId( 300 ) ), after );
   EXPECT_EQ( recorder.take().size(), 1U );
}

TEST_F( HwStatusReplicationTest, aTemplateThatNeverWasInTheTreeTravelsWithItsId )
{
   root().hwFtStatusIs( "t" )->templateStatusIs(
         Ipfix::templateStatusFactory( TemplateId( 301 ) ) );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   const auto there = replica().hwFtStatus( "t" )->templateStatus( TemplateId( 301 ) );
   ASSERT_NE( there, nullptr );
   EXPECT_EQ( there->templateId(), TemplateId( 301 ) );
   EXPECT_EQ( there->parent(), nullptr );
   EXPECT_TRUE( replica().templateStatus().empty() );
}

TEST_F( HwStatusReplicationTest, anInterfaceThatWasMadeAnewIsHeardAsDeletedAndAsMade )
{
   const Wyre::IntfId port( "Ethernet1" );
   root().hwIntfFtStatusIs( port, true, "" );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   const auto before = replica().hwIntfFtStatus( port );
   root().hwIntfFtStatusDel( port );
   root().hwIntfFtStatusIs( port, false, "no resources" );
   Recorder recorder( *tree.replica );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   const auto after = replica().hwIntfFtStatus( port );
   EXPECT_NE( after, before );
   EXPECT_FALSE( after->active() );
   EXPECT_EQ( after->reason(), "no resources" );
   EXPECT_EQ( recorder.take(),
         ( Heard{ "264[Ethernet1] was Ethernet1", "264[Ethernet1]" } ) );
}

TEST_F( HwStatusReplicationTest, mirroringThatWasDeletedIsGoneAndMadeAnewIsNew )
{
   const auto group = root().hwFtStatusIs( "t" )->hwFgStatusIs( "g" );
   group->mirrorStatus()->activeIs( true );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   const auto there = replica().hwFtStatus( "t" )->hwFgStatus( "g" );
   EXPECT_TRUE( there->mirrorStatus()->active() );
   group->mirrorStatusDel();
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   EXPECT_EQ( there->mirrorStatus(), nullptr );
   group->mirrorStatusIs();
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   ASSERT_NE( there->mirrorStatus(), nullptr );
   EXPECT_FALSE( there->mirrorStatus()->active() );
}

} // namespace
