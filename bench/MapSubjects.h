// The maps that are measured, with one interface each: from keys to the numbers of members.
#pragma once

#include "Vok/HashMap2018.h"
#include "Vok/OrderedMap.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>

namespace Bench {

/// What members are told by; none has the number `absent`.
using Number = std::uint64_t;
inline constexpr Number absent = 0;

/// A map of Vok, whose texts are Corvo::String. All maps are asked by the same std::string, and
/// all copy the text on insertion.
template< template< class, class, class > class MapOf, class Key > class VokMap {
   using Stored =
         std::conditional_t< std::is_same_v< Key, std::string >, Corvo::String, Key >;
   using Node = Vok::MapNode< Stored, Number >;
   using Map = MapOf< Node, Stored, Number >;

 public:
   std::size_t size() const { return map_.size(); }
   bool insert( const Key & key, Number number )
   {
      return map_.findOrInsert( key, [ & ] { return Node{ key, number }; } ).second;
   }
   /// Stores under a key that is there as well.
   bool set( const Key & key, Number number )
   {
      const auto [ node, inserted ] =
            map_.findOrInsert( key, [ & ] { return Node{ key, number }; } );
      if ( !inserted && node->value != number ) {
         node->value = number;
      }
      return inserted;
   }
   Number find( const Key & key ) const
   {
      const Node * const node = map_.find( key );
      return node != nullptr ? node->value : absent;
   }
   bool erase( const Key & key ) { return map_.take( key ).has_value(); }
   template< class F > void each( F f ) const
   {
      for ( typename Map::Cursor cursor( map_ ); !cursor.atEnd(); cursor.next() ) {
         f( ( *cursor ).value );
      }
   }

 private:
   Map map_;
};
template< class Key > using VokHashMap = VokMap< Vok::HashMap2018, Key >;
template< class Key > using VokOrderedMap = VokMap< Vok::OrderedMap, Key >;

/// A map with the interface of the standard one.
template< class Map > class StandardMap {
   using Key = typename Map::key_type;

 public:
   std::size_t size() const { return map_.size(); }
   bool insert( const Key & key, Number number ) { return map_.try_emplace( key, number ).second; }
   Number find( const Key & key ) const
   {
      const auto found = map_.find( key );
      return found != map_.end() ? found->second : absent;
   }
   bool erase( const Key & key ) { return map_.erase( key ) != 0; }
   template< class F > void each( F f ) const
   {
      for ( const auto & [ key, number ] : map_ ) {
         f( number );
      }
   }

 private:
   Map map_;
};

} // namespace Bench
