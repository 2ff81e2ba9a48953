// OrderedMap: the suites of all maps and iterations, order, cost, and failure.
#include "tests/Vok/CursorSuite.h"
#include "tests/Vok/MapSuite.h"
#include "tests/support/Counting.h"
#include "tests/support/HeapMeter.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <new>
#include <set>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace MapSubjects;
using TestSupport::Random;

/// Sixty bytes, so that few fit into a block and trees are high.
struct Bulky {
   using Node = Vok::MapNode< std::uint32_t, std::array< std::uint32_t, 14 > >;
   static Node make( std::uint32_t number, std::uint32_t value ) { return { number, { value } }; }
   static std::uint32_t value( const Node & node ) { return node.value[ 0 ]; }
   static void setValue( Node & node, std::uint32_t value ) { node.value[ 0 ] = value; }
};

using MapTypes = testing::Types< TreeMap< Beside< std::uint32_t > >,
      TreeMap< Beside< Corvo::String > >, TreeMap< BesideText >, TreeMap< Inside >,
      TreeMap< Child >, TreeMap< BesideWide >, TreeMap< Bulky > >;
INSTANTIATE_TYPED_TEST_SUITE_P( OrderedMap, MapSuite, MapTypes );

using CursorTypes = testing::Types< TreeMap< Beside< std::uint32_t > >, TreeMap< Child >,
      TreeMap< BesideText >, TreeMap< Bulky > >;
INSTANTIATE_TYPED_TEST_SUITE_P( OrderedMap, CursorSuite, CursorTypes );

using Node = Bulky::Node;
using Map = Vok::OrderedMap< Node, std::uint32_t, std::array< std::uint32_t, 14 > >;

void insert( Map & map, std::uint32_t number )
{
   map.findOrInsert( number, [ number ] { return Bulky::make( number, number ); } );
}

Map filled( std::uint32_t size )
{
   Map map;
   for ( std::uint32_t i = 0; i < size; ++i ) {
      insert( map, i );
   }
   return map;
}

std::vector< std::uint32_t > keysOf( const Map & map )
{
   std::vector< std::uint32_t > keys;
   for ( Map::Cursor cursor( map ); !cursor.atEnd(); cursor.next() ) {
      keys.push_back( ( *cursor ).key );
   }
   return keys;
}

TEST( OrderedMapTest, IteratesInAscendingOrderHoweverItWasFilled )
{
   Random random( 4 );
   for ( int round = 0; round < 30; ++round ) {
      Map map;
      std::set< std::uint32_t > model;
      for ( std::uint32_t i = 0; i < 400; ++i ) {
         const std::uint32_t number = round == 0 ? i : round == 1 ? 1000 - i
                                                                  : random.below( 600 );
         insert( map, number );
         model.insert( number );
         if ( random.oneIn( 3 ) ) {
            const std::uint32_t gone = random.below( 600 );
            EXPECT_EQ( map.take( gone ).has_value(), model.erase( gone ) == 1 );
         }
      }
      EXPECT_EQ( keysOf( map ), std::vector< std::uint32_t >( model.begin(), model.end() ) );
   }
}

TEST( OrderedMapTest, OrdersTextsByTheirBytes )
{
   using Names = Vok::OrderedMap< Vok::SetNode< Corvo::String >, Corvo::String, Corvo::String >;
   Names names;
   for ( const char * const name : { "pear", "", "Apple", "\xffz", "apple", "pea" } ) {
      names.findOrInsert( name, [ name ] { return Vok::SetNode< Corvo::String >{ name }; } );
   }
   std::vector< Corvo::String > found;
   for ( Names::Cursor cursor( names ); !cursor.atEnd(); cursor.next() ) {
      found.push_back( ( *cursor ).key );
   }
   EXPECT_EQ(
         found, ( std::vector< Corvo::String >{ "", "Apple", "apple", "pea", "pear", "\xffz" } ) );
   EXPECT_TRUE( names.contains( std::string_view( "pear" ) ) );
   EXPECT_FALSE( names.contains( std::string_view( "pears" ) ) );
}

TEST( OrderedMapTest, IsOnePointer )
{
   EXPECT_EQ( sizeof( Map ), sizeof( void * ) );
   EXPECT_TRUE( std::is_nothrow_move_constructible_v< Map > );
   EXPECT_TRUE( std::is_nothrow_move_assignable_v< Map > );
   const TestSupport::HeapMeter heap;
   Map map;
   const Map copy( map );
   EXPECT_FALSE( map.contains( 1 ) );
   EXPECT_FALSE( map.take( 1 ).has_value() );
   EXPECT_TRUE( Map::Cursor( copy ).atEnd() );
   map.clear();
   EXPECT_EQ( heap.peak(), 0u );
}

TEST( OrderedMapTest, ReservedRoomIsFilledWithoutAllocation )
{
   Random random( 12 );
   for ( const std::uint32_t size : { 1u, 7u, 8u, 9u, 100u, 1000u, 5000u } ) {
      for ( const bool ascending : { true, false } ) {
         Map map;
         map.reserve( size );
         const TestSupport::HeapMeter heap;
         for ( std::uint32_t i = 0; map.size() < size; ++i ) {
            insert( map, ascending ? i : static_cast< std::uint32_t >( random.word() ) );
         }
         // What deletions free serves again.
         for ( std::uint32_t i = 0; i < size; ++i ) {
            map.take( ( *Map::Cursor( map ) ).key );
            insert( map, static_cast< std::uint32_t >( random.word() ) );
         }
         EXPECT_EQ( heap.peak(), 0u ) << size;
      }
   }
   Map map = filled( 300 );
   map.reserve( 2000 );
   const TestSupport::HeapMeter heap;
   for ( std::uint32_t i = 0; i < 2000; ++i ) {
      insert( map, i );
   }
   EXPECT_EQ( heap.peak(), 0u );
}

TEST( OrderedMapTest, ClearGivesAllMemoryBack )
{
   const TestSupport::HeapMeter heap;
   Map map = filled( 3000 );
   for ( std::uint32_t i = 0; i < 2900; ++i ) {
      map.take( i );
   }
   EXPECT_GT( heap.held(), 0u );
   map.clear();
   EXPECT_EQ( heap.held(), 0u );
   insert( map, 1 );
   EXPECT_EQ( keysOf( map ), std::vector< std::uint32_t >{ 1 } );
}

TEST( OrderedMapTest, TooMuchToReserveIsBadAlloc )
{
   Map map = filled( 20 );
   EXPECT_THROW( map.reserve( ~std::size_t{ 0 } ), std::bad_alloc );
   EXPECT_EQ( keysOf( map ).size(), 20u );
}

struct CopyTag {};
using Value = TestSupport::Counting< CopyTag >;
using CopyNode = Vok::MapNode< std::uint32_t, Value >;
using CopyMap = Vok::OrderedMap< CopyNode, std::uint32_t, Value >;

TEST( OrderedMapTest, AFailingCopyLeavesBothMapsAsTheyWere )
{
   Value::reset();
   {
      const auto add = []( CopyMap & map, std::uint32_t number ) {
         map.findOrInsert( number, [ number ] { return CopyNode{ number, Value( number ) }; } );
      };
      CopyMap map;
      CopyMap target;
      for ( std::uint32_t i = 0; i < 700; ++i ) {
         add( map, i * 37 % 700 );
      }
      add( target, 5 );
      EXPECT_EQ( Value::counts.copies, 0u );
      const TestSupport::HeapMeter heap;
      for ( std::ptrdiff_t left = 0; left < 700; left += 23 ) {
         Value::copiesLeft = left;
         EXPECT_THROW( CopyMap{ map }, TestSupport::CopyFailure );
         Value::copiesLeft = left;
         EXPECT_THROW( target = map, TestSupport::CopyFailure );
      }
      EXPECT_EQ( heap.held(), 0u );
      Value::copiesLeft = -1;
      EXPECT_EQ( target.size(), 1u );
      target = map;
      for ( std::uint32_t i = 0; i < 700; ++i ) {
         const CopyNode * const node = target.find( i );
         ASSERT_NE( node, nullptr );
         EXPECT_EQ( node->value.number(), i );
      }
   }
   EXPECT_EQ( Value::live, 0 );
}

TEST( OrderedMapTest, AFailingMakerLeavesTheMapAsItWas )
{
   struct Failure {};
   Map map;
   EXPECT_THROW( map.findOrInsert( 1, []() -> Node { throw Failure(); } ), Failure );
   EXPECT_TRUE( map.empty() );
   map = filled( 8 );
   EXPECT_THROW( map.findOrInsert( 9, []() -> Node { throw Failure(); } ), Failure );
   EXPECT_EQ( keysOf( map ).size(), 8u );
}

TEST( OrderedMapTest, ComparesAboutAsOftenAsABinarySearch )
{
   struct Tag {};
   using Key = TestSupport::Counting< Tag >;
   struct Nothrow : Key {
      using Key::Key;
      Nothrow( const Nothrow & other ) noexcept : Key( other ) {}
      Nothrow( Nothrow && ) noexcept = default;
   };
   using Set = Vok::OrderedMap< Vok::SetNode< Nothrow >, Nothrow, Nothrow >;
   Set set;
   for ( std::uint32_t i = 0; i < 10000; ++i ) {
      set.findOrInsert( Nothrow( i * 7919 % 10000 ),
            [ i ] { return Vok::SetNode< Nothrow >{ Nothrow( i * 7919 % 10000 ) }; } );
   }
   Key::reset();
   for ( std::uint32_t i = 0; i < 1000; ++i ) {
      EXPECT_TRUE( set.contains( Nothrow( i * 10 ) ) );
   }
   EXPECT_LE( Key::counts.orderings, 1000u * 22 ); // the binary logarithm is 13.3
   EXPECT_EQ( Key::counts.copies, 0u );
   EXPECT_EQ( Key::counts.hashes, 0u );
}

TEST( OrderedMapTest, InsertionsAheadOfAnIterationAreSeenAndThoseBehindAreNot )
{
   Map map;
   for ( const std::uint32_t number : { 10u, 20u, 30u } ) {
      insert( map, number );
   }
   std::vector< std::uint32_t > seen;
   for ( Map::Cursor cursor( map ); !cursor.atEnd(); cursor.next() ) {
      const std::uint32_t number = ( *cursor ).key;
      seen.push_back( number );
      if ( number == 20 ) {
         insert( map, 15 );
         insert( map, 25 );
         map.take( 20 );
         EXPECT_EQ( cursor.node(), nullptr );
      }
   }
   EXPECT_EQ( seen, ( std::vector< std::uint32_t >{ 10, 20, 25, 30 } ) );
}

TEST( OrderedMapTest, TheEndOfTheMapIsTheEndOfItsIterations )
{
   auto map = std::make_unique< Map >( filled( 100 ) );
   Map::Cursor first( *map );
   map->clear();
   EXPECT_TRUE( first.atEnd() );
   *map = filled( 100 );
   Map::Cursor second( *map );
   second.next();
   Map::Cursor copy( second );
   first = second;
   Map moved( std::move( *map ) );
   map.reset();
   ASSERT_NE( second.node(), nullptr );
   EXPECT_EQ( second.node(), moved.find( 1 ) );
   EXPECT_EQ( copy.node(), second.node() );
   EXPECT_EQ( first.node(), second.node() );
   moved = Map();
   EXPECT_TRUE( first.atEnd() && second.atEnd() && copy.atEnd() );
   second.next();
   EXPECT_EQ( second.node(), nullptr );
}

} // namespace
