// Words out of unaligned bytes, and the comparison of short byte strings without a call.
#pragma once

#include <bit>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Vok::Detail {

// The bytes at `from` as a word in the machine's own order.
template< class Word > inline Word loadNative( const void * from ) noexcept
{
   Word word;
   std::memcpy( &word, from, sizeof word );
   return word;
}

// The bytes at `from` as a word whose lowest byte stands first: the same on every machine.
inline std::uint64_t loadLittle64( const void * from ) noexcept
{
   const auto word = loadNative< std::uint64_t >( from );
   return std::endian::native == std::endian::little ? word : __builtin_bswap64( word );
}

inline std::uint32_t loadLittle32( const void * from ) noexcept
{
   const auto word = loadNative< std::uint32_t >( from );
   return std::endian::native == std::endian::little ? word : __builtin_bswap32( word );
}

// Copies fewer than 16 bytes. Two overlapping moves of one fixed size cover every length.
inline void copyShort( char * to, const char * from, std::size_t size ) noexcept
{
   if ( size >= 8 ) {
      const auto last = loadNative< std::uint64_t >( from + size - 8 );
      std::memcpy( to, from, 8 );
      std::memcpy( to + size - 8, &last, 8 );
   } else if ( size >= 4 ) {
      const auto last = loadNative< std::uint32_t >( from + size - 4 );
      std::memcpy( to, from, 4 );
      std::memcpy( to + size - 4, &last, 4 );
   } else if ( size > 0 ) {
      const char middle = from[ size / 2 ];
      const char last = from[ size - 1 ];
      to[ 0 ] = from[ 0 ];
      to[ size / 2 ] = middle;
      to[ size - 1 ] = last;
   }
}

// Fewer than 16 bytes as two words, the first byte lowest. They are put together in registers:
// whoever copies bytes and then reads them as words waits for the memory in between.
struct ShortWords {
   std::uint64_t first = 0;
   std::uint64_t second = 0;
};

inline ShortWords shortWords( const char * from, std::size_t size ) noexcept
{
   if ( size >= 8 ) {
      // The last eight bytes, without those that the first word holds already.
      const std::uint64_t last = loadLittle64( from + size - 8 );
      return { loadLittle64( from ), last >> 8 * ( 15 - size ) >> 8 };
   }
   if ( size >= 4 ) {
      const std::uint64_t last = loadLittle32( from + size - 4 );
      return { loadLittle32( from ) | last << 8 * ( size - 4 ) };
   }
   const auto byte = [ from ]( std::size_t i ) {
      return std::uint64_t{ static_cast< unsigned char >( from[ i ] ) } << 8 * i;
   };
   return size == 0 ? ShortWords{} : ShortWords{ byte( 0 ) | byte( size / 2 ) | byte( size - 1 ) };
}

// The order of two texts, byte by byte. Most differ among their first eight bytes, which are
// compared as one number.
inline std::strong_ordering compareTexts( std::string_view a, std::string_view b ) noexcept
{
   if ( a.size() >= 8 && b.size() >= 8 ) {
      const std::uint64_t front = __builtin_bswap64( loadLittle64( a.data() ) );
      const std::uint64_t other = __builtin_bswap64( loadLittle64( b.data() ) );
      if ( front != other ) {
         return front <=> other;
      }
   }
   return a <=> b;
}

// Whether two byte strings of the same length are equal. Keys are short: up to 16 bytes are
// compared in place by overlapping words.
inline bool equalBytes( const char * a, const char * b, std::size_t size ) noexcept
{
   if ( size > 16 ) {
      return std::memcmp( a, b, size ) == 0;
   }
   if ( size >= 8 ) {
      const auto differing =
            ( loadNative< std::uint64_t >( a ) ^ loadNative< std::uint64_t >( b ) ) |
            ( loadNative< std::uint64_t >( a + size - 8 ) ^
                  loadNative< std::uint64_t >( b + size - 8 ) );
      return differing == 0;
   }
   if ( size >= 4 ) {
      const auto differing =
            ( loadNative< std::uint32_t >( a ) ^ loadNative< std::uint32_t >( b ) ) |
            ( loadNative< std::uint32_t >( a + size - 4 ) ^
                  loadNative< std::uint32_t >( b + size - 4 ) );
      return differing == 0;
   }
   return size == 0 ||
         ( a[ 0 ] == b[ 0 ] && a[ size / 2 ] == b[ size / 2 ] && a[ size - 1 ] == b[ size - 1 ] );
}

} // namespace Vok::Detail
