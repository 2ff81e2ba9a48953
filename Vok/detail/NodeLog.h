// The members of maps and sets in a log.
#pragma once

#include "Vok/Collection.h"
#include "Vok/NboAttrLog.h"
#include "Vok/ValueType.h"
#include "Vok/detail/Staged.h"
#include "Vok/detail/ValueOpsOf.h"

#include <cstddef>
#include <optional>
#include <utility>

namespace Vok::Detail {

/// How a node of a map or set is read from a log, and what of it can differ.
template< class Map > struct NodeLog {
   using Node = typename Map::Node;
   using Key = typename Map::Key;

   static constexpr bool isSet = !requires( Node n ) { n.value; };
   static constexpr bool keyed = requires( Node n ) { n.valueIs( n.value ); };

   /// The bytes that every node takes in a log; 0 where they differ from node to node.
   static constexpr std::size_t fixedSize() noexcept
   {
      constexpr std::size_t ofKey = fixedLogSize< Key >();
      if constexpr ( isSet ) {
         return ofKey;
      } else {
         constexpr std::size_t ofValue = fixedLogSize< typename NodeValue< Node >::Type >();
         if constexpr ( keyed ) {
            return ofValue;
         } else {
            return ofKey != 0 && ofValue != 0 ? ofKey + ofValue : 0;
         }
      }
   }

   static void write( NboAttrLog::Out & out, const Node & node )
   {
      if constexpr ( !keyed ) {
         ValueType< Key >::encode( out, node.fwkKey() );
      }
      if constexpr ( !isSet ) {
         ValueType< typename NodeValue< Node >::Type >::encode( out, node.value );
      }
   }

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
