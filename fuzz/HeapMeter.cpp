// The meter where there is no sanitizer: the heap alone.
#include "fuzz/Meter.h"

#include "tests/support/HeapMeter.h"

#include <optional>

namespace Fuzz {

namespace {

std::optional< TestSupport::HeapMeter > heap;

} // namespace

void startMeter()
{
   heap.emplace();
}

Metered metered()
{
   return { heap->peak(), 0, 0 };
}

} // namespace Fuzz
