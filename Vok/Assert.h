// How the process ends when the impossible has happened.
#pragma once

#include "Vok/Export.h"

#include <string_view>

namespace Vok {

/// Writes one line to standard error, in one piece,
///    source:line: function: assertion "expression" failed: message
/// (without ": message" where the message is empty) and ends the process with abort(). Source, line
/// and function are what the caller states. It allocates nothing; control characters are written as
/// blanks, and a line longer than 4095 bytes is cut off.
[[noreturn]] VOK_EXPORT void assertionFailed( const char * source, int line, const char * function,
      const char * expression, std::string_view message = {} );

} // namespace Vok
