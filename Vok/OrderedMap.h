// Vok::OrderedMap: the map behind every collection that is kept in the order of its keys. It may be
// changed while it is iterated.
//
// The memory
//
//    the map:   one pointer, null while nothing was ever inserted
//    the tree:  a B-tree of blocks of about half a kilobyte, and blocks to spare
//
//                        [ 20 | 40 ]
//              .-------------'  |  '--------------.
//       [ 3 | 8 | 11 ]     [ 25 | 31 ]     [ 50 | 57 | 58 ]
//
// A block holds items in ascending order, and where it has children, one before each item and one
// behind the last. Items are the nodes of MapNodes.h; they stand in all blocks.
//
// Invariants
//
//    I1  Keys ascend from left to right, and no two are equal.
//    I2  All leaves are at the same height.
//    I3  Every block but the root is at least half full; the root of several levels has an item.
//    I4  A child knows its parent.
//
// The operations
//
// Lookup: a binary search in each block from the root down.
//
// Insertion: into the leaf where the lookup ended. A full block is split into halves and the item
// between them rises to the parent. The blocks for all splits are provided before anything moves.
//
// Deletion: an item of an inner block is replaced by the one before it, which is the last of a
// leaf. A leaf that becomes less than half full takes an item from a neighbour, through the parent;
// where both have only half, two of them and the item between become one block.
//
// Why the cost holds: with I3 a tree of a million items is three to five blocks high; each change
// touches the blocks of one path, and moves items within blocks only. Blocks that are given up are
// kept for the next splits.
//
// Iteration: a cursor knows the block and the place of its item. Before the map changes, each
// cursor that stands on it copies the key of its item, and then finds the next one by that.
#pragma once

#include "Vok/MapNodes.h"
#include "Vok/detail/BTree.h"

#include <cstddef>
#include <optional>
#include <type_traits>
#include <utility>

namespace Vok {

/// A map of nodes (MapNodes.h) in ascending order of their keys, by `<`. `Key` is the node's key; a
/// Query is what it is looked up by, as in HashMap2018. The `<` and the copying of keys, and a
/// node's move, do not throw.
///
/// The object is one pointer. A change may move all nodes: it ends the life of every pointer and
/// reference to a node, but for the cursors. Arguments may lie inside the map that the call
/// changes. An operation that throws (std::bad_alloc, or what a value's copy or the maker of a node
/// throws) leaves the map as it was. Lookup, insertion and deletion cost O( log size ).
template< class NodeType, class KeyType, class ValueType > class OrderedMap {
   using Tree = Detail::BTree< NodeType >;

 public:
   using Node = NodeType;
   using Key = KeyType;
   using Value = ValueType;
   using Query = Detail::KeyQuery< Key >;
   static_assert( std::is_same_v< Key, typename Node::Key > );

   /// One iteration, in ascending order of keys. All that is said of HashMap2018's cursors holds; a
   /// node that is inserted meanwhile is seen where its key is after that of the cursor.
   class Cursor {
    public:
      /// Stands on the first node; allocates nothing.
      explicit Cursor( const OrderedMap & map ) noexcept : cursor_( map.tree_ ) {}
      /// The node on which the cursor stands, until the map is changed; null at the end, and where
      /// that node has been deleted.
      const Node * node() const noexcept { return cursor_.node(); }
      /// The same where it is known that there is one.
      const Node & operator*() const noexcept { return *cursor_; }
      /// Whether the iteration is over.
      bool atEnd() const noexcept { return cursor_.atEnd(); }
      /// Goes to the next node, also from one that has been deleted.
      void next() noexcept { cursor_.next(); }

    private:
      typename Tree::Cursor cursor_;
   };

   /// An empty map; allocates nothing.
   OrderedMap() noexcept = default;
   OrderedMap( const OrderedMap & ) = default;
   OrderedMap( OrderedMap && ) noexcept = default;
   OrderedMap & operator=( const OrderedMap & ) = default;
   OrderedMap & operator=( OrderedMap && ) noexcept = default;
   ~OrderedMap() = default;

   void swap( OrderedMap & other ) noexcept { tree_.swap( other.tree_ ); }
   friend void swap( OrderedMap & a, OrderedMap & b ) noexcept { a.swap( b ); }

   std::size_t size() const noexcept { return tree_.size(); }
   bool empty() const noexcept { return size() == 0; }

   /// The node of a key, or null. Its key must not be changed.
   Node * find( Query query ) noexcept { return tree_.find( query ); }
   const Node * find( Query query ) const noexcept { return tree_.find( query ); }
   bool contains( Query query ) const noexcept { return tree_.find( query ) != nullptr; }

   /// The node of a key and false; where there is none, inserts the node that `make()` returns,
   /// which has that key, and returns it and true. `make` is called only then, once, before
   /// anything in the map moves, and does not change the map.
   template< class Make > std::pair< Node *, bool > findOrInsert( Query query, Make && make )
   {
      return tree_.findOrInsert( query, std::forward< Make >( make ) );
   }

   /// Removes the node of a key and returns it, moved out; nothing where there is none. The memory
   /// stays for later insertions.
   std::optional< Node > take( Query query ) noexcept { return tree_.take( query ); }

   /// Calls `f( node )` for each node, in ascending order of keys. `f` leaves the map as it is.
   /// Takes less than a cursor, which has to be where the map can tell it of changes.
   template< class F > void eachNode( F && f ) const { tree_.eachNode( f ); }

   /// Deletes all nodes and gives all memory back.
   void clear() noexcept { tree_.clear(); }

   /// Makes room: until the size exceeds `size`, no insertion allocates, nor throws unless its
   /// maker does.
   void reserve( std::size_t size ) { tree_.reserve( size ); }

 private:
   Tree tree_;
};

} // namespace Vok
