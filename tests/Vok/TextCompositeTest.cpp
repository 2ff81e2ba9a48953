// Texts of values of several fields, of optionals, and the steps of Vok::CharRange behind them.
#include "tests/model/Everything.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace {

using Corvo::strepToValue;
using Corvo::valueToStrep;
using ::Test::Colour;
using ::Test::Level;
using ::Test::Pair;
using ::Test::Plain;

constexpr const char * pairText =
      R"(Test::Pair[id=5,text="two words",colour=blue,level=7,on=true,time=1.5])";

Pair pair() { return Pair( 5, "two words", Colour::blue, Level( 7 ), true, Vok::Seconds( 1.5 ) ); }

// Where and why reading a V of this text fails.
struct Failure {
   std::size_t offset;
   std::string message;

   friend bool operator==( const Failure &, const Failure & ) = default;
   friend std::ostream & operator<<( std::ostream & out, const Failure & f )
   {
      return out << f.offset << ": " << f.message;
   }
};

template< class V > Failure failure( std::string_view text )
{
   try {
      strepToValue< V >( text );
   } catch ( const Corvo::ParseException & e ) {
      return { e.offset(), e.what() };
   }
   return { 0, "taken" };
}

TEST( TextCompositeTest, fieldsStandByNameInDeclaredOrder )
{
   EXPECT_EQ( valueToStrep( pair() ), pairText );
   EXPECT_EQ( strepToValue< Pair >( pairText ), pair() );
   EXPECT_EQ(
         valueToStrep( Pair() ), R"(Test::Pair[id=0,text="",colour=red,level=5,on=false,time=0])" );
   EXPECT_EQ( valueToStrep( Plain( Colour::green, 1, 2, 0.25 ) ),
         "Test::Plain[colour=green,big=1,small=2,ratio=0.25]" );
}

TEST( TextCompositeTest, aSingleFieldStandsBare )
{
   EXPECT_EQ( valueToStrep( Level( 3 ) ), "3" );
   EXPECT_EQ( strepToValue< Level >( "10" ), Level( 10 ) );
   EXPECT_EQ( valueToStrep( ::Test::Label( "a b" ) ), R"("a b")" );
   EXPECT_EQ( strepToValue< ::Test::Label >( R"("a b")" ), ::Test::Label( "a b" ) );
   EXPECT_EQ( valueToStrep( ::Test::Mode( ::Test::Mode::known ) ), "known" );
   EXPECT_EQ( valueToStrep( ::Test::Flags( 129 ) ), "129" );
   EXPECT_EQ( strepToValue< ::Test::Narrow >( "256" ).value(), 256 );
}

TEST( TextCompositeTest, aTextWrittenByHandIsAToken )
{
   EXPECT_EQ( valueToStrep( ::Test::Address( 1, 2 ) ), "1-2" );
   EXPECT_EQ( strepToValue< ::Test::Address >( "65535-0" ), ::Test::Address( 65535, 0 ) );
   for ( const char * text :
         { "", "1", "1-", "-2", "01-2", "1-65536", "1-2-3", "1-2 ", "\"1-2\"" } ) {
      EXPECT_THROW( strepToValue< ::Test::Address >( text ), Corvo::ParseException ) << text;
   }
}

TEST( TextCompositeTest, whiteSpaceMayStandBetweenTokens )
{
   EXPECT_EQ(
         strepToValue< Pair >( "Test::Pair [ id = 5 , text\n=\t\"two words\",\r\n colour=blue, "
                               "level =7,on= true,time=1.5 ]" ),
         pair() );
   for ( const char * text : { " Test::Pair[id=0,text=a,colour=red,level=5,on=false,time=0]",
               "Test::Pair[id=0,text=a,colour=red,level=5,on=false,time=0] ",
               "Test:: Pair[id=0,text=a,colour=red,level=5,on=false,time=0]",
               "Test::Pair[i d=0,text=a,colour=red,level=5,on=false,time=0]",
               "Test::Pair[id=1 2,text=a,colour=red,level=5,on=false,time=0]",
               "Test::Pair[id=0,text=a\v,colour=red,level=5,on=false,time=0]" } ) {
      EXPECT_THROW( strepToValue< Pair >( text ), Corvo::ParseException ) << text;
   }
}

struct Refused {
   const char * text;
   std::size_t offset;
   const char * message;
};

TEST( TextCompositeTest, whatDoesNotMatchIsToldWithItsPlace )
{
   const Refused refused[] = {
      { "", 0, "at offset 0: expected Test::Plain, found the end" },
      { "Test::Pair[", 0, R"(at offset 0: expected Test::Plain, found "Test::Pair[")" },
      { "Plain[colour=red]", 0, R"(at offset 0: expected Test::Plain, found "Plain[colour=red]")" },
      { "[colour=red]", 0, R"(at offset 0: expected Test::Plain, found "[colour=red]")" },
      { "Test::Plainer[", 11, R"(at offset 11: expected "[", found "er[")" },
      { "Test::Plain", 11, R"(at offset 11: expected "[", found the end)" },
      { "Test::Plain(", 11, R"(at offset 11: expected "[", found "(")" },
      { "Test::Plain[]", 12, R"(at offset 12: expected colour=, found "]")" },
      { "Test::Plain[big=1]", 12, R"(at offset 12: expected colour=, found "big=1]")" },
      { "Test::Plain[Colour=red]", 12, R"(at offset 12: expected colour=, found "Colour=red]")" },
      { "Test::Plain[colour:red]", 18, R"(at offset 18: expected "=", found ":red]")" },
      { "Test::Plain[colour=red]", 22, R"(at offset 22: expected ",", found "]")" },
      { "Test::Plain[colour=red,small=1]", 23, R"(at offset 23: expected big=, found "small=1]")" },
      { "Test::Plain[colour=red,big=x]", 27,
            R"(at offset 27: expected a number from 0 to 18446744073709551615, found "x]")" },
      { "Test::Plain[colour=red,big=1,small=256,ratio=1]", 35,
            R"(at offset 35: expected a number from 0 to 255, found "256,ratio=1]")" },
      { "Test::Plain[colour=red,big=1,small=2,ratio=1", 44,
            R"(at offset 44: expected "]", found the end)" },
      { "Test::Plain[colour=red,big=1,small=2,ratio=1,]", 44,
            R"(at offset 44: expected "]", found ",]")" },
      { "Test::Plain[colour=red,big=1,small=2,ratio=1]x", 45,
            "at offset 45: expected the end of the text, found x" },
      { "Test::Plain[colour=red,big=1,small=2,ratio=1]]", 45,
            R"(at offset 45: expected the end of the text, found "]")" },
   };
   for ( const Refused & r : refused ) {
      EXPECT_EQ( failure< Plain >( r.text ), ( Failure{ r.offset, r.message } ) ) << r.text;
   }
}

TEST( TextCompositeTest, everyPrefixIsRefused )
{
   const std::string whole( pairText );
   for ( std::size_t size = 0; size != whole.size(); ++size ) {
      EXPECT_THROW( strepToValue< Pair >( whole.substr( 0, size ) ), std::exception ) << size;
   }
}

TEST( TextCompositeTest, aBoundThatAFieldViolatesIsToldWithTheField )
{
   try {
      strepToValue< Pair >( "Test::Pair[id=5,text=a,colour=red,level=11,on=true,time=0]" );
      FAIL();
   } catch ( const Corvo::DeserializationException & e ) {
      EXPECT_EQ( e.attribute(), "level" );
      EXPECT_STREQ( e.what(),
            "attribute level: "
            "Test::Level::value < Test::Level::low or > Test::Level::top not allowed" );
   }
   try {
      strepToValue< Pair >( "Test::Pair[id=5,text=a,colour=pink,level=1,on=true,time=0]" );
      FAIL();
   } catch ( const Corvo::DeserializationException & e ) {
      EXPECT_EQ( e.attribute(), "colour" );
      EXPECT_STREQ( e.what(), "attribute colour: Test::Colour has no enumerator named pink" );
   }
}

TEST( TextCompositeTest, bareBoundsAndThoseOfTheTypeItselfKeepTheirMessage )
{
   const auto why = []( auto read ) -> std::string {
      try {
         read();
      } catch ( const Corvo::DeserializationException & ) {
         return "a field is named";
      } catch ( const Corvo::RangeException & e ) {
         return e.what();
      }
      return "taken";
   };
   EXPECT_EQ( why( [] { strepToValue< Level >( "0" ); } ),
         "Test::Level::value < Test::Level::low or > Test::Level::top not allowed" );
   for ( const char * text : { "255", "0", "65536", "4294967295" } ) {
      EXPECT_EQ( why( [ text ] { strepToValue< ::Test::Narrow >( text ); } ),
            "Test::Narrow::value < Test::Narrow::min or > Test::Narrow::max not allowed" );
   }
   EXPECT_EQ( why( [] { strepToValue< ::Test::Label >( "a-text-of-21-bytes-xx" ); } ),
         "Test::Label::bytes > maxLength() not allowed" );
   EXPECT_EQ( why( [] { strepToValue< ::Test::Interval >( "Test::Interval[before=0,after=1]" ); } ),
         "Test::Interval::before < Test::Interval::least or > Test::Interval::most not allowed" );
   EXPECT_EQ(
         why( [] { strepToValue< ::Test::Interval >( "Test::Interval[before=1,after=301]" ); } ),
         "Test::Interval::after < Test::Interval::least or > Test::Interval::most not allowed" );
   EXPECT_EQ( strepToValue< ::Test::Lazy >( "5" ).value(), 5U ); // validated, not checked
}

// ---- Optionals --------------------------------------------------------------------------------

template< class V > void expectOptional( const V & value, const char * text )
{
   using O = Vok::Optional< V >;
   EXPECT_EQ( valueToStrep( O() ), "" );
   EXPECT_EQ( valueToStrep( O( value ) ), text );
   EXPECT_FALSE( strepToValue< O >( "" ).has_value() );
   ASSERT_TRUE( strepToValue< O >( text ).has_value() );
   EXPECT_EQ( strepToValue< O >( text ).value(), value );
   EXPECT_THROW( strepToValue< O >( "#" ), std::exception );
   EXPECT_THROW( strepToValue< O >( " " ), std::exception );
}

TEST( TextOptionalTest, noValueIsTheEmptyText )
{
   expectOptional< std::uint32_t >( 7, "7" );
   expectOptional< double >( 0.5, "0.5" );
   expectOptional< bool >( false, "false" );
   expectOptional< Corvo::String >( "", R"("")" );
   expectOptional< Corvo::String >( "word", "word" );
   expectOptional< Colour >( Colour::blue, "blue" );
   expectOptional< Level >( Level( 2 ), "2" );
   expectOptional< Pair >( pair(), pairText );
   expectOptional< ::Test::Address >( ::Test::Address( 1, 2 ), "1-2" );
}

TEST( TextOptionalTest, boundsOfTheValueHold )
{
   EXPECT_THROW( strepToValue< Vok::Optional< Level > >( "11" ), Corvo::RangeException );
   EXPECT_THROW( strepToValue< Vok::Optional< Colour > >( "pink" ), Corvo::EnumRangeException );
   EXPECT_THROW( strepToValue< Vok::Optional< bool > >( "255" ), Corvo::ParseException );
}

} // namespace
