// Measuring what a piece of code costs.
#pragma once

#include <cstdint>

namespace Fuzz {

struct Metered {
   std::uint64_t heap = 0; ///< the most bytes held at once, above those held at the start
   std::uint64_t steps = 0; ///< pieces of code without a branch that were run; not the C library's
   std::uint64_t stack = 0; ///< the most bytes of stack, below the start's
};

/// Begins to measure; forgets what was measured before.
void startMeter();

/// What was measured since.
Metered metered();

} // namespace Fuzz
