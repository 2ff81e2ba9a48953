// The reader's table: from the numbers that a stream gives to the entities of the replica.
//
// Numbers are dense, as a writer uses those again whose entities have gone; so the table is made of
// pages, found by the number of their first slot. A page is also what the publishers of its
// entities lead to, so that a slot is empty once its entity is destroyed, and the reader is told
// when one leaves its parent. What the stream says of an entity beside its number is the same for
// most siblings, and is held once in a page:
//
//    page 7 | places: { birth, parent, type } { ... }     1 1 2 1 ...     entity entity ...
//                                                         which place     32 slots
#pragma once

#include "Vok/HashMap2018.h"
#include "Vok/Publisher.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace Vok::Detail {

/// What a stream says of an entity.
struct SlotPlace {
   std::uint64_t birth = 0; ///< the batch that introduced it first
   std::uint64_t parent = 0; ///< the number of the parent
   std::uint32_t type = 0; ///< its number in the stream
   bool outside = false; ///< it has no parent

   friend bool operator==( const SlotPlace &, const SlotPlace & ) = default;
};

class SlotPage : public Listeners {
 public:
   static constexpr std::size_t slots = 32;

   /// `shapeChanges` is counted up when an entity of the page leaves its parent.
   explicit SlotPage( std::uint64_t & shapeChanges ) noexcept;
   SlotPage( const SlotPage & ) = delete;
   SlotPage & operator=( const SlotPage & ) = delete;
   ~SlotPage();

   static void * operator new( std::size_t size );
   static void operator delete( void * memory, std::size_t size ) noexcept;

   bool has( std::size_t slot ) const noexcept { return placeOf_[ slot ] != 0; }
   Entity * entity( std::size_t slot ) const noexcept { return entities_[ slot ]; }
   const SlotPlace & place( std::size_t slot ) const noexcept
   {
      return placeNumber( placeOf_[ slot ] );
   }

   /// Whether the slot was verified, and no entity of the replica left its parent since.
   bool verified( std::size_t slot ) const noexcept
   {
      return verifiedAt_ == *shapeChanges_ && ( verified_ >> slot & 1 ) != 0;
   }
   void verify( std::size_t slot ) noexcept;

   /// Makes room for so many places, or for as many as the page can ever have. Throws
   /// std::bad_alloc.
   void reserve( std::size_t places )
   {
      if ( places > room_ ) {
         enlarge( places );
      }
   }
   std::size_t places() const noexcept { return used_; }

   /// Changes a slot's place; there is room for it.
   void placeIs( std::size_t slot, const SlotPlace & place ) noexcept
   {
      putInto( slot, place, slots );
   }

   /// Fills a slot that has none; null is an entity that has gone. There is room for its place.
   /// Throws std::bad_alloc, and is then as before.
   void fill( std::size_t slot, const SlotPlace & place, Entity * entity );

   /// Takes over all slots of another page; there is room for their places.
   void takeAll( SlotPage & other ) noexcept;

   // What the publishers of the entities call.
   void left() noexcept { ++*shapeChanges_; }
   void gone( const Corvo::Publisher & publisher ) noexcept;

 private:
   void enlarge( std::size_t places );
   const SlotPlace & placeNumber( std::size_t number ) const noexcept
   {
      return number == 1 ? first_ : others_[ number - 2 ];
   }
   std::size_t freeNumber() const noexcept;
   std::size_t numberOf( const SlotPlace & place, std::size_t looks ) noexcept;
   void putInto( std::size_t slot, const SlotPlace & place, std::size_t looks ) noexcept;
   bool links( const Entity & entity ) const noexcept;

   std::uint32_t verified_ = 0; // a bit for each slot
   std::uint8_t used_ = 0; // places
   std::uint8_t room_ = 1; // for places
   bool changed_ = false; // a slot's place was, so that some number may be that of none
   std::uint64_t verifiedAt_ = 0;
   std::uint64_t * shapeChanges_;
   SlotPlace first_;
   std::unique_ptr< SlotPlace[] > others_; // the places from 2 on
   std::uint8_t placeOf_[ slots ] = {}; // the number of each slot's place; 0: there is none
   Entity * entities_[ slots ] = {};
};

/// One slot of a table, or none. Holds as long as the table has its page.
class ReplicaSlot {
 public:
   ReplicaSlot() noexcept = default;
   ReplicaSlot( SlotPage & page, std::size_t at ) noexcept : page_( &page ),
                                                             at_( at ) {}

   explicit operator bool() const noexcept { return page_; }
   Entity * entity() const noexcept { return page_->entity( at_ ); }
   const SlotPlace & place() const noexcept { return page_->place( at_ ); }
   bool verified() const noexcept { return page_->verified( at_ ); }
   void verify() const noexcept { page_->verify( at_ ); }

   /// Makes sure that `becomeOutside` has what it needs. Throws std::bad_alloc.
   void reserveOutside() const { page_->reserve( SlotPage::slots ); }
   void becomeOutside() const noexcept;

 private:
   SlotPage * page_ = nullptr;
   std::size_t at_ = 0;
};

class ReplicaSlots {
 public:
   explicit ReplicaSlots( std::uint64_t & shapeChanges ) noexcept : shapeChanges_( &shapeChanges )
   {
   }

   /// None where the stream never gave that number. The slot's entity is null when it is gone.
   ReplicaSlot find( std::uint64_t number ) const noexcept;

   /// Fills the slot of a number that has none. Throws std::bad_alloc.
   void insert( std::uint64_t number, const SlotPlace & place, Entity * entity );

   /// Makes sure that `takeAll( other )` has what it needs. Throws std::bad_alloc.
   void reserve( const ReplicaSlots & other );

   /// Takes over all slots of another table, in the place of its own of the same numbers.
   void takeAll( ReplicaSlots & other ) noexcept;

   void swap( ReplicaSlots & other ) noexcept
   {
      pages_.swap( other.pages_ );
      lastPage_ = other.lastPage_ = nullptr;
   }
   void clear() noexcept
   {
      pages_.clear();
      lastPage_ = nullptr;
   }

 private:
   using Node = MapNode< std::uint64_t, std::unique_ptr< SlotPage > >;
   using Pages = HashMap2018< Node, std::uint64_t, std::unique_ptr< SlotPage > >;

   std::uint64_t * shapeChanges_;
   Pages pages_; // by the number of their first slot, divided by their slots
   SlotPage * lastPage_ = nullptr; // the one that was inserted into last, or null
   std::uint64_t lastNumber_ = 0; // its number
};

} // namespace Vok::Detail
