// Wyre::HostAndPort.
#include "Wyre/HostAndPort.h"

#include "tests/Platform/ValueChecks.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using PlatformTest::expectAscending;
using PlatformTest::expectLog;
using PlatformTest::expectText;
using Wyre::HostAndPort;

TEST( HostAndPortTest, Fields )
{
   EXPECT_EQ( HostAndPort().hostname(), "" );
   EXPECT_EQ( HostAndPort().port(), 0 );
   const HostAndPort collector( "collector", 4739 );
   EXPECT_EQ( collector.hostname(), "collector" );
   EXPECT_EQ( collector.port(), 4739 );
   EXPECT_EQ( HostAndPort( std::string( "collector" ), 4739 ), collector );
}

TEST( HostAndPortTest, OrdersByHostThenByPort )
{
   expectAscending< HostAndPort >( { HostAndPort(), HostAndPort( "", 1 ), HostAndPort( "a", 0 ),
         HostAndPort( "a", 65535 ), HostAndPort( "b", 1 ) } );
}

TEST( HostAndPortTest, TextAndLog )
{
   expectText( HostAndPort(), "Wyre::HostAndPort[hostname=\"\",port=0]" );
   expectText( HostAndPort( "collector.example", 4739 ),
         "Wyre::HostAndPort[hostname=collector.example,port=4739]" );
   expectText( HostAndPort( "a,b]", 1 ), "Wyre::HostAndPort[hostname=\"a,b]\",port=1]" );
   expectLog( HostAndPort(), "000000000000" );
   expectLog( HostAndPort( "ab", 4739 ), "0000000261621283" );
}

} // namespace
