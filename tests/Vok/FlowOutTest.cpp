// T::FlowOut: what it takes note of.
#include "Vok/FlowOut.h"
#include "Vok/AllocTracker.h"
#include "tests/model/Everything.h"

#include <gtest/gtest.h>

#include <concepts>
#include <functional>
#include <memory>
#include <type_traits>

namespace {

using Corvo::Ptr;
using ::Test::Label;
using ::Test::Narrow;
using ::Test::Root;

static_assert( std::derived_from< Root::FlowOut, Corvo::Notifiee > );
static_assert( std::constructible_from< Root::FlowOut, Ptr< Root > > );
static_assert( !std::convertible_to< Ptr< Root >, Root::FlowOut > );
static_assert( !std::is_copy_constructible_v< Root::FlowOut > );
static_assert( !std::is_move_constructible_v< Root::FlowOut > );
static_assert( std::constructible_from< ::Test::Special::FlowOut, Ptr< ::Test::Special > > );

TEST( FlowOutTest, attachesItselfAndHoldsNoReference )
{
   Ptr< Root > root = Root::RootIs( "r" );
   const auto flow = std::make_unique< Root::FlowOut >( root );
   EXPECT_TRUE( root->publisher().hasNotifiee() );
   EXPECT_EQ( root->refCount(), 1U );
   EXPECT_FALSE( flow->hasDirtyCollKeys() );
   root = nullptr;
   EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Root" ), 0U );
   EXPECT_FALSE( flow->hasDirtyCollKeys() );
}

TEST( FlowOutTest, leavesItsEntityWhenItGoes )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   {
      const Root::FlowOut flow( root );
      EXPECT_TRUE( root->publisher().hasNotifiee() );
   }
   EXPECT_FALSE( root->publisher().hasNotifiee() );
   root->namesIs( 1, "one" );
}

struct Change {
   const char * what;
   std::function< void( Root & ) > make;
   bool ofCollection;
};

TEST( FlowOutTest, keysAreDirtyFromTheFirstChangeOfACollectionOn )
{
   const Change changes[] = {
      { "plain", []( Root & r ) { r.midIs( 5 ); }, false },
      { "optional", []( Root & r ) { r.maybeIs( ::Test::Level( 1 ) ); }, false },
      { "value", []( Root & r ) { r.recipeIs( ::Test::Recipe( Narrow( 300 ) ) ); }, false },
      { "single child", []( Root & r ) { r.singleIs( "s" ); }, false },
      { "map", []( Root & r ) { r.namesIs( 1, "one" ); }, true },
      { "keyed map", []( Root & r ) { r.plainsIs( ::Test::Plain() ); }, true },
      { "ordered map", []( Root & r ) { r.stepsIs( 1, 1 ); }, true },
      { "set", []( Root & r ) { r.coloursIs( ::Test::blue ); }, true },
      { "ordered set", []( Root & r ) { r.marksIs( 1 ); }, true },
      { "children", []( Root & r ) { r.treeIs( "a" ); }, true },
      { "ordered children", []( Root & r ) { r.groupsIs( "g", 1 ); }, true },
      { "references", []( Root & r ) { r.refsIs( ::Test::Numbered::NumberedIs( Narrow( 300 ) ) ); },
            true },
   };
   for ( const Change & change : changes ) {
      const Ptr< Root > root = Root::RootIs( "r" );
      const Root::FlowOut flow( root );
      change.make( *root );
      EXPECT_EQ( flow.hasDirtyCollKeys(), change.ofCollection ) << change.what;
      EXPECT_TRUE( flow.hasChanges() ) << change.what;
   }
}

TEST( FlowOutTest, aDeletedMemberIsAChangeTooAndAnAbsentOneNone )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   root->namesIs( 1, "one" );
   const Root::FlowOut flow( root );
   root->namesIs( 1, "one" );
   root->namesDel( 2 );
   root->midIs( 0 );
   EXPECT_FALSE( flow.hasDirtyCollKeys() );
   EXPECT_FALSE( flow.hasChanges() );
   root->namesDel( 1 );
   EXPECT_TRUE( flow.hasDirtyCollKeys() );
}

TEST( FlowOutTest, whatHappensBelowIsNotItsEntitys )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   const auto kid = root->treeIs( "a" );
   const Root::FlowOut flow( root );
   kid->kidsIs( "b" );
   EXPECT_FALSE( flow.hasChanges() );
}

} // namespace
