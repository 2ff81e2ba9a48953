// How many entities of a type exist.
#include "Vok/AllocTracker.h"
#include "tests/model/Everything.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Vok::AllocTracker;

TEST( AllocTrackerTest, unknownNamesAndTypesWithoutEntitiesCountNone )
{
   for ( const char * name :
         { "", "Test::Unknown", "Root", "Test::Pair", "Test::Colour", "Test::Limits" } ) {
      EXPECT_EQ( AllocTracker::liveCount( name ), 0U ) << name;
   }
}

TEST( AllocTrackerTest, countsWhatExistsNow )
{
   EXPECT_EQ( AllocTracker::liveCount( "Test::Leaf" ), 0U );
   std::vector< Corvo::Ptr< ::Test::Leaf > > leaves;
   for ( std::size_t i = 0; i != 1000; ++i ) {
      leaves.push_back( ::Test::Leaf::LeafIs( "l" ) );
      ASSERT_EQ( AllocTracker::liveCount( "Test::Leaf" ), i + 1 );
   }
   leaves.resize( 10 );
   EXPECT_EQ( AllocTracker::liveCount( "Test::Leaf" ), 10U );
   leaves.clear();
   EXPECT_EQ( AllocTracker::liveCount( "Test::Leaf" ), 0U );
}

TEST( AllocTrackerTest, childrenGoWithTheirParentUnlessTheyAreHeld )
{
   auto root = ::Test::Root::RootIs( "r" );
   root->treeIs( "a" )->kidsIs( "b" );
   const auto held = root->treeIs( "held" );
   root->treeIs( "c" );
   EXPECT_EQ( AllocTracker::liveCount( "Test::Tree" ), 4U );
   EXPECT_EQ( AllocTracker::liveCount( "Test::Bare" ), 1U ); // made by the constructor
   root->treeDel( "c" );
   EXPECT_EQ( AllocTracker::liveCount( "Test::Tree" ), 3U );
   root = nullptr;
   EXPECT_EQ( AllocTracker::liveCount( "Test::Root" ), 0U );
   EXPECT_EQ( AllocTracker::liveCount( "Test::Bare" ), 0U );
   EXPECT_EQ( AllocTracker::liveCount( "Test::Tree" ), 1U );
   EXPECT_EQ( held->refCount(), 1U );
}

TEST( AllocTrackerTest, aDerivedTypeIsCountedUnderItsOwnName )
{
   const auto special = ::Test::Special::SpecialIs( "s" );
   EXPECT_EQ( AllocTracker::liveCount( "Test::Special" ), 1U );
   EXPECT_EQ( AllocTracker::liveCount( "Test::Root" ), 0U );
}

TEST( AllocTrackerTest, whatAConstructorRefusesIsNotCounted )
{
   const auto & type = *Corvo::ModuleInspectData::findType( "Test::Slot" );
   EXPECT_THROW( type.instantiate( "a name of 21 bytes xx", { "1" } ), Corvo::RangeException );
   EXPECT_THROW( type.instantiate( "a" ), Corvo::ConstructorArgsException );
   EXPECT_EQ( AllocTracker::liveCount( "Test::Slot" ), 0U );
}

} // namespace
