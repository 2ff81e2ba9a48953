// The time, as the store asks for it: tests have one of their own.
#pragma once

#include "Vok/Export.h"

#include <chrono>

namespace Vok::Store {

/// Two clocks: one that never goes back, for what is due, and one that people read.
class VOK_EXPORT Clock {
 public:
   using Steady = std::chrono::steady_clock::time_point;
   using Wall = std::chrono::system_clock::time_point;

   virtual ~Clock() = default;
   virtual Steady steady() const noexcept = 0;
   virtual Wall wall() const noexcept = 0;
};

/// The machine's.
class VOK_EXPORT SystemClock final : public Clock {
 public:
   Steady steady() const noexcept override { return std::chrono::steady_clock::now(); }
   Wall wall() const noexcept override { return std::chrono::system_clock::now(); }
};

} // namespace Vok::Store
