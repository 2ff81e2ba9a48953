// Trees as JSON. The form is described in docs/json.md.
#pragma once

#include "Vok/Vok.h"
#include "tools/flowtrack/json/Shape.h"

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace FlowtrackJson {

/// Members of objects stay in the order in which they were added.
using Json = nlohmann::ordered_json;

/// How much of a tree is written.
enum class Extent : std::uint8_t {
   all, ///< every attribute
   changed ///< those that differ from what a new entity has
};

/// An entity and all below it, as an object. Its name is not in it: that is the mount's matter.
/// Constants, and what is derived, are left out. Equal trees give equal texts.
Json toJson( const Vok::Entity & entity, Extent extent = Extent::all );

/// A child as it stands in its parent: without the key that stands beside it, with its name where
/// that is no key.
Json childJson( const Vok::Entity & child, std::string_view keyField, Extent extent );

/// An entity as text: two spaces a level, a line end at the end.
std::string jsonText( const Vok::Entity & entity, Extent extent = Extent::all );

/// A value, given by its text (docs/text.md), as JSON.
Json valueJson( const Shape & shape, std::string_view text );

/// A value that may have no text; without the field that stands outside as its key.
Json valueJson( const Vok::Value & value, std::string_view without = {} );

/// The member of a map under a key, without its key where that is a field of it.
Json memberJson(
      const Vok::Entity & entity, const Vok::AttributeData & map, std::string_view keyText );

/// The text of a key as the name of a member of an object, and back.
std::string keyName( const Shape & key, std::string_view text );
std::string keyText( const Shape & key, std::string_view name );

/// The keys of a collection, as texts, in the order in which they are written.
std::vector< Corvo::String > sortedKeys(
      const Vok::Entity & entity, const Vok::AttributeData & collection );

/// Appends a member to an object that has none of that name.
void append( Json & object, std::string_view name, Json value );

} // namespace FlowtrackJson
