// One end of a connection between a client and the store, without its socket: messages in, bytes
// out, and the reverse.
#pragma once

#include "Vok/Export.h"
#include "store/Framing.h"
#include "store/Message.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace Vok::Store {

using Bytes = std::vector< std::byte >;

/// What is to be sent, and what is left of what has arrived. Large batches are not copied for each
/// reader: the ends of many connections share their bytes. What is small stands behind what waits
/// already, so that many messages are sent at once.
class VOK_EXPORT Link {
 public:
   Link() : frames_( frameLimit ) {}

   /// With a limit of its own for what arrives, until `allowAll`: of who has not said who it is.
   explicit Link( std::size_t limit ) : frames_( limit ) {}
   void allowAll() noexcept { frames_.limitIs( frameLimit ); }

   /// Puts a message behind what is to be sent.
   void send( const Message & message );

   /// Puts a batch there, in pieces.
   void sendBatch( std::uint32_t channel, std::uint32_t mount,
         const std::shared_ptr< const Bytes > & batch );

   /// The bytes to be sent next, none where nothing waits; they stay until `sent`.
   std::span< const std::byte > output() const noexcept;

   /// The same in pieces, in order, as many as `into` takes: how many. For those who gather.
   std::size_t outputs( std::span< std::span< const std::byte > > into ) const noexcept;

   /// So many of them were sent.
   void sent( std::size_t count ) noexcept;

   /// Called when there is output after there was none.
   void onOutput( std::function< void() > call ) { onOutput_ = std::move( call ); }

   /// How many bytes wait in all, and of them those that no other connection shares.
   std::size_t pending() const noexcept { return pending_; }
   std::size_t pendingOwn() const noexcept { return pendingOwn_; }

   /// Takes what has arrived, in pieces of any size, and hands over each message as soon as it is
   /// complete. Throws FramingException and ProtocolException, after which the connection is best
   /// closed, and what `handle` throws.
   void receive( std::span< const std::byte > piece,
         const std::function< void( const Message & ) > & handle );

 private:
   /// The longest message: a piece of a batch, or a list of what a reader knows.
   static constexpr std::size_t frameLimit = std::size_t{ 1 } << 22;

   struct Piece {
      Bytes own;
      std::shared_ptr< const Bytes > shared;
      std::size_t from = 0;
      std::size_t to = 0;

      std::span< const std::byte > bytes() const noexcept
      {
         return std::span( shared ? *shared : own ).subspan( from, to - from );
      }
   };

   /// From so many bytes on a batch is shared: below, a copy costs less than a piece of its own.
   static constexpr std::size_t sharedFrom = 4096;

   /// Room for what is put together: where nothing waits yet, and behind what waits.
   static constexpr std::size_t firstRoom = 512;
   static constexpr std::size_t nextRoom = 8192;

   /// `room`: how large a new piece is made at least.
   void push( std::size_t room, std::initializer_list< std::span< const std::byte > > parts );
   std::size_t room() const noexcept { return pieces_.empty() ? firstRoom : nextRoom; }
   void push( std::shared_ptr< const Bytes > shared, std::size_t from, std::size_t to );
   void pushed( std::size_t size );

   FrameReader frames_;
   std::deque< Piece > pieces_;
   std::size_t pending_ = 0;
   std::size_t pendingOwn_ = 0;
   std::function< void() > onOutput_;
};

/// Puts the pieces of batches together, of one channel each.
class VOK_EXPORT BatchAssembly {
 public:
   /// Batches may have so many bytes.
   explicit BatchAssembly( std::size_t limit ) noexcept : limit_( limit ) {}

   /// The whole batch where `piece` completes it, valid until the next call. Throws
   /// ProtocolException for one that is too large.
   std::optional< std::span< const std::byte > > add( const BatchPiece & piece );

   /// Gives the memory of the last batch back, or that of pieces whose end does not come.
   void reset() noexcept
   {
      bytes_ = Bytes(); // which frees what was there, as assigning {} would not
      complete_ = false;
   }

   /// How many bytes it holds.
   std::size_t size() const noexcept { return bytes_.size(); }

 private:
   std::size_t limit_;
   Bytes bytes_;
   bool complete_ = false;
};

} // namespace Vok::Store
