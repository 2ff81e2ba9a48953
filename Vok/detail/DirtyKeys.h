// The set of changed keys that a writer keeps of a collection.
#pragma once

#include "Vok/detail/FunctionRef.h"
#include "Vok/detail/Slab.h"
#include "Vok/detail/SmallSet.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace Vok::Detail {

/// The keys of a collection whose members changed since the last batch, each once. A key that was
/// not there at the last batch, and is not there now, is forgotten: however many came and went, the
/// notes are bounded by what there was and what there is.
class DirtyKeys {
 public:
   virtual ~DirtyKeys() = default;

   /// Takes note of a change under a key, a copy of which may be kept. `insertion`: where this is
   /// the first change since the last batch, there was no member then unless `present()` says that
   /// there is none now. Says whether any key is noted now. Throws std::bad_alloc, and then nothing
   /// is noted.
   virtual bool note( const void * key, bool insertion, FunctionRef< bool() > present ) = 0;
   virtual bool contains( const void * key ) const = 0;
   virtual std::size_t size() const = 0;
   virtual void each( FunctionRef< void( const void * key ) > visit ) const = 0;

   std::uint32_t expected = 0; ///< how many keys there may be: room is made once there are some
   std::uint32_t index = 0; ///< which collection: its number in the table of its type
   std::unique_ptr< DirtyKeys > next; ///< of another collection of the same entity
};

template< class Key > class DirtyKeysOf final : public DirtyKeys {
 public:
   static void * operator new( std::size_t size ) { return slabAllocate( size ); }
   static void operator delete( void * memory, std::size_t size ) noexcept
   {
      slabFree( memory, size );
   }

   bool note( const void * key, bool insertion, FunctionRef< bool() > present ) override
   {
      const Key & k = *static_cast< const Key * >( key );
      if ( !fresh_.empty() && fresh_.contains( k ) ) {
         if ( !present() ) {
            fresh_.erase( k );
         }
         return !known_.empty() || !fresh_.empty();
      }
      if ( insertion && !known_.contains( k ) && present() ) {
         fresh_.insert( k );
         return true;
      }
      if ( known_.size() == some ) [[unlikely]] {
         known_.reserve( expected );
      }
      known_.insert( k );
      return true;
   }
   bool contains( const void * key ) const override
   {
      const Key & k = *static_cast< const Key * >( key );
      return known_.contains( k ) || fresh_.contains( k );
   }
   std::size_t size() const override { return known_.size() + fresh_.size(); }
   void each( FunctionRef< void( const void * key ) > visit ) const override
   {
      eachKey( [ &visit ]( const Key & key ) { visit( &key ); } );
   }
   template< class Visit > void eachKey( Visit && visit ) const
   {
      known_.each( visit );
      fresh_.each( visit );
   }

 private:
   static constexpr std::size_t some = 16;

   SmallSet< Key > known_; // may have been there at the last batch
   SmallSet< Key > fresh_; // were not there
};

} // namespace Vok::Detail
