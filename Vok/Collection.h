// What the accessors of collections do, in entities and inside values, and the mutators of
// collections inside values, which notify nobody.
#pragma once

#include "Vok/Optional.h"
#include "Vok/Ptr.h"
#include "Vok/ValueType.h"
#include "Vok/View.h"

#include <cstdint>
#include <optional>
#include <type_traits>
#include <utility>

namespace Vok::Collection {

/// How values are given: numbers, truth values, enumerations and optionals by value, texts and
/// values by reference.
template< class V > using Given =
      std::conditional_t< std::is_scalar_v< V > || std::same_as< V, OptionalBool >, V, const V & >;

/// The default of a type, as an object to refer to.
template< class V > const V & blank()
{
   static const V value{};
   return value;
}

/// The value under a key, or the type's default where the key is absent.
template< class Map > auto value( const Map & map, typename Map::Query key )
      -> Given< std::remove_cvref_t< decltype( map.find( key )->value ) > >
{
   const auto * const node = map.find( key );
   return node ? node->value : blank< std::remove_cvref_t< decltype( node->value ) > >();
}

/// The value under a key, or none.
template< class Map > auto optional( const Map & map, typename Map::Query key )
{
   using V = std::remove_cvref_t< decltype( map.find( key )->value ) >;
   const auto * const node = map.find( key );
   return node ? Optional< V >( node->value ) : Optional< V >();
}

template< class Map > bool contains( const Map & map, typename Map::Query key )
{
   return map.find( key ) != nullptr;
}

/// The child or referred entity under a key, or null.
template< class Map > auto pointer( const Map & map, typename Map::Query key )
{
   using P = std::remove_cvref_t< decltype( map.find( key )->child ) >;
   const auto * const node = map.find( key );
   return node ? node->child : P();
}

/// Whether a stored value equals another one.
template< class V > bool equal( const V & a, const V & b )
{
   return ValueType< V >::equal( a, b );
}

// ---- Mutators that notify nobody --------------------------------------------------------------

/// A `Key` is the key or what makes one: only an insertion does.
template< class Map, class Key, class V >
void mapIs( Map & map, const Key & key, const V & value )
{
   using Node = typename Map::Node;
   const auto [ node, inserted ] = map.findOrInsert( key, [ & ] { return Node{ key, value }; } );
   if ( !inserted && !equal( node->value, value ) ) {
      V next( value );
      std::swap( node->value, next );
   }
}

template< class Map, class V > void keyedIs( Map & map, const V & value )
{
   using Node = typename Map::Node;
   const typename Map::Key key = Node::keyOf( value );
   const auto [ node, inserted ] = map.findOrInsert( key, [ & ] { return Node{ value }; } );
   if ( !inserted && !equal( node->value, value ) ) {
      node->valueIs( value );
   }
}

template< class Map > auto mapDel( Map & map, typename Map::Query key )
{
   using V = std::remove_cvref_t< decltype( map.find( key )->value ) >;
   auto taken = map.take( key );
   return taken ? V( std::move( taken->value ) ) : V();
}

template< class Set, class Key > void setIs( Set & set, const Key & key )
{
   set.findOrInsert( key, [ & ] { return typename Set::Node{ key }; } );
}

template< class Set > void setDel( Set & set, typename Set::Query key )
{
   set.take( key );
}

template< class Map > void delAll( Map & map ) noexcept
{
   map.clear();
}

} // namespace Vok::Collection
