// Change notification: Corvo::Publisher, Corvo::Notifiee and the Corvo::Change they exchange.
#pragma once

#include "Vok/Export.h"
#include "Vok/String.h"
#include "Vok/detail/AnyValue.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <typeinfo>
#include <unordered_map>

namespace Vok {

class Entity;

/// The number of an attribute in its type: 154 for the name, 258 and up for an entity's own
/// attributes, 2 and up for the fields of a value.
using AttrId = std::uint32_t;

namespace Detail {

class DirtyState;
struct EntityAccess;
struct Listeners;
struct NotifieeList;
class PendingTell;
class SlotPage;

} // namespace Detail
} // namespace Vok

namespace Corvo {

class Publisher;

/// One change, which has already been stored. It is valid during the call that hands it out.
struct VOK_EXPORT Change {
   /// The entity whose attribute changed.
   Vok::Entity & entity;

   /// Which attribute changed.
   Vok::AttrId attrId;

   Change( Vok::Entity & changed, Vok::AttrId id, Vok::Detail::AnyValue key,
         Vok::Detail::AnyValue oldValue ) noexcept
         : entity( changed ),
           attrId( id ),
           key_( key ),
           old_( oldValue )
   {
   }

   /// The key of the member that changed; null where the attribute has no keys, or K is not their
   /// type.
   template< class K > const K * key() const noexcept
   {
      return static_cast< const K * >( key_.as( typeid( K ) ) );
   }

   /// The value before the change, V as the accessor gives it; null for an insertion, or where V
   /// is not its type. For a child or a reference V is the `Corvo::Ptr`, for an optional the
   /// whole optional.
   template< class V > const V * oldValue() const noexcept
   {
      return static_cast< const V * >( old_.as( typeid( V ) ) );
   }

   /// The same without knowing the types. The texts are empty where there is no key or no old
   /// value.
   bool hasKey() const noexcept { return key_.value != nullptr; }
   Corvo::String keyText() const { return key_.text(); }
   bool hasOldValue() const noexcept { return old_.value != nullptr; }
   Corvo::String oldValueText() const { return old_.text(); }

   /// The address of the key, for code that knows its type from the reflection record; may be null.
   const void * keyAddress() const noexcept { return key_.value; }

   /// The address of the old value, likewise.
   const void * oldValueAddress() const noexcept { return old_.value; }

 private:
   Vok::Detail::AnyValue key_;
   Vok::Detail::AnyValue old_;
};

/// Something that is told of changes. It leaves every publisher it is attached to when it is
/// destroyed.
class VOK_EXPORT Notifiee {
 public:
   Notifiee() noexcept = default;
   Notifiee( const Notifiee & ) = delete;
   Notifiee & operator=( const Notifiee & ) = delete;
   virtual ~Notifiee();

   /// Called once per change, from inside the mutator, after the change is stored. It may attach,
   /// detach and destroy notifiees (itself included), change any entity and drop any reference.
   /// An exception reaches the mutator's caller after the other notifiees have been told.
   virtual void onChange( const Change & change ) = 0;

 protected:
   /// Called when a publisher that this notifiee was attached to is destroyed with its entity.
   virtual void publisherGone( Publisher & publisher ) noexcept;

 private:
   friend class Publisher;

   bool attachedTo( const Publisher & publisher ) const;
   void attached( Publisher & publisher, std::uint32_t slot );
   void detached( const Publisher & publisher ) noexcept;
   std::uint32_t & slotAt( const Publisher & publisher ) noexcept;

   // Which slot of which publisher's list is this notifiee's. Most are attached to one publisher;
   // the map is made for the second.
   using Slots = std::unordered_map< const Publisher *, std::uint32_t >;
   Publisher * first_ = nullptr;
   std::unique_ptr< Slots > others_;
   std::uint32_t slotAtFirst_ = 0;
};

/// Where the notifiees of one entity attach. As big as a pointer; without notifiees it costs a
/// mutator one comparison.
///
/// Notifiees are told in the order of attachment. A change made inside `onChange` is told at
/// once, nested. A notifiee detached during a notification is not called again, one attached
/// during it is called from the next change on.
class VOK_EXPORT Publisher {
 public:
   constexpr Publisher() noexcept = default;
   Publisher( const Publisher & ) = delete;
   Publisher & operator=( const Publisher & ) = delete;
   ~Publisher()
   {
      if ( list_ ) {
         close();
      }
   }

   /// Attaches; attaching twice is one attachment. Takes no ownership. Throws std::bad_alloc and
   /// is then as before. Costs the same however many there are, amortised.
   void notifieeIs( Notifiee * notifiee );

   /// Detaches; detaching a stranger is silent. Costs the same however many there are, amortised.
   void notifieeDel( Notifiee * notifiee ) noexcept;

   bool hasNotifiee() const noexcept { return list_ && anyLive(); }

   /// Tells every notifiee of the change, which the caller has stored. The entity lives at least
   /// until all have been told. The first exception that a notifiee throws is thrown on after
   /// that.
   void publishChangeRecursive( const Change & change );

 private:
   class Telling;

   friend class Notifiee;
   friend class Vok::Detail::DirtyState;
   friend struct Vok::Detail::EntityAccess;
   friend class Vok::Detail::PendingTell;
   friend class Vok::Detail::SlotPage;

   bool anyLive() const noexcept;
   Vok::Detail::NotifieeList * notifiees() const noexcept;
   bool busy() const noexcept;
   bool inOrder() const noexcept;
   void close() noexcept;
   void linkIs( Vok::Detail::SlotPage & page );
   void linkDel( Vok::Detail::SlotPage & page ) noexcept;
   void linkMoves( Vok::Detail::SlotPage & from, Vok::Detail::SlotPage & to ) noexcept;
   void linksMoved() noexcept;
   void compact() noexcept;
   void removeSlot( std::uint32_t slot ) noexcept;
   Vok::Detail::NotifieeList & grown();
   void tellOne( const Change & change );
   void tell( const Change & change, std::uint32_t upTo );

   Vok::Detail::Listeners * list_ = nullptr;
};

} // namespace Corvo

namespace Vok::Detail {

/// What a publisher leads to: its list of notifiees, or the page of a replica's table that links
/// the entity, where that is all.
struct Listeners {
   std::uint32_t live = 0; ///< attached notifiees; none of a page
   bool isPage = false; ///< it is a SlotPage
   bool ofBatch = false; ///< what is told now is a change of a batch
};

/// The notifiees of one publisher, and the pages that link its entity. Slots of detached notifiees
/// are null until they are more than the others and no notification runs; then the rest moves
/// together.
struct NotifieeList : Listeners {
   /// A page beyond the first: of another replica's table, or where a stream has two numbers for
   /// the entity.
   struct Page {
      SlotPage * page;
      Page * next;
   };

   std::uint32_t used = 0; ///< slots in use, holes included
   std::uint32_t capacity = 1; ///< slots there are
   std::uint32_t depth = 0; ///< notifications that run now
   std::uint32_t holds = 0; ///< changes of a batch that are stored and not told yet
   SlotPage * page = nullptr; ///< null only where there are no others
   Page * others = nullptr;

   /// A single slot stands here.
   union {
      Corvo::Notifiee * one = nullptr;
      Corvo::Notifiee ** many;
   };

   NotifieeList() noexcept = default;
   NotifieeList( const NotifieeList & ) = delete;
   NotifieeList & operator=( const NotifieeList & ) = delete;
   ~NotifieeList();

   static void * operator new( std::size_t size );
   static void operator delete( void * memory, std::size_t size ) noexcept;

   Corvo::Notifiee ** slots() noexcept { return capacity == 1 ? &one : many; }

   /// Makes room for one more. Throws std::bad_alloc.
   void grow();

   /// Where the link to a page stands; null where there is none.
   SlotPage ** link( const SlotPage & linked ) noexcept;
   void addLink( SlotPage & added );
   void removeLink( SlotPage ** removed ) noexcept;
};

} // namespace Vok::Detail

inline bool Corvo::Publisher::anyLive() const noexcept
{
   return list_->live != 0;
}

/// The list, where there is one.
inline Vok::Detail::NotifieeList * Corvo::Publisher::notifiees() const noexcept
{
   return list_ && !list_->isPage ? static_cast< Vok::Detail::NotifieeList * >( list_ ) : nullptr;
}

/// Whether changes may have been stored of which not all notifiees have been told.
inline bool Corvo::Publisher::busy() const noexcept
{
   const Vok::Detail::NotifieeList * const list = notifiees();
   return list && ( list->depth != 0 || list->holds != 0 );
}

/// Whether the change that is told now is told before any later one of the same member.
inline bool Corvo::Publisher::inOrder() const noexcept
{
   const Vok::Detail::NotifieeList * const list = notifiees();
   return list && list->depth == 1 && ( list->holds == 0 || list->ofBatch );
}
