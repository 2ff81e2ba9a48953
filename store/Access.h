// Who may do what with the mounts of a store.
#pragma once

#include "Vok/Export.h"
#include "store/Peer.h"

#include <cstdint>
#include <string_view>

namespace Vok::Store {

enum class Right : std::uint8_t {
   read,
   write,
   takeOver ///< write, and from a writer that is there
};

/// Asked before a peer opens a mount, and before a reader is told that there is one.
class VOK_EXPORT Access {
 public:
   virtual ~Access() = default;
   virtual bool allows( const Peer & peer, Right right, std::string_view path ) const = 0;
};

} // namespace Vok::Store
