// From the numbers of entities that a batch introduces to where they are kept.
#pragma once

#include "Vok/HashMap2018.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace Vok::Detail {

/// How many entities a batch introduces, or more where it speaks of one twice; and the range of
/// their numbers.
struct Introduced {
   std::size_t count = 0;
   std::uint64_t lowest = std::numeric_limits< std::uint64_t >::max();
   std::uint64_t highest = 0;

   void add( std::uint64_t number ) noexcept
   {
      ++count;
      lowest = std::min( lowest, number );
      highest = std::max( highest, number );
   }
};

/// Positions by number. A writer gives numbers out in order, so that an array will do for a tree;
/// numbers that are far apart are hashed.
class NumberIndex {
 public:
   /// For so many numbers of that range. Throws std::bad_alloc.
   explicit NumberIndex( const Introduced & introduced ) : lowest_( introduced.lowest )
   {
      if ( introduced.count == 0 ) {
         return;
      }
      if ( const std::uint64_t range = introduced.highest - introduced.lowest;
            range / 2 <= introduced.count ) {
         near_.resize( static_cast< std::size_t >( range ) + 1 );
      } else {
         far_.reserve( introduced.count );
      }
   }

   /// The position under a number of the range; 0 where there is none.
   std::uint32_t find( std::uint64_t number ) const noexcept
   {
      const std::uint64_t place = number - lowest_; // of a lower number beyond all
      if ( place < near_.size() ) [[likely]] {
         return near_[ static_cast< std::size_t >( place ) ];
      }
      return far_.empty() ? 0 : findFar( number );
   }

   /// Puts a position, which is not 0, under a number of the range. False where there is one.
   bool insert( std::uint64_t number, std::uint32_t position )
   {
      if ( near_.empty() ) {
         return far_.findOrInsert( number, [ & ] { return Node{ number, position }; } ).second;
      }
      std::uint32_t & there = near_[ static_cast< std::size_t >( number - lowest_ ) ];
      const bool free = there == 0;
      there = free ? position : there;
      return free;
   }

 private:
   using Node = MapNode< std::uint64_t, std::uint32_t >;

   [[gnu::noinline]] std::uint32_t findFar( std::uint64_t number ) const noexcept
   {
      const Node * const found = far_.find( number );
      return found ? found->value : 0;
   }

   std::uint64_t lowest_;
   std::vector< std::uint32_t > near_;
   HashMap2018< Node, std::uint64_t, std::uint32_t > far_;
};

} // namespace Vok::Detail
