// The steps by which Vok::CharRange reads a composite, on their own.
#include "tests/model/Everything.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace {

using Vok::CharRange;

std::size_t offsetOf( const std::function< void() > & attempt )
{
   try {
      attempt();
   } catch ( const Corvo::ParseException & e ) {
      return e.offset();
   }
   return std::string::npos;
}

TEST( CharRangeTest, isEmptyWhenAllIsConsumed )
{
   EXPECT_TRUE( CharRange( "" ).empty() );
   CharRange range( "12" );
   EXPECT_FALSE( range.empty() );
   EXPECT_EQ( range.number( 99 ), 12U );
   EXPECT_TRUE( range.empty() );
   EXPECT_EQ( range.offset(), 2U );
   EXPECT_NO_THROW( range.needEnd() );
   CharRange more( "12 " );
   more.number( 99 );
   EXPECT_THROW( more.needEnd(), Corvo::ParseException );
}

TEST( CharRangeTest, aCompositeStepByStep )
{
   CharRange range( R"(A::B[one=1,two="a b",three=true,four=red]rest)" );
   std::uint8_t one = 0;
   Corvo::String two;
   bool three = false;
   ::Test::Colour four = ::Test::Colour::blue;
   range.needPre( "A::B" );
   EXPECT_EQ( range.offset(), 5U );
   range.desAttrPre( "one", one );
   EXPECT_EQ( range.rest().substr( 0, 5 ), ",two=" );
   range.desAttrIntra( "two", two );
   range.desAttrIntra( "three", three );
   range.desAttrPost( "four", four );
   EXPECT_EQ( one, 1 );
   EXPECT_EQ( two, "a b" );
   EXPECT_TRUE( three );
   EXPECT_EQ( four, ::Test::Colour::red );
   EXPECT_EQ( range.rest(), "rest" );
}

TEST( CharRangeTest, deserializeAttrReadsTheBareValue )
{
   CharRange range( "7,8" );
   std::uint16_t value = 0;
   range.deserializeAttr( "value", value );
   EXPECT_EQ( value, 7 );
   EXPECT_EQ( range.rest(), ",8" );
   CharRange named( "value=7" );
   EXPECT_THROW( named.deserializeAttr( "value", value ), Corvo::ParseException );
   EXPECT_EQ( value, 7 );
}

TEST( CharRangeTest, everyStepHasItsPunctuation )
{
   std::uint8_t v = 0;
   EXPECT_EQ( offsetOf( [ & ] { CharRange( "A;B[" ).needPre( "A::B" ); } ), 0U );
   EXPECT_EQ( offsetOf( [ & ] { CharRange( "A::B" ).needPre( "A::B" ); } ), 4U );
   EXPECT_EQ( offsetOf( [ & ] { CharRange( ",one=1" ).desAttrPre( "one", v ); } ), 0U );
   EXPECT_EQ( offsetOf( [ & ] { CharRange( "ones=1" ).desAttrPre( "one", v ); } ), 0U );
   EXPECT_EQ( offsetOf( [ & ] { CharRange( "one 1" ).desAttrPre( "one", v ); } ), 4U );
   EXPECT_EQ( offsetOf( [ & ] { CharRange( "one=" ).desAttrPre( "one", v ); } ), 4U );
   EXPECT_EQ( offsetOf( [ & ] { CharRange( "two=1" ).desAttrIntra( "two", v ); } ), 0U );
   EXPECT_EQ( offsetOf( [ & ] { CharRange( ",one=1" ).desAttrIntra( "two", v ); } ), 1U );
   EXPECT_EQ( offsetOf( [ & ] { CharRange( ",two=1" ).desAttrPost( "two", v ); } ), 6U );
   EXPECT_EQ( offsetOf( [ & ] { CharRange( ",two=1,]" ).desAttrPost( "two", v ); } ), 6U );
   EXPECT_EQ( offsetOf( [ & ] { CharRange( ",two=1 ]" ).desAttrPost( "two", v ); } ),
         std::string::npos );
}

TEST( CharRangeTest, aRangeErrorIsThrownOnWithTheFieldsName )
{
   CharRange range( "a=1,b=11,c=pink]" );
   ::Test::Level level;
   range.desAttrPre( "a", level );
   try {
      range.desAttrIntra( "b", level );
      FAIL();
   } catch ( const Corvo::DeserializationException & e ) {
      EXPECT_EQ( e.attribute(), "b" );
      EXPECT_STREQ( e.what(),
            "attribute b: "
            "Test::Level::value < Test::Level::low or > Test::Level::top not allowed" );
   }
   EXPECT_EQ( level, ::Test::Level( 1 ) );
   ::Test::Colour colour{};
   try {
      range.desAttrPost( "c", colour );
      FAIL();
   } catch ( const Corvo::RangeException & e ) {
      EXPECT_STREQ( e.what(), "attribute c: Test::Colour has no enumerator named pink" );
   }
}

TEST( CharRangeTest, aBareFieldsRangeErrorStaysAsItIs )
{
   CharRange range( "0" );
   ::Test::Level level;
   try {
      range.deserializeAttr( "value", level );
      FAIL();
   } catch ( const Corvo::DeserializationException & ) {
      FAIL();
   } catch ( const Corvo::RangeException & e ) {
      EXPECT_STREQ(
            e.what(), "Test::Level::value < Test::Level::low or > Test::Level::top not allowed" );
   }
}

TEST( CharRangeTest, nestedFieldsAreNamedFromTheOutside )
{
   CharRange range( "outer=Test::Pair[id=1,text=a,colour=red,level=0,on=true,time=0]" );
   ::Test::Pair pair;
   try {
      range.desAttrPre( "outer", pair );
      FAIL();
   } catch ( const Corvo::DeserializationException & e ) {
      EXPECT_EQ( e.attribute(), "outer" );
      EXPECT_STREQ( e.what(),
            "attribute outer: attribute level: "
            "Test::Level::value < Test::Level::low or > Test::Level::top not allowed" );
   }
   EXPECT_EQ( pair, ::Test::Pair() );
}

TEST( CharRangeTest, theOffsetOfANestedErrorIsThatInTheWholeText )
{
   CharRange range( "outer=Test::Pair[id=x]" );
   ::Test::Pair pair;
   EXPECT_EQ( offsetOf( [ & ] { range.desAttrPre( "outer", pair ); } ), 20U );
}

TEST( CharRangeTest, anOptionalFieldIsEmptyBeforeItsSeparator )
{
   CharRange range( "A[one=,two= ,three=3,four=]" );
   Vok::Optional< std::uint32_t > value = 5U;
   range.needPre( "A" );
   range.desAttrPre( "one", value );
   EXPECT_FALSE( value.has_value() );
   value = 5U;
   range.desAttrIntra( "two", value );
   EXPECT_FALSE( value.has_value() );
   range.desAttrIntra( "three", value );
   EXPECT_EQ( value, 3U );
   range.desAttrPost( "four", value );
   EXPECT_FALSE( value.has_value() );
   EXPECT_TRUE( range.empty() );
}

std::string nested( unsigned levels )
{
   std::string text;
   for ( unsigned i = 0; i != levels; ++i ) {
      text += "A[a=";
   }
   return text;
}

// Reads the heads of nested values; how many were taken before the text was refused.
unsigned taken( CharRange & range, unsigned levels )
{
   for ( unsigned i = 0; i != levels; ++i ) {
      try {
         range.needPre( "A" );
      } catch ( const Corvo::ParseException & e ) {
         EXPECT_NE(
               std::string( e.what() ).find( "values nested at most 64 deep" ), std::string::npos );
         EXPECT_EQ( e.offset(), std::size_t{ 4 } * i );
         return i;
      }
      EXPECT_EQ( range.word(), "a" );
      range.need( '=' );
   }
   return levels;
}

TEST( CharRangeTest, valuesNest64Deep )
{
   const std::string text = nested( 65 );
   CharRange range( text );
   EXPECT_EQ( taken( range, 65 ), 64U );
}

TEST( CharRangeTest, valuesBesideOneAnotherDoNotNest )
{
   std::string text;
   for ( int i = 0; i != 200; ++i ) {
      text += "A[a=1]";
   }
   CharRange range( text );
   std::uint8_t v = 0;
   for ( int i = 0; i != 200; ++i ) {
      range.needPre( "A" );
      range.desAttrPre( "a", v );
      range.needPost();
   }
   EXPECT_TRUE( range.empty() );
}

TEST( CharRangeTest, goesBackToWhereItWas )
{
   CharRange range( "one two" );
   const std::size_t before = range.offset();
   EXPECT_EQ( range.word(), "one" );
   range.backTo( before );
   EXPECT_EQ( range.rest(), "one two" );
}

TEST( CharRangeTest, tokens )
{
   CharRange range( "word_1 - \t\r\n x" );
   EXPECT_EQ( range.word(), "word_1" );
   EXPECT_EQ( range.word(), "" );
   EXPECT_FALSE( range.accept( '-' ) );
   range.need( '-' );
   EXPECT_FALSE( range.at( 'x' ) );
   range.skipSpace();
   EXPECT_TRUE( range.at( 'x' ) );
   EXPECT_TRUE( range.accept( 'x' ) );
   EXPECT_FALSE( range.accept( 'x' ) );
   EXPECT_TRUE( range.empty() );
   EXPECT_THROW( range.need( 'x' ), Corvo::ParseException );
}

TEST( CharRangeTest, aNumberHasALimitOfItsOwn )
{
   EXPECT_EQ( CharRange( "100" ).number( 100 ), 100U );
   EXPECT_EQ( CharRange( "5x" ).number( 100 ), 5U );
   EXPECT_THROW( CharRange( "101" ).number( 100 ), Corvo::ParseException );
   EXPECT_EQ( CharRange( "0" ).number( 0 ), 0U );
}

} // namespace
