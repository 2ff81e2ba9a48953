// FlowTracking::Client.
#include "FlowTracking/Client.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

namespace {

using FlowTracking::Client::FlowTrackerSampleMode;

TEST( ClientTest, SampleModes )
{
   static_assert( std::is_enum_v< FlowTrackerSampleMode > );
   static_assert( sizeof( FlowTrackerSampleMode ) == 1 );
   static_assert( FlowTracking::Client::sampleModeAll == FlowTrackerSampleMode() );
   EXPECT_EQ( static_cast< std::uint8_t >( FlowTracking::Client::sampleModeTargeted ), 1 );
   EXPECT_EQ( FlowTrackerSampleMode::sampleModeTargeted, FlowTrackerSampleMode{ 1 } );
}

} // namespace
