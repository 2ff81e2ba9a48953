// The last step of a generated C++ file: long lines are broken, what cannot be right is refused.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace VokGen {

/// The most columns that a line of generated code takes, and how far the second line of a statement
/// goes in.
inline constexpr std::size_t columnLimit = 100;
inline constexpr std::size_t continuationIndent = 6;

/// The text with every line of code that is longer than columnLimit broken at an assignment, a
/// bracket or a comma, as the formatter would leave it. Comments and string literals stay as they
/// are, and names are longer than a line if a definition has it so.
///
/// Throws InternalError, naming `file` and the line, for a comment or a literal that makes a line
/// too long, and for a bracket without its partner.
std::string finishedCode( std::string_view file, std::string_view text );

} // namespace VokGen
