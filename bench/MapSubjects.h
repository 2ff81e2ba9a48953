// The hash maps that are measured, with one interface each: to the numbers of members by key.
#pragma once

#include "Vok/HashMap2018.h"

#include <absl/container/flat_hash_map.h>
#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <unordered_map>

namespace Bench {

using Number = std::uint64_t;

/// Vok::HashMap2018, whose texts are Corvo::String. All maps are asked by the same std::string, and
/// all copy the text on insertion.
template< class Key > class VokMap {
   using Stored =
         std::conditional_t< std::is_same_v< Key, std::string >, Corvo::String, Key >;
   using Node = Vok::MapNode< Stored, Number >;
   using Map = Vok::HashMap2018< Node, Stored, Number >;

 public:
   static constexpr const char * name = "Vok";

   std::size_t size() const { return map_.size(); }
   bool insert( const Key & key, Number number )
   {
      return map_.findOrInsert( key, [ & ] { return Node{ key, number }; } ).second;
   }
   const Number * find( const Key & key ) const
   {
      const Node * const node = map_.find( key );
      return node != nullptr ? &node->value : nullptr;
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

/// A map with the interface of the standard one.
template< class Map > class StandardMap {
   using Key = typename Map::key_type;

 public:
   std::size_t size() const { return map_.size(); }
   bool insert( const Key & key, Number number ) { return map_.try_emplace( key, number ).second; }
   const Number * find( const Key & key ) const
   {
      const auto found = map_.find( key );
      return found != map_.end() ? &found->second : nullptr;
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

template< class Key > struct BoostMap : StandardMap< boost::unordered_flat_map< Key, Number > > {
   static constexpr const char * name = "boost-flat";
};
template< class Key > struct AbslMap : StandardMap< absl::flat_hash_map< Key, Number > > {
   static constexpr const char * name = "absl-flat";
};
template< class Key > struct StdMap : StandardMap< std::unordered_map< Key, Number > > {
   static constexpr const char * name = "std";
};

} // namespace Bench
