// What every map must do, whatever its nodes, its order and the quality of its hash: a suite for
// the subjects of MapSubjects.h.
#pragma once

#include "tests/Vok/MapSubjects.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace MapSubjects {

template< class Map > class MapSuite : public testing::Test {
 protected:
   static std::vector< std::uint32_t > values( const Map & map )
   {
      std::vector< std::uint32_t > values;
      map.each( [ &values ]( std::uint32_t value ) { values.push_back( value ); } );
      std::sort( values.begin(), values.end() );
      return values;
   }

   static Map filled( std::uint32_t size )
   {
      Map map;
      for ( std::uint32_t i = 0; i < size; ++i ) {
         map.insert( i, i );
      }
      return map;
   }

   static std::vector< std::uint32_t > upTo( std::uint32_t size )
   {
      std::vector< std::uint32_t > numbers( size );
      for ( std::uint32_t i = 0; i < size; ++i ) {
         numbers[ i ] = i;
      }
      return numbers;
   }
};

TYPED_TEST_SUITE_P( MapSuite );

TYPED_TEST_P( MapSuite, StartsEmpty )
{
   TypeParam map;
   EXPECT_EQ( map.size(), 0u );
   EXPECT_EQ( map.find( 0 ), std::nullopt );
   EXPECT_EQ( map.take( 0 ), std::nullopt );
   EXPECT_TRUE( this->values( map ).empty() );
   map.clear();
   EXPECT_EQ( map.size(), 0u );
}

TYPED_TEST_P( MapSuite, FindsWhatWasInserted )
{
   TypeParam map;
   for ( std::uint32_t i = 0; i < 1000; ++i ) {
      EXPECT_TRUE( map.insert( i, i * 3 ) );
      EXPECT_EQ( map.find( i ), i * 3 );
      EXPECT_EQ( map.find( i + 1 ), std::nullopt );
   }
   EXPECT_EQ( map.size(), 1000u );
   for ( std::uint32_t i = 0; i < 1000; ++i ) {
      EXPECT_EQ( map.find( i ), i * 3 );
   }
}

TYPED_TEST_P( MapSuite, KeepsTheFirstOfEqualKeys )
{
   TypeParam map;
   EXPECT_TRUE( map.insert( 5, 1 ) );
   EXPECT_FALSE( map.insert( 5, 2 ) );
   EXPECT_EQ( map.find( 5 ), 1u );
   EXPECT_EQ( map.size(), 1u );
}

TYPED_TEST_P( MapSuite, ReplacesInPlace )
{
   TypeParam map = this->filled( 100 );
   EXPECT_TRUE( map.replace( 42, 1042 ) );
   EXPECT_FALSE( map.replace( 100, 0 ) );
   EXPECT_EQ( map.find( 42 ), 1042u );
   EXPECT_EQ( map.find( 41 ), 41u );
   EXPECT_EQ( map.size(), 100u );
}

TYPED_TEST_P( MapSuite, TakesOutInAnyOrder )
{
   for ( const std::uint32_t stride : { 1u, 7u, 99u } ) {
      TypeParam map = this->filled( 100 );
      for ( std::uint32_t i = 0; i < 100; ++i ) {
         const std::uint32_t number = i * stride % 100;
         EXPECT_EQ( map.take( number ), number );
         EXPECT_EQ( map.take( number ), std::nullopt );
         EXPECT_EQ( map.size(), 99 - i );
      }
      EXPECT_TRUE( this->values( map ).empty() );
   }
}

TYPED_TEST_P( MapSuite, IteratesOverEveryMemberOnce )
{
   for ( const std::uint32_t size : { 1u, 3u, 4u, 5u, 8u, 16u, 17u, 100u, 1000u } ) {
      EXPECT_EQ( this->values( this->filled( size ) ), this->upTo( size ) );
   }
}

TYPED_TEST_P( MapSuite, CallsWithEveryMemberOnceAsItIterates )
{
   for ( const std::uint32_t size : { 0u, 1u, 4u, 5u, 13u, 14u, 100u, 1000u } ) {
      TypeParam map = this->filled( size );
      for ( std::uint32_t number = 0; number < size; number += 3 ) {
         map.take( number );
      }
      std::vector< std::uint32_t > iterated;
      map.each( [ &iterated ]( std::uint32_t value ) { iterated.push_back( value ); } );
      std::vector< std::uint32_t > called;
      map.eachNode( [ &called ]( std::uint32_t value ) { called.push_back( value ); } );
      EXPECT_EQ( called, iterated );
      EXPECT_EQ( called.size(), map.size() );
   }
}

TYPED_TEST_P( MapSuite, ClearsAndServesAgain )
{
   TypeParam map = this->filled( 100 );
   map.clear();
   EXPECT_EQ( map.size(), 0u );
   EXPECT_EQ( map.find( 5 ), std::nullopt );
   EXPECT_TRUE( map.insert( 5, 6 ) );
   EXPECT_EQ( map.find( 5 ), 6u );
}

TYPED_TEST_P( MapSuite, CopiesAreApart )
{
   TypeParam map = this->filled( 100 );
   TypeParam copy( map );
   map.take( 3 );
   map.replace( 4, 1000 );
   copy.insert( 100, 100 );
   EXPECT_EQ( this->values( copy ), this->upTo( 101 ) );
   EXPECT_EQ( map.size(), 99u );
   copy = map;
   EXPECT_EQ( this->values( copy ), this->values( map ) );
   const TypeParam & itself = copy;
   copy = itself;
   EXPECT_EQ( this->values( copy ), this->values( map ) );
   const TypeParam empty;
   copy = empty;
   EXPECT_EQ( copy.size(), 0u );
}

TYPED_TEST_P( MapSuite, MovesAndSwaps )
{
   TypeParam map = this->filled( 100 );
   TypeParam moved( std::move( map ) );
   EXPECT_EQ( this->values( moved ), this->upTo( 100 ) );
   map = TypeParam();
   EXPECT_EQ( map.size(), 0u );
   map.swap( moved );
   EXPECT_EQ( moved.size(), 0u );
   EXPECT_EQ( this->values( map ), this->upTo( 100 ) );
   moved = std::move( map );
   EXPECT_EQ( this->values( moved ), this->upTo( 100 ) );
}

TYPED_TEST_P( MapSuite, ReservingKeepsTheMembers )
{
   TypeParam map;
   map.reserve( 0 );
   map.reserve( 10 );
   map.insert( 1, 1 );
   map.reserve( 5000 );
   map.insert( 0, 0 );
   map.reserve( 3 );
   EXPECT_EQ( this->values( map ), this->upTo( 2 ) );
}

TYPED_TEST_P( MapSuite, GrowsByAnyFactor )
{
   for ( const std::uint32_t size : { 1u, 6u, 16u, 40u, 333u, 1500u } ) {
      for ( const std::uint32_t factor : { 2u, 3u, 17u, 600u } ) {
         TypeParam map = this->filled( size );
         map.reserve( std::min( size * factor, 20000u ) );
         map.expectSound();
         EXPECT_EQ( this->values( map ), this->upTo( size ) );
         for ( std::uint32_t i = 0; i < size; ++i ) {
            ASSERT_EQ( map.find( i ), i );
         }
      }
   }
}

TYPED_TEST_P( MapSuite, FollowsAModel )
{
   TestSupport::Random random( 2018 );
   TypeParam map;
   std::map< std::uint32_t, std::uint32_t > model;
   for ( const std::uint32_t range : { 6u, 20u, 150u, 1200u } ) {
      for ( std::uint32_t step = 0; step < 6000; ++step ) {
         const std::uint32_t number = random.below( range );
         const auto known = model.find( number );
         const auto expected = known != model.end() ? std::optional( known->second ) : std::nullopt;
         switch ( random.below( 4 ) ) {
         case 0:
         case 1:
            EXPECT_EQ( map.insert( number, step ), model.emplace( number, step ).second );
            break;
         case 2:
            EXPECT_EQ( map.take( number ), expected );
            model.erase( number );
            break;
         default:
            EXPECT_EQ( map.find( number ), expected );
         }
         ASSERT_EQ( map.size(), model.size() );
         if ( step % 50 == 0 ) {
            map.expectSound();
         }
      }
      std::vector< std::uint32_t > expected;
      for ( const auto & [ number, value ] : model ) {
         EXPECT_EQ( map.find( number ), value );
         expected.push_back( value );
      }
      std::sort( expected.begin(), expected.end() );
      EXPECT_EQ( this->values( map ), expected );
   }
}

REGISTER_TYPED_TEST_SUITE_P( MapSuite, StartsEmpty, FindsWhatWasInserted, KeepsTheFirstOfEqualKeys,
      ReplacesInPlace, TakesOutInAnyOrder, IteratesOverEveryMemberOnce,
      CallsWithEveryMemberOnceAsItIterates, ClearsAndServesAgain,
      CopiesAreApart, MovesAndSwaps, ReservingKeepsTheMembers, GrowsByAnyFactor, FollowsAModel );

} // namespace MapSubjects
