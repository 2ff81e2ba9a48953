// The list of notifiees behind a publisher, and how a change is told while the list changes.
#include "Vok/Publisher.h"

#include "Vok/Entity.h"
#include "Vok/detail/ReplicaSlots.h"
#include "Vok/detail/Slab.h"
#include "Vok/detail/ValueOps.h"

#include <algorithm>
#include <exception>
#include <new>

namespace Vok::Detail {

const void * AnyValue::asEqual( const std::type_info & type ) const noexcept
{
   return *ops->type == type ? value : nullptr;
}

Corvo::String AnyValue::text() const
{
   return value ? ops->text( value ) : Corvo::String();
}

// ---- NotifieeList -----------------------------------------------------------------------------

NotifieeList::~NotifieeList()
{
   if ( capacity != 1 ) {
      delete[] many;
   }
   while ( others ) {
      delete std::exchange( others, others->next );
   }
}

void * NotifieeList::operator new( std::size_t size )
{
   return slabAllocate( size );
}

void NotifieeList::operator delete( void * memory, std::size_t size ) noexcept
{
   slabFree( memory, size );
}

void NotifieeList::grow()
{
   auto ** const grown = new Corvo::Notifiee *[ 2 * std::size_t{ capacity } ];
   std::copy( slots(), slots() + used, grown );
   if ( capacity != 1 ) {
      delete[] many;
   }
   many = grown;
   capacity *= 2;
}

SlotPage ** NotifieeList::link( const SlotPage & linked ) noexcept
{
   if ( page == &linked ) {
      return &page;
   }
   for ( Page * other = others; other; other = other->next ) {
      if ( other->page == &linked ) {
         return &other->page;
      }
   }
   return nullptr;
}

void NotifieeList::addLink( SlotPage & added )
{
   if ( page ) {
      others = new Page{ &added, others };
   } else {
      page = &added;
   }
}

// The first of the others takes the place.
void NotifieeList::removeLink( SlotPage ** removed ) noexcept
{
   Page * const first = others;
   *removed = first ? first->page : nullptr;
   if ( first ) {
      others = first->next;
      delete first;
   }
}

} // namespace Vok::Detail

namespace Corvo {

using Vok::Detail::NotifieeList;
using Vok::Detail::SlotPage;

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
   if ( NotifieeList * const list = notifiees() ) {
      return *list;
   }
   auto * const list = new NotifieeList;
   list->page = static_cast< SlotPage * >( list_ );
   list_ = list;
   return *list;
}

void Publisher::notifieeIs( Notifiee * notifiee )
{
   if ( notifiee->attachedTo( *this ) ) {
      return;
   }
   NotifieeList & list = grown();
   try {
      if ( list.used == list.capacity ) {
         list.grow();
      }
      notifiee->attached( *this, list.used );
   } catch ( ... ) {
      compact();
      throw;
   }
   list.slots()[ list.used++ ] = notifiee;
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
   NotifieeList & list = *notifiees();
   list.slots()[ slot ] = nullptr;
   --list.live;
   compact();
}

// Moves the slots together where most are empty, and frees what nobody needs, unless a notification
// is walking the list.
void Publisher::compact() noexcept
{
   if ( busy() ) {
      return;
   }
   NotifieeList & list = *notifiees();
   Notifiee ** const slots = list.slots();
   if ( list.used > 2 * list.live ) {
      std::uint32_t to = 0;
      for ( std::uint32_t from = 0; from != list.used; ++from ) {
         if ( Notifiee * const notifiee = slots[ from ] ) {
            slots[ to ] = notifiee;
            notifiee->slotAt( *this ) = to++;
         }
      }
      list.used = to;
   }
   if ( list.live == 0 && !list.others ) {
      list_ = list.page;
      delete &list;
   }
}

// A notification: while it runs, the entity lives and the slots stay where they are. The outermost
// one closes holes at its end.
class Publisher::Telling {
 public:
   Telling( Publisher & publisher, Vok::Entity & entity ) noexcept
         : publisher_( publisher ),
           entity_( entity ),
           list_( *static_cast< NotifieeList * >( publisher.list_ ) )
   {
      Vok::Detail::retain( &entity_ );
      ++list_.depth;
   }
   Telling( const Telling & ) = delete;
   Telling & operator=( const Telling & ) = delete;
   [[gnu::always_inline]] ~Telling()
   {
      if ( --list_.depth == 0 && list_.used > 2 * list_.live ) [[unlikely]] {
         publisher_.compact();
      }
      Vok::Detail::release( &entity_ );
   }

   NotifieeList & list() const noexcept { return list_; }

 private:
   Publisher & publisher_;
   Vok::Entity & entity_;
   NotifieeList & list_;
};

void Publisher::publishChangeRecursive( const Change & change )
{
   if ( hasNotifiee() ) {
      const std::uint32_t used = static_cast< const NotifieeList * >( list_ )->used;
      used == 1 ? tellOne( change ) : tell( change, used );
   }
}

// Tells the only slot, which is taken. Its exception needs not wait for others.
void Publisher::tellOne( const Change & change )
{
   const Telling telling( *this, change.entity );
   telling.list().slots()[ 0 ]->onChange( change );
}

// Tells the first `upTo` slots. The list may be changed by those who are told: slots are read anew
// at each step.
void Publisher::tell( const Change & change, std::uint32_t upTo )
{
   const Telling telling( *this, change.entity );
   const NotifieeList & list = telling.list();
   std::exception_ptr first;
   for ( std::uint32_t i = 0; i != upTo; ++i ) {
      if ( Notifiee * const notifiee = list.capacity == 1 ? list.one : list.many[ i ] ) {
         try {
            notifiee->onChange( change );
         } catch ( ... ) {
            if ( !first ) {
               first = std::current_exception();
            }
         }
      }
   }
   if ( first ) {
      std::rethrow_exception( first );
   }
}

// ---- Links ------------------------------------------------------------------------------------

// Links the entity; doing so twice is one link. Throws std::bad_alloc, and is then as before.
void Publisher::linkIs( SlotPage & page )
{
   if ( !list_ ) {
      list_ = &page;
      return;
   }
   if ( list_ == &page ) {
      return;
   }
   NotifieeList & list = grown();
   if ( !list.link( page ) ) {
      try {
         list.addLink( page );
      } catch ( ... ) {
         compact();
         throw;
      }
   }
}

// Silent where the page has no link.
void Publisher::linkDel( SlotPage & page ) noexcept
{
   if ( list_ == &page ) {
      list_ = nullptr;
      return;
   }
   NotifieeList * const list = notifiees();
   if ( SlotPage ** const link = list ? list->link( page ) : nullptr ) {
      list->removeLink( link );
      compact();
   }
}

// What one page links, another one does in its place.
void Publisher::linkMoves( SlotPage & from, SlotPage & to ) noexcept
{
   if ( list_ == &from ) {
      list_ = &to;
      return;
   }
   NotifieeList * const list = notifiees();
   SlotPage ** const link = list ? list->link( from ) : nullptr;
   if ( link && list->link( to ) ) {
      linkDel( from );
   } else if ( link ) {
      *link = &to;
   }
}

void Publisher::linksMoved() noexcept
{
   if ( !list_ ) {
      return;
   }
   NotifieeList * const list = notifiees();
   if ( !list ) {
      static_cast< SlotPage * >( list_ )->left();
      return;
   }
   if ( list->page ) {
      list->page->left();
   }
   for ( const auto * other = list->others; other; other = other->next ) {
      other->page->left();
   }
}

void Publisher::close() noexcept
{
   NotifieeList * const list = notifiees();
   if ( !list ) {
      static_cast< SlotPage * >( list_ )->gone( *this );
      return;
   }
   list->depth = 1; // whoever is told now cannot make the list go away
   if ( list->page ) {
      list->page->gone( *this );
   }
   for ( const auto * other = list->others; other; other = other->next ) {
      other->page->gone( *this );
   }
   for ( std::uint32_t i = 0; i != list->used; ++i ) {
      if ( Notifiee * const notifiee = list->slots()[ i ] ) {
         notifiee->detached( *this );
         list->slots()[ i ] = nullptr;
         notifiee->publisherGone( *this );
      }
   }
   delete list;
   list_ = nullptr;
}

} // namespace Corvo
