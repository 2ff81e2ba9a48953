// Texts of numbers, doubles and truth values: their edges, and what is refused.
#include "Vok/Strep.h"
#include "Vok/Time.h"
#include "Vok/Vok.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <locale>
#include <string>
#include <string_view>

namespace {

using Corvo::strepToValue;
using Corvo::valueToStrep;

// Every text, as it is printed and read.
template< class V > void expectTexts( std::initializer_list< std::pair< V, const char * > > texts )
{
   for ( const auto & [ value, text ] : texts ) {
      EXPECT_EQ( valueToStrep( value ), text );
      EXPECT_EQ( strepToValue< V >( text ), value ) << text;
   }
}

// No text of a V: reading it throws a ParseException.
template< class V > void expectRefused( std::initializer_list< const char * > texts )
{
   for ( const char * const text : texts ) {
      EXPECT_THROW( strepToValue< V >( text ), Corvo::ParseException ) << '"' << text << '"';
   }
}

template< class V > std::string whyRefused( std::string_view text )
{
   try {
      strepToValue< V >( text );
   } catch ( const std::exception & e ) {
      return e.what();
   }
   return "taken";
}

TEST( TextNumberTest, everyWidthAtItsEdges )
{
   expectTexts< std::uint8_t >( { { 0, "0" }, { 1, "1" }, { 99, "99" }, { 255, "255" } } );
   expectTexts< std::uint16_t >( { { 0, "0" }, { 256, "256" }, { 65535, "65535" } } );
   expectTexts< std::uint32_t >(
         { { 0, "0" }, { 65536, "65536" }, { 4294967295U, "4294967295" } } );
   expectTexts< std::uint64_t >( { { 0, "0" }, { 4294967296U, "4294967296" },
         { 18446744073709551615U, "18446744073709551615" } } );
}

TEST( TextNumberTest, oneBeyondTheWidthIsRefused )
{
   expectRefused< std::uint8_t >( { "256", "1000", "18446744073709551616" } );
   expectRefused< std::uint16_t >( { "65536", "100000" } );
   expectRefused< std::uint32_t >( { "4294967296", "99999999999" } );
   expectRefused< std::uint64_t >( { "18446744073709551616", "99999999999999999999999999" } );
   EXPECT_EQ( whyRefused< std::uint8_t >( "256" ),
         "at offset 0: expected a number from 0 to 255, found 256" );
   EXPECT_EQ( whyRefused< std::uint64_t >( "" ),
         "at offset 0: expected a number from 0 to 18446744073709551615, found the end" );
}

TEST( TextNumberTest, whatIsNoCanonicalNumberIsRefused )
{
   const auto refused = { "", "+1", "-1", "-0", "00", "01", "007", "0x1", "1.0", "1e2", " 1", "1 ",
      "\t1", "1,000", "1'000", "1_000", "one", "\"1\"", "1u", "\n" };
   expectRefused< std::uint8_t >( refused );
   expectRefused< std::uint16_t >( refused );
   expectRefused< std::uint32_t >( refused );
   expectRefused< std::uint64_t >( refused );
}

TEST( TextNumberTest, truthValues )
{
   expectTexts< bool >( { { false, "false" }, { true, "true" } } );
   expectRefused< bool >( { "", "0", "1", "True", "TRUE", "yes", "tru", "trueish", "true ", " true",
         "\"true\"", "true_" } );
   EXPECT_EQ( whyRefused< bool >( "yes" ), "at offset 0: expected true or false, found yes" );
}

TEST( TextNumberTest, doublesAreTheShortestThatReadBack )
{
   expectTexts< double >( { { 0.0, "0" }, { 1.0, "1" }, { -1.0, "-1" }, { 0.1, "0.1" },
         { 1.5, "1.5" }, { 1e21, "1e+21" }, { 1e-7, "1e-07" }, { 123456789.0, "123456789" },
         { 0.30000000000000004, "0.30000000000000004" },
         { std::numeric_limits< double >::max(), "1.7976931348623157e+308" },
         { std::numeric_limits< double >::lowest(), "-1.7976931348623157e+308" },
         { std::numeric_limits< double >::min(), "2.2250738585072014e-308" },
         { std::numeric_limits< double >::denorm_min(), "5e-324" },
         { std::numeric_limits< double >::infinity(), "inf" },
         { -std::numeric_limits< double >::infinity(), "-inf" } } );
}

TEST( TextNumberTest, bothZerosAndAllNansAreOne )
{
   EXPECT_EQ( valueToStrep( -0.0 ), "0" );
   const double nan = std::numeric_limits< double >::quiet_NaN();
   for ( const double v : { nan, -nan, std::bit_cast< double >( 0x7ff8000000000001U ) } ) {
      EXPECT_EQ( valueToStrep( v ), "nan" );
   }
   const double read = strepToValue< double >( "nan" );
   EXPECT_EQ( std::bit_cast< std::uint64_t >( read ), 0x7ff8000000000000U );
   expectRefused< double >( { "-0", "-nan", "NaN", "nan(1)", "nan()" } );
   EXPECT_EQ( whyRefused< double >( "-0" ), "at offset 0: expected the number as 0, found -0" );
}

TEST( TextNumberTest, otherFormsOfADoubleAreRefused )
{
   expectRefused< double >(
         { "", "1e", "1e+", ".5", "5.", "0.50", "00", "01", "1.0", "+1", "0x1p3", "0x1", "Infinity",
               "infinity", "INF", "1e5", "1E+21", "1e21", "1e+021", " 1", "1 ", "1,5", "1e309",
               "-1e309", "1e-400", "0.1000000000000000055511151231257827", "-", "e5", "\"1\"" } );
}

TEST( TextNumberTest, doublesOfEveryMagnitudeReadBackExactly )
{
   for ( std::uint64_t exponent = 0; exponent != 2047; ++exponent ) {
      for ( const std::uint64_t fraction : { 0UL, 1UL, 0x8000000000000UL, 0xfffffffffffffUL } ) {
         const std::uint64_t bits = exponent << 52 | fraction;
         const auto v = std::bit_cast< double >( bits );
         const auto back = strepToValue< double >( valueToStrep( v ) );
         ASSERT_EQ( std::bit_cast< std::uint64_t >( back ), bits ) << valueToStrep( v );
         ASSERT_EQ( strepToValue< double >( valueToStrep( -v ) ), -v );
      }
   }
}

TEST( TextNumberTest, timesAreDoublesUnderAnotherName )
{
   expectTexts< Vok::Seconds >( { { Vok::Seconds(), "0" }, { Vok::Seconds( 1.5 ), "1.5" },
         { Vok::Seconds( 1600000000.25 ), "1600000000.25" }, { Vok::Seconds( -1 ), "-1" } } );
   expectTexts< Corvo::Duration >( { { Corvo::Duration(), "0" },
         { Corvo::Duration( 0.001 ), "0.001" }, { Corvo::Duration::infinity(), "inf" } } );
   expectRefused< Vok::Seconds >( { "", "1s", "1.50", "Infinity" } );
   expectRefused< Corvo::Duration >( { "", "infinity", "+inf" } );
}

// A facet that would write and read 1.234.567,5 and the words of another language.
class Foreign : public std::numpunct< char > {
   char do_thousands_sep() const override { return '.'; }
   char do_decimal_point() const override { return ','; }
   std::string do_grouping() const override { return "\3"; }
   std::string do_truename() const override { return "ja"; }
   std::string do_falsename() const override { return "nein"; }
};

class GlobalLocale {
 public:
   explicit GlobalLocale( const std::locale & locale ) : before_( std::locale::global( locale ) ) {}
   ~GlobalLocale() { std::locale::global( before_ ); }
   GlobalLocale( const GlobalLocale & ) = delete;
   GlobalLocale & operator=( const GlobalLocale & ) = delete;

 private:
   std::locale before_;
};

TEST( TextNumberTest, theGlobalLocaleHasNoSay )
{
   const GlobalLocale foreign( std::locale( std::locale::classic(), new Foreign ) );
   expectTexts< std::uint64_t >( { { 1234567, "1234567" } } );
   expectTexts< double >( { { 1234567.5, "1234567.5" } } );
   expectTexts< bool >( { { true, "true" } } );
   expectRefused< double >( { "1234567,5", "1.234.567,5" } );
   expectRefused< std::uint64_t >( { "1.234.567" } );
   EXPECT_EQ( whyRefused< std::uint16_t >( "65536" ),
         "at offset 0: expected a number from 0 to 65535, found 65536" );
}

} // namespace
