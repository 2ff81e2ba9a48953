#include "vokgen/Lexer.h"

#include "vokgen/Utf8.h"

#include <algorithm>
#include <array>

namespace VokGen {
namespace {

bool isDigit( char c ) { return c >= '0' && c <= '9'; }
bool isLetter( char c ) { return ( c >= 'a' && c <= 'z' ) || ( c >= 'A' && c <= 'Z' ) || c == '_'; }
bool isWordPart( char c ) { return isLetter( c ) || isDigit( c ); }

int hexDigit( char c )
{
   if ( isDigit( c ) ) {
      return c - '0';
   }
   const char lower = static_cast< char >( c | 0x20 );
   return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

} // namespace

std::string textValue( std::string_view token )
{
   std::string result;
   for ( std::size_t i = 1; i + 1 < token.size(); ++i ) {
      if ( token[ i ] != '\\' ) {
         result += token[ i ];
         continue;
      }
      ++i;
      if ( token[ i ] == 'n' ) {
         result += '\n';
      } else if ( token[ i ] == 't' ) {
         result += '\t';
      } else if ( token[ i ] == 'x' ) {
         result +=
               static_cast< char >( hexDigit( token[ i + 1 ] ) * 16 + hexDigit( token[ i + 2 ] ) );
         i += 2;
      } else {
         result += token[ i ];
      }
   }
   return result;
}

Lexer::Lexer( const SourceFile & file, Diagnostics & diagnostics )
      : file_( file ),
        diagnostics_( diagnostics ),
        size_( static_cast< std::uint32_t >( file.text().size() ) )
{
}

char Lexer::at( std::uint32_t offset ) const
{
   return offset < size_ ? file_.text()[ offset ] : '\0';
}

bool Lexer::startsWith( std::string_view text ) const
{
   return file_.text().compare( offset_, text.size(), text ) == 0;
}

void Lexer::report( Range range, Message message, const std::vector< std::string > & arguments )
{
   diagnostics_.error( { &file_, range }, message, arguments );
}

Token Lexer::next()
{
   while ( true ) {
      skipBlanks();
      if ( startsWith( "///" ) && at( offset_ + 3 ) != '/' ) {
         readDocComment();
      } else if ( startsWith( "//" ) ) {
         skipComment();
         // One between a `///` and its declaration keeps them together.
         linesSinceDoc_ -= linesSinceDoc_ == 1 ? 1U : 0U;
      } else if ( startsWith( "/*" ) ) {
         skipBlockComment();
      } else {
         return readToken();
      }
   }
}

void Lexer::skipBlanks()
{
   for ( ; offset_ < size_; ++offset_ ) {
      const char c = at( offset_ );
      if ( c == '\n' ) {
         lineStart_ = offset_ + 1;
         tokenOnLine_ = false;
         ++linesSinceDoc_;
      } else if ( c != ' ' && c != '\t' && !( c == '\r' && at( offset_ + 1 ) == '\n' ) ) {
         return;
      }
   }
}

/// To the end of the line. One complaint a line about what should not stand in a comment.
void Lexer::skipComment()
{
   bool reported = false;
   while ( offset_ < size_ && at( offset_ ) != '\n' && !startsWith( "\r\n" ) ) {
      const std::string_view rest = std::string_view( file_.text() ).substr( offset_, 4 );
      const std::size_t length = utf8Length( rest );
      const auto step = static_cast< std::uint32_t >( std::max< std::size_t >( length, 1 ) );
      if ( !reported && ( length == 0 || !isPlain( rest.substr( 0, length ) ) ) ) {
         report( { offset_, offset_ + step }, Message::badCharacterInComment,
               { nameOfCharacter( rest ) } );
         reported = true;
      }
      offset_ += step;
   }
}

/// The language has none; what one holds is passed over, so that it makes no errors of its own.
void Lexer::skipBlockComment()
{
   const std::uint32_t begin = offset_;
   const std::size_t close = file_.text().find( "*/", begin + 2 );
   report( { begin, begin + 2 }, Message::blockComment );
   offset_ = close == std::string::npos ? size_ : static_cast< std::uint32_t >( close + 2 );
   const std::size_t lineEnd = file_.text().rfind( '\n', offset_ - 1 );
   if ( lineEnd != std::string::npos && lineEnd > begin ) {
      lineStart_ = static_cast< std::uint32_t >( lineEnd + 1 );
      linesSinceDoc_ = 2;
   }
}

void Lexer::readDocComment()
{
   const std::uint32_t begin = offset_;
   const std::size_t column = characterCount( file_.text( { lineStart_, begin } ) );
   skipComment();
   std::string_view text = file_.text( { begin + 3, offset_ } );
   const std::size_t first = text.find_first_not_of( " \t" );
   text = first == std::string_view::npos ? std::string_view() : text.substr( first );
   text = text.substr( 0, text.find_last_not_of( " \t" ) + 1 );

   const bool continues = !tokenOnLine_ && linesSinceDoc_ == 1 && !docs_.empty() &&
         ( !docs_.back().trailing || docColumn_ == column );
   if ( continues ) {
      DocComment & doc = docs_.back();
      const bool newParagraph = text.empty() || doc.text.empty() || doc.text.back() == '\n';
      doc.text += text.empty() ? "\n" : ( newParagraph ? "" : " " ) + std::string( text );
      doc.range.end = offset_;
   } else {
      detachDoc();
      const bool below = !tokenOnLine_ && linesSinceDoc_ == 1 && !docs_.empty();
      newColumn_ = below ? column + 1 : 0;
      columnAbove_ = docColumn_ + 1;
      DocComment doc;
      doc.range = { begin, offset_ };
      doc.text = text;
      doc.trailing = tokenOnLine_;
      doc.token = tokenOnLine_ ? tokenCount_ - 1 : tokenCount_;
      docs_.push_back( std::move( doc ) );
   }
   docColumn_ = column;
   linesSinceDoc_ = 0;
}

/// A comment on a line of its own, with an empty line behind it, belongs to nothing.
void Lexer::detachDoc()
{
   if ( !docs_.empty() && !docs_.back().trailing && docs_.back().token == tokenCount_ ) {
      docs_.back().detached = true;
   }
}

/// A comment right below one that stands behind a declaration either goes on with that one, or
/// starts where the declaration does that it documents. Where none follows, it documents nothing.
void Lexer::checkColumn()
{
   const bool follows = !docs_.back().detached && offset_ != size_ && at( offset_ ) != '}';
   const std::size_t column = characterCount( file_.text( { lineStart_, offset_ } ) ) + 1;
   if ( follows && newColumn_ != column ) {
      const std::uint32_t begin = docs_.back().range.begin;
      report( { begin, begin + 3 }, Message::commentInNoColumn,
            { std::to_string( newColumn_ ), std::to_string( columnAbove_ ),
                  std::to_string( column ) } );
   }
   newColumn_ = 0;
}

Token Lexer::readToken()
{
   if ( linesSinceDoc_ != 1 ) {
      detachDoc();
   }
   if ( newColumn_ != 0 ) {
      checkColumn();
   }
   Token token;
   token.startsLine = !tokenOnLine_;
   token.index = tokenCount_;
   token.range = { offset_, offset_ };
   if ( offset_ == size_ ) {
      return token;
   }
   const char c = at( offset_ );
   if ( isLetter( c ) ) {
      token.kind = readWord();
   } else if ( isDigit( c ) ) {
      token.kind = readNumber();
   } else if ( c == '"' ) {
      token.kind = readText();
   } else {
      token.kind = readSymbol();
   }
   token.range.end = offset_;
   ++tokenCount_;
   tokenOnLine_ = true;
   linesSinceDoc_ = 2;
   return token;
}

TokenKind Lexer::readWord()
{
   const std::uint32_t begin = offset_;
   while ( isWordPart( at( offset_ ) ) ) {
      ++offset_;
   }
   if ( offset_ - begin > nameLimit ) {
      report( { begin, offset_ }, Message::nameTooLong, { std::to_string( nameLimit ) } );
      return TokenKind::broken;
   }
   return TokenKind::word;
}

TokenKind Lexer::readNumber()
{
   const std::uint32_t begin = offset_;
   const auto digits = [ this ] {
      while ( isDigit( at( offset_ ) ) ) {
         ++offset_;
      }
   };
   TokenKind kind = TokenKind::integer;
   digits();
   if ( at( offset_ ) == '.' && isDigit( at( offset_ + 1 ) ) ) {
      kind = TokenKind::real;
      ++offset_;
      digits();
   }
   const std::uint32_t sign = at( offset_ + 1 ) == '-' || at( offset_ + 1 ) == '+' ? 1 : 0;
   if ( at( offset_ ) == 'e' && isDigit( at( offset_ + 1 + sign ) ) ) {
      kind = TokenKind::real;
      offset_ += 1 + sign;
      digits();
   }
   if ( isLetter( at( offset_ ) ) ) {
      while ( isWordPart( at( offset_ ) ) ) {
         ++offset_;
      }
      report( { begin, offset_ }, Message::badNumber,
            { std::string( file_.text( { begin, offset_ } ) ) } );
      return TokenKind::broken;
   }
   if ( at( begin ) == '0' && isDigit( at( begin + 1 ) ) ) {
      report( { begin, offset_ }, Message::leadingZero,
            { std::string( file_.text( { begin, offset_ } ) ) } );
      return TokenKind::broken;
   }
   return kind;
}

TokenKind Lexer::readText()
{
   const std::uint32_t begin = offset_;
   bool good = true;
   const auto bad = [ & ]( Range range, Message message,
                          const std::vector< std::string > & arguments ) {
      if ( good ) {
         report( range, message, arguments );
      }
      good = false;
   };
   ++offset_;
   while ( at( offset_ ) != '"' ) {
      if ( offset_ == size_ || at( offset_ ) == '\n' || startsWith( "\r\n" ) ) {
         bad( { begin, offset_ }, Message::unterminatedText, {} );
         return TokenKind::broken;
      }
      const std::string_view rest = std::string_view( file_.text() ).substr( offset_, 4 );
      std::size_t length = utf8Length( rest );
      if ( at( offset_ ) == '\\' ) {
         const bool hex = at( offset_ + 1 ) == 'x' && hexDigit( at( offset_ + 2 ) ) >= 0 &&
               hexDigit( at( offset_ + 3 ) ) >= 0;
         const bool known = std::string_view( "\"\\nt" ).find( at( offset_ + 1 ) ) !=
               std::string_view::npos;
         if ( !hex && !known ) {
            const std::string_view found = rest.substr( 0, 1 + utf8Length( rest.substr( 1 ) ) );
            bad( { offset_, offset_ + 1 }, Message::badEscape, { std::string( found ) } );
         }
         length = hex ? 4 : known ? 2
                                  : 1;
      } else if ( length == 0 || !isPlain( rest.substr( 0, length ) ) || rest.front() == '\t' ) {
         bad( { offset_, offset_ + 1 }, Message::badCharacterInText, { nameOfCharacter( rest ) } );
         length = std::max< std::size_t >( length, 1 );
      }
      offset_ += static_cast< std::uint32_t >( length );
   }
   ++offset_;
   return good ? TokenKind::text : TokenKind::broken;
}

TokenKind Lexer::readSymbol()
{
   constexpr std::array< std::string_view, 13 > symbols = { "->", "..", "::", "{", "}", "(", ")",
      ":", ";", ",", "=", "+", "-" };
   for ( const std::string_view symbol : symbols ) {
      if ( startsWith( symbol ) ) {
         offset_ += static_cast< std::uint32_t >( symbol.size() );
         return TokenKind::symbol;
      }
   }
   readStrayCharacter();
   return TokenKind::broken;
}

/// Reports what no token starts with, all of it up to the next blank or bracket at once.
void Lexer::readStrayCharacter()
{
   const std::uint32_t begin = offset_;
   const std::string_view rest = std::string_view( file_.text() ).substr( offset_, 4 );
   const std::size_t length = utf8Length( rest );
   while ( offset_ < size_ &&
         std::string_view( " \t\r\n{}();\"" ).find( at( offset_ ) ) == std::string_view::npos &&
         !isWordPart( at( offset_ ) ) ) {
      ++offset_;
   }
   offset_ = std::max(
         offset_, begin + static_cast< std::uint32_t >( std::max< std::size_t >( length, 1 ) ) );
   report( { begin, offset_ }, Message::badCharacter, { nameOfCharacter( rest ) } );
}

} // namespace VokGen
