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

#include "Vok/Export.h"
#include "store/Clock.h"
#include "store/Message.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
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

   /// So many of them were sent. A reader that was behind is told what it missed as soon as little
   /// waits to be sent to it.
   void sent( std::size_t count );

   /// Whether the connection is to be closed once all output is sent.
   bool finished() const noexcept;

 private:
   friend class Server;
   explicit Session( std::unique_ptr< Detail::SessionState > state );

   std::unique_ptr< Detail::SessionState > state_;
};

/// One mount, for lists.
struct MountInfo {
   std::string path;
   std::string type;
   std::string writer; ///< the program that writes or wrote it
   bool stale = false; ///< it has no writer
   Clock::Wall since; ///< when that began
   std::size_t readers = 0;
};

/// All mounts, and all connections to them. Used from one thread. The types of mounts are those of
/// the modules that the process has loaded.
class VOK_EXPORT Server {
 public:
   /// `clock` outlives the server.
   explicit Server( const Clock & clock );
   Server( const Server & ) = delete;
   Server & operator=( const Server & ) = delete;
   ~Server();

   /// A client has connected.
   std::unique_ptr< Session > connected();

   /// Sends the changes of all mounts to their readers, each batch once for all of them, and tells
   /// writers what the store has. What changed since the last call goes in one batch: calling it
   /// after everything that arrived, rather than after each piece, saves work.
   void publish();

   std::vector< MountInfo > mounts() const;

 private:
   friend class Session;
   friend class Detail::SessionState;
   friend class ServerMount;

   ServerMount * mount( const std::string & path );
   ServerMount & make( const std::string & path, const std::string & type );
   void remove( ServerMount & mount );

   const Clock & clock_;
   std::map< std::string, std::unique_ptr< ServerMount >, std::less<> > mounts_;
   std::vector< ServerMount * > changed_; // that have something to publish
   std::vector< Detail::SessionState * > sessions_;
   std::uint32_t lastMount_ = 0;
};

} // namespace Vok::Store
