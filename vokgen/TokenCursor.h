// The parser's place in the tokens of a file: looking ahead, expecting, recovering, taking
// comments.
#pragma once

#include "vokgen/Ast.h"
#include "vokgen/Lexer.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace VokGen {

/// Thrown where a declaration cannot be read on; its cause has been reported.
struct Abandoned {};

class TokenCursor {
 public:
   /// A file with more tokens is read up to here only, and refused. It bounds what the later stages
   /// hold in memory.
   static constexpr std::size_t tokenLimit = 400000;

   TokenCursor( const SourceFile & file, Diagnostics & diagnostics );

   const Token & current() const { return current_; }
   const Token & ahead() const { return ahead_; } ///< The one after the current.
   const Token & last() const { return last_; } ///< The one before the current.
   std::string_view text( const Token & token ) const { return file_.text( token.range ); }
   bool atEnd() const { return current_.kind == TokenKind::end; }

   void advance();

   bool isSymbol( std::string_view symbol ) const;
   bool isWord( std::string_view word ) const;
   /// The current token is one of these words, and the one ahead begins neither `::` nor what a
   /// name would be followed by.
   bool isWord( std::initializer_list< std::string_view > words ) const;
   bool aheadIsSymbol( std::string_view symbol ) const;
   /// Steps over the symbol or word if it is the current token.
   bool take( std::string_view symbolOrWord );

   /// Steps over the symbol; otherwise reports that `what` was expected, and throws.
   Token expect( std::string_view symbol, std::string_view what );
   /// Steps over a `;`. Where it is merely forgotten at the end of a line, reports that and goes
   /// on; otherwise reports that `what` was expected, and throws.
   void expectSemicolon( std::string_view what = "';'" );
   Ast::Name expectWord( std::string_view what );
   Ast::Name expectQualifiedName( std::string_view what );
   std::uint64_t expectInteger( std::string_view what );
   std::string expectText( std::string_view what );

   /// Reports "expected `what`, found …" at the current token. False where that token itself has
   /// been reported, and this would follow from it.
   bool reportExpected( std::string_view what );
   [[noreturn]] void abandon( std::string_view expected );
   void error( Range range, Message message, const std::vector< std::string > & arguments = {} );
   void note( Range range, Message message, const std::vector< std::string > & arguments = {} );

   /// What messages call the current token.
   std::string found() const;
   /// The number that a token of kind integer stands for; reports one beyond 64 bits and gives 0.
   std::uint64_t integerValue( const Token & token );

   /// Goes on to where the next declaration may begin: behind a `;`, behind a block, before a
   /// closing brace, or before a line that starts like a declaration. Steps over one token at least
   /// if the current one is `start`, where the declaration began that could not be read.
   void recover( std::size_t start );

   /// The documentation of a declaration whose first and last tokens have these indices: what
   /// stands before, within and behind it and belongs to no declaration within it.
   Ast::Documentation documentation( std::size_t first, std::size_t last );
   /// Reports every comment that documents nothing.
   void reportUnclaimedComments();

 private:
   bool startsDeclaration() const;

   const SourceFile & file_;
   Diagnostics & diagnostics_;
   Lexer lexer_;
   Token last_;
   Token current_;
   Token ahead_;
   bool cutOff_ = false; ///< At the limit.
};

} // namespace VokGen
