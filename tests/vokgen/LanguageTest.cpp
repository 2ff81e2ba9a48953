// Constructs of the language in small texts: what tests/model/Everything.vok does not show.
#include "tests/support/Random.h"
#include "tests/vokgen/ExpectedText.h"
#include "vokgen/Compiler.h"

#include <gtest/gtest.h>
#include <limits>

namespace VokGen {
namespace {

using VokGenTest::TemporaryFolder;

std::string inNamespace( const std::string & body )
{
   return "module Sample\nnamespace Test {\n" + body + "}\n";
}

std::shared_ptr< const Model::Module > compiled( const std::string & text,
      const std::vector< std::string > & imports = {} )
{
   const Compilation made = compileText( "Sample.vok", text, imports );
   EXPECT_EQ( made.errors, "" );
   if ( !made.module ) {
      throw std::runtime_error( "the text does not compile" );
   }
   return made.module;
}

const Model::RecordType & firstType( const Model::Module & module )
{
   return *Model::asRecord( module.types.front().get() );
}

TEST( Language, commentsBeforeAndBehindJoin )
{
   const auto module = compiled( inNamespace( "/// Before the type,\n"
                                              "/// on two lines\n"
                                              "value Level { /// and behind it.\n"
                                              "   value : u32 /// in the middle\n"
                                              "      = 5;     /// and at the end\n"
                                              "               /// of it\n"
                                              "}\n" ) );
   EXPECT_EQ( firstType( *module ).documentation, "Before the type, on two lines and behind it." );
   EXPECT_EQ( firstType( *module ).attributes[ 0 ]->documentation,
         "in the middle and at the end of it" );
}

TEST( Language, paragraphsOfComments )
{
   const auto module = compiled( inNamespace( "/// One.\n///\n/// Two.\nvalue Level {\n"
                                              "   value : u32; /// a number\n}\n" ) );
   EXPECT_EQ( firstType( *module ).documentation, "One.\nTwo." );
}

TEST( Language, wordsOfTheLanguageAreNamesToo )
{
   const auto module = compiled( inNamespace(
         "entity Leaf( name ) { /// A leaf.\n"
         "   map : map u32 -> u32; /// a\n   set : set u32; /// b\n   flag : bool; /// c\n"
         "   child : child Leaf; /// d\n   function : u8; /// e\n   value : u8 = 1 counter; /// f\n"
         "   counter : u8; /// g\n   derived derived : u8; /// h\n   instantiate : bool; /// i\n"
         "   ordered : bool; /// j\n   in : u8 = 1 in 1..2 on set; /// k\n}\n" ) );
   EXPECT_EQ( firstType( *module ).attributes.size(), 11U );
}

TEST( Language, realNumbers )
{
   const auto module = compiled( inNamespace(
         "entity Leaf( name ) { /// A leaf.\n"
         "   a : double = -1.5; /// a\n   b : double = 2; /// b\n   c : double = -infinity; /// c\n"
         "   d : Vok::Seconds = 1e-3; /// d\n   e : double = Leaf::most; /// e\n"
         "   const most : double = 7.25; /// most\n   f : Corvo::Duration = most; /// f\n}\n" ) );
   const Model::RecordType & leaf = firstType( *module );
   EXPECT_EQ( leaf.find( "a" )->value.value.real, -1.5 );
   EXPECT_EQ( leaf.find( "b" )->value.value.real, 2.0 );
   EXPECT_EQ( leaf.find( "b" )->value.value.kind, Model::Constant::Kind::real );
   EXPECT_EQ( leaf.find( "c" )->value.value.real, -std::numeric_limits< double >::infinity() );
   EXPECT_EQ( leaf.find( "d" )->value.value.real, 0.001 );
   EXPECT_EQ( leaf.find( "e" )->value.value.real, 7.25 );
   EXPECT_EQ( leaf.find( "f" )->value.value.real, 7.25 );
}

TEST( Language, textsHoldAnyBytes )
{
   const auto module = compiled(
         inNamespace( "constants Texts { /// Texts.\n"
                      "   const text : string = \"\\x00\\xFF\\\\\\\"\\n\\t\"; /// bytes\n}\n" ) );
   const Model::Expression & text = firstType( *module ).attributes[ 0 ]->value;
   EXPECT_EQ( text.value.text, std::string( "\0\xFF\\\"\n\t", 6 ) );
   EXPECT_EQ( text.text, "\"\\x00\\xFF\\\\\\\"\\n\\t\"" );
}

TEST( Language, externalTypes )
{
   const auto module = compiled( inNamespace(
         "extern Client::Mode in \"Client/Mode.h\"; /// a mode\n"
         "function convert( mode : Client::Mode ) -> bool; /// a function\n" ) );
   ASSERT_EQ( module->externals.size(), 1U );
   EXPECT_EQ( module->externals[ 0 ]->fullName, "Test::Client::Mode" );
   EXPECT_EQ( module->externals[ 0 ]->header, "Client/Mode.h" );
   const Model::Type & parameter = module->functions[ 0 ]->parameters[ 0 ].type;
   EXPECT_EQ( parameter.kind, Model::TypeKind::external );
   EXPECT_EQ( parameter.cppName, "Test::Client::Mode" );
}

TEST( Language, namespacesNestAndNamesAreFoundOutward )
{
   const auto module =
         compiled( "module Sample\n"
                   "namespace A { namespace B::C {\n"
                   "value Inner { /// Inside.\n   x : X; /// near\n   y : A::X; /// far\n"
                   "   z : B::X; /// between\n}\n"
                   "value X { /// Near.\n   v : u8; /// a number\n}\n}\n"
                   "value X { /// Far.\n   v : u16; /// a number\n}\n"
                   "namespace B {\nvalue X { /// Between.\n   v : u32; /// a number\n}\n}\n}\n" );
   const Model::RecordType & inner = firstType( *module );
   EXPECT_EQ( inner.fullName, "A::B::C::Inner" );
   EXPECT_EQ( inner.find( "x" )->type.fullName, "A::B::C::X" );
   EXPECT_EQ( inner.find( "y" )->type.fullName, "A::X" );
   EXPECT_EQ( inner.find( "z" )->type.fullName, "A::B::X" );
}

TEST( Language, enumeratorsAreFoundByTypeNamespaceAndName )
{
   const auto module = compiled(
         "module Sample\n"
         "namespace A {\nenum Colour : u8 { /// A colour.\n   red = 0; /// r\n   blue = 4; /// "
         "b\n}\n}\n"
         "namespace B {\nvalue Mode { /// A mode.\n"
         "   enum Kind : u16 { /// Its kind.\n      plain = 3; /// p\n   }\n"
         "   a : A::Colour = blue; /// by type\n   b : A::Colour = A::blue; /// by namespace\n"
         "   c : A::Colour = A::Colour::blue; /// by name\n   d : Kind = Mode::plain; /// by "
         "holder\n"
         "   e : u32 = ( A::Colour::blue + plain ); /// by code\n}\n}\n" );
   const auto & mode = *Model::asRecord( module->types[ 1 ].get() );
   for ( const char * name : { "a", "b", "c" } ) {
      EXPECT_EQ( mode.find( name )->value.text, "A::Colour::blue" ) << name;
   }
   EXPECT_EQ( mode.find( "d" )->value.text, "B::Mode::Kind::plain" );
   EXPECT_EQ( mode.find( "e" )->value.value.integer, 7U );
   EXPECT_EQ( mode.find( "e" )->value.text, "(A::Colour::blue + B::Mode::Kind::plain)" );
}

TEST( Language, valuesOfOneFieldTakeItsDefaults )
{
   const auto module = compiled(
         inNamespace( "value Outer { /// Outside.\n   inner : Inner = 3; /// inside\n}\n"
                      "value Inner { /// Inside.\n   value : u8 = 7 in 1..9; /// a number\n}\n"
                      "constants Limits { /// Limits.\n   const one : Outer = 4; /// a value\n   "
                      "const two : Outer = one; /// the same\n}\n" ) );
   EXPECT_EQ( firstType( *module ).attributes[ 0 ]->value.value.integer, 3U );
   const auto & limits = *Model::asRecord( module->types[ 2 ].get() );
   EXPECT_EQ( limits.find( "two" )->value.value.integer, 4U );
   EXPECT_EQ( limits.find( "two" )->value.namedConstant(), limits.find( "one" ) );
}

TEST( Language, usedModulesGiveTypesAndConstants )
{
   const TemporaryFolder folder;
   folder.write( "Room/Used.vok",
         "module Used\nnamespace Other {\n"
         "value Level { /// A level.\n   value : u8 = 1 in 1..top; /// a number\n"
         "   const top : u8 = 9; /// top\n}\n"
         "entity Base( name ) { /// A base.\n   level : Level; /// a level\n"
         "   const least : u32 = 2; /// least\n}\n}\n" );
   const auto module =
         compiled( "module Sample\nuse Used\nnamespace Test {\n"
                   "entity Leaf( name ) { /// A leaf.\n"
                   "   count : u32 = 5 in Other::Base::least..Other::Level::top on set; /// a "
                   "number\n"
                   "   bases : children Other::Base by name; /// of the other module\n}\n}\n",
               { folder.path().string() } );
   ASSERT_EQ( module->uses.size(), 1U );
   EXPECT_EQ( module->uses[ 0 ]->header, "Room/Used.h" );
   const Model::Attribute & count = *firstType( *module ).find( "count" );
   EXPECT_EQ( count.bounds->message,
         "Test::Leaf::count < Other::Base::least or > Other::Level::top not allowed" );
}

TEST( Language, aModuleNeedsNoMoreThanItsName )
{
   EXPECT_EQ( compiled( "module Sample" )->types.size(), 0U );
}

/// Whatever is broken about a text, compiling it ends, and says something or gives a module.
void expectToEnd( const std::string & text )
{
   const Compilation made = compileText( "in.vok", text, {} );
   EXPECT_NE( made.errors.empty(), made.module == nullptr );
}

TEST( BrokenTexts, everyCutEnds )
{
   const std::string text =
         VokGenTest::readFile( VokGenTest::testFolder() / "../model/Everything.vok" );
   for ( std::size_t length = 0; length < text.size(); length += 61 ) {
      expectToEnd( text.substr( 0, length ) );
   }
}

TEST( BrokenTexts, everyDamageEnds )
{
   const std::string text =
         VokGenTest::readFile( VokGenTest::testFolder() / "../model/Everything.vok" );
   TestSupport::Random random( 20240229 );
   const std::string bytes = "{}();:,=.\"/\\ \n0aZ_\xC3";
   for ( int round = 0; round < 300; ++round ) {
      std::string damaged = text;
      for ( int i = 0; i < 3; ++i ) {
         const std::size_t at = random.below( static_cast< std::uint32_t >( damaged.size() ) );
         const char byte = bytes[ random.below( static_cast< std::uint32_t >( bytes.size() ) ) ];
         if ( random.oneIn( 2 ) ) {
            damaged[ at ] = byte;
         } else if ( random.oneIn( 2 ) ) {
            damaged.insert( at, 1, byte );
         } else {
            damaged.erase( at, 1 + random.below( 40 ) );
         }
      }
      expectToEnd( damaged );
   }
}

TEST( BrokenTexts, deepOnesEnd )
{
   const std::size_t depth = 100000;
   for ( const std::string opening :
         { "namespace A { ", "( ", "{ ", "enum A : u8 { ", "value A( ", "\"", "/// " } ) {
      std::string text = "module Sample\nnamespace Test {\nvalue V { /// V.\n v : u8 = ";
      for ( std::size_t i = 0; i < depth; ++i ) {
         text += opening;
      }
      expectToEnd( text );
      expectToEnd( "module Sample\n" + text.substr( text.find( opening, 60 ) ) );
   }
}

TEST( BrokenTexts, longChainsEnd )
{
   std::string values;
   std::string entities = "entity E0 : E1 { /// E.\n}\n";
   std::string constants = "constants C { /// C.\n";
   for ( int i = 0; i < 20000; ++i ) {
      const std::string here = std::to_string( i );
      const std::string next = std::to_string( i + 1 );
      values += "value V" + here + " { /// V.\n v : V" + next + "; /// v\n}\n";
      entities += "entity E" + next + " : E" + std::to_string( i + 2 ) + " { /// E.\n}\n";
      constants += "const c" + here + " : u32 = c" + next + "; /// c\n";
   }
   expectToEnd( inNamespace( values ) );
   expectToEnd( inNamespace( values + "value V20000 { /// V.\n v : V0; /// v\n}\n" ) );
   expectToEnd( inNamespace( entities ) );
   expectToEnd( inNamespace( constants + "}\n" ) );
}

} // namespace
} // namespace VokGen
