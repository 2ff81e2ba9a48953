// Vok::HashMap2018: the hash map behind every keyed collection of an entity. It may be changed
// while it is iterated.
//
// The memory
//
//    the map:    one pointer, null while nothing was ever inserted
//    the block:  header | group group group ... | node node node ...
//    a group:    mark mark ... mark | 0 0 1 0 0 0 0 0
//
// A slot is one node's place, and thirteen slots are a group. The low bits of a key's hash choose
// its home, one of the 2^n groups. A node stands in its home or, where that was full when it came,
// in a later group: one on from there, two on from that, and so forth, around the end, which comes
// to every group once. A slot's mark is eight further bits of its node's hash, or 0 where it is
// empty. Behind a group's marks stand eight counts of three bits: how many nodes went past the
// group, because it was full, to where they stand now, for each value of three bits of their hash.
//
// Invariants
//
//    I1  A node stands in a group that its hash leads to.
//    I2  In every group before that one, the count for its hash is at least that of such nodes, or
//        7, where counting ends.
//    I3  A slot's mark is that of its node, or 0.
//    I4  size <= room. Only the smallest blocks, which have a single group, may be full.
//    I5  The seed stays from the first block to the last. No two maps have the same seed.
//
// The operations
//
// Lookup: the thirteen marks of the home are compared at once with that of the key. A match is the
// key but for one case in 255. The search goes on to the next group only where the count for the
// key's hash is not 0, which is rare even where groups are full.
//
// Insertion: a node goes into the first empty slot on its way, and is counted by the groups that it
// goes past. No other node moves. A full block gives way to one of twice the room.
//
// Deletion: the slot becomes empty, and the groups that the node went past count one less. No other
// node moves, and nothing is left behind, so a map does not age. (A count that has reached 7 stays,
// until the map grows. With a fair hash that is once in a blue moon.)
//
// Where all keys have the same hash, the map is a list that is searched thirteen nodes at a time.
//
// Why the cost holds: up to a load of 7/8 nearly every node stands in its home, and a hit, a miss,
// an insertion or a deletion touches one line of marks, and one of nodes or none. Whoever does not
// know the seed cannot choose keys that crowd together, and since no two maps share a seed, filling
// one in another's order of iteration does not crowd it either.
//
// Iteration: a cursor is known to the block and holds the bound between the slots that it has seen
// and those that it has not, of which it knows those of the group where it stands; a node inserted
// there or below may count as seen. When the map grows, all nodes
// get new places, which no bound can follow; then each cursor copies the keys that it has still to
// see, and goes on by looking them up. Without cursors all this is one test for null.
#pragma once

#include "Vok/MapNodes.h"
#include "Vok/detail/HashTable.h"

#include <cstddef>
#include <optional>
#include <utility>

namespace Vok {

/// A hash map of nodes (MapNodes.h). `Key` is the node's key; a Query is what it is looked up by: a
/// std::string_view for Corvo::String, `Key` for a number, an enumerator or a pointer, else
/// `const Key &` (see Detail::KeyHash, which has to be specialised for the key). The `==` and the
/// hash of a key, and a node's move, do not throw.
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
   /// Inlined always, so that of a node of a few words nothing passes through memory.
   [[gnu::always_inline]] std::optional< Node > take( Query query ) noexcept
   {
      return table_.take( query );
   }

   /// Calls `f( node )` for each node. `f` leaves the map as it is. Takes less than a cursor, which
   /// has to be where the map can tell it of changes.
   template< class F > void eachNode( F && f ) const { table_.eachNode( f ); }

   /// Deletes all nodes and gives all memory back.
   void clear() noexcept { table_.clear(); }

   /// Makes room: until the size exceeds `size`, no insertion allocates, nor throws unless its
   /// maker does.
   void reserve( std::size_t size ) { table_.reserve( size ); }

 private:
   Table table_;
};

} // namespace Vok
