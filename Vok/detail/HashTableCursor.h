// One iteration over a hash table that may change meanwhile. Part of HashTable.h.
#pragma once

#include "Vok/detail/HashTable.h"

#include <memory>
#include <vector>

namespace Vok::Detail {

template< class Node, class Marks > class HashTable< Node, Marks >::Cursor : private TableCursor {
 public:
   // Stands on the first node.
   explicit Cursor( const HashTable & map ) noexcept
   {
      if ( map.size() > 0 ) {
         attach( map.table_ );
         next();
      }
   }

   // Null at the end, and where the node that the cursor stood on has been deleted.
   const Node * node() const noexcept
   {
      if ( byKey && tried_ > 0 ) [[unlikely]] {
         return found( tried_ - 1 );
      }
      return static_cast< const Node * >( at );
   }

   // The node that the cursor stands on.
   const Node & operator*() const noexcept
   {
      return byKey ? *found( tried_ - 1 ) : *static_cast< const Node * >( at );
   }

   bool atEnd() const noexcept { return table == nullptr; }

   void next() noexcept
   {
      if ( ahead.any() || findAhead() ) {
         const std::size_t slot = ahead.first();
         ahead.dropFirst();
         seen = slot + 1;
         at = groupNodes_ + slot;
      }
   }

   // Prepares for the loss of all positions: copies the keys still to be seen. Throws what the
   // copying throws, and the cursor is as it was.
   void keepKeys()
   {
      if ( byKey ) {
         return;
      }
      auto keys = std::make_shared< std::vector< Key > >();
      keys->reserve( table->size );
      Cursor rest( *this );
      if ( const Node * const standing = node() ) {
         keys->push_back( standing->fwkKey() );
      }
      tried_ = keys->size();
      for ( rest.next(); !rest.atEnd(); rest.next() ) {
         keys->push_back( ( *rest ).fwkKey() );
      }
      keys_ = std::move( keys );
      at = nullptr;
      ahead = {};
      byKey = true;
   }

   // The same for all cursors on a table; where one throws, some may have changed over already.
   static void keepAllKeys( TableHeader & table )
   {
      for ( TableCursor * cursor = table.cursors; cursor != nullptr; cursor = cursor->next ) {
         static_cast< Cursor * >( cursor )->keepKeys();
      }
   }

 private:
   const Node * found( std::size_t index ) const noexcept
   {
      HashTable map;
      map.table_ = table; // lent for one lookup
      const Node * const node = map.find( ( *keys_ )[ index ] );
      map.table_ = nullptr;
      return node;
   }

   // The way on where no slot is known to be ahead. Says whether one is now; else the cursor has
   // gone to its next key, or is at the end.
   bool findAhead() noexcept
   {
      if ( table == nullptr || byKey ) {
         nextKey();
         return false;
      }
      ahead = marksAt( *table, group ).empty().others().from( seen );
      while ( !ahead.any() && group < table->last ) {
         ahead = marksAt( *table, ++group ).empty().others();
      }
      if ( !ahead.any() ) {
         detach();
         return false;
      }
      groupNodes_ = nodeAt( *table, group, 0 );
      return true;
   }

   void nextKey() noexcept
   {
      for ( bool standing = false; table != nullptr && !standing; ) {
         if ( tried_ == keys_->size() ) {
            detach();
         } else {
            standing = found( tried_ ) != nullptr;
            ++tried_;
         }
      }
   }

   Node * groupNodes_ = nullptr; // of the group, where slots are ahead
   std::size_t tried_ = 0; // keys that were looked for; the cursor stands on the last of them
   std::shared_ptr< const std::vector< Key > > keys_;
};

} // namespace Vok::Detail
