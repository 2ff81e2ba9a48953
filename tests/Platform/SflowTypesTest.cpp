// Sflow::SampleTruncateSizeType.
#include "Sflow/SflowTypes.h"

#include "tests/Platform/ValueChecks.h"

#include <gtest/gtest.h>

namespace {

using PlatformTest::expectDistinct;
using PlatformTest::expectLog;
using PlatformTest::expectText;
using Sflow::SampleTruncateSizeType;

TEST( SflowTypesTest, AnyNumberOf32Bits )
{
   EXPECT_EQ( SampleTruncateSizeType().value(), 0u );
   EXPECT_EQ( SampleTruncateSizeType( 4294967295 ).value(), 4294967295u );
   expectDistinct< SampleTruncateSizeType >( { SampleTruncateSizeType( 0 ),
         SampleTruncateSizeType( 128 ), SampleTruncateSizeType( 4294967295 ) } );
   expectText( SampleTruncateSizeType( 128 ), "128" );
   expectLog( SampleTruncateSizeType( 0x01020304 ), "01020304" );
   EXPECT_THROW(
         Corvo::strepToValue< SampleTruncateSizeType >( "4294967296" ), Corvo::ParseException );
}

} // namespace
