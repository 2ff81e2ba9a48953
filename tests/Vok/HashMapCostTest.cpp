// What the operations of a hash map cost, counted in copies, hashes, comparisons, steps and bytes;
// and what is left of a map when one of them throws.
#define VOK_COUNT_STEPS

#include "Vok/HashMap2018.h"
#include "tests/support/Counting.h"
#include "tests/support/HeapMeter.h"
#include "tests/support/Random.h"
#include "tests/support/Sanitizers.h"
#include "tests/support/SpareSlabs.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <new>
#include <stdexcept>
#include <vector>

namespace {

// Types of this file only, so that only its own instances of the map count steps.
struct CostTag {};
using Key = TestSupport::Counting< CostTag >;
struct Payload {
   std::uint32_t number = 0;
};
using Node = Vok::MapNode< Key, Payload >;
using Map = Vok::HashMap2018< Node, Key, Payload >;

struct Colliding {
   std::uint32_t number = 0;
   bool operator==( const Colliding & ) const = default;
};
using CollidingNode = Vok::SetNode< Colliding >;
using CollidingSet = Vok::HashMap2018< CollidingNode, Colliding, Colliding >;

struct Plain {
   std::uint32_t number = 0;
   bool operator==( const Plain & ) const = default;
};
using PlainNode = Vok::SetNode< Plain >;
using PlainSet = Vok::HashMap2018< PlainNode, Plain, Plain >;

} // namespace

template<> struct Vok::Detail::KeyHash< Colliding > {
   static std::uint64_t hash( Colliding, HashSeed ) { return 0xfffffffffffffff0; }
};

template<> struct Vok::Detail::KeyHash< Plain > {
   static std::uint64_t hash( Plain key, HashSeed seed ) { return hashWord( key.number, seed ); }
};

namespace {

void add( Map & map, std::uint32_t number )
{
   map.findOrInsert( Key( number ), [ number ] { return Node{ Key( number ), { number } }; } );
}

template< class Number >
void add( Vok::HashMap2018< Vok::SetNode< Number >, Number, Number > & set, std::uint32_t number )
{
   set.findOrInsert( { number }, [ number ] { return Vok::SetNode< Number >{ { number } }; } );
}

std::uint64_t steps() { return Vok::Detail::tableSteps; }

class HashMapCostTest : public testing::Test {
 protected:
   HashMapCostTest() { Key::reset(); }
   ~HashMapCostTest() override { EXPECT_EQ( Key::live, 0 ); }

   static Map filled( std::uint32_t size )
   {
      Map map;
      for ( std::uint32_t i = 0; i < size; ++i ) {
         add( map, i );
      }
      return map;
   }

   // The members are 0 .. size - 1, each with its value.
   static void expectFilled( const Map & map, std::uint32_t size )
   {
      EXPECT_EQ( map.size(), size );
      for ( std::uint32_t i = 0; i < size; ++i ) {
         const Node * const node = map.find( Key( i ) );
         ASSERT_NE( node, nullptr ) << i;
         EXPECT_EQ( node->value.number, i );
      }
   }
};

TEST_F( HashMapCostTest, ALookupHashesOnceAndCopiesNothing )
{
   const Map map = filled( 1000 );
   Key::reset();
   for ( std::uint32_t i = 0; i < 1000; ++i ) {
      EXPECT_NE( map.find( Key( i ) ), nullptr );
   }
   EXPECT_EQ( Key::counts.hashes, 1000u );
   EXPECT_EQ( Key::counts.copies + Key::counts.moves, 0u );
   // Every hit is one comparison, and hardly any key is compared in vain.
   EXPECT_GE( Key::counts.equalities, 1000u );
   EXPECT_LE( Key::counts.equalities, 1040u );

   // Nor in a miss: 31 of 1,000, for eight marks of which one in 255 is the key's by chance. A
   // single map strays from that by six; a hundred, each with a seed of its own, hardly do.
   constexpr std::uint32_t maps = 100;
   std::uint64_t equalities = 0;
   for ( std::uint32_t round = 0; round < maps; ++round ) {
      const Map one = filled( 1000 );
      Key::reset();
      for ( std::uint32_t i = 1000; i < 2000; ++i ) {
         EXPECT_EQ( one.find( Key( i ) ), nullptr );
      }
      EXPECT_EQ( Key::counts.hashes, 1000u );
      equalities += Key::counts.equalities;
   }
   EXPECT_LE( equalities, maps * 40u );
}

TEST_F( HashMapCostTest, AnInsertionHashesOnceAndMovesTheNodeIntoPlace )
{
   Map map;
   map.reserve( 1 );
   Key::reset();
   Key key( 7 );
   std::uint32_t made = 0;
   const auto make = [ & ] {
      ++made;
      return Node{ std::move( key ), { 7 } };
   };
   EXPECT_TRUE( map.findOrInsert( key, make ).second );
   EXPECT_EQ( Key::counts.hashes, 1u );
   EXPECT_EQ( Key::counts.copies, 0u );
   EXPECT_EQ( Key::counts.moves, 1u );
   EXPECT_EQ( Key::counts.equalities, 0u );
   EXPECT_FALSE( map.findOrInsert( Key( 7 ), make ).second );
   EXPECT_EQ( Key::counts.hashes, 2u );
   EXPECT_EQ( Key::counts.equalities, 1u );
   EXPECT_EQ( made, 1u );
}

TEST_F( HashMapCostTest, GrowthHashesEveryMemberOnceAndComparesNone )
{
   Map map = filled( 1000 );
   Key::reset();
   map.reserve( 100000 );
   EXPECT_EQ( Key::counts.hashes, 1000u );
   EXPECT_EQ( Key::counts.copies, 0u );
   EXPECT_EQ( Key::counts.equalities, 0u );
   EXPECT_LE( Key::counts.moves, 1010u );
   expectFilled( map, 1000 );
}

TEST_F( HashMapCostTest, ADeletionHashesOnlyItsKey )
{
   Map map = filled( 1000 );
   Key::reset();
   for ( std::uint32_t i = 0; i < 1000; ++i ) {
      EXPECT_TRUE( map.take( Key( i ) ).has_value() );
   }
   EXPECT_EQ( Key::counts.hashes, 1000u );
   EXPECT_EQ( Key::counts.copies, 0u );
   EXPECT_LE( Key::counts.equalities, 1040u );
}

TEST_F( HashMapCostTest, IterationNeitherHashesNorComparesNorAllocates )
{
   const Map map = filled( 1000 );
   Key::reset();
   const TestSupport::HeapMeter heap;
   std::uint32_t count = 0;
   for ( Map::Cursor cursor( map ); !cursor.atEnd(); cursor.next() ) {
      ++count;
   }
   EXPECT_EQ( count, 1000u );
   EXPECT_EQ( Key::counts.hashes + Key::counts.equalities + Key::counts.copies, 0u );
   EXPECT_EQ( heap.peak(), 0u );
}

TEST_F( HashMapCostTest, NothingIsAllocatedBeforeTheFirstMember )
{
   const TestSupport::HeapMeter heap;
   Map map;
   EXPECT_EQ( map.find( Key( 1 ) ), nullptr );
   EXPECT_FALSE( map.take( Key( 1 ) ).has_value() );
   Map copy( map );
   Map::Cursor cursor( map );
   map.clear();
   EXPECT_EQ( heap.peak(), 0u );
   EXPECT_EQ( Key::counts.hashes, 0u );
}

TEST_F( HashMapCostTest, ReservedRoomIsFilledWithoutAllocation )
{
   for ( const std::uint32_t size : { 1u, 4u, 5u, 16u, 17u, 100u, 777u, 5000u } ) {
      Map map;
      CollidingSet colliding;
      map.reserve( size );
      colliding.reserve( size < 1000 ? size : 0 );
      const TestSupport::HeapMeter heap;
      for ( std::uint32_t i = 0; i < size; ++i ) {
         add( map, i );
         if ( size < 1000 ) {
            add( colliding, i );
         }
      }
      // Deletions leave nothing behind that would fill it sooner.
      for ( std::uint32_t i = 0; i < 5 * size; ++i ) {
         map.take( Key( i ) );
         add( map, size + i );
      }
      EXPECT_EQ( heap.peak(), 0u ) << size;
   }
}

TEST_F( HashMapCostTest, ClearGivesAllMemoryBack )
{
   TestSupport::makeSpareSlabs();
   const TestSupport::HeapMeter heap;
   Map map = filled( 5000 );
   EXPECT_GE( heap.held(), 5000 * sizeof( Node ) );
   map.clear();
   EXPECT_EQ( heap.held(), 0u );
}

TEST_F( HashMapCostTest, ASmallMapIsSmall )
{
   std::vector< PlainSet > sets( 10000 );
   const TestSupport::HeapMeter heap;
   for ( PlainSet & set : sets ) {
      add( set, 1 );
   }
   EXPECT_GE( heap.held(), sets.size() * 80 );
   EXPECT_LE( heap.held(), sets.size() * 120 );
   sets.clear();
   PlainSet many;
   for ( std::uint32_t i = 0; i < 100000; ++i ) {
      add( many, i );
   }
   EXPECT_LE( heap.held(), 100000u * 2 * ( sizeof( PlainNode ) + 2 ) * 8 / 7 + 4096 );
}

TEST_F( HashMapCostTest, ASearchLooksAtLittleEvenWhenTheMapIsFull )
{
   PlainSet set;
   set.reserve( 100000 );
   std::uint32_t size = 0;
   for ( ; set.size() < set.capacity(); ++size ) {
      add( set, size );
   }
   EXPECT_GE( set.capacity(), 100000u );
   std::uint64_t before = steps();
   for ( std::uint32_t i = 0; i < size; ++i ) {
      EXPECT_TRUE( set.contains( { i } ) );
   }
   EXPECT_LE( steps() - before, size * 5u / 2 ); // one comparison and at most 1.5 looks
   before = steps();
   for ( std::uint32_t i = size; i < 2 * size; ++i ) {
      EXPECT_FALSE( set.contains( { i } ) );
   }
   EXPECT_LE( steps() - before, size * 2u );
}

TEST_F( HashMapCostTest, MembersThatAllCollideCostNoMoreThanAList )
{
   const std::uint32_t size = 1200;
   TestSupport::makeSpareSlabs();
   CollidingSet set;
   const std::uint64_t before = steps();
   const TestSupport::HeapMeter heap;
   for ( std::uint32_t i = 0; i < size; ++i ) {
      add( set, i );
   }
   EXPECT_LE( heap.peak(), size * 4 * ( sizeof( CollidingNode ) + 2 ) * 2 );
   EXPECT_LE( set.capacity(), 4 * size );
   for ( std::uint32_t i = 0; i < size; ++i ) {
      EXPECT_TRUE( set.contains( { i } ) );
   }
   for ( std::uint32_t i = 0; i < size; ++i ) {
      EXPECT_TRUE( set.take( { i } ).has_value() );
   }
   EXPECT_LE( steps() - before, 4ull * size * size );
   EXPECT_TRUE( set.empty() );
}

TEST_F( HashMapCostTest, CopyingMemberByMemberInTheOrderOfIterationIsLinear )
{
   const std::uint32_t size = 50000;
   PlainSet source;
   for ( std::uint32_t i = 0; i < size; ++i ) {
      add( source, i );
   }
   std::uint64_t before = steps();
   PlainSet target;
   for ( PlainSet::Cursor cursor( source ); !cursor.atEnd(); cursor.next() ) {
      add( target, ( *cursor ).key.number );
   }
   EXPECT_LE( steps() - before, 30ull * size );
   EXPECT_EQ( target.size(), size );

   // The same where the target began as a copy of the source and then went its own way.
   PlainSet copy( source );
   for ( std::uint32_t i = 0; i < size; ++i ) {
      add( source, size + i );
      copy.take( { i } );
      add( copy, 2 * size + i );
   }
   before = steps();
   for ( PlainSet::Cursor cursor( source ); !cursor.atEnd(); cursor.next() ) {
      add( copy, ( *cursor ).key.number );
   }
   EXPECT_LE( steps() - before, 60ull * size );
   EXPECT_EQ( copy.size(), 3 * size );
}

TEST_F( HashMapCostTest, AMapAgesNot )
{
   TestSupport::Random random( 7 );
   PlainSet set;
   std::vector< std::uint32_t > there;
   for ( std::uint32_t i = 0; i < 7000; ++i ) {
      add( set, i );
      there.push_back( i );
   }
   const std::size_t capacity = set.capacity();
   const std::uint64_t before = steps();
   const std::uint32_t changes = 200000;
   for ( std::uint32_t i = 0; i < changes; ++i ) {
      std::uint32_t & victim = there[ random.below( 7000 ) ];
      EXPECT_TRUE( set.take( { victim } ).has_value() );
      victim = 7000 + i;
      add( set, victim );
   }
   EXPECT_EQ( set.capacity(), capacity );
   EXPECT_LE( steps() - before, 80ull * changes );
}

TEST_F( HashMapCostTest, AFailingCopyLeavesBothMapsAsTheyWere )
{
   const Map map = filled( 300 );
   Map target = filled( 10 );
   Map::Cursor cursor( target );
   const TestSupport::HeapMeter heap;
   for ( std::ptrdiff_t left : { 0, 1, 150, 299 } ) {
      Key::copiesLeft = left;
      EXPECT_THROW( Map{ map }, TestSupport::CopyFailure );
      Key::copiesLeft = left;
      EXPECT_THROW( target = map, TestSupport::CopyFailure );
   }
   EXPECT_EQ( heap.held(), 0u );
   EXPECT_FALSE( cursor.atEnd() );
   Key::copiesLeft = -1;
   expectFilled( map, 300 );
   expectFilled( target, 10 );
   Key::copiesLeft = 300;
   target = map;
   Key::copiesLeft = -1;
   expectFilled( target, 300 );
}

TEST_F( HashMapCostTest, AFailingMakerLeavesTheMapAsItWas )
{
   struct Failure {};
   const auto fail = []() -> Node { throw Failure(); };
   Map map;
   EXPECT_THROW( map.findOrInsert( Key( 1 ), fail ), Failure );
   EXPECT_EQ( map.capacity(), 0u );
   while ( map.size() == 0 || map.size() < map.capacity() ) {
      add( map, static_cast< std::uint32_t >( map.size() ) );
   }
   const auto size = static_cast< std::uint32_t >( map.size() );
   const std::size_t capacity = map.capacity();
   EXPECT_THROW( map.findOrInsert( Key( size ), fail ), Failure );
   EXPECT_EQ( map.capacity(), capacity );
   expectFilled( map, size );
}

TEST_F( HashMapCostTest, TooMuchToReserveIsBadAlloc )
{
   Map map = filled( 20 );
   EXPECT_THROW( map.reserve( ~std::size_t{ 0 } ), std::bad_alloc );
   EXPECT_THROW( map.reserve( ~std::size_t{ 0 } / 9 ), std::bad_alloc );
   EXPECT_THROW( map.reserve( ~std::size_t{ 0 } / 10 ), std::bad_alloc );
   expectFilled( map, 20 );
   Map empty;
   EXPECT_THROW( empty.reserve( ~std::size_t{ 0 } / 10 ), std::bad_alloc );
   EXPECT_TRUE( empty.empty() );
}

// Fills a map, with a cursor on it, until memory is exhausted: exit status 0 where it is then as it
// was before the insertion that failed.
[[noreturn]] void fillUntilMemoryEnds()
{
   std::size_t pages = 0;
   std::ifstream( "/proc/self/statm" ) >> pages;
   const rlimit limit{ ( pages << 12 ) + ( 48u << 20 ), RLIM_INFINITY };
   setrlimit( RLIMIT_AS, &limit );
   Vok::HashMap2018< Vok::MapNode< Plain, std::array< char, 300 > >, Plain,
         std::array< char, 300 > >
         map;
   std::uint32_t number = 0;
   try {
      for ( ;; ++number ) {
         map.findOrInsert( { number }, [ number ] {
            return Vok::MapNode< Plain, std::array< char, 300 > >{ { number }, {} };
         } );
      }
   } catch ( const std::bad_alloc & ) {
      bool good = number > 1000 && map.size() == number && !map.contains( { number } );
      for ( std::uint32_t i = 0; i < number; ++i ) {
         good = good && map.contains( { i } );
      }
      std::_Exit( good ? 0 : 1 );
   }
}

TEST_F( HashMapCostTest, WhereMemoryEndsTheMapIsAsItWas )
{
   if ( TestSupport::underAddressSanitizer || TestSupport::underThreadSanitizer ) {
      GTEST_SKIP() << "sanitizers take more address space than the limit leaves";
   }
   EXPECT_EXIT( fillUntilMemoryEnds(), testing::ExitedWithCode( 0 ), "" );
}

} // namespace
