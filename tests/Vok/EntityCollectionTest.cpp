// Collections of entities, kind by kind: operations, what they return, views.
#include "Vok/AllocTracker.h"
#include "tests/model/Everything.h"
#include "tests/support/HeapMeter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <concepts>
#include <cstdint>
#include <iterator>
#include <ranges>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using Corvo::Ptr;
using ::Test::Colour;
using ::Test::Group;
using ::Test::Label;
using ::Test::Leaf;
using ::Test::Level;
using ::Test::Narrow;
using ::Test::Numbered;
using ::Test::Pair;
using ::Test::Plain;
using ::Test::Root;
using ::Test::Slot;
using ::Test::Tree;
using testing::ElementsAre;

// For decltype alone.
struct Any {
   static Root & root();
   static const Root & constant();
};

Pair pair( std::uint32_t id )
{
   return Pair( id, "text", Colour::red, Level(), false, Vok::Seconds() );
}

template< class View > auto keysOf( View view )
{
   std::vector< std::remove_cvref_t< decltype( ( *view.begin() ).first ) > > keys;
   for ( const auto & [ key, value ] : view ) {
      keys.push_back( key );
   }
   return keys;
}

template< class View > std::vector< std::string > namesOf( View view )
{
   std::vector< std::string > names;
   for ( const auto & child : view ) {
      names.emplace_back( child->name() );
   }
   return names;
}

// ---- Views ------------------------------------------------------------------------------------

template< class View >
concept IsView = std::copyable< View > &&
      std::input_iterator< decltype( std::declval< View & >().begin() ) > &&
      requires( const View & v )
{
   {
      v.size()
      } -> std::same_as< std::size_t >;
   {
      v.empty()
      } -> std::same_as< bool >;
   v.begin() == v.end();
};

static_assert( IsView< decltype( Any::constant().names() ) > &&
      IsView< decltype( Any::constant().byName() ) > );
static_assert( IsView< decltype( Any::constant().plains() ) > &&
      IsView< decltype( Any::constant().sorted() ) > );
static_assert( IsView< decltype( Any::constant().colours() ) > &&
      IsView< decltype( Any::constant().marks() ) > );
static_assert( IsView< decltype( Any::constant().tree() ) > &&
      IsView< decltype( Any::constant().groups() ) > );
static_assert( IsView< decltype( Any::constant().refs() ) > &&
      IsView< decltype( Any::constant().leafRefs() ) > );
static_assert( sizeof( Any::constant().names() ) == sizeof( void * ) );

template< class View > using Element = decltype( *std::declval< View >().begin() );
static_assert( std::same_as< Element< decltype( Any::root().colours() ) >, const Colour & > );
static_assert( std::same_as< Element< decltype( Any::root().words() ) >, const Corvo::String & > );
static_assert( std::same_as< Element< decltype( Any::root().tree() ) >, const Ptr< Tree > & > );
static_assert( std::same_as< Element< decltype( Any::constant().tree() ) >, const Ptr< Tree > & > );
static_assert( std::same_as< Element< decltype( Any::root().groups() ) >, const Ptr< Group > & > );
static_assert(
      std::same_as< Element< decltype( Any::root().refs() ) >, const Ptr< const Numbered > & > );

TEST( EntityCollectionTest, aViewShowsTheCollectionAsItIs )
{
   const Ptr< Root > made = Root::RootIs( "r" );
   const auto names = std::as_const( *made ).names();
   const auto copy = names;
   EXPECT_TRUE( names.empty() );
   made->namesIs( 1, "one" );
   made->namesIs( 1, "two" );
   EXPECT_EQ( copy.size(), 1U );
   EXPECT_TRUE( copy.contains( 1 ) );
   for ( const auto & [ key, value ] : copy ) {
      EXPECT_EQ( key, 1U );
      EXPECT_EQ( value, "two" );
   }
   for ( auto && [ key, value ] : copy ) {
      EXPECT_EQ( &value, &made->names( 1 ) );
   }
   made->namesDelAll();
   EXPECT_TRUE( names.empty() );
   EXPECT_TRUE( names.begin() == names.end() );
}

TEST( EntityCollectionTest, iterationsMayNest )
{
   const Ptr< Root > made = Root::RootIs( "r" );
   for ( std::uint32_t i = 0; i != 10; ++i ) {
      made->marksIs( i );
      made->namesIs( i, "x" );
   }
   std::size_t seen = 0;
   for ( const std::uint32_t a : made->marks() ) {
      for ( const auto & [ b, text ] : made->names() ) {
         for ( const std::uint32_t c : made->marks() ) {
            seen += a <= 9 && b <= 9 && c <= 9 ? 1U : 0U;
         }
      }
   }
   EXPECT_EQ( seen, 1000U );
   EXPECT_EQ( std::ranges::distance( made->marks().begin(), made->marks().end() ), 10 );
}

// ---- Maps -------------------------------------------------------------------------------------

static_assert( std::same_as< decltype( Any::constant().names( 1 ) ), const Corvo::String & > );
static_assert( std::same_as< decltype( Any::constant().steps( 1 ) ), std::uint64_t > );
static_assert(
      std::same_as< decltype( Any::constant().byName( std::string_view() ) ), const Pair & > );
static_assert( std::same_as< decltype( Any::constant().plains( Colour::red ) ), const Plain & > );
static_assert( std::same_as< decltype( Any::constant().sortedGet( 1 ) ), Vok::Optional< Pair > > );
static_assert(
      std::same_as< decltype( Any::constant().recipesGet( Narrow() ) ), const ::Test::Recipe & > );
static_assert( std::same_as< decltype( Any::root().namesIs( 1, "" ) ), void > );
static_assert( std::same_as< decltype( Any::root().namesDel( 1 ) ), Corvo::String > );
static_assert( std::same_as< decltype( Any::root().stepsDel( 1 ) ), std::uint64_t > );
static_assert( std::same_as< decltype( Any::root().plainsDel( Colour::red ) ), Plain > );
static_assert( std::same_as< decltype( Any::root().namesDelAll() ), void > );

TEST( EntityCollectionTest, mapsByAnExternalKey )
{
   const Ptr< Root > made = Root::RootIs( "r" );
   EXPECT_EQ( made->names( 1 ), "" );
   EXPECT_EQ( made->byName( "k" ), Pair() );
   EXPECT_EQ( made->steps( 1 ), 0U );
   made->namesIs( 2, "two" );
   made->byNameIs( "k", pair( 5 ) );
   made->stepsIs( 3, 30 );
   made->stepsIs( 1, 10 );
   EXPECT_EQ( made->names( 2 ), "two" );
   EXPECT_EQ( made->byName( std::string( "k" ) ), pair( 5 ) );
   EXPECT_TRUE( made->byName().contains( "k" ) );
   EXPECT_THAT( keysOf( made->steps() ), ElementsAre( 1, 3 ) );
   EXPECT_EQ( made->namesDel( 2 ), "two" );
   EXPECT_EQ( made->namesDel( 2 ), "" );
   EXPECT_EQ( made->byNameDel( "k" ), pair( 5 ) );
   EXPECT_EQ( made->byNameDel( "k" ), Pair() );
   EXPECT_EQ( made->stepsDel( 3 ), 30U );
   EXPECT_EQ( made->steps().size(), 1U );
}

TEST( EntityCollectionTest, mapsWhoseKeyIsAFieldOfTheValue )
{
   const Ptr< Root > made = Root::RootIs( "r" );
   made->plainsIs( Plain( Colour::blue, 1, 1, 1 ) );
   made->plainsIs( Plain( Colour::blue, 2, 2, 2 ) );
   made->plainsIs( Plain( Colour::red, 3, 3, 3 ) );
   EXPECT_EQ( made->plains().size(), 2U );
   EXPECT_EQ( made->plains( Colour::blue ).big(), 2U );
   EXPECT_EQ( made->plains( Colour::green ), Plain() );
   for ( const auto & [ key, value ] : made->plains() ) {
      EXPECT_EQ( value, made->plains( key ) );
   }
   EXPECT_EQ( made->plainsDel( Colour::blue ), Plain( Colour::blue, 2, 2, 2 ) );
   for ( const std::uint32_t id : { 7U, 1U, 300U } ) {
      made->sortedIs( pair( id ) );
   }
   EXPECT_THAT( keysOf( made->sorted() ), ElementsAre( 1, 7, 300 ) );
   EXPECT_EQ( made->sortedGet( 7 ), pair( 7 ) );
   EXPECT_EQ( made->sortedGet( 8 ), std::nullopt );
   EXPECT_EQ( made->sorted( 8 ), Pair() );
   ::Test::Recipe recipe( Narrow( 300 ) );
   recipe.stepIs( 1, pair( 1 ) );
   made->recipesIs( recipe );
   EXPECT_EQ( made->recipes( Narrow( 300 ) ), recipe );
   EXPECT_EQ( made->recipesGet( Narrow( 300 ) ).step( 1 ), pair( 1 ) );
   EXPECT_EQ( made->recipesGet( Narrow( 301 ) ), ::Test::Recipe() );
}

// ---- Sets -------------------------------------------------------------------------------------

static_assert( std::same_as< decltype( Any::constant().colours( Colour::red ) ), bool > );
static_assert( std::same_as< decltype( Any::constant().words( std::string_view() ) ), bool > );
static_assert( std::same_as< decltype( Any::root().wordsIs( "" ) ), void > );
static_assert( std::same_as< decltype( Any::root().wordsDel( std::string_view() ) ), void > );

TEST( EntityCollectionTest, sets )
{
   const Ptr< Root > made = Root::RootIs( "r" );
   made->coloursIs( Colour::blue );
   made->coloursIs( Colour::blue );
   made->wordsIs( "two words" );
   for ( const std::uint32_t mark : { 9U, 3U, 5U } ) {
      made->marksIs( mark );
   }
   EXPECT_TRUE( made->colours( Colour::blue ) );
   EXPECT_FALSE( made->colours( Colour::red ) );
   EXPECT_TRUE( made->words( "two words" ) && made->words().contains( "two words" ) );
   const auto marks = made->marks();
   EXPECT_THAT(
         std::vector< std::uint32_t >( marks.begin(), marks.end() ), ElementsAre( 3, 5, 9 ) );
   made->coloursDel( Colour::blue );
   made->marksDel( 5 );
   made->marksDel( 6 );
   EXPECT_EQ( marks.size(), 2U );
   EXPECT_TRUE( made->colours().empty() );
}

// ---- Children ---------------------------------------------------------------------------------

static_assert( std::same_as< decltype( Any::constant().tree( "a" ) ), Ptr< Tree > > );
static_assert( std::same_as< decltype( Any::root().treeIs( "a" ) ), Ptr< Tree > > );
static_assert( std::same_as< decltype( Any::root().treeDel( "a" ) ), Ptr< Tree > > );
static_assert( std::same_as< decltype( Any::root().groupsIs( "a", 1 ) ), Ptr< Group > > );
static_assert( std::same_as< decltype( Any::constant().slots( Label() ) ), Ptr< Slot > > );
static_assert( std::same_as< decltype( Any::root().singleIs( "" ) ), Ptr< Leaf > > );
static_assert( std::same_as< decltype( Any::root().singleDel() ), Ptr< Leaf > > );

TEST( EntityCollectionTest, childrenAreOwned )
{
   const Ptr< Root > made = Root::RootIs( "r" );
   const Ptr< Tree > kid = made->treeIs( "kid" );
   EXPECT_EQ( kid->parent(), made.get() );
   EXPECT_EQ( kid->refCount(), 2U );
   EXPECT_EQ( made->refCount(), 1U );
   EXPECT_EQ( made->tree( std::string_view( "kid" ) ), kid );
   EXPECT_EQ( made->tree( "none" ), nullptr );
   EXPECT_EQ( made->treeIs( "kid" ), kid );
   EXPECT_EQ( made->treeDel( "kid" ), kid );
   EXPECT_EQ( kid->parent(), nullptr );
   EXPECT_EQ( kid->refCount(), 1U );
   EXPECT_EQ( made->treeDel( "kid" ), nullptr );
   EXPECT_NE( made->treeIs( "kid" ), kid );
   EXPECT_EQ( made->numberedIs( Narrow( 300 ) )->parent(), made.get() );
   EXPECT_EQ( made->numbered( Narrow( 300 ) )->id(), Narrow( 300 ) );
}

TEST( EntityCollectionTest, orderedChildrenAreInTheOrderOfTheirKeys )
{
   const Ptr< Root > made = Root::RootIs( "r" );
   made->groupsIs( "b", 20 );
   made->groupsIs( "c", 10 );
   made->groupsIs( "a", 4294967295U );
   EXPECT_THAT( namesOf( made->groups() ), ElementsAre( "c", "b", "a" ) );
   EXPECT_EQ( made->groups( 20 )->name(), "b" );
   EXPECT_EQ( made->groups( 21 ), nullptr );
   EXPECT_EQ( made->groupsDel( 20 )->parent(), nullptr );
   EXPECT_THAT( namesOf( made->groups() ), ElementsAre( "c", "a" ) );
}

TEST( EntityCollectionTest, aSettableArgumentIsUpdated )
{
   const Ptr< Root > made = Root::RootIs( "r" );
   const Ptr< Slot > slot = made->slotsIs( Label( "left" ), 5 );
   EXPECT_FALSE( slot->heavy() );
   EXPECT_EQ( made->slotsIs( Label( "left" ), 500 ), slot );
   EXPECT_EQ( slot->weight(), 500 );
   EXPECT_TRUE( slot->heavy() );
   EXPECT_EQ( slot->parent(), made.get() );
}

TEST( EntityCollectionTest, aSingleChild )
{
   const Ptr< Root > made = Root::RootIs( "r" );
   EXPECT_EQ( made->single(), nullptr );
   EXPECT_EQ( made->singleDel(), nullptr );
   const Ptr< Leaf > first = made->singleIs( "a" );
   EXPECT_EQ( made->singleIs( "a" ), first );
   EXPECT_EQ( first->parent(), made.get() );
   const Ptr< Leaf > second = made->singleIs( "b" );
   EXPECT_NE( second, first );
   EXPECT_EQ( first->parent(), nullptr );
   EXPECT_EQ( made->singleDel(), second );
   EXPECT_EQ( second->parent(), nullptr );
   EXPECT_EQ( made->single(), nullptr );
   const Ptr< ::Test::Bare > only = made->only();
   EXPECT_EQ( only->parent(), made.get() );
   EXPECT_EQ( made->onlyIs(), only );
   EXPECT_EQ( made->onlyDel(), only );
   EXPECT_NE( made->onlyIs(), only );
}

TEST( EntityCollectionTest, childrenLoseTheirParentWithIt )
{
   Ptr< Root > made = Root::RootIs( "r" );
   const std::vector< Ptr< Vok::Entity > > children = { made->treeIs( "a" ),
      made->groupsIs( "b", 1 ), made->slotsIs( Label( "c" ), 1 ), made->singleIs( "d" ),
      made->only() };
   made = nullptr;
   for ( const Ptr< Vok::Entity > & child : children ) {
      EXPECT_EQ( child->parent(), nullptr );
      EXPECT_EQ( child->refCount(), 1U );
   }
   EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Root" ), 0U );
}

// ---- References -------------------------------------------------------------------------------

static_assert(
      std::same_as< decltype( Any::constant().refs( Narrow() ) ), Ptr< const Numbered > > );
static_assert( std::same_as< decltype( Any::root().refsIs( Ptr< Numbered >() ) ), void > );
static_assert( std::same_as< decltype( Any::root().refsDel( Narrow() ) ), Ptr< const Numbered > > );

TEST( EntityCollectionTest, referencesAreCountedAndNotOwned )
{
   const Ptr< Root > made = Root::RootIs( "r" );
   const Ptr< Numbered > target = Numbered::NumberedIs( Narrow( 300 ) );
   made->refsIs( target );
   EXPECT_EQ( target->refCount(), 2U );
   EXPECT_EQ( target->parent(), nullptr );
   EXPECT_EQ( made->refs( Narrow( 300 ) ), target );
   EXPECT_EQ( made->refs( Narrow( 301 ) ), nullptr );
   EXPECT_TRUE( made->refs().contains( Narrow( 300 ) ) );
   EXPECT_EQ( made->refsDel( Narrow( 300 ) ), target );
   EXPECT_EQ( made->refsDel( Narrow( 300 ) ), nullptr );
   EXPECT_EQ( target->refCount(), 1U );
   const Ptr< Tree > tree = made->treeIs( "t" );
   made->leafRefsIs( tree );
   made->treeDel( "t" );
   EXPECT_EQ( made->leafRefs( "t" ), tree );
   made->leafRefsDelAll();
   EXPECT_EQ( tree->refCount(), 1U );
}

} // namespace
