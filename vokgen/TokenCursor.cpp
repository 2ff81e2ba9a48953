#include "vokgen/TokenCursor.h"

#include "vokgen/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace VokGen {
namespace {

/// Words that start a declaration when another word or a parenthesis follows.
constexpr std::array< std::string_view, 15 > declarationWords = { "namespace", "extern", "enum",
   "constants", "value", "entity", "flag", "const", "function", "method", "static", "mutating",
   "constructor", "module", "use" };

} // namespace

TokenCursor::TokenCursor( const SourceFile & file, Diagnostics & diagnostics )
      : file_( file ),
        diagnostics_( diagnostics ),
        lexer_( file, diagnostics )
{
   current_ = lexer_.next();
   ahead_ = lexer_.next();
}

void TokenCursor::advance()
{
   last_ = current_;
   current_ = ahead_;
   if ( ahead_.kind == TokenKind::end ) {
      return;
   }
   ahead_ = lexer_.next();
   if ( ahead_.index == tokenLimit && ahead_.kind != TokenKind::end ) {
      error( ahead_.range, Message::fileTooLong, { std::to_string( tokenLimit ) } );
      cutOff_ = true;
      ahead_.kind = TokenKind::end;
   }
}

bool TokenCursor::isSymbol( std::string_view symbol ) const
{
   return current_.kind == TokenKind::symbol && text( current_ ) == symbol;
}

bool TokenCursor::isWord( std::string_view word ) const
{
   return current_.kind == TokenKind::word && text( current_ ) == word;
}

bool TokenCursor::isWord( std::initializer_list< std::string_view > words ) const
{
   return current_.kind == TokenKind::word && !aheadIsSymbol( "::" ) && !aheadIsSymbol( ":" ) &&
         std::find( words.begin(), words.end(), text( current_ ) ) != words.end();
}

bool TokenCursor::aheadIsSymbol( std::string_view symbol ) const
{
   return ahead_.kind == TokenKind::symbol && text( ahead_ ) == symbol;
}

bool TokenCursor::take( std::string_view symbolOrWord )
{
   const bool matches = isSymbol( symbolOrWord ) || isWord( symbolOrWord );
   if ( matches ) {
      advance();
   }
   return matches;
}

std::string TokenCursor::found() const
{
   if ( atEnd() ) {
      return "the end of the file";
   }
   constexpr std::size_t most = 40;
   const std::string_view token = text( current_ );
   if ( token.size() <= most ) {
      return "'" + std::string( token ) + "'";
   }
   std::size_t length = most;
   while ( characterCount( token.substr( length, 1 ) ) == 0 ) {
      --length;
   }
   return "'" + std::string( token.substr( 0, length ) ) + "…'";
}

void TokenCursor::error(
      Range range, Message message, const std::vector< std::string > & arguments )
{
   diagnostics_.error( { &file_, range }, message, arguments );
}

void TokenCursor::note( Range range, Message message, const std::vector< std::string > & arguments )
{
   diagnostics_.note( { &file_, range }, message, arguments );
}

bool TokenCursor::reportExpected( std::string_view what )
{
   const bool reported = current_.kind == TokenKind::broken || ( cutOff_ && atEnd() );
   const Range behindLast = { last_.range.end, last_.range.end };
   if ( !reported ) {
      error( atEnd() ? behindLast : current_.range, Message::expected,
            { std::string( what ), found() } );
   }
   return !reported;
}

void TokenCursor::abandon( std::string_view expected )
{
   reportExpected( expected );
   throw Abandoned();
}

Token TokenCursor::expect( std::string_view symbol, std::string_view what )
{
   if ( !isSymbol( symbol ) ) {
      abandon( what );
   }
   advance();
   return last_;
}

void TokenCursor::expectSemicolon( std::string_view what )
{
   if ( take( ";" ) ) {
      return;
   }
   if ( current_.startsLine || isSymbol( "}" ) ) {
      error( { last_.range.end, last_.range.end }, Message::missingSemicolon,
            { std::string( text( last_ ) ) } );
      return;
   }
   abandon( what );
}

Ast::Name TokenCursor::expectWord( std::string_view what )
{
   if ( current_.kind != TokenKind::word ) {
      abandon( what );
   }
   advance();
   return { std::string( text( last_ ) ), last_.range };
}

Ast::Name TokenCursor::expectQualifiedName( std::string_view what )
{
   Ast::Name name = expectWord( what );
   while ( isSymbol( "::" ) ) {
      advance();
      const Ast::Name part = expectWord( "a name after '::'" );
      name.text += "::" + part.text;
      name.range = name.range.upTo( part.range );
   }
   return name;
}

std::uint64_t TokenCursor::integerValue( const Token & token )
{
   const std::string_view digits = text( token );
   std::uint64_t value = 0;
   const auto result = std::from_chars( digits.data(), digits.data() + digits.size(), value );
   if ( result.ec != std::errc() ) {
      error( token.range, Message::numberTooLarge, { std::string( digits ) } );
      throw Abandoned();
   }
   return value;
}

std::uint64_t TokenCursor::expectInteger( std::string_view what )
{
   if ( current_.kind != TokenKind::integer ) {
      abandon( what );
   }
   advance();
   return integerValue( last_ );
}

std::string TokenCursor::expectText( std::string_view what )
{
   if ( current_.kind != TokenKind::text ) {
      abandon( what );
   }
   advance();
   return textValue( text( last_ ) );
}

bool TokenCursor::startsDeclaration() const
{
   if ( current_.kind != TokenKind::word || !current_.startsLine ) {
      return false;
   }
   const bool word = std::find( declarationWords.begin(), declarationWords.end(),
                           text( current_ ) ) != declarationWords.end();
   return aheadIsSymbol( ":" ) ||
         ( word && ( ahead_.kind == TokenKind::word || aheadIsSymbol( "(" ) ) );
}

void TokenCursor::recover( std::size_t start )
{
   std::size_t depth = 0;
   for ( bool first = current_.index == start; !atEnd(); first = false ) {
      if ( depth == 0 && !first && ( isSymbol( "}" ) || startsDeclaration() ) ) {
         return;
      }
      const bool closes = isSymbol( "}" );
      const bool ends = depth == 0 && isSymbol( ";" );
      if ( isSymbol( "{" ) ) {
         ++depth;
      } else if ( closes && depth != 0 ) {
         --depth;
      }
      advance();
      if ( ends || ( closes && depth == 0 ) ) {
         return;
      }
   }
}

Ast::Documentation TokenCursor::documentation( std::size_t first, std::size_t last )
{
   std::vector< DocComment > & docs = lexer_.docs();
   const auto before = []( const DocComment & doc, std::size_t token ) {
      return doc.token < token;
   };
   Ast::Documentation result;
   for ( auto doc = std::lower_bound( docs.begin(), docs.end(), first, before );
         doc != docs.end() && doc->token <= last; ++doc ) {
      if ( doc->claimed || doc->detached ) {
         continue;
      }
      doc->claimed = true;
      std::string_view text = doc->text;
      while ( !text.empty() && text.back() == '\n' ) {
         text.remove_suffix( 1 );
      }
      while ( !text.empty() && text.front() == '\n' ) {
         text.remove_prefix( 1 );
      }
      if ( !text.empty() ) {
         result.text += ( result.text.empty() ? "" : " " ) + std::string( text );
      }
   }
   return result;
}

void TokenCursor::reportUnclaimedComments()
{
   if ( cutOff_ ) {
      return;
   }
   for ( const DocComment & doc : lexer_.docs() ) {
      if ( !doc.claimed ) {
         error( { doc.range.begin, doc.range.begin + 3 }, Message::commentDocumentsNothing );
      }
   }
}

} // namespace VokGen
