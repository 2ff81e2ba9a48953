// The engine of HashMap2018 and HSet, and its lookup. HashMap2018.h draws the picture and states
// the invariants; the code only has to match it. Insertion and removal stand in HashTableChange.h,
// growth in HashTableGrowth.h, iteration in HashTableCursor.h.
#pragma once

#include "Vok/detail/Lanes.h"
#include "Vok/detail/Relocate.h"
#include "Vok/detail/TableBlock.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <type_traits>
#include <utility>

// Where a program defines VOK_COUNT_STEPS, every look at eight marks, every comparison of keys and
// every node that is moved counts one step.
#ifdef VOK_COUNT_STEPS
namespace Vok::Detail {
inline std::uint64_t tableSteps = 0;
}
#define VOK_STEPS( count ) ( ::Vok::Detail::tableSteps += ( count ) )
#else
#define VOK_STEPS( count ) static_cast< void >( 0 )
#endif

namespace Vok::Detail {

// Node is as MapNodes.h describes it; Lanes is SseLanes or PortableLanes.
template< class Node, class Lanes = DefaultLanes > class HashTable {
 public:
   using Key = typename Node::Key;
   using Query = KeyQuery< Key >;
   class Cursor;

   static_assert(
         std::is_nothrow_move_constructible_v< Node > && std::is_nothrow_destructible_v< Node > );

   HashTable() noexcept = default;
   HashTable( const HashTable & other ) { copy( other ); }
   HashTable( HashTable && other ) noexcept : table_( std::exchange( other.table_, nullptr ) ) {}
   HashTable & operator=( const HashTable & other )
   {
      if ( this != &other ) {
         HashTable( other ).swap( *this );
      }
      return *this;
   }
   HashTable & operator=( HashTable && other ) noexcept
   {
      HashTable( std::move( other ) ).swap( *this );
      return *this;
   }
   ~HashTable() { clear(); }

   void swap( HashTable & other ) noexcept { std::swap( table_, other.table_ ); }

   std::size_t size() const noexcept { return table_ != nullptr ? table_->size : 0; }
   std::size_t capacity() const noexcept { return table_ != nullptr ? table_->room : 0; }

   Node * find( Query query ) const noexcept
   {
      if ( table_ == nullptr ) {
         return nullptr;
      }
      const Place place = lookUp( query, hashOf( query ) );
      return place.found ? nodes() + place.slot : nullptr;
   }

   template< class Make > std::pair< Node *, bool > findOrInsert( Query query, Make && make )
   {
      if ( table_ == nullptr ) {
         return { insertMade( 0, 0, make ), true };
      }
      const std::uint64_t hash = hashOf( query );
      const Place place = lookUp( query, hash );
      if ( place.found ) {
         return { nodes() + place.slot, false };
      }
      // From here on the query may be gone: it may lie in what `make` moves into the node.
      if ( !isFree( place.slot ) || table_->size == table_->room ) {
         return { insertMade( place.slot, hash, make ), true };
      }
      Node * const node = ::new ( static_cast< void * >( nodes() + place.slot ) ) Node( make() );
      occupy( place.slot, place.distance, hash );
      return { node, true };
   }

   std::optional< Node > take( Query query ) noexcept
   {
      std::optional< Node > taken;
      if ( table_ == nullptr ) {
         return taken;
      }
      const Place place = lookUp( query, hashOf( query ) );
      if ( place.found ) {
         taken.emplace( std::move( nodes()[ place.slot ] ) );
         removeAt( place );
      }
      return taken;
   }

   void clear() noexcept
   {
      // What a node's destructor does to this map, it does to an empty one.
      if ( TableHeader * const table = std::exchange( table_, nullptr ) ) {
         endCursors( *table );
         destroy( table );
      }
   }

   void reserve( std::size_t size )
   {
      if ( table_ == nullptr ) {
         if ( size > 0 ) {
            table_ = makeTable( tableShape( size ), tableSeed( Node::hashConstant ) );
         }
      } else if ( size > table_->room ) {
         rebuild( tableShape( size ) );
      }
   }

 private:
   class Mover;
   friend struct TableInspector; // the tests' eye on the invariants

   // Where a key stands, or where its node has to go.
   struct Place {
      std::size_t slot;
      std::size_t distance;
      bool found;
   };

   static Node * nodesOf( TableHeader * table ) noexcept
   {
      return static_cast< Node * >( table->nodes );
   }
   Node * nodes() const noexcept { return nodesOf( table_ ); }
   SlotMark * marks() const noexcept { return table_->marks(); }

   static std::uint64_t hashOf( Query query, HashSeed seed ) noexcept
   {
      return KeyHash< Key >::hash( query, seed );
   }
   std::uint64_t hashOf( Query query ) const noexcept { return hashOf( query, table_->seed ); }

   // The first slot of the home of a hash: its high bits choose, in the same order whatever the
   // number of homes.
   std::size_t homeOf( std::uint64_t hash ) const noexcept
   {
      return static_cast< std::size_t >( multiply( hash, table_->homes ).high ) * homeWidth;
   }

   // How far the node of an occupied slot is from its home. Only a far one costs a hash.
   std::size_t distanceAt( std::size_t slot ) const noexcept
   {
      const SlotMark mark = marks()[ slot ];
      return mark < farMark ? ( std::size_t{ mark } >> 8 ) - 1
                            : slot - homeOf( hashOf( nodes()[ slot ].fwkKey() ) );
   }

   static std::size_t nextOccupied( TableHeader * table, std::size_t slot ) noexcept
   {
      const SlotMark * const marks = table->marks();
      for ( ; slot < table->slots; slot += Lanes::width ) {
         VOK_STEPS( 1 );
         if ( const auto occupied = Lanes::load( marks + slot ).nonZero(); occupied.any() ) {
            return slot + occupied.first();
         }
      }
      return table->slots;
   }

   // Calls `f( slot )` for every occupied slot, from first to last; f may empty it.
   template< class F > static void eachSlot( TableHeader * table, F f )
   {
      const SlotMark * const marks = table->marks();
      for ( std::size_t from = 0; from < table->slots; from += Lanes::width ) {
         VOK_STEPS( 1 );
         for ( auto set = Lanes::load( marks + from ).nonZero(); set.any(); set.dropFirst() ) {
            f( from + set.first() );
         }
      }
   }

   // The first slot from `slot` on whose mark is less than `limit`; the marks behind the last slot
   // end every search.
   std::size_t firstBelow( std::size_t slot, SlotMark limit ) const noexcept
   {
      for ( const Lanes limits = Lanes::all( limit );; slot += Lanes::width ) {
         VOK_STEPS( 1 );
         if ( const auto below = Lanes::load( marks() + slot ).below( limits ); below.any() ) {
            return slot + below.first();
         }
      }
   }

   // Walks from the home of `hash` over the nodes whose homes are not after it. At each step the
   // marks of eight nodes are compared with the eight marks that a node of this hash would have
   // there, and with the eight distances below which a node's home is after this one.
   template< class Equal >
   [[gnu::always_inline]] Place search( std::uint64_t hash, Equal equal ) const noexcept
   {
      const std::size_t home = homeOf( hash );
      // The node is fetched while the marks are still on their way.
      __builtin_prefetch( nodes() + home );
      const SlotMark * const from = marks() + home;
      Lanes nearest = Lanes::ramp();
      Lanes wanted = nearest.plus( Lanes::all( hash & 0xff ) );
      const Lanes step = Lanes::all( Lanes::width * oneFarther );
      std::size_t distance = 0;
      for ( ; distance + Lanes::width < farDistance; distance += Lanes::width ) {
         VOK_STEPS( 1 );
         const Lanes found = Lanes::load( from + distance );
         for ( auto hits = found.equal( wanted ); hits.any(); hits.dropFirst() ) {
            const std::size_t at = distance + hits.first();
            if ( equal( nodes()[ home + at ] ) ) [[likely]] {
               return { home + at, at, true };
            }
         }
         if ( const auto below = found.below( nearest ); below.any() ) [[likely]] {
            const std::size_t at = distance + below.first();
            return { home + at, at, false };
         }
         nearest = nearest.plus( step );
         wanted = wanted.plus( step );
      }
      return searchFar( hash, home, distance, equal );
   }

   // The rest of a search, where marks may not tell distances any more.
   template< class Equal > [[gnu::noinline]] Place searchFar(
         std::uint64_t hash, std::size_t home, std::size_t distance, Equal equal ) const noexcept
   {
      for ( ;; ++distance ) {
         VOK_STEPS( 1 );
         const std::size_t slot = home + distance;
         if ( marks()[ slot ] < anyMark ) {
            return { slot, distance, false };
         }
         if ( marks()[ slot ] == slotMark( distance, hash ) && equal( nodes()[ slot ] ) ) {
            return { slot, distance, true };
         }
         if ( distanceAt( slot ) < distance ) {
            return { slot, distance, false };
         }
      }
   }

   Place lookUp( Query query, std::uint64_t hash ) const noexcept
   {
      return search( hash, [ &query ]( const Node & node ) {
         VOK_STEPS( 1 );
         return node.fwkKey() == query;
      } );
   }

   // Where a node goes whose key is not in the table.
   Place placeOf( std::uint64_t hash ) const noexcept
   {
      return search( hash, []( const Node & ) { return false; } );
   }

   // Whether a node may be put into a slot at which a search ended.
   bool isFree( std::size_t slot ) const noexcept
   {
      return marks()[ slot ] == 0 && slot != table_->slots;
   }

   // Accounts for a new node.
   void occupy( std::size_t slot, std::size_t distance, std::uint64_t hash ) noexcept
   {
      marks()[ slot ] = slotMark( distance, hash );
      ++table_->size;
   }

   static TableHeader * makeTable( const TableShape & shape, HashSeed seed )
   {
      return newTable( shape, seed, sizeof( Node ), alignof( Node ) );
   }

   // HashTableChange.h
   template< class Make > Node * insertMade( std::size_t slot, std::uint64_t hash, Make & make );
   Node * insertNew( std::uint64_t hash, Node & node ) noexcept;
   Node * insertAt( std::size_t slot, std::uint64_t hash, Node & node ) noexcept;
   std::size_t makeWay( std::size_t slot, std::uint64_t hash ) noexcept;
   void removeAt( Place place ) noexcept;
   void closeGap( std::size_t slot ) noexcept;
   void copy( const HashTable & other );
   static void destroy( TableHeader * table ) noexcept;

   // HashTableGrowth.h
   void rebuild( const TableShape & shape );
   std::size_t halvedHome( std::size_t slot ) const noexcept;
   std::size_t boundAfterHalving( std::size_t bound ) const noexcept;
   void halveHomes() noexcept;

   TableHeader * table_ = nullptr;
};

} // namespace Vok::Detail

#include "Vok/detail/HashTableChange.h"
#include "Vok/detail/HashTableCursor.h"
#include "Vok/detail/HashTableGrowth.h"
