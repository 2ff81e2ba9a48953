// The block behind a hash table, as far as it does not depend on the type of its nodes: its
// header, its shape, and the cursors that stand on it. The table itself is HashTable.h, its
// picture in HashMap2018.h.
#pragma once

#include "Vok/Export.h"
#include "Vok/detail/Hash.h"
#include "Vok/detail/Lanes.h"

#include <cstddef>
#include <cstdint>

namespace Vok::Detail {

class TableCursor;

// The metadata of a slot: 0 where it is empty, else the node's distance from its home, plus one, in
// the high byte, and the low byte of its hash in the low one. A high byte of 255 stands for every
// distance from `farDistance` on.
using SlotMark = std::uint16_t;
inline constexpr std::size_t farDistance = 254;
inline constexpr SlotMark oneFarther = 0x100;
inline constexpr SlotMark farMark = 0xff00; // from here on the mark of a far node
inline constexpr SlotMark anyMark = 0x100; // from here on the mark of a node
inline constexpr SlotMark movableMark = 0x200; // from here on of one that may stand one slot before
// How many slots a home has. A single one would make most insertions shift nodes; in eight a search
// would often not end within the eight slots that it looks at first.
inline constexpr std::size_t homeWidth = 4;
// Empty marks behind the last slot, so that eight can be read from any slot on.
inline constexpr std::size_t marksBehind = 8;

constexpr SlotMark slotMark( std::size_t distance, std::uint64_t hash ) noexcept
{
   const std::size_t shown = distance < farDistance ? distance : farDistance;
   return static_cast< SlotMark >( ( shown + 1 ) << 8 | ( hash & 0xff ) );
}

struct TableHeader {
   std::size_t size; // nodes held
   std::size_t homes; // homes of homeWidth slots each, from slot 0 on; the other slots are the tail
   std::size_t slots; // those of the homes and the tail
   std::size_t room; // the size up to which the block serves; less than or equal to `slots`
   HashSeed seed; // of this table, from its first block to its last
   TableCursor * cursors; // the cursors that stand on this table
   void * nodes; // `slots` places for nodes

   SlotMark * marks() noexcept { return reinterpret_cast< SlotMark * >( this + 1 ); }
};

// How a block is divided.
struct TableShape {
   std::size_t homes;
   std::size_t slots;
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
// All nodes below `bound` have been seen; where `standing` is set, the cursor stands on the one
// just below it. `ahead` are those of the eight slots from `group` on that the cursor comes to
// next, so that a step does not look at the marks; empty where it has to. Where `byKey` is set,
// positions have lost their meaning: then `bound` counts in the cursor's list of keys. `table` is
// null at the end.
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
   std::size_t bound = 0;
   std::size_t group = 0;
   LaneSet ahead;
   bool standing = false;
   bool byKey = false;
   TableCursor * next = nullptr;

 private:
   void unlink() noexcept;

   TableCursor * previous_ = nullptr;
};

// What a change of the table means for the cursors on it.
//
// The node of slot `hole` has gone, and those of the slots after it up to `end` have moved one
// down.
VOK_EXPORT void cursorsAfterRemoval(
      const TableHeader & table, std::size_t hole, std::size_t end ) noexcept;
// The nodes of the slots from `place` up to `end` have moved one up, and a new one stands at
// `place`.
VOK_EXPORT void cursorsAfterInsertion(
      const TableHeader & table, std::size_t place, std::size_t end ) noexcept;
// The block has given way to another one.
VOK_EXPORT void moveCursors( TableHeader & from, TableHeader & to ) noexcept;
// The nodes have gone altogether.
VOK_EXPORT void endCursors( TableHeader & table ) noexcept;

} // namespace Vok::Detail
