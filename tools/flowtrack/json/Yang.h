// The data model as YANG (RFC 7950), and trees as data of those modules (RFC 7951).
#pragma once

#include "Vok/Vok.h"
#include "tools/flowtrack/json/Json.h"

#include <string>
#include <string_view>

namespace FlowtrackJson {

/// The name of an attribute, field or flag as YANG's convention has it: `maxFlows` is `max-flows`.
/// Names of the model have no hyphen, so that the way back is open.
std::string yangName( std::string_view name );
std::string nameOfYang( std::string_view yang );

/// The name of a type or a module: `FlowTracking::Config` is `flow-tracking.config`; and back.
std::string yangTypeName( std::string_view name );
std::string typeNameOfYang( std::string_view yang );

/// A module for trees of this type, with all that they hold, in one container. Throws
/// std::invalid_argument for a type that holds entities of its own type, at any depth: YANG has
/// no words for that.
std::string yangModule( const Vok::TypeData & type );

/// The name of the module's container.
std::string yangContainer( const Vok::TypeData & type );

/// A value, given by its text, as a leaf of its module has it.
Json rfc7951Leaf( const Shape & shape, std::string_view text );

/// A tree as data of its module.
Json rfc7951( const Vok::Entity & root );

} // namespace FlowtrackJson
