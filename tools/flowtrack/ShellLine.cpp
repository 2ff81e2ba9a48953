// The quotes and backslashes that sh, bash and zsh have in common.
#include "tools/flowtrack/ShellLine.h"

#include <algorithm>
#include <cstddef>

namespace Flowtrack {

namespace {

bool contains( std::string_view set, char c )
{
   return set.find( c ) != std::string_view::npos;
}

bool isPlain( char c )
{
   const bool letter = ( c >= 'a' && c <= 'z' ) || ( c >= 'A' && c <= 'Z' );
   const bool digit = c >= '0' && c <= '9';
   const bool beyondAscii = static_cast< unsigned char >( c ) >= 128;
   return letter || digit || beyondAscii || contains( "_-./:=@%+,", c );
}

/// One character of a word, in the quotes that are open.
std::string escaped( char c, char quote )
{
   if ( quote == '\'' ) {
      return c == '\'' ? "'\\''" : std::string( 1, c );
   }
   const bool special = quote == '"' ? contains( "\\\"$`", c ) : !isPlain( c );
   return special ? std::string( { '\\', c } ) : std::string( 1, c );
}

} // namespace

ShellLine::ShellLine( std::string_view line, std::string_view breaks ) : words_( 1 )
{
   std::size_t from = 0;
   bool begun = false; // a word may be an empty pair of quotes
   for ( std::size_t i = 0; i != line.size(); ++i ) {
      const char c = line[ i ];
      const char next = i + 1 == line.size() ? '\0' : line[ i + 1 ];
      const bool blank = quote_ == 0 && ( c == ' ' || c == '\t' );
      if ( blank ) {
         from = i + 1;
         if ( begun ) {
            words_.emplace_back();
         }
      } else if ( c == quote_ ) {
         quote_ = 0;
      } else if ( quote_ == 0 && ( c == '\'' || c == '"' ) ) {
         quote_ = c;
         from = contains( breaks, c ) ? i + 1 : from;
      } else if ( c == '\\' && next != '\0' &&
            ( quote_ == 0 || ( quote_ == '"' && contains( "\\\"$`", next ) ) ) ) {
         words_.back().push_back( next );
         ++i;
      } else {
         words_.back().push_back( c );
         from = quote_ == 0 && contains( breaks, c ) ? i + 1 : from;
      }
      begun = !blank;
   }
   typed_ = line.substr( from );
}

std::string ShellLine::completed( const std::string & word ) const
{
   std::string text = typed_;
   for ( std::size_t i = words_.back().size(); i < word.size(); ++i ) {
      text += escaped( word[ i ], quote_ );
   }
   if ( quote_ != 0 ) {
      text += quote_;
   }
   return text;
}

} // namespace Flowtrack
