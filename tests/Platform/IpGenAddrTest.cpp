// Wyre::IpGenAddr: none, an IPv4 address or an IPv6 address.
#include "Wyre/IpGenAddr.h"

#include "Vok/ModuleInspectData.h"
#include "Vok/TypeData.h"
#include "tests/Platform/ValueChecks.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using PlatformTest::expectAscending;
using PlatformTest::expectLog;
using PlatformTest::expectRefused;
using PlatformTest::expectText;
using Wyre::AddressFamily;
using Wyre::Ip6Addr;
using Wyre::IpAddr;
using Wyre::IpGenAddr;

TEST( IpGenAddrTest, TheDefaultIsNoAddress )
{
   EXPECT_EQ( IpGenAddr().family(), AddressFamily::ipunknown );
   EXPECT_EQ( IpGenAddr().stringValue(), "" );
   EXPECT_EQ( IpGenAddr(), IpGenAddr( "" ) );
}

TEST( IpGenAddrTest, IsEitherAddress )
{
   const IpGenAddr ip( IpAddr( "10.0.0.1" ) );
   EXPECT_EQ( ip.family(), AddressFamily::ipv4 );
   EXPECT_EQ( ip.ip(), IpAddr( "10.0.0.1" ) );
   EXPECT_EQ( ip.ip6(), Ip6Addr() );
   EXPECT_EQ( ip.stringValue(), "10.0.0.1" );
   EXPECT_EQ( ip, IpGenAddr( "10.0.0.1" ) );

   const IpGenAddr ip6( Ip6Addr( "2001:db8::1" ) );
   EXPECT_EQ( ip6.family(), AddressFamily::ipv6 );
   EXPECT_EQ( ip6.ip(), IpAddr() );
   EXPECT_EQ( ip6.ip6(), Ip6Addr( "2001:db8::1" ) );
   EXPECT_EQ( ip6.stringValue(), "2001:db8::1" );
   EXPECT_EQ( ip6, IpGenAddr( std::string( "2001:DB8:0::1" ) ) );
   EXPECT_EQ( IpGenAddr( "::ffff:10.0.0.1" ).family(), AddressFamily::ipv6 );
}

TEST( IpGenAddrTest, IsNotMadeFromItsFields )
{
   static_assert( !std::is_constructible_v< IpGenAddr, AddressFamily, IpAddr, Ip6Addr > );
   const Vok::TypeData & type = *Corvo::ModuleInspectData::findType( "Wyre::IpGenAddr" );
   const std::string message =
         PlatformTest::messageOf< Corvo::ConstructorArgsException >( [ & ] {
            type.make( { "ipv4", "10.0.0.1", "2001:db8::1" } );
         } );
   EXPECT_EQ( message, "Wyre::IpGenAddr is not made from its fields" );
   IpGenAddr address( "10.0.0.1" );
   for ( const auto & [ field, text ] : { std::pair( "family", "ipv6" ),
               std::pair( "ip", "10.0.0.2" ), std::pair( "ip6", "::1" ) } ) {
      EXPECT_THROW( type.fieldSet( &address, field, text ), std::invalid_argument ) << field;
   }
   EXPECT_EQ( address, IpGenAddr( "10.0.0.1" ) );
}

TEST( IpGenAddrTest, OrdersByFamilyThenByAddress )
{
   expectAscending< IpGenAddr >( { IpGenAddr(), IpGenAddr( "0.0.0.0" ), IpGenAddr( "10.0.0.1" ),
         IpGenAddr( "255.255.255.255" ), IpGenAddr( "::" ), IpGenAddr( "::ffff:10.0.0.1" ),
         IpGenAddr( "2001:db8::1" ) } );
}

TEST( IpGenAddrTest, TextAndLog )
{
   expectText( IpGenAddr(), "\"\"" );
   expectText( IpGenAddr( "10.0.0.1" ), "10.0.0.1" );
   expectText( IpGenAddr( "2001:db8::1" ), "2001:db8::1" );
   EXPECT_THROW( Corvo::strepToValue< IpGenAddr >( "" ), Corvo::ParseException );
   EXPECT_THROW( Corvo::strepToValue< IpGenAddr >( "2001:DB8::1" ), Corvo::ParseException );

   expectLog( IpGenAddr(), "00" );
   expectLog( IpGenAddr( "10.0.0.1" ), "010a000001" );
   expectLog( IpGenAddr( "2001:db8::1" ), "0220010db8000000000000000000000001" );
}

TEST( IpGenAddrTest, OtherTextsAreRefused )
{
   expectRefused< IpGenAddr >( "none", 0, "a number from 0 to 255" );
   expectRefused< IpGenAddr >( "10.0.0.300", 7, "a number from 0 to 255" );
   expectRefused< IpGenAddr >( " ", 0, "a number from 0 to 255" );
   expectRefused< IpGenAddr >( "::x", 2, "1 to 4 hexadecimal digits" );
   expectRefused< IpGenAddr >( "10.0.0.1:80", 8, "the end of the text" );
}

TEST( IpGenAddrTest, AFamilyThatThereIsNotIsRefused )
{
   std::array< std::byte, 17 > log{};
   for ( unsigned family = 0; family < 256; ++family ) {
      log[ 0 ] = static_cast< std::byte >( family );
      Vok::NboAttrLog::In in( log.data(), log.size() );
      if ( family <= 2 ) {
         EXPECT_EQ( static_cast< unsigned >( IpGenAddr( &in ).family() ), family );
      } else {
         const std::string message = PlatformTest::messageOf< Vok::NboAttrLog::Exception >(
               [ & ] { IpGenAddr{ &in }; } );
         EXPECT_EQ( message, "Wyre::AddressFamily has no code " + std::to_string( family ) );
      }
   }
}

} // namespace
