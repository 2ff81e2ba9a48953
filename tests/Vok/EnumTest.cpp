// Enumerations: names and codes, in texts and as instances.
#include "tests/model/Everything.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <type_traits>

namespace {

using Corvo::strepToValue;
using Corvo::valueToStrep;
using ::Test::Colour;
using ::Test::Huge;
using ::Test::Mode;
using ::Test::Wide;
using Status = ::Test::Holder::Status;

template< class Do > std::string whyRefused( Do && attempt )
{
   try {
      attempt();
   } catch ( const Corvo::EnumRangeException & e ) {
      return e.what();
   }
   return "taken";
}

TEST( EnumTest, widths )
{
   static_assert( std::is_same_v< std::underlying_type_t< Colour >, std::uint8_t > );
   static_assert( std::is_same_v< std::underlying_type_t< Wide >, std::uint16_t > );
   static_assert( std::is_same_v< std::underlying_type_t< Huge >, std::uint32_t > );
   static_assert( static_cast< unsigned >( Colour::blue ) == 7 );
   static_assert( static_cast< unsigned >( Huge::hugeTop ) == 4000000000U );
}

TEST( EnumTest, enumeratorsAreReachedWithAndWithoutTheEnumeration )
{
   static_assert( ::Test::blue == Colour::blue );
   static_assert( ::Test::wideHigh == Wide::wideHigh );
   static_assert( ::Test::Holder::on == Status::on );
   static_assert( Mode::known == Mode::Kind::known );
}

struct Example {
   Colour value;
   const char * name;
   unsigned code;
};

TEST( EnumTest, namesAndCodes )
{
   for ( const Example & e : { Example{ Colour::red, "red", 0 },
               Example{ Colour::green, "green", 1 }, Example{ Colour::blue, "blue", 7 } } ) {
      EXPECT_STREQ( stringValue( e.value ), e.name );
      EXPECT_EQ( valueToStrep( e.value ), e.name );
      EXPECT_EQ( strepToValue< Colour >( e.name ), e.value );
      EXPECT_EQ( ::Test::ColourInstance( e.code ), e.value );
      EXPECT_EQ( ::Test::ColourInstance( e.name ), e.value );
      std::ostringstream out;
      out << e.value;
      EXPECT_EQ( out.str(), e.name );
   }
   EXPECT_STREQ( stringValue( Huge::hugeTop ), "hugeTop" );
   EXPECT_EQ( ::Test::HugeInstance( 4000000000U ), Huge::hugeTop );
   EXPECT_EQ( ::Test::WideInstance( 32512 ), Wide::wideHigh );
}

TEST( EnumTest, namesAreStaticTexts )
{
   EXPECT_EQ( stringValue( Colour::blue ), stringValue( Colour::blue ) );
   EXPECT_EQ( std::string( stringValue( Wide::wideNone ) ), "wideNone" );
}

TEST( EnumTest, instancesByAnyKindOfText )
{
   EXPECT_EQ( ::Test::ColourInstance( 0 ), Colour::red );
   EXPECT_EQ( ::Test::ColourInstance( Corvo::String( "green" ) ), Colour::green );
   EXPECT_EQ( ::Test::ColourInstance( std::string_view( "green" ) ), Colour::green );
   EXPECT_EQ( ::Test::ColourInstance( std::string( "green" ) ), Colour::green );
   EXPECT_EQ( ::Test::ColourInstance( "green" ), Colour::green );
}

TEST( EnumTest, nestedOnesAreReachedThroughTheirType )
{
   EXPECT_EQ( ::Test::Holder::StatusInstance( 1 ), Status::on );
   EXPECT_EQ( ::Test::Holder::StatusInstance( "off" ), Status::off );
   EXPECT_EQ( Mode::KindInstance( "known" ), Mode::known );
   EXPECT_STREQ( stringValue( Status::on ), "on" );
   EXPECT_EQ( strepToValue< Mode::Kind >( "unknown" ), Mode::unknown );
   std::ostringstream out;
   out << Status::off << Mode::known;
   EXPECT_EQ( out.str(), "offknown" );
}

TEST( EnumTest, whatTheEnumerationLacks )
{
   for ( const unsigned code : { 2U, 6U, 8U, 255U, 256U, 263U, 4294967295U } ) {
      EXPECT_THROW( ::Test::ColourInstance( code ), Corvo::EnumRangeException ) << code;
   }
   for ( const char * name : { "", "Red", "reds", "re", "red ", " red", "0", "Colour::red",
               "r\xc3\xa9"
               "d" } ) {
      EXPECT_THROW( ::Test::ColourInstance( name ), Corvo::EnumRangeException ) << name;
   }
   EXPECT_EQ( whyRefused( [] { ::Test::ColourInstance( 2 ); } ),
         "Test::Colour has no enumerator with code 2" );
   EXPECT_EQ( whyRefused( [] { ::Test::ColourInstance( "a b" ); } ),
         R"(Test::Colour has no enumerator named "a b")" );
   EXPECT_EQ( whyRefused( [] { Mode::KindInstance( 2 ); } ),
         "Test::Mode::Kind has no enumerator with code 2" );
   EXPECT_THROW( ::Test::ColourInstance( 2 ), Corvo::RangeException );
}

TEST( EnumTest, sequenceToValueReadsOneWholeName )
{
   Vok::CharRange range( "green,blue" );
   Colour value = Colour::red;
   sequenceToValue( range, &value );
   EXPECT_EQ( value, Colour::green );
   EXPECT_EQ( range.rest(), ",blue" );
}

TEST( EnumTest, sequenceToValueConsumesNothingWhenItFails )
{
   for ( const char * text :
         { "greenish,", "gree", "green_", "green1", "", ",green", " green", "7" } ) {
      Vok::CharRange range( text );
      Colour value = Colour::blue;
      EXPECT_THROW( sequenceToValue( range, &value ), Corvo::EnumRangeException ) << text;
      EXPECT_EQ( value, Colour::blue );
      EXPECT_EQ( range.offset(), 0U );
      EXPECT_EQ( range.rest(), text );
   }
}

TEST( EnumTest, textsAreWholeNames )
{
   EXPECT_THROW( strepToValue< Colour >( "redd" ), Corvo::EnumRangeException );
   EXPECT_THROW( strepToValue< Colour >( "\"red\"" ), Corvo::EnumRangeException );
   EXPECT_THROW( strepToValue< Colour >( "red " ), Corvo::ParseException );
   EXPECT_THROW( strepToValue< Colour >( "red,green" ), Corvo::ParseException );
}

// Source and function are literals; the line is whatever line of that source asks.
void expectNoName( std::string text, const std::string & enumeration, const std::string & code )
{
   const std::string start = "Vok/EnumTable:";
   ASSERT_EQ( text.substr( 0, start.size() ), start );
   const std::size_t digits = text.find_first_not_of( "0123456789", start.size() );
   ASSERT_GT( digits, start.size() );
   EXPECT_EQ( text.substr( digits ),
         ": stringValue: assertion \"enumerator\" failed: " + enumeration +
               " has no enumerator with code " + code + "\n" );
}

auto saysThat( std::string enumeration, std::string code )
{
   return testing::Truly( [ = ]( const std::string & text ) {
      expectNoName( text, enumeration, code );
      return !testing::Test::HasFailure();
   } );
}

TEST( EnumDeathTest, aCodeWithoutANameEndsTheProcess )
{
   EXPECT_EXIT( stringValue( static_cast< Colour >( 3 ) ), testing::KilledBySignal( SIGABRT ),
         saysThat( "Test::Colour", "3" ) );
   EXPECT_EXIT( valueToStrep( static_cast< Huge >( 4000000001U ) ),
         testing::KilledBySignal( SIGABRT ), saysThat( "Test::Huge", "4000000001" ) );
   EXPECT_EXIT( std::ostringstream() << static_cast< Status >( 255 ),
         testing::KilledBySignal( SIGABRT ), saysThat( "Test::Holder::Status", "255" ) );
}

} // namespace
