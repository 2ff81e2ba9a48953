// The block behind a hash table, as far as it does not depend on the type of its nodes: its
// header, its shape, and the cursors that stand on it. The table itself is HashTable.h, its
// picture in HashMap2018.h.
#pragma once

#include "Vok/Export.h"
#include "Vok/detail/Hash.h"
#include "Vok/detail/Marks.h"

#include <cstddef>
#include <cstdint>

namespace Vok::Detail {

class TableCursor;

// The groups of marks stand behind it, and behind them the nodes, or the places for nodes.
struct alignas( MarkGroup ) TableHeader {
   std::size_t size; // nodes held
   std::size_t room; // the size up to which the block serves
   std::size_t last; // the number of the last group; there are 2^n
   void * nodes;
   HashSeed seed; // of this table, from its first block to its last
   TableCursor * cursors; // the cursors that stand on this table
   std::size_t inSlab; // the bytes of a block that stands in a slab, as small ones do; else 0

   MarkGroup * groups() noexcept { return reinterpret_cast< MarkGroup * >( this + 1 ); }
   const MarkGroup * groups() const noexcept
   {
      return reinterpret_cast< const MarkGroup * >( this + 1 );
   }
};

// Slots are counted by sixteen in each group, as their marks stand, though it has thirteen.
inline constexpr std::size_t slotsCounted = sizeof( MarkGroup );
constexpr std::size_t slotNumber( std::size_t group, std::size_t slot ) noexcept
{
   return group * slotsCounted + slot;
}

// Most collections of a tree have a few members. Up to this many bytes a block comes from a slab,
// which costs less than a general allocation, above all where many are made before any goes.
inline constexpr std::size_t largestTableInSlab = 512;

// How large a block is.
struct TableShape {
   std::size_t groups; // 2^n
   std::size_t room;
};

// The shape of the smallest block for `size` nodes. Throws std::bad_alloc where that is beyond all
// memory.
VOK_EXPORT TableShape tableShape( std::size_t size );

// A new block without nodes. Throws std::bad_alloc.
VOK_EXPORT TableHeader * newTable(
      const TableShape & shape, HashSeed seed, std::size_t nodeSize, std::size_t nodeAlignment );

// Frees a block on which no nodes and no cursors are left.
VOK_EXPORT void freeTable( TableHeader * table ) noexcept;

// Where an iteration stands in a table, and its place in the table's list of cursors.
//
// The nodes of all groups before `group` have been seen, and those of its first `seen` slots. `at`
// is the last of them, on which the cursor stands, or null where that has been deleted. `ahead` are
// the slots of the group that the cursor comes to next, so that a step does not look at the marks;
// empty where it has to. Where `byKey` is set, positions have lost their meaning, and `at` is
// null: the cursor goes on by its list of keys. `table` is null at the end.
class VOK_EXPORT TableCursor {
 public:
   TableCursor() noexcept = default;
   explicit TableCursor( TableHeader * on ) noexcept { attach( on ); }
   TableCursor( const TableCursor & other ) noexcept;
   TableCursor & operator=( const TableCursor & other ) noexcept;
   ~TableCursor() { detach(); }

   void attach( TableHeader * to ) noexcept;
   // Leaves the table; from now on the cursor is at the end.
   void detach() noexcept
   {
      if ( table != nullptr ) {
         unlink();
      }
   }

   TableHeader * table = nullptr;
   void * at = nullptr;
   std::size_t group = 0;
   std::size_t seen = 0;
   SlotSet ahead;
   bool byKey = false;
   TableCursor * next = nullptr;

 private:
   void unlink() noexcept;

   TableCursor * previous_ = nullptr;
};

// What a change of the table means for the cursors on it. A node that comes means nothing: whether
// an iteration that is under way comes to it is left open.
//
// A node has gone.
VOK_EXPORT void cursorsAfterRemoval( const TableHeader & table, const void * node ) noexcept;
// The block has given way to another one.
VOK_EXPORT void moveCursors( TableHeader & from, TableHeader & to ) noexcept;
// The nodes have gone altogether.
VOK_EXPORT void endCursors( TableHeader & table ) noexcept;

} // namespace Vok::Detail
