// The root of a hardware configuration and its bindings, as a client writes them.
#include "tests/support/Recorder.h"

#include "FlowTracker/HwFlowTrackingConfig.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace HwFlowTracking;
using Corvo::Duration;
using FlowTracking::FlowTrackerSampleMode;
using FlowTracking::FtId;
using FlowTracking::sampleModeAll;
using FlowTracking::sampleModeFiltered;
using FlowTracking::SampleProbability;
using TestSupport::Heard;
using TestSupport::Recorder;
using Wyre::IntfId;

constexpr const char * samplesMessage =
      "HwFlowTracking::Config::minSamplesBeforeHwOffload < "
      "FlowTracking::HoHeuristicsConstants::minSamplesLb or > "
      "FlowTracking::HoHeuristicsConstants::minSamplesUb not allowed";

TEST( HwConfigTest, aFreshRootHasItsDefaults )
{
   const auto config = configFactory( "hardware" );
   EXPECT_EQ( config->name(), "hardware" );
   static_assert( HwFlowTracking::Config::sampleRateDefault() == 1048576 );
   EXPECT_EQ( config->sampleRate(), 1048576U );
   EXPECT_EQ( config->sampleLimit(), 0U );
   EXPECT_EQ( config->sampleSize().value(), 1024 );
   EXPECT_EQ( config->minSamplesBeforeHwOffload(), 1U );
   EXPECT_EQ( config->hwOffloadIpv4StartTime(), Duration::infinity() );
   EXPECT_EQ( config->hwOffloadIpv6StartTime(), Duration::infinity() );
   EXPECT_FALSE( config->hwOffloadIpv4() || config->hwOffloadIpv4Rocev2() ||
         config->hwOffloadIpv6() || config->hwOffloadIpv6Rocev2() ||
         config->hwOffloadIpv4ConflictWithMultipleInstances() ||
         config->hwOffloadIpv6ConflictWithMultipleInstances() ||
         config->ipfixExportShapingDisabled() || config->swExport() ||
         config->trapSuppression() );
   EXPECT_EQ( config->ipfixExportShapingRate(), 0U );
   EXPECT_TRUE( config->ignorableRocev2QpId().empty() && config->hwFtConfig().empty() );
   EXPECT_TRUE( config->hwIntfFtConfig().empty() && config->hwEgressIntfFtConfig().empty() );
   EXPECT_EQ( config->encapFlags().value() + config->filterTypes().value(), 0 );
   EXPECT_EQ( config->packetBufferSampleProb25(), SampleProbability( 0 ) );
   EXPECT_EQ( config->packetBufferSampleProb50(), SampleProbability( 0 ) );
   EXPECT_EQ( config->packetBufferSampleProb75(), SampleProbability( 0 ) );
   EXPECT_EQ( config->packetBufferSampleProb100(), SampleProbability( 0 ) );
   EXPECT_EQ( config->packetBufferShaperRate().value(), 0U );
   EXPECT_EQ( config->packetBufferShaperBurst().value(), 0U );
}

TEST( HwConfigTest, noSamplesBeforeOffloadAreRefused )
{
   const auto config = configFactory( "hardware" );
   Recorder recorder( *config );
   try {
      config->minSamplesBeforeHwOffloadIs( 0 );
      ADD_FAILURE() << "0 was taken";
   } catch ( const Corvo::RangeException & e ) {
      EXPECT_EQ( std::string( e.what() ), samplesMessage );
   }
   EXPECT_EQ( config->minSamplesBeforeHwOffload(), 1U );
   config->minSamplesBeforeHwOffloadIs( 1 );
   EXPECT_EQ( recorder.take(), Heard{} );
   config->minSamplesBeforeHwOffloadIs( 4294967295 );
   EXPECT_EQ( config->minSamplesBeforeHwOffload(), 4294967295U );
   EXPECT_EQ( recorder.take(), Heard{ "271 was 1" } );
}

TEST( HwConfigTest, anUnknownStartTimeIsInfinite )
{
   const auto config = configFactory( "hardware" );
   Recorder recorder( *config );
   config->hwOffloadIpv4StartTimeIs( Duration::infinity() );
   EXPECT_EQ( recorder.take(), Heard{} );
   config->hwOffloadIpv4StartTimeIs( Duration( 12.5 ) );
   config->hwOffloadIpv4StartTimeIs( Duration::infinity() );
   EXPECT_EQ( recorder.take(), ( Heard{ "269 was inf", "269 was 12.5" } ) );
}

TEST( HwConfigTest, aTrackerOfAnotherNumberFailsAndChangesNothing )
{
   const auto config = configFactory( "hardware" );
   const auto tracker = config->hwFtConfigIs( "t", FtId( 7 ) );
   tracker->mplsExportIs( true );
   Recorder recorder( *config );
   EXPECT_EQ( config->hwFtConfigIs( "t", FtId( 7 ) ), tracker );
   try {
      config->hwFtConfigIs( "t", FtId( 8 ) );
      ADD_FAILURE() << "another number was taken";
   } catch ( const Corvo::ReinstantiationException & e ) {
      EXPECT_EQ( std::string( e.what() ),
            R"(HwFlowTracking::FtConfig "t" exists with another ftId (attribute 258): old "7", )"
            R"(new "8")" );
   }
   EXPECT_EQ( config->hwFtConfig( "t" ), tracker );
   EXPECT_EQ( tracker->ftId(), FtId( 7 ) );
   EXPECT_TRUE( tracker->mplsExport() );
   EXPECT_EQ( recorder.take(), Heard{} );
}

TEST( HwConfigTest, aDeletedTrackerIsHandedBack )
{
   const auto config = configFactory( "hardware" );
   const auto tracker = config->hwFtConfigIs( "t", FtId( 7 ) );
   EXPECT_EQ( tracker->parent(), config.get() );
   Recorder recorder( *config );
   EXPECT_EQ( config->hwFtConfigDel( "u" ), nullptr );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( config->hwFtConfigDel( "t" ), tracker );
   EXPECT_EQ( tracker->parent(), nullptr );
   EXPECT_EQ( recorder.take(), Heard{ "274[t] was t" } );
}

TEST( HwConfigTest, anInterfaceIsBoundOncePerDirection )
{
   const auto config = configFactory( "hardware" );
   const IntfId port( "Ethernet1" );
   const auto t = config->hwFtConfigIs( "t", FtId( 7 ) );
   const auto u = config->hwFtConfigIs( "u", FtId( 8 ) );
   const auto ingress = config->hwIntfFtConfigIs( port, t, sampleModeAll );
   const auto egress = config->hwEgressIntfFtConfigIs( port, u, sampleModeFiltered );
   EXPECT_NE( ingress, egress );
   EXPECT_EQ( ingress->name(), "Ethernet1" );
   EXPECT_EQ( ingress->intfId(), port );
   EXPECT_EQ( ingress->hwFtConfig(), t );
   EXPECT_EQ( egress->hwFtConfig(), u );
   EXPECT_EQ( egress->sampleMode(), sampleModeFiltered );
   EXPECT_EQ( config->hwEgressIntfFtConfigDel( port ), egress );
   EXPECT_EQ( config->hwIntfFtConfig( port ), ingress );
   EXPECT_EQ( config->hwEgressIntfFtConfig( port ), nullptr );
}

/// Why a binding of Ethernet1 is refused.
std::string refusal( HwFlowTracking::Config & config, const Corvo::Ptr< const FtConfig > & tracker,
      FlowTrackerSampleMode mode )
{
   try {
      config.hwIntfFtConfigIs( IntfId( "Ethernet1" ), tracker, mode );
   } catch ( const Corvo::ReinstantiationException & e ) {
      return e.what();
   }
   return "";
}

TEST( HwConfigTest, bindingTwiceIsSilentAndAnotherTrackerOrModeFails )
{
   const auto config = configFactory( "hardware" );
   const auto t = config->hwFtConfigIs( "t", FtId( 7 ) );
   const auto u = config->hwFtConfigIs( "u", FtId( 8 ) );
   const IntfId port( "Ethernet1" );
   const auto binding = config->hwIntfFtConfigIs( port, t, sampleModeAll );
   Recorder recorder( *config );
   EXPECT_EQ( config->hwIntfFtConfigIs( port, t, sampleModeAll ), binding );
   const std::string tracker =
         R"(HwFlowTracking::IntfFtConfig "Ethernet1" exists with another hwFtConfig )"
         R"((attribute 259): old "t", new "u")";
   EXPECT_EQ( refusal( *config, u, sampleModeAll ), tracker );
   EXPECT_EQ( refusal( *config, u, sampleModeFiltered ), tracker ) << "it is compared first";
   EXPECT_EQ( refusal( *config, t, sampleModeFiltered ),
         R"(HwFlowTracking::IntfFtConfig "Ethernet1" exists with another sampleMode )"
         R"((attribute 260): old "sampleModeAll", new "sampleModeFiltered")" );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( config->hwIntfFtConfig( port ), binding );
   EXPECT_EQ( binding->hwFtConfig(), t );
   config->hwIntfFtConfigDel( port );
   EXPECT_NE( config->hwIntfFtConfigIs( port, u, sampleModeFiltered ), binding );
}

TEST( HwConfigTest, anotherTrackerOfTheSameNameAndContentsIsAnother )
{
   const auto config = configFactory( "hardware" );
   const auto before = config->hwFtConfigIs( "t", FtId( 7 ) );
   const auto binding = config->hwIntfFtConfigIs( IntfId( "Ethernet1" ), before, sampleModeAll );
   config->hwFtConfigDel( "t" );
   const auto after = config->hwFtConfigIs( "t", FtId( 7 ) );
   EXPECT_EQ( Vok::treeDigest( *before ), Vok::treeDigest( *after ) );
   EXPECT_NE( refusal( *config, after, sampleModeAll ), "" );
   EXPECT_EQ( refusal( *config, before, sampleModeAll ), "" );
   EXPECT_EQ( binding->hwFtConfig(), before );
}

TEST( HwConfigTest, aDeletedTrackerIsReadableThroughItsBindingUntilThatIsDeleted )
{
   const auto config = configFactory( "hardware" );
   const IntfId port( "Ethernet1" );
   const std::size_t live = Vok::AllocTracker::liveCount( "HwFlowTracking::FtConfig" );
   config->hwIntfFtConfigIs( port, config->hwFtConfigIs( "t", FtId( 7 ) ), sampleModeAll );
   config->hwFtConfigDel( "t" );
   EXPECT_EQ( Vok::AllocTracker::liveCount( "HwFlowTracking::FtConfig" ), live + 1 );
   EXPECT_EQ( config->hwIntfFtConfig( port )->hwFtConfig()->ftId(), FtId( 7 ) );
   EXPECT_EQ( config->hwIntfFtConfig( port )->hwFtConfig()->parent(), nullptr );
   config->hwIntfFtConfigDel( port );
   EXPECT_EQ( Vok::AllocTracker::liveCount( "HwFlowTracking::FtConfig" ), live );
}

template< class B, class F, class M >
concept hasMutators = requires( B & b, F f, M m )
{
   b.hwFtConfigIs( f );
}
||
      requires( B & b, F f, M m ) { b.sampleModeIs( m ); };

TEST( HwConfigTest, aBindingHasNoMutators )
{
   static_assert( !hasMutators< IntfFtConfig, Corvo::Ptr< const FtConfig >,
                  FlowTrackerSampleMode > );
   const auto binding = intfFtConfigFactory(
         IntfId( "Ethernet1" ), ftConfigFactory( "t", FtId( 7 ) ), sampleModeAll );
   EXPECT_EQ( binding->hwFtConfig()->name(), "t" );
   for ( const Vok::AttributeData & attribute : binding->typeData().attributes() ) {
      EXPECT_FALSE( attribute.settable() ) << attribute.name();
   }
}

TEST( HwConfigTest, aFreshOneLikeItHasItsNameAndNothingElse )
{
   const auto config = configFactory( "hardware" );
   config->hwFtConfigIs( "t", FtId( 7 ) );
   config->sampleRateIs( 1 );
   const auto fresh = config->instantiate();
   EXPECT_EQ( fresh->name(), "hardware" );
   EXPECT_EQ( fresh->sampleRate(), 1048576U );
   EXPECT_TRUE( fresh->hwFtConfig().empty() );
}

} // namespace
