// Fetching memory ahead of its use.
#pragma once

#include <cstddef>

namespace Vok::Detail {

// What the processor moves between memory and its caches at once.
inline constexpr std::size_t lineBytes = 64;

// Has the lines of so many bytes fetched, all at the same time. The bytes need not be there.
// Inlined always: to g++ a function that only fetches does nothing, and its calls are left out.
[[gnu::always_inline]] inline void fetchLines( const void * from, std::size_t bytes ) noexcept
{
   const auto * const first = static_cast< const std::byte * >( from );
   for ( std::size_t i = 0; i < bytes; i += lineBytes ) {
      __builtin_prefetch( first + i );
   }
}

} // namespace Vok::Detail
