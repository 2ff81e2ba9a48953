// Vok::treeDigest: 128 bits that are the same for equal trees.
#pragma once

#include "Vok/Export.h"
#include "Vok/String.h"

#include <cstdint>

namespace Vok {

class Entity;

/// The digest of a tree. It finds differences, not forgeries.
class VOK_EXPORT Digest {
 public:
   constexpr Digest() noexcept = default;
   constexpr Digest( std::uint64_t high, std::uint64_t low ) noexcept : high_( high ),
                                                                        low_( low ) {}

   constexpr std::uint64_t high() const noexcept { return high_; }
   constexpr std::uint64_t low() const noexcept { return low_; }

   /// 32 hexadecimal digits.
   Corvo::String text() const;

   friend constexpr bool operator==( const Digest &, const Digest & ) noexcept = default;

 private:
   std::uint64_t high_ = 0;
   std::uint64_t low_ = 0;
};

/// The digest of an entity and everything below it: type, constructor arguments, attributes and
/// members, but not the root's own name. Equal trees have equal digests, whatever their history,
/// insertion order, process or hash seed. Costs one walk over the tree, without recursion by its
/// depth.
VOK_EXPORT Digest treeDigest( const Entity & root );

} // namespace Vok
