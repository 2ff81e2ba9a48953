// The rare changes of a hash table's shape: growth, and what happens where its tail overflows.
// Part of HashTable.h.
#pragma once

#include "Vok/detail/HashTable.h"

#include <array>

namespace Vok::Detail {

// Writes the nodes of a table into an empty one of more homes. Homes keep their order, so both
// tables are walked from front to back; only the nodes of one old home come in any order of their
// new homes. They are gathered by the hundred and put into order by counting, which has no branches
// that a processor could predict wrongly.
template< class Node, class Lanes > class HashTable< Node, Lanes >::Mover {
   static constexpr std::size_t countedHomes = 512;

 public:
   Mover( HashTable & from, HashTable & to ) noexcept
         : from_( from ),
           to_( to ),
           homes_( to.table_->homes ),
           oneByOne_( homes_ / from.table_->homes > countedHomes / 2 )
   {
      std::fill_n( counts_.begin(), std::min( counts_.size(), homes_ ), 0 );
   }

   // Takes the node of a slot; slots come in ascending order.
   void add( std::size_t slot ) noexcept
   {
      const std::uint64_t hash = to_.hashOf( from_.nodes()[ slot ].fwkKey() );
      const std::size_t home = to_.homeOf( hash ) / homeWidth;
      if ( size_ == gathered_.size() || home - firstHome_ >= counts_.size() ) [[unlikely]] {
         flush();
         startAt( slot );
      }
      if ( home < firstHome_ || oneByOne_ ) [[unlikely]] {
         insert( slot, hash );
         return;
      }
      const std::size_t at = home - firstHome_;
      ++counts_[ at ];
      used_ = std::max( used_, at + 1 );
      gathered_[ size_ ] = { hash, slot, at };
      ++size_;
   }

   // Writes what has been gathered, behind all that was written before.
   void flush() noexcept
   {
      std::size_t behind = behind_;
      for ( std::size_t at = 0; at < used_; ++at ) {
         const std::size_t home = ( firstHome_ + at ) * homeWidth;
         const std::size_t slot = std::max( home, behind );
         behind = slot + counts_[ at ];
         counts_[ at ] = static_cast< std::uint32_t >( slot - home ); // of the home's next node
      }
      oneByOne_ = oneByOne_ || behind > to_.table_->slots;
      for ( std::size_t i = 0; i < size_; ++i ) {
         const Gathered & node = gathered_[ i ];
         if ( oneByOne_ ) {
            insert( node.slot, node.hash );
         } else {
            const std::size_t distance = counts_[ node.home ]++;
            const std::size_t slot = ( firstHome_ + node.home ) * homeWidth + distance;
            to_.marks()[ slot ] = slotMark( distance, node.hash );
            relocate( to_.nodes() + slot, from_.nodes() + node.slot );
         }
      }
      if ( !oneByOne_ ) {
         behind_ = behind;
         to_.table_->size += size_;
      }
      std::fill_n( counts_.begin(), used_, 0 );
      lastHome_ = used_ > 0 ? firstHome_ + used_ - 1 : lastHome_;
      used_ = 0;
      size_ = 0;
   }

 private:
   struct Gathered {
      std::uint64_t hash;
      std::size_t slot; // where it was
      std::size_t home; // counted from firstHome_
   };

   // Gathers anew, the node of a slot as the first.
   void startAt( std::size_t slot ) noexcept
   {
      const std::size_t oldHome = ( slot - from_.distanceAt( slot ) ) / homeWidth;
      const std::size_t lowest =
            static_cast< std::size_t >( multiply( oldHome, homes_ ).low / from_.table_->homes );
      firstHome_ = std::max( lowest, lastHome_ );
   }

   // The ordinary way for a node whose home has been written already, and for all where nodes
   // cannot be written behind each other: where the new homes of one old home are too many to
   // count, and where the tail overflows, which changes all homes.
   void insert( std::size_t slot, std::uint64_t hash ) noexcept
   {
      Node * const node = from_.nodes() + slot;
      to_.insertNew( hash, *node );
      std::destroy_at( node );
      behind_ = to_.firstBelow( behind_, anyMark );
      oneByOne_ = oneByOne_ || to_.table_->homes != homes_;
   }

   HashTable & from_;
   HashTable & to_;
   std::size_t homes_; // of `to` at first
   std::size_t lastHome_ = 0; // the last that has been written
   std::size_t behind_ = 0; // the slot behind all that has been written
   std::size_t firstHome_ = 0; // the first that is counted
   std::size_t used_ = 0; // how many are counted
   std::size_t size_ = 0;
   bool oneByOne_;
   std::array< std::uint32_t, countedHomes > counts_;
   std::array< Gathered, 128 > gathered_;
};

// Moves all nodes into a new, larger block.
template< class Node, class Lanes >
[[gnu::noinline]] void HashTable< Node, Lanes >::rebuild( const TableShape & shape )
{
   HashTable fresh;
   fresh.table_ = makeTable( shape, table_->seed );
   if ( table_->cursors != nullptr ) {
      Cursor::keepAllKeys( *table_ );
      moveCursors( *table_, *fresh.table_ );
   }
   Mover mover( *this, fresh );
   eachSlot( table_, [ &mover ]( std::size_t slot ) { mover.add( slot ); } );
   mover.flush();
   swap( fresh );
   freeTable( std::exchange( fresh.table_, nullptr ) );
}

// The home after halveHomes of the node in a slot.
template< class Node, class Lanes >
std::size_t HashTable< Node, Lanes >::halvedHome( std::size_t slot ) const noexcept
{
   const std::size_t home = ( slot - distanceAt( slot ) ) / homeWidth;
   return table_->homes % 2 == 0 ? home / 2 * homeWidth : 0;
}

// Where a cursor's bound lies after halveHomes.
template< class Node, class Lanes >
std::size_t HashTable< Node, Lanes >::boundAfterHalving( std::size_t bound ) const noexcept
{
   std::size_t behind = 0;
   for ( std::size_t slot = 0; slot < bound; ++slot ) {
      if ( marks()[ slot ] >= anyMark ) {
         behind = std::max( halvedHome( slot ), behind ) + 1;
      }
   }
   return behind;
}

// Makes the tail longer at the cost of the homes, in place. With a fair hash this is once in a
// blue moon; where keys collide on purpose it ends at one home, which no number of keys overflows.
// Homes keep their order, so every node moves down or stays.
template< class Node, class Lanes >
[[gnu::noinline]] void HashTable< Node, Lanes >::halveHomes() noexcept
{
   for ( TableCursor * cursor = table_->cursors; cursor != nullptr; cursor = cursor->next ) {
      cursor->ahead = {};
      if ( !cursor->byKey ) {
         cursor->bound = boundAfterHalving( cursor->bound );
      }
   }
   std::size_t behind = 0;
   for ( std::size_t slot = nextOccupied( table_, 0 ); slot < table_->slots;
         slot = nextOccupied( table_, slot + 1 ) ) {
      VOK_STEPS( 1 );
      const std::size_t home = halvedHome( slot );
      const std::size_t to = std::max( home, behind );
      const SlotMark mark = slotMark( to - home, marks()[ slot ] );
      if ( to != slot ) {
         marks()[ slot ] = 0;
         relocate( nodes() + to, nodes() + slot );
      }
      marks()[ to ] = mark;
      behind = to + 1;
   }
   table_->homes = table_->homes % 2 == 0 ? table_->homes / 2 : 1;
}

} // namespace Vok::Detail
