// Telling of changes that were stored together, when all of them are in place.
#pragma once

#include "Vok/Entity.h"
#include "Vok/Publisher.h"
#include "Vok/detail/Staged.h"

#include <cstdint>
#include <memory>
#include <memory_resource>
#include <new>
#include <utility>
#include <vector>

namespace Vok::Detail {

/// The staged changes of a batch, from their preparation until all who listen have been told.
class PendingTell {
 public:
   /// `memory` is for what is noted; it is given back when the memory ends.
   explicit PendingTell( std::pmr::memory_resource & memory ) : memory_( memory ),
                                                                entries_( &memory ) {}
   PendingTell( const PendingTell & ) = delete;
   PendingTell & operator=( const PendingTell & ) = delete;
   ~PendingTell();

   /// Takes a change in; null is none. Throws std::bad_alloc.
   void add( std::unique_ptr< Staged > change, Entity & owner, AttrId id );

   /// Makes a change of these arguments in that memory. Throws std::bad_alloc.
   template< class Change, class... Arguments >
   void make( Entity & owner, AttrId id, Arguments &&... arguments )
   {
      Entry & entry = entries_.emplace_back();
      void * const room = memory_.allocate( sizeof( Change ), alignof( Change ) );
      entry.change = new ( room ) Change( std::forward< Arguments >( arguments )... );
      entry.change->owner = Corvo::Ptr< Entity >( &owner );
      entry.change->id = id;
   }

   /// Stores all changes. Who is attached now will be told; who attaches later will not.
   void commit() noexcept;

   /// Tells of each change in turn. The first exception of a notifiee is thrown on when all are
   /// told.
   void tell();

 private:
   struct Entry {
      Staged * change = nullptr; // while it could not be made
      std::uint32_t upTo = 0; // the notifiees to be told: those that were there
      bool held = false; // the list of notifiees is kept from moving together
      bool allocated = false; // by itself
   };

   static void hold( Entry & entry ) noexcept;
   static void letGo( Entry & entry ) noexcept;

   std::pmr::memory_resource & memory_;
   std::pmr::vector< Entry > entries_; // in their order
};

} // namespace Vok::Detail
