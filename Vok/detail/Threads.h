// Counts that cost no locked instruction while the process has only one thread.
#pragma once

#include <atomic>

#if __has_include( <sys/single_threaded.h> )
#include <sys/single_threaded.h>
#endif

namespace Vok::Detail {

// Whether this process has never started a second thread (or is known to be alone again). False
// where the C library cannot tell. The answer can turn to false only through an act of the calling
// thread, so it holds until that thread itself starts another one.
inline bool singleThreaded() noexcept
{
#if __has_include( <sys/single_threaded.h> )
   return __libc_single_threaded;
#else
   return false;
#endif
}

// Adds one. Who counts references holds one already, so no ordering is needed.
template< class Number > void incrementCount( std::atomic< Number > & count ) noexcept
{
   if ( singleThreaded() ) {
      count.store( count.load( std::memory_order_relaxed ) + 1, std::memory_order_relaxed );
   } else {
      count.fetch_add( 1, std::memory_order_relaxed );
   }
}

// Takes one away and returns what is left. Who is left with zero sees all that the other holders
// did before they let go, and may destroy the object.
template< class Number > Number decrementCount( std::atomic< Number > & count ) noexcept
{
   if ( singleThreaded() ) {
      const Number left = count.load( std::memory_order_relaxed ) - 1;
      count.store( left, std::memory_order_relaxed );
      return left;
   }
   return count.fetch_sub( 1, std::memory_order_acq_rel ) - 1;
}

} // namespace Vok::Detail
