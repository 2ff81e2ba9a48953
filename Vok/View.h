// Read-only views of collections, what `x()` without arguments gives.
#pragma once

#include "Vok/HashMap2018.h"
#include "Vok/MapNodes.h"
#include "Vok/OrderedMap.h"
#include "Vok/Ptr.h"

#include <cstddef>
#include <iterator>
#include <optional>
#include <type_traits>
#include <utility>

namespace Vok {

namespace Detail {

/// What an iteration over a view yields for each kind of node.
template< class K, class V, std::uint32_t constant >
std::pair< const K &, const V & > element( const MapNode< K, V, constant > & node ) noexcept
{
   return { node.key, node.value };
}

template< class V, class F, std::uint32_t constant >
auto element( const KeyedNode< V, F, constant > & node ) noexcept
{
   using Key = decltype( node.fwkKey() );
   return std::pair< Key, const V & >( node.fwkKey(), node.value );
}

template< class K, std::uint32_t constant >
const K & element( const SetNode< K, constant > & node ) noexcept
{
   return node.key;
}

template< class T, class F, std::uint32_t constant, class P >
const P & element( const ChildNode< T, F, constant, P > & node ) noexcept
{
   return node.child;
}

} // namespace Detail

/// A small copyable handle on a collection. It is live: it shows the collection as it is, and is
/// valid while the entity or value that holds the collection lives.
///
/// Iterating yields pairs of key and value for a map, keys for a set, and pointers for children and
/// references. The collection may be changed meanwhile: deleting the member that the iterator
/// stands on is safe, every member that stays is seen exactly once, one inserted meanwhile at
/// most once. References that an iteration yields are valid until the collection changes. Keep no
/// iterator longer than its loop: the collection counts them.
template< class Map > class View {
   using Node = std::remove_cvref_t< decltype( *std::declval< typename Map::Cursor >().node() ) >;

 public:
   class iterator {
    public:
      using iterator_category = std::input_iterator_tag;
      using reference = decltype( Detail::element( std::declval< const Node & >() ) );
      using value_type = std::remove_cvref_t< reference >;
      using difference_type = std::ptrdiff_t;
      using pointer = void;

      iterator() noexcept = default;
      explicit iterator( const Map & map ) : cursor_( map ) {}

      reference operator*() const { return Detail::element( **cursor_ ); }
      auto operator->() const
            requires std::is_reference_v< reference >
      {
         return &**this;
      }
      iterator & operator++()
      {
         cursor_->next();
         return *this;
      }
      iterator operator++( int )
      {
         iterator before = *this;
         ++*this;
         return before;
      }

      /// Iterators are compared with the end; two that are not at it are never equal.
      friend bool operator==( const iterator & a, const iterator & b ) noexcept
      {
         return a.atEnd() && b.atEnd();
      }

    private:
      bool atEnd() const noexcept { return !cursor_ || cursor_->atEnd(); }

      std::optional< typename Map::Cursor > cursor_;
   };
   using const_iterator = iterator;

   explicit View( const Map & map ) noexcept : map_( &map ) {}

   std::size_t size() const noexcept { return map_->size(); }
   bool empty() const noexcept { return map_->empty(); }
   bool contains( typename Map::Query key ) const { return map_->find( key ) != nullptr; }

   iterator begin() const { return iterator( *map_ ); }
   iterator end() const noexcept { return iterator(); }

 private:
   const Map * map_;
};

namespace Detail {

/// The value type that a node's collection is declared with.
template< class Node > struct NodeValue;
template< class K, class V, std::uint32_t constant > struct NodeValue< MapNode< K, V, constant > > {
   using Type = V;
};
template< class V, class F, std::uint32_t constant >
struct NodeValue< KeyedNode< V, F, constant > > {
   using Type = V;
};
template< class K, std::uint32_t constant > struct NodeValue< SetNode< K, constant > > {
   using Type = K;
};
template< class T, class F, std::uint32_t constant, class P >
struct NodeValue< ChildNode< T, F, constant, P > > {
   using Type = P;
};

} // namespace Detail

/// The view of a hashed or an ordered collection of that node.
template< class Node > using HashView =
      View< HashMap2018< Node, typename Node::Key, typename Detail::NodeValue< Node >::Type > >;
template< class Node >
using OrderedView =
      View< OrderedMap< Node, typename Node::Key, typename Detail::NodeValue< Node >::Type > >;

} // namespace Vok
