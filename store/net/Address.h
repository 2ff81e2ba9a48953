// Where a store is reached.
#pragma once

#include "Vok/Export.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Vok::Store {

/// A text is no address; what() says what was expected.
class VOK_EXPORT AddressException : public std::runtime_error {
 public:
   using std::runtime_error::runtime_error;
};

/// `unix:/run/flowtrackd.sock`, a Unix domain socket; `tcp:127.0.0.1:4040`, `tcp:[::1]:4040`, a
/// port of an address, for the same machine; or `tls:10.0.0.1:4041`, `tls:[::1]:4041`, the same
/// with TLS. Names of hosts are not resolved.
struct VOK_EXPORT Address {
   enum class Kind : std::uint8_t {
      unixSocket,
      tcp,
      tls
   };

   /// Throws AddressException.
   static Address parse( std::string_view text );

   std::string text() const;

   /// Whether it is an IP address that only this machine reaches: 127.0.0.0/8 or ::1.
   bool isLoopback() const noexcept;

   Kind kind = Kind::unixSocket;
   std::string place; ///< the socket's path, or the address
   std::uint16_t port = 0; ///< of TCP, with TLS or without
};

} // namespace Vok::Store
