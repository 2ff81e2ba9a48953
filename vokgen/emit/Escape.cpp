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
   for ( std::size_t at = 0; at != shown.size(); ++at ) {
      const char c = shown[ at ];
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
