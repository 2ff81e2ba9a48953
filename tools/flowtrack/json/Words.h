// The words of messages about documents.
#pragma once

#include "Vok/Vok.h"
#include "tools/flowtrack/json/Shape.h"

#include <string>
#include <string_view>
#include <vector>

namespace FlowtrackJson {

/// What a shape allows.
std::string allowedBy( const Shape & shape );

/// A type and an attribute of it, and the type of the value where that has a name.
std::string definitionOf( const Vok::TypeData & owner, const Vok::AttributeData & attribute );

/// `one of a, b`, or the one there is.
std::string oneOf( const std::vector< std::string > & names );

/// `, did you mean x` where one of the names is close to the one found; else empty.
std::string suggestion( std::string_view found, const std::vector< std::string > & names );

} // namespace FlowtrackJson
