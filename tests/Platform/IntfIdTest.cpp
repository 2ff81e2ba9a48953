// Wyre::IntfId, the name of an interface.
#include "Wyre/IntfId.h"

#include "tests/Platform/ValueChecks.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <type_traits>

namespace {

using PlatformTest::expectAscending;
using PlatformTest::expectLog;
using PlatformTest::expectText;
using Wyre::IntfId;
using namespace std::string_view_literals;

TEST( IntfIdTest, IsBuiltFromTextsOfEachKind )
{
   EXPECT_EQ( IntfId().stringValue(), "" );
   EXPECT_EQ( IntfId( "Ethernet3/1" ).stringValue(), "Ethernet3/1" );
   EXPECT_EQ( IntfId( std::string( "Ethernet3/1" ) ), IntfId( "Ethernet3/1" ) );
   EXPECT_EQ( IntfId( "Ethernet3/1"sv ), IntfId( "Ethernet3/1" ) );
   EXPECT_EQ( IntfId( Corvo::String( "Ethernet3/1" ) ), IntfId( "Ethernet3/1" ) );
   static_assert( !std::is_convertible_v< Corvo::String, IntfId > );
}

TEST( IntfIdTest, OrdersAsUnsignedBytes )
{
   expectAscending< IntfId >( { IntfId(), IntfId( "Ethernet1" ), IntfId( "Ethernet10" ),
         IntfId( "Ethernet3/1" ), IntfId( "Vlan1" ), IntfId( "\xff" ) } );
}

TEST( IntfIdTest, TextAndLog )
{
   expectText( IntfId(), "\"\"" );
   expectText( IntfId( "Ethernet3/1" ), "Ethernet3/1" );
   expectText( IntfId( "my port" ), "\"my port\"" );
   expectText( IntfId( "a\0b"sv ), "\"a\\x00b\"" );
   expectLog( IntfId(), "00000000" );
   expectLog( IntfId( "Et1" ), "00000003457431" );
}

} // namespace
