// The messages between a client and the store. docs/store.md says when each is sent; this is their
// form. A message is the payload of one frame: a byte that says which it is, then its fields in the
// order in which they are declared here, as an attribute log has them.
#pragma once

#include "Vok/Export.h"
#include "Vok/NboAttrLog.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <tuple>
#include <variant>
#include <vector>

namespace Vok::Store {

/// The version of the protocol that both sides have to speak.
inline constexpr std::uint32_t protocolVersion = 1;

/// The bytes of a batch that one message carries; a larger batch comes in several.
inline constexpr std::size_t batchPiece = std::size_t{ 1 } << 20;

/// What a peer sent is no message, or none that it may send; what() says what was expected.
class VOK_EXPORT ProtocolException : public std::runtime_error {
 public:
   using std::runtime_error::runtime_error;
};

/// Why something was refused.
enum class Refusal : std::uint8_t {
   protocol = 0, ///< what was sent makes no sense; the connection ends
   path = 1, ///< no path, or no pattern
   type = 2, ///< no type of the store's, or the mount has another
   writer = 3, ///< the mount has a writer
   takenOver = 4, ///< another writer took the mount over
   batch = 5, ///< a batch does not fit the tree
};

/// First message of a client.
struct Hello {
   std::uint32_t version = protocolVersion;
   std::string program; ///< what calls itself so, for lists of mounts

   static constexpr auto fields = std::tuple( &Hello::version, &Hello::program );
};

/// A client wants to write the mount at a path, which is made where there is none.
struct OpenWriter {
   std::uint32_t channel = 0; ///< the client's own number, not 0
   std::string path;
   std::string type; ///< full name of the root's type
   bool takeOver = false; ///< from the writer that the mount has, if any

   static constexpr auto fields = std::tuple(
         &OpenWriter::channel, &OpenWriter::path, &OpenWriter::type, &OpenWriter::takeOver );
};

/// A mount that a reader has already, and how far.
struct Known {
   std::string path;
   std::uint64_t stream = 0;
   std::uint64_t batch = 0;

   static constexpr auto fields = std::tuple( &Known::path, &Known::stream, &Known::batch );
};

/// A client wants to read the mounts at all paths of a pattern, those that come later too.
struct OpenReader {
   std::uint32_t channel = 0;
   std::string pattern;
   std::vector< Known > known;

   static constexpr auto fields =
         std::tuple( &OpenReader::channel, &OpenReader::pattern, &OpenReader::known );
};

/// A piece of a batch: from a writer, whose mount is 0, and to a reader.
struct BatchPiece {
   std::uint32_t channel = 0;
   std::uint32_t mount = 0;
   bool last = false; ///< the batch is complete with it
   std::span< const std::byte > bytes; ///< in the frame

   static constexpr auto fields = std::tuple(
         &BatchPiece::channel, &BatchPiece::mount, &BatchPiece::last, &BatchPiece::bytes );
};

/// A client is done with a channel.
struct Close {
   std::uint32_t channel = 0;
   bool remove = false; ///< a writer's mount goes with it

   static constexpr auto fields = std::tuple( &Close::channel, &Close::remove );
};

/// Answer to Hello.
struct Welcome {
   std::uint32_t version = protocolVersion;

   static constexpr auto fields = std::tuple( &Welcome::version );
};

/// A writer may write. What the store has of its stream: the writer goes on behind it.
struct Opened {
   std::uint32_t channel = 0;
   std::uint64_t stream = 0;
   std::uint64_t batch = 0;

   static constexpr auto fields = std::tuple( &Opened::channel, &Opened::stream, &Opened::batch );
};

/// Something is not done, and the channel is closed; channel 0: the connection ends.
struct Refused {
   std::uint32_t channel = 0;
   std::uint8_t reason = 0; ///< a Refusal
   std::string text;

   static constexpr auto fields =
         std::tuple( &Refused::channel, &Refused::reason, &Refused::text );
};

/// A reader's pattern has a mount. Its batches follow.
struct Mounted {
   std::uint32_t channel = 0;
   std::uint32_t mount = 0; ///< the store's number
   std::string path;
   std::string type;

   static constexpr auto fields =
         std::tuple( &Mounted::channel, &Mounted::mount, &Mounted::path, &Mounted::type );
};

/// Whether a mount has a writer. The reader has all that the writer had acknowledged before.
struct MountState {
   std::uint32_t channel = 0;
   std::uint32_t mount = 0;
   bool stale = false; ///< it has none
   std::uint64_t since = 0; ///< milliseconds from 1970
   std::string writer; ///< the program that writes or wrote it

   static constexpr auto fields = std::tuple( &MountState::channel, &MountState::mount,
         &MountState::stale, &MountState::since, &MountState::writer );
};

/// The store has a writer's batches up to this one, and will not lose them where it keeps mounts.
struct Acknowledged {
   std::uint32_t channel = 0;
   std::uint64_t batch = 0;

   static constexpr auto fields = std::tuple( &Acknowledged::channel, &Acknowledged::batch );
};

/// A mount is gone.
struct Unmounted {
   std::uint32_t channel = 0;
   std::uint32_t mount = 0;

   static constexpr auto fields = std::tuple( &Unmounted::channel, &Unmounted::mount );
};

/// Whatever goes over a connection. The number of an alternative is its byte.
using Message = std::variant< Hello, OpenWriter, OpenReader, BatchPiece, Close, Welcome, Opened,
      Refused, Mounted, MountState, Acknowledged, Unmounted >;

/// Appends a message. Throws std::bad_alloc.
VOK_EXPORT void encode( const Message & message, NboAttrLog::Out & out );

/// Takes a frame apart; the bytes of a BatchPiece stay in it. Throws ProtocolException.
VOK_EXPORT Message decode( std::span< const std::byte > frame );

/// The bytes of a BatchPiece's message in front of the bytes of the batch.
inline constexpr std::size_t batchPieceHead = 1 + 4 + 4 + 1 + 4;

} // namespace Vok::Store
