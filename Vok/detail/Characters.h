// What the bytes of a text may be, each found by one look into a table.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Vok::Detail {

enum CharacterClass : std::uint8_t {
   spaceCharacter = 1, ///< between tokens
   wordCharacter = 2, ///< of names
   bareCharacter = 4, ///< of texts without quotes
   plainCharacter = 8 ///< of ASCII: stands for itself inside quotes
};

inline constexpr std::array< std::uint8_t, 256 > characterClasses = [] {
   std::array< std::uint8_t, 256 > classes{};
   const auto add = [ & ]( std::string_view characters, unsigned what ) {
      for ( const char c : characters ) {
         classes[ static_cast< unsigned char >( c ) ] |= static_cast< std::uint8_t >( what );
      }
   };
   for ( std::size_t c = 0x20; c != 0x7f; ++c ) {
      classes[ c ] = c == '"' || c == '\\' || c == '\'' ? 0 : plainCharacter;
   }
   add( " \t\n\r", spaceCharacter );
   add( "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_",
         wordCharacter | bareCharacter );
   add( "./:@%+-", bareCharacter );
   return classes;
}();

inline bool isOf( char c, CharacterClass what ) noexcept
{
   return ( characterClasses[ static_cast< unsigned char >( c ) ] & what ) != 0;
}

/// How many characters of a class stand at the beginning.
inline std::size_t countOf( std::string_view text, CharacterClass what ) noexcept
{
   std::size_t count = 0;
   while ( count != text.size() && isOf( text[ count ], what ) ) {
      ++count;
   }
   return count;
}

} // namespace Vok::Detail
