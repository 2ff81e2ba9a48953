// Vok::treeDigest: the same for equal trees, another one for every single difference.
#include "Vok/Digest.h"
#include "tests/model/Everything.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Corvo::Ptr;
using ::Test::Label;
using ::Test::Level;
using ::Test::Narrow;
using ::Test::Pair;
using ::Test::Root;
using Vok::AttributeKind;
using Vok::treeDigest;

Pair pair( std::uint32_t id )
{
   return Pair( id, "text", ::Test::green, Level( 1 ), true, Vok::Seconds( 1 ) );
}

// A tree with a member in every collection; `order` turns the order of insertion.
Ptr< Root > tree( std::string_view name, bool turned = false )
{
   const Ptr< Root > root = Root::RootIs( name );
   for ( std::uint32_t step = 0; step != 40; ++step ) {
      const std::uint32_t i = turned ? 39 - step : step;
      const std::string text = "member " + std::to_string( i );
      root->namesIs( i, text );
      root->byNameIs( text, pair( i ) );
      root->sortedIs( pair( i ) );
      root->stepsIs( i, i );
      root->wordsIs( text );
      root->marksIs( i );
      const auto kid = root->treeIs( text );
      kid->depthIs( i );
      kid->kidsIs( "same" )->hostsIs( "h" );
      root->groupsIs( text, i )->inner()->pathIs( text );
      root->slotsIs( Label( text ), static_cast< std::uint16_t >( i ) );
      root->numberedIs( Narrow( 256 + i ) )->countIs( i );
      root->leafRefsIs( kid );
      root->bindingsIs( Label( text ), kid, ::Test::blue );
   }
   root->plainsIs( ::Test::Plain( ::Test::blue, 1, 2, 3 ) );
   ::Test::Recipe recipe( Narrow( 300 ) );
   recipe.stepIs( 1, pair( 1 ) );
   root->recipesIs( recipe );
   root->coloursIs( ::Test::green );
   root->singleIs( "single" )->activeIs( true );
   const auto outside = ::Test::Numbered::NumberedIs( Narrow( 500 ) );
   outside->countIs( 5 );
   root->refsIs( outside );
   return root;
}

TEST( DigestTest, isTheSameForEqualTreesWhateverTheirOrderAndSeed )
{
   const Ptr< Root > one = tree( "r" );
   const Ptr< Root > other = tree( "r", true );
   EXPECT_EQ( treeDigest( *one ), treeDigest( *other ) );
   EXPECT_EQ( treeDigest( *one ), treeDigest( *tree( "another name of the root" ) ) );
   EXPECT_EQ( treeDigest( *Root::RootIs( "a" ) ), treeDigest( *Root::RootIs( "b" ) ) );
}

TEST( DigestTest, forgetsWhatWasThere )
{
   const Ptr< Root > root = tree( "r" );
   const Vok::Digest before = treeDigest( *root );
   for ( std::uint32_t i = 1000; i != 3000; ++i ) {
      root->namesIs( i, "more" );
      root->treeIs( std::to_string( i ) );
   }
   root->midIs( 5 );
   EXPECT_NE( treeDigest( *root ), before );
   for ( std::uint32_t i = 1000; i != 3000; ++i ) {
      root->namesDel( i );
      root->treeDel( std::to_string( i ) );
   }
   root->midIs( 0 );
   EXPECT_EQ( treeDigest( *root ), before );
}

TEST( DigestTest, isAValueAndAText )
{
   static_assert( Vok::Digest( 1, 2 ) == Vok::Digest( 1, 2 ) );
   static_assert(
         Vok::Digest( 1, 2 ) != Vok::Digest( 1, 3 ) && Vok::Digest( 1, 2 ) != Vok::Digest( 0, 2 ) );
   EXPECT_EQ( Vok::Digest( 0x0123456789abcdef, 0xf ).text(), "0123456789abcdef000000000000000f" );
   EXPECT_EQ( Vok::Digest().text(), "00000000000000000000000000000000" );
   const Vok::Digest digest = treeDigest( *tree( "r" ) );
   EXPECT_EQ( digest.text().size(), 32U );
   EXPECT_EQ( Vok::Digest( digest.high(), digest.low() ), digest );
}

// Another text for each attribute that is set as text.
const std::map< std::string, const char * > & otherTexts()
{
   static const std::map< std::string, const char * > texts = { { "enabled", "true" },
      { "tiny", "2" }, { "mid", "1" }, { "count", "1" }, { "ticks", "1" }, { "big", "1" },
      { "ratio", "1" }, { "title", "x" }, { "colour", "blue" }, { "huge", "hugeNone" },
      { "level", "4" }, { "lazy", "1" }, { "borrowed", "301" },
      { "pair", "Test::Pair[id=0,text=a,colour=red,level=5,on=false,time=0]" }, { "flags", "1" },
      { "start", "1" }, { "end", "1" }, { "address", "0-1" }, { "maybe", "5" }, { "maybeInt", "0" },
      { "maybeBit", "false" }, { "maybeWord", "1024" },
      { "maybePair", R"(Test::Pair[id=0,text="",colour=red,level=5,on=false,time=0])" } };
   return texts;
}

TEST( DigestTest, everyAttributeCounts )
{
   const Vok::Digest base = treeDigest( *tree( "r" ) );
   std::set< std::string > digests = { std::string( base.text() ) };
   for ( const Vok::AttributeData & attribute : Root::vokType().attributes() ) {
      const bool value =
            attribute.kind() == AttributeKind::plain || attribute.kind() == AttributeKind::optional;
      if ( !value || attribute.name() == "recipe" ) { // which has no text
         continue;
      }
      const Ptr< Root > root = tree( "r" );
      const Corvo::String before = attribute.get( *root );
      attribute.set( *root, otherTexts().at( std::string( attribute.name() ) ) );
      EXPECT_TRUE( digests.insert( std::string( treeDigest( *root ).text() ) ).second )
            << attribute.name();
      attribute.set( *root, before );
      EXPECT_EQ( treeDigest( *root ), base ) << attribute.name();
   }
   EXPECT_GT( digests.size(), 23U );
}

struct Difference {
   const char * what;
   std::function< void( Root & ) > make;
};

TEST( DigestTest, everySingleDifferenceBelowCounts )
{
   const Difference differences[] = {
      { "a value", []( Root & r ) { r.namesIs( 5, "other" ); } },
      { "a member less", []( Root & r ) { r.namesDel( 5 ); } },
      { "a member more", []( Root & r ) { r.namesIs( 5000, "member 5" ); } },
      { "two values exchanged",
            []( Root & r ) {
               r.namesIs( 5, "member 6" );
               r.namesIs( 6, "member 5" );
            } },
      { "a value by text", []( Root & r ) { r.byNameIs( "member 5", pair( 6 ) ); } },
      { "a keyed value", []( Root & r ) { r.plainsIs( ::Test::Plain( ::Test::blue, 1, 2, 4 ) ); } },
      { "a step", []( Root & r ) { r.stepsIs( 5, 6 ); } },
      { "a word", []( Root & r ) { r.wordsDel( "member 5" ); } },
      { "a mark", []( Root & r ) { r.marksDel( 5 ); } },
      { "a colour", []( Root & r ) { r.coloursIs( ::Test::blue ); } },
      { "a recipe",
            []( Root & r ) {
               ::Test::Recipe recipe( Narrow( 300 ) );
               recipe.stepIs( 1, pair( 2 ) );
               r.recipesIs( recipe );
            } },
      { "an own recipe", []( Root & r ) { r.recipeIs( ::Test::Recipe( Narrow( 300 ) ) ); } },
      { "a child less", []( Root & r ) { r.numberedDel( Narrow( 261 ) ); } },
      { "a child more", []( Root & r ) { r.treeIs( "more" ); } },
      { "a child's attribute", []( Root & r ) { r.tree( "member 5" )->depthIs( 6 ); } },
      { "two children's attributes exchanged",
            []( Root & r ) {
               r.tree( "member 5" )->depthIs( 6 );
               r.tree( "member 6" )->depthIs( 5 );
            } },
      { "a grandchild",
            []( Root & r ) {
               r.tree( "member 5" )->kids( "same" )->hosts( "h" )->activeIs( true );
            } },
      { "a child elsewhere",
            []( Root & r ) {
               r.tree( "member 5" )->kidsDel( "same" );
               r.tree( "member 6" )->kidsIs( "other" )->hostsIs( "h" );
            } },
      { "a constant argument",
            []( Root & r ) {
               r.groupsDel( 5 );
               r.groupsIs( "other", 5 )->inner()->pathIs( "member 5" );
            } },
      { "a settable argument", []( Root & r ) { r.slots( Label( "member 5" ) )->weightIs( 6 ); } },
      { "a child that the constructor made", []( Root & r ) { r.onlyDel(); } },
      { "a single child's name", []( Root & r ) { r.singleIs( "other" )->activeIs( true ); } },
      { "a single child less", []( Root & r ) { r.singleDel(); } },
      { "a reference less", []( Root & r ) { r.leafRefsDel( "member 5" ); } },
      { "a reference to another of that name",
            []( Root & r ) {
               r.leafRefsIs( r.treeIs( "x" )->kidsIs( "member 5" ) );
               r.treeDel( "x" );
            } },
      { "what is referred to outside",
            []( Root & r ) {
               const_cast< ::Test::Numbered & >( *r.refs( Narrow( 500 ) ) ).countIs( 6 );
            } },
      { "a reference as argument",
            []( Root & r ) {
               r.bindingsDel( Label( "member 5" ) );
               r.bindingsIs( Label( "member 5" ), r.tree( "member 6" ), ::Test::blue );
            } },
   };
   std::map< std::string, std::string > digests;
   digests.emplace( treeDigest( *tree( "r" ) ).text(), "nothing" );
   for ( const Difference & difference : differences ) {
      const Ptr< Root > root = tree( "r" );
      difference.make( *root );
      const auto [ at, fresh ] = digests.emplace( treeDigest( *root ).text(), difference.what );
      EXPECT_TRUE( fresh ) << difference.what << " looks like " << at->second;
   }
}

// What is outside refers to itself, into the tree, and farther outside.
TEST( DigestTest, whatIsReferredToOutsideRefersInItsTurn )
{
   const auto made = []( std::function< void( Root &, ::Test::Tree & outside ) > link ) {
      const Ptr< Root > root = Root::RootIs( "r" );
      root->treeIs( "inside" );
      root->treeIs( "other" );
      const auto outside = ::Test::Tree::TreeIs( "outside" );
      outside->kidsIs( "below" );
      root->leafRefsIs( outside );
      link( *root, *outside );
      const Corvo::String digest = treeDigest( *root ).text();
      outside->linksDelAll(); // a circle of references would never go
      return digest;
   };
   const auto farther = []( std::uint32_t depth ) {
      return [ depth ]( Root &, ::Test::Tree & outside ) {
         const auto far = ::Test::Tree::TreeIs( "far" );
         far->depthIs( depth );
         outside.linksIs( far );
      };
   };
   const std::set< std::string > digests = {
      std::string( made( []( Root &, ::Test::Tree & ) {} ) ),
      std::string( made( []( Root & r, ::Test::Tree & o ) { o.linksIs( r.tree( "inside" ) ); } ) ),
      std::string( made( []( Root & r, ::Test::Tree & o ) { o.linksIs( r.tree( "other" ) ); } ) ),
      std::string( made( []( Root &, ::Test::Tree & o ) { o.linksIs( &o ); } ) ),
      std::string( made( []( Root &, ::Test::Tree & o ) { o.linksIs( o.kids( "below" ) ); } ) ),
      std::string( made( farther( 0 ) ) ),
   };
   EXPECT_EQ( digests.size(), 6U );
   EXPECT_EQ( made( farther( 0 ) ), made( farther( 1 ) ) ) << "that far only its arguments count";
   EXPECT_EQ( made( []( Root & r, ::Test::Tree & o ) { o.linksIs( r.tree( "inside" ) ); } ),
         made( []( Root & r, ::Test::Tree & o ) { o.linksIs( r.tree( "inside" ) ); } ) );
}

TEST( DigestTest, aReferenceToNothingCountsAsThat )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   const auto kid = root->treeIs( "k" );
   root->bindingsIs( Label( "l" ), kid, ::Test::blue );
   const Vok::Digest bound = treeDigest( *root );
   root->bindingsDel( Label( "l" ) );
   root->bindingsIs( Label( "l" ), Ptr< ::Test::Tree >(), ::Test::blue );
   EXPECT_NE( treeDigest( *root ), bound );
   EXPECT_EQ( treeDigest( *root ), treeDigest( *root ) );
}

TEST( DigestTest, theTypeCounts )
{
   EXPECT_NE(
         treeDigest( *Root::RootIs( "r" ) ), treeDigest( *::Test::Special::SpecialIs( "r" ) ) );
   EXPECT_NE(
         treeDigest( *::Test::Leaf::LeafIs( "r" ) ), treeDigest( *::Test::Host::HostIs( "r" ) ) );
}

TEST( DigestTest, otherArgumentsOfTheRootCount )
{
   EXPECT_NE( treeDigest( *::Test::Group::GroupIs( "g", 1 ) ),
         treeDigest( *::Test::Group::GroupIs( "g", 2 ) ) );
   EXPECT_EQ( treeDigest( *::Test::Group::GroupIs( "g", 1 ) ),
         treeDigest( *::Test::Group::GroupIs( "h", 1 ) ) );
   EXPECT_NE( treeDigest( *::Test::Numbered::NumberedIs( Narrow( 300 ) ) ),
         treeDigest( *::Test::Numbered::NumberedIs( Narrow( 301 ) ) ) );
}

} // namespace
