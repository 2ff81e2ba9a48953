// The operations of a collection, for code that knows its type only at run time. One row of
// functions per collection type; generated tables point to them.
#pragma once

#include "Vok/AttributeChildren.h"
#include "Vok/AttributeMap.h"
#include "Vok/Collection.h"
#include "Vok/Entity.h"
#include "Vok/detail/FunctionRef.h"
#include "Vok/detail/StreamEntities.h"
#include "Vok/detail/StreamMaps.h"
#include "Vok/detail/Tables.h"

#include <cstddef>
#include <type_traits>
#include <utility>

namespace Vok::Detail {

/// Called with the addresses of a member's key and value (of a set twice the element, of children
/// and references the key and the pointer); says whether to go on.
using MemberVisit = FunctionRef< bool( const void * key, const void * value ) >;

/// `collection` is the address of the attribute's storage, keys and values are addresses of
/// objects of the types that the attribute's row names. Rows hold null where an operation does
/// not fit the kind.
struct CollectionOps {
   std::size_t ( *size )( const void * collection );

   /// The address of the member's value, of a set of its element; null where there is none.
   const void * ( *find )( const void * collection, const void * key );
   void ( *each )( const void * collection, MemberVisit visit );

   /// Mutators. Without an owner the collection lies in a value, and nobody is told.
   void ( *put )(
         Entity * owner, AttrId id, void * collection, const void * key, const void * value );
   void ( *del )( Entity * owner, AttrId id, void * collection, const void * key );

   /// The child or referred entity under a key (ignored for a single child), or null.
   Entity * ( *entity )( const void * collection, const void * key );

   /// The entity that a pointer, as `each` gives it or a change carries it, points to.
   const Entity * ( *pointee )( const void * pointer );

   /// Writes the text of the key under which an entity is a member; false where it is none.
   bool ( *keyText )( const void * collection, const Entity & member, TextOut & out );

   /// Inserts a fresh child, or a reference, and tells of it.
   void ( *insert )(
         Entity & owner, AttrId id, void * collection, Corvo::Ptr< const Entity > member );

   /// Clears the parent of every child.
   void ( *leaveAll )( void * collection ) noexcept;

   /// The type of the children or referred entities.
   const TypeData & ( *memberType )() noexcept;

   const StreamOps * stream;
};

/// What all collections that are one map have in common.
template< class Map > struct AnyMapOps {
   using Key = typename Map::Key;
   using Query = typename Map::Query;

   static const Map & at( const void * c ) { return *static_cast< const Map * >( c ); }
   static Map & at( void * c ) { return *static_cast< Map * >( c ); }
   static const Key & keyAt( const void * key ) { return *static_cast< const Key * >( key ); }

   static std::size_t size( const void * c ) { return at( c ).size(); }

   template< class Get > static void each( const void * c, MemberVisit visit, Get get )
   {
      for ( typename Map::Cursor cursor( at( c ) ); !cursor.atEnd(); cursor.next() ) {
         decltype( auto ) key = cursor.node()->fwkKey();
         if ( !visit( &key, get( *cursor.node() ) ) ) {
            return;
         }
      }
   }
};

template< class Map > struct MapOps : AnyMapOps< Map > {
   using Base = AnyMapOps< Map >;
   using Node = typename Map::Node;
   using V = typename NodeValue< Node >::Type;
   static constexpr bool keyed = requires( const V & v ) { Node::keyOf( v ); };

   static const void * find( const void * c, const void * key )
   {
      const auto * const node = Base::at( c ).find( Base::keyAt( key ) );
      return node ? &node->value : nullptr;
   }
   static void each( const void * c, MemberVisit visit )
   {
      Base::each( c, visit, []( const Node & node ) { return &node.value; } );
   }
   static void put( Entity * owner, AttrId id, void * c, const void * key, const void * value )
   {
      const V & v = *static_cast< const V * >( value );
      if constexpr ( keyed ) {
         owner ? Attribute::keyedIs( *owner, id, Base::at( c ), v )
               : Collection::keyedIs( Base::at( c ), v );
      } else {
         owner ? Attribute::mapIs( *owner, id, Base::at( c ), Base::keyAt( key ), v )
               : Collection::mapIs( Base::at( c ), Base::keyAt( key ), v );
      }
   }
   static void del( Entity * owner, AttrId id, void * c, const void * key )
   {
      if ( owner ) {
         Attribute::mapDel( *owner, id, Base::at( c ), Base::keyAt( key ) );
      } else {
         Collection::mapDel( Base::at( c ), Base::keyAt( key ) );
      }
   }
};

template< class Set > struct SetOps : AnyMapOps< Set > {
   using Base = AnyMapOps< Set >;
   using Node = typename Set::Node;

   static const void * find( const void * c, const void * key )
   {
      const auto * const node = Base::at( c ).find( Base::keyAt( key ) );
      return node ? &node->key : nullptr;
   }
   static void each( const void * c, MemberVisit visit )
   {
      Base::each( c, visit, []( const Node & node ) { return &node.key; } );
   }
   static void put( Entity * owner, AttrId id, void * c, const void * key, const void * )
   {
      owner ? Attribute::setIs( *owner, id, Base::at( c ), Base::keyAt( key ) )
            : Collection::setIs( Base::at( c ), Base::keyAt( key ) );
   }
   static void del( Entity * owner, AttrId id, void * c, const void * key )
   {
      owner ? Attribute::setDel( *owner, id, Base::at( c ), Base::keyAt( key ) )
            : Collection::setDel( Base::at( c ), Base::keyAt( key ) );
   }
};

/// Children and references: members that are entities.
template< class Map > struct EntityMapOps : AnyMapOps< Map > {
   using Base = AnyMapOps< Map >;
   using Node = typename Map::Node;
   using P = typename NodeValue< Node >::Type;
   using T = typename P::element_type;
   using Bare = std::remove_const_t< T >;

   static const void * find( const void * c, const void * key )
   {
      const auto * const node = Base::at( c ).find( Base::keyAt( key ) );
      return node ? &node->child : nullptr;
   }
   static void each( const void * c, MemberVisit visit )
   {
      Base::each( c, visit, []( const Node & node ) { return &node.child; } );
   }
   static Entity * entity( const void * c, const void * key )
   {
      const auto * const node = Base::at( c ).find( Base::keyAt( key ) );
      return node ? const_cast< Bare * >( node->child.get() ) : nullptr;
   }
   static const Entity * pointee( const void * pointer )
   {
      return static_cast< const P * >( pointer )->get();
   }
   static bool keyText( const void * c, const Entity & member, TextOut & out )
   {
      if ( &member.typeData() != &Bare::vokType() ) {
         return false;
      }
      const T & t = static_cast< const T & >( member );
      const typename Map::Key key( Node::keyOf( t ) );
      const auto * const node = Base::at( c ).find( key );
      if ( !node || node->child != &t ) {
         return false;
      }
      ValueType< typename Map::Key >::print( out, key );
      return true;
   }
   static const TypeData & memberType() noexcept { return Bare::vokType(); }
};

template< class Map > struct ChildrenOps : EntityMapOps< Map > {
   using Base = EntityMapOps< Map >;
   using T = typename Base::T;

   static void del( Entity * owner, AttrId id, void * c, const void * key )
   {
      Attribute::childDel( *owner, id, Base::at( c ), Base::keyAt( key ) );
   }
   static void insert( Entity & owner, AttrId id, void * c, Corvo::Ptr< const Entity > member )
   {
      T * const child = static_cast< T * >( const_cast< Entity * >( member.get() ) );
      Attribute::childAdopt( owner, id, Base::at( c ), Corvo::Ptr< T >( child ) );
   }
   static void leaveAll( void * c ) noexcept { Attribute::leaveAll( Base::at( c ) ); }
};

template< class Map > struct ReferencesOps : EntityMapOps< Map > {
   using Base = EntityMapOps< Map >;
   using T = typename Base::T;

   static void del( Entity * owner, AttrId id, void * c, const void * key )
   {
      Attribute::referenceDel( *owner, id, Base::at( c ), Base::keyAt( key ) );
   }
   static void insert( Entity & owner, AttrId id, void * c, Corvo::Ptr< const Entity > member )
   {
      const T * const target = static_cast< const T * >( member.get() );
      Attribute::referenceIs( owner, id, "", Base::at( c ), Corvo::Ptr< T >( target ) );
   }
};

/// A single child. Its key is ignored.
template< class T > struct ChildOps {
   static const Corvo::Ptr< T > & at( const void * c )
   {
      return *static_cast< const Corvo::Ptr< T > * >( c );
   }
   static Corvo::Ptr< T > & at( void * c ) { return *static_cast< Corvo::Ptr< T > * >( c ); }

   static std::size_t size( const void * c ) { return at( c ) ? 1 : 0; }
   static const void * find( const void * c, const void * ) { return at( c ) ? c : nullptr; }
   static void each( const void * c, MemberVisit visit )
   {
      if ( at( c ) ) {
         visit( nullptr, c );
      }
   }
   static void del( Entity * owner, AttrId id, void * c, const void * )
   {
      Attribute::singleDel( *owner, id, at( c ) );
   }
   static Entity * entity( const void * c, const void * ) { return at( c ).get(); }
   static const Entity * pointee( const void * pointer ) { return at( pointer ).get(); }
   static bool keyText( const void * c, const Entity & member, TextOut & )
   {
      return at( c ).get() == &member;
   }
   static void insert( Entity & owner, AttrId id, void * c, Corvo::Ptr< const Entity > member )
   {
      T * const child = static_cast< T * >( const_cast< Entity * >( member.get() ) );
      Attribute::singleAdopt( owner, id, at( c ), Corvo::Ptr< T >( child ) );
   }
   static void leaveAll( void * c ) noexcept
   {
      if ( at( c ) ) {
         EntityAccess::leave( *at( c ) );
      }
   }
   static const TypeData & memberType() noexcept { return T::vokType(); }
};

template< class Map > inline constexpr CollectionOps mapOps = { MapOps< Map >::size,
   MapOps< Map >::find, MapOps< Map >::each, MapOps< Map >::put, MapOps< Map >::del, nullptr,
   nullptr, nullptr, nullptr, nullptr, nullptr, &mapStreamOps< Map > };

template< class Set > inline constexpr CollectionOps setOps = { SetOps< Set >::size,
   SetOps< Set >::find, SetOps< Set >::each, SetOps< Set >::put, SetOps< Set >::del, nullptr,
   nullptr, nullptr, nullptr, nullptr, nullptr, &setStreamOps< Set > };

template< class Map > inline constexpr CollectionOps childrenOps = { ChildrenOps< Map >::size,
   ChildrenOps< Map >::find, ChildrenOps< Map >::each, nullptr, ChildrenOps< Map >::del,
   ChildrenOps< Map >::entity, ChildrenOps< Map >::pointee, ChildrenOps< Map >::keyText,
   ChildrenOps< Map >::insert, ChildrenOps< Map >::leaveAll, ChildrenOps< Map >::memberType,
   &childrenStreamOps< Map > };

template< class Map > inline constexpr CollectionOps referencesOps = { ReferencesOps< Map >::size,
   ReferencesOps< Map >::find, ReferencesOps< Map >::each, nullptr, ReferencesOps< Map >::del,
   ReferencesOps< Map >::entity, ReferencesOps< Map >::pointee, ReferencesOps< Map >::keyText,
   ReferencesOps< Map >::insert, nullptr, ReferencesOps< Map >::memberType,
   &referencesStreamOps< Map > };

template< class T > inline constexpr CollectionOps childOps = { ChildOps< T >::size,
   ChildOps< T >::find, ChildOps< T >::each, nullptr, ChildOps< T >::del, ChildOps< T >::entity,
   ChildOps< T >::pointee, ChildOps< T >::keyText, ChildOps< T >::insert, ChildOps< T >::leaveAll,
   ChildOps< T >::memberType, &childStreamOps< T > };

} // namespace Vok::Detail
