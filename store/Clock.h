// The time, as the store tells it to people: tests have one of their own.
#pragma once

#include "Vok/Export.h"

#include <chrono>

namespace Vok::Store {

/// Since when a mount is stale is told by it.
class VOK_EXPORT Clock {
 public:
   using Wall = std::chrono::system_clock::time_point;

   virtual ~Clock() = default;
   virtual Wall wall() const noexcept = 0;
};

/// The machine's.
class VOK_EXPORT SystemClock final : public Clock {
 public:
   Wall wall() const noexcept override { return std::chrono::system_clock::now(); }
};

} // namespace Vok::Store
