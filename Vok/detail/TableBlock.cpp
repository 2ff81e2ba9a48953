// Blocks of hash tables and the bookkeeping of their cursors.
#include "Vok/detail/TableBlock.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <utility>

namespace Vok::Detail {

namespace {

// Up to this size a table has one home: it is a list that is searched eight nodes at a time.
constexpr std::size_t listRoom = 16;

// From this number of slots on, the nodes begin at a cache line.
constexpr std::size_t slotsOnLines = 64;
constexpr std::size_t lineBytes = 64;

constexpr std::size_t roundedUp( std::size_t number, std::size_t unit ) noexcept
{
   return ( number + unit - 1 ) / unit * unit;
}

} // namespace

TableShape tableShape( std::size_t size )
{
   if ( size <= listRoom ) {
      const std::size_t slots = std::max< std::size_t >( std::bit_ceil( size ), 4 );
      return { 1, slots, slots };
   }
   if ( size > std::numeric_limits< std::ptrdiff_t >::max() / 4 ) {
      throw std::bad_array_new_length();
   }
   // Three nodes to a home of four slots. A number of homes that can be halved often serves
   // when the tail overflows.
   const std::size_t least = std::max< std::size_t >( ( size + 2 ) / 3, 4 );
   const std::size_t homes =
         roundedUp( least, std::max< std::size_t >( std::bit_floor( least ) / 16, 1 ) );
   const std::size_t tail = std::min< std::size_t >( 8 + homes / 2, 128 );
   return { homes, homes * homeWidth + tail, homes * 3 };
}

TableHeader * newTable(
      const TableShape & shape, HashSeed seed, std::size_t nodeSize, std::size_t nodeAlignment )
{
   const std::size_t markBytes = ( shape.slots + marksBehind ) * sizeof( SlotMark );
   const std::size_t alignment =
         shape.slots >= slotsOnLines ? std::max( nodeAlignment, lineBytes ) : nodeAlignment;
   const std::size_t before = sizeof( TableHeader ) + markBytes + alignment;
   if ( shape.slots > ( std::numeric_limits< std::ptrdiff_t >::max() - before ) / nodeSize ) {
      throw std::bad_array_new_length();
   }
   std::size_t bytes = before + shape.slots * nodeSize;
   void * const memory = ::operator new( bytes );
   void * nodes = static_cast< std::byte * >( memory ) + sizeof( TableHeader ) + markBytes;
   bytes -= sizeof( TableHeader ) + markBytes;
   std::align( alignment, shape.slots * nodeSize, nodes, bytes );
   auto * const table = new ( memory )
         TableHeader{ 0, shape.homes, shape.slots, shape.room, seed, nullptr, nodes };
   std::memset( table->marks(), 0, markBytes );
   return table;
}

void freeTable( TableHeader * table ) noexcept { ::operator delete( table ); }

TableCursor::TableCursor( const TableCursor & other ) noexcept
      : bound( other.bound ),
        standing( other.standing ),
        byKey( other.byKey )
{
   attach( other.table );
}

TableCursor & TableCursor::operator=( const TableCursor & other ) noexcept
{
   if ( this != &other ) {
      detach();
      bound = other.bound;
      ahead = {};
      standing = other.standing;
      byKey = other.byKey;
      attach( other.table );
   }
   return *this;
}

void TableCursor::attach( TableHeader * to ) noexcept
{
   table = to;
   if ( to == nullptr ) {
      return;
   }
   previous_ = nullptr;
   next = to->cursors;
   to->cursors = this;
   if ( next != nullptr ) {
      next->previous_ = this;
   }
}

void TableCursor::unlink() noexcept
{
   if ( previous_ != nullptr ) {
      previous_->next = next;
   } else {
      table->cursors = next;
   }
   if ( next != nullptr ) {
      next->previous_ = previous_;
   }
   table = nullptr;
   standing = false;
}

void cursorsAfterRemoval( const TableHeader & table, std::size_t hole, std::size_t end ) noexcept
{
   for ( TableCursor * cursor = table.cursors; cursor != nullptr; cursor = cursor->next ) {
      cursor->ahead = {};
      if ( !cursor->byKey && hole < cursor->bound && cursor->bound <= end ) {
         if ( hole + 1 == cursor->bound ) {
            cursor->standing = false;
         }
         --cursor->bound;
      }
   }
}

void cursorsAfterInsertion( const TableHeader & table, std::size_t place, std::size_t end ) noexcept
{
   for ( TableCursor * cursor = table.cursors; cursor != nullptr; cursor = cursor->next ) {
      cursor->ahead = {};
      if ( !cursor->byKey && place < cursor->bound && cursor->bound <= end ) {
         ++cursor->bound;
      }
   }
}

void moveCursors( TableHeader & from, TableHeader & to ) noexcept
{
   to.cursors = std::exchange( from.cursors, nullptr );
   for ( TableCursor * cursor = to.cursors; cursor != nullptr; cursor = cursor->next ) {
      cursor->table = &to;
   }
}

void endCursors( TableHeader & table ) noexcept
{
   while ( table.cursors != nullptr ) {
      table.cursors->detach();
   }
}

} // namespace Vok::Detail
