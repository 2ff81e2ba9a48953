// Telling of changes that were stored together, when all of them are in place.
#pragma once

#include "Vok/Entity.h"
#include "Vok/Publisher.h"
#include "Vok/detail/Staged.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

namespace Vok::Detail {

/// The staged changes of a batch, from their preparation until all who listen have been told.
class PendingTell {
 public:
   PendingTell() = default;
   PendingTell( const PendingTell & ) = delete;
   PendingTell & operator=( const PendingTell & ) = delete;
   ~PendingTell();

   /// Takes a change in; null is none. Throws std::bad_alloc.
   void add( std::unique_ptr< Staged > change, Entity & owner, AttrId id );

   /// The same for the most frequent kind, many of which are in one block of memory.
   void addValue( void * storage, OwnedValue next, Entity & owner, AttrId id );

   /// Stores all changes. Who is attached now will be told; who attaches later will not.
   void commit() noexcept;

   /// Tells of each change in turn. The first exception of a notifiee is thrown on when all are
   /// told.
   void tell();

 private:
   struct Entry {
      Staged * change;
      std::uint32_t upTo = 0; // the notifiees to be told: those that were there
      bool held = false; // the list of notifiees is kept from moving together
   };

   void add( Staged & change, Entity & owner, AttrId id );
   static void hold( Entry & entry ) noexcept;
   static void letGo( Entry & entry ) noexcept;

   std::deque< StagedValue > values_;
   std::vector< std::unique_ptr< Staged > > others_;
   std::vector< Entry > entries_; // of all, in their order
};

} // namespace Vok::Detail
