// The value types that inputs choose from.
#pragma once

#include "Vok/detail/ValueOps.h"

#include <array>
#include <cstdint>
#include <vector>

namespace Fuzz {

/// All that modules of this program have as values, keys or fields: value types, enumerations,
/// numbers, texts, optionals. A byte chooses one. Which byte follows from the type's own name: a
/// new type takes some of its neighbour's bytes, and an input keeps its meaning.
class ValueTypes {
 public:
   /// `textable`: only those that can be read from a text.
   explicit ValueTypes( bool textable );

   const Vok::Detail::ValueOps & of( std::uint8_t byte ) const { return *byByte_[ byte ]; }

   /// One byte for each type.
   const std::vector< std::uint8_t > & bytes() const { return bytes_; }

 private:
   std::array< const Vok::Detail::ValueOps *, 256 > byByte_{};
   std::vector< std::uint8_t > bytes_;
};

} // namespace Fuzz
