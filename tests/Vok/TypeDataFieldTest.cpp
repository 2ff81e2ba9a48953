// Fields of values through reflection: texts, checks, and collections inside values.
#include "Vok/TypeData.h"
#include "tests/model/Everything.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using testing::ElementsAre;
using Vok::TypeData;

const TypeData & typeOf( std::string_view name )
{
   return *Corvo::ModuleInspectData::findType( std::string( "Test::" ).append( name ) );
}

template< class E > std::string whyRefused( const std::function< void() > & attempt )
{
   try {
      attempt();
   } catch ( const E & e ) {
      return e.what();
   }
   return "";
}

TEST( TypeDataFieldTest, everyFieldIsReadAsText )
{
   const ::Test::Pair pair(
         5, "two words", ::Test::blue, ::Test::Level( 7 ), true, Vok::Seconds( 1.5 ) );
   const std::pair< const char *, const char * > fields[] = { { "id", "5" },
      { "text", R"("two words")" }, { "colour", "blue" }, { "level", "7" }, { "on", "true" },
      { "time", "1.5" } };
   for ( const auto & [ name, text ] : fields ) {
      EXPECT_EQ( typeOf( "Pair" ).fieldGet( &pair, name ), text );
   }
   const ::Test::Address address( 1, 2 );
   EXPECT_EQ( typeOf( "Address" ).fieldGet( &address, "low" ), "2" );
   const ::Test::Recipe recipe( ::Test::Narrow( 300 ) );
   EXPECT_EQ( typeOf( "Recipe" ).fieldGet( &recipe, "id" ), "300" );
   EXPECT_EQ( typeOf( "Recipe" ).fieldGet( &recipe, "step" ), "[]" );
}

TEST( TypeDataFieldTest, everyFieldIsSetFromText )
{
   ::Test::Pair pair;
   const TypeData & type = typeOf( "Pair" );
   type.fieldSet( &pair, "id", "5" );
   type.fieldSet( &pair, "text", R"("two words")" );
   type.fieldSet( &pair, "colour", "blue" );
   type.fieldSet( &pair, "level", "7" );
   type.fieldSet( &pair, "on", "true" );
   type.fieldSet( &pair, "time", "1.5" );
   EXPECT_EQ( pair,
         ::Test::Pair(
               5, "two words", ::Test::blue, ::Test::Level( 7 ), true, Vok::Seconds( 1.5 ) ) );
}

TEST( TypeDataFieldTest, flagsAreFieldsOfTheirOwn )
{
   ::Test::Flags flags( 0x80 );
   const TypeData & type = typeOf( "Flags" );
   EXPECT_EQ( type.fieldGet( &flags, "value" ), "128" );
   EXPECT_EQ( type.fieldGet( &flags, "first" ), "false" );
   EXPECT_EQ( type.fieldGet( &flags, "top" ), "true" );
   type.fieldSet( &flags, "second", "true" );
   EXPECT_EQ( flags.value(), 0x82 );
   type.fieldSet( &flags, "top", "false" );
   EXPECT_EQ( flags.value(), 0x02 );
   type.fieldSet( &flags, "value", "5" );
   EXPECT_TRUE( flags.first() && !flags.second() );
   EXPECT_THROW( type.fieldSet( &flags, "first", "1" ), Corvo::ParseException );
   EXPECT_EQ( type.attribute( "value" )->id(), 2U );
   EXPECT_EQ( type.attribute( "first" )->id(), 3U );
   EXPECT_EQ( type.attribute( "maskFirst" )->id(), 6U );
}

TEST( TypeDataFieldTest, flagsStandInWordsOfAnyWidth )
{
   ::Test::Registers registers;
   const TypeData & type = typeOf( "Registers" );
   for ( const char * flag : { "smallTop", "halfTop", "wordTop", "wideTop" } ) {
      EXPECT_EQ( type.fieldGet( &registers, flag ), "false" ) << flag;
      type.fieldSet( &registers, flag, "true" );
      EXPECT_EQ( type.fieldGet( &registers, flag ), "true" ) << flag;
   }
   EXPECT_EQ( registers, ::Test::Registers( 0x80, 0x8000, 0x80000000, 0x8000000000000000 ) );
   EXPECT_EQ( type.fieldGet( nullptr, "wideMask" ), "9223372036854775808" );
   registers.wordTopIs( false );
   type.fieldSet( &registers, "wideTop", "false" );
   EXPECT_EQ( registers, ::Test::Registers( 0x80, 0x8000, 0, 0 ) );
}

TEST( TypeDataFieldTest, settingChecksAsTheMutatorDoes )
{
   ::Test::Level level( 3 );
   EXPECT_EQ( whyRefused< Corvo::RangeException >(
                    [ & ] { typeOf( "Level" ).fieldSet( &level, "value", "11" ); } ),
         "Test::Level::value < Test::Level::low or > Test::Level::top not allowed" );
   EXPECT_EQ( level, ::Test::Level( 3 ) );
   ::Test::Lazy lazy;
   typeOf( "Lazy" ).fieldSet( &lazy, "value", "5" ); // checked by validate() alone
   EXPECT_EQ( lazy.value(), 5U );
   ::Test::Pair pair;
   for ( const char * bad : { "0", "11", "x", "", "5 " } ) {
      EXPECT_THROW( typeOf( "Pair" ).fieldSet( &pair, "level", bad ), std::runtime_error ) << bad;
   }
   EXPECT_EQ( pair, ::Test::Pair() );
}

TEST( TypeDataFieldTest, whatHasNoMutatorIsNotSet )
{
   ::Test::Narrow narrow( 300 );
   ::Test::Recipe recipe;
   EXPECT_EQ( whyRefused< std::invalid_argument >(
                    [ & ] { typeOf( "Narrow" ).fieldSet( &narrow, "value", "400" ); } ),
         "Test::Narrow::value cannot be set" );
   EXPECT_THROW( typeOf( "Recipe" ).fieldSet( &recipe, "id", "300" ), std::invalid_argument );
   EXPECT_THROW( typeOf( "Recipe" ).fieldSet( &recipe, "step", "[]" ), std::invalid_argument );
   EXPECT_THROW( typeOf( "Narrow" ).fieldSet( &narrow, "min", "1" ), std::invalid_argument );
   EXPECT_EQ( narrow.value(), 300 );
}

TEST( TypeDataFieldTest, anUnknownFieldIsOutOfRange )
{
   ::Test::Pair pair;
   EXPECT_EQ(
         whyRefused< std::out_of_range >( [ & ] { typeOf( "Pair" ).fieldGet( &pair, "levels" ); } ),
         "Test::Pair has no field levels" );
   EXPECT_THROW( typeOf( "Pair" ).fieldGet( &pair, "" ), std::out_of_range );
   EXPECT_THROW( typeOf( "Pair" ).fieldSet( &pair, "Level", "1" ), std::out_of_range );
   EXPECT_THROW( typeOf( "Pair" ).fieldKeys( &pair, "step" ), std::out_of_range );
   EXPECT_THROW( typeOf( "Pair" ).fieldMember( &pair, "step", "1" ), std::out_of_range );
   EXPECT_THROW( typeOf( "Pair" ).fieldMemberIs( &pair, "step", "1", "1" ), std::out_of_range );
   EXPECT_THROW( typeOf( "Pair" ).fieldMemberDel( &pair, "step", "1" ), std::out_of_range );
   EXPECT_THROW( typeOf( "Colour" ).fieldGet( nullptr, "red" ), std::out_of_range );
}

TEST( TypeDataFieldTest, constantsNeedNoValue )
{
   const std::pair< const char *, const char * > constants[] = { { "nameMax", "128" },
      { "label", R"("a \"b\"\n")" }, { "truth", "true" }, { "colourMax", "blue" },
      { "computed", "153" }, { "level", "10" } };
   for ( const auto & [ name, text ] : constants ) {
      EXPECT_EQ( typeOf( "Limits" ).fieldGet( nullptr, name ), text );
      EXPECT_EQ( typeOf( "Limits" ).attribute( name )->kind(), Vok::AttributeKind::constant );
   }
   EXPECT_EQ( typeOf( "Level" ).fieldGet( nullptr, "top" ), "10" );
   EXPECT_EQ( typeOf( "Flags" ).fieldGet( nullptr, "maskSecond" ), "2" );
   EXPECT_EQ( typeOf( "Root" ).fieldGet( nullptr, "levelDefault" ), "7" );
   EXPECT_THROW( typeOf( "Limits" ).fieldGet( nullptr, "twice" ), std::invalid_argument );
}

// ---- Collections inside values ----------------------------------------------------------------

constexpr const char * pairText = "Test::Pair[id=1,text=a,colour=red,level=2,on=true,time=0]";

TEST( TypeDataFieldTest, aMapInsideAValue )
{
   ::Test::Recipe recipe;
   const TypeData & type = typeOf( "Recipe" );
   EXPECT_TRUE( type.fieldKeys( &recipe, "step" ).empty() );
   for ( const char * key : { "20", "3", "100" } ) {
      type.fieldMemberIs( &recipe, "step", key, pairText );
   }
   EXPECT_THAT( type.fieldKeys( &recipe, "step" ), ElementsAre( "3", "20", "100" ) );
   EXPECT_EQ( type.fieldMember( &recipe, "step", "20" ), pairText );
   EXPECT_EQ( recipe.step( 20 ).level(), ::Test::Level( 2 ) );
   EXPECT_EQ(
         whyRefused< std::out_of_range >( [ & ] { type.fieldMember( &recipe, "step", "21" ); } ),
         "step has no member 21" );
   type.fieldMemberDel( &recipe, "step", "20" );
   type.fieldMemberDel( &recipe, "step", "20" );
   EXPECT_THAT( type.fieldKeys( &recipe, "step" ), ElementsAre( "3", "100" ) );
   EXPECT_EQ( type.fieldGet( &recipe, "step" ),
         std::string( "[3=" ) + pairText + ",100=" + pairText + "]" );
}

TEST( TypeDataFieldTest, aHashedMapAndASetInsideAValue )
{
   ::Test::Shelf shelf;
   const TypeData & type = typeOf( "Shelf" );
   type.fieldMemberIs( &shelf, "box", R"("two words")", "2" );
   type.fieldMemberIs( &shelf, "box", "lid", "1" );
   type.fieldMemberIs( &shelf, "box", "lid", "3" );
   type.fieldMemberIs( &shelf, "tags", "7", "" );
   type.fieldMemberIs( &shelf, "tags", "7", "anything" );
   EXPECT_THAT( type.fieldKeys( &shelf, "box" ),
         testing::WhenSorted( ElementsAre( R"("two words")", "lid" ) ) );
   EXPECT_THAT( type.fieldKeys( &shelf, "tags" ), ElementsAre( "7" ) );
   EXPECT_EQ( shelf.box( "lid" ), 3U );
   EXPECT_EQ( type.fieldMember( &shelf, "tags", "7" ), "7" );
   EXPECT_EQ( type.valueToStrep( &shelf ), R"(Test::Shelf[box=[lid=3,"two words"=2],tags=[7]])" );
   type.fieldMemberDel( &shelf, "tags", "7" );
   EXPECT_FALSE( shelf.tags( 7 ) );
}

TEST( TypeDataFieldTest, badTextsChangeNoCollection )
{
   ::Test::Shelf shelf;
   shelf.boxIs( "a", 1 );
   ::Test::Shelf before( shelf );
   const TypeData & type = typeOf( "Shelf" );
   EXPECT_THROW( type.fieldMemberIs( &shelf, "box", "two words", "1" ), Corvo::ParseException );
   EXPECT_THROW( type.fieldMemberIs( &shelf, "box", "a", "x" ), Corvo::ParseException );
   EXPECT_THROW( type.fieldMemberIs( &shelf, "box", "b", "" ), Corvo::ParseException );
   EXPECT_THROW( type.fieldMemberIs( &shelf, "tags", "65536", "" ), Corvo::ParseException );
   EXPECT_THROW( type.fieldMemberDel( &shelf, "tags", "" ), Corvo::ParseException );
   EXPECT_EQ( shelf, before );
   ::Test::Pair pair;
   EXPECT_THROW( typeOf( "Pair" ).fieldMemberIs( &pair, "id", "1", "1" ), std::invalid_argument );
   EXPECT_THROW( typeOf( "Pair" ).fieldKeys( &pair, "id" ), std::invalid_argument );
}

} // namespace
