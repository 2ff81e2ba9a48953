// The event loop that moves the bytes of connections. A program with a loop of its own polls the
// descriptor and calls run(); any other one calls runUntil().
#pragma once

#include "Vok/Export.h"

#include <chrono>
#include <functional>
#include <memory>

namespace Vok::Store {

namespace Detail {
struct LoopState;
} // namespace Detail

/// Used from one thread. Outlives the connections and listeners that it runs.
class VOK_EXPORT Loop {
 public:
   /// Throws std::system_error where the system has no descriptors left.
   Loop();
   Loop( const Loop & ) = delete;
   Loop & operator=( const Loop & ) = delete;
   ~Loop();

   /// Is readable when there is something to do: for the caller's own loop. It never changes.
   int descriptor() const noexcept;

   /// After what time there is something to do at the latest: 0 for now, none where nothing is due.
   std::chrono::milliseconds timeout() const noexcept;
   static constexpr std::chrono::milliseconds never{ -1 };

   /// Does what there is to do, and does not wait: sends what was changed, takes what arrived. To
   /// be called after changes, when the descriptor is readable, and after the timeout. Throws what
   /// notifiees and listeners throw.
   void run();

   /// Runs until `done()` holds, which it is asked after whatever happens; false where that takes
   /// longer than `most`. Throws as run().
   bool runUntil( const std::function< bool() > & done, std::chrono::milliseconds most );

   Detail::LoopState & state() noexcept { return *state_; }

 private:
   std::unique_ptr< Detail::LoopState > state_;
};

} // namespace Vok::Store
