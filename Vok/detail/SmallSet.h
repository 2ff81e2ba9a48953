// A set of keys that mostly has one.
#pragma once

#include "Vok/HSet.h"

#include <cstddef>
#include <optional>

namespace Vok::Detail {

/// The first key stands in the set itself, so that one alone needs no table: most batches change
/// one member of a collection.
template< class Key > class SmallSet {
 public:
   std::size_t size() const noexcept { return more_.size() + ( first_ ? 1U : 0U ); }
   bool empty() const noexcept { return !first_ && more_.empty(); }

   void reserve( std::size_t size ) { more_.reserve( size ); }

   bool contains( const Key & key ) const
   {
      return ( first_ && *first_ == key ) || ( !more_.empty() && more_.find( key ) );
   }

   /// Adds a copy of the key. False where the set has it already. Throws std::bad_alloc, and is
   /// then as before.
   bool insert( const Key & key )
   {
      if ( first_ ) {
         return !( *first_ == key ) && more_.insert( key );
      }
      if ( !more_.empty() && more_.find( key ) ) {
         return false;
      }
      first_.emplace( key );
      return true;
   }

   /// Removes the key, which is there.
   void erase( const Key & key ) noexcept
   {
      if ( first_ && *first_ == key ) {
         first_.reset();
      } else {
         more_.erase( key );
      }
   }

   /// Calls visit( key ) for each, in no order.
   template< class Visit > void each( Visit && visit ) const
   {
      if ( first_ ) {
         visit( *first_ );
      }
      for ( typename HSet< Key >::Cursor cursor( more_ ); !cursor.atEnd(); cursor.next() ) {
         visit( cursor.node()->key );
      }
   }

 private:
   std::optional< Key > first_;
   HSet< Key > more_; // the others
};

} // namespace Vok::Detail
