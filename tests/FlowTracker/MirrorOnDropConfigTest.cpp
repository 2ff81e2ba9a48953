// The root of mirror-on-drop: a configuration with a check and a function of its own.
#include "tests/support/Recorder.h"

#include "FlowTracker/FlowTrackerConfig.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using namespace FlowTracking;
using TestSupport::Heard;
using TestSupport::Recorder;

TEST( MirrorOnDropConfigTest, isAConfigInEveryRespect )
{
   static_assert( std::is_base_of_v< Config, MirrorOnDropConfig > );
   const auto config = mirrorOnDropConfigFactory( "drops" );
   const Corvo::Ptr< Config > base = config;
   EXPECT_EQ( base->name(), "drops" );
   EXPECT_EQ( base->sftAgentCount(), 1 );
   EXPECT_TRUE( base->encap().empty() );
   EXPECT_EQ( base->typeData().name(), "FlowTracking::MirrorOnDropConfig" );
   ASSERT_NE( base->typeData().base(), nullptr );
   EXPECT_EQ( base->typeData().base()->name(), "FlowTracking::Config" );
   EXPECT_EQ( MirrorOnDropConfig::MirrorOnDropConfigIs( "d" )->name(), "d" );
   EXPECT_THROW( config->sftAgentCountIs( 9 ), Corvo::RangeException );
   config->sftAgentCountIs( 8 );
   EXPECT_EQ( config->sftAgentCount(), 8 );
}

TEST( MirrorOnDropConfigTest, itsFlowOutIsThatOfAConfig )
{
   const auto config = mirrorOnDropConfigFactory( "drops" );
   Config::FlowOut flowOut( config );
   config->setDefaultEncapFlags();
   EXPECT_TRUE( flowOut.hasDirtyCollKeys() );
   EXPECT_EQ( config->refCount(), 1U );
}

TEST( MirrorOnDropConfigTest, defaultEncapsulationsAreIpv4AndIpv6 )
{
   const auto config = mirrorOnDropConfigFactory( "drops" );
   Recorder recorder( *config );
   config->setDefaultEncapFlags();
   EXPECT_EQ( recorder.take(), ( Heard{ "273[encapIpv4]", "273[encapIpv6]" } ) );
   config->setDefaultEncapFlags();
   EXPECT_EQ( recorder.take(), Heard{} );
}

TEST( MirrorOnDropConfigTest, defaultEncapsulationsAreAddedToThosePresent )
{
   const auto config = mirrorOnDropConfigFactory( "drops" );
   config->encapIs( encapIpv4 );
   config->encapIs( encapGre );
   Recorder recorder( *config );
   config->typeData().attribute( "setDefaultEncapFlags" )->call( *config );
   EXPECT_EQ( recorder.take(), Heard{ "273[encapIpv6]" } );
   EXPECT_EQ( config->encap().size(), 3U );
}

} // namespace
