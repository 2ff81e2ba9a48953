// Frames on a byte stream: how batches are told apart on a stream socket.
#pragma once

#include "Vok/Export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace Vok::Store {

/// The framing of batches over a stream socket. It does no I/O of its own: a sender puts a header
/// before each batch, a receiver feeds what the socket gave, in pieces of any size, and gets whole
/// batches back.
///
/// On the wire a frame is
///
///     offset  bytes  what
///     0       4      the magic, 56 6F 6B 31: the letters "Vok1"; the digit is the version
///     4       4      the length of the payload, unsigned, most significant byte first
///     8       length the payload
///
/// Frames follow one another without gaps; a payload may be empty. The framing finds a peer that
/// speaks something else, and it bounds what a peer can make the receiver allocate. It does not
/// check the payload: an attribute-log batch carries a checksum of its own.

/// The payload that a frame may have unless a limit is given: 64 MiB. A batch is one frame, and the
/// first one of a stream holds a whole tree, so the limit must be far above any tree that is really
/// kept; and a receiver may have to hold one frame of each of its peers, so it must be far below
/// the memory of the machine.
inline constexpr std::size_t defaultFrameLimit = std::size_t{ 64 } << 20;

/// The bytes of a frame before its payload.
inline constexpr std::size_t frameHeaderSize = 8;

/// What a peer sent is not a sequence of frames, or a frame is longer than the limit; what() says
/// what was found and what was expected.
class VOK_EXPORT FramingException : public std::runtime_error {
 public:
   using std::runtime_error::runtime_error;
};

/// Makes frames, all with the same limit. Holds nothing else; may be copied.
class VOK_EXPORT FrameWriter {
 public:
   /// `limit` is the longest payload in bytes, and should be the receiver's.
   explicit FrameWriter( std::size_t limit = defaultFrameLimit ) noexcept : limit_( limit ) {}

   /// The header of a frame whose payload has `payloadSize` bytes, to be sent right before them.
   /// For senders that gather: the payload need not be copied. Throws FramingException when the
   /// payload is longer than the limit, or than 32 bits can say.
   std::array< std::byte, frameHeaderSize > header( std::size_t payloadSize ) const;

   /// Appends the whole frame to `out`; `payload` may lie in `out`. Throws as header() does, or
   /// std::bad_alloc; `out` is then as it was.
   void append( std::span< const std::byte > payload, std::vector< std::byte > & out ) const;

 private:
   std::size_t limit_;
};

/// Takes a stream apart again: one reader per stream.
///
///     while ( auto frame = reader.feed( piece ) ) {
///        handle( *frame );
///     }
///
/// A frame longer than the limit is refused as soon as its header is complete. Memory grows as the
/// bytes of a payload arrive, whatever length the header claims: to at most twice what has arrived,
/// or three times for the moment of growing. Nothing is held between frames.
///
/// After an exception of type FramingException the place in the stream is lost: every later call
/// throws the same message again, and the connection is best closed. An std::bad_alloc loses
/// nothing: the bytes that could not be kept are still in the piece.
class VOK_EXPORT FrameReader {
 public:
   /// `limit` is the longest payload that is accepted, in bytes.
   explicit FrameReader( std::size_t limit = defaultFrameLimit ) noexcept : limit_( limit ) {}

   FrameReader( const FrameReader & ) = delete;
   FrameReader & operator=( const FrameReader & ) = delete;

   /// From the next frame on. Call it between frames.
   void limitIs( std::size_t limit ) noexcept { limit_ = limit; }

   /// Takes bytes from the front of `piece`, which is cut by what was taken, up to the end of the
   /// first frame that they complete, and gives that frame's payload. No value: the piece is used
   /// up and its last frame, if one has begun, lacks bytes yet. Each byte is copied once, or twice
   /// as the payload's buffer grows.
   std::optional< std::vector< std::byte > > feed( std::span< const std::byte > & piece );

   /// To be called when the stream ended: throws FramingException when it did so inside a frame.
   void end();

 private:
   enum class State : std::uint8_t {
      header,
      payload,
      notAFrame,
      tooLong,
      endedEarly
   };

   void takeHeader( std::span< const std::byte > & piece );
   void checkHeader();
   void takePayload( std::span< const std::byte > & piece );
   void throwIfFailed() const;
   std::string endedText() const;

   std::size_t limit_;
   std::array< std::byte, frameHeaderSize > header_{};
   std::size_t headerSize_ = 0; // of header_, how many bytes have arrived
   std::size_t payloadSize_ = 0; // as the header says, once it is complete
   std::vector< std::byte > payload_;
   State state_ = State::header;
};

} // namespace Vok::Store
