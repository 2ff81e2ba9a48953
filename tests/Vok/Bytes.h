// Bytes as hexadecimal digits, and back.
#pragma once

#include "Vok/NboAttrLog.h"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

namespace TestSupport {

/// Hexadecimal digits that are compared without regard to the blanks between them.
class Hex {
 public:
   explicit Hex( std::string digits ) : digits_( std::move( digits ) ) {}

   friend bool operator==( const Hex & a, std::string_view b )
   {
      std::string digits( b );
      std::erase( digits, ' ' );
      return a.digits_ == digits;
   }
   friend std::ostream & operator<<( std::ostream & out, const Hex & hex )
   {
      return out << hex.digits_;
   }

 private:
   std::string digits_;
};

inline Hex hex( const std::byte * bytes, std::size_t size )
{
   static constexpr char digits[] = "0123456789abcdef";
   std::string text;
   for ( std::size_t i = 0; i != size; ++i ) {
      text += digits[ std::to_integer< unsigned >( bytes[ i ] ) >> 4 ];
      text += digits[ std::to_integer< unsigned >( bytes[ i ] ) & 15 ];
   }
   return Hex( text );
}

inline Hex hex( const Vok::NboAttrLog::Out & out ) { return hex( out.data(), out.size() ); }

/// The bytes of hexadecimal digits, two each, blanks aside.
inline std::string bytesOf( std::string_view digits )
{
   const auto valueOf = []( char c ) { return c <= '9' ? c - '0' : c - 'a' + 10; };
   std::string text( digits );
   std::erase( text, ' ' );
   std::string bytes;
   for ( std::size_t i = 0; i + 1 < text.size(); i += 2 ) {
      bytes += static_cast< char >( valueOf( text[ i ] ) * 16 + valueOf( text[ i + 1 ] ) );
   }
   return bytes;
}

} // namespace TestSupport
