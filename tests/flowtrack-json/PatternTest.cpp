// Regular expressions of bounds and of addresses.
#include "tools/flowtrack/json/Pattern.h"

#include <gtest/gtest.h>
#include <regex>

using FlowtrackJson::decimalPattern;

namespace {

TEST( PatternTest, ExactlyTheNumbersInBounds )
{
   const std::vector< std::pair< unsigned, unsigned > > bounds = {
      { 0, 0 }, { 0, 9 }, { 0, 255 }, { 3, 47 }, { 7, 1000 }, { 256, 999 }, { 99, 1101 }
   };
   for ( const auto & [ least, most ] : bounds ) {
      const std::regex pattern( decimalPattern( least, most ) );
      for ( unsigned n = 0; n != 1300; ++n ) {
         EXPECT_EQ( std::regex_match( std::to_string( n ), pattern ), n >= least && n <= most )
               << n << " in " << least << ".." << most;
      }
      EXPECT_FALSE( std::regex_match( "00", pattern ) );
      EXPECT_FALSE( std::regex_match( "", pattern ) );
   }
   const std::regex widest( decimalPattern( 0, 0xFFFFFFFFFFFFFFFF ) );
   EXPECT_TRUE( std::regex_match( "18446744073709551615", widest ) );
   EXPECT_FALSE( std::regex_match( "18446744073709551616", widest ) );
   EXPECT_TRUE( std::regex_match( "9999999999999999999", widest ) );
}

/// The pattern of a type takes a text where the type does. Of several texts of one address the type
/// reads its own alone; they are not here.
TEST( PatternTest, AddressesAsTheirTypesTakeThem )
{
   for ( const char * const type : { "Wyre::IpAddr", "Wyre::Ip6Addr", "Wyre::IpGenAddr" } ) {
      const FlowtrackJson::Shape & shape = FlowtrackJson::shapeOf( type );
      const std::regex pattern( FlowtrackJson::textPattern( shape ) );
      for ( const char * const text :
            { "", "0.0.0.0", "10.0.0.255", "10.0.0.256", "10.0.0", "10.0.0.1.2", "010.0.0.1", "::",
                  "::1", "1::", "fd00::1", "1:2:3:4:5:6:7:8", "1:2:3:4:5:6:7",
                  "1::2::3", ":::", "::ffff:10.0.0.1", "12345::", "g::",
                  "fe80::1%eth0", "x" } ) {
         bool taken = true;
         try {
            Vok::Value value = shape.type->make();
            const Corvo::String strep = Corvo::valueToStrep( Corvo::String( text ) );
            Vok::CharRange range( strep );
            shape.type->strepToValue( range, value.data() );
         } catch ( const Corvo::ParseException & ) {
            taken = false;
         }
         EXPECT_EQ( std::regex_match( text, pattern ), taken ) << type << ' ' << text;
      }
   }
}

} // namespace
