// What the mutators of maps, sets and reference collections of an entity do.
#pragma once

#include "Vok/Attribute.h"
#include "Vok/Collection.h"
#include "Vok/Entity.h"
#include "Vok/Exceptions.h"

#include <cstddef>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Vok {

/// Throws Corvo::NullPointerException: an empty pointer for this reference collection.
[[noreturn]] VOK_EXPORT void throwMutatorNullPointer(
      const Entity & entity, AttrId id, std::string_view attribute );

namespace Attribute {

/// Tells of a key that was inserted. It stands apart, so that where nobody listens a mutator keeps
/// all it has in registers.
template< class Key > [[gnu::noinline]] void publishInserted(
      Entity & entity, AttrId id, const Key & key )
{
   const Key told( key );
   publish( entity, id, Detail::any( told ), {} );
}

/// Stores another value under a key that is there; as `replace` does for an attribute.
template< class Node, class V >
void replaceMember( Entity & entity, AttrId id, Node & node, const V & value )
{
   const bool heard = entity.publisher().hasNotifiee();
   if constexpr ( std::is_nothrow_copy_assignable_v< V > ) {
      if ( !heard ) [[likely]] {
         node.value = value;
         return;
      }
   }
   V old( value );
   std::swap( node.value, old );
   if ( heard ) [[unlikely]] {
      const typename Node::Key told( node.key );
      publish( entity, id, Detail::any( told ), Detail::any( old ) );
   }
}

/// Inserts or replaces under an external key, or what makes one: only an insertion does.
template< class Map, class Key, class V >
void mapIs( Entity & entity, AttrId id, Map & map, const Key & key, const V & value )
{
   using Node = typename Map::Node;
   const auto [ node, inserted ] = map.findOrInsert( key, [ & ] { return Node{ key, value }; } );
   if ( inserted ) {
      if ( entity.publisher().hasNotifiee() ) [[unlikely]] {
         publishInserted( entity, id, node->key );
      }
   } else if ( !Collection::equal( node->value, value ) ) {
      replaceMember( entity, id, *node, value );
   }
}

/// Inserts or replaces a value whose key is one of its fields.
template< class Map, class V >
void keyedIs( Entity & entity, AttrId id, Map & map, const V & value )
{
   using Node = typename Map::Node;
   const typename Map::Key key( Node::keyOf( value ) );
   const auto [ node, inserted ] = map.findOrInsert( key, [ & ] { return Node{ value }; } );
   if ( inserted ) {
      if ( entity.publisher().hasNotifiee() ) [[unlikely]] {
         publishInserted( entity, id, key );
      }
   } else if ( !Collection::equal( node->value, value ) ) {
      const V old = node->valueIs( value );
      if ( entity.publisher().hasNotifiee() ) [[unlikely]] {
         publish( entity, id, Detail::any( key ), Detail::any( old ) );
      }
   }
}

/// Deletes, tells and returns the removed value, or the type's default.
template< class Map > [[gnu::noinline]] auto mapDelHeard(
      Entity & entity, AttrId id, Map & map, typename Map::Query key )
{
   using V = std::remove_cvref_t< decltype( map.find( key )->value ) >;
   auto taken = map.take( key );
   if ( !taken ) {
      return V();
   }
   const typename Map::Key told( taken->fwkKey() );
   publish( entity, id, Detail::any( told ), Detail::any( taken->value ) );
   return V( std::move( taken->value ) );
}

/// The same; what is removed stays in registers where nobody is to see it.
template< class Map > auto mapDel( Entity & entity, AttrId id, Map & map, typename Map::Query key )
{
   return entity.publisher().hasNotifiee() ? mapDelHeard( entity, id, map, key )
                                           : Collection::mapDel( map, key );
}

template< class Set, class Key >
void setIs( Entity & entity, AttrId id, Set & set, const Key & key )
{
   using Node = typename Set::Node;
   const auto [ node, inserted ] = set.findOrInsert( key, [ & ] { return Node{ key }; } );
   if ( inserted && entity.publisher().hasNotifiee() ) [[unlikely]] {
      publishInserted( entity, id, node->key );
   }
}

template< class Set > void setDel( Entity & entity, AttrId id, Set & set, typename Set::Query key )
{
   const auto taken = set.take( key );
   if ( taken && entity.publisher().hasNotifiee() ) [[unlikely]] {
      publish( entity, id, Detail::any( taken->key ), {} );
   }
}

/// Stores a counted reference under the key of what it refers to.
template< class Map, class P > void referenceIs(
      Entity & entity, AttrId id, std::string_view name, Map & map, const P & reference )
{
   using Node = typename Map::Node;
   if ( !reference ) {
      throwMutatorNullPointer( entity, id, name );
   }
   const P held( reference ); // the argument may lie in the map
   const typename Map::Key key( Node::keyOf( *held ) );
   const auto [ node, inserted ] = map.findOrInsert( key, [ & ] { return Node{ held }; } );
   if ( !inserted && node->child == held ) {
      return;
   }
   const P old = inserted ? P() : node->childIs( held );
   if ( entity.publisher().hasNotifiee() ) [[unlikely]] {
      publish( entity, id, Detail::any( key ), inserted ? Detail::AnyValue() : Detail::any( old ) );
   }
}

/// Deletes and returns the reference, or null.
template< class Map >
auto referenceDel( Entity & entity, AttrId id, Map & map, typename Map::Query key )
{
   using P = std::remove_cvref_t< decltype( map.find( key )->child ) >;
   auto taken = map.take( key );
   if ( !taken ) {
      return P();
   }
   if ( entity.publisher().hasNotifiee() ) [[unlikely]] {
      const typename Map::Key told( taken->fwkKey() );
      publish( entity, id, Detail::any( told ), Detail::any( taken->child ) );
   }
   return P( std::move( taken->child ) );
}

/// Deletes every member that there is now, each with its notification; nobody listening, all at
/// once. The collection's memory is given back.
template< class Map, class Del > void eachDel( Entity & entity, Map & map, Del del )
{
   if ( !entity.publisher().hasNotifiee() ) {
      map.clear();
      return;
   }
   std::size_t left = map.size();
   for ( typename Map::Cursor cursor( map ); left != 0 && !cursor.atEnd(); cursor.next() ) {
      if ( const auto * const node = cursor.node() ) {
         const typename Map::Key key( node->fwkKey() );
         --left;
         del( key );
      }
   }
   if ( map.empty() ) {
      map.clear();
   }
}

/// xDelAll of maps, sets and references.
template< class Map > void delAll( Entity & entity, AttrId id, Map & map )
{
   const Corvo::Ptr< Entity > alive( &entity );
   eachDel( entity, map, [ & ]( const typename Map::Key & key ) {
      using Node = typename Map::Node;
      if constexpr ( requires( Node n ) { n.value; } ) {
         mapDel( entity, id, map, key );
      } else if constexpr ( requires( Node n ) { n.child; } ) {
         referenceDel( entity, id, map, key );
      } else {
         setDel( entity, id, map, key );
      }
   } );
}

} // namespace Attribute
} // namespace Vok
