// How texts and doubles are written.
#include "Vok/TextOut.h"

#include "Vok/Time.h"
#include "Vok/detail/Characters.h"
#include "Vok/detail/DoubleText.h"

#include <algorithm>

namespace Vok {

namespace Detail {

namespace {

unsigned byteAt( std::string_view text, std::size_t at ) noexcept
{
   return at < text.size() ? static_cast< unsigned char >( text[ at ] ) : 0;
}

bool continues( std::string_view text, std::size_t at ) noexcept
{
   return ( byteAt( text, at ) & 0xc0U ) == 0x80;
}

} // namespace

bool isBareWord( std::string_view text ) noexcept
{
   return !text.empty() && countOf( text, bareCharacter ) == text.size();
}

// RFC 3629: no overlong forms, no surrogates, nothing above U+10FFFF; C1 controls are refused too.
std::size_t plainInQuotes( std::string_view text, std::size_t at ) noexcept
{
   const unsigned first = byteAt( text, at );
   if ( first < 0x80 ) {
      return ( characterClasses[ first ] & plainCharacter ) != 0;
   }
   if ( !continues( text, at + 1 ) ) {
      return 0;
   }
   const unsigned second = byteAt( text, at + 1 );
   if ( first >= 0xc2 && first <= 0xdf ) {
      return first == 0xc2 && second < 0xa0 ? 0 : 2;
   }
   if ( !continues( text, at + 2 ) ) {
      return 0;
   }
   if ( first >= 0xe0 && first <= 0xef ) {
      const bool overlong = first == 0xe0 && second < 0xa0;
      const bool surrogate = first == 0xed && second >= 0xa0;
      return overlong || surrogate ? 0 : 3;
   }
   if ( !continues( text, at + 3 ) || first < 0xf0 || first > 0xf4 ) {
      return 0;
   }
   const bool overlong = first == 0xf0 && second < 0x90;
   const bool beyond = first == 0xf4 && second >= 0x90;
   return overlong || beyond ? 0 : 4;
}

void putQuoted( std::string_view text, FunctionRef< void( std::string_view part ) > put )
{
   static constexpr char digits[] = "0123456789abcdef";
   put( "\"" );
   std::size_t start = 0;
   for ( std::size_t at = 0; at != text.size(); ) {
      if ( const std::size_t plain = plainInQuotes( text, at ) ) {
         at += plain;
         continue;
      }
      put( text.substr( start, at - start ) );
      const char c = text[ at++ ];
      start = at;
      const auto byte = static_cast< unsigned char >( c );
      const char escape[] = { '\\', 'x', digits[ byte >> 4 ], digits[ byte & 15 ] };
      if ( c == '"' || c == '\\' ) {
         put( std::string_view( c == '"' ? "\\\"" : "\\\\" ) );
      } else if ( c == '\n' || c == '\t' ) {
         put( std::string_view( c == '\n' ? "\\n" : "\\t" ) );
      } else {
         put( std::string_view( escape, sizeof escape ) );
      }
   }
   put( text.substr( start ) );
   put( "\"" );
}

} // namespace Detail

void TextOut::enlarge( std::size_t extra )
{
   const std::size_t capacity = std::max( 2 * capacity_, size_ + extra );
   auto large = std::make_unique_for_overwrite< char[] >( capacity );
   std::memcpy( large.get(), data_, size_ );
   large_ = std::move( large );
   data_ = large_.get();
   capacity_ = capacity;
}

void TextOut::putDouble( double number )
{
   char * const at = grow( Detail::doubleRoom );
   const char * const end = Detail::putDouble( at, Detail::canonicalDouble( number ) );
   size_ = static_cast< std::size_t >( end - data_ );
}

void TextOut::putString( std::string_view text )
{
   if ( Detail::isBareWord( text ) ) {
      put( text );
   } else {
      Detail::putQuoted( text, [ this ]( std::string_view part ) { put( part ); } );
   }
}

} // namespace Vok
