// The list of notifiees behind a publisher, and how a change is told while the list changes.
#include "Vok/Publisher.h"

#include "Vok/Entity.h"
#include "Vok/detail/ValueOps.h"

#include <algorithm>
#include <exception>
#include <new>

namespace Vok::Detail {

const void * AnyValue::as( const std::type_info & type ) const noexcept
{
   if ( !value ) {
      return nullptr;
   }
   return ops->type == &type || *ops->type == type ? value : nullptr;
}

Corvo::String AnyValue::text() const
{
   return value ? ops->text( value ) : Corvo::String();
}

void EntityLink::link( Entity & followed )
{
   unlink();
   NotifieeList & list = followed.publisher().grown();
   entity = &followed;
   next = list.links;
   from = &list.links;
   if ( next ) {
      next->from = &next;
   }
   list.links = this;
}

void EntityLink::unlink() noexcept
{
   if ( !entity ) {
      return;
   }
   *from = next;
   if ( next ) {
      next->from = from;
   }
   entity->publisher().compact();
   entity = nullptr;
   next = nullptr;
   from = nullptr;
}

} // namespace Vok::Detail

namespace Corvo {

using Vok::Detail::EntityLink;
using Vok::Detail::NotifieeList;

// ---- Notifiee ---------------------------------------------------------------------------------

Notifiee::~Notifiee()
{
   if ( first_ ) {
      first_->removeSlot( slotAtFirst_ );
   }
   if ( others_ ) {
      for ( const auto & [ publisher, slot ] : *others_ ) {
         const_cast< Publisher * >( publisher )->removeSlot( slot );
      }
   }
}

void Notifiee::publisherGone( Publisher & ) noexcept
{
}

bool Notifiee::attachedTo( const Publisher & publisher ) const
{
   return first_ == &publisher || ( others_ && others_->contains( &publisher ) );
}

void Notifiee::attached( Publisher & publisher, std::uint32_t slot )
{
   if ( !first_ ) {
      first_ = &publisher;
      slotAtFirst_ = slot;
      return;
   }
   if ( !others_ ) {
      others_ = std::make_unique< Slots >();
   }
   others_->emplace( &publisher, slot );
}

std::uint32_t & Notifiee::slotAt( const Publisher & publisher ) noexcept
{
   return first_ == &publisher ? slotAtFirst_ : others_->find( &publisher )->second;
}

void Notifiee::detached( const Publisher & publisher ) noexcept
{
   if ( first_ == &publisher ) {
      first_ = nullptr;
   } else if ( others_ ) {
      others_->erase( &publisher );
   }
}

// ---- Publisher --------------------------------------------------------------------------------

NotifieeList & Publisher::grown()
{
   if ( !list_ ) {
      list_ = new NotifieeList;
   }
   return *list_;
}

void Publisher::notifieeIs( Notifiee * notifiee )
{
   if ( notifiee->attachedTo( *this ) ) {
      return;
   }
   NotifieeList & list = grown();
   if ( list.used == list.capacity ) {
      const std::uint32_t capacity = list.capacity ? 2 * list.capacity : 1;
      auto ** slots = new ( std::nothrow ) Notifiee *[ capacity ];
      if ( !slots ) {
         compact();
         throw std::bad_alloc();
      }
      std::copy( list.slots, list.slots + list.used, slots );
      delete[] list.slots;
      list.slots = slots;
      list.capacity = capacity;
   }
   try {
      notifiee->attached( *this, list.used );
   } catch ( ... ) {
      compact();
      throw;
   }
   list.slots[ list.used++ ] = notifiee;
   ++list.live;
}

void Publisher::notifieeDel( Notifiee * notifiee ) noexcept
{
   if ( notifiee->attachedTo( *this ) ) {
      const std::uint32_t slot = notifiee->slotAt( *this );
      notifiee->detached( *this );
      removeSlot( slot );
   }
}

void Publisher::removeSlot( std::uint32_t slot ) noexcept
{
   list_->slots[ slot ] = nullptr;
   --list_->live;
   compact();
}

// Moves the slots together where most are empty, and frees what nobody needs, unless a notification
// is walking the list.
void Publisher::compact() noexcept
{
   NotifieeList & list = *list_;
   if ( busy() ) {
      return;
   }
   if ( list.used > 2 * list.live ) {
      std::uint32_t to = 0;
      for ( std::uint32_t from = 0; from != list.used; ++from ) {
         if ( Notifiee * const notifiee = list.slots[ from ] ) {
            list.slots[ to ] = notifiee;
            notifiee->slotAt( *this ) = to++;
         }
      }
      list.used = to;
   }
   if ( list.live == 0 && !list.links ) {
      delete[] list.slots;
      delete &list;
      list_ = nullptr;
   }
}

void Publisher::publishChangeRecursive( const Change & change )
{
   if ( hasNotifiee() ) {
      tell( change, list_->used );
   }
}

// Tells the first `upTo` slots. The list may be changed by those who are told: slots are read
// anew at each step, and holes are closed by the outermost notification only.
void Publisher::tell( const Change & change, std::uint32_t upTo )
{
   const Ptr< Vok::Entity > alive( &change.entity );
   std::exception_ptr first;
   ++list_->depth;
   for ( std::uint32_t i = 0; i != upTo; ++i ) {
      if ( Notifiee * const notifiee = list_->slots[ i ] ) {
         try {
            notifiee->onChange( change );
         } catch ( ... ) {
            if ( !first ) {
               first = std::current_exception();
            }
         }
      }
   }
   const bool outermost = --list_->depth == 0;
   if ( outermost && list_->used > 2 * list_->live ) [[unlikely]] {
      compact();
   }
   if ( first ) {
      std::rethrow_exception( first );
   }
}

void Publisher::linksMoved() noexcept
{
   if ( list_ ) {
      for ( EntityLink * link = list_->links; link; link = link->next ) {
         ++*link->shapeChanges;
      }
   }
}

void Publisher::close() noexcept
{
   NotifieeList * const list = list_;
   list->depth = 1; // whoever is told now cannot make the list go away
   for ( EntityLink * link = list->links; link; link = link->next ) {
      link->entity = nullptr;
   }
   for ( std::uint32_t i = 0; i != list->used; ++i ) {
      if ( Notifiee * const notifiee = list->slots[ i ] ) {
         notifiee->detached( *this );
         list->slots[ i ] = nullptr;
         notifiee->publisherGone( *this );
      }
   }
   delete[] list->slots;
   delete list;
   list_ = nullptr;
}

} // namespace Corvo
