// A client of the store: trees that it writes, and trees that it reads. It has no socket, no clock
// and no thread of its own; whoever has, moves the bytes and says when there is a connection.
//
//    Vok::Store::Client client( "agent" );
//    const auto config = client.write( "flowtracking/input/config/sampled/cli", root );
//    const auto status = client.read( "flowtracking/status/*", listener );
//    client.connected();
//    client.receive( bytes );                 // what the store sent
//    client.flush();                          // after changes of what is written
//    write( client.output() );                // for the store
//
// A client outlives its connections. What is written meanwhile waits, what is read stays; with the
// next connection each side is told what it missed.
#pragma once

#include "Vok/Export.h"
#include "Vok/Vok.h"
#include "store/Framing.h"
#include "store/Message.h"
#include "store/Path.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>

namespace Vok::Store {

class Client;

namespace Detail {
class ClientState;
class ReadingState;
class WritingState;
} // namespace Detail

/// A tree that a client writes, until this is destroyed: its mount stays, without a writer. What is
/// not `settled()` by then may be missing in it.
class VOK_EXPORT Writing {
 public:
   Writing( const Writing & ) = delete;
   Writing & operator=( const Writing & ) = delete;
   ~Writing();

   /// Whether the store takes its batches.
   bool open() const noexcept;

   /// Whether the store has everything: nothing is pending and nothing on its way.
   bool settled() const noexcept;

   /// Why the store does not take it; empty where it does, or has not answered. It is not asked
   /// again.
   const std::string & refusal() const noexcept;

   /// Takes the mount away with it.
   void remove();

 private:
   friend class Client;
   explicit Writing( std::shared_ptr< Detail::WritingState > state );

   std::shared_ptr< Detail::WritingState > state_;
};

/// What a client is told of the mounts that it reads. The tree's own notifiees hear of its changes.
/// None of these destroys the client, or the Reading that it is told for.
class VOK_EXPORT MountListener {
 public:
   virtual ~MountListener() = default;

   /// There is a mount: `root` is as its writer has it.
   virtual void mounted( const std::string & path, const Corvo::Ptr< Entity > & root ) = 0;

   /// Whether it has a writer, which one, and since when: also right after `mounted`.
   virtual void stateIs( const std::string &, const MountState & ) {}

   /// It is gone. The tree stays with whoever holds it.
   virtual void unmounted( const std::string & ) {}

   /// It cannot be read here: its type is not known, or its definition is another. Or, where `path`
   /// is a pattern, the store refuses it.
   virtual void failed( const std::string & path, const std::string & text ) = 0;
};

/// The mounts of a pattern, which a client reads until this is destroyed.
class VOK_EXPORT Reading {
 public:
   Reading( const Reading & ) = delete;
   Reading & operator=( const Reading & ) = delete;
   ~Reading();

   /// The tree of a path; null where there is none (yet).
   Corvo::Ptr< Entity > root( const std::string & path ) const;

 private:
   friend class Client;
   explicit Reading( std::shared_ptr< Detail::ReadingState > state );

   std::shared_ptr< Detail::ReadingState > state_;
};

/// See the top of this file. Used from one thread, the one that uses the trees.
class VOK_EXPORT Client {
 public:
   /// `program` is what calls itself so, for lists of mounts.
   explicit Client( std::string program );
   Client( const Client & ) = delete;
   Client & operator=( const Client & ) = delete;
   ~Client();

   /// Writes `root` at a path from now on, which gets a mount where there is none. `takeOver`: from
   /// the writer that it has, if any. Throws PathException.
   std::unique_ptr< Writing > write(
         const std::string & path, const Corvo::Ptr< Entity > & root, bool takeOver = false );

   /// Reads the mounts of a pattern from now on. `listener` outlives what is returned. Throws
   /// PathException.
   std::unique_ptr< Reading > read( const std::string & pattern, MountListener & listener );

   /// There is a connection, or there is none any more. Silent where it is known.
   void connected();
   void disconnected();

   /// Takes what the store sent. Throws ProtocolException and FramingException for what makes no
   /// sense: the connection is best closed. What a notifiee or a listener throws comes out too,
   /// after which the connection is best closed as well: nothing is lost with it.
   void receive( std::span< const std::byte > piece );

   /// Puts the changes of what is written behind what is to be sent, unless much waits already.
   void flush();

   /// The bytes to be sent next, none where nothing waits; they stay until `sent`.
   std::span< const std::byte > output() const noexcept;
   void sent( std::size_t count );

 private:
   std::unique_ptr< Detail::ClientState > state_;
};

/// How long to wait before the next attempt to connect: from 50 milliseconds on twice as long each
/// time, to 10 seconds, and each time a random part less, up to a half, so that many clients do not
/// come at once.
class VOK_EXPORT Backoff {
 public:
   explicit Backoff( std::uint64_t seed ) noexcept : random_( seed ) {}

   std::chrono::milliseconds next() noexcept;

   /// An attempt succeeded.
   void reset() noexcept { attempts_ = 0; }

 private:
   std::uint64_t random_;
   unsigned attempts_ = 0;
};

} // namespace Vok::Store
