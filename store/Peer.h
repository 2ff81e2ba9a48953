// Who is at the other end of a connection.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Vok::Store {

/// What the transport vouches for; the client's own word is not in it.
struct Peer {
   /// For people: `pid 4711 user 1000`, `127.0.0.1:40000`, `CN=agent 10.0.0.7:5000`.
   std::string name;

   std::optional< std::uint32_t > user; ///< over a Unix socket: its user when it connected
   std::vector< std::uint32_t > groups; ///< and all groups of its process then
   std::optional< std::string > certificate; ///< the common name in the certificate that it proved
};

} // namespace Vok::Store
