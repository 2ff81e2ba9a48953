// What the lexer makes of a definition file: tokens, and the documentation comments between them.
#pragma once

#include "vokgen/Source.h"

#include <cstddef>
#include <string>

namespace VokGen {

enum class TokenKind {
   word, ///< A name or a keyword; which of the two is for the parser to say.
   integer, ///< Digits.
   real, ///< Digits, a point, digits, and perhaps an exponent.
   text, ///< "…", escapes and all.
   symbol, ///< One of { } ( ) : ; , = + - -> .. ::
   broken, ///< What has already been reported; it fits nowhere and is not reported again.
   end
};

struct Token {
   TokenKind kind = TokenKind::end;
   Range range;
   std::size_t index = 0; ///< Counted from the first token of the file.
   bool startsLine = false; ///< No other token stands before it on its line.
};

/// A run of `///` comments.
///
/// One that follows a token on its line documents the declaration that this token ends; lines of
/// their own below it that start at the same column continue it. Any other line of its own
/// documents the declaration on the next line.
struct DocComment {
   Range range;
   std::string text;
   bool trailing = false;
   std::size_t token = 0; ///< Index of the token before a trailing one, else of the token after.
   bool detached = false; ///< An empty line stands between it and what follows.
   bool claimed = false; ///< A declaration has taken it.
};

} // namespace VokGen
