// Trees that are deeper than the stack: nothing recurses by their depth.
#include "Vok/AllocTracker.h"
#include "Vok/Digest.h"
#include "Vok/Path.h"
#include "tests/model/Everything.h"

#include <gtest/gtest.h>

#include <pthread.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace {

using Corvo::Ptr;
using ::Test::Tree;

constexpr std::size_t levels = 100000;

// Runs in a thread with a stack of 256 KiB, in which a hundred thousand frames have no room.
void onASmallStack( const std::function< void() > & work )
{
   pthread_attr_t attributes;
   ASSERT_EQ( pthread_attr_init( &attributes ), 0 );
   ASSERT_EQ( pthread_attr_setstacksize( &attributes, std::size_t{ 256 } * 1024 ), 0 );
   pthread_t thread{};
   const auto run = []( void * argument ) -> void * {
      ( *static_cast< const std::function< void() > * >( argument ) )();
      return nullptr;
   };
   ASSERT_EQ( pthread_create(
                    &thread, &attributes, run, const_cast< std::function< void() > * >( &work ) ),
         0 );
   pthread_join( thread, nullptr );
   pthread_attr_destroy( &attributes );
}

Ptr< Tree > deepTree( Ptr< Tree > & deepest )
{
   const Ptr< Tree > root = Tree::TreeIs( "r" );
   deepest = root;
   for ( std::size_t i = 1; i != levels; ++i ) {
      deepest = deepest->kidsIs( "k" );
   }
   return root;
}

TEST( DeepTreeTest, isBuiltAndDestroyedFromTheTop )
{
   onASmallStack( [] {
      Ptr< Tree > deepest;
      Ptr< Tree > root = deepTree( deepest );
      EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Tree" ), levels );
      root = nullptr;
      EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Tree" ), 1U );
      EXPECT_EQ( deepest->parent(), nullptr );
      deepest = nullptr;
      EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Tree" ), 0U );
   } );
}

TEST( DeepTreeTest, loseWhatHangsBelowInTheMiddle )
{
   onASmallStack( [] {
      Ptr< Tree > deepest;
      const Ptr< Tree > root = deepTree( deepest );
      Ptr< Tree > middle = root;
      for ( std::size_t i = 0; i != levels / 2; ++i ) {
         middle = middle->kids( "k" );
      }
      middle->kidsDelAll();
      EXPECT_EQ(
            Vok::AllocTracker::liveCount( "Test::Tree" ), levels / 2 + 2 ); // the deepest is held
      EXPECT_EQ( deepest->refCount(), 1U );
   } );
}

TEST( DeepTreeTest, aDigestSeesTheDeepest )
{
   onASmallStack( [] {
      Ptr< Tree > deepest;
      const Ptr< Tree > root = deepTree( deepest );
      const Vok::Digest before = Vok::treeDigest( *root );
      deepest->depthIs( 1 );
      EXPECT_NE( Vok::treeDigest( *root ), before );
      deepest->depthIs( 0 );
      EXPECT_EQ( Vok::treeDigest( *root ), before );
   } );
}

TEST( DeepTreeTest, theDeepestHasAPathThatLeadsToIt )
{
   onASmallStack( [] {
      Ptr< Tree > deepest;
      const Ptr< Tree > root = deepTree( deepest );
      std::string expected;
      for ( std::size_t i = 1; i != levels; ++i ) {
         expected += "/kids[k]";
      }
      const Corvo::String path = Vok::pathOf( *deepest );
      EXPECT_TRUE( path == expected );
      EXPECT_EQ( Vok::entityAt( *root, path ), deepest );
      EXPECT_EQ( &Vok::rootOf( *deepest ), root.get() );
   } );
}

} // namespace
