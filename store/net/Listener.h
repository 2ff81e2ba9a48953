// A socket at which a store is reached.
#pragma once

#include "Vok/Export.h"
#include "store/Server.h"
#include "store/net/Address.h"
#include "store/net/Loop.h"
#include "store/net/Tls.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace Vok::Store {

namespace Detail {
class ListenerState;
} // namespace Detail

/// Takes the connections of a store's clients, and tells the store who they are. Neither the loop
/// nor the server ends before it; the connections end with it. Used from the loop's thread.
///
/// A client that has not said who it is within `Limits::greetingTime`, of which a TLS handshake is
/// part, is told so, and its connection ended. Whoever is to be gone has two seconds to take what
/// it is told. Nothing is read from a client that does not take what it is sent. While the system
/// has no descriptors left, connections wait.
class VOK_EXPORT Listener {
 public:
   /// Throws std::system_error where it cannot listen there. A Unix socket that nobody listens at
   /// is replaced; one that somebody does is not. Throws std::invalid_argument for TCP without TLS
   /// at an address that is not loopback, and for TLS without `tls`, which outlives this.
   Listener( Loop & loop, Server & server, const Address & address,
         const TlsContext * tls = nullptr );
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
