// Random orders.
#pragma once

#include "tests/support/Random.h"

#include <cstddef>
#include <cstdint>
#include <utility>

namespace Bench {

/// Puts items into an order that `random` chooses.
template< class Items > void shuffle( Items & items, TestSupport::Random & random )
{
   for ( std::size_t left = items.size(); left > 1; --left ) {
      std::swap( items[ left - 1 ], items[ random.below( static_cast< std::uint32_t >( left ) ) ] );
   }
}

} // namespace Bench
