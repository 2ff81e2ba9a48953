// A tree of entities as text for people.
#pragma once

#include <iosfwd>

namespace Vok {
class Entity;
} // namespace Vok

/// Prints what of an entity and of those below it is not at its default, one attribute or member a
/// line, children indented below their key. Members stand in the order of their keys, shorter ones
/// first.
void printTree( std::ostream & out, const Vok::Entity & entity );
