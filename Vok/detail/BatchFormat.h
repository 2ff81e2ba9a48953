// The bytes of a batch. docs/log.md has the grammar and a worked example; this is its table of
// constants.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Vok::Detail::Batch {

// header: magic, version, flags, length of the whole batch, stream
inline constexpr std::uint16_t magic = 0x5642; // "VB"
inline constexpr std::uint8_t version = 1;
inline constexpr std::uint8_t wholeFlag = 1; // the batch is the whole tree
inline constexpr std::uint8_t sinceFlag = 2; // it says which batch it follows: not the one before
inline constexpr std::size_t headerSize = 2 + 1 + 1 + 4 + 8;
inline constexpr std::size_t checksumSize = 8;

// record head: number of the entity * 4 + kind
enum class RecordKind : std::uint8_t {
   /// Some attributes of an entity that the reader has.
   change = 0,
   /// An entity that the batch introduces: what is not listed is at its default.
   whole = 1,
   /// The same, of an entity outside the tree, which the record introduces.
   outside = 2,
   /// As change, of an entity that left the tree and that references still lead to.
   left = 3,
};

// payload of a collection: length, mode, operations or members
inline constexpr std::uint8_t deltaMode = 0;
inline constexpr std::uint8_t wholeMode = 1;

// the flags of an argument in a type description
inline constexpr std::uint8_t referenceArgument = 1;
inline constexpr std::uint8_t identityArgument = 2;

} // namespace Vok::Detail::Batch
