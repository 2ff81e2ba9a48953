// What a notifiee hears, and what it may do meanwhile.
#include "tests/model/Everything.h"
#include "tests/support/Random.h"
#include "tests/support/Recorder.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <set>
#include <stdexcept>
#include <vector>

namespace {

using TestSupport::Heard;
using TestSupport::Recorder;

TEST( NotificationTest, scalarsCarryTheOldValue )
{
   const auto root = ::Test::Root::RootIs( "r" );
   Recorder recorder( *root );
   root->enabledIs( false );
   root->enabledIs( true );
   root->titleIs( "x" );
   root->maybeIs( ::Test::Level( 2 ) );
   root->maybeIs( std::nullopt );
   root->maybeWordIs( ::Test::Full( 3 ) );
   root->maybeBitIs( false );
   EXPECT_EQ( recorder.take(),
         ( Heard{ "259 was false", "266 was none", "278 was ", "278 was 2", "281 was ",
               "280 was " } ) );
}

TEST( NotificationTest, typedKeysAndOldValues )
{
   const auto root = ::Test::Root::RootIs( "r" );
   root->namesIs( 1, "one" );
   Recorder recorder( *root );
   recorder.then = []( const Corvo::Change & change ) {
      ASSERT_NE( change.key< std::uint32_t >(), nullptr );
      EXPECT_EQ( *change.key< std::uint32_t >(), 1U );
      EXPECT_EQ( change.key< std::uint16_t >(), nullptr );
      ASSERT_NE( change.oldValue< Corvo::String >(), nullptr );
      EXPECT_EQ( *change.oldValue< Corvo::String >(), "one" );
   };
   root->namesIs( 1, "two" );
   EXPECT_EQ( recorder.take().size(), 1U );
   recorder.then = nullptr;
   EXPECT_EQ( root->namesDel( 1 ), "two" );
   EXPECT_EQ( root->namesDel( 1 ), "" );
   root->namesIs( 1, "new" );
   EXPECT_EQ( recorder.take(), ( Heard{ "284[1] was two", "284[1]" } ) );
}

TEST( NotificationTest, boundsAreCheckedAfterTheComparisonAndBeforeTheStore )
{
   const auto root = ::Test::Root::RootIs( "r" );
   Recorder recorder( *root );
   try {
      root->tinyIs( 9 );
      FAIL();
   } catch ( const Corvo::RangeException & e ) {
      EXPECT_STREQ( e.what(), "Test::Root::tiny < 1 or > (Test::Level::top - 2) not allowed" );
   }
   EXPECT_EQ( root->tiny(), 1 );
   root->tinyIs( 8 );
   EXPECT_EQ( recorder.take(), Heard{ "260 was 1" } );
}

TEST( NotificationTest, countersWrapAndAreSilentWithoutAChange )
{
   const auto root = ::Test::Root::RootIs( "r" );
   root->ticksIs( 255 );
   Recorder recorder( *root );
   EXPECT_EQ( root->ticksInc( 0 ), 255 );
   EXPECT_EQ( root->ticksInc( 1 ), 0 );
   EXPECT_EQ( recorder.take(), Heard{ "263 was 255" } );
}

TEST( NotificationTest, childrenKeepOneIdentityPerKey )
{
   const auto root = ::Test::Root::RootIs( "r" );
   Recorder recorder( *root );
   const auto kid = root->treeIs( "a" );
   EXPECT_EQ( root->treeIs( "a" ), kid );
   EXPECT_EQ( kid->parent(), root.get() );
   EXPECT_EQ( recorder.take(), Heard{ "293[a]" } );
   EXPECT_EQ( root->treeDel( "a" ), kid );
   EXPECT_EQ( kid->parent(), nullptr );
   EXPECT_EQ( recorder.take(), Heard{ "293[a] was a" } );
   EXPECT_EQ( root->treeDel( "a" ), nullptr );
   EXPECT_EQ( recorder.take(), Heard{} );
}

TEST( NotificationTest, otherConstantArgumentsAreRefusedAndSettableOnesUpdated )
{
   const auto root = ::Test::Root::RootIs( "r" );
   const auto group = root->groupsIs( "g", 5 );
   try {
      root->groupsIs( "h", 5 );
      FAIL();
   } catch ( const Corvo::ReinstantiationException & e ) {
      const std::string what = e.what();
      for ( const char * part : { "name", "154", "\"g\"", "\"h\"" } ) {
         EXPECT_NE( what.find( part ), std::string::npos ) << part;
      }
   }
   EXPECT_EQ( root->groups( 5 ), group );
   const auto slot = root->slotsIs( ::Test::Label( "l" ), 1 );
   Recorder onRoot( *root );
   Recorder onSlot( *slot );
   EXPECT_EQ( root->slotsIs( ::Test::Label( "l" ), 2 ), slot );
   EXPECT_EQ( slot->weight(), 2 );
   EXPECT_EQ( onRoot.take(), Heard{} );
   EXPECT_EQ( onSlot.take(), Heard{ "259 was 1" } );
}

TEST( NotificationTest, singleChildIsReplacedByAnotherName )
{
   const auto root = ::Test::Root::RootIs( "r" );
   Recorder recorder( *root );
   const auto first = root->singleIs( "a" );
   EXPECT_EQ( root->singleIs( "a" ), first );
   const auto second = root->singleIs( "b" );
   EXPECT_EQ( first->parent(), nullptr );
   EXPECT_EQ( second->parent(), root.get() );
   EXPECT_EQ( recorder.take(), ( Heard{ "298", "298 was a" } ) );
   EXPECT_NE( root->only(), nullptr );
}

TEST( NotificationTest, referencesRefuseNullAndReplaceAnotherOfTheSameKey )
{
   const auto root = ::Test::Root::RootIs( "r" );
   try {
      root->refsIs( nullptr );
      FAIL();
   } catch ( const Corvo::NullPointerException & e ) {
      EXPECT_NE( std::string( e.what() ).find( "refs" ), std::string::npos );
      EXPECT_NE( std::string( e.what() ).find( "300" ), std::string::npos );
   }
   const auto one = ::Test::Numbered::NumberedIs( ::Test::Narrow( 300 ) );
   const auto other = ::Test::Numbered::NumberedIs( ::Test::Narrow( 300 ) );
   Recorder recorder( *root );
   root->refsIs( one );
   root->refsIs( one );
   EXPECT_EQ( recorder.take(), Heard{ "300[300]" } );
   recorder.then = [ & ]( const Corvo::Change & change ) {
      EXPECT_EQ( *change.oldValue< Corvo::Ptr< const ::Test::Numbered > >(), one );
   };
   root->refsIs( other );
   EXPECT_EQ( recorder.take().size(), 1U );
   EXPECT_EQ( other->refCount(), 2U );
   EXPECT_EQ( one->refCount(), 1U );
}

TEST( NotificationTest, toldInOrderOfAttachmentAndTwiceIsOnce )
{
   const auto root = ::Test::Root::RootIs( "r" );
   Heard order;
   Recorder a( *root );
   Recorder b( *root );
   root->publisher().notifieeIs( &a );
   a.then = [ & ]( const Corvo::Change & ) { order.push_back( "a" ); };
   b.then = [ & ]( const Corvo::Change & ) { order.push_back( "b" ); };
   root->enabledIs( true );
   EXPECT_EQ( order, ( Heard{ "a", "b" } ) );
   Recorder stranger;
   root->publisher().notifieeDel( &stranger );
}

/// Many come and go at several entities, so that lists grow, have holes and close them.
TEST( NotificationTest, whoeverIsAttachedHearsAndNobodyElse )
{
   std::vector< Corvo::Ptr< ::Test::Root > > roots;
   for ( int i = 0; i != 3; ++i ) {
      roots.push_back( ::Test::Root::RootIs( "r" ) );
   }
   std::array< Recorder, 40 > notifiees;
   std::vector< std::set< std::size_t > > attached( roots.size() );
   TestSupport::Random random( 3 );
   for ( int step = 0; step != 20000; ++step ) {
      const std::size_t at = random.below( 3 );
      const std::size_t which = random.below( notifiees.size() );
      // Many at first, then fewer and fewer, again and again.
      if ( random.below( 1000 ) < static_cast< unsigned >( step % 1000 ) ) {
         roots[ at ]->publisher().notifieeDel( &notifiees[ which ] );
         attached[ at ].erase( which );
      } else {
         roots[ at ]->publisher().notifieeIs( &notifiees[ which ] );
         attached[ at ].insert( which );
      }
      const std::size_t told = random.below( 3 );
      roots[ told ]->enabledIs( !roots[ told ]->enabled() );
      for ( std::size_t i = 0; i != notifiees.size(); ++i ) {
         ASSERT_EQ( notifiees[ i ].take().size(), attached[ told ].count( i ) ) << step;
      }
   }
}

TEST( NotificationTest, detachedDuringANotificationIsNotCalledAgain )
{
   const auto root = ::Test::Root::RootIs( "r" );
   auto first = std::make_unique< Recorder >( *root );
   auto second = std::make_unique< Recorder >( *root );
   Recorder third( *root );
   first->then = [ & ]( const Corvo::Change & ) {
      second.reset();
      const auto self = std::move( first ); // destroys itself
   };
   root->enabledIs( true );
   EXPECT_EQ( third.take(), Heard{ "259 was false" } );
   root->enabledIs( false );
   EXPECT_EQ( third.take(), Heard{ "259 was true" } );
}

TEST( NotificationTest, attachedDuringANotificationHearsTheNextChange )
{
   const auto root = ::Test::Root::RootIs( "r" );
   Recorder first( *root );
   Recorder late;
   first.then = [ & ]( const Corvo::Change & change ) {
      root->publisher().notifieeIs( &late );
      if ( change.attrId == ::Test::Root::enabledAttrId ) {
         root->midIs( 5 ); // nested: the next change
      }
   };
   root->enabledIs( true );
   EXPECT_EQ( late.take(), Heard{ "261 was 0" } );
}

TEST( NotificationTest, nestedChangesAreToldAtOnce )
{
   const auto root = ::Test::Root::RootIs( "r" );
   Recorder first( *root );
   Recorder second( *root );
   first.then = [ & ]( const Corvo::Change & change ) {
      if ( change.attrId == ::Test::Root::enabledAttrId ) {
         root->midIs( 5 );
      }
   };
   root->enabledIs( true );
   EXPECT_EQ( second.take(), ( Heard{ "261 was 0", "259 was false" } ) );
}

TEST( NotificationTest, theEntityOutlivesTheNotification )
{
   auto root = ::Test::Root::RootIs( "r" );
   ::Test::Root * const raw = root.get();
   Recorder first( *root );
   Recorder second( *root );
   first.then = [ & ]( const Corvo::Change & ) { root = nullptr; };
   second.then = []( const Corvo::Change & change ) { EXPECT_EQ( change.entity.name(), "r" ); };
   raw->enabledIs( true );
   EXPECT_EQ( second.heard.size(), 1U );
   EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Root" ), 0U );
}

TEST( NotificationTest, anExceptionComesOutAfterAllHaveBeenTold )
{
   const auto root = ::Test::Root::RootIs( "r" );
   Recorder first( *root );
   Recorder second( *root );
   Recorder third( *root );
   first.then = []( const Corvo::Change & ) { throw std::runtime_error( "first" ); };
   second.then = []( const Corvo::Change & ) { throw std::runtime_error( "second" ); };
   try {
      root->enabledIs( true );
      FAIL();
   } catch ( const std::runtime_error & e ) {
      EXPECT_STREQ( e.what(), "first" );
   }
   EXPECT_TRUE( root->enabled() );
   EXPECT_EQ( third.heard.size(), 1U );
}

TEST( NotificationTest, delAllStopsAtAnExceptionAndKeepsWhatItDid )
{
   const auto root = ::Test::Root::RootIs( "r" );
   for ( std::uint32_t i = 0; i != 10; ++i ) {
      root->namesIs( i, "x" );
   }
   Recorder recorder( *root );
   recorder.then = [ & ]( const Corvo::Change & ) {
      if ( recorder.heard.size() == 4 ) {
         throw std::runtime_error( "enough" );
      }
   };
   EXPECT_THROW( root->namesDelAll(), std::runtime_error );
   EXPECT_EQ( root->names().size(), 6U );
}

TEST( NotificationTest, delAllOfChildrenClearsParentsWhetherOrNotAnybodyListens )
{
   const auto root = ::Test::Root::RootIs( "r" );
   const auto a = root->treeIs( "a" );
   root->treeDelAll();
   EXPECT_EQ( a->parent(), nullptr );
   const auto b = root->treeIs( "b" );
   Recorder recorder( *root );
   root->treeDelAll();
   EXPECT_EQ( b->parent(), nullptr );
   EXPECT_EQ( recorder.take(), Heard{ "293[b] was b" } );
}

TEST( NotificationTest, aChildOutlivesItsParentWithoutOne )
{
   auto root = ::Test::Root::RootIs( "r" );
   const auto kid = root->treeIs( "a" );
   const auto only = root->only();
   root = nullptr;
   EXPECT_EQ( kid->parent(), nullptr );
   EXPECT_EQ( only->parent(), nullptr );
}

TEST( NotificationTest, argumentsMayLieInTheCollectionThatChanges )
{
   const auto root = ::Test::Root::RootIs( "r" );
   root->namesIs( 1, "a text that is too long to stand in place" );
   for ( std::uint32_t i = 2; i != 200; ++i ) {
      root->namesIs( i, root->names( i - 1 ) );
   }
   EXPECT_EQ( root->names( 199 ), "a text that is too long to stand in place" );
   root->treeIs( "a" );
   root->treeDel( root->tree( "a" )->name().view() );
   EXPECT_TRUE( root->tree().empty() );
}

} // namespace
