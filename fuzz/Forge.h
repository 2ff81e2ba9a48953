// Batches taken apart and put together, and the tree whose stream the fuzzer of batches goes on
// with.
#pragma once

#include "fuzz/Support.h"

#include "tests/model/Everything.h"

#include <cstdint>
#include <vector>

namespace Fuzz {

using Batch = std::vector< std::byte >;

/// The stream of the base batch, the same in every run.
inline constexpr std::uint64_t baseStream = 0x0123456789abcdef;

/// What a batch holds between its number and its checksum.
struct BatchParts {
   Batch types; ///< the descriptions of types, with their number
   Batch records; ///< the rest
};

BatchParts partsOf( const Batch & batch );

/// A batch with the length and the checksum that its parts call for.
Batch batchOf( bool whole, std::uint64_t stream, std::uint64_t number, Bytes types, Bytes records );

/// A tree with something in most of its attributes, and an entity outside it. A collection that
/// iterates in no fixed order has at most one child, so that a writer gives the same numbers to
/// entities in every run.
Corvo::Ptr< Test::Root > baseTree();

/// What a writer of that tree makes of it, whole.
const Batch & baseBatch();

// An input of the fuzzer of batches is up to four pieces: a byte of flags, two bytes for a size,
// and so many bytes. They are what a batch holds behind its number, unless they are `verbatim`.
struct PieceFlags {
   static constexpr std::uint8_t whole = 1;
   static constexpr std::uint8_t otherStream = 2;
   static constexpr std::uint8_t wrongNumber = 4;
   static constexpr std::uint8_t verbatim = 8; ///< batches as they are
   static constexpr std::uint8_t deletesBefore = 16; ///< the replica's user does, before
   static constexpr std::uint8_t deletesMeanwhile = 32; ///< a notifiee does, while it is told
   static constexpr std::uint8_t ownTypes = 64; ///< descriptions of types stand before the rest
};

} // namespace Fuzz
