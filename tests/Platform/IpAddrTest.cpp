// Wyre::IpAddr, and its texts against those of the C library.
#include "Wyre/IpAddr.h"

#include "tests/Platform/ValueChecks.h"
#include "tests/support/Random.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace {

using PlatformTest::expectAscending;
using PlatformTest::expectLog;
using PlatformTest::expectRefused;
using PlatformTest::expectText;
using Wyre::IpAddr;

TEST( IpAddrTest, TheDefaultIsAllZeros )
{
   EXPECT_EQ( IpAddr().value(), 0u );
   EXPECT_EQ( IpAddr().stringValue(), "0.0.0.0" );
   EXPECT_EQ( IpAddr(), IpAddr( 0 ) );
   EXPECT_EQ( IpAddr(), IpAddr( "0.0.0.0" ) );
}

TEST( IpAddrTest, IsBuiltFromTextsOfEachKind )
{
   EXPECT_EQ( IpAddr( "10.0.0.1" ).value(), 0x0a000001u );
   EXPECT_EQ( IpAddr( std::string( "10.0.0.1" ) ).value(), 0x0a000001u );
   EXPECT_EQ( IpAddr( Corvo::String( "10.0.0.1" ) ).value(), 0x0a000001u );
   static_assert( !std::is_convertible_v< const char *, IpAddr > );
   static_assert( !std::is_convertible_v< Corvo::String, IpAddr > );
}

TEST( IpAddrTest, OrdersByNumber )
{
   expectAscending< IpAddr >( { IpAddr( "0.0.0.0" ), IpAddr( "0.0.0.255" ), IpAddr( "0.0.1.0" ),
         IpAddr( "9.255.255.255" ), IpAddr( "10.0.0.0" ), IpAddr( "127.0.0.1" ),
         IpAddr( "128.0.0.0" ), IpAddr( "255.255.255.255" ) } );
}

TEST( IpAddrTest, TextAndLog )
{
   expectText( IpAddr(), "0.0.0.0" );
   expectText( IpAddr( 0x0a00c8ff ), "10.0.200.255" );
   expectText( IpAddr( 0xffffffff ), "255.255.255.255" );
   expectLog( IpAddr(), "00000000" );
   expectLog( IpAddr( "10.0.200.255" ), "0a00c8ff" );
}

TEST( IpAddrTest, OtherTextsAreRefused )
{
   expectRefused< IpAddr >( "", 0, "a number from 0 to 255" );
   expectRefused< IpAddr >( " 1.2.3.4", 0, "a number from 0 to 255" );
   expectRefused< IpAddr >( "1.2.3.4 ", 7, "the end of the text" );
   expectRefused< IpAddr >( "1 .2.3.4", 1, "\".\"" );
   expectRefused< IpAddr >( "1. 2.3.4", 2, "a number from 0 to 255" );
   expectRefused< IpAddr >( "1.2.3", 5, "\".\"" );
   expectRefused< IpAddr >( "1.2.3.", 6, "a number from 0 to 255" );
   expectRefused< IpAddr >( "1.2.3.4.5", 7, "the end of the text" );
   expectRefused< IpAddr >( "1.2.3.256", 6, "a number from 0 to 255" );
   expectRefused< IpAddr >( "1.2.3.99999999999999999999", 6, "a number from 0 to 255" );
   expectRefused< IpAddr >( "1.2.03.4", 4, "a number from 0 to 255" );
   expectRefused< IpAddr >( "1.2.00.4", 4, "a number from 0 to 255" );
   expectRefused< IpAddr >( "1..3.4", 2, "a number from 0 to 255" );
   expectRefused< IpAddr >( "+1.2.3.4", 0, "a number from 0 to 255" );
   expectRefused< IpAddr >( "1.2.3.-4", 6, "a number from 0 to 255" );
   expectRefused< IpAddr >( "1.2.3.0x4", 7, "the end of the text" );
   expectRefused< IpAddr >( "1.2.3.4/24", 7, "the end of the text" );
   expectRefused< IpAddr >( "::1", 0, "a number from 0 to 255" );
   expectRefused< IpAddr >( std::string_view( "1.2.3.4\0", 8 ), 7, "the end of the text" );
}

TEST( IpAddrTest, AMessageHoldsOnlyTheStartOfALongText )
{
   const std::string text( 100000, 'a' );
   const std::string message = PlatformTest::messageOf< Corvo::ParseException >(
         [ & ] { IpAddr{ Corvo::String( text ) }; } );
   EXPECT_TRUE( message.starts_with( "aaaaaaaa" ) );
   EXPECT_LT( message.size(), 300u );
}

// The C library's reading of a text; no text of these tests holds a NUL.
bool libraryReads( const std::string & text, std::uint32_t & address )
{
   in_addr read{};
   const bool taken = inet_pton( AF_INET, text.c_str(), &read ) == 1;
   address = ntohl( read.s_addr );
   return taken;
}

std::string libraryText( std::uint32_t address )
{
   std::array< char, INET_ADDRSTRLEN > text{};
   const in_addr number{ htonl( address ) };
   return inet_ntop( AF_INET, &number, text.data(), text.size() );
}

TEST( IpAddrTest, WritesWhatTheLibraryWrites )
{
   TestSupport::Random random( 1 );
   for ( int i = 0; i < 20000; ++i ) {
      const auto address = static_cast< std::uint32_t >( random.word() >> random.below( 40 ) );
      const IpAddr ip( address );
      ASSERT_EQ( ip.stringValue(), libraryText( address ) );
      ASSERT_EQ( IpAddr( ip.stringValue() ), ip );
   }
}

// An address, with up to two characters replaced, inserted or deleted.
std::string almostAnAddress( TestSupport::Random & random )
{
   constexpr std::string_view characters = "0123456789..:ax+ ";
   std::string text = libraryText( static_cast< std::uint32_t >( random.word() ) );
   for ( std::uint32_t change = random.below( 3 ); change != 0; --change ) {
      const std::size_t at = random.below( static_cast< std::uint32_t >( text.size() + 1 ) );
      const std::size_t replaced = random.below( 2 );
      const std::size_t inserted = random.below( 2 );
      text.replace( at, replaced, inserted, characters[ random.below( characters.size() ) ] );
   }
   return text;
}

TEST( IpAddrTest, TakesWhatTheLibraryTakes )
{
   TestSupport::Random random( 2 );
   int taken = 0;
   int refused = 0;
   for ( int i = 0; i < 50000; ++i ) {
      const std::string text = almostAnAddress( random );
      std::uint32_t address = 0;
      if ( libraryReads( text, address ) ) {
         ++taken;
         ASSERT_EQ( IpAddr( text ).value(), address ) << text;
      } else {
         ++refused;
         ASSERT_THROW( IpAddr{ text }, Corvo::ParseException ) << text;
      }
   }
   EXPECT_GT( taken, 10000 );
   EXPECT_GT( refused, 10000 );
}

} // namespace
