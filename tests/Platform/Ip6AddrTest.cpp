// Wyre::Ip6Addr, and its texts against those of the C library.
#include "Wyre/Ip6Addr.h"

#include "tests/Platform/ValueChecks.h"
#include "tests/support/Random.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace {

using PlatformTest::expectAscending;
using PlatformTest::expectLog;
using PlatformTest::expectRefused;
using PlatformTest::expectText;
using Wyre::Ip6Addr;

TEST( Ip6AddrTest, TheDefaultIsAllZeros )
{
   EXPECT_EQ( Ip6Addr().high(), 0u );
   EXPECT_EQ( Ip6Addr().low(), 0u );
   EXPECT_EQ( Ip6Addr().stringValue(), "::" );
   EXPECT_EQ( Ip6Addr(), Ip6Addr( "::" ) );
}

TEST( Ip6AddrTest, IsBuiltFromTextsOfEachKind )
{
   const Ip6Addr address( 0x20010db800000001, 0x0002000300040005 );
   EXPECT_EQ( Ip6Addr( "2001:db8:0:1:2:3:4:5" ), address );
   EXPECT_EQ( Ip6Addr( std::string( "2001:db8:0:1:2:3:4:5" ) ), address );
   EXPECT_EQ( Ip6Addr( Corvo::String( "2001:db8:0:1:2:3:4:5" ) ), address );
}

TEST( Ip6AddrTest, OrdersAsItsBytes )
{
   expectAscending< Ip6Addr >( { Ip6Addr( "::" ), Ip6Addr( "::1" ), Ip6Addr( "::ffff:10.0.0.1" ),
         Ip6Addr( "::ffff:10.0.0.2" ), Ip6Addr( "0:0:0:1::" ), Ip6Addr( "2001:db8::" ),
         Ip6Addr( "8000::" ), Ip6Addr( "8000::8000:0:0:0" ), Ip6Addr( "ffff::" ) } );
}

TEST( Ip6AddrTest, TextAndLog )
{
   expectText( Ip6Addr(), "::" );
   expectText( Ip6Addr( 0x20010db800000000, 1 ), "2001:db8::1" );
   expectText( Ip6Addr( 0, 0xffff01020304 ), "::ffff:1.2.3.4" );
   expectLog( Ip6Addr(), std::string( 32, '0' ) );
   expectLog( Ip6Addr( "2001:db8::ff01:2" ), "20010db80000000000000000ff010002" );
}

TEST( Ip6AddrTest, HasOneText )
{
   const std::pair< std::string_view, std::string_view > texts[] = {
      // RFC 5952, section 4: leading zeros, lower case, how "::" is used.
      { "2001:0db8:0000:0000:0000:0000:0002:0001", "2001:db8::2:1" },
      { "2001:DB8:0:0:0:0:2:1", "2001:db8::2:1" },
      { "2001:db8::0:1", "2001:db8::1" },
      { "2001:db8::1:1:1:1:1", "2001:db8:0:1:1:1:1:1" },
      { "2001:0:0:1:0:0:0:1", "2001:0:0:1::1" },
      { "2001:db8:0:0:1:0:0:1", "2001:db8::1:0:0:1" },
      { "AbCd::EF", "abcd::ef" },
      // A single group of zeros is written out, the first of equal runs is not.
      { "1::2:3:4:5:6:7", "1:0:2:3:4:5:6:7" },
      { "::2:3:4:5:6:7:8", "0:2:3:4:5:6:7:8" },
      { "1:2:3:4:5:6:7::", "1:2:3:4:5:6:7:0" },
      { "0:0:1:0:0:1:0:0", "::1:0:0:1:0:0" },
      { "1:0:0:1:0:0:1:1", "1::1:0:0:1:1" },
      { "1:0:0:1:1:0:0:0", "1:0:0:1:1::" },
      { "0:0:0:0:0:0:0:0", "::" },
      { "1:0:0:0:0:0:0:0", "1::" },
      { "0:0:0:0:0:0:0:1", "::1" },
      // Mixed notation is for IPv4-mapped addresses alone.
      { "::ffff:a00:1", "::ffff:10.0.0.1" },
      { "0:0:0:0:0:FFFF:0:0", "::ffff:0.0.0.0" },
      { "::ffff:255.255.255.255", "::ffff:255.255.255.255" },
      { "::1.2.3.4", "::102:304" },
      { "::ffff:0:1.2.3.4", "::ffff:0:102:304" },
      { "::1:ffff:1.2.3.4", "::1:ffff:102:304" },
      { "::fffe:1.2.3.4", "::fffe:102:304" },
      { "64:ff9b::192.0.2.33", "64:ff9b::c000:221" },
      { "1:2:3:4:5:6:7.8.9.10", "1:2:3:4:5:6:708:90a" },
      { "1:2:3:4:5::7.8.9.10", "1:2:3:4:5:0:708:90a" },
      { "::2:3:4:5:6:7.8.9.10", "0:2:3:4:5:6:708:90a" },
   };
   for ( const auto & [ text, canonical ] : texts ) {
      const Ip6Addr address{ Corvo::String( text ) };
      EXPECT_EQ( address.stringValue(), canonical ) << text;
      EXPECT_EQ( Ip6Addr( address.stringValue() ), address ) << text;
      expectText( address, canonical );
      if ( text != canonical ) {
         EXPECT_THROW( Corvo::strepToValue< Ip6Addr >( text ), Corvo::ParseException ) << text;
      }
   }
}

TEST( Ip6AddrTest, OtherTextsAreRefused )
{
   constexpr std::string_view group = "1 to 4 hexadecimal digits";
   expectRefused< Ip6Addr >( "", 0, group );
   expectRefused< Ip6Addr >( ":", 0, group );
   expectRefused< Ip6Addr >( ":::", 2, group );
   expectRefused< Ip6Addr >( ":1", 0, group );
   expectRefused< Ip6Addr >( "1:", 2, group );
   expectRefused< Ip6Addr >( "1:::2", 3, group );
   expectRefused< Ip6Addr >( "1::2:", 5, group );
   expectRefused< Ip6Addr >( "1::2::3", 5, "no second \"::\"" );
   expectRefused< Ip6Addr >( "::1::", 4, "no second \"::\"" );
   expectRefused< Ip6Addr >( "12345::", 0, group );
   expectRefused< Ip6Addr >( "::00001", 2, group );
   expectRefused< Ip6Addr >( "::g", 2, group );
   expectRefused< Ip6Addr >( "::0x1", 2, group );
   expectRefused< Ip6Addr >( "::-1", 2, group );
   expectRefused< Ip6Addr >( "1:2:3:4:5:6:7", 13, "8 groups" );
   expectRefused< Ip6Addr >( "1:2:3:4:5:6:7:8:9", 15, "the end of the text" );
   expectRefused< Ip6Addr >( "1:2:3:4:5:6:7:8::", 15, "the end of the text" );
   expectRefused< Ip6Addr >( "::1:2:3:4:5:6:7:8", 15, "the end of the text" );
   expectRefused< Ip6Addr >( "1:2:3:4:5:6:7::8", 15, "the end of the text" );
   // What is no part of an address.
   expectRefused< Ip6Addr >( " ::1", 0, group );
   expectRefused< Ip6Addr >( "::1 ", 3, "\":\"" );
   expectRefused< Ip6Addr >( ":: 1", 2, group );
   expectRefused< Ip6Addr >( "fe80::1%eth0", 7, "\":\"" );
   expectRefused< Ip6Addr >( "[::1]", 0, group );
   expectRefused< Ip6Addr >( "::1/64", 3, "\":\"" );
   expectRefused< Ip6Addr >( std::string_view( "::1\0", 4 ), 3, "\":\"" );
}

TEST( Ip6AddrTest, AnIp4AddressStandsOnlyAtTheEnd )
{
   expectRefused< Ip6Addr >( "1.2.3.4", 7, "8 groups" );
   expectRefused< Ip6Addr >( "::1.2.3.4:5", 9, "the end of the text" );
   expectRefused< Ip6Addr >( "1.2.3.4::", 7, "the end of the text" );
   expectRefused< Ip6Addr >( "::1.2.3", 7, "\".\"" );
   expectRefused< Ip6Addr >( "::1.2.3.256", 8, "a number from 0 to 255" );
   expectRefused< Ip6Addr >( "::1.2.3.04", 8, "a number from 0 to 255" );
   expectRefused< Ip6Addr >( "::a.2.3.4", 2, "a number from 0 to 255" );
   expectRefused< Ip6Addr >( "1:2:3:4:5:6:7:8.9.10.11", 15, "the end of the text" );
   expectRefused< Ip6Addr >( "::2:3:4:5:6:7:8.9.10.11", 15, "the end of the text" );
   expectRefused< Ip6Addr >( "1:2:3:4:5:6.7.8.9", 17, "8 groups" );
}

using Bytes = std::array< unsigned char, 16 >;

Bytes bytesOf( const Ip6Addr & address )
{
   Vok::NboAttrLog::Out log;
   log << address;
   Bytes bytes{};
   std::memcpy( bytes.data(), log.data(), bytes.size() );
   return bytes;
}

std::string libraryText( const Ip6Addr & address )
{
   std::array< char, INET6_ADDRSTRLEN > text{};
   return inet_ntop( AF_INET6, bytesOf( address ).data(), text.data(), text.size() );
}

// Groups that are often zero, often 0xffff.
Ip6Addr randomAddress( TestSupport::Random & random )
{
   std::array< std::uint64_t, 2 > halves{};
   for ( std::size_t group = 0; group < 8; ++group ) {
      const std::uint64_t some = random.word() & 0xffffU >> random.below( 16 );
      const std::uint64_t special = random.oneIn( 8 ) ? 0xffffU : 0U;
      std::uint64_t & half = halves[ group / 4 ];
      half = half << 16 | ( random.oneIn( 2 ) ? some : special );
   }
   const bool isMapped = random.oneIn( 8 );
   return isMapped ? Ip6Addr( 0, halves[ 1 ] >> 32 | 0xffff00000000 )
                   : Ip6Addr( halves[ 0 ], halves[ 1 ] );
}

TEST( Ip6AddrTest, WritesWhatTheLibraryWrites )
{
   TestSupport::Random random( 1 );
   int compared = 0;
   for ( int i = 0; i < 50000; ++i ) {
      const Ip6Addr address = randomAddress( random );
      ASSERT_EQ( Ip6Addr( address.stringValue() ), address );
      // The library writes the deprecated IPv4-compatible addresses in mixed notation too.
      const bool isCompatible = address.high() == 0 && address.low() >> 32 == 0;
      if ( !isCompatible ) {
         ++compared;
         ASSERT_EQ( address.stringValue(), libraryText( address ) );
      }
   }
   EXPECT_GT( compared, 40000 );
}

// The text of an address in one of its many forms.
std::string someText( TestSupport::Random & random )
{
   std::string text;
   const std::uint32_t groups = random.oneIn( 4 ) ? random.below( 10 ) : 8;
   const std::uint32_t gap = random.oneIn( 2 ) ? random.below( 9 ) : 10;
   const bool mixed = random.oneIn( 3 );
   for ( std::uint32_t group = 0; group < groups; ++group ) {
      if ( group == gap ) {
         text += text.empty() ? "::" : ":";
         continue;
      }
      if ( mixed && group + 2 == groups ) {
         text += "1.22.133." + std::to_string( random.below( 300 ) );
         break;
      }
      constexpr std::string_view digits = "0123456789abcdefABCDEF";
      for ( std::uint32_t digit = random.below( 4 ); digit < 4; ++digit ) {
         text += digits[ random.below( digits.size() ) ];
      }
      if ( group + 1 != groups ) {
         text += ':';
      }
   }
   return text;
}

void damage( TestSupport::Random & random, std::string & text )
{
   constexpr std::string_view characters = "0123456789abcdefABCDEF:::...g% ";
   const std::size_t at = random.below( static_cast< std::uint32_t >( text.size() + 1 ) );
   const std::size_t replaced = random.below( 2 );
   const std::size_t inserted = random.below( 2 );
   text.replace( at, replaced, inserted, characters[ random.below( characters.size() ) ] );
}

TEST( Ip6AddrTest, TakesWhatTheLibraryTakes )
{
   TestSupport::Random random( 2 );
   int taken = 0;
   int refused = 0;
   for ( int i = 0; i < 200000; ++i ) {
      std::string text = someText( random );
      for ( std::uint32_t damages = random.below( 3 ); damages != 0; --damages ) {
         damage( random, text );
      }
      Bytes expected{};
      if ( inet_pton( AF_INET6, text.c_str(), expected.data() ) == 1 ) {
         ++taken;
         ASSERT_EQ( bytesOf( Ip6Addr( text ) ), expected ) << text;
      } else {
         ++refused;
         ASSERT_THROW( Ip6Addr{ text }, Corvo::ParseException ) << text;
      }
   }
   EXPECT_GT( taken, 50000 );
   EXPECT_GT( refused, 50000 );
}

} // namespace
