// Sets that mostly have one key, and numbers that mostly follow each other.
#include "Vok/detail/SmallSet.h"
#include "Vok/detail/NumberIndex.h"

#include "tests/support/HeapMeter.h"
#include "tests/support/Random.h"
#include "tests/support/SpareSlabs.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <set>
#include <vector>

namespace {

using Vok::Detail::Introduced;
using Vok::Detail::NumberIndex;
using Vok::Detail::SmallSet;

template< class Key > std::multiset< Key > membersOf( const SmallSet< Key > & set )
{
   std::multiset< Key > members;
   set.each( [ & ]( const Key & key ) { members.insert( key ); } );
   return members;
}

/// With few keys, so that the set is often empty, of one key, or without the one that came first.
TEST( SmallSetTest, isAsAModel )
{
   TestSupport::Random random( 20261122 );
   SmallSet< std::uint32_t > set;
   std::multiset< std::uint32_t > model;
   for ( int step = 0; step != 2000; ++step ) {
      const auto key = random.below( 4 );
      const bool there = model.contains( key );
      ASSERT_EQ( set.contains( key ), there );
      if ( random.below( 2 ) == 0 ) {
         ASSERT_EQ( set.insert( key ), !there );
         model.insert( key );
         if ( there ) {
            model.erase( model.find( key ) );
         }
      } else if ( there ) {
         set.erase( key );
         model.erase( key );
      }
      ASSERT_EQ( set.size(), model.size() );
      ASSERT_EQ( membersOf( set ), model );
   }
}

TEST( SmallSetTest, keepsWhatItHasWhenRoomIsMade )
{
   SmallSet< std::uint32_t > set;
   set.insert( 7 );
   set.reserve( 100 );
   set.insert( 9 );
   EXPECT_EQ( membersOf( set ), ( std::multiset< std::uint32_t >{ 7, 9 } ) );
}

Introduced introducedBy( const std::vector< std::uint64_t > & numbers )
{
   Introduced introduced;
   for ( const std::uint64_t number : numbers ) {
      introduced.add( number );
   }
   return introduced;
}

class NumberIndexTest : public testing::TestWithParam< std::vector< std::uint64_t > > {};

TEST_P( NumberIndexTest, findsWhatWasPutInAndNothingElse )
{
   NumberIndex index( introducedBy( GetParam() ) );
   std::map< std::uint64_t, std::uint32_t > model;
   std::uint32_t position = 0;
   for ( const std::uint64_t number : GetParam() ) {
      ++position;
      EXPECT_EQ( index.insert( number, position ), model.emplace( number, position ).second );
   }
   for ( const auto & [ number, there ] : model ) {
      EXPECT_EQ( index.find( number ), there );
      for ( const std::uint64_t near : { number - 1, number + 1 } ) {
         const auto known = model.find( near );
         EXPECT_EQ( index.find( near ), known == model.end() ? 0U : known->second );
      }
   }
   EXPECT_EQ( index.find( 1U << 20 ), 0U );
}

constexpr std::uint64_t last = ~std::uint64_t{ 0 };

INSTANTIATE_TEST_SUITE_P( ofAllKinds, NumberIndexTest,
      testing::Values( std::vector< std::uint64_t >{}, std::vector< std::uint64_t >{ 0 },
            std::vector< std::uint64_t >{ last }, std::vector< std::uint64_t >{ 3, 4, 5, 6 },
            std::vector< std::uint64_t >{ 6, 3, 5, 3 },
            std::vector< std::uint64_t >{ 10, 12, 14, 16 },
            std::vector< std::uint64_t >{ 0, last },
            std::vector< std::uint64_t >{ 5, 1000, 5, last - 1, 1000 } ) );

/// However far apart they are: a batch of a few bytes must not make an array of gigabytes.
TEST( NumberIndexTest, numbersThatAreFarApartTakeNoMoreRoomThanOthers )
{
   std::vector< std::uint64_t > numbers;
   for ( std::uint64_t i = 1; i != 64; ++i ) {
      numbers.push_back( std::uint64_t{ 1 } << i );
   }
   const TestSupport::HeapMeter meter;
   NumberIndex index( introducedBy( numbers ) );
   std::uint32_t position = 0;
   for ( const std::uint64_t number : numbers ) {
      EXPECT_TRUE( index.insert( number, ++position ) );
   }
   EXPECT_LE( meter.peak(), 64 * numbers.size() );
   EXPECT_EQ( index.find( std::uint64_t{ 1 } << 40 ), 40U );
   EXPECT_EQ( index.find( ( std::uint64_t{ 1 } << 40 ) + 1 ), 0U );
}

TEST( NumberIndexTest, twoNumbersTakeNoMoreRoomTheFurtherTheyAreApart )
{
   TestSupport::makeSpareSlabs();
   for ( const unsigned bits : { 4U, 12U, 20U, 28U, 40U, 63U } ) {
      const TestSupport::HeapMeter meter;
      const NumberIndex index( introducedBy( { 1, std::uint64_t{ 1 } << bits } ) );
      EXPECT_LE( meter.peak(), 512U ) << bits;
   }
}

} // namespace
