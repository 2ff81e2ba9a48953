// How texts of a definition stand in generated files: nothing in them can end a comment, a string
// literal or a table cell.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace VokGen {

/// A C++ string literal of these bytes; of several literals, one a line, where it would be wider
/// than `width` columns. What is not printable ASCII stands as octal, which ends after three digits
/// whatever follows, and no two question marks stand together.
std::string cppLiteral( std::string_view bytes, std::size_t width = 90 );

/// The text for a comment: control characters, line separators and marks that turn the direction of
/// writing are blanks, and there is no opening or closing of a block comment in it.
std::string commentText( std::string_view text );

/// The text for Markdown, a cell of a table included: it is read as it stands, and in one line.
/// What stands between two single backticks is code, unless it holds what could not stand there.
std::string markdownText( std::string_view text );

} // namespace VokGen
