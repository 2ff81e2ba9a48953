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
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace Vok::Store {

using Bytes = std::vector< std::byte >;

/// What is to be sent, and what is left of what has arrived. Batches are not copied for each
/// reader: the ends of many connections share their bytes.
class VOK_EXPORT Link {
 public:
   Link() : frames_( frameLimit ) {}

   /// Puts a message behind what is to be sent.
   void send( const Message & message );

   /// Puts a batch there, in pieces.
   void sendBatch( std::uint32_t channel, std::uint32_t mount,
         const std::shared_ptr< const Bytes > & batch );

   /// The bytes to be sent next, none where nothing waits; they stay until `sent`.
   std::span< const std::byte > output() const noexcept;

   /// So many of them were sent.
   void sent( std::size_t count ) noexcept;

   /// How many bytes wait in all.
   std::size_t pending() const noexcept { return pending_; }

   /// Takes what has arrived, in pieces of any size, and hands over each message as soon as it is
   /// complete. Throws FramingException and ProtocolException, after which the connection is best
   /// closed, and what `handle` throws.
   void receive( std::span< const std::byte > piece,
         const std::function< void( const Message & ) > & handle );

 private:
   /// The longest message: a piece of a batch, or a list of what a reader knows.
   static constexpr std::size_t frameLimit = 4 * batchPiece;

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

   void push( Bytes own );
   void push( std::shared_ptr< const Bytes > shared, std::size_t from, std::size_t to );

   FrameReader frames_;
   std::deque< Piece > pieces_;
   std::size_t pending_ = 0;
};

/// Puts the pieces of batches together, of one channel each.
class VOK_EXPORT BatchAssembly {
 public:
   /// Batches may have so many bytes.
   explicit BatchAssembly( std::size_t limit ) noexcept : limit_( limit ) {}

   /// The whole batch where `piece` completes it, valid until the next call. Throws
   /// ProtocolException for one that is too large.
   std::optional< std::span< const std::byte > > add( const BatchPiece & piece );

   /// Forgets the pieces of a batch whose end does not come.
   void reset() noexcept { bytes_ = {}; }

 private:
   std::size_t limit_;
   Bytes bytes_;
   bool complete_ = false;
};

} // namespace Vok::Store
