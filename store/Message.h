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
inline constexpr std::size_t batchPiece = std::size_t{ 1 } << 17;

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
   access = 6, ///< the peer has not the right
   limit = 7, ///< there would be too many of something
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
   bool kept = false; ///< the mount outlives the store: the next batch waits for `Acknowledged`

   static constexpr auto fields =
         std::tuple( &Opened::channel, &Opened::stream, &Opened::batch, &Opened::kept );
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

/// Whether a mount has a writer, and whether it can be kept: to readers, and to its writer. The
/// reader has all that the writer had acknowledged before.
struct MountState {
   std::uint32_t channel = 0;
   std::uint32_t mount = 0; ///< 0 to a writer
   bool stale = false; ///< it has none
   std::uint64_t since = 0; ///< milliseconds from 1970
   std::string writer; ///< the program that writes or wrote it
   std::string problem; ///< why batches cannot be kept at present; empty: they can

   static constexpr auto fields = std::tuple( &MountState::channel, &MountState::mount,
         &MountState::stale, &MountState::since, &MountState::writer, &MountState::problem );
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

/// A client asks which mounts there are.
struct ListMounts {
   std::uint32_t channel = 0; ///< for the answer only: it is not open
   std::string pattern;
   bool trees = false; ///< with size and digest, for which the store walks over each tree

   static constexpr auto fields =
         std::tuple( &ListMounts::channel, &ListMounts::pattern, &ListMounts::trees );
};

/// One mount. What is counted is since the store began.
struct MountEntry {
   std::string path;
   std::string type; ///< full name of the root's type
   std::string writer; ///< the program that writes or wrote it
   bool stale = false; ///< it has no writer
   std::uint64_t since = 0; ///< when that began: milliseconds from 1970
   bool kept = false; ///< it outlives the store
   std::string problem; ///< why batches cannot be kept at present; empty: they can
   std::uint64_t readers = 0;
   std::uint64_t batchesIn = 0;
   std::uint64_t bytesIn = 0; ///< of batches
   std::uint64_t batchesOut = 0; ///< each reader's count
   std::uint64_t bytesOut = 0;
   std::uint64_t differences = 0; ///< to readers that had been passed over or had gone
   std::uint64_t wholeTrees = 0; ///< to readers
   std::uint64_t bytes = 0; ///< of the whole tree as a batch; 0 where `trees` was not asked for
   std::uint64_t digestHigh = 0;
   std::uint64_t digestLow = 0;

   static constexpr auto fields = std::tuple( &MountEntry::path, &MountEntry::type,
         &MountEntry::writer, &MountEntry::stale, &MountEntry::since, &MountEntry::kept,
         &MountEntry::problem, &MountEntry::readers, &MountEntry::batchesIn, &MountEntry::bytesIn,
         &MountEntry::batchesOut, &MountEntry::bytesOut, &MountEntry::differences,
         &MountEntry::wholeTrees, &MountEntry::bytes, &MountEntry::digestHigh,
         &MountEntry::digestLow );
};

/// Answer to ListMounts, or a part of it: those that the peer may read, ordered by their paths.
struct MountList {
   std::uint32_t channel = 0;
   bool last = true; ///< the answer is complete with it
   std::vector< MountEntry > mounts;

   static constexpr auto fields =
         std::tuple( &MountList::channel, &MountList::last, &MountList::mounts );
};

/// So many mounts are in a part of a list: their texts are bounded, and a frame is.
inline constexpr std::size_t mountListPart = 1000;

/// What of a mount's batches the store's own definitions lack, and its readers therefore miss.
struct PassedOver {
   std::uint32_t channel = 0;
   std::uint32_t mount = 0; ///< 0 to a writer
   std::vector< std::string > texts;

   static constexpr auto fields =
         std::tuple( &PassedOver::channel, &PassedOver::mount, &PassedOver::texts );
};

/// Whatever goes over a connection. The number of an alternative is its byte.
using Message = std::variant< Hello, OpenWriter, OpenReader, BatchPiece, Close, Welcome, Opened,
      Refused, Mounted, MountState, Acknowledged, Unmounted, ListMounts, MountList, PassedOver >;

/// Appends a message. Throws std::bad_alloc.
VOK_EXPORT void encode( const Message & message, NboAttrLog::Out & out );

/// Takes a frame apart; the bytes of a BatchPiece stay in it. Throws ProtocolException.
VOK_EXPORT Message decode( std::span< const std::byte > frame );

/// The bytes of a BatchPiece's message in front of the bytes of the batch.
inline constexpr std::size_t batchPieceHead = 1 + 4 + 4 + 1 + 4;

} // namespace Vok::Store
