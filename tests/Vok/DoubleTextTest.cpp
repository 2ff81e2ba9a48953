// The shortest decimals of doubles, beside those of the standard library.
#include "Vok/TextOut.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace {

std::string textOf( double number )
{
   Vok::TextOut out;
   out.putDouble( number );
   return std::string( out.view() );
}

std::string expected( double number )
{
   char text[ 64 ];
   return std::string( text, std::to_chars( text, text + sizeof text, number ).ptr );
}

void expectShortest( double number )
{
   ASSERT_EQ( textOf( number ), expected( number ) ) << std::hexfloat << number;
}

double ofBits( std::uint64_t bits )
{
   return std::bit_cast< double >( bits );
}

TEST( DoubleTextTest, showsTheFormsThatThereAre )
{
   EXPECT_EQ( textOf( 0 ), "0" );
   EXPECT_EQ( textOf( 1 ), "1" );
   EXPECT_EQ( textOf( -2.5 ), "-2.5" );
   EXPECT_EQ( textOf( 0.1 ), "0.1" );
   EXPECT_EQ( textOf( 0.001 ), "0.001" );
   EXPECT_EQ( textOf( 0.0001 ), "1e-04" );
   EXPECT_EQ( textOf( 0.00012 ), "0.00012" );
   EXPECT_EQ( textOf( 10000 ), "10000" );
   EXPECT_EQ( textOf( 100000 ), "1e+05" );
   EXPECT_EQ( textOf( 1200000 ), "1200000" );
   EXPECT_EQ( textOf( 12000000 ), "1.2e+07" );
   EXPECT_EQ( textOf( 1234567.891 ), "1234567.891" );
   EXPECT_EQ( textOf( 0.30000000000000004 ), "0.30000000000000004" );
   EXPECT_EQ( textOf( 123456789012345680000.0 ), "123456789012345683968" );
   EXPECT_EQ( textOf( 1e23 ), "1e+23" ); // as near to two numbers: the even one
   EXPECT_EQ( textOf( 5e-324 ), "5e-324" );
   EXPECT_EQ( textOf( 1.7976931348623157e308 ), "1.7976931348623157e+308" );
   EXPECT_EQ( textOf( std::numeric_limits< double >::infinity() ), "inf" );
   EXPECT_EQ( textOf( -std::numeric_limits< double >::infinity() ), "-inf" );
   EXPECT_EQ( textOf( std::numeric_limits< double >::quiet_NaN() ), "nan" );
}

// Where a significand begins and ends, the neighbours are not equally near.
TEST( DoubleTextTest, areShortestAroundEveryPowerOfTwo )
{
   constexpr std::uint64_t last = ( std::uint64_t{ 1 } << 52 ) - 1;
   for ( std::uint64_t exponent = 0; exponent != 2047; ++exponent ) {
      for ( const std::uint64_t fraction : { std::uint64_t{ 1 }, std::uint64_t{ 2 }, last / 2,
                  last / 2 + 1, last - 1, last } ) {
         expectShortest( ofBits( exponent << 52 | fraction ) );
      }
      if ( exponent != 0 ) {
         expectShortest( ofBits( exponent << 52 ) );
      }
   }
}

TEST( DoubleTextTest, areShortestAroundDecimalsOfFewDigits )
{
   for ( int exponent = -326; exponent <= 306; ++exponent ) {
      for ( int digits = 1; digits < 100; digits += exponent % 2 == 0 ? 1 : 7 ) {
         const std::string text = std::to_string( digits ) + "e" + std::to_string( exponent );
         double number = 0;
         std::from_chars( text.data(), text.data() + text.size(), number );
         if ( number != 0 ) {
            expectShortest( number );
            expectShortest( std::nextafter( number, 1e308 ) );
            expectShortest( -std::nextafter( number, 1 ) );
         }
      }
   }
}

TEST( DoubleTextTest, areShortestForAnyNumber )
{
   TestSupport::Random random( 20 );
   for ( int i = 0; i != 100'000; ++i ) {
      const std::uint64_t bits = random.word();
      if ( const double number = ofBits( bits ); std::isfinite( number ) && number != 0 ) {
         expectShortest( number );
      }
      expectShortest( static_cast< double >( bits >> bits % 64 | 1 ) );
      expectShortest( static_cast< double >( bits % 100'000'000 + 1 ) / 1000 );
      expectShortest( static_cast< double >( bits % 1'000'003 + 1 ) /
            ( static_cast< double >( bits >> 32 ) + 1 ) );
   }
}

} // namespace
