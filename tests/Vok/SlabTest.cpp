// The slab allocator: what it hands out, what it gives back, and what it makes visible of misuse.
#include "Vok/detail/Slab.h"

#include "Vok/HSet.h"
#include "tests/support/HeapMeter.h"
#include "tests/support/Random.h"
#include "tests/support/Sanitizers.h"
#include "tests/support/SpareSlabs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <set>
#include <thread>
#include <utility>
#include <vector>

namespace {

using TestSupport::Random;
using Vok::Detail::slabAllocate;
using Vok::Detail::slabFree;
using Vok::Detail::slabsHeld;

// Marks all bytes of an object, and tells whether they are still marked.
void fill( void * object, std::size_t size )
{
   std::memset( object,
         static_cast< int >( reinterpret_cast< std::uintptr_t >( object ) >> 4 & 0xff ), size );
}

bool isFilled( const void * object, std::size_t size )
{
   const auto * const bytes = static_cast< const unsigned char * >( object );
   return std::all_of( bytes, bytes + size, [ object ]( unsigned char byte ) {
      return byte == ( reinterpret_cast< std::uintptr_t >( object ) >> 4 & 0xff );
   } );
}

TEST( SlabTest, ObjectsAreAlignedAndApart )
{
   for ( const std::size_t size : { 0u, 1u, 15u, 16u, 17u, 200u, 2047u, 2048u, 2049u, 100000u } ) {
      std::vector< void * > objects;
      std::set< void * > distinct;
      for ( int i = 0; i < 500; ++i ) {
         void * const object = slabAllocate( size );
         EXPECT_EQ( reinterpret_cast< std::uintptr_t >( object ) % 16, 0u );
         EXPECT_TRUE( distinct.insert( object ).second );
         fill( object, size );
         objects.push_back( object );
      }
      for ( void * const object : objects ) {
         EXPECT_TRUE( isFilled( object, size ) );
         slabFree( object, size );
      }
   }
}

TEST( SlabTest, WhatWasFreedLastIsHandedOutFirst )
{
   void * const first = slabAllocate( 48 );
   void * const second = slabAllocate( 48 );
   void * const third = slabAllocate( 48 );
   slabFree( first, 48 );
   slabFree( second, 48 );
   EXPECT_EQ( slabAllocate( 48 ), second );
   EXPECT_EQ( slabAllocate( 48 ), first );
   slabFree( first, 48 );
   slabFree( second, 48 );
   slabFree( third, 48 );
}

TEST( SlabTest, EmptySlabsAreGivenBackButForOne )
{
   const std::size_t size = 1008; // of no other test
   ASSERT_EQ( slabsHeld( size ), 0u );
   std::vector< void * > objects;
   for ( int i = 0; i < 320; ++i ) {
      objects.push_back( slabAllocate( size ) );
   }
   EXPECT_EQ( slabsHeld( size ), 10u ); // 32 objects each
   for ( void * const object : objects ) {
      slabFree( object, size );
   }
   EXPECT_EQ( slabsHeld( size ), 1u );
   for ( int i = 0; i < 5; ++i ) {
      slabFree( slabAllocate( size ), size );
      EXPECT_EQ( slabsHeld( size ), 1u );
   }
}

TEST( SlabTest, RoomInOldSlabsIsUsedBeforeANewOne )
{
   const std::size_t size = 1024;
   std::vector< void * > objects;
   for ( int i = 0; i < 300; ++i ) {
      objects.push_back( slabAllocate( size ) );
   }
   const std::size_t slabs = slabsHeld( size );
   for ( std::size_t i = 0; i < objects.size(); i += 3 ) {
      slabFree( objects[ i ], size );
   }
   for ( std::size_t i = 0; i < objects.size(); i += 3 ) {
      objects[ i ] = slabAllocate( size );
   }
   EXPECT_EQ( slabsHeld( size ), slabs );
   for ( void * const object : objects ) {
      slabFree( object, size );
   }
}

TEST( SlabTest, ObjectsStayIntactInARandomHistory )
{
   Random random( 5 );
   std::vector< std::pair< void *, std::size_t > > objects;
   for ( int step = 0; step < 60000; ++step ) {
      const bool growing = step / 10000 % 2 == 0;
      if ( objects.empty() || random.below( 10 ) < ( growing ? 6u : 4u ) ) {
         const std::size_t size = 1 + random.below( 5 ) * 250;
         objects.emplace_back( slabAllocate( size ), size );
         fill( objects.back().first, size );
      } else {
         std::swap( objects[ random.below( static_cast< std::uint32_t >( objects.size() ) ) ],
               objects.back() );
         const auto [ object, size ] = objects.back();
         objects.pop_back();
         ASSERT_TRUE( isFilled( object, size ) );
         slabFree( object, size );
      }
   }
   for ( const auto & [ object, size ] : objects ) {
      ASSERT_TRUE( isFilled( object, size ) );
      slabFree( object, size );
   }
}

TEST( SlabTest, SeveralThreadsAllocateAndFreeWhatOthersAllocated )
{
   const std::size_t size = 96;
   const std::size_t count = 4;
   std::vector< std::vector< void * > > objects( count );
   const auto inThreads = [ & ]( auto work ) {
      std::vector< std::thread > threads;
      for ( std::size_t i = 0; i < count; ++i ) {
         threads.emplace_back( work, i );
      }
      for ( std::thread & thread : threads ) {
         thread.join();
      }
   };
   for ( int round = 0; round < 5; ++round ) {
      inThreads( [ & ]( std::size_t i ) {
         Random random( i );
         while ( objects[ i ].size() < 3000 ) {
            if ( !objects[ i ].empty() && random.oneIn( 3 ) ) {
               slabFree( objects[ i ].back(), size );
               objects[ i ].pop_back();
            } else {
               objects[ i ].push_back( slabAllocate( size ) );
               fill( objects[ i ].back(), size );
            }
         }
      } );
      inThreads( [ & ]( std::size_t i ) {
         for ( void * const object : objects[ ( i + 1 ) % count ] ) {
            EXPECT_TRUE( isFilled( object, size ) );
            slabFree( object, size );
         }
      } );
      for ( auto & list : objects ) {
         list.clear();
      }
   }
   EXPECT_EQ( slabsHeld( size ), 1u );
}

// ---- What stands in slabs besides entities ----------------------------------------------------

TEST( SlabTest, SmallTablesStandInSlabs )
{
   TestSupport::makeSpareSlabs();
   Vok::HSet< std::uint32_t > set;
   const TestSupport::HeapMeter heap;
   for ( std::uint32_t i = 0; i != 13; ++i ) {
      set.insert( i );
   }
   EXPECT_EQ( heap.peak(), 0U );
   for ( std::uint32_t i = 13; i != 1000; ++i ) {
      set.insert( i );
   }
   EXPECT_GE( heap.held(), 1000 * sizeof( std::uint32_t ) );
   set.clear();
   EXPECT_EQ( heap.held(), 0U );
}

// What the address sanitizer sees.
class SlabDeathTest : public testing::Test {
 protected:
   void SetUp() override
   {
      if ( !TestSupport::underAddressSanitizer ) {
         GTEST_SKIP();
      }
   }
};

TEST_F( SlabDeathTest, TheSanitizerSeesUseAfterFree )
{
   EXPECT_DEATH(
         {
            auto * const object = static_cast< volatile char * >( slabAllocate( 64 ) );
            slabFree( const_cast< char * >( object ), 64 );
            object[ 20 ] = 1;
         },
         "use-after-poison" );
}

TEST_F( SlabDeathTest, TheSanitizerSeesUseBeyondTheEnd )
{
   EXPECT_DEATH(
         {
            auto * const object = static_cast< volatile char * >( slabAllocate( 60 ) );
            object[ 60 ] = 1;
         },
         "use-after-poison" );
}

TEST_F( SlabDeathTest, ADoubleFreeEndsTheProcess )
{
   EXPECT_DEATH(
         {
            void * const object = slabAllocate( 64 );
            slabFree( object, 64 );
            slabFree( object, 64 );
         },
         "memory is freed that is not in use" );
}

} // namespace
