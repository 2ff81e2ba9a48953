// The bytes of a batch. docs/log.md has the grammar and a worked example; this is its table of
// constants.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Vok::Detail::Batch {

// header: magic, version, flags, length of the whole batch, stream
inline constexpr std::uint16_t magic = 0x5642; // "VB"
inline constexpr std::uint8_t version = 2;
inline constexpr std::uint8_t wholeFlag = 1; // the batch is the whole tree
inline constexpr std::uint8_t sinceFlag = 2; // it says which batch it follows: not the one before
inline constexpr std::size_t headerSize = 2 + 1 + 1 + 4 + 8;
inline constexpr std::size_t checksumSize = 8;

// Numbers that mostly count up, one after the other: what is written of each is how far it is from
// the one before it plus 1, as 0, 1, 2, 3 for 0, -1, 1, -2.
class Successive {
 public:
   std::uint64_t code( std::uint64_t number ) noexcept
   {
      const std::uint64_t distance = number - next_;
      next_ = number + 1;
      return distance << 1 ^ ( 0 - ( distance >> 63 ) );
   }
   std::uint64_t number( std::uint64_t code ) noexcept
   {
      const std::uint64_t number = next_ + ( code >> 1 ^ ( 0 - ( code & 1 ) ) );
      next_ = number + 1;
      return number;
   }

 private:
   std::uint64_t next_ = 0;
};

// record head: number of the entity, or where it is introduced the code of that, * 4 + kind
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

constexpr bool introduces( RecordKind kind ) noexcept
{
   return kind == RecordKind::whole || kind == RecordKind::outside;
}

// payload of a collection: mode, operations or members
inline constexpr std::uint8_t deltaMode = 0; // operations
inline constexpr std::uint8_t wholeMode = 1; // all members, and no other
inline constexpr std::uint8_t keepMode = 2; // the same by operations, of children that partly stay

// the flags of an argument in a type description
inline constexpr std::uint8_t referenceArgument = 1;
inline constexpr std::uint8_t identityArgument = 2;

} // namespace Vok::Detail::Batch
