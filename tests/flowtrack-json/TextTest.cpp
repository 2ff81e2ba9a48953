// Texts of any bytes in JSON.
#include "tools/flowtrack/json/Text.h"

#include "tests/support/Random.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using FlowtrackJson::bytesOf;
using FlowtrackJson::unicodeOf;

namespace {

TEST( TextTest, WhatJsonAndYangTakeStandsForItself )
{
   for ( const char * const text :
         { "", "Ethernet3/1", "größer €", "\t\r\n", "\U0001F600", "'\"\\" } ) {
      EXPECT_EQ( unicodeOf( text ), text );
      EXPECT_EQ( bytesOf( text ), text );
   }
}

TEST( TextTest, OtherBytesAreCharactersOfTheirOwn )
{
   EXPECT_EQ( unicodeOf( "\xFF" ), "\U0010FEFF" );
   EXPECT_EQ( unicodeOf( std::string( 1, '\0' ) ), "\U0010FE00" );
   EXPECT_EQ( unicodeOf( "a\x01z" ), "a\U0010FE01z" );
   EXPECT_EQ( unicodeOf( "\xC3" ), "\U0010FEC3" ); // cut short
   EXPECT_EQ( unicodeOf( "\xC0\x80" ), "\U0010FEC0\U0010FE80" ); // too long a form
   EXPECT_EQ( unicodeOf( "\xED\xA0\x80" ), "\U0010FEED\U0010FEA0\U0010FE80" ); // a surrogate
   EXPECT_EQ( unicodeOf( "\xEF\xBF\xBF" ), "\U0010FEEF\U0010FEBF\U0010FEBF" ); // a noncharacter
}

TEST( TextTest, ThoseCharactersThemselvesAreTold )
{
   const std::string own = "\U0010FE41";
   EXPECT_NE( unicodeOf( own ), own );
   EXPECT_EQ( bytesOf( unicodeOf( own ) ), own );
}

TEST( TextTest, AnyBytesComeBack )
{
   TestSupport::Random random( 1 );
   for ( int i = 0; i != 2000; ++i ) {
      std::string bytes;
      for ( std::uint32_t n = random.below( 12 ); n != 0; --n ) {
         bytes += static_cast< char >( random.oneIn( 2 ) ? 0xF4 + random.below( 8 ) - 4
                                                         : random.below( 256 ) );
      }
      const std::string text = unicodeOf( bytes );
      EXPECT_EQ( bytesOf( text ), bytes );
      EXPECT_NO_THROW( (void)nlohmann::json( text ).dump() ); // it refuses what is no UTF-8
   }
}

TEST( TextTest, ATextIsCutBetweenCharacters )
{
   EXPECT_EQ( FlowtrackJson::firstCharacters( "größer", 3 ), "grö" );
   EXPECT_EQ( FlowtrackJson::firstCharacters( "ab", 3 ), "ab" );
}

} // namespace
