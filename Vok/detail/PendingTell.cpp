// Committing staged changes and telling of them.
#include "Vok/detail/PendingTell.h"

#include <exception>
#include <utility>

namespace Vok::Detail {

PendingTell::~PendingTell()
{
   for ( Entry & entry : entries_ ) {
      letGo( entry );
   }
   for ( const Entry & entry : entries_ ) {
      if ( entry.allocated ) {
         delete entry.change;
      } else if ( entry.change ) {
         entry.change->~Staged();
      }
   }
}

void PendingTell::add( std::unique_ptr< Staged > change, Entity & owner, AttrId id )
{
   if ( change ) {
      Entry & entry = entries_.emplace_back();
      entry.change = change.release();
      entry.allocated = true;
      entry.change->owner = Corvo::Ptr< Entity >( &owner );
      entry.change->id = id;
   }
}

void PendingTell::hold( Entry & entry ) noexcept
{
   Corvo::Publisher & publisher = entry.change->owner->publisher();
   if ( publisher.hasNotifiee() ) {
      entry.held = true;
      entry.upTo = publisher.notifiees()->used;
      ++publisher.notifiees()->holds;
   }
}

void PendingTell::letGo( Entry & entry ) noexcept
{
   if ( entry.held ) {
      Corvo::Publisher & publisher = entry.change->owner->publisher();
      entry.held = false;
      --publisher.notifiees()->holds;
      publisher.compact();
   }
}

void PendingTell::commit() noexcept
{
   for ( Entry & entry : entries_ ) {
      entry.change->commit();
      hold( entry );
   }
}

void PendingTell::tell()
{
   std::exception_ptr first;
   for ( Entry & entry : entries_ ) {
      if ( !entry.held ) {
         continue;
      }
      Staged & change = *entry.change;
      bool & ofBatch = change.owner->publisher().notifiees()->ofBatch;
      const bool outer = std::exchange( ofBatch, true );
      const auto tellOne = [ & ]( AnyValue key, AnyValue oldValue ) {
         try {
            change.owner->publisher().tell(
                  Corvo::Change( *change.owner, change.id, key, oldValue ), entry.upTo );
         } catch ( ... ) {
            if ( !first ) {
               first = std::current_exception();
            }
         }
      };
      change.notify( tellOne );
      ofBatch = outer;
      letGo( entry );
   }
   if ( first ) {
      std::rethrow_exception( first );
   }
}

} // namespace Vok::Detail
