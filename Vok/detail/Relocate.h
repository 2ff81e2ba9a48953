// Moving objects to another place in memory within a collection: moved there and destroyed here.
#pragma once

#include "Vok/String.h"

#include <cstddef>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

namespace Vok::Detail {

// Whether an object of type T may be moved by copying its bytes and forgetting the original. True
// for a type that holds no pointer into itself and is known to no other by its address; a type
// with a move constructor of its own says so by a specialisation.
template< class T > inline constexpr bool relocatable =
      std::is_trivially_copyable_v< T > && std::is_trivially_destructible_v< T >;

template<> inline constexpr bool relocatable< Corvo::String > = true;

template< class A, class B > inline constexpr bool relocatable< std::pair< A, B > > =
      relocatable< A > && relocatable< B >;

// Moves the object at `from` to the unused place `to`.
template< class T > void relocate( T * to, T * from ) noexcept
{
   if constexpr ( relocatable< T > ) {
      std::memcpy( static_cast< void * >( to ), static_cast< const void * >( from ), sizeof( T ) );
   } else {
      std::construct_at( to, std::move( *from ) );
      std::destroy_at( from );
   }
}

// The same where `to` may be `from`.
template< class T > void relocateOrStay( T * to, T * from ) noexcept
{
   if constexpr ( relocatable< T > ) {
      std::byte bytes[ sizeof( T ) ];
      std::memcpy( bytes, static_cast< const void * >( from ), sizeof( T ) );
      std::memcpy( static_cast< void * >( to ), bytes, sizeof( T ) );
   } else if ( to != from ) {
      relocate( to, from );
   }
}

// Moves `count` objects from `from` to `to`; the two may overlap, and what is not `from` of `to` is
// unused. There are few of them as a rule, fewer than pay a call.
template< class T > void relocateMany( T * to, T * from, std::size_t count ) noexcept
{
   if ( relocatable< T > && count * sizeof( T ) > 256 ) {
      std::memmove(
            static_cast< void * >( to ), static_cast< const void * >( from ), count * sizeof( T ) );
   } else if ( to < from ) {
      for ( T * const end = from + count; from != end; ++to, ++from ) {
         relocate( to, from );
      }
   } else {
      for ( std::size_t i = count; i > 0; --i ) {
         relocate( to + i - 1, from + i - 1 );
      }
   }
}

} // namespace Vok::Detail
