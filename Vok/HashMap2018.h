// Vok::HashMap2018: the hash map behind every keyed collection of an entity. It may be changed
// while it is iterated.
//
// The memory
//
//    the map:    one pointer, null while nothing was ever inserted
//    the block:  header | mark mark mark ... | 0 0 0 0 0 0 0 0 | node node node ...
//
//    home      first              second             third              tail
//    slot      0    1    2    3 | 4    5    6    7 | 8    9   10   11 | 12   13
//    node      A    B           | C    D    E    F | G    H
//    home of   1st  1st         | 2nd  2nd  2nd  2nd 2nd  3rd
//    mark      1.a  2.b  0    0 | 1.c  2.d  3.e  4.f 5.g  2.h  0    0 | 0    0
//
// A slot is one node's place, and four slots are a home. The high bits of a key's hash choose its
// home (home = hash * homes / 2^64; their number need not be a power of two). A node stands in its
// home or, where that is full, behind it; the slots do not wrap around, the last nodes spill into a
// short tail. A slot's mark is 16 bits: how far the node is from the first slot of its home, plus
// one, and eight further bits of its hash; 0 where the slot is empty. From 254 on the distance is
// not told any more, and is computed from the hash when it matters.
//
// Invariants
//
//    I1  Nodes stand in the order of their homes (those of one home in any order).
//    I2  No slot from the first of a node's home up to the node is empty.
//    I3  A slot's mark is that of its node; the eight marks behind the last slot are 0.
//    I4  size <= room <= slots. Only the smallest blocks (up to 16 slots), which have a single
//        home, may be full.
//    I5  The seed stays from the first block to the last: growing keeps the order of I1. No two
//        maps have the same seed.
//
// The operations
//
// Lookup: eight marks from the home on are compared at once with the eight that the key's node
// would have there (1.x 2.x 3.x ...). A match is the key but for one case in 256. The search ends
// where a mark's distance is less than its own: there a node stands, or none, whose home is after
// the key's, so by I1 the key cannot follow.
//
// Insertion: a node goes where its lookup ended. Mostly that slot is empty; else the nodes from
// there to the next empty slot move up by one. A full block gives way to one of twice the room;
// since the order of homes does not change, it is written from front to back.
//
// Deletion: the last node of the same home takes the slot. Where nodes of later homes stand
// directly behind, all up to the next empty slot, or to one that stands at the beginning of its
// home, move down by one instead. Nothing is left in the hole, so a map does not age.
//
// Overflow: where the tail is full though the map is not, the number of homes is halved in place,
// which makes the tail longer; the order of homes stays. With a fair hash the chance of that is
// about 0.58^t for a tail of t slots and a full block, 10^-30 for big ones. Where all keys have
// the same hash, it ends with a single home, and the map is a list.
//
// Why the cost holds: up to a load of 3/4 a search mostly ends within the first eight marks, and
// a hit, a miss, an insertion or a deletion touches one line of marks and one or two of nodes. The
// order by homes bounds the spread: no node is far from home because it came late. Whoever does
// not know the seed cannot choose keys that crowd together, and since no two maps share a seed,
// filling one in another's order of iteration does not crowd it either.
//
// Iteration: a cursor is known to the block and holds the bound between the slots that it has seen
// and those that it has not. A shift across the bound moves the bound along, so that nodes never
// change sides; a node inserted below counts as seen. When the map grows, the nodes of one old home
// get new homes in an order that no bound can follow; then each cursor copies the keys that it has
// still to see, and goes on by looking them up. Without cursors all this is one test for null.
#pragma once

#include "Vok/MapNodes.h"
#include "Vok/detail/HashTable.h"

#include <cstddef>
#include <optional>
#include <utility>

namespace Vok {

/// A hash map of nodes (MapNodes.h). `Key` is the node's key; a Query is what it is looked up by: a
/// std::string_view for Corvo::String, else `const Key &` (see Detail::KeyHash, which has to be
/// specialised for the key). The `==` and the hash of a key, and a node's move, do not throw.
///
/// The object is one pointer. A change may move all nodes: it ends the life of every pointer and
/// reference to a node, but for the cursors. Arguments may lie inside the map that the call
/// changes. An operation that throws (std::bad_alloc, or what a key's or a value's copy, or the
/// maker of a node, throws) leaves the map as it was.
template< class NodeType, class KeyType, class ValueType > class HashMap2018 {
   using Table = Detail::HashTable< NodeType >;

 public:
   using Node = NodeType;
   using Key = KeyType;
   using Value = ValueType;
   using Query = Detail::KeyQuery< Key >;
   static_assert( std::is_same_v< Key, typename Node::Key > );

   /// One iteration: `for ( Cursor c( map ); !c.atEnd(); c.next() )`. The map may be changed in any
   /// way meanwhile, by other iterations too: every node that stays is seen exactly once, one that
   /// is inserted meanwhile at most once, one that is deleted not again. Whatever ends the map or
   /// clears it ends the iteration; moving or swapping a map takes its iterations along. Copying a
   /// cursor makes a second iteration from the same place. A cursor that lives on makes changes of
   /// the map slower, so keep none longer than the loop.
   class Cursor {
    public:
      /// Stands on the first node; allocates nothing.
      explicit Cursor( const HashMap2018 & map ) noexcept : cursor_( map.table_ ) {}
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
      typename Table::Cursor cursor_;
   };

   /// An empty map; allocates nothing.
   HashMap2018() noexcept = default;
   /// A copy has room for as many nodes as the original, up to twice its size. Linear.
   HashMap2018( const HashMap2018 & ) = default;
   HashMap2018( HashMap2018 && ) noexcept = default;
   HashMap2018 & operator=( const HashMap2018 & ) = default;
   HashMap2018 & operator=( HashMap2018 && ) noexcept = default;
   ~HashMap2018() = default;

   void swap( HashMap2018 & other ) noexcept { table_.swap( other.table_ ); }
   friend void swap( HashMap2018 & a, HashMap2018 & b ) noexcept { a.swap( b ); }

   std::size_t size() const noexcept { return table_.size(); }
   bool empty() const noexcept { return size() == 0; }
   /// The size up to which nothing is allocated.
   std::size_t capacity() const noexcept { return table_.capacity(); }

   /// The node of a key, or null. Its key must not be changed.
   Node * find( Query query ) noexcept { return table_.find( query ); }
   const Node * find( Query query ) const noexcept { return table_.find( query ); }
   bool contains( Query query ) const noexcept { return table_.find( query ) != nullptr; }

   /// The node of a key and false; where there is none, inserts the node that `make()` returns,
   /// which has that key, and returns it and true. `make` is called only then, once, before
   /// anything in the map moves, and does not change the map. The key is hashed once.
   template< class Make > std::pair< Node *, bool > findOrInsert( Query query, Make && make )
   {
      return table_.findOrInsert( query, std::forward< Make >( make ) );
   }

   /// Removes the node of a key and returns it, moved out; nothing where there is none. The memory
   /// stays for later insertions.
   std::optional< Node > take( Query query ) noexcept { return table_.take( query ); }

   /// Deletes all nodes and gives all memory back.
   void clear() noexcept { table_.clear(); }

   /// Makes room: until the size exceeds `size`, no insertion allocates, nor throws unless its
   /// maker does.
   void reserve( std::size_t size ) { table_.reserve( size ); }

 private:
   Table table_;
};

} // namespace Vok
