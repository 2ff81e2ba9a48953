// The fingerprint of a module: two modules have the same one if they mean the same.
#pragma once

#include "vokgen/Model.h"

#include <cstdint>

namespace VokGen {

/// A 64-bit number over everything that a checked module declares, in declared order: the names of
/// the module and of those that it uses; types, members, parameters and enumerators with their
/// names, types, ids and codes; defaults, bounds and constants, as written and as resolved;
/// messages; modifiers. Comments, documentation, white space and where files lie make no
/// difference.
///
/// The hash is FNV-1a of 64 bits over a byte string in which every number stands as 8 bytes, least
/// significant first, and every text as its length and its bytes; at the end the bits are mixed
/// once more (x ^= x >> 32, x *= 0xd6e8feb86659fd93, x ^= x >> 32), so that every bit depends on
/// every byte. The module's own `fingerprint` is not read.
std::uint64_t fingerprint( const Model::Module & module );

} // namespace VokGen
