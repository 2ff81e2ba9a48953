// Source to tokens, one at a time.
#pragma once

#include "vokgen/Diagnostics.h"
#include "vokgen/Token.h"

#include <vector>

namespace VokGen {

/// Reads tokens from the start of a file to its end. What cannot be a token is reported and
/// skipped.
class Lexer {
 public:
   /// Most bytes of a name.
   static constexpr std::uint32_t nameLimit = 100;

   /// Both must outlive the lexer.
   Lexer( const SourceFile & file, Diagnostics & diagnostics );

   /// The next token; at the end of the file a token of kind `end`, again and again.
   Token next();

   /// The documentation comments so far, in order. All that stand before a token are there when the
   /// token has been read.
   std::vector< DocComment > & docs() { return docs_; }

 private:
   void skipBlanks();
   void skipComment();
   void skipBlockComment();
   void readDocComment();
   void detachDoc();
   void checkColumn();
   Token readToken();
   TokenKind readWord();
   TokenKind readNumber();
   TokenKind readText();
   TokenKind readSymbol();
   void readStrayCharacter();
   void report( Range range, Message message, const std::vector< std::string > & arguments = {} );
   char at( std::uint32_t offset ) const;
   bool startsWith( std::string_view text ) const;

   const SourceFile & file_;
   Diagnostics & diagnostics_;
   std::vector< DocComment > docs_;
   std::uint32_t offset_ = 0;
   std::uint32_t size_ = 0;
   std::uint32_t lineStart_ = 0;
   std::size_t tokenCount_ = 0;
   bool tokenOnLine_ = false;
   std::size_t docColumn_ = 0; ///< Where the comment read last starts in its line.
   /// Of a comment right below one that it does not continue, and of that one; 0 for none.
   std::size_t newColumn_ = 0;
   std::size_t columnAbove_ = 0;
   std::size_t linesSinceDoc_ = 2; ///< 0 on the line of that comment, 1 on the next.
};

/// The bytes that a text token means. Its escapes have been checked by the lexer.
std::string textValue( std::string_view token );

} // namespace VokGen
