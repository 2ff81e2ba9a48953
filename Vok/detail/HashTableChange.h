// Insertion and removal in a hash table, copying and destruction. Part of HashTable.h.
#pragma once

#include "Vok/detail/HashTable.h"
#include "Vok/detail/MarkShift.h"

#include <algorithm>
#include <memory>

namespace Vok::Detail {

// The insertion that is more than a node put into an empty slot: there may be no block, no room in
// it, or a node in the slot at which the search has ended. The node is made before anything moves.
template< class Node, class Lanes > template< class Make > [[gnu::noinline]] Node *
HashTable< Node, Lanes >::insertMade( std::size_t slot, std::uint64_t hash, Make & make )
{
   Node node = make();
   if ( table_ == nullptr ) {
      reserve( 1 );
      return insertNew( hashOf( node.fwkKey() ), node );
   }
   if ( table_->size == table_->room ) {
      rebuild( tableShape( 2 * table_->room ) );
      return insertNew( hash, node );
   }
   return insertAt( slot, hash, node );
}

// Inserts a node whose key is not in the table, which has room for it. `node` is moved from.
template< class Node, class Lanes > [[gnu::noinline]] Node * HashTable< Node, Lanes >::insertNew(
      std::uint64_t hash, Node & node ) noexcept
{
   return insertAt( placeOf( hash ).slot, hash, node );
}

// The same for a known slot: the one at which a search for the node's key ends.
template< class Node, class Lanes > Node * HashTable< Node, Lanes >::insertAt(
      std::size_t slot, std::uint64_t hash, Node & node ) noexcept
{
   if ( !isFree( slot ) ) {
      slot = makeWay( slot, hash );
   }
   Node * const to = std::construct_at( nodes() + slot, std::move( node ) );
   occupy( slot, slot - homeOf( hash ), hash );
   return to;
}

// Empties the slot at which a search has ended by moving its node, and those behind it, one up.
// Returns the slot, which is another one where the tail has overflowed.
template< class Node, class Lanes >
std::size_t HashTable< Node, Lanes >::makeWay( std::size_t slot, std::uint64_t hash ) noexcept
{
   std::size_t end = firstBelow( slot, anyMark );
   while ( end == table_->slots ) {
      halveHomes();
      slot = placeOf( hash ).slot;
      end = firstBelow( slot, anyMark );
   }
   VOK_STEPS( end - slot );
   marksUp< Lanes >( marks(), slot, end );
   relocateMany( nodes() + slot + 1, nodes() + slot, end - slot );
   if ( table_->cursors != nullptr ) [[unlikely]] {
      cursorsAfterInsertion( *table_, slot, end );
   }
   return slot;
}

// Removes the node of a place, which has been moved from. As a rule the nodes of its home end
// before the next home begins, and the last of them takes the slot. A cursor could miss that one,
// or see it twice; where there is a cursor, all nodes behind move down instead.
template< class Node, class Lanes >
[[gnu::always_inline]] inline void HashTable< Node, Lanes >::removeAt( Place place ) noexcept
{
   std::destroy_at( nodes() + place.slot );
   --table_->size;
   const std::size_t home = place.slot - place.distance;
   const auto others = Lanes::load( marks() + home ).below( Lanes::ramp() );
   const std::size_t behind = home + others.first();
   if ( others.any() && marks()[ behind ] < movableMark && table_->cursors == nullptr ) [[likely]] {
      SlotMark & last = marks()[ behind - 1 ];
      SlotMark & gap = marks()[ place.slot ];
      gap = static_cast< SlotMark >( ( gap & 0xff00 ) | ( last & 0xff ) );
      last = 0;
      relocateOrStay( nodes() + place.slot, nodes() + behind - 1 );
   } else {
      closeGap( place.slot );
   }
}

// Moves the nodes behind a slot one down, up to the first that stands where its home begins.
template< class Node, class Lanes >
[[gnu::noinline]] void HashTable< Node, Lanes >::closeGap( std::size_t slot ) noexcept
{
   const std::size_t end = firstBelow( slot + 1, movableMark );
   if ( !marksDown< Lanes >( marks(), slot, end ) ) {
      SlotMark * const mark = marks();
      for ( std::size_t i = slot + 1; i < end; ++i ) {
         mark[ i - 1 ] = slotMark( distanceAt( i ) - 1, mark[ i ] );
      }
      mark[ end - 1 ] = 0;
   }
   VOK_STEPS( end - slot );
   relocateMany( nodes() + slot, nodes() + slot + 1, end - slot - 1 );
   if ( table_->cursors != nullptr ) {
      cursorsAfterRemoval( *table_, slot, end );
   }
}

template< class Node, class Lanes > void HashTable< Node, Lanes >::copy( const HashTable & other )
{
   if ( other.size() == 0 ) {
      return;
   }
   // Spare room is copied, a desert is not.
   HashTable fresh;
   fresh.reserve( std::min( other.table_->room, 2 * other.size() ) );
   eachSlot( other.table_, [ &other, &fresh ]( std::size_t slot ) {
      Node node( static_cast< const Node & >( other.nodes()[ slot ] ) );
      const std::uint64_t hash = fresh.hashOf( node.fwkKey() );
      fresh.insertNew( hash, node );
   } );
   swap( fresh );
}

template< class Node, class Lanes >
void HashTable< Node, Lanes >::destroy( TableHeader * table ) noexcept
{
   if constexpr ( !std::is_trivially_destructible_v< Node > ) {
      eachSlot(
            table, [ table ]( std::size_t slot ) { std::destroy_at( nodesOf( table ) + slot ); } );
   }
   freeTable( table );
}

} // namespace Vok::Detail
