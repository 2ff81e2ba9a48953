// Texts of any bytes as texts of JSON, which are Unicode, and back.
#pragma once

#include <string>
#include <string_view>

namespace FlowtrackJson {

/// A text of any bytes as well-formed UTF-8 that JSON and YANG take. Bytes that belong to no
/// well-formed character, or to one that YANG has not (controls but for tab and line ends,
/// noncharacters), or to one from U+10FE00 on, each become the character U+10FE00 plus the byte:
/// the text can always be told from what it becomes.
std::string unicodeOf( std::string_view bytes );

/// The bytes that a text stands for.
std::string bytesOf( std::string_view unicode );

/// The first so many characters of well-formed UTF-8.
std::string_view firstCharacters( std::string_view text, std::size_t most );

} // namespace FlowtrackJson
