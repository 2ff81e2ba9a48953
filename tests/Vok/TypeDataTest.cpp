// Vok::TypeData: types and values through their records alone.
#include "Vok/TypeData.h"
#include "Vok/ModuleInspectData.h"
#include "tests/model/Everything.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using Vok::TypeData;
using Vok::TypeKind;
using Vok::Value;

const TypeData & typeOf( std::string_view name )
{
   const TypeData * const type =
         Corvo::ModuleInspectData::findType( std::string( "Test::" ).append( name ) );
   if ( !type ) {
      throw std::logic_error( "the test model lacks " + std::string( name ) );
   }
   return *type;
}

std::vector< std::string > namesOf( std::span< const Vok::AttributeData > attributes )
{
   std::vector< std::string > names;
   for ( const Vok::AttributeData & attribute : attributes ) {
      names.emplace_back( attribute.name() );
   }
   return names;
}

Corvo::String textOf( const Value & value )
{
   return value.typeData().valueToStrep( value.data() );
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

// ---- What a type is ---------------------------------------------------------------------------

TEST( TypeDataTest, kinds )
{
   const std::pair< const char *, TypeKind > kinds[] = { { "Colour", TypeKind::enumeration },
      { "Mode::Kind", TypeKind::enumeration }, { "Limits", TypeKind::constants },
      { "Holder", TypeKind::constants }, { "Level", TypeKind::value }, { "Pair", TypeKind::value },
      { "Recipe", TypeKind::value }, { "Root", TypeKind::entity }, { "Bare", TypeKind::entity } };
   for ( const auto & [ name, kind ] : kinds ) {
      EXPECT_EQ( typeOf( name ).kind(), kind ) << name;
   }
   EXPECT_STREQ( stringValue( TypeKind::value ), "value" );
   EXPECT_STREQ( stringValue( TypeKind::enumeration ), "enumeration" );
   EXPECT_STREQ( stringValue( TypeKind::constants ), "constants" );
   EXPECT_STREQ( stringValue( TypeKind::entity ), "entity" );
}

TEST( TypeDataTest, nameModuleAndDocumentation )
{
   EXPECT_EQ( typeOf( "Leaf" ).name(), "Test::Leaf" );
   EXPECT_EQ( typeOf( "Leaf" ).module().name(), "Everything" );
   EXPECT_EQ( typeOf( "Leaf" ).documentation(), "The smallest entity." );
   EXPECT_EQ( typeOf( "Holder::Status" ).documentation(), "Nested, reached as Holder::Status." );
}

TEST( TypeDataTest, attributesInDeclaredOrderTheBasesFirst )
{
   EXPECT_THAT( namesOf( typeOf( "Interval" ).attributes() ),
         ElementsAre( "before", "after", "least", "most" ) );
   EXPECT_THAT( namesOf( typeOf( "Flags" ).attributes() ),
         ElementsAre( "value", "first", "second", "top", "maskFirst", "maskSecond" ) );
   EXPECT_THAT( namesOf( typeOf( "Slot" ).attributes() ),
         ElementsAre( "label", "weight", "colour", "heavy" ) );
   EXPECT_THAT( namesOf( typeOf( "Leaf" ).attributes() ), ElementsAre( "nameString", "active" ) );
   EXPECT_THAT( namesOf( typeOf( "Bare" ).attributes() ), ElementsAre( "path" ) );
   std::vector< std::string > root = namesOf( typeOf( "Root" ).attributes() );
   root.emplace_back( "fill" );
   EXPECT_EQ( namesOf( typeOf( "Special" ).attributes() ), root );
   EXPECT_TRUE( typeOf( "Colour" ).attributes().empty() );
}

TEST( TypeDataTest, anAttributeByNameOrNull )
{
   const TypeData & pair = typeOf( "Pair" );
   ASSERT_NE( pair.attribute( "level" ), nullptr );
   EXPECT_EQ( pair.attribute( "level" )->name(), "level" );
   EXPECT_EQ( pair.attribute( "levels" ), nullptr );
   EXPECT_EQ( pair.attribute( "" ), nullptr );
   EXPECT_EQ( typeOf( "Colour" ).attribute( "red" ), nullptr );
}

TEST( TypeDataTest, baseOrNull )
{
   EXPECT_EQ( typeOf( "Special" ).base(), &typeOf( "Root" ) );
   EXPECT_EQ( typeOf( "Root" ).base(), nullptr );
   EXPECT_EQ( typeOf( "Pair" ).base(), nullptr );
}

TEST( TypeDataTest, constructorArguments )
{
   EXPECT_THAT( namesOf( typeOf( "Leaf" ).constructorArguments() ), ElementsAre( "nameString" ) );
   EXPECT_THAT(
         namesOf( typeOf( "Special" ).constructorArguments() ), ElementsAre( "nameString" ) );
   EXPECT_THAT( namesOf( typeOf( "Group" ).constructorArguments() ),
         ElementsAre( "nameString", "seqno" ) );
   EXPECT_THAT( namesOf( typeOf( "Host" ).constructorArguments() ), ElementsAre( "hostname" ) );
   EXPECT_THAT(
         namesOf( typeOf( "Slot" ).constructorArguments() ), ElementsAre( "label", "weight" ) );
   EXPECT_THAT( namesOf( typeOf( "Binding" ).constructorArguments() ),
         ElementsAre( "label", "target", "mode" ) );
   EXPECT_TRUE( typeOf( "Bare" ).constructorArguments().empty() );
}

TEST( TypeDataTest, enumerators )
{
   using Pairs = std::vector< std::pair< std::uint32_t, std::string_view > >;
   EXPECT_EQ( typeOf( "Colour" ).enumerators(),
         ( Pairs{ { 0, "red" }, { 1, "green" }, { 7, "blue" } } ) );
   EXPECT_EQ( typeOf( "Huge" ).enumerators(),
         ( Pairs{ { 0, "hugeNone" }, { 4000000000U, "hugeTop" } } ) );
   EXPECT_EQ( typeOf( "Colour" ).enumeratorDocumentation( 7 ), "sky, after a gap" );
   EXPECT_EQ( typeOf( "Colour" ).enumeratorDocumentation( 2 ), "" );
   EXPECT_TRUE( typeOf( "Pair" ).enumerators().empty() );
   EXPECT_TRUE( typeOf( "Holder" ).enumerators().empty() );
}

// ---- Values -----------------------------------------------------------------------------------

TEST( TypeDataTest, makesDefaultValues )
{
   EXPECT_EQ( textOf( typeOf( "Level" ).make() ), "5" );
   EXPECT_EQ( textOf( typeOf( "Colour" ).make() ), "red" );
   EXPECT_EQ( textOf( typeOf( "Label" ).make() ), R"("")" );
   EXPECT_EQ( textOf( typeOf( "Address" ).make() ), "0-0" );
   EXPECT_EQ( textOf( typeOf( "Recipe" ).make() ), "Test::Recipe[id=65535,step=[]]" );
   EXPECT_EQ( &typeOf( "Pair" ).make().typeData(), &typeOf( "Pair" ) );
}

TEST( TypeDataTest, makesValuesFromTheTextsOfTheirFields )
{
   const Value pair =
         typeOf( "Pair" ).make( { "5", R"("two words")", "blue", "7", "true", "1.5" } );
   EXPECT_EQ( *static_cast< const ::Test::Pair * >( pair.data() ),
         ::Test::Pair(
               5, "two words", ::Test::blue, ::Test::Level( 7 ), true, Vok::Seconds( 1.5 ) ) );
   EXPECT_EQ( textOf( typeOf( "Flags" ).make( { "129" } ) ), "129" ); // the word, no flags
   EXPECT_EQ( textOf( typeOf( "Narrow" ).make( { "256" } ) ), "256" );
   EXPECT_EQ( textOf( typeOf( "Address" ).make( { "1", "2" } ) ), "1-2" );
   EXPECT_EQ( textOf( typeOf( "Recipe" ).make( { "256" } ) ), "Test::Recipe[id=256,step=[]]" );
   const std::vector< Corvo::String > list = { "1", "300" };
   EXPECT_EQ( textOf( typeOf( "Interval" ).make( list ) ), "Test::Interval[before=1,after=300]" );
}

TEST( TypeDataTest, makingChecksAsConstructionDoes )
{
   using Corvo::RangeException;
   const auto make = []( const char * type, Vok::TextList args ) {
      return whyRefused< RangeException >( [ & ] { typeOf( type ).make( args ); } );
   };
   const std::string level =
         "Test::Level::value < Test::Level::low or > Test::Level::top not allowed";
   EXPECT_EQ( make( "Level", { "11" } ), level );
   EXPECT_EQ( make( "Pair", { "5", "a", "blue", "0", "true", "1.5" } ), level );
   for ( const char * text : { "255", "65536", "4294967295" } ) {
      EXPECT_EQ( make( "Narrow", { text } ),
            "Test::Narrow::value < Test::Narrow::min or > Test::Narrow::max not allowed" );
   }
   EXPECT_EQ( make( "Label", { "a-text-of-21-bytes-xx" } ),
         "Test::Label::bytes > maxLength() not allowed" );
   EXPECT_EQ( make( "Interval", { "1", "0" } ),
         "Test::Interval::after < Test::Interval::least or > Test::Interval::most not allowed" );
   EXPECT_EQ(
         make( "Plain", { "pink", "0", "0", "0" } ), "Test::Colour has no enumerator named pink" );
   EXPECT_THROW( typeOf( "Plain" ).make( { "red", "x", "0", "0" } ), Corvo::ParseException );
   EXPECT_THROW( typeOf( "Plain" ).make( { "red", "0 ", "0", "0" } ), Corvo::ParseException );
}

TEST( TypeDataTest, makingTakesAllFieldsOrNone )
{
   using Corvo::ConstructorArgsException;
   EXPECT_THROW( typeOf( "Interval" ).make( { "1" } ), ConstructorArgsException );
   EXPECT_THROW( typeOf( "Interval" ).make( { "1", "2", "3" } ), ConstructorArgsException );
   EXPECT_THROW(
         typeOf( "Flags" ).make( { "1", "true", "true", "true" } ), ConstructorArgsException );
   EXPECT_THROW( typeOf( "Shelf" ).make( { "[]", "[]" } ), ConstructorArgsException );
   EXPECT_THROW( typeOf( "Limits" ).make(), std::invalid_argument );
   EXPECT_THROW( typeOf( "Leaf" ).make(), std::invalid_argument );
}

TEST( TypeDataTest, aValueIsOwnedAndCopied )
{
   Value first = typeOf( "Pair" ).make();
   typeOf( "Pair" ).fieldSet( first.data(), "text", "first" );
   Value second( first );
   typeOf( "Pair" ).fieldSet( second.data(), "text", "second" );
   EXPECT_EQ( typeOf( "Pair" ).fieldGet( first.data(), "text" ), "first" );
   first = second;
   EXPECT_TRUE( typeOf( "Pair" ).isEq( first.data(), second.data() ) );
   EXPECT_NE( first.data(), second.data() );
   const Value moved( std::move( first ) );
   EXPECT_EQ( typeOf( "Pair" ).fieldGet( moved.data(), "text" ), "second" );
}

TEST( TypeDataTest, hashIsThatOfStdHash )
{
   const ::Test::Pair pair( 1, "a", ::Test::blue, ::Test::Level( 2 ), true, Vok::Seconds( 3 ) );
   EXPECT_EQ( typeOf( "Pair" ).hash( &pair ), std::hash< ::Test::Pair >()( pair ) );
   const ::Test::Label label( "a" );
   EXPECT_EQ( typeOf( "Label" ).hash( &label ), std::hash< ::Test::Label >()( label ) );
   const ::Test::Colour colour = ::Test::blue;
   EXPECT_EQ( typeOf( "Colour" ).hash( &colour ), std::hash< ::Test::Colour >()( colour ) );
}

TEST( TypeDataTest, whatHasNoHashSaysSo )
{
   for ( const char * name : { "Plain", "Recipe", "Shelf" } ) {
      const Value value = typeOf( name ).make();
      EXPECT_EQ( whyRefused< Corvo::NotHashableException >(
                       [ & ] { typeOf( name ).hash( value.data() ); } ),
            "Test::" + std::string( name ) + " is not hashable" );
   }
   EXPECT_THROW( typeOf( "Root" ).hash( nullptr ), Corvo::NotHashableException );
}

TEST( TypeDataTest, isEq )
{
   const ::Test::Plain a;
   const ::Test::Plain b( ::Test::red, 0, 0, 0.5 );
   const ::Test::Plain c( ::Test::red, 0, 1, 0.5 );
   EXPECT_TRUE( typeOf( "Plain" ).isEq( &a, &a ) );
   EXPECT_TRUE( typeOf( "Plain" ).isEq( &a, &b ) );
   EXPECT_FALSE( typeOf( "Plain" ).isEq( &a, &c ) );
}

TEST( TypeDataTest, whatHasNoValuesSaysSo )
{
   const auto root = ::Test::Root::RootIs( "r" );
   for ( const char * name : { "Root", "Limits" } ) {
      const TypeData & type = typeOf( name );
      EXPECT_EQ( whyRefused< std::invalid_argument >( [ & ] { type.make(); } ),
            "Test::" + std::string( name ) + " has no values" );
      EXPECT_THROW( type.isEq( root.get(), root.get() ), std::invalid_argument );
      EXPECT_THROW( type.valueToStrep( root.get() ), std::invalid_argument );
      EXPECT_THROW( type.hash( root.get() ), Corvo::NotHashableException );
      Vok::CharRange range( "text" );
      EXPECT_THROW( type.strepToValue( range, root.get() ), Corvo::ParseException );
   }
   EXPECT_THROW( typeOf( "Root" ).fieldGet( root.get(), "mid" ), std::invalid_argument );
   EXPECT_THROW( typeOf( "Root" ).fieldSet( root.get(), "mid", "5" ), std::invalid_argument );
   EXPECT_THROW(
         typeOf( "Root" ).fieldMemberIs( root.get(), "marks", "5", "" ), std::invalid_argument );
   EXPECT_THROW( typeOf( "Root" ).fieldKeys( root.get(), "marks" ), std::invalid_argument );
   EXPECT_TRUE( root->mid() == 0 && root->marks().empty() );
}

TEST( TypeDataTest, readsATextIntoAValueThatABadOneLeavesAsItWas )
{
   ::Test::Interval interval( 5, 6 );
   Vok::CharRange good( "Test::Interval[before=1,after=2]rest" );
   typeOf( "Interval" ).strepToValue( good, &interval );
   EXPECT_EQ( interval, ::Test::Interval( 1, 2 ) );
   EXPECT_EQ( good.rest(), "rest" );
   for ( const char * text :
         { "", "Test::Interval[before=9,after=", "Test::Interval[before=9,after=0]" } ) {
      Vok::CharRange bad( text );
      EXPECT_THROW( typeOf( "Interval" ).strepToValue( bad, &interval ), std::runtime_error )
            << text;
      EXPECT_EQ( interval, ::Test::Interval( 1, 2 ) );
   }
   ::Test::Colour colour = ::Test::green;
   Vok::CharRange name( "pink" );
   EXPECT_THROW( typeOf( "Colour" ).strepToValue( name, &colour ), Corvo::EnumRangeException );
   EXPECT_EQ( colour, ::Test::green );
}

TEST( TypeDataTest, aTypeWithoutATextConstructorSaysSo )
{
   for ( const std::string name : { "Recipe", "Shelf" } ) {
      Value value = typeOf( name ).make();
      Vok::CharRange range( "Test::Recipe[id=256,step=[]]" );
      EXPECT_EQ( whyRefused< Corvo::ParseException >(
                       [ & ] { typeOf( name ).strepToValue( range, value.data() ); } ),
            "No String constructor for " + name + " - has collection" );
      EXPECT_EQ( range.offset(), 0U );
   }
}

} // namespace
