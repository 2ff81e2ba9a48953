// The reader's table: which entity stands under which number of a stream, and what a link costs an
// entity that nobody listens to.
#include "Vok/detail/ReplicaSlots.h"

#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Storage.h"
#include "Vok/detail/StreamOps.h"
#include "tests/Vok/Streams.h"
#include "tests/support/HeapMeter.h"
#include "tests/support/Recorder.h"
#include "tests/support/SpareSlabs.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using Corvo::Ptr;
using ::Test::Host;
using TestSupport::Counter;
using TestSupport::expectEqual;
using TestSupport::Recorder;
using TestSupport::Replica;
using TestSupport::Source;
using Vok::Detail::ReplicaSlot;
using Vok::Detail::ReplicaSlots;
using Vok::Detail::SlotPage;
using Vok::Detail::SlotPlace;

Ptr< Host > newHost( std::uint64_t number )
{
   return ::Test::hostFactory( "host" + std::to_string( number ) );
}

struct Table {
   std::uint64_t shapeChanges = 1;
   ReplicaSlots slots{ shapeChanges };
};

TEST( ReplicaSlotsTest, numbersMayBeAnyOf64Bits )
{
   Table table;
   std::vector< Ptr< Host > > hosts;
   const std::vector< std::uint64_t > numbers{ 0, 31, 32, 1000, std::uint64_t{ 1 } << 63,
      ~std::uint64_t{ 0 } };
   for ( const std::uint64_t number : numbers ) {
      hosts.push_back( newHost( number ) );
      table.slots.insert( number, { number, ~number, 3, false }, hosts.back().get() );
   }
   for ( std::size_t i = 0; i != numbers.size(); ++i ) {
      const ReplicaSlot slot = table.slots.find( numbers[ i ] );
      ASSERT_TRUE( slot );
      EXPECT_EQ( slot.entity(), hosts[ i ].get() );
      EXPECT_EQ( slot.place(), ( SlotPlace{ numbers[ i ], ~numbers[ i ], 3, false } ) );
   }
   for ( const std::uint64_t number : { 1U, 30U, 33U, 999U, 1001U, 2000U } ) {
      EXPECT_FALSE( table.slots.find( number ) );
   }
}

TEST( ReplicaSlotsTest, aSlotIsEmptyOnceItsEntityIsDestroyed )
{
   Table table;
   Ptr< Host > host = newHost( 1 );
   const Ptr< Host > other = newHost( 2 );
   table.slots.insert( 1, {}, host.get() );
   table.slots.insert( 2, {}, other.get() );
   host = nullptr;
   EXPECT_TRUE( table.slots.find( 1 ) );
   EXPECT_EQ( table.slots.find( 1 ).entity(), nullptr );
   EXPECT_EQ( table.slots.find( 2 ).entity(), other.get() );
}

// Each of the three may go first; who goes last must not know of those before.
TEST( ReplicaSlotsTest, tablesNotifieesAndTheEntityGoInAnyOrder )
{
   for ( unsigned order = 0; order != 27; ++order ) {
      auto one = std::make_unique< Table >();
      auto two = std::make_unique< Table >();
      Ptr< Host > host = newHost( order );
      auto ear = std::make_unique< Counter >( *host );
      one->slots.insert( 7, {}, host.get() );
      two->slots.insert( 9, {}, host.get() );
      for ( unsigned step = 0, rest = order; step != 3; ++step, rest /= 3 ) {
         if ( rest % 3 == 0 ) {
            one.reset();
         } else if ( rest % 3 == 1 ) {
            two.reset();
         } else {
            ear.reset();
         }
         if ( ear ) {
            const std::size_t before = ear->heard;
            host->publisher().publishChangeRecursive( { *host, 258, {}, {} } );
            EXPECT_EQ( ear->heard, before + 1 );
         }
         EXPECT_EQ( host->publisher().hasNotifiee(), ear != nullptr );
      }
      host = nullptr;
      EXPECT_TRUE( !one || !one->slots.find( 7 ).entity() );
      EXPECT_TRUE( !two || !two->slots.find( 9 ).entity() );
   }
}

TEST( ReplicaSlotsTest, twoNumbersOfOneEntityAreBothEmptied )
{
   Table table;
   Ptr< Host > host = newHost( 1 );
   for ( const std::uint64_t number : { 1U, 2U, 100U, 200U } ) {
      table.slots.insert( number, {}, host.get() );
   }
   host = nullptr;
   for ( const std::uint64_t number : { 1U, 2U, 100U, 200U } ) {
      EXPECT_EQ( table.slots.find( number ).entity(), nullptr );
   }
}

TEST( ReplicaSlotsTest, anEntityThatLeavesItsParentIsCountedForEachTable )
{
   Table one;
   Table two;
   const auto tree = ::Test::treeFactory( "tree" );
   const auto host = tree->hostsIs( "host" );
   one.slots.insert( 1, {}, host.get() );
   one.slots.find( 1 ).verify();
   EXPECT_TRUE( one.slots.find( 1 ).verified() );
   two.slots.insert( 1, {}, host.get() );
   tree->hostsDel( "host" );
   EXPECT_EQ( one.shapeChanges, 2U );
   EXPECT_EQ( two.shapeChanges, 2U );
   EXPECT_FALSE( one.slots.find( 1 ).verified() );
}

TEST( ReplicaSlotsTest, whatIsTakenOverReplacesSlotsOfTheSameNumbers )
{
   Table table;
   std::vector< Ptr< Host > > before;
   std::vector< Ptr< Host > > after;
   ReplicaSlots fresh( table.shapeChanges );
   for ( std::uint64_t number = 0; number != 100; ++number ) {
      before.push_back( newHost( number ) );
      table.slots.insert( number, { 1, number, 0, false }, before.back().get() );
      after.push_back( newHost( number ) );
      if ( number % 3 == 0 ) {
         fresh.insert( number, { 2, number, 1, true }, after.back().get() );
      }
   }
   fresh.insert( 5000, { 2, 0, 1, false }, nullptr );
   table.slots.reserve( fresh );
   table.slots.takeAll( fresh );
   for ( std::uint64_t number = 0; number != 100; ++number ) {
      const bool replaced = number % 3 == 0;
      const ReplicaSlot slot = table.slots.find( number );
      EXPECT_EQ( slot.entity(), ( replaced ? after : before )[ number ].get() );
      const SlotPlace first{ 1, number, 0, false };
      const SlotPlace second{ 2, number, 1, true };
      EXPECT_EQ( slot.place(), replaced ? second : first );
      EXPECT_FALSE( fresh.find( number ) );
   }
   EXPECT_TRUE( table.slots.find( 5000 ) );
   before.clear(); // what was replaced does not know the table any more
   after.clear();
   for ( std::uint64_t number = 0; number != 100; ++number ) {
      EXPECT_EQ( table.slots.find( number ).entity(), nullptr );
   }
}

TEST( ReplicaSlotsTest, anEntityThatIsTakenOverMayHaveNotifiees )
{
   Table table;
   Ptr< Host > kept = newHost( 1 );
   Ptr< Host > moved = newHost( 2 );
   Counter counter;
   kept->publisher().notifieeIs( &counter );
   moved->publisher().notifieeIs( &counter );
   table.slots.insert( 1, { 1, 0, 0, false }, kept.get() );
   ReplicaSlots fresh( table.shapeChanges );
   fresh.insert( 2, { 2, 0, 0, false }, kept.get() ); // among those that know it already
   fresh.insert( 3, { 2, 0, 0, false }, moved.get() ); // among those that do not
   table.slots.reserve( fresh );
   table.slots.takeAll( fresh );
   for ( const std::uint64_t number : { 1U, 2U } ) {
      EXPECT_EQ( table.slots.find( number ).entity(), kept.get() );
   }
   EXPECT_EQ( table.slots.find( 3 ).entity(), moved.get() );
   kept = nullptr;
   moved = nullptr;
   for ( const std::uint64_t number : { 1U, 2U, 3U } ) {
      EXPECT_EQ( table.slots.find( number ).entity(), nullptr );
   }
}

// However often all slots of a page change their places, it has room for one place each.
TEST( ReplicaSlotsTest, placesThatNoSlotHasAreUsedAgain )
{
   Table table;
   for ( std::uint64_t round = 0; round != 50; ++round ) {
      ReplicaSlots fresh( table.shapeChanges );
      for ( std::uint64_t number = 0; number != SlotPage::slots; ++number ) {
         fresh.insert( number, { round, number * round, 0, false }, nullptr );
      }
      table.slots.reserve( fresh );
      table.slots.takeAll( fresh );
      for ( std::uint64_t number = 0; number != SlotPage::slots; ++number ) {
         EXPECT_EQ( table.slots.find( number ).place(),
               ( SlotPlace{ round, number * round, 0, false } ) );
      }
   }
}

// Those of more parents than are looked at, in turn: some places stand in a page several times.
TEST( ReplicaSlotsTest, placesMayTakeTurns )
{
   Table table;
   const auto placeOf = []( std::uint64_t round, std::uint64_t number ) {
      return SlotPlace{ round, number % 7, 0, false };
   };
   for ( std::uint64_t round = 1; round != 20; ++round ) {
      ReplicaSlots fresh( table.shapeChanges );
      for ( std::uint64_t number = 0; number != 2 * SlotPage::slots; ++number ) {
         fresh.insert( number, placeOf( round, number ), nullptr );
      }
      table.slots.reserve( fresh );
      table.slots.takeAll( fresh );
      for ( std::uint64_t number = 0; number != 2 * SlotPage::slots; ++number ) {
         EXPECT_EQ( table.slots.find( number ).place(), placeOf( round, number ) );
      }
   }
}

TEST( ReplicaSlotsTest, aSlotBecomesOutsideAlone )
{
   Table table;
   for ( std::uint64_t number = 0; number != 40; ++number ) {
      table.slots.insert( number, { 1, 7, 2, false }, nullptr );
   }
   table.slots.find( 5 ).reserveOutside();
   table.slots.find( 5 ).becomeOutside();
   for ( std::uint64_t number = 0; number != 40; ++number ) {
      EXPECT_EQ(
            table.slots.find( number ).place(), ( SlotPlace{ 1, 7, 2, number == 5 } ) );
   }
}

// ---- In a replica -----------------------------------------------------------------------------

TEST( ReplicaSlotsTest, anEntityOfAReplicaCostsLittleMoreThanAnyOther )
{
   constexpr std::uint32_t members = 20000;
   Source source;
   for ( std::uint32_t i = 0; i != members; ++i ) {
      source.root->treeIs( std::to_string( i ) );
   }
   const auto whole = source.batch();
   TestSupport::makeSpareSlabs();
   std::size_t alone = 0;
   {
      const TestSupport::HeapMeter heap;
      const auto root = ::Test::Root::RootIs( "root" );
      for ( std::uint32_t i = 0; i != members; ++i ) {
         root->treeIs( std::to_string( i ) );
      }
      alone = heap.held();
   }
   const TestSupport::HeapMeter heap;
   Replica replica;
   replica.read( whole );
   const std::size_t slabs = 3 * 32768; // of which some may not be full
   EXPECT_LT( heap.held(), alone + std::size_t{ members } * 13 + slabs );
   source.root->treeDelAll();
   replica.read( source.whole() );
   EXPECT_LT( heap.held(), slabs + 65536 ) << "pages are given back with a whole tree";
}

TEST( ReplicaSlotsTest, numbersAreUsedAgainInTheSameSlots )
{
   Source source;
   Replica replica;
   for ( std::uint32_t i = 0; i != 50; ++i ) {
      source.root->treeIs( std::to_string( i ) )->depthIs( i );
   }
   replica.read( source.batch() );
   for ( std::uint32_t round = 0; round != 40; ++round ) {
      for ( std::uint32_t i = round % 3; i < 50; i += 3 ) {
         source.root->treeDel( std::to_string( i ) );
         source.root->treeIs( std::to_string( i ) )->kidsIs( "kid" )->depthIs( round );
      }
      replica.read( source.batch() );
      source.root->tree( std::to_string( round ) )->depthIs( 1000 + round );
      replica.read( source.batch() );
      expectEqual( *source.root, *replica.root );
   }
}

// A notifiee makes a list where there was a link alone, and leaves the link behind.
TEST( ReplicaSlotsTest, notifieesComeAndGoInNotificationsOfAReplica )
{
   Source source;
   Replica replica;
   const auto tree = source.root->treeIs( "t" );
   replica.read( source.batch() );
   const auto copy = replica.root->tree( "t" );
   Counter second;
   std::optional< Recorder > first( std::in_place, *copy );
   first->then = [ & ]( const Corvo::Change & change ) {
      change.entity.publisher().notifieeIs( &second );
      change.entity.publisher().notifieeDel( &*first );
   };
   for ( std::uint32_t depth = 1; depth != 4; ++depth ) {
      tree->depthIs( depth );
      replica.read( source.batch() );
      EXPECT_EQ( copy->depth(), depth );
   }
   EXPECT_EQ( first->heard.size(), 1U );
   EXPECT_EQ( second.heard, 2U );
   copy->publisher().notifieeDel( &second );
   EXPECT_FALSE( copy->publisher().hasNotifiee() );
   tree->depthIs( 9 );
   replica.read( source.batch() );
   EXPECT_EQ( copy->depth(), 9U );
   replica.root->treeDel( "t" ); // the reader's user deletes it: changes of it are passed over
   tree->depthIs( 10 );
   replica.read( source.batch() );
   EXPECT_EQ( copy->depth(), 9U );
   EXPECT_FALSE( replica.root->tree( "t" ) );
}

TEST( ReplicaSlotsTest, twoReadersFollowOneReplica )
{
   Source source;
   Replica replica;
   auto second = std::make_unique< Vok::EntityVokNboAttrLogReader >( replica.root );
   const auto tree = source.root->treeIs( "t" );
   const auto whole = source.batch();
   replica.read( whole );
   Vok::NboAttrLog::In in( whole );
   second->read( in );
   tree->depthIs( 1 );
   const auto delta = source.batch();
   replica.read( delta );
   Vok::NboAttrLog::In again( delta );
   second->read( again );
   second.reset();
   tree->depthIs( 2 );
   source.root->treeIs( "u" );
   replica.read( source.batch() );
   expectEqual( *source.root, *replica.root );
}

// A collection that is empty and unheard is filled without notes of what was there.
TEST( ReplicaSlotsTest, anUnheardCollectionIsFilledAsAHeardOneIs )
{
   Source source;
   for ( std::uint32_t i = 0; i != 300; ++i ) {
      source.root->treeIs( std::to_string( i ) )->depthIs( i );
      source.root->namesIs( i, std::to_string( i ) );
      source.root->marksIs( i );
      source.root->groupsIs( "g", i );
   }
   const auto whole = source.batch();
   Replica unheard;
   unheard.read( whole );
   Replica heard;
   Counter ear( *heard.root );
   heard.read( whole );
   EXPECT_EQ( ear.heard, 1200U );
   expectEqual( *source.root, *unheard.root );
   expectEqual( *source.root, *heard.root );
   EXPECT_EQ( unheard.root->tree( "7" )->parent(), unheard.root.get() );
}

// No writer does so, but a batch that is made by hand may.
TEST( ReplicaSlotsTest, aCollectionThatIsFilledTwiceHasTheSecond )
{
   const auto root = ::Test::Root::RootIs( "root" );
   const Vok::Detail::AttributeRow & row = ::Test::Root::vokType().attribute( "tree" )->row();
   void * const collection = Vok::Detail::storageOf( *root, row );
   std::vector< Ptr< ::Test::Tree > > trees;
   std::vector< std::unique_ptr< Vok::Detail::Staged > > staged;
   for ( const char * name : { "a", "b" } ) {
      trees.push_back( ::Test::treeFactory( name ) );
      bool told = false;
      const auto next = [ & ]( Vok::Detail::EntityOp & op ) {
         op.member = trees.back();
         return !std::exchange( told, true );
      };
      const auto atMost = [] { return std::size_t{ 1 }; };
      staged.push_back( row.collection->stream->stageEntities(
            collection, { next, atMost }, { .whole = true, .heard = false } ) );
      staged.back()->owner = root;
   }
   for ( const auto & change : staged ) {
      change->commit();
   }
   EXPECT_EQ( root->tree().size(), 1U );
   EXPECT_EQ( root->tree( "b" ), trees[ 1 ] );
   EXPECT_EQ( trees[ 0 ]->parent(), nullptr );
   EXPECT_EQ( trees[ 1 ]->parent(), root.get() );
}

} // namespace
