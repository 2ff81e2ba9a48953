// Fills in layouts: raw strings that look like what they produce, with `$name$` where a value goes.
#pragma once

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>

namespace VokGen {

/// A mistake of the generator itself, never of a definition file; it stops the run.
class InternalError : public std::logic_error {
 public:
   using std::logic_error::logic_error;
};

/// What stands for `$name$`. The value may have several lines.
struct Variable {
   std::string_view name;
   std::string value;
};
using Variables = std::initializer_list< Variable >;

/// Fills in one layout.
///
///     fill( { { "type", "Colour" }, { "members", members } }, R"(
///        class $type$ {
///           $members$
///        };
///     )" );
///
/// - A layout of several lines starts with a line break. The indentation that its lines share is
///   removed, so that it can stand at the depth of the code around it, and the result ends with a
///   line break. A layout of one line is taken as it stands.
/// - The lines of a value after the first take the indentation of the line where it is placed.
/// - A line that holds nothing but one variable disappears where the value is empty, and of the
///   blank lines on both sides of it one stays at most, none beside a brace.
/// - `$$` is a dollar sign.
///
/// Throws InternalError for a variable that is not given, one that is given and not used, and a
/// dollar sign without its like on the same line.
std::string fill( Variables variables, std::string_view layout );

/// Texts one after the other with a blank line between them. An empty one leaves no trace.
class Paragraphs {
 public:
   Paragraphs & add( std::string_view text );
   const std::string & text() const { return text_; }

 private:
   std::string text_;
};

} // namespace VokGen
