// Iterations over a map that changes meanwhile: what they promise, one case at a time and then in
// random histories.
#include "tests/Vok/CursorSuite.h"
#include "tests/support/Counting.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <set>
#include <vector>

namespace {

using namespace MapSubjects;

using Numbers = Vok::HashMap2018< Vok::MapNode< std::uint32_t, std::uint32_t >, std::uint32_t,
      std::uint32_t >;

void insert( Numbers & map, std::uint32_t number )
{
   map.findOrInsert( number, [ number ] {
      return Vok::MapNode< std::uint32_t, std::uint32_t >{ number, number };
   } );
}

Numbers filled( std::uint32_t size )
{
   Numbers map;
   for ( std::uint32_t i = 0; i < size; ++i ) {
      insert( map, i );
   }
   return map;
}

TEST( HashMapCursorTest, AnEmptyMapIsOverAtOnce )
{
   Numbers map;
   Numbers::Cursor cursor( map );
   EXPECT_TRUE( cursor.atEnd() );
   EXPECT_EQ( cursor.node(), nullptr );
   cursor.next();
   EXPECT_TRUE( cursor.atEnd() );
   insert( map, 1 );
   map.take( 1 );
   EXPECT_TRUE( Numbers::Cursor( map ).atEnd() );
}

TEST( HashMapCursorTest, DeletingTheMemberUnderTheCursorGoesOnToTheNext )
{
   for ( const std::uint32_t size : { 1u, 2u, 4u, 16u, 300u } ) {
      Numbers map = filled( size );
      std::set< std::uint32_t > seen;
      for ( Numbers::Cursor cursor( map ); !cursor.atEnd(); cursor.next() ) {
         const std::uint32_t number = ( *cursor ).key;
         EXPECT_TRUE( seen.insert( number ).second );
         map.take( number );
         EXPECT_EQ( cursor.node(), nullptr );
         EXPECT_FALSE( cursor.atEnd() );
      }
      EXPECT_EQ( seen.size(), size );
      EXPECT_TRUE( map.empty() );
   }
}

TEST( HashMapCursorTest, DeletingAllButTheMemberUnderTheCursorEndsIt )
{
   Numbers map = filled( 200 );
   Numbers::Cursor cursor( map );
   const std::uint32_t number = ( *cursor ).key;
   for ( std::uint32_t i = 0; i < 200; ++i ) {
      if ( i != number ) {
         map.take( i );
         EXPECT_EQ( ( *cursor ).key, number );
      }
   }
   cursor.next();
   EXPECT_TRUE( cursor.atEnd() );
}

TEST( HashMapCursorTest, GrowthDoesNotDisturbIt )
{
   Numbers map = filled( 20 );
   std::set< std::uint32_t > seen;
   std::uint32_t fresh = 1000;
   for ( Numbers::Cursor cursor( map ); !cursor.atEnd(); cursor.next() ) {
      const std::uint32_t number = ( *cursor ).key;
      EXPECT_TRUE( seen.insert( number ).second );
      for ( std::uint32_t i = 0; i < 100; ++i, ++fresh ) {
         insert( map, fresh );
         ASSERT_NE( cursor.node(), nullptr );
         ASSERT_EQ( ( *cursor ).key, number );
      }
   }
   for ( std::uint32_t i = 0; i < 20; ++i ) {
      EXPECT_EQ( seen.count( i ), 1u );
   }
}

TEST( HashMapCursorTest, NestedIterationsSeeEveryPair )
{
   const Numbers map = filled( 30 );
   std::set< std::pair< std::uint32_t, std::uint32_t > > pairs;
   for ( Numbers::Cursor outer( map ); !outer.atEnd(); outer.next() ) {
      for ( Numbers::Cursor inner( map ); !inner.atEnd(); inner.next() ) {
         EXPECT_TRUE( pairs.emplace( ( *outer ).key, ( *inner ).key ).second );
      }
   }
   EXPECT_EQ( pairs.size(), 900u );
}

TEST( HashMapCursorTest, TheEndOfTheMapIsTheEndOfItsIterations )
{
   auto map = std::make_unique< Numbers >( filled( 10 ) );
   Numbers::Cursor first( *map );
   map->clear();
   EXPECT_TRUE( first.atEnd() );
   EXPECT_EQ( first.node(), nullptr );
   for ( std::uint32_t i = 0; i < 10; ++i ) {
      insert( *map, i );
   }
   first.next();
   EXPECT_TRUE( first.atEnd() );

   Numbers::Cursor second( *map );
   *map = filled( 3 );
   EXPECT_TRUE( second.atEnd() );

   Numbers::Cursor third( *map );
   map.reset();
   EXPECT_TRUE( third.atEnd() );
   third.next();
}

TEST( HashMapCursorTest, MovingAMapTakesItsIterationsAlong )
{
   Numbers map = filled( 100 );
   Numbers::Cursor cursor( map );
   Numbers moved( std::move( map ) );
   map = filled( 5 );
   std::uint32_t count = 0;
   for ( ; !cursor.atEnd(); cursor.next(), ++count ) {
      EXPECT_EQ( cursor.node(), moved.find( ( *cursor ).key ) );
   }
   EXPECT_EQ( count, 100u );
}

TEST( HashMapCursorTest, ACopyGoesOnFromTheSamePlace )
{
   Numbers map = filled( 50 );
   Numbers::Cursor cursor( map );
   for ( std::uint32_t i = 0; i < 20; ++i ) {
      cursor.next();
   }
   Numbers::Cursor copy( cursor );
   Numbers::Cursor assigned( map );
   assigned = cursor;
   for ( std::uint32_t i = 50; i < 500; ++i ) { // growth: the copies lose their positions, too
      insert( map, i );
   }
   Numbers::Cursor late( cursor );
   while ( !cursor.atEnd() ) {
      EXPECT_EQ( copy.node(), cursor.node() );
      EXPECT_EQ( assigned.node(), cursor.node() );
      EXPECT_EQ( late.node(), cursor.node() );
      cursor.next();
      copy.next();
      assigned.next();
      late.next();
   }
   EXPECT_TRUE( copy.atEnd() && assigned.atEnd() && late.atEnd() );
}

TEST( HashMapCursorTest, AKeyThatCannotBeCopiedFailsTheInsertionAndNothingElse )
{
   struct Tag {};
   using Key = TestSupport::Counting< Tag >;
   using Map = Vok::HashMap2018< Vok::SetNode< Key >, Key, Key >;
   Key::reset();
   {
      Map map;
      std::uint32_t size = 0;
      const auto add = [ &map ]( std::uint32_t number ) {
         map.findOrInsert( Key( number ), [ number ] { return Vok::SetNode< Key >{ number }; } );
      };
      for ( ; map.size() < map.capacity() || size < 50; ++size ) {
         add( size );
      }
      Map::Cursor first( map );
      Map::Cursor second( map );
      second.next();
      Key::copiesLeft = static_cast< std::ptrdiff_t >( size ) + 10;
      EXPECT_THROW( add( size ), TestSupport::CopyFailure );
      Key::copiesLeft = -1;
      EXPECT_EQ( map.size(), size );
      EXPECT_FALSE( map.contains( Key( size ) ) );
      add( size );
      for ( const auto & [ cursor, expected ] :
            { std::pair( &first, size ), std::pair( &second, size - 1 ) } ) {
         std::set< std::uint32_t > seen;
         for ( ; !cursor->atEnd(); cursor->next() ) {
            EXPECT_TRUE( seen.insert( ( **cursor ).key.number() ).second );
         }
         EXPECT_EQ( seen.size(), expected );
      }
   }
   EXPECT_EQ( Key::live, 0 );
}

using Maps = testing::Types< VokMap< Beside< std::uint32_t > >,
      VokMap< Beside< std::uint32_t >, Portable >, VokMap< BesideText >, VokMap< Child >,
      VokMap< Beside< BadKey< Constant > > >, VokMap< Beside< BadKey< ConstantLast > > >,
      VokMap< Beside< BadKey< FewHomes > >, Portable > >;
INSTANTIATE_TYPED_TEST_SUITE_P( HashMap2018, CursorSuite, Maps );

} // namespace
