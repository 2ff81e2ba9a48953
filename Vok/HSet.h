// Vok::HSet: the hash set, HashMap2018's engine over bare keys.
#pragma once

#include "Vok/HashMap2018.h"

#include <cstdint>

namespace Vok {

/// A set of keys. All that HashMap2018.h says of nodes holds for the keys: what a Query is, that
/// arguments may lie inside the set, that it may be changed while it is iterated
/// (`for ( typename HSet< Key >::Cursor c( set ); !c.atEnd(); c.next() ) use( c.node()->key );`),
/// and that a call which throws leaves it as it was. `constant` is mixed into the seed of its hash.
template< class Key, std::uint32_t constant = 0 >
class HSet : public HashMap2018< SetNode< Key, constant >, Key, Key > {
   using Map = HashMap2018< SetNode< Key, constant >, Key, Key >;

 public:
   using typename Map::Node;
   using typename Map::Query;

   /// Adds a copy of the key. False where the set has it already.
   bool insert( const Key & key )
   {
      return this->findOrInsert( key, [ &key ] { return Node{ key }; } ).second;
   }

   /// Removes the key. False where the set does not have it.
   bool erase( Query key ) noexcept { return this->take( key ).has_value(); }
};

} // namespace Vok
