// Shifting the marks of a hash table's slots by one, eight at a time. Most shifts fit into one such
// step, which has no branch on how many marks move.
#pragma once

#include "Vok/detail/TableBlock.h"

#include <cstddef>

namespace Vok::Detail {

// Whether there may be a far node in the slots from `slot` up to `end`. It may find one behind.
template< class Lanes > [[gnu::always_inline]] inline bool anyFar(
      const SlotMark * marks, std::size_t slot, std::size_t end ) noexcept
{
   const Lanes far = Lanes::all( farMark );
   bool found = Lanes::load( marks + slot ).atLeast( far ).any();
   for ( slot += Lanes::width; slot < end && !found; slot += Lanes::width ) {
      found = Lanes::load( marks + slot ).atLeast( far ).any();
   }
   return found;
}

// Moves the marks of the slots from `slot` up to `end` one up: their nodes are one farther from
// home than before. What is far stays far.
template< class Lanes > [[gnu::always_inline]] inline void marksUp(
      SlotMark * marks, std::size_t slot, std::size_t end ) noexcept
{
   if ( anyFar< Lanes >( marks, slot, end ) ) [[unlikely]] {
      for ( std::size_t i = end; i > slot; --i ) {
         const SlotMark mark = marks[ i - 1 ];
         marks[ i ] = static_cast< SlotMark >( mark + ( mark < farMark ? oneFarther : 0 ) );
      }
      return;
   }
   const Lanes farther = Lanes::all( oneFarther );
   for ( ; end - slot > Lanes::width; end -= Lanes::width ) {
      SlotMark * const block = marks + end - Lanes::width;
      Lanes::load( block ).plus( farther ).store( block + 1 );
   }
   Lanes::load( marks + slot )
         .plus( farther )
         .firstOf( end - slot, Lanes::load( marks + slot + 1 ) )
         .store( marks + slot + 1 );
}

// Moves the marks of the slots after `slot` up to `end` one down, onto the mark of a node that has
// gone: their nodes are one nearer to home. The slot before `end` becomes empty. Where a node may
// be far, its distance is not known here: then it does nothing and returns false.
template< class Lanes > [[gnu::always_inline]] inline bool marksDown(
      SlotMark * marks, std::size_t slot, std::size_t end ) noexcept
{
   if ( anyFar< Lanes >( marks, slot + 1, end ) ) [[unlikely]] {
      return false;
   }
   const Lanes nearer = Lanes::all( oneFarther );
   for ( ; end - slot > Lanes::width; slot += Lanes::width ) {
      Lanes::load( marks + slot + 1 ).minus( nearer ).store( marks + slot );
   }
   const std::size_t count = end - slot;
   Lanes::load( marks + slot + 1 )
         .minus( nearer )
         .firstOf( count - 1, Lanes::all( 0 ) )
         .firstOf( count, Lanes::load( marks + slot ) )
         .store( marks + slot );
   return true;
}

} // namespace Vok::Detail
