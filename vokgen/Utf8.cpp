#include "vokgen/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace VokGen {
namespace {

unsigned byteAt( std::string_view text, std::size_t i )
{
   return i < text.size() ? static_cast< unsigned char >( text[ i ] ) : 0U;
}

/// The number of a well-formed character.
std::uint32_t codePoint( std::string_view character )
{
   const unsigned first = byteAt( character, 0 );
   if ( character.size() == 1 ) {
      return first;
   }
   std::uint32_t result = first & ( 0x7FU >> character.size() );
   for ( std::size_t i = 1; i < character.size(); ++i ) {
      result = ( result << 6U ) | ( byteAt( character, i ) & 0x3FU );
   }
   return result;
}

} // namespace

std::size_t utf8Length( std::string_view text )
{
   const auto follows = [ text ](
                              std::size_t i ) { return ( byteAt( text, i ) & 0xC0U ) == 0x80U; };
   const unsigned first = byteAt( text, 0 );
   const unsigned second = byteAt( text, 1 );
   if ( text.empty() ) {
      return 0;
   }
   if ( first < 0x80U ) {
      return 1;
   }
   if ( first >= 0xC2U && first <= 0xDFU ) {
      return follows( 1 ) ? 2 : 0;
   }
   if ( first >= 0xE0U && first <= 0xEFU ) {
      const bool overlong = first == 0xE0U && second < 0xA0U;
      const bool surrogate = first == 0xEDU && second >= 0xA0U;
      return follows( 1 ) && follows( 2 ) && !overlong && !surrogate ? 3 : 0;
   }
   if ( first >= 0xF0U && first <= 0xF4U ) {
      const bool overlong = first == 0xF0U && second < 0x90U;
      const bool beyond = first == 0xF4U && second >= 0x90U;
      return follows( 1 ) && follows( 2 ) && follows( 3 ) && !overlong && !beyond ? 4 : 0;
   }
   return 0;
}

std::size_t characterCount( std::string_view text )
{
   const auto starts = []( char c ) {
      return ( static_cast< unsigned char >( c ) & 0xC0U ) != 0x80U;
   };
   return static_cast< std::size_t >( std::count_if( text.begin(), text.end(), starts ) );
}

bool isPlain( std::string_view character )
{
   const std::uint32_t code = codePoint( character );
   const auto within = [ code ]( std::uint32_t low, std::uint32_t high ) {
      return code >= low && code <= high;
   };
   const bool control = ( code < 0x20U && code != '\t' ) || within( 0x7FU, 0x9FU );
   const bool invisible = within( 0x200BU, 0x200FU ) || within( 0x2028U, 0x202EU ) ||
         within( 0x2060U, 0x206FU ) || code == 0xFEFFU;
   return !control && !invisible;
}

std::string nameOfCharacter( std::string_view text )
{
   const std::size_t length = utf8Length( text );
   char name[ 48 ];
   if ( length == 0 ) {
      std::snprintf( name, sizeof name, "the byte 0x%02X, which is not UTF-8,", byteAt( text, 0 ) );
      return name;
   }
   const std::string_view character = text.substr( 0, length );
   if ( isPlain( character ) && character != "\t" ) {
      return "'" + std::string( character ) + "'";
   }
   const bool control = length == 1;
   std::snprintf( name, sizeof name, "the %s character U+%04X", control ? "control" : "invisible",
         static_cast< unsigned >( codePoint( character ) ) );
   return name;
}

} // namespace VokGen
