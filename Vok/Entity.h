// Vok::Entity, the base of every entity type.
#pragma once

#include "Vok/Export.h"
#include "Vok/Ptr.h"
#include "Vok/Publisher.h"
#include "Vok/String.h"
#include "Vok/detail/Threads.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace Vok {

class TypeData;

namespace Detail {
struct EntityAccess;
} // namespace Detail

/// A reference-counted object with identity: a name, a parent, a publisher, and the attributes that
/// the generated type adds.
///
/// Entities are made by their factories (`T::TIs( … )`), held through `Corvo::Ptr`, and neither
/// copied nor moved. A parent owns its children; a child only knows its parent. References may be
/// shared by several threads; everything else of a tree is used by one thread at a time.
class VOK_EXPORT Entity {
 public:
   Entity( const Entity & ) = delete;
   Entity & operator=( const Entity & ) = delete;

   /// The identity as text, fixed for life; empty for a type that has none.
   const Corvo::String & name() const noexcept { return name_; }

   /// The same text, as attribute 154.
   const Corvo::String & nameString() const noexcept { return name_; }

   /// The owner; null for a root and for an entity that has left its collection.
   Entity * parent() const noexcept { return parent_; }

   /// Sets the parent; a null pointer clears it. Takes no reference. Collections of children call
   /// it, clients have no need to.
   void handleParent( const Corvo::Ptr< Entity > & parent ) noexcept;

   /// References held at this moment.
   std::uint32_t refCount() const noexcept { return refCount_.load( std::memory_order_relaxed ); }

   /// Where notifiees attach.
   Corvo::Publisher & publisher() const noexcept { return publisher_; }

   /// The reflection record of the entity's own type.
   virtual const TypeData & typeData() const noexcept = 0;

 protected:
   /// Starts with one reference, which the factory hands out.
   explicit Entity( Corvo::String name = Corvo::String() ) noexcept : name_( std::move( name ) ) {}
   virtual ~Entity();

   static void * operator new( std::size_t size );
   static void operator delete( void * memory, std::size_t size ) noexcept;

 private:
   friend struct Detail::EntityAccess;

   mutable std::atomic< std::uint32_t > refCount_{ 1 };
   mutable Corvo::Publisher publisher_;
   Entity * parent_ = nullptr;
   Corvo::String name_;
};

namespace Detail {

/// What the framework's own code may do with an entity.
struct VOK_EXPORT EntityAccess {
   static std::atomic< std::uint32_t > & count( const Entity & e ) noexcept { return e.refCount_; }

   /// Makes `parent` the owner of `child`.
   static void enter( Entity & child, Entity & parent ) noexcept { child.parent_ = &parent; }

   /// Takes `child` from its owner; readers that follow the tree are told that it changed shape.
   static void leave( Entity & child ) noexcept
   {
      child.parent_ = nullptr;
      child.publisher_.linksMoved();
   }

   /// Destroys an entity without references. Children that die with it are destroyed by a loop,
   /// not by recursion: a tree may be deeper than the stack.
   static void destroy( const Entity * entity ) noexcept;

   /// Makes an entity: memory, constructor, count of its type. The one way entities come into
   /// being.
   template< class T, class... Args > static Corvo::Ptr< T > make( Args &&... args )
   {
      auto made = Corvo::Ptr< T >::adopt( new T( std::forward< Args >( args )... ) );
      counted( *made );
      return made;
   }

   /// Instantiates a child that exists: its constant arguments have to be these, settable ones
   /// become so.
   template< class T, class... Args > static void reinstantiate( T & child, const Args &... args )
   {
      child.vokReinstantiate( args... );
   }

   /// Whether a child has the name that these constructor arguments give; always, for a type
   /// without one.
   template< class T > static bool sameIdentity( const T & ) noexcept { return true; }
   template< class T, class First, class... Rest >
   static bool sameIdentity( const T & child, const First & first, const Rest &... )
   {
      if constexpr ( requires { child.name() == first; } ) {
         return child.name() == first;
      } else if constexpr ( requires { child.name() == first.stringValue(); } ) {
         return child.name().empty() || child.name() == first.stringValue();
      } else {
         return true;
      }
   }

 private:
   static void counted( const Entity & made ) noexcept;
};

inline void retain( const Entity * entity ) noexcept
{
   incrementCount( EntityAccess::count( *entity ) );
}

inline void release( const Entity * entity ) noexcept
{
   if ( decrementCount( EntityAccess::count( *entity ) ) == 0 ) {
      EntityAccess::destroy( entity );
   }
}

} // namespace Detail
} // namespace Vok
