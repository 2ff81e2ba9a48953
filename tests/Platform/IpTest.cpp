// Module Ip: address families, and addresses with a port.
#include "Wyre/Ip.h"

#include "tests/Platform/ValueChecks.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <type_traits>

namespace {

using PlatformTest::expectAscending;
using PlatformTest::expectLog;
using PlatformTest::expectText;
using Wyre::AddressFamily;
using Wyre::Ip6Addr;
using Wyre::Ip6AndPort;
using Wyre::IpAddr;
using Wyre::IpAndPort;

TEST( IpTest, AddressFamilies )
{
   static_assert( std::is_same_v< std::underlying_type_t< AddressFamily >, std::uint8_t > );
   EXPECT_EQ( static_cast< unsigned >( Wyre::ipunknown ), 0u );
   EXPECT_EQ( static_cast< unsigned >( Wyre::ipv4 ), 1u );
   EXPECT_EQ( static_cast< unsigned >( AddressFamily::ipv6 ), 2u );
   EXPECT_STREQ( stringValue( Wyre::ipunknown ), "ipunknown" );
   EXPECT_EQ( Wyre::AddressFamilyInstance( "ipv4" ), AddressFamily::ipv4 );
   EXPECT_EQ( Wyre::AddressFamilyInstance( 2 ), AddressFamily::ipv6 );
   EXPECT_THROW( Wyre::AddressFamilyInstance( 3 ), Corvo::EnumRangeException );
   EXPECT_THROW( Wyre::AddressFamilyInstance( "IPv4" ), Corvo::EnumRangeException );
   expectText( AddressFamily::ipv6, "ipv6" );
   std::ostringstream out;
   out << AddressFamily::ipv4;
   EXPECT_EQ( out.str(), "ipv4" );
}

TEST( IpTest, IpAndPort )
{
   EXPECT_EQ( IpAndPort().ip(), IpAddr() );
   EXPECT_EQ( IpAndPort().port(), 0 );
   const IpAndPort socket( IpAddr( "10.0.0.1" ), 4739 );
   EXPECT_EQ( socket.ip(), IpAddr( "10.0.0.1" ) );
   EXPECT_EQ( socket.port(), 4739 );
   expectText( socket, "Wyre::IpAndPort[ip=10.0.0.1,port=4739]" );
   expectLog( socket, "0a0000011283" );
   expectAscending< IpAndPort >( { IpAndPort(), IpAndPort( IpAddr(), 9 ),
         IpAndPort( IpAddr( 1 ), 0 ), IpAndPort( IpAddr( 1 ), 65535 ), socket } );
}

TEST( IpTest, Ip6AndPort )
{
   EXPECT_EQ( Ip6AndPort().ip(), Ip6Addr() );
   EXPECT_EQ( Ip6AndPort().port(), 0 );
   const Ip6AndPort socket( Ip6Addr( "2001:db8::1" ), 4739 );
   EXPECT_EQ( socket.ip(), Ip6Addr( "2001:db8::1" ) );
   EXPECT_EQ( socket.port(), 4739 );
   expectText( socket, "Wyre::Ip6AndPort[ip=2001:db8::1,port=4739]" );
   expectLog( socket, "20010db80000000000000000000000011283" );
   expectAscending< Ip6AndPort >( { Ip6AndPort(), Ip6AndPort( Ip6Addr(), 9 ),
         Ip6AndPort( Ip6Addr( "::1" ), 0 ), socket } );
}

TEST( IpTest, ABadAddressInsideATextIsRefused )
{
   const std::string message = PlatformTest::messageOf< Corvo::ParseException >(
         [] { Corvo::strepToValue< IpAndPort >( "Wyre::IpAndPort[ip=10.0.0.256,port=1]" ); } );
   EXPECT_NE( message.find( "10.0.0.256 is no IPv4 address" ), std::string::npos ) << message;
   EXPECT_THROW( Corvo::strepToValue< IpAndPort >( "Wyre::IpAndPort[ip=10.0.0.1,port=65536]" ),
         Corvo::ParseException );
   EXPECT_THROW( Corvo::strepToValue< Ip6AndPort >( "Wyre::Ip6AndPort[ip=::A,port=1]" ),
         Corvo::ParseException );
}

} // namespace
