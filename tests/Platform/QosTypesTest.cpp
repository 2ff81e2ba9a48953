// Wyre::DscpValue.
#include "Wyre/QosTypes.h"

#include "tests/Platform/ValueChecks.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

namespace {

using PlatformTest::expectDistinct;
using PlatformTest::expectLog;
using PlatformTest::expectText;
using Wyre::DscpValue;

TEST( QosTypesTest, ACodePointAndItsBounds )
{
   EXPECT_EQ( DscpValue().value(), 0 );
   EXPECT_EQ( DscpValue( 46 ).value(), 46 );
   static_assert( DscpValue::min() == 0 && DscpValue::max() == 63 );
   static_assert( std::is_same_v< decltype( DscpValue().value() ), std::uint8_t > );
   static_assert( !std::is_convertible_v< std::uint8_t, DscpValue > );
   expectDistinct< DscpValue >( { DscpValue( 0 ), DscpValue( 1 ), DscpValue( 63 ) } );
}

TEST( QosTypesTest, NothingChecksTheBounds )
{
   EXPECT_EQ( DscpValue( 64 ).value(), 64 );
   expectText( DscpValue( 255 ), "255" );
   expectLog( DscpValue( 255 ), "ff" );
}

TEST( QosTypesTest, TextAndLog )
{
   expectText( DscpValue(), "0" );
   expectText( DscpValue( 46 ), "46" );
   EXPECT_THROW( Corvo::strepToValue< DscpValue >( "256" ), Corvo::ParseException );
   expectLog( DscpValue( 46 ), "2e" );
}

} // namespace
