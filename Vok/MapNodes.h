// What the collections hold: a node for every way in which a member and its key belong together.
//
// A node names its key type (`Key`), tells its key (`fwkKey()`) and its collection's constant
// (`hashConstant`, mixed into the seed of the collection's hash by XOR). Nodes are moved about by
// their collection; whoever holds a pointer to one changes all but the key.
#pragma once

#include "Vok/Assert.h"
#include "Vok/detail/Relocate.h"

#include <cstdint>
#include <type_traits>
#include <utility>

namespace Corvo {
template< class T > class Ptr;
}

namespace Vok {

/// The key stands beside the value.
template< class K, class V, std::uint32_t constant = 0 > struct MapNode {
   using Key = K;
   static constexpr std::uint32_t hashConstant = constant;

   K key;
   V value;

   const K & fwkKey() const noexcept { return key; }
};

/// A member of a set is its own key.
template< class K, std::uint32_t constant = 0 > struct SetNode {
   using Key = K;
   static constexpr std::uint32_t hashConstant = constant;

   K key;

   const K & fwkKey() const noexcept { return key; }
};

/// The key is read out of the value: KeyFunktor()( value ).
template< class V, class KeyFunktor, std::uint32_t constant = 0 > struct KeyedNode {
   using Key = std::remove_cvref_t< std::invoke_result_t< KeyFunktor, const V & > >;
   static constexpr std::uint32_t hashConstant = constant;

   V value;

   static decltype( auto ) keyOf( const V & of ) noexcept { return KeyFunktor()( of ); }
   decltype( auto ) fwkKey() const noexcept { return keyOf( value ); }

   /// Puts `newValue` in the place of the value and returns the value before. The two have the same
   /// key; a process that breaks this is ended by assertion.
   V valueIs( V newValue )
   {
      if ( !( fwkKey() == KeyFunktor()( newValue ) ) ) {
         assertionFailed( "Vok/MapNodes", __LINE__, "V Vok::KeyedNode::valueIs(V)",
               "fwkKey() == KeyFunktor()( _value )" );
      }
      return std::exchange( value, std::move( newValue ) );
   }
};

/// The member is an entity, held by a counted pointer that is not null; the key is read out of the
/// entity, where it never changes: KeyFunktor()( *child ).
template< class T, class KeyFunktor, std::uint32_t constant = 0, class Pointer = Corvo::Ptr< T > >
struct ChildNode {
   using Key = std::remove_cvref_t< std::invoke_result_t< KeyFunktor, const T & > >;
   static constexpr std::uint32_t hashConstant = constant;

   Pointer child;

   static decltype( auto ) keyOf( const T & of ) noexcept { return KeyFunktor()( of ); }
   decltype( auto ) fwkKey() const noexcept { return keyOf( *child ); }

   /// Puts `newChild` in the place of the child, under the same key, and returns the one before.
   Pointer childIs( Pointer newChild )
   {
      if ( !( fwkKey() == KeyFunktor()( *newChild ) ) ) {
         assertionFailed( "Vok/MapNodes", __LINE__, "Pointer Vok::ChildNode::childIs(Pointer)",
               "fwkKey() == KeyFunktor()( _value )" );
      }
      return std::exchange( child, std::move( newChild ) );
   }
};

namespace Detail {

template< class K, class V, std::uint32_t constant >
inline constexpr bool relocatable< MapNode< K, V, constant > > =
      relocatable< K > && relocatable< V >;

template< class K, std::uint32_t constant >
inline constexpr bool relocatable< SetNode< K, constant > > = relocatable< K >;

template< class V, class KeyFunktor, std::uint32_t constant >
inline constexpr bool relocatable< KeyedNode< V, KeyFunktor, constant > > = relocatable< V >;

template< class T, class KeyFunktor, std::uint32_t constant, class Pointer >
inline constexpr bool relocatable< ChildNode< T, KeyFunktor, constant, Pointer > > =
      relocatable< Pointer >;

/// A counted pointer is an address and nothing else.
template< class T > inline constexpr bool relocatable< Corvo::Ptr< T > > = true;

} // namespace Detail

} // namespace Vok
