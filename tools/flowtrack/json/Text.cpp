// UTF-8 is decoded by hand: what is well-formed is Unicode's table 3-7.
#include "tools/flowtrack/json/Text.h"

#include <cstdint>

namespace FlowtrackJson {

namespace {

constexpr char32_t bytesFrom = 0x10FE00;
constexpr char32_t bytesUpTo = bytesFrom + 0xFF;

unsigned char byteAt( std::string_view text, std::size_t i )
{
   return static_cast< unsigned char >( text[ i ] );
}

/// How many bytes the character takes that a byte starts; 0 where none starts so.
std::size_t lengthFrom( unsigned char lead )
{
   if ( lead < 0x80 ) {
      return 1;
   }
   if ( lead < 0xC2 || lead > 0xF4 ) {
      return 0;
   }
   return lead < 0xE0 ? 2 : lead < 0xF0 ? 3
                                        : 4;
}

struct Character {
   char32_t code = 0;
   std::size_t length = 0; ///< 0: the text starts with no well-formed character
};

Character firstOf( std::string_view text )
{
   static constexpr unsigned char leadBits[] = { 0, 0x7F, 0x1F, 0x0F, 0x07 };
   static constexpr char32_t least[] = { 0, 0, 0x80, 0x800, 0x10000 };
   const std::size_t length = lengthFrom( byteAt( text, 0 ) );
   if ( length == 0 || length > text.size() ) {
      return {};
   }
   char32_t code = byteAt( text, 0 ) & leadBits[ length ];
   for ( std::size_t i = 1; i != length; ++i ) {
      if ( ( byteAt( text, i ) & 0xC0 ) != 0x80 ) {
         return {};
      }
      code = code << 6 | ( byteAt( text, i ) & 0x3F );
   }
   const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
   return code < least[ length ] || code > 0x10FFFF || surrogate ? Character()
                                                                 : Character{ code, length };
}

bool standsForItself( char32_t code )
{
   const bool control = code < 0x20 && code != '\t' && code != '\n' && code != '\r';
   const bool noncharacter = ( code >= 0xFDD0 && code <= 0xFDEF ) || ( code & 0xFFFE ) == 0xFFFE;
   return !control && !noncharacter && code < bytesFrom;
}

void append( std::string & text, char32_t code )
{
   text += static_cast< char >( 0xF0 | code >> 18 );
   text += static_cast< char >( 0x80 | ( code >> 12 & 0x3F ) );
   text += static_cast< char >( 0x80 | ( code >> 6 & 0x3F ) );
   text += static_cast< char >( 0x80 | ( code & 0x3F ) );
}

} // namespace

std::string unicodeOf( std::string_view bytes )
{
   std::string text;
   text.reserve( bytes.size() );
   while ( !bytes.empty() ) {
      const Character first = firstOf( bytes );
      if ( first.length != 0 && standsForItself( first.code ) ) {
         text += bytes.substr( 0, first.length );
         bytes.remove_prefix( first.length );
      } else {
         append( text, bytesFrom + byteAt( bytes, 0 ) );
         bytes.remove_prefix( 1 );
      }
   }
   return text;
}

std::string bytesOf( std::string_view unicode )
{
   std::string bytes;
   bytes.reserve( unicode.size() );
   while ( !unicode.empty() ) {
      const Character first = firstOf( unicode );
      const std::size_t length = first.length == 0 ? 1 : first.length;
      if ( first.code >= bytesFrom && first.code <= bytesUpTo ) {
         bytes += static_cast< char >( first.code - bytesFrom );
      } else {
         bytes += unicode.substr( 0, length );
      }
      unicode.remove_prefix( length );
   }
   return bytes;
}

std::string_view firstCharacters( std::string_view text, std::size_t most )
{
   std::size_t at = 0;
   while ( most != 0 && at != text.size() ) {
      const std::size_t length = firstOf( text.substr( at ) ).length;
      at += length == 0 ? 1 : length;
      --most;
   }
   return text.substr( 0, at );
}

} // namespace FlowtrackJson
