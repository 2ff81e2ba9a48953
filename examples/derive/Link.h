// One tree out and one tree in, over a connection that may be lost and made again.
#pragma once

#include "Peer.h"

#include "Vok/Vok.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Derive {

/// A connection by which this process sends a tree and keeps a replica of another. One side
/// listens, the other connects; either may be killed and started again.
class Link {
 public:
   /// Which end of a connection this is.
   enum class End {
      listens,
      connects
   };

   Link( const std::string & path, End end, const Corvo::Ptr< Vok::Entity > & own,
         const Corvo::Ptr< Vok::Entity > & other );

   /// Sends what is pending, if there is a connection.
   void send();

   /// Takes what is there: a connection, or what came over it, or its end.
   void take();

   /// Where this side connects: makes a lost connection anew, for which it waits up to ten seconds.
   void reconnect();

   /// For poll(2): readable when take() does not wait; -1 where a connection is lost.
   int descriptor() const noexcept;

   /// Whether the other tree was ever known, and whether there is a connection now.
   bool heard() const noexcept { return heard_; }
   bool connected() const noexcept { return peer_ != nullptr; }

 private:
   void begin( StreamSocket socket );

   std::string path_;
   Vok::EntityVokNboAttrLogSa writer_;
   Vok::EntityVokNboAttrLogReader reader_;
   std::optional< StreamSocket > listener_;
   std::unique_ptr< Peer > peer_;
   bool heard_ = false;
};

/// Waits until one of these is readable, at most so many milliseconds, and lets every link take
/// what is there. `other` is one more descriptor to wait for, or -1. Says whether there was
/// anything.
bool takeAny( const std::vector< Link * > & links, int other, int milliseconds );

} // namespace Derive
