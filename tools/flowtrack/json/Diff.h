// What differs between two trees of one type.
#pragma once

#include "Vok/Vok.h"
#include "tools/flowtrack/json/Json.h"

#include <string>
#include <vector>

namespace FlowtrackJson {

/// One difference. Old and new values are as in toJson; null where there is none.
struct Difference {
   std::string path; ///< of the entity, from the root
   std::string attribute; ///< as JSON names it
   std::string key; ///< text of the member's key; empty where the attribute is no collection
   bool keyed; ///< whether it is one
   Json before;
   Json after;
};

/// The differences, in the order in which the trees are written. A child that only one tree has is
/// one difference, with all of it that differs from a new one. Throws std::invalid_argument for
/// trees of two types.
std::vector< Difference > differences( const Vok::Entity & before, const Vok::Entity & after );

/// A line each: `~ PATH ATTRIBUTE[KEY]: OLD -> NEW`, with `+` and no OLD for what is new, `-` and
/// no NEW for what is gone.
std::string textOf( const std::vector< Difference > & differences );

/// An array of objects with path, attribute, and key, old, new where there are any.
Json jsonOf( const std::vector< Difference > & differences );

} // namespace FlowtrackJson
