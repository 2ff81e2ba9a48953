// Insertion and removal in a hash table, growth, copying and destruction. Part of HashTable.h.
#pragma once

#include "Vok/detail/HashTable.h"

#include <algorithm>
#include <memory>

namespace Vok::Detail {

// The insertion for which there is no block, or no room in it. The node is made before anything
// moves.
template< class Node, class Marks > template< class Make >
[[gnu::noinline]] Node * HashTable< Node, Marks >::insertGrowing( Make & make )
{
   Node node = make();
   if ( table_ == nullptr ) {
      reserve( 1 );
   } else {
      rebuild( tableShape( table_->room + 1 ) );
   }
   return insertNew( node );
}

// The insertion of a node whose home is full.
template< class Node, class Marks > template< class Make > [[gnu::noinline]] Node *
HashTable< Node, Marks >::insertBehind( std::uint64_t hash, Make & make )
{
   const Place place = placeBehind( hash );
   ::new ( static_cast< void * >( place.node ) ) Node( make() );
   goesPast( hash, place.group() );
   occupy( place.group(), place.slot(), hash );
   return place.node;
}

// Inserts a node whose key is not in the table, which has room for it. `node` is moved from.
template< class Node, class Marks >
Node * HashTable< Node, Marks >::insertNew( Node & node ) noexcept
{
   const Place place = newPlace( hashOf( node.fwkKey() ) );
   std::construct_at( place.node, std::move( node ) );
   return place.node;
}

// Accounts for a node that is about to be put there.
template< class Node, class Marks >
auto HashTable< Node, Marks >::newPlace( std::uint64_t hash ) noexcept -> Place
{
   const std::size_t home = homeOf( *table_, hash );
   if ( const auto empty = marksAt( *table_, home ).empty(); empty.any() ) [[likely]] {
      const std::size_t slot = empty.first();
      occupy( home, slot, hash );
      return { nodeAt( *table_, home, slot ), slotNumber( home, slot ) };
   }
   const Place place = placeBehind( hash );
   goesPast( hash, place.group() );
   occupy( place.group(), place.slot(), hash );
   return place;
}

// Accounts for a new node.
template< class Node, class Marks > inline void HashTable< Node, Marks >::occupy(
      std::size_t group, std::size_t slot, std::uint64_t hash ) noexcept
{
   TableHeader & table = *table_;
   Marks::set( table.groups()[ group ], slot, MarkGroup::markOf( hash ) );
   ++table.size;
}

// Removes a node that has been moved from.
template< class Node, class Marks > inline void HashTable< Node, Marks >::remove(
      Node * node, std::size_t group, std::size_t slot ) noexcept
{
   TableHeader & table = *table_;
   std::destroy_at( node );
   Marks::set( table.groups()[ group ], slot, 0 );
   --table.size;
   if ( table.cursors != nullptr ) [[unlikely]] {
      cursorsAfterRemoval( table, node );
   }
}

// A node goes past the groups from its home up to `group`, in which it stands.
template< class Node, class Marks > [[gnu::noinline]] void HashTable< Node, Marks >::goesPast(
      std::uint64_t hash, std::size_t group ) noexcept
{
   for ( Groups groups( *table_, hash ); *groups != group; groups.next() ) {
      VOK_STEPS( 1 );
      table_->groups()[ *groups ].goesPast( hash );
   }
}

// The same when it has gone.
template< class Node, class Marks > [[gnu::noinline]] void HashTable< Node, Marks >::wentPast(
      std::uint64_t hash, std::size_t group ) noexcept
{
   for ( Groups groups( *table_, hash ); *groups != group; groups.next() ) {
      VOK_STEPS( 1 );
      table_->groups()[ *groups ].wentPast( hash );
   }
}

// Moves all nodes into a new, larger block.
template< class Node, class Marks >
[[gnu::noinline]] void HashTable< Node, Marks >::rebuild( const TableShape & shape )
{
   HashTable fresh;
   fresh.table_ = makeTable( shape, table_->seed );
   if ( table_->cursors != nullptr ) {
      Cursor::keepAllKeys( *table_ );
   }
   // The header as it stays: what stands in the block would be read anew after each store.
   TableHeader * const block = fresh.table_;
   const TableHeader to = *block;
   std::size_t atHome = 0;
   auto move = [ & ]( Node * node ) {
      VOK_STEPS( 1 );
      const std::uint64_t hash = hashOf( node->fwkKey(), to.seed );
      const std::size_t home = homeOf( to, hash );
      if ( const auto empty = marksAt( *block, home ).empty(); empty.any() ) [[likely]] {
         const std::size_t slot = empty.first();
         Marks::set( block->groups()[ home ], slot, MarkGroup::markOf( hash ) );
         ++atHome;
         relocate( nodeAt( to, home, slot ), node );
      } else {
         relocate( fresh.newPlace( hash ).node, node );
      }
   };
   for ( std::size_t group = 0; group <= table_->last; ++group ) {
      fetchKeys( *table_, group + 1 ); // each would be waited for
      eachNodeOf( *table_, group, move );
   }
   block->size += atHome;
   moveCursors( *table_, *fresh.table_ );
   swap( fresh );
   freeTable( std::exchange( fresh.table_, nullptr ) );
}

template< class Node, class Marks > void HashTable< Node, Marks >::copy( const HashTable & other )
{
   if ( other.size() == 0 ) {
      return;
   }
   // Spare room is copied, a desert is not.
   HashTable fresh;
   fresh.reserve( std::min( other.table_->room, 2 * other.size() ) );
   eachNode( *other.table_, [ &fresh ]( const Node * original ) {
      Node node( *original );
      fresh.insertNew( node );
   } );
   swap( fresh );
}

template< class Node, class Marks >
void HashTable< Node, Marks >::destroy( TableHeader * table ) noexcept
{
   if constexpr ( !std::is_trivially_destructible_v< Node > ) {
      eachNode( *table, []( Node * node ) { std::destroy_at( node ); } );
   }
   freeTable( table );
}

} // namespace Vok::Detail
