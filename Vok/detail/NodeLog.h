// The members of maps and sets in a log.
#pragma once

#include "Vok/Collection.h"
#include "Vok/NboAttrLog.h"
#include "Vok/ValueType.h"
#include "Vok/detail/Staged.h"

#include <optional>
#include <utility>

namespace Vok::Detail {

/// How a node of a map or set is read from a log, and what of it can differ.
template< class Map > struct NodeLog {
   using Node = typename Map::Node;
   using Key = typename Map::Key;

   static constexpr bool isSet = !requires( Node n ) { n.value; };
   static constexpr bool keyed = requires( Node n ) { n.valueIs( n.value ); };

   static Key readKey( NboAttrLog::In & in )
   {
      Key key{};
      ValueType< Key >::decode( in, key );
      return key;
   }

   static Node read( NboAttrLog::In & in )
   {
      if constexpr ( isSet ) {
         return Node{ readKey( in ) };
      } else {
         using V = typename NodeValue< Node >::Type;
         V value{};
         if constexpr ( keyed ) {
            ValueType< V >::decode( in, value );
            return Node{ std::move( value ) };
         } else {
            Key key = readKey( in );
            ValueType< V >::decode( in, value );
            return Node{ std::move( key ), std::move( value ) };
         }
      }
   }

   /// Reads past a node and returns its key; throws what `read` would.
   static Key check( NboAttrLog::In & in )
   {
      if constexpr ( isSet ) {
         return readKey( in );
      } else if constexpr ( keyed ) {
         using V = typename NodeValue< Node >::Type;
         V value = ValueAccess::blank< V >();
         skimLog( in, value );
         return Key( Node::keyOf( value ) );
      } else {
         Key key = readKey( in );
         checkLog< typename NodeValue< Node >::Type >( in );
         return key;
      }
   }

   /// Reads past a node and knows nothing of it; throws what `read` would.
   static void skip( NboAttrLog::In & in )
   {
      if constexpr ( !keyed ) {
         checkLog< Key >( in );
      }
      if constexpr ( !isSet ) {
         checkLog< typename NodeValue< Node >::Type >( in );
      }
   }

   static bool same( const Node & a, const Node & b )
   {
      if constexpr ( isSet ) {
         return true;
      } else {
         return Collection::equal( a.value, b.value );
      }
   }

   static AnyValue oldValue( const Node & node )
   {
      if constexpr ( isSet ) {
         return {};
      } else {
         return any( node.value );
      }
   }
};

} // namespace Vok::Detail
