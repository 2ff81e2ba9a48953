// Collections as fields of values: their text, log form and equality.
#pragma once

#include "Vok/Collection.h"
#include "Vok/NboAttrLog.h"
#include "Vok/TextOut.h"
#include "Vok/ValueType.h"
#include "Vok/View.h"
#include "Vok/detail/NodeLog.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <type_traits>
#include <vector>

namespace Vok {

namespace Detail {

template< class Map >
concept ValueCollection = requires( const Map & map )
{
   typename Map::Node;
   typename Map::Cursor;
   map.find( std::declval< typename Map::Query >() );
};

template< class Map > inline constexpr bool isOrderedMap = false;
template< class N, class K, class V > inline constexpr bool isOrderedMap< OrderedMap< N, K, V > > =
      true;

/// Writes one node: a key, a value that holds its key, or both.
template< class Map > void encodeNode( NboAttrLog::Out & out, const typename Map::Node & node )
{
   using Log = NodeLog< Map >;
   if constexpr ( !Log::keyed ) {
      ValueType< typename Map::Key >::encode( out, node.fwkKey() );
   }
   if constexpr ( !Log::isSet ) {
      ValueType< typename NodeValue< typename Map::Node >::Type >::encode( out, node.value );
   }
}

/// Whether one key is written before another: by their order, or where keys have none, by their
/// bytes.
template< class Key > bool keyBefore( const Key & a, const Key & b )
{
   if constexpr ( requires { { a < b } -> std::convertible_to< bool >; } ) {
      return a < b;
   } else {
      NboAttrLog::Out left;
      NboAttrLog::Out right;
      ValueType< Key >::encode( left, a );
      ValueType< Key >::encode( right, b );
      return std::ranges::lexicographical_compare( left.bytes(), right.bytes() );
   }
}

/// The nodes in the order in which they are written.
template< class Map > std::vector< const typename Map::Node * > inOrder( const Map & map )
{
   using Node = typename Map::Node;
   std::vector< const Node * > nodes;
   nodes.reserve( map.size() );
   map.eachNode( [ & ]( const Node & node ) { nodes.push_back( &node ); } );
   if constexpr ( !isOrderedMap< Map > ) {
      std::sort( nodes.begin(), nodes.end(), []( const Node * x, const Node * y ) {
         return keyBefore< typename Map::Key >( x->fwkKey(), y->fwkKey() );
      } );
   }
   return nodes;
}

} // namespace Detail

/// A collection inside a value: in a log the number of its members as 32 bits, then each, in
/// ascending order of the keys; as text `[key=value,…]`, of a set `[key,…]`.
template< Detail::ValueCollection Map > struct ValueType< Map > {
   using Node = typename Map::Node;
   using Log = Detail::NodeLog< Map >;

   static constexpr bool textable = false;

   static bool equal( const Map & a, const Map & b )
   {
      if ( a.size() != b.size() ) {
         return false;
      }
      bool same = true;
      a.eachNode( [ & ]( const Node & node ) {
         const Node * const other = same ? b.find( node.fwkKey() ) : nullptr;
         same = other && Log::same( node, *other );
      } );
      return same;
   }

   static void print( TextOut & out, const Map & map )
   {
      char before = '[';
      for ( const Node * node : Detail::inOrder( map ) ) {
         out.put( before );
         before = ',';
         ValueType< typename Map::Key >::print( out, node->fwkKey() );
         if constexpr ( !Log::isSet ) {
            out.put( '=' );
            ValueType< typename Detail::NodeValue< Node >::Type >::print( out, node->value );
         }
      }
      out.put( before == '[' ? "[]" : "]" );
   }

   static std::size_t logSize( const Map & map )
   {
      std::size_t size = sizeof( std::uint32_t );
      map.eachNode( [ & ]( const Node & node ) {
         if constexpr ( !Log::keyed ) {
            size += ValueType< typename Map::Key >::logSize( node.fwkKey() );
         }
         if constexpr ( !Log::isSet ) {
            size += ValueType< typename Detail::NodeValue< Node >::Type >::logSize( node.value );
         }
      } );
      return size;
   }

   static void encode( NboAttrLog::Out & out, const Map & map )
   {
      out.put( static_cast< std::uint32_t >( map.size() ) );
      for ( const Node * node : Detail::inOrder( map ) ) {
         Detail::encodeNode< Map >( out, *node );
      }
   }

   static void decode( NboAttrLog::In & in, Map & into )
   {
      Map map;
      eachRead( in, [ & ] {
         Node node = Log::read( in );
         Key key( node.fwkKey() );
         map.findOrInsert( key, [ & ] { return std::move( node ); } );
         return key;
      } );
      into = std::move( map );
   }

   /// What `decode` throws; keeps two keys and a member meanwhile.
   static void check( NboAttrLog::In & in )
   {
      eachRead( in, [ & ] { return Log::check( in ); } );
   }

 private:
   using Key = typename Map::Key;

   /// Has each member read by `readNode`, which returns its key.
   template< class Read > static void eachRead( NboAttrLog::In & in, Read readNode )
   {
      std::optional< Key > last;
      for ( auto left = in.get< std::uint32_t >(); left != 0; --left ) {
         Key key = readNode();
         if ( last && !Detail::keyBefore( *last, key ) ) {
            throw NboAttrLog::Exception( "the members of a collection are not in ascending order" );
         }
         last = std::move( key );
      }
   }
};

} // namespace Vok
