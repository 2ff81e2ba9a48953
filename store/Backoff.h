// When to try again.
#pragma once

#include "Vok/Export.h"

#include <chrono>
#include <cstdint>
#include <random>

namespace Vok::Store {

/// How long to wait before the next attempt to connect: from 50 milliseconds on twice as long each
/// time, to 10 seconds, and each time a random part less, up to a half, so that many clients do not
/// come at once.
class VOK_EXPORT Backoff {
 public:
   explicit Backoff( std::uint32_t seed ) : random_( seed ) {}

   std::chrono::milliseconds next();

   /// An attempt succeeded.
   void reset() noexcept { attempts_ = 0; }

 private:
   std::minstd_rand random_;
   unsigned attempts_ = 0;
};

} // namespace Vok::Store
