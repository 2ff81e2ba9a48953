// Regular expressions that ECMAScript, Python and XML Schema read alike; without anchors.
#pragma once

#include "tools/flowtrack/json/Shape.h"

#include <cstdint>
#include <string>

namespace FlowtrackJson {

/// The decimal numbers in bounds, without leading zeros.
std::string decimalPattern( std::uint64_t least, std::uint64_t most );

/// The texts of a type that has rules of its own for them, such as an address; empty where any text
/// will do, or where the rules are not known here.
std::string textPattern( const Shape & shape );

} // namespace FlowtrackJson
