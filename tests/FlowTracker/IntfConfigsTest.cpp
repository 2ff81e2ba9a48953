// Bindings of interfaces to trackers, and clients' sample modes.
#include "tests/support/Recorder.h"

#include "FlowTracker/FlowTrackerConfig.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>

namespace {

using namespace FlowTracking;
using TestSupport::Heard;
using TestSupport::Recorder;
using Wyre::IntfId;

std::string refusal( FlowTrackerIntfConfigs & configs, const Corvo::String & tracker,
      FlowTrackerSampleMode mode )
{
   try {
      configs.flowTrackerIntfConfigIs( IntfId( "Ethernet1" ), tracker, mode );
   } catch ( const Corvo::ReinstantiationException & e ) {
      return e.what();
   }
   return "";
}

TEST( IntfConfigsTest, aBindingIsItsArguments )
{
   const auto binding =
         flowTrackerIntfConfigFactory( IntfId( "Ethernet1" ), "t", sampleModeTargeted );
   EXPECT_EQ( binding->intfId(), IntfId( "Ethernet1" ) );
   EXPECT_EQ( binding->trackerName(), "t" );
   EXPECT_EQ( binding->sampleMode(), sampleModeTargeted );
   EXPECT_EQ( binding->name(), "Ethernet1" );
}

TEST( IntfConfigsTest, anInterfaceIsBoundOncePerDirection )
{
   const auto configs = flowTrackerIntfConfigsFactory( "bindings" );
   EXPECT_TRUE( configs->flowTrackerIntfConfig().empty() );
   EXPECT_TRUE( configs->flowTrackerEgressIntfConfig().empty() );
   const IntfId a( "Ethernet1" );
   const auto ingress = configs->flowTrackerIntfConfigIs( a, "t", sampleModeAll );
   const auto egress = configs->flowTrackerEgressIntfConfigIs( a, "t", sampleModeAll );
   EXPECT_NE( ingress, egress );
   EXPECT_EQ( ingress->parent(), configs.get() );
   configs->flowTrackerEgressIntfConfigDel( a );
   EXPECT_EQ( configs->flowTrackerEgressIntfConfig( a ), nullptr );
   EXPECT_EQ( configs->flowTrackerIntfConfig( a ), ingress );
   EXPECT_EQ( egress->parent(), nullptr );
}

TEST( IntfConfigsTest, bindingTwiceIsSilentAndAnotherTrackerFails )
{
   const auto configs = flowTrackerIntfConfigsFactory( "bindings" );
   Recorder recorder( *configs );
   const IntfId a( "Ethernet1" );
   const auto first = configs->flowTrackerIntfConfigIs( a, "t", sampleModeAll );
   EXPECT_EQ( configs->flowTrackerIntfConfigIs( a, "t", sampleModeAll ), first );
   EXPECT_EQ( recorder.take(), Heard{ "258[Ethernet1]" } );
   EXPECT_THROW( configs->flowTrackerIntfConfigIs( a, "u", sampleModeAll ),
         Corvo::ReinstantiationException );
   EXPECT_THROW( configs->flowTrackerIntfConfigIs( a, "t", sampleModeFiltered ),
         Corvo::ReinstantiationException );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( configs->flowTrackerIntfConfig( a ), first );
   EXPECT_EQ( first->trackerName(), "t" );
}

TEST( IntfConfigsTest, theTrackerIsComparedBeforeTheSampleMode )
{
   const auto configs = flowTrackerIntfConfigsFactory( "bindings" );
   configs->flowTrackerIntfConfigIs( IntfId( "Ethernet1" ), "t", sampleModeAll );
   const std::string both = refusal( *configs, "u", sampleModeFiltered );
   EXPECT_EQ( both, refusal( *configs, "u", sampleModeAll ) );
   EXPECT_NE( both.find( "trackerName" ), std::string::npos ) << both;
   EXPECT_NE( both.find( "259" ), std::string::npos ) << both;
   EXPECT_EQ( both.find( "sampleMode" ), std::string::npos ) << both;
   const std::string mode = refusal( *configs, "t", sampleModeFiltered );
   EXPECT_NE( mode.find( "sampleMode" ), std::string::npos ) << mode;
   EXPECT_NE( mode.find( "260" ), std::string::npos ) << mode;
   EXPECT_NE( mode.find( "sampleModeAll" ), std::string::npos ) << mode;
   EXPECT_NE( mode.find( "sampleModeFiltered" ), std::string::npos ) << mode;
   EXPECT_EQ( mode.find( "trackerName" ), std::string::npos ) << mode;
}

TEST( IntfConfigsTest, deletingClearsParentsAndIsHeardOncePerBinding )
{
   const auto configs = flowTrackerIntfConfigsFactory( "bindings" );
   const auto a = configs->flowTrackerIntfConfigIs( IntfId( "Ethernet1" ), "t", sampleModeAll );
   configs->flowTrackerIntfConfigIs( IntfId( "Ethernet2" ), "t", sampleModeAll );
   Recorder recorder( *configs );
   EXPECT_EQ( configs->flowTrackerIntfConfigDel( IntfId( "Ethernet3" ) ), nullptr );
   EXPECT_EQ( recorder.take(), Heard{} );
   configs->flowTrackerIntfConfigDelAll();
   EXPECT_EQ( recorder.take().size(), 2U );
   EXPECT_EQ( a->parent(), nullptr );
   EXPECT_TRUE( configs->flowTrackerIntfConfig().empty() );
}

TEST( IntfConfigsTest, argumentsBeyondTheNameAreRefused )
{
   const Vok::TypeData & type =
         *Corvo::ModuleInspectData::findType( "FlowTracking::FlowTrackerIntfConfigs" );
   EXPECT_EQ( type.instantiate( "bindings" )->name(), "bindings" );
   EXPECT_THROW( type.instantiate( "bindings", { "more" } ), Corvo::ConstructorArgsException );
}

TEST( IntfConfigsTest, clientModesAreConvertedByMeaningNotByNumber )
{
   EXPECT_EQ( convertClientSampleMode( Client::sampleModeAll ), sampleModeAll );
   const FlowTrackerSampleMode targeted = convertClientSampleMode( Client::sampleModeTargeted );
   EXPECT_EQ( targeted, sampleModeTargeted );
   EXPECT_EQ( static_cast< unsigned >( targeted ), 2U );
}

TEST( IntfConfigsDeathTest, anUnknownClientModeEndsTheProcess )
{
   for ( const unsigned code : { 2U, 255U } ) {
      EXPECT_EXIT(
            convertClientSampleMode( static_cast< Client::FlowTrackerSampleMode >( code ) ),
            testing::KilledBySignal( SIGABRT ),
            "^FlowTracker/FlowTrackerConfig:57: FlowTracking::FlowTrackerSampleMode "
            "FlowTracking::convertClientSampleMode"
            "\\(FlowTracking::Client::FlowTrackerSampleMode\\): assertion \"false\" failed\n$" );
   }
}

} // namespace
