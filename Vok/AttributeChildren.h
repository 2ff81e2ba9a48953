// What the mutators of children and of single children do.
#pragma once

#include "Vok/Attribute.h"
#include "Vok/AttributeMap.h"
#include "Vok/Collection.h"
#include "Vok/Entity.h"
#include "Vok/Ptr.h"

#include <type_traits>
#include <utility>

namespace Vok::Attribute {

/// Makes `owner` the parent of a child that was just inserted, and tells of it.
template< class Map, class T > void entered( Entity & owner, AttrId id, Map &, T & child )
{
   Detail::EntityAccess::enter( child, owner );
   if ( owner.publisher().hasNotifiee() ) [[unlikely]] {
      publishInserted( owner, id, Map::Node::keyOf( child ) );
   }
}

/// The child under a key: the one that exists, if its constant arguments are these, or a new one.
template< class Map, class... Args > auto childIs(
      Entity & owner, AttrId id, Map & map, const typename Map::Key & key, const Args &... args )
{
   using Node = typename Map::Node;
   using P = std::remove_cvref_t< decltype( map.find( key )->child ) >;
   using T = typename P::element_type;
   const auto [ node, inserted ] = map.findOrInsert(
         key, [ & ] { return Node{ Detail::EntityAccess::make< T >( args... ) }; } );
   const P child = node->child;
   if ( inserted ) {
      entered( owner, id, map, *child );
   } else {
      Detail::EntityAccess::reinstantiate( *child, args... );
   }
   return child;
}

/// Inserts a fresh child whose key is not in the collection.
template< class Map, class T >
void childAdopt( Entity & owner, AttrId id, Map & map, const Corvo::Ptr< T > & child )
{
   using Node = typename Map::Node;
   map.findOrInsert( Node::keyOf( *child ), [ & ] { return Node{ child }; } );
   entered( owner, id, map, *child );
}

/// Takes a child out of its collection and returns it, or null.
template< class Map > auto childDel( Entity & owner, AttrId id, Map & map, typename Map::Query key )
{
   using P = std::remove_cvref_t< decltype( map.find( key )->child ) >;
   auto taken = map.take( key );
   if ( !taken ) {
      return P();
   }
   const P child( std::move( taken->child ) );
   Detail::EntityAccess::leave( *child );
   if ( owner.publisher().hasNotifiee() ) [[unlikely]] {
      const typename Map::Key told( Map::Node::keyOf( *child ) );
      publish( owner, id, Detail::any( told ), Detail::any( child ) );
   }
   return child;
}

/// Clears the parent of every child, as its owner lets go of all.
template< class Map > void leaveAll( Map & map ) noexcept
{
   map.eachNode( []( const auto & node ) { Detail::EntityAccess::leave( *node.child ); } );
}

template< class Map > void childDelAll( Entity & owner, AttrId id, Map & map )
{
   const Corvo::Ptr< Entity > alive( &owner );
   if ( !owner.publisher().hasNotifiee() ) {
      leaveAll( map );
   }
   eachDel( owner, map,
         [ & ]( const typename Map::Key & key ) { childDel( owner, id, map, key ); } );
}

/// Puts a fresh child in the place of the single child.
template< class T > void singleAdopt(
      Entity & owner, AttrId id, Corvo::Ptr< T > & stored, const Corvo::Ptr< T > & child )
{
   const Corvo::Ptr< T > old = std::exchange( stored, child );
   if ( old ) {
      Detail::EntityAccess::leave( *old );
   }
   Detail::EntityAccess::enter( *child, owner );
   if ( owner.publisher().hasNotifiee() ) [[unlikely]] {
      publish( owner, id, {}, old ? Detail::any( old ) : Detail::AnyValue() );
   }
}

/// The single child: the one that exists, if it has this name, or a new one in its place.
template< class T, class... Args > Corvo::Ptr< T > singleIs(
      Entity & owner, AttrId id, Corvo::Ptr< T > & stored, const Args &... args )
{
   if ( stored && Detail::EntityAccess::sameIdentity( *stored, args... ) ) {
      const Corvo::Ptr< T > child = stored;
      Detail::EntityAccess::reinstantiate( *child, args... );
      return child;
   }
   const Corvo::Ptr< T > child = Detail::EntityAccess::make< T >( args... );
   singleAdopt( owner, id, stored, child );
   return child;
}

template< class T > Corvo::Ptr< T > singleDel( Entity & owner, AttrId id, Corvo::Ptr< T > & stored )
{
   const Corvo::Ptr< T > old = std::exchange( stored, nullptr );
   if ( old ) {
      Detail::EntityAccess::leave( *old );
      if ( owner.publisher().hasNotifiee() ) [[unlikely]] {
         publish( owner, id, {}, Detail::any( old ) );
      }
   }
   return old;
}

} // namespace Vok::Attribute
