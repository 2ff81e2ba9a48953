// Escaping for C++ literals, comments and Markdown.
#include "vokgen/emit/Escape.h"

#include "vokgen/Utf8.h"

#include <algorithm>

namespace VokGen {

namespace {

/// One byte as it stands in a literal; `before` is the byte in front of it.
std::string literalByte( char c, char before )
{
   switch ( c ) {
   case '"':
      return "\\\"";
   case '\\':
      return "\\\\";
   case '\n':
      return "\\n";
   case '\t':
      return "\\t";
   case '?':
      return before == '?' ? "\\?" : "?";
   default:
      break;
   }
   if ( c >= ' ' && c <= '~' ) {
      return std::string( 1, c );
   }
   const unsigned byte = static_cast< unsigned char >( c );
   const auto digit = []( unsigned value ) { return static_cast< char >( '0' + ( value & 7U ) ); };
   return { '\\', digit( byte >> 6U ), digit( byte >> 3U ), digit( byte ) };
}

/// How wide a text is in a literal up to its first blank, which is counted.
std::size_t wordWidth( std::string_view text )
{
   std::size_t width = 0;
   char before = 0;
   for ( const char c : text.substr( 0, text.find( ' ' ) + 1 ) ) {
      width += literalByte( c, before ).size();
      before = c;
   }
   return width;
}

/// The text with a blank for everything in it that ends a line, turns the direction of writing, or
/// cannot be seen.
std::string visible( std::string_view text )
{
   std::string out;
   while ( !text.empty() ) {
      const std::size_t length = std::max< std::size_t >( utf8Length( text ), 1 );
      const std::string_view character = text.substr( 0, length );
      const bool shown = utf8Length( text ) != 0 && character != "\t" && isPlain( character );
      out.append( shown ? character : " " );
      text.remove_prefix( length );
   }
   return out;
}

// Where the pair of backticks ends that starts at `open`; npos where it is no pair.
std::size_t pairOfBackticks( std::string_view text, std::size_t open )
{
   const auto alone = [ text ]( std::size_t at ) {
      return ( at == 0 || text[ at - 1 ] != '`' ) &&
            ( at + 1 == text.size() || text[ at + 1 ] != '`' );
   };
   const std::size_t close = text.find( '`', open + 1 );
   return close != std::string_view::npos && alone( open ) && alone( close )
         ? close
         : std::string_view::npos;
}

// Whether a text means itself between two backticks, in a cell of a table as well.
bool isCode( std::string_view text )
{
   return !text.starts_with( ' ' ) && !text.ends_with( ' ' ) &&
         text.find_first_of( "|\\" ) == std::string_view::npos;
}

} // namespace

std::string cppLiteral( std::string_view bytes, std::size_t width )
{
   std::string out = "\"";
   std::size_t column = 1;
   char before = 0;
   for ( std::size_t at = 0; at != bytes.size(); ++at ) {
      const std::string next = literalByte( bytes[ at ], before );
      // A word goes to the next literal as a whole where it can.
      const bool wordTooLong = before == ' ' && column + wordWidth( bytes.substr( at ) ) >= width;
      if ( column + next.size() + 1 > width || wordTooLong ) {
         out.append( "\"\n\"" );
         column = 1;
      }
      out.append( next );
      column += next.size();
      before = bytes[ at ];
   }
   return out.append( "\"" );
}

std::string commentText( std::string_view text )
{
   std::string out;
   for ( const char c : visible( text ) ) {
      const char before = out.empty() ? ' ' : out.back();
      if ( ( before == '*' && c == '/' ) || ( before == '/' && c == '*' ) ) {
         out.push_back( ' ' );
      }
      out.push_back( c );
   }
   return out;
}

std::string markdownText( std::string_view text )
{
   static constexpr std::string_view always = "\\`*_[]<>|~$&";
   static constexpr std::string_view atStart = "#+-="; // headings, lists, rules
   const std::string shown = visible( text );
   const std::size_t digits = shown.find_first_not_of( "0123456789" );
   std::string out;
   std::size_t noCodeBefore = 0;
   for ( std::size_t at = 0; at != shown.size(); ++at ) {
      const char c = shown[ at ];
      const std::size_t close =
            c == '`' && at >= noCodeBefore ? pairOfBackticks( shown, at ) : std::string::npos;
      if ( close != std::string::npos ) {
         const std::string span = shown.substr( at + 1, close - at - 1 );
         if ( isCode( span ) ) {
            out.append( 1, '`' ).append( span ).append( 1, '`' );
            at = close;
            continue;
         }
         noCodeBefore = close + 1;
      }
      const bool list = at == digits && at != 0 && ( c == '.' || c == ')' ) &&
            ( at + 1 == shown.size() || shown[ at + 1 ] == ' ' );
      if ( list || always.find( c ) != std::string_view::npos ||
            ( at == 0 && atStart.find( c ) != std::string_view::npos ) ) {
         out.push_back( '\\' );
      }
      out.push_back( c );
   }
   return out;
}

} // namespace VokGen
