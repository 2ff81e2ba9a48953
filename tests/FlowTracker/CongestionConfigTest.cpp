// The settings of congestion reports, as configured and in force.
#include "tests/support/Recorder.h"

#include "FlowTracker/FlowTrackingOrreryTypes.h"

#include <gtest/gtest.h>

namespace {

using namespace FlowTracking;
using TestSupport::Heard;
using TestSupport::Recorder;

TEST( CongestionConfigTest, aFreshOneHasNeitherAttribute )
{
   const auto config = congestionConfigFactory( "c" );
   EXPECT_EQ( config->name(), "c" );
   EXPECT_FALSE( config->dampingTimeout().has_value() );
   EXPECT_FALSE( config->interval().has_value() );
   EXPECT_EQ( CongestionConfig::CongestionConfigIs( "d" )->name(), "d" );
}

TEST( CongestionConfigTest, aFreshEffectiveOneHasDefaults )
{
   const auto config = effectiveCongestionConfigFactory( "c" );
   EXPECT_EQ( config->dampingTimeout(), DampingTimeout( 300 ) );
   EXPECT_EQ( config->interval().stringValue(), "[-30,30]" );
   EXPECT_EQ( EffectiveCongestionConfig::EffectiveCongestionConfigIs( "d" )->name(), "d" );
}

TEST( CongestionConfigTest, unsettingWhatIsUnsetIsSilent )
{
   const auto config = congestionConfigFactory( "c" );
   Recorder recorder( *config );
   config->dampingTimeoutIs( std::nullopt );
   config->intervalIs( std::nullopt );
   EXPECT_EQ( recorder.take(), Heard{} );
   config->dampingTimeoutIs( DampingTimeout( 0 ) );
   EXPECT_EQ( recorder.take(), Heard{ "258 was " } );
   config->dampingTimeoutIs( DampingTimeout( 0 ) );
   EXPECT_EQ( recorder.take(), Heard{} );
   config->dampingTimeoutIs( std::nullopt );
   EXPECT_EQ( recorder.take(), Heard{ "258 was 0" } );
}

TEST( CongestionConfigTest, notificationsCarryTheOldValueAsItsType )
{
   const auto config = congestionConfigFactory( "c" );
   config->intervalIs( CongestionInterval( 1, 2 ) );
   Recorder recorder( *config );
   bool told = false;
   recorder.then = [ & ]( const Corvo::Change & change ) {
      EXPECT_EQ( change.attrId, CongestionConfig::intervalAttrId );
      const auto * old = change.oldValue< Vok::Optional< CongestionInterval > >();
      ASSERT_NE( old, nullptr );
      EXPECT_EQ( *old, CongestionInterval( 1, 2 ) );
      EXPECT_FALSE( config->interval().has_value() );
      told = true;
   };
   config->intervalIs( std::nullopt );
   EXPECT_TRUE( told );

   const auto effective = effectiveCongestionConfigFactory( "e" );
   Recorder heard( *effective );
   effective->dampingTimeoutIs( DampingTimeout( 300 ) );
   effective->intervalIs( CongestionInterval( 30, 30 ) );
   EXPECT_EQ( heard.take(), Heard{} );
   effective->dampingTimeoutIs( DampingTimeout( 1 ) );
   EXPECT_EQ( heard.take(), Heard{ "258 was 300" } );
}

} // namespace
