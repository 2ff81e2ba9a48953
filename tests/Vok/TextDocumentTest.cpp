// The examples of docs/text.md are true.
#include "Vok/Path.h"
#include "tests/model/Everything.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Example {
   std::string type;
   std::string text;
};

std::string trimmed( const std::string & text )
{
   const std::size_t last = text.find_last_not_of( ' ' );
   return last == std::string::npos ? "" : text.substr( 0, last + 1 );
}

// The lines `type | text` of the fenced blocks of the page.
std::vector< Example > examples()
{
   std::vector< Example > found;
   std::ifstream page( TEST_SOURCE_DIR "/../../docs/text.md" );
   bool inBlock = false;
   for ( std::string line; std::getline( page, line ); ) {
      if ( line.rfind( "```", 0 ) == 0 ) {
         inBlock = !inBlock && line == "```text";
         continue;
      }
      const std::size_t bar = line.find( '|' );
      if ( inBlock && bar != std::string::npos ) {
         const std::string text = line.substr( bar + 1 );
         found.push_back(
               { trimmed( line.substr( 0, bar ) ), text.empty() ? "" : text.substr( 1 ) } );
      }
   }
   return found;
}

// The text of the value that a text is read as.
template< class V > Corvo::String again( std::string_view text )
{
   return Corvo::valueToStrep( Corvo::strepToValue< V >( text ) );
}

const std::map< std::string, Corvo::String ( * )( std::string_view ) > & readers()
{
   static const std::map< std::string, Corvo::String ( * )( std::string_view ) > all = {
      { "u8", again< std::uint8_t > },
      { "u64", again< std::uint64_t > },
      { "double", again< double > },
      { "bool", again< bool > },
      { "Corvo::String", again< Corvo::String > },
      { "Vok::Seconds", again< Vok::Seconds > },
      { "Corvo::Duration", again< Corvo::Duration > },
      { "optional u32", again< Vok::Optional< std::uint32_t > > },
   };
   return all;
}

TEST( TextDocumentTest, everyExampleIsTheTextOfAValue )
{
   const std::vector< Example > all = examples();
   EXPECT_GE( all.size(), 28U );
   for ( const Example & example : all ) {
      const auto reader = readers().find( example.type );
      if ( reader != readers().end() ) {
         EXPECT_EQ( reader->second( example.text ), example.text ) << example.type;
         continue;
      }
      const Vok::TypeData * const type = Corvo::ModuleInspectData::findType( example.type );
      ASSERT_NE( type, nullptr ) << example.type;
      Vok::Value value = type->make();
      Vok::CharRange range( example.text );
      type->strepToValue( range, value.data() );
      EXPECT_TRUE( range.empty() ) << example.text;
      EXPECT_EQ( type->valueToStrep( value.data() ), example.text );
   }
}

TEST( TextDocumentTest, whiteSpaceAndCollectionsAsShown )
{
   const ::Test::Interval interval( 30, 300 );
   EXPECT_EQ(
         Corvo::strepToValue< ::Test::Interval >( "Test::Interval [ before = 30, after = 300 ]" ),
         interval );
   EXPECT_EQ( Corvo::valueToStrep( ::Test::Recipe( ::Test::Narrow( 256 ) ) ),
         "Test::Recipe[id=256,step=[]]" );
   ::Test::Shelf shelf;
   shelf.boxIs( "two words", 2 );
   shelf.boxIs( "lid", 1 );
   shelf.tagsIs( 4 );
   shelf.tagsIs( 3 );
   EXPECT_EQ(
         Corvo::valueToStrep( shelf ), R"(Test::Shelf[box=[lid=1,"two words"=2],tags=[3,4]])" );
}

TEST( TextDocumentTest, pathsAsShown )
{
   const auto root = ::Test::Root::RootIs( "r" );
   const auto spine = root->treeIs( "spine" );
   const auto inner = root->treeIs( "two words" )->groupsIs( "g", 7 )->inner();
   const auto single = root->singleIs( "s" );
   const std::pair< const Vok::Entity *, const char * > shown[] = { { root.get(), "/" },
      { spine.get(), "/tree[spine]" }, { inner.get(), R"(/tree["two words"]/groups[7]/inner)" },
      { single.get(), "/single" } };
   for ( const auto & [ entity, path ] : shown ) {
      EXPECT_EQ( Vok::pathOf( *entity ), path );
      EXPECT_EQ( Vok::entityAt( *root, path ), entity );
   }
}

} // namespace
