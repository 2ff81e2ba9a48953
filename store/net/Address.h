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

/// `unix:/run/flowtrackd.sock`, a Unix domain socket; or `tcp:127.0.0.1:4040`, `tcp:[::1]:4040`, a
/// port of an address. Names of hosts are not resolved.
struct VOK_EXPORT Address {
   enum class Kind : std::uint8_t {
      unixSocket,
      tcp
   };

   /// Throws AddressException.
   static Address parse( std::string_view text );

   std::string text() const;

   Kind kind = Kind::unixSocket;
   std::string place; ///< the socket's path, or the address
   std::uint16_t port = 0; ///< of TCP
};

} // namespace Vok::Store
