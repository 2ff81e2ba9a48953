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
      if ( !standing ) {
         return nullptr;
      }
      return byKey ? found( bound - 1 ) : nodeOf( bound - 1 );
   }

   // The node that the cursor stands on.
   const Node & operator*() const noexcept
   {
      return byKey ? *found( bound - 1 ) : *nodeOf( bound - 1 );
   }

   bool atEnd() const noexcept { return table == nullptr; }

   void next() noexcept
   {
      if ( byKey ) {
         nextKey();
      } else if ( table != nullptr ) {
         if ( ahead.any() || findAhead() ) {
            bound = slotNumber( group, ahead.first() ) + 1;
            ahead.dropFirst();
            standing = true;
         } else {
            detach();
         }
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
      if ( standing ) {
         keys->push_back( nodeOf( bound - 1 )->fwkKey() );
      }
      for ( rest.next(); !rest.atEnd(); rest.next() ) {
         keys->push_back( ( *rest ).fwkKey() );
      }
      keys_ = std::move( keys );
      bound = standing ? 1 : 0;
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
   const Node * nodeOf( std::size_t slot ) const noexcept
   {
      return nodeAt( *table, slot / slotsCounted, slot % slotsCounted );
   }

   const Node * found( std::size_t index ) const noexcept
   {
      HashTable map;
      map.table_ = table; // lent for one lookup
      const Node * const node = map.find( ( *keys_ )[ index ] );
      map.table_ = nullptr;
      return node;
   }

   // Whether there is a node from `bound` on; the first of them are ahead then.
   bool findAhead() noexcept
   {
      group = bound / slotsCounted;
      if ( group <= table->last ) {
         ahead = marksAt( *table, group ).empty().others().from( bound % slotsCounted );
      }
      while ( !ahead.any() && group < table->last ) {
         ahead = marksAt( *table, ++group ).empty().others();
      }
      return ahead.any();
   }

   void nextKey() noexcept
   {
      standing = false;
      while ( table != nullptr && !standing ) {
         if ( bound == keys_->size() ) {
            detach();
         } else {
            standing = found( bound ) != nullptr;
            ++bound;
         }
      }
   }

   std::shared_ptr< const std::vector< Key > > keys_;
};

} // namespace Vok::Detail
