// Paths: where an entity stands in its tree, as text.
//
//    /                                the root
//    /hosts[alpha]                    the child under the key `alpha` of the collection `hosts`
//    /tree["two words"]/only          the single child `only` of a child
//
// Keys stand in their text form.
#pragma once

#include "Vok/Export.h"
#include "Vok/String.h"

#include <string_view>

namespace Vok {

class Entity;
class TextOut;

/// The root of the tree that an entity belongs to; itself where it has no parent. Costs one step
/// per level.
VOK_EXPORT const Entity & rootOf( const Entity & entity ) noexcept;

/// The path of an entity from its root. Costs one lookup per level and attribute.
VOK_EXPORT Corvo::String pathOf( const Entity & entity );

/// The entity at a path from `root`, or null where there is none. Throws Corvo::ParseException
/// for what is no path in a tree of this type.
VOK_EXPORT Entity * entityAt( Entity & root, std::string_view path );

namespace Detail {

/// Writes the step from a parent to its child: attribute, and key where there is one.
void putStep( TextOut & out, const Entity & parent, const Entity & child );

} // namespace Detail

} // namespace Vok
