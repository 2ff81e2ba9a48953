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
class WatchState;
} // namespace Detail

/// Calls what it was made with whenever its descriptor can be read, until this is destroyed, which
/// what it calls may do; the descriptor is closed later.
class VOK_EXPORT Watch {
 public:
   Watch( const Watch & ) = delete;
   Watch & operator=( const Watch & ) = delete;
   ~Watch();

 private:
   friend class Loop;
   explicit Watch( std::unique_ptr< Detail::WatchState > state );

   std::unique_ptr< Detail::WatchState > state_;
};

/// Used from one thread, the one that made it. So are the connections and listeners that it runs,
/// which it outlives, and their clients and servers. In a debug build a call from any other thread
/// ends the process.
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

   /// Waits for another descriptor of the program as for the loop's own ones; reading it does not
   /// block any more. What `readable` throws comes out of run(). Throws std::system_error for what
   /// cannot be waited for, such as files.
   std::unique_ptr< Watch > watch( int descriptor, std::function< void() > readable );

   Detail::LoopState & state() noexcept { return *state_; }

 private:
   std::unique_ptr< Detail::LoopState > state_;
};

} // namespace Vok::Store
