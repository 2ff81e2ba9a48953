// A client of the store: trees that it writes, and trees that it reads.
//
//    Vok::Store::Wire wire( "agent" );        // to a store at the other end of a connection
//    Vok::Store::Client client( wire );
//    const auto config = client.write( "flowtracking/input/config/sampled/cli", root );
//    const auto status = client.read( "flowtracking/status/*", listener );
//    client.flush();                          // after changes of what is written
//
// A client outlives its connections. What is written meanwhile waits, what is read stays; with the
// next connection each side is told what it missed.
#pragma once

#include "Vok/Export.h"
#include "Vok/Vok.h"
#include "store/Carrier.h"
#include "store/Message.h"
#include "store/Path.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

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

   /// Why the store cannot keep it at present: it acknowledges nothing, and goes on trying. Empty:
   /// it can, or need not.
   const std::string & problem() const noexcept;

   /// What of this tree the store's definitions lack, and its readers therefore miss.
   const std::vector< std::string > & passedOver() const noexcept;

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

   /// What the writer tells that the store's definitions lack, or this program's.
   virtual void passedOver( const std::string &, const std::vector< std::string > & ) {}

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
   /// `carrier` outlives the client, and has no other one meanwhile.
   explicit Client( Carrier & carrier );
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

   /// Asks which mounts there are: `answer` is called with those of the pattern that this client
   /// may read, once there is a connection. With `trees` their sizes and digests are among it, for
   /// which the store walks over each tree. Throws PathException.
   void list( const std::string & pattern, bool trees,
         std::function< void( const std::vector< MountEntry > & ) > answer );

   /// How many connections there have been, the one that there is included. What was answered on an
   /// earlier one need not hold any more.
   std::uint64_t connections() const noexcept;

   /// Sends the changes of what is written, unless much is on its way already.
   void flush();

 private:
   std::unique_ptr< Detail::ClientState > state_;
};

} // namespace Vok::Store
