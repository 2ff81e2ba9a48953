// Corvo::Ptr, the shared pointer to entities. The count lives in the entity.
#pragma once

#include "Vok/Export.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>

namespace Vok {

class Entity;

namespace Detail {

/// Takes one more reference to an entity.
void retain( const Entity * entity ) noexcept;

/// Gives one reference back; the last one destroys the entity.
void release( const Entity * entity ) noexcept;

} // namespace Detail
} // namespace Vok

namespace Corvo {

/// A counted reference to an entity, null by default.
///
/// The entity lives as long as any Ptr to it does. Copying counts up, moving does not count, and
/// references may be shared between threads: the count is atomic once a second thread exists.
/// A Ptr is as big as a raw pointer.
template< class T > class Ptr {
 public:
   using element_type = T;

   constexpr Ptr() noexcept = default;
   constexpr Ptr( std::nullptr_t ) noexcept {}

   /// Takes a reference of its own to `entity`, which may be null.
   Ptr( T * entity ) noexcept : entity_( entity ) { retain(); }

   Ptr( const Ptr & other ) noexcept : entity_( other.entity_ ) { retain(); }
   Ptr( Ptr && other ) noexcept : entity_( std::exchange( other.entity_, nullptr ) ) {}

   template< class U >
      requires std::convertible_to< U *, T * >
      Ptr( const Ptr< U > & other )
   noexcept : entity_( other.get() )
   {
      retain();
   }

   template< class U >
      requires std::convertible_to< U *, T * >
      Ptr( Ptr< U > && other )
   noexcept : entity_( other.giveUp() )
   {
   }

   ~Ptr() { release(); }

   Ptr & operator=( const Ptr & other ) noexcept
   {
      Ptr( other ).swap( *this );
      return *this;
   }

   Ptr & operator=( Ptr && other ) noexcept
   {
      Ptr( std::move( other ) ).swap( *this );
      return *this;
   }

   /// A Ptr that takes over a reference which the caller already holds.
   static Ptr adopt( T * entity ) noexcept
   {
      Ptr p;
      p.entity_ = entity;
      return p;
   }

   /// The entity, whose reference passes to the caller; this Ptr is null afterwards.
   T * giveUp() noexcept { return std::exchange( entity_, nullptr ); }

   T * get() const noexcept { return entity_; }
   T * operator->() const noexcept { return entity_; }
   T & operator*() const noexcept { return *entity_; }
   explicit operator bool() const noexcept { return entity_ != nullptr; }

   void swap( Ptr & other ) noexcept { std::swap( entity_, other.entity_ ); }
   friend void swap( Ptr & a, Ptr & b ) noexcept { a.swap( b ); }

   template< class U > friend bool operator==( const Ptr & a, const Ptr< U > & b ) noexcept
         requires std::equality_comparable_with< T *, U * >
   {
      return a.get() == b.get();
   }
   template< class U >
      requires std::equality_comparable_with< T *, U * >
   friend bool operator==( const Ptr & a, U * b ) noexcept
   {
      return a.get() == b;
   }
   friend bool operator==( const Ptr & a, std::nullptr_t ) noexcept { return !a.entity_; }

   /// By address: an order for containers, without a meaning of its own.
   friend bool operator<( const Ptr & a, const Ptr & b ) noexcept
   {
      return std::less< T * >()( a.entity_, b.entity_ );
   }

 private:
   void retain() const noexcept
   {
      if ( entity_ ) {
         Vok::Detail::retain( entity_ );
      }
   }
   void release() const noexcept
   {
      if ( entity_ ) {
         Vok::Detail::release( entity_ );
      }
   }

   T * entity_ = nullptr;
};

} // namespace Corvo

template< class T > struct std::hash< Corvo::Ptr< T > > {
   std::size_t operator()( const Corvo::Ptr< T > & p ) const noexcept
   {
      return std::hash< T * >()( p.get() );
   }
};
