// Maps and sets by text store under texts of any kind, and copy a text only where it is new.
#include "tests/model/Everything.h"
#include "tests/support/HeapMeter.h"
#include "tests/support/Recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

using Corvo::Ptr;
using ::Test::Pair;
using ::Test::Root;
using ::Test::Shelf;
using testing::ElementsAre;
using testing::StartsWith;
using TestSupport::HeapFault;
using TestSupport::Recorder;

Pair pair( std::uint32_t id )
{
   return Pair( id, "", ::Test::green, ::Test::Level(), false, Vok::Seconds() );
}

// A text that stands for itself, as classes of clients do.
struct Word {
   std::string text;

   operator std::string_view() const { return text; }
};

// A text that knows only how to become a String.
struct Title {
   const char * text;

   operator Corvo::String() const { return text; }
};

TEST( KeysByTextTest, everyKindOfTextIsAKey )
{
   const Ptr< Root > root = Root::RootIs( "root" );
   char array[] = { 'a', 'r', 'r', 'a', 'y', '\0', 'b' };
   const char * const pointer = "pointer";
   root->byNameIs( Corvo::String( "String" ), pair( 1 ) );
   root->byNameIs( "literal", pair( 2 ) );
   root->byNameIs( array, pair( 3 ) );
   root->byNameIs( pointer, pair( 4 ) );
   root->byNameIs( std::string( "st\0ring", 7 ), pair( 5 ) );
   root->byNameIs( std::string_view( "view of" ).substr( 0, 4 ), pair( 6 ) );
   root->byNameIs( Word{ "word" }, pair( 7 ) );
   root->byNameIs( Title{ "title" }, pair( 8 ) );
   root->byNameIs( { "braces" }, pair( 9 ) );
   root->byNameIs( {}, pair( 10 ) );
   EXPECT_EQ( root->byName( "String" ).id(), 1U );
   EXPECT_EQ( root->byName( "literal" ).id(), 2U );
   EXPECT_EQ( root->byName( "array" ).id(), 3U );
   EXPECT_EQ( root->byName( "pointer" ).id(), 4U );
   EXPECT_EQ( root->byName( std::string_view( "st\0ring", 7 ) ).id(), 5U );
   EXPECT_EQ( root->byName( "view" ).id(), 6U );
   EXPECT_EQ( root->byName( "word" ).id(), 7U );
   EXPECT_EQ( root->byName( "title" ).id(), 8U );
   EXPECT_EQ( root->byName( "braces" ).id(), 9U );
   EXPECT_EQ( root->byName( "" ).id(), 10U );
   EXPECT_EQ( root->byName().size(), 10U );
}

template< class Key >
concept IsKey = requires( Root & root, Shelf & shelf, const Key & key )
{
   root.byNameIs( key, Pair() );
   root.wordsIs( key );
   shelf.boxIs( key, 1 );
};
static_assert( IsKey< Corvo::String > && IsKey< std::string > && IsKey< std::string_view > );
static_assert( IsKey< const char * > && IsKey< char[ 5 ] > && IsKey< Word > && IsKey< Title > );
static_assert( !IsKey< std::nullptr_t > && !IsKey< int > && !IsKey< char > );

TEST( KeysByTextTest, theLastValueUnderATextHolds )
{
   const Ptr< Root > root = Root::RootIs( "root" );
   Shelf shelf;
   root->byNameIs( "a", pair( 1 ) );
   root->byNameIs( std::string( "a" ), pair( 2 ) );
   root->byNameIs( Corvo::String( "a" ), pair( 3 ) );
   root->byNameIs( std::string_view( "a" ), pair( 4 ) );
   shelf.boxIs( "a", 1 );
   shelf.boxIs( std::string( "a" ), 2 );
   EXPECT_EQ( root->byName().size(), 1U );
   EXPECT_EQ( root->byName( "a" ).id(), 4U );
   EXPECT_EQ( shelf.box().size(), 1U );
   EXPECT_EQ( shelf.box( "a" ), 2U );
}

TEST( KeysByTextTest, aTextThatIsThereIsNotCopied )
{
   const std::string text( 40, 'x' );
   const Ptr< Root > root = Root::RootIs( "root" );
   Shelf shelf;
   root->byNameIs( text, pair( 1 ) );
   root->wordsIs( text );
   shelf.boxIs( text, 1 );
   {
      const HeapFault none( 1, HeapFault::Lasts::forGood );
      root->byNameIs( text, pair( 2 ) );
      root->wordsIs( text );
      shelf.boxIs( text, 2 );
      EXPECT_FALSE( none.struck() );
   }
   EXPECT_EQ( root->byName( text ).id(), 2U );
   EXPECT_EQ( shelf.box( text ), 2U );
}

TEST( KeysByTextTest, whoListensHearsTheKey )
{
   const Ptr< Root > root = Root::RootIs( "root" );
   Recorder recorder( *root );
   root->byNameIs( "a", pair( 1 ) );
   root->byNameIs( std::string( "a" ), pair( 1 ) );
   root->byNameIs( std::string_view( "a" ), pair( 2 ) );
   root->wordsIs( "w" );
   root->wordsIs( std::string( "w" ) );
   const std::string byName = std::to_string( Root::byNameAttrId );
   const std::string words = std::to_string( Root::wordsAttrId );
   EXPECT_THAT( recorder.take(),
         ElementsAre( byName + "[a]", StartsWith( byName + "[a] was " ), words + "[w]" ) );
}

// A text of up to 15 bytes stands in its node, and nodes move as their map grows.
TEST( KeysByTextTest, aKeyMayLieInTheMapThatGrows )
{
   const Ptr< Root > root = Root::RootIs( "root" );
   for ( int i = 0; i != 200; ++i ) {
      const std::string end = std::to_string( i );
      root->wordsIs( "word of " + end );
      for ( const Corvo::String & word : root->words() ) {
         if ( word == "word of " + end ) {
            root->wordsIs( word.view().substr( 5 ) );
            break;
         }
      }
      ASSERT_TRUE( root->words( "of " + end ) ) << i;
      ASSERT_TRUE( root->words( "word of " + end ) ) << i;
   }
   EXPECT_EQ( root->words().size(), 400U );
}

} // namespace
