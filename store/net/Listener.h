// A socket at which a store is reached.
#pragma once

#include "Vok/Export.h"
#include "store/Server.h"
#include "store/net/Address.h"
#include "store/net/Loop.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace Vok::Store {

namespace Detail {
class ListenerState;
} // namespace Detail

/// Takes the connections of a store's clients. Neither the loop nor the server ends before it; the
/// connections end with it.
class VOK_EXPORT Listener {
 public:
   /// Throws std::system_error where it cannot listen there. A Unix socket that nobody listens at
   /// is replaced; one that somebody does is not.
   Listener( Loop & loop, Server & server, const Address & address );
   Listener( const Listener & ) = delete;
   Listener & operator=( const Listener & ) = delete;
   ~Listener();

   /// Where it listens: with the port that the system chose where that was 0.
   const Address & address() const noexcept;

   /// How many connections there are.
   std::size_t connections() const noexcept;

 private:
   std::unique_ptr< Detail::ListenerState > state_;
};

} // namespace Vok::Store
