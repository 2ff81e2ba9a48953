// The store's side of all connections: mounts, their writers and their readers. It has no socket,
// no clock and no thread of its own; whoever has, moves the bytes.
//
//    Vok::Store::Server server( clock );
//    auto session = server.connected();      // a client came
//    session->receive( bytes );               // what it sent
//    server.publish();                        // after all that has arrived
//    write( session->output() );              // for the client
//    session.reset();                         // it went
#pragma once

#include "Vok/Digest.h"
#include "Vok/Export.h"
#include "store/Access.h"
#include "store/Clock.h"
#include "store/Keeper.h"
#include "store/Limits.h"
#include "store/Message.h"
#include "store/Observer.h"
#include "store/Peer.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace Vok::Store {

class Server;
class ServerMount;

namespace Detail {
class SessionState;
} // namespace Detail

/// A connection that the store has, until it is destroyed: its writers' mounts are stale then. It
/// does not outlive the server.
class VOK_EXPORT Session {
 public:
   Session( const Session & ) = delete;
   Session & operator=( const Session & ) = delete;
   ~Session();

   /// Takes what the client sent. Never throws for what a client sends: one that makes no sense of
   /// the protocol is told so, and `finished()`. Throws std::bad_alloc.
   void receive( std::span< const std::byte > piece );

   /// The bytes to be sent next, none where nothing waits; they stay until `sent`.
   std::span< const std::byte > output() const noexcept;

   /// The same in pieces, in order, as many as `into` takes: how many. For those who gather.
   std::size_t outputs( std::span< std::span< const std::byte > > into ) const noexcept;

   /// Called when there is output after there was none. Does nothing to the server.
   void onOutput( std::function< void() > call );

   /// So many of them were sent. A reader that was behind is told what it missed as soon as little
   /// waits to be sent to it.
   void sent( std::size_t count );

   /// Whether the connection is to be closed once all output is sent.
   bool finished() const noexcept;

   /// Whether the client has said who it is; one that does not within `Limits::greetingTime` is
   /// best `end`ed.
   bool greeted() const noexcept;

   /// Whether it is to be listened to. A client that does not take what is sent to it is best left
   /// until it does: what waits for it is bounded by that.
   bool takesMore() const noexcept;

   /// Tells the client why, and finishes.
   void end( const std::string & why );

 private:
   friend class Server;
   explicit Session( std::unique_ptr< Detail::SessionState > state );

   std::unique_ptr< Detail::SessionState > state_;
};

/// What the store has done, since it began.
struct Counters {
   std::uint64_t sessions = 0; ///< connections that came
   std::uint64_t refusals = 0; ///< of connections and of channels
   std::uint64_t batchesIn = 0;
   std::uint64_t bytesIn = 0; ///< of batches
   std::uint64_t batchesOut = 0; ///< each reader's counts
   std::uint64_t bytesOut = 0;
   std::uint64_t differences = 0; ///< to readers that had been passed over or had gone
   std::uint64_t wholeTrees = 0; ///< to readers
};

/// One mount, for lists.
struct MountInfo {
   std::string path;
   std::string type;
   std::string writer; ///< the program that writes or wrote it
   bool stale = false; ///< it has no writer
   Clock::Wall since; ///< when that began
   std::size_t readers = 0;
   bool kept = false; ///< it outlives the store
   std::string problem; ///< why batches cannot be kept at present; empty: they can
   Counters counters; ///< of this mount; `sessions` are writers that came
};

/// What a store is made with. All of it outlives the store.
struct ServerSetup {
   const Access * access = nullptr; ///< none: everybody may do everything
   Keeper * keeper = nullptr; ///< none: no mount outlives the store
   Observer * observer = nullptr; ///< none: nobody is told
   Limits limits = {};
};

/// All mounts, and all connections to them. Used from one thread. The types of mounts are those of
/// the modules that the process has loaded.
class VOK_EXPORT Server {
 public:
   /// `clock` outlives the server. Takes what the keeper has; what of it makes no sense is set
   /// aside.
   explicit Server( const Clock & clock, const ServerSetup & setup = {} );
   Server( const Server & ) = delete;
   Server & operator=( const Server & ) = delete;
   ~Server();

   /// A client has connected. One too many is told so, and `finished()`.
   std::unique_ptr< Session > connected( Peer peer = {} );

   /// A client has come, and was sent away before it was connected: for the observer.
   void refused( const Peer & peer, const std::string & why );

   /// Sends the changes of all mounts to their readers, each batch once for all of them, and tells
   /// writers what the store has. What changed since the last call goes in one batch: calling it
   /// after everything that arrived, rather than after each piece, saves work. Where a mount is
   /// kept, that comes once the keeper has it: call it as well when the keeper has results.
   void publish();

   /// Tries again to keep what could not be kept: to be called every now and then.
   void keepAgain();

   std::vector< MountInfo > mounts() const;

   /// What the whole tree of a mount is: its digest, and its bytes as one batch. Costs what the
   /// tree has. No value: there is no such mount, or it has no tree yet.
   struct TreeInfo {
      Digest digest;
      std::size_t bytes = 0;
   };
   std::optional< TreeInfo > tree( const std::string & path );

   std::size_t sessions() const noexcept { return sessions_.size(); }
   const Counters & counters() const noexcept { return counters_; }
   const Limits & limits() const noexcept { return setup_.limits; }

 private:
   friend class Session;
   friend class Detail::SessionState;
   friend class ServerMount;

   ServerMount * mount( const std::string & path );
   ServerMount & make( const std::string & path, const std::string & type );
   void remove( ServerMount & mount );
   void unmount( ServerMount & mount );
   void recover();
   void happened( const Event & event ) const;

   const Clock & clock_;
   ServerSetup setup_;
   Counters counters_;
   std::map< std::string, std::unique_ptr< ServerMount >, std::less<> > mounts_;
   std::vector< ServerMount * > changed_; // that have something to publish
   std::vector< Detail::SessionState * > sessions_;
   std::map< std::string, std::size_t > users_; // how many sessions each has
   std::uint32_t lastMount_ = 0;
   std::uint64_t lastRequest_ = 0; // to the keeper
};

} // namespace Vok::Store
