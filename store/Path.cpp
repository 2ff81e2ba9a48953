// The grammar of paths and their patterns.
#include "store/Path.h"

namespace Vok::Store {

namespace {

bool inName( char c ) noexcept
{
   return ( c >= 'a' && c <= 'z' ) || ( c >= 'A' && c <= 'Z' ) || ( c >= '0' && c <= '9' ) ||
         c == '_' || c == '-' || c == '.' || c == ':';
}

[[noreturn]] void refuse( const char * what, std::string_view text, const std::string & why )
{
   throw PathException(
         std::string( what ) + " \"" + std::string( text.substr( 0, longestPath ) ) + "\" " + why );
}

void check( const char * what, std::string_view text, bool pattern )
{
   if ( text.size() > longestPath ) {
      refuse( what, text, "is longer than " + std::to_string( longestPath ) + " bytes" );
   }
   std::size_t begin = 0; // of the name
   for ( std::size_t i = 0; i <= text.size(); ++i ) {
      if ( i == text.size() || text[ i ] == '/' ) {
         if ( i == begin ) {
            refuse( what, text, "has an empty name at byte " + std::to_string( i ) );
         }
         begin = i + 1;
         continue;
      }
      const std::string_view name = text.substr( begin, text.find( '/', begin ) - begin );
      const bool star = name == "*" || ( name == "**" && begin + 2 == text.size() );
      if ( !inName( text[ i ] ) && !( pattern && star ) ) {
         refuse( what, text,
               "has no letter, digit, '_', '-', '.' or ':' at byte " + std::to_string( i ) );
      }
   }
}

} // namespace

void checkPath( std::string_view path )
{
   check( "the path", path, false );
}

PathPattern::PathPattern( std::string_view text )
{
   check( "the pattern", text, true );
   text_ = text;
}

bool PathPattern::matches( std::string_view path ) const noexcept
{
   std::size_t at = 0;
   for ( std::size_t i = 0; i != text_.size(); ++i ) {
      const char c = text_[ i ];
      if ( c == '*' ) {
         const std::size_t start = at;
         while ( at != path.size() && path[ at ] != '/' ) {
            ++at;
         }
         if ( at == start ) {
            return false;
         }
         if ( i + 1 != text_.size() && text_[ i + 1 ] == '*' ) {
            return true;
         }
      } else if ( at == path.size() || path[ at++ ] != c ) {
         return false;
      }
   }
   return at == path.size();
}

} // namespace Vok::Store
