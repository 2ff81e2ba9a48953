// Blocks of hash tables and the bookkeeping of their cursors.
#include "Vok/detail/TableBlock.h"

#include "Vok/detail/CacheLines.h"
#include "Vok/detail/Slab.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <memory>
#include <new>
#include <utility>

namespace Vok::Detail {

namespace {

// A single group has no more slots than its block is to serve for.
constexpr std::size_t smallRooms[] = { 4, MarkGroup::slots };
constexpr std::size_t largest = std::numeric_limits< std::ptrdiff_t >::max();

// Seven eighths of the slots of so many groups.
constexpr std::size_t roomOf( std::size_t groups ) noexcept
{
   return groups * MarkGroup::slots / 8 * 7 + groups * MarkGroup::slots % 8 * 7 / 8;
}

} // namespace

TableShape tableShape( std::size_t size )
{
   for ( const std::size_t room : smallRooms ) {
      if ( size <= room ) {
         return { 1, room };
      }
   }
   if ( size > largest / 4 ) {
      throw std::bad_array_new_length();
   }
   std::size_t groups = std::bit_ceil( size / MarkGroup::slots );
   while ( roomOf( groups ) < size ) {
      groups *= 2;
   }
   return { groups, roomOf( groups ) };
}

TableHeader * newTable( const TableShape & shape, HashSeed seed, std::size_t nodeSize,
      std::size_t nodeAlignment )
{
   const std::size_t slots = shape.groups == 1 ? shape.room : shape.groups * MarkGroup::slots;
   const std::size_t least = shape.groups == 1 ? alignof( TableHeader ) : lineBytes;
   const std::size_t alignment = std::max( nodeAlignment, least );
   const std::size_t before = sizeof( TableHeader ) + shape.groups * sizeof( MarkGroup );
   const std::size_t slack = alignment - alignof( TableHeader );
   if ( slots > ( largest - before - slack ) / nodeSize ) {
      throw std::bad_array_new_length();
   }
   const std::size_t bytes = before + slack + slots * nodeSize;
   const bool small = bytes <= largestTableInSlab;
   void * const memory = small ? slabAllocate( bytes ) : ::operator new( bytes );
   void * nodes = static_cast< std::byte * >( memory ) + before;
   std::size_t space = slack + slots * nodeSize;
   std::align( alignment, slots * nodeSize, nodes, space );
   auto * const table = new ( memory )
         TableHeader{ 0, shape.room, shape.groups - 1, nodes, seed, nullptr, small ? bytes : 0 };
   std::uninitialized_value_construct_n( table->groups(), shape.groups );
   return table;
}

void freeTable( TableHeader * table ) noexcept
{
   if ( const std::size_t inSlab = table->inSlab ) {
      slabFree( table, inSlab );
   } else {
      ::operator delete( table );
   }
}

TableCursor::TableCursor( const TableCursor & other ) noexcept
      : at( other.at ),
        group( other.group ),
        seen( other.seen ),
        byKey( other.byKey )
{
   attach( other.table );
}

TableCursor & TableCursor::operator=( const TableCursor & other ) noexcept
{
   if ( this != &other ) {
      detach();
      at = other.at;
      group = other.group;
      seen = other.seen;
      ahead = {};
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
   at = nullptr;
   ahead = {};
}

void cursorsAfterRemoval( const TableHeader & table, const void * node ) noexcept
{
   for ( TableCursor * cursor = table.cursors; cursor != nullptr; cursor = cursor->next ) {
      cursor->ahead = {};
      if ( cursor->at == node ) {
         cursor->at = nullptr;
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
