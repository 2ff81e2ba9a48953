// What a store tells of itself: for logs.
#pragma once

#include "Vok/Export.h"

#include <cstdint>
#include <string_view>

namespace Vok::Store {

/// Something that happened in a store. The texts are valid during the call.
struct Event {
   enum class Kind : std::uint8_t {
      connected, ///< a client has come
      greeted, ///< it has said who it is
      disconnected, ///< it has gone; `text`: why, where the store ended it
      refused, ///< what it wanted was refused: `text`
      mounted, ///< there is a new mount
      unmounted, ///< a mount is gone
      writerCame, ///< a mount has a writer
      writerGone, ///< it has none any more
      takenOver, ///< another writer took it
      wholeTree, ///< a reader that had something is sent the whole tree: `text` says why
      passedOver, ///< what a writer tells and the store's own definitions lack: `text`
      recovered, ///< a kept mount is there again
      setAside, ///< what was kept cannot be read: `text`
      notKept, ///< a batch could not be kept: `text`
      keptAgain ///< and now it could
   };

   Kind kind;
   std::string_view path; ///< of the mount, if any
   std::string_view program; ///< as it calls itself, if any
   std::string_view peer; ///< as the transport knows it, if any
   std::string_view text;
};

/// The name of a kind of event, as it stands above.
VOK_EXPORT std::string_view name( Event::Kind kind ) noexcept;

class VOK_EXPORT Observer {
 public:
   virtual ~Observer() = default;

   /// Does nothing to the server.
   virtual void happened( const Event & event ) = 0;
};

} // namespace Vok::Store
