// Corvo::Ptr: counts, conversions, comparison.
#include "Vok/AllocTracker.h"
#include "tests/model/Everything.h"

#include <gtest/gtest.h>

#include <atomic>
#include <concepts>
#include <functional>
#include <map>
#include <set>
#include <thread>
#include <type_traits>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

using Corvo::Ptr;
using ::Test::Leaf;
using ::Test::Root;
using ::Test::Special;
using Vok::Entity;

static_assert( sizeof( Ptr< Leaf > ) == sizeof( Leaf * ) );
static_assert( std::is_nothrow_copy_constructible_v< Ptr< Leaf > > );
static_assert( std::is_nothrow_move_constructible_v< Ptr< Leaf > > );
static_assert( std::convertible_to< Leaf *, Ptr< Leaf > > );
static_assert( std::convertible_to< std::nullptr_t, Ptr< Leaf > > );
static_assert( std::convertible_to< Ptr< Leaf >, Ptr< const Leaf > > );
static_assert( std::convertible_to< Ptr< Leaf >, Ptr< Entity > > );
static_assert( std::convertible_to< Ptr< Special >, Ptr< Root > > );
static_assert( std::convertible_to< Ptr< Special >, Ptr< const Entity > > );
static_assert( !std::constructible_from< Ptr< Leaf >, Ptr< const Leaf > > );
static_assert( !std::constructible_from< Ptr< Leaf >, Ptr< Entity > > );
static_assert( !std::constructible_from< Ptr< Special >, Ptr< Root > > );
static_assert( !std::constructible_from< Ptr< Leaf >, Ptr< Root > > );
static_assert( !std::convertible_to< Ptr< Leaf >, bool > );
static_assert( !std::convertible_to< Ptr< Leaf >, Leaf * > );

TEST( PtrTest, isNullByDefault )
{
   const Ptr< Leaf > null;
   EXPECT_EQ( null.get(), nullptr );
   EXPECT_FALSE( null );
   EXPECT_EQ( Ptr< Leaf >( nullptr ), null );
   Leaf * const none = nullptr;
   EXPECT_FALSE( Ptr< Leaf >( none ) );
}

TEST( PtrTest, copiesCountAndMovesDoNot )
{
   Ptr< Leaf > first = Leaf::LeafIs( "l" );
   EXPECT_EQ( first->refCount(), 1U );
   Ptr< Leaf > second = first;
   EXPECT_EQ( first->refCount(), 2U );
   const Ptr< Leaf > third( std::move( second ) );
   EXPECT_EQ( first->refCount(), 2U );
   EXPECT_EQ( second, nullptr ); // NOLINT(bugprone-use-after-move)
   const Ptr< Entity > base( third );
   EXPECT_EQ( first->refCount(), 3U );
   const Ptr< const Leaf > constant( std::move( first ) );
   EXPECT_EQ( constant->refCount(), 3U );
   EXPECT_FALSE( first ); // NOLINT(bugprone-use-after-move)
   second = third;
   EXPECT_EQ( third->refCount(), 4U );
   second = nullptr;
   EXPECT_EQ( third->refCount(), 3U );
}

TEST( PtrTest, assignmentToItselfChangesNothing )
{
   Ptr< Leaf > leaf = Leaf::LeafIs( "l" );
   const Ptr< Leaf > & itself = leaf;
   leaf = itself;
   ASSERT_TRUE( leaf );
   EXPECT_EQ( leaf->refCount(), 1U );
   Ptr< Leaf > & same = leaf;
   leaf = std::move( same );
   ASSERT_TRUE( leaf );
   EXPECT_EQ( leaf->refCount(), 1U );
}

TEST( PtrTest, aRawPointerTakesAReference )
{
   const Ptr< Leaf > leaf = Leaf::LeafIs( "l" );
   {
      const Ptr< Leaf > again = leaf.get();
      EXPECT_EQ( leaf->refCount(), 2U );
   }
   EXPECT_EQ( leaf->refCount(), 1U );
   EXPECT_EQ( &*leaf, leaf.get() );
   EXPECT_EQ( leaf->name(), "l" );
}

TEST( PtrTest, theLastReferenceDestroys )
{
   Ptr< Leaf > first = Leaf::LeafIs( "l" );
   Ptr< const Entity > second = first;
   EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Leaf" ), 1U );
   first = nullptr;
   EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Leaf" ), 1U );
   second = nullptr;
   EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Leaf" ), 0U );
}

TEST( PtrTest, comparesWithRelatedOnesRawOnesAndNull )
{
   const Ptr< Special > special = Special::SpecialIs( "s" );
   const Ptr< Root > root = special;
   const Ptr< const Entity > entity = special;
   const Ptr< Special > other = Special::SpecialIs( "s" );
   EXPECT_TRUE( special == root && root == special && entity == special && root == entity );
   EXPECT_TRUE( special != other && other != root );
   EXPECT_TRUE( special == special.get() && special.get() == special );
   EXPECT_TRUE( entity == special.get() && root.get() == special );
   EXPECT_TRUE( special != nullptr && nullptr != special && Ptr< Leaf >() == nullptr );
}

TEST( PtrTest, isOrderedByAddressAndHashed )
{
   std::vector< Ptr< Leaf > > leaves;
   std::set< Ptr< Leaf > > ordered;
   std::unordered_set< Ptr< Leaf > > hashed;
   for ( int i = 0; i != 20; ++i ) {
      leaves.push_back( Leaf::LeafIs( "l" ) );
      ordered.insert( { leaves.back(), leaves.back() } );
      hashed.insert( { leaves.back(), leaves.back() } );
   }
   EXPECT_EQ( ordered.size(), 20U );
   EXPECT_EQ( hashed.size(), 20U );
   EXPECT_TRUE( hashed.contains( leaves[ 7 ] ) );
   const Leaf * before = nullptr;
   for ( const Ptr< Leaf > & leaf : ordered ) {
      EXPECT_TRUE( std::less< const Leaf * >()( before, leaf.get() ) );
      before = leaf.get();
   }
   EXPECT_FALSE( leaves[ 0 ] < leaves[ 0 ] );
}

TEST( PtrTest, derivedEntitiesAreReachedByCasts )
{
   const Ptr< Entity > entity = Special::SpecialIs( "s" );
   EXPECT_EQ( &entity->typeData(), &Special::vokType() );
   EXPECT_EQ( static_cast< Special * >( entity.get() ), dynamic_cast< Special * >( entity.get() ) );
   EXPECT_EQ( dynamic_cast< Leaf * >( entity.get() ), nullptr );
   EXPECT_NE( dynamic_cast< Root * >( entity.get() ), nullptr );
}

TEST( PtrTest, referencesMayBeSharedByThreads )
{
   Ptr< Leaf > leaf = Leaf::LeafIs( "l" );
   std::atomic< int > wrong = 0;
   std::vector< std::thread > threads;
   for ( int i = 0; i != 4; ++i ) {
      threads.emplace_back( [ copy = leaf, &wrong ] {
         for ( int round = 0; round != 20000; ++round ) {
            const Ptr< const Entity > more = copy;
            wrong += more->refCount() < 2 ? 1 : 0;
            const Ptr< Leaf > made = Leaf::LeafIs( "own" );
            wrong += made->refCount() == 1 ? 0 : 1;
         }
      } );
   }
   for ( std::thread & thread : threads ) {
      thread.join();
   }
   threads.clear();
   EXPECT_EQ( wrong, 0 );
   EXPECT_EQ( leaf->refCount(), 1U );
   leaf = nullptr;
   EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Leaf" ), 0U );
}

} // namespace
