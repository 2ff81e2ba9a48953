// Characters of UTF-8: how long they are, and which of them may stand in a definition file.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace VokGen {

/// The bytes of the well-formed character at the start of a text; 0 where there is none.
std::size_t utf8Length( std::string_view text );

/// The characters (code points) of a text: bytes that continue one do not count.
std::size_t characterCount( std::string_view text );

/// Whether people see a character as it is. Control characters (but the tab), characters without a
/// look of their own, and those that turn the direction of the text around them are not plain: what
/// is read is not what stands there. `character` is one well-formed character.
bool isPlain( std::string_view character );

/// What messages call the character at the start of a text: 'x', "the byte 0xC3, …", "the invisible
/// character U+202E".
std::string nameOfCharacter( std::string_view text );

} // namespace VokGen
