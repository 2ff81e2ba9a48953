// The hardware status as a platform agent writes it.
#include "tests/support/Recorder.h"

#include "FlowTracker/HwFlowTrackingStatus.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace HwFlowTracking;
using Ipfix::TemplateId;
using Ipfix::TemplateStatus;
using Sflow::SampleTruncateSizeType;
using TestSupport::Heard;
using TestSupport::Recorder;
using Wyre::IntfId;

TEST( HwStatusTest, aFreshStatusHasItsDefaults )
{
   const auto status = statusFactory( "hardware" );
   EXPECT_EQ( status->name(), "hardware" );
   EXPECT_EQ( status->sampleRate(), 1048576U );
   EXPECT_FALSE( status->enabled() || status->samplingOnSubInterfaceEgressSupported() ||
         status->samplingOnSubInterfaceIngressSupported() );
   EXPECT_FALSE( status->maxSampleTruncateSize().has_value() );
   EXPECT_TRUE( status->hwFtStatus().empty() && status->hwIntfFtStatus().empty() );
   EXPECT_TRUE( status->egressHwIntfFtStatus().empty() && status->templateStatus().empty() );
   EXPECT_EQ( Status::StatusIs( "again" )->sampleRate(), 1048576U );
}

TEST( HwStatusTest, aSizeOfNoughtIsNoSize )
{
   const auto status = statusFactory( "hardware" );
   Recorder recorder( *status );
   status->maxSampleTruncateSizeIs( std::nullopt );
   status->maxSampleTruncateSizeIs( SampleTruncateSizeType( 0 ) );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_FALSE( status->maxSampleTruncateSize().has_value() );
   status->maxSampleTruncateSizeIs( SampleTruncateSizeType( 128 ) );
   status->maxSampleTruncateSizeIs( SampleTruncateSizeType( 128 ) );
   EXPECT_EQ( recorder.take(), Heard{ "262 was " } );
   EXPECT_EQ( status->maxSampleTruncateSize(), SampleTruncateSizeType( 128 ) );
   status->maxSampleTruncateSizeIs( SampleTruncateSizeType( 0 ) );
   EXPECT_FALSE( status->maxSampleTruncateSize().has_value() );
   EXPECT_EQ( recorder.take(), Heard{ "262 was 128" } );
}

TEST( HwStatusTest, aFreshGroupHasItsDefaultsAndItsMirroring )
{
   const auto tracker = ftStatusFactory( "t" );
   const auto group = tracker->hwFgStatusIs( "g" );
   EXPECT_EQ( group->name(), "g" );
   EXPECT_EQ( group->fgName(), "g" );
   EXPECT_EQ( group->templateId().value(), 65535 );
   EXPECT_EQ( group->seqno(), 0U );
   EXPECT_EQ( group->genId(), 0U );
   EXPECT_TRUE( group->hwFgId().empty() );
   ASSERT_NE( group->mirrorStatus(), nullptr );
   EXPECT_FALSE( group->mirrorStatus()->active() );
   EXPECT_EQ( group->mirrorStatus()->parent(), group.get() );
   EXPECT_EQ( group->parent(), tracker.get() );
   EXPECT_EQ( FgStatus::FgStatusIs( "h" )->fgName(), "h" );
}

TEST( HwStatusTest, mirroringIsMadeOnceAndAgainAfterItWasDeleted )
{
   const auto group = FgStatus::FgStatusIs( "g" );
   Recorder recorder( *group );
   const auto first = group->mirrorStatus();
   EXPECT_EQ( group->mirrorStatusIs(), first );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( group->mirrorStatusDel(), first );
   EXPECT_EQ( first->parent(), nullptr );
   EXPECT_EQ( group->mirrorStatus(), nullptr );
   EXPECT_EQ( group->mirrorStatusDel(), nullptr );
   const auto second = group->mirrorStatusIs();
   EXPECT_NE( second, first );
   EXPECT_EQ( second->parent(), group.get() );
   EXPECT_EQ( recorder.take(), ( Heard{ "262 was ", "262" } ) );
   EXPECT_FALSE( ftMirrorStatusFactory()->active() );
   EXPECT_TRUE( FtMirrorStatus::FtMirrorStatusIs()->name().empty() );
}

TEST( HwStatusTest, theGenerationOfAGroupWrapsAroundAndStandsStillForNought )
{
   const auto group = FgStatus::FgStatusIs( "g" );
   Recorder recorder( *group );
   EXPECT_EQ( group->genIdInc( 0 ), 0U );
   EXPECT_EQ( recorder.take(), Heard{} );
   group->genIdIs( 4294967295 );
   EXPECT_EQ( group->genIdInc( 1 ), 0U );
   EXPECT_EQ( recorder.take(), ( Heard{ "263 was 0", "263 was 4294967295" } ) );
}

TEST( HwStatusTest, groupsInHardwareAreASet )
{
   const auto group = FgStatus::FgStatusIs( "g" );
   Recorder recorder( *group );
   group->hwFgIdIs( 65535 );
   group->hwFgIdIs( 65535 );
   EXPECT_EQ( recorder.take(), Heard{ "261[65535]" } );
   EXPECT_TRUE( group->hwFgId( 65535 ) );
   group->hwFgIdDel( 1 );
   EXPECT_EQ( recorder.take(), Heard{} );
   group->hwFgIdDel( 65535 );
   EXPECT_EQ( recorder.take(), Heard{ "261[65535]" } );
}

TEST( HwStatusTest, aFreshTrackerHasItsDefaults )
{
   const auto tracker = FtStatus::FtStatusIs( "t" );
   EXPECT_EQ( tracker->inactiveTimeout().value(), 15000U );
   EXPECT_EQ( tracker->activeInterval().value(), 300000U );
   EXPECT_EQ( tracker->flowRecordFormat(), FlowTracking::FlowRecordFormat() );
   EXPECT_TRUE( tracker->hwFgStatus().empty() && tracker->templateStatus().empty() );
}

TEST( HwStatusTest, freshOnesLikeAGroupAndATrackerHaveTheirNamesAndNothingElse )
{
   const auto tracker = ftStatusFactory( "t" );
   const auto group = tracker->hwFgStatusIs( "g" );
   group->genIdInc( 5 );
   group->mirrorStatus()->activeIs( true );
   const auto freshGroup = group->instantiate();
   EXPECT_EQ( freshGroup->fgName(), "g" );
   EXPECT_EQ( freshGroup->parent(), nullptr );
   EXPECT_EQ( freshGroup->genId(), 0U );
   EXPECT_FALSE( freshGroup->mirrorStatus()->active() );
   const auto freshTracker = tracker->instantiate();
   EXPECT_EQ( freshTracker->name(), "t" );
   EXPECT_EQ( freshTracker->parent(), nullptr );
   EXPECT_TRUE( freshTracker->hwFgStatus().empty() );
}

TEST( HwStatusTest, anInterfaceIsMadeOnceAndRefusesAnotherState )
{
   const auto status = statusFactory( "hardware" );
   const IntfId port( "Ethernet1" );
   Recorder recorder( *status );
   const auto intf = status->hwIntfFtStatusIs( port, true, "" );
   EXPECT_EQ( status->hwIntfFtStatusIs( port, true, "" ), intf );
   EXPECT_EQ( recorder.take(), Heard{ "264[Ethernet1]" } );
   EXPECT_THROW( status->hwIntfFtStatusIs( port, false, "" ), Corvo::ReinstantiationException );
   EXPECT_EQ( status->hwIntfFtStatus( port ), intf );
   EXPECT_TRUE( intf->active() );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( status->hwIntfFtStatus( IntfId( "Ethernet2" ) ), nullptr );
   EXPECT_EQ( status->hwIntfFtStatusDel( port ), intf );
   EXPECT_FALSE( status->hwIntfFtStatusIs( port, false, "down" )->active() );
}

/// Why another state of Ethernet1, which is active without a reason, is refused.
std::string refusal( Status & status, bool active, const Corvo::String & reason )
{
   try {
      status.egressHwIntfFtStatusIs( IntfId( "Ethernet1" ), active, reason );
   } catch ( const Corvo::ReinstantiationException & e ) {
      return e.what();
   }
   return "";
}

TEST( HwStatusTest, aRefusalNamesWhatIsAnother )
{
   const auto status = statusFactory( "hardware" );
   status->egressHwIntfFtStatusIs( IntfId( "Ethernet1" ), true, "" );
   const std::string active =
         R"(HwFlowTracking::IntfFtStatus "Ethernet1" exists with another active (attribute 259): )"
         R"(old "true", new "false")";
   EXPECT_EQ( refusal( *status, false, "" ), active );
   EXPECT_EQ( refusal( *status, false, "down" ), active ) << "it is compared first";
   EXPECT_EQ( refusal( *status, true, "down" ),
         R"(HwFlowTracking::IntfFtStatus "Ethernet1" exists with another reason (attribute 260): )"
         R"(old "", new "down")" );
}

TEST( HwStatusTest, bothDirectionsOfAnInterfaceAreKeptApart )
{
   const auto status = statusFactory( "hardware" );
   const IntfId port( "Ethernet1" );
   const auto ingress = status->hwIntfFtStatusIs( port, true, "" );
   const auto egress = status->egressHwIntfFtStatusIs( port, false, "no resources" );
   EXPECT_NE( ingress, egress );
   EXPECT_EQ( egress->reason(), "no resources" );
   EXPECT_EQ( egress->name(), "Ethernet1" );
   status->hwIntfFtStatusDelAll();
   EXPECT_EQ( status->egressHwIntfFtStatus( port ), egress );
   EXPECT_EQ( status->hwIntfFtStatus( port ), nullptr );
}

TEST( HwStatusTest, templatesAreMadeOnce )
{
   const auto status = statusFactory( "hardware" );
   Recorder recorder( *status );
   const auto made = status->templateStatusIs( TemplateId( 300 ) );
   EXPECT_EQ( status->templateStatusIs( TemplateId( 300 ) ), made );
   EXPECT_EQ( made->templateId(), TemplateId( 300 ) );
   EXPECT_EQ( made->parent(), status.get() );
   EXPECT_EQ( recorder.take(), Heard{ "266[300]" } );
   EXPECT_EQ( status->templateStatusDel( TemplateId( 300 ) ), made );
   EXPECT_EQ( status->templateStatus( TemplateId( 300 ) ), nullptr );
}

TEST( HwStatusTest, aTrackerRefersToTemplatesThatOthersOwn )
{
   const auto status = statusFactory( "hardware" );
   const auto tracker = status->hwFtStatusIs( "t" );
   const auto made = status->templateStatusIs( TemplateId( 300 ) );
   Recorder recorder( *tracker );
   tracker->templateStatusIs( made );
   tracker->templateStatusIs( made );
   EXPECT_EQ( recorder.take(), Heard{ "259[300]" } );
   EXPECT_EQ( made->parent(), status.get() );
   EXPECT_EQ( tracker->templateStatus( TemplateId( 300 ) ), made );
   const auto other = Ipfix::templateStatusFactory( TemplateId( 300 ) );
   tracker->templateStatusIs( other );
   EXPECT_EQ( recorder.take().size(), 1U );
   EXPECT_EQ( tracker->templateStatus().size(), 1U );
   EXPECT_EQ( tracker->templateStatus( TemplateId( 300 ) ), other );
   EXPECT_EQ( tracker->templateStatusDel( TemplateId( 301 ) ), nullptr );
   EXPECT_EQ( tracker->templateStatusDel( TemplateId( 300 ) ), other );
   EXPECT_EQ( tracker->templateStatus( TemplateId( 300 ) ), nullptr );
}

TEST( HwStatusTest, aReplacedTemplateIsHeardWithTheOneBefore )
{
   const auto tracker = ftStatusFactory( "t" );
   const auto before = Ipfix::templateStatusFactory( TemplateId( 300 ) );
   tracker->templateStatusIs( before );
   Recorder recorder( *tracker );
   bool told = false;
   recorder.then = [ & ]( const Corvo::Change & change ) {
      ASSERT_NE( change.key< TemplateId >(), nullptr );
      EXPECT_EQ( *change.key< TemplateId >(), TemplateId( 300 ) );
      const auto * old = change.oldValue< Corvo::Ptr< const TemplateStatus > >();
      ASSERT_NE( old, nullptr );
      EXPECT_EQ( *old, before );
      told = true;
   };
   tracker->templateStatusIs( Ipfix::templateStatusFactory( TemplateId( 300 ) ) );
   EXPECT_TRUE( told );
}

TEST( HwStatusTest, aTemplateThatWasDeletedLivesWhileATrackerRefersToIt )
{
   const auto status = statusFactory( "hardware" );
   const auto tracker = status->hwFtStatusIs( "t" );
   const std::size_t live = Vok::AllocTracker::liveCount( "Ipfix::TemplateStatus" );
   tracker->templateStatusIs( status->templateStatusIs( TemplateId( 300 ) ) );
   status->templateStatusDel( TemplateId( 300 ) );
   EXPECT_EQ( tracker->templateStatus( TemplateId( 300 ) )->templateId(), TemplateId( 300 ) );
   EXPECT_EQ( tracker->templateStatus( TemplateId( 300 ) )->parent(), nullptr );
   EXPECT_EQ( Vok::AllocTracker::liveCount( "Ipfix::TemplateStatus" ), live + 1 );
   tracker->templateStatusDelAll();
   EXPECT_EQ( Vok::AllocTracker::liveCount( "Ipfix::TemplateStatus" ), live );
}

TEST( HwStatusTest, anEmptyPointerIsRefusedByName )
{
   const auto tracker = ftStatusFactory( "t" );
   Recorder recorder( *tracker );
   try {
      tracker->templateStatusIs( nullptr );
      ADD_FAILURE() << "an empty pointer was taken";
   } catch ( const Corvo::NullPointerException & e ) {
      EXPECT_EQ( std::string( e.what() ),
            "HwFlowTracking::FtStatus::templateStatus (attribute 259) takes no empty pointer" );
   }
   EXPECT_TRUE( tracker->templateStatus().empty() );
   EXPECT_EQ( recorder.take(), Heard{} );
}

template< class Name >
concept hasGroupFactory = requires( const Name & name )
{
   fgStatusFactory( name );
};

TEST( HwStatusTest, aGroupHasNoFactory )
{
   static_assert( !hasGroupFactory< Corvo::String > );
   const Vok::TypeData & type = *Corvo::ModuleInspectData::findType( "HwFlowTracking::FgStatus" );
   EXPECT_EQ( type.instantiate( "g" )->name(), "g" );
}

} // namespace
