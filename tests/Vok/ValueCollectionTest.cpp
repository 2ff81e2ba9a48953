// Collections inside values: accessors, views, changes while they are iterated.
#include "tests/model/Everything.h"
#include "tests/support/HeapMeter.h"
#include "tests/support/SpareSlabs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <concepts>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

using ::Test::Colour;
using ::Test::Level;
using ::Test::Narrow;
using ::Test::Pair;
using ::Test::Recipe;
using ::Test::Shelf;
using testing::ElementsAre;

Pair step( std::uint32_t id )
{
   return Pair( id, "step", Colour::green, Level( 1 ), false, Vok::Seconds() );
}

std::vector< std::uint32_t > keysOf( const Recipe & recipe )
{
   std::vector< std::uint32_t > keys;
   for ( const auto & [ key, value ] : recipe.step() ) {
      EXPECT_EQ( value.id(), key );
      keys.push_back( key );
   }
   return keys;
}

std::set< std::uint16_t > tagsOf( const Shelf & shelf )
{
   std::set< std::uint16_t > tags;
   for ( const std::uint16_t tag : shelf.tags() ) {
      EXPECT_TRUE( tags.insert( tag ).second );
   }
   return tags;
}

static_assert(
      std::same_as< decltype( std::declval< const Recipe & >().step( 1 ) ), const Pair & > );
static_assert(
      std::same_as< decltype( std::declval< const Recipe & >().stepGet( 1 ) ), const Pair & > );
static_assert( std::same_as< decltype( std::declval< Recipe & >().stepDel( 1 ) ), Pair > );
static_assert( std::same_as< decltype( std::declval< Recipe & >().stepIs( 1, Pair() ) ), void > );
static_assert(
      std::same_as< decltype( std::declval< const Shelf & >().box( "a" ) ), std::uint32_t > );
static_assert( std::same_as< decltype( std::declval< const Shelf & >().tags( 1 ) ), bool > );
static_assert( std::same_as< decltype( std::declval< Shelf & >().tagsDel( 1 ) ), void > );

TEST( ValueCollectionTest, aMapInsertsReplacesAndDeletes )
{
   Recipe recipe( Narrow( 300 ) );
   EXPECT_TRUE( recipe.step().empty() );
   EXPECT_EQ( recipe.step( 1 ), Pair() );
   recipe.stepIs( 2, step( 2 ) );
   recipe.stepIs( 1, step( 9 ) );
   recipe.stepIs( 1, step( 1 ) );
   EXPECT_EQ( recipe.step().size(), 2U );
   EXPECT_EQ( recipe.step( 1 ), step( 1 ) );
   EXPECT_EQ( recipe.stepGet( 2 ), step( 2 ) );
   EXPECT_TRUE( recipe.step().contains( 2 ) );
   EXPECT_FALSE( recipe.step().contains( 3 ) );
   EXPECT_EQ( recipe.stepDel( 1 ), step( 1 ) );
   EXPECT_EQ( recipe.stepDel( 1 ), Pair() );
   EXPECT_THAT( keysOf( recipe ), ElementsAre( 2 ) );
   recipe.stepDelAll();
   EXPECT_TRUE( recipe.step().empty() );
}

TEST( ValueCollectionTest, anOrderedMapIsIteratedInOrder )
{
   Recipe recipe;
   for ( const std::uint32_t key : { 500U, 1U, 4294967295U, 0U, 70U } ) {
      recipe.stepIs( key, step( key ) );
   }
   EXPECT_THAT( keysOf( recipe ), ElementsAre( 0, 1, 70, 500, 4294967295U ) );
}

TEST( ValueCollectionTest, textKeysTakeViewsAndSetsTheirMembership )
{
   Shelf shelf;
   shelf.boxIs( "lid", 3 );
   EXPECT_EQ( shelf.box( std::string_view( "lid" ) ), 3U );
   EXPECT_EQ( shelf.box( "none" ), 0U );
   EXPECT_TRUE( shelf.box().contains( "lid" ) );
   EXPECT_EQ( shelf.boxDel( "lid" ), 3U );
   EXPECT_EQ( shelf.boxDel( "lid" ), 0U );
   shelf.tagsIs( 7 );
   shelf.tagsIs( 7 );
   EXPECT_TRUE( shelf.tags( 7 ) );
   EXPECT_FALSE( shelf.tags( 8 ) );
   EXPECT_EQ( shelf.tags().size(), 1U );
   shelf.tagsDel( 8 );
   shelf.tagsDel( 7 );
   EXPECT_TRUE( shelf.tags().empty() );
}

TEST( ValueCollectionTest, aViewIsLive )
{
   Shelf shelf;
   const auto boxes = shelf.box();
   const auto copy = boxes;
   shelf.boxIs( "a", 1 );
   EXPECT_EQ( copy.size(), 1U );
   shelf.boxIs( "a", 2 );
   for ( auto && [ key, value ] : copy ) {
      EXPECT_EQ( key, "a" );
      EXPECT_EQ( value, 2U );
   }
   shelf.boxDelAll();
   EXPECT_TRUE( boxes.empty() );
}

TEST( ValueCollectionTest, deletingWhatIsIteratedSeesEveryOtherMemberOnce )
{
   Recipe recipe;
   Shelf shelf;
   for ( std::uint16_t i = 0; i != 500; ++i ) {
      recipe.stepIs( i, step( i ) );
      shelf.tagsIs( i );
   }
   std::map< std::uint32_t, int > seen;
   for ( const auto & [ key, value ] : recipe.step() ) {
      const std::uint32_t k = key;
      ++seen[ k ];
      recipe.stepDel( k );
      if ( k % 5 == 0 ) {
         recipe.stepDel( k + 1 );
      }
   }
   EXPECT_EQ( seen.size(), 400U );
   EXPECT_TRUE( recipe.step().empty() );
   std::map< std::uint16_t, int > tags;
   for ( const std::uint16_t tag : shelf.tags() ) {
      const std::uint16_t t = tag;
      ++tags[ t ];
      if ( t < 500 && t % 2 == 0 ) { // what is deleted and comes again may be seen again
         shelf.tagsDel( t );
      }
      shelf.tagsIs( static_cast< std::uint16_t >( 1000 + t % 7 ) );
   }
   for ( std::uint16_t i = 0; i != 500; ++i ) {
      EXPECT_EQ( tags[ i ], 1 ) << i;
   }
   for ( const auto & [ tag, times ] : tags ) {
      EXPECT_LE( times, 1 ) << tag;
   }
}

TEST( ValueCollectionTest, copiesAreTheirOwn )
{
   Shelf shelf;
   shelf.boxIs( "a", 1 );
   shelf.tagsIs( 5 );
   Shelf copy( shelf );
   EXPECT_EQ( copy, shelf );
   copy.boxIs( "a", 2 );
   copy.tagsIs( 6 );
   EXPECT_EQ( shelf.box( "a" ), 1U );
   EXPECT_EQ( tagsOf( shelf ), std::set< std::uint16_t >{ 5 } );
   EXPECT_NE( copy, shelf );
   const Shelf moved( std::move( copy ) );
   EXPECT_EQ( moved.box( "a" ), 2U );
   shelf = moved;
   EXPECT_EQ( shelf, moved );
   const Shelf & itself = shelf;
   shelf = itself;
   EXPECT_EQ( shelf, moved );
}

TEST( ValueCollectionTest, equalityIsThatOfTheMembers )
{
   Shelf a;
   Shelf b;
   for ( std::uint16_t i = 0; i != 100; ++i ) {
      a.tagsIs( i );
      b.tagsIs( static_cast< std::uint16_t >( 99 - i ) );
   }
   EXPECT_EQ( a, b );
   b.tagsDel( 5 );
   EXPECT_NE( a, b );
   b.tagsIs( 500 );
   EXPECT_NE( a, b );
   Recipe c( Narrow( 300 ) );
   EXPECT_NE( c, Recipe( Narrow( 301 ) ) );
   Recipe d( c );
   c.stepIs( 1, step( 1 ) );
   EXPECT_NE( c, d );
   d.stepIs( 1, step( 2 ) );
   EXPECT_NE( c, d );
   d.stepIs( 1, step( 1 ) );
   EXPECT_EQ( c, d );
}

TEST( ValueCollectionTest, argumentsMayLieInTheCollection )
{
   Recipe recipe;
   Pair first = step( 0 );
   first.textIs( "a text that is too long to stand in place" );
   recipe.stepIs( 0, first );
   for ( std::uint32_t i = 1; i != 200; ++i ) {
      recipe.stepIs( i, recipe.step( i - 1 ) );
   }
   EXPECT_EQ( recipe.step( 199 ), first );
   Shelf shelf;
   shelf.boxIs( "a text that is too long to stand in place", 1 );
   for ( const auto & [ key, value ] : shelf.box() ) {
      shelf.boxDel( key );
      break;
   }
   EXPECT_TRUE( shelf.box().empty() );
}

TEST( ValueCollectionTest, deletingAllGivesTheMemoryBack )
{
   Recipe recipe;
   Shelf shelf;
   TestSupport::makeSpareSlabs();
   const TestSupport::HeapMeter heap;
   for ( std::uint16_t i = 0; i != 1000; ++i ) {
      recipe.stepIs( i, step( i ) );
      shelf.boxIs( std::to_string( i ), i );
      shelf.tagsIs( i );
   }
   EXPECT_GT( heap.held(), 10000U );
   recipe.stepDelAll();
   shelf.boxDelAll();
   shelf.tagsDelAll();
   EXPECT_EQ( heap.held(), 0U );
}

TEST( ValueCollectionDeathTest, thereIsNoTextToReadItFrom )
{
   const auto read = [] {
      Vok::CharRange range( "Test::Recipe[id=256,step=[]]" );
      Recipe{ range };
   };
   EXPECT_EXIT( read(), testing::KilledBySignal( SIGABRT ),
         "No String constructor for Recipe - has collection" );
}

} // namespace
