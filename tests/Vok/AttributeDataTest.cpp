// Vok::AttributeData: what an attribute is, as a table; functions.
#include "Vok/TypeData.h"
#include "tests/model/Everything.h"
#include "tests/support/Recorder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using Corvo::Ptr;
using ::Test::Root;
using Vok::AttributeData;
using Vok::AttributeKind;

const AttributeData & attributeOf( const Vok::TypeData & type, std::string_view name )
{
   const AttributeData * const found = type.attribute( name );
   if ( !found ) {
      throw std::logic_error( std::string( name ) + " is no attribute" );
   }
   return *found;
}

const AttributeData & of( std::string_view name ) { return attributeOf( Root::vokType(), name ); }

// One row of what is known of an attribute.
struct Row {
   const char * name;
   Vok::AttrId id;
   AttributeKind kind;
   const char * typeName;
   const char * keyTypeName;
   const char * keyField;
   bool ordered;
   bool settable;
};

const Row rootRows[] = {
   { "nameString", 154, AttributeKind::constructorArgument, "Corvo::String", "", "", false, false },
   { "levelDefault", 258, AttributeKind::constant, "u32", "", "", false, false },
   { "enabled", 259, AttributeKind::plain, "bool", "", "", false, true },
   { "tiny", 260, AttributeKind::plain, "u8", "", "", false, true },
   { "mid", 261, AttributeKind::plain, "u16", "", "", false, true },
   { "count", 262, AttributeKind::plain, "u32", "", "", false, true },
   { "ticks", 263, AttributeKind::plain, "u8", "", "", false, true },
   { "big", 264, AttributeKind::plain, "u64", "", "", false, true },
   { "ratio", 265, AttributeKind::plain, "double", "", "", false, true },
   { "title", 266, AttributeKind::plain, "Corvo::String", "", "", false, true },
   { "colour", 267, AttributeKind::plain, "Test::Colour", "", "", false, true },
   { "huge", 268, AttributeKind::plain, "Test::Huge", "", "", false, true },
   { "level", 269, AttributeKind::plain, "Test::Level", "", "", false, true },
   { "borrowed", 271, AttributeKind::plain, "Test::Narrow", "", "", false, true },
   { "pair", 272, AttributeKind::plain, "Test::Pair", "", "", false, true },
   { "start", 274, AttributeKind::plain, "Vok::Seconds", "", "", false, true },
   { "end", 275, AttributeKind::plain, "Corvo::Duration", "", "", false, true },
   { "recipe", 277, AttributeKind::plain, "Test::Recipe", "", "", false, true },
   { "maybe", 278, AttributeKind::optional, "Test::Level", "", "", false, true },
   { "maybeInt", 279, AttributeKind::optional, "u32", "", "", false, true },
   { "maybeBit", 280, AttributeKind::optional, "bool", "", "", false, true },
   { "maybeWord", 281, AttributeKind::optional, "Test::Full", "", "", false, true },
   { "maybePair", 282, AttributeKind::optional, "Test::Pair", "", "", false, true },
   { "total", 283, AttributeKind::derived, "u32", "", "", false, false },
   { "names", 284, AttributeKind::map, "Corvo::String", "u32", "", false, true },
   { "byName", 285, AttributeKind::map, "Test::Pair", "Corvo::String", "", false, true },
   { "plains", 286, AttributeKind::map, "Test::Plain", "Test::Colour", "colour", false, true },
   { "recipes", 287, AttributeKind::map, "Test::Recipe", "Test::Narrow", "id", false, true },
   { "sorted", 288, AttributeKind::map, "Test::Pair", "u32", "id", true, true },
   { "steps", 289, AttributeKind::map, "u64", "u32", "", true, true },
   { "colours", 290, AttributeKind::set, "Test::Colour", "Test::Colour", "", false, true },
   { "words", 291, AttributeKind::set, "Corvo::String", "Corvo::String", "", false, true },
   { "marks", 292, AttributeKind::set, "u32", "u32", "", true, true },
   { "tree", 293, AttributeKind::children, "Test::Tree", "Corvo::String", "name", false, true },
   { "groups", 294, AttributeKind::children, "Test::Group", "u32", "seqno", true, true },
   { "slots", 295, AttributeKind::children, "Test::Slot", "Test::Label", "label", false, true },
   { "bindings", 296, AttributeKind::children, "Test::Binding", "Test::Label", "label", false,
         true },
   { "numbered", 297, AttributeKind::children, "Test::Numbered", "Test::Narrow", "id", false,
         true },
   { "single", 298, AttributeKind::child, "Test::Leaf", "", "", false, true },
   { "only", 299, AttributeKind::child, "Test::Bare", "", "", false, true },
   { "refs", 300, AttributeKind::references, "Test::Numbered", "Test::Narrow", "id", false, true },
   { "leafRefs", 301, AttributeKind::references, "Test::Tree", "Corvo::String", "name", false,
         true },
   { "path", 302, AttributeKind::function, "", "", "", false, false },
   { "paint", 303, AttributeKind::function, "", "", "", false, false },
   { "instantiate", 304, AttributeKind::function, "", "", "", false, false },
};

TEST( AttributeDataTest, everyKindOfAttribute )
{
   for ( const Row & row : rootRows ) {
      const AttributeData & attribute = of( row.name );
      EXPECT_EQ( attribute.id(), row.id ) << row.name;
      EXPECT_EQ( attribute.name(), row.name );
      EXPECT_STREQ( stringValue( attribute.kind() ), stringValue( row.kind ) ) << row.name;
      EXPECT_EQ( attribute.typeName(), row.typeName ) << row.name;
      EXPECT_EQ( attribute.keyTypeName(), row.keyTypeName ) << row.name;
      EXPECT_EQ( attribute.keyField(), row.keyField ) << row.name;
      EXPECT_EQ( attribute.ordered(), row.ordered ) << row.name;
      EXPECT_EQ( attribute.settable(), row.settable ) << row.name;
      EXPECT_FALSE( attribute.documentation().empty() ) << row.name;
   }
}

TEST( AttributeDataTest, constructorArguments )
{
   const Vok::TypeData & slot = ::Test::Slot::vokType();
   EXPECT_EQ( attributeOf( slot, "label" ).kind(), AttributeKind::constructorArgument );
   EXPECT_FALSE( attributeOf( slot, "label" ).settable() );
   EXPECT_EQ( attributeOf( slot, "weight" ).kind(), AttributeKind::constructorArgument );
   EXPECT_TRUE( attributeOf( slot, "weight" ).settable() );
   const Vok::TypeData & binding = ::Test::Binding::vokType();
   EXPECT_EQ( attributeOf( binding, "target" ).typeName(), "Test::Tree" );
   EXPECT_EQ( attributeOf( binding, "target" ).kind(), AttributeKind::constructorArgument );
   EXPECT_FALSE( attributeOf( binding, "target" ).settable() );
}

TEST( AttributeDataTest, kindsHaveNames )
{
   const std::pair< AttributeKind, const char * > kinds[] = { { AttributeKind::plain, "plain" },
      { AttributeKind::optional, "optional" }, { AttributeKind::constant, "constant" },
      { AttributeKind::constructorArgument, "constructorArgument" },
      { AttributeKind::derived, "derived" }, { AttributeKind::function, "function" },
      { AttributeKind::map, "map" }, { AttributeKind::set, "set" },
      { AttributeKind::children, "children" }, { AttributeKind::child, "child" },
      { AttributeKind::references, "references" } };
   for ( const auto & [ kind, name ] : kinds ) {
      EXPECT_STREQ( stringValue( kind ), name );
   }
}

TEST( AttributeDataTest, documentationIsThatOfTheDefinition )
{
   EXPECT_EQ( of( "big" ).documentation(), "64 bits" );
   EXPECT_EQ( of( "tree" ).documentation(), "recursive" );
   EXPECT_EQ( attributeOf( *Corvo::ModuleInspectData::findType( "Test::Label" ), "maxLength" )
                    .documentation(),
         "most bytes" );
}

struct Texts {
   const char * name;
   const char * defaultText;
   const char * lowerText;
   const char * upperText;
};

TEST( AttributeDataTest, defaultsAndBoundsAsTexts )
{
   const Texts texts[] = { { "enabled", "false", "", "" }, { "tiny", "1", "1", "8" },
      { "big", "18446744073709551615", "", "" }, { "ratio", "1.5", "", "" },
      { "title", "none", "", "" }, { "colour", "green", "", "" }, { "huge", "hugeTop", "", "" },
      { "level", "3", "", "" }, { "borrowed", "300", "256", "65535" },
      { "pair", R"(Test::Pair[id=0,text="",colour=red,level=5,on=false,time=0])", "", "" },
      { "flags", "0", "", "" }, { "address", "0-0", "", "" }, { "end", "inf", "", "" },
      { "maybe", "", "", "" }, { "levelDefault", "7", "", "" }, { "names", "", "", "" },
      { "tree", "", "", "" }, { "path", "", "", "" } };
   for ( const Texts & t : texts ) {
      EXPECT_EQ( of( t.name ).defaultText(), t.defaultText ) << t.name;
      EXPECT_EQ( of( t.name ).lowerText(), t.lowerText ) << t.name;
      EXPECT_EQ( of( t.name ).upperText(), t.upperText ) << t.name;
   }
   EXPECT_EQ( of( "address" ).get( *::Test::Root::RootIs( "r" ) ), "0-0" );
   const auto field = []( const char * type ) -> const AttributeData & {
      return Corvo::ModuleInspectData::findType( type )->attributes()[ 0 ];
   };
   EXPECT_EQ( field( "Test::Level" ).lowerText(), "1" );
   EXPECT_EQ( field( "Test::Level" ).upperText(), "10" );
   EXPECT_EQ( field( "Test::Interval" ).upperText(), "300" );
   EXPECT_EQ( field( "Test::Full" ).defaultText(), "1024" );
   EXPECT_EQ( field( "Test::Lazy" ).upperText(), "1000" );
   EXPECT_EQ( field( "Test::Label" ).defaultText(), R"("")" );
}

// ---- Functions --------------------------------------------------------------------------------

TEST( AttributeDataTest, functionsAreCalledWithTexts )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   EXPECT_EQ( of( "path" ).call( *root, { "kind" } ), "test/kind" );
   EXPECT_EQ( of( "path" ).call( *root, { R"("two words")" } ), R"("test/two words")" );
   TestSupport::Recorder recorder( *root );
   EXPECT_EQ( of( "paint" ).call( *root, { "false", "false", "true" } ), "" );
   EXPECT_TRUE( root->flags().second() );
   EXPECT_EQ( recorder.take(), TestSupport::Heard{ "273 was 0" } );
   const Ptr< ::Test::Slot > slot = ::Test::Slot::SlotIs( ::Test::Label( "s" ), 101 );
   EXPECT_EQ( attributeOf( slot->typeData(), "heavy" ).call( *slot ), "true" );
   EXPECT_EQ( of( "instantiate" ).call( *root ), "r" );
}

TEST( AttributeDataTest, functionsTakeTheirArgumentsAndNoOthers )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   EXPECT_THROW( of( "path" ).call( *root ), Corvo::ConstructorArgsException );
   EXPECT_THROW( of( "path" ).call( *root, { "a", "b" } ), Corvo::ConstructorArgsException );
   EXPECT_THROW( of( "path" ).call( *root, { "two words" } ), Corvo::ParseException );
   EXPECT_THROW( of( "paint" ).call( *root, { "true", "true", "1" } ), Corvo::ParseException );
   EXPECT_EQ( root->flags(), ::Test::Flags() );
   EXPECT_THROW( of( "mid" ).call( *root ), std::invalid_argument );
   EXPECT_THROW( of( "total" ).call( *root ), std::invalid_argument );
}

} // namespace
