// The keyed hash of the collections, and the fixed checksum that guards messages.
#pragma once

#include "Vok/Export.h"
#include "Vok/String.h"
#include "Vok/detail/Bytes.h"

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

namespace Vok::Detail {

// What a hash depends on besides its key. Whoever does not know it cannot choose keys that collide.
// The second word is not 0.
struct HashSeed {
   std::uint64_t a = 0;
   std::uint64_t b = 0;
};

// The seed of one new table: the process's 128 random bits (drawn at first use), stirred so that no
// two tables agree, with the collection's own constant mixed in by XOR. Tables that agreed would
// iterate in the same order, and filling a growing one in another's order would crowd its front
// with quadratic cost. The table keeps its seed beside its metadata, where a lookup finds it for
// nothing.
VOK_EXPORT HashSeed tableSeed( std::uint32_t constant ) noexcept;

// For tests: from now on tables get seeds that follow from `seed` alone. Tables that exist already
// keep theirs; no other thread makes one meanwhile.
VOK_EXPORT void pinHashSeed( HashSeed seed ) noexcept;

// Fixed odd words with about half of their bits set, without structure.
inline constexpr std::uint64_t hashWords[ 8 ] = { 0xb5c18f3a6d92e747, 0x8d3e65f1c2a94b1d,
   0xe39a4c7d16f58b2b, 0x9c6f1b82d5a7e363, 0xd1b4729ec58f3a65, 0xa7e853c96b1d4f93,
   0xc92d5b17e46a38f1, 0xf16ca93d8e274bd5 };

struct Product {
   std::uint64_t low;
   std::uint64_t high;
};

// The whole product of two words, from four products of halves.
constexpr Product multiplyByHalves( std::uint64_t x, std::uint64_t y ) noexcept
{
   const std::uint64_t half = 0xffffffff;
   const std::uint64_t low = ( x & half ) * ( y & half );
   const std::uint64_t crossA = ( x >> 32 ) * ( y & half ) + ( low >> 32 );
   const std::uint64_t crossB = ( x & half ) * ( y >> 32 ) + ( crossA & half );
   return { ( crossB << 32 ) | ( low & half ),
      ( x >> 32 ) * ( y >> 32 ) + ( crossA >> 32 ) + ( crossB >> 32 ) };
}

// The same in one instruction, where the compiler offers it.
constexpr Product multiply( std::uint64_t x, std::uint64_t y ) noexcept
{
#ifdef __SIZEOF_INT128__
   __extension__ using Wide = unsigned __int128;
   const Wide product = Wide{ x } * y;
   return { static_cast< std::uint64_t >( product ),
      static_cast< std::uint64_t >( product >> 64 ) };
#else
   return multiplyByHalves( x, y );
#endif
}

// Both halves of the product folded into one word: every bit of either factor reaches many bits.
constexpr std::uint64_t multiplyFold( std::uint64_t x, std::uint64_t y ) noexcept
{
   const Product product = multiply( x, y );
   return product.low ^ product.high;
}

// A hash of one word. A single product would do for most seeds, but keys in a row crowd under some.
constexpr std::uint64_t hashWord( std::uint64_t word, HashSeed seed ) noexcept
{
   return multiplyFold( multiplyFold( word ^ seed.a, seed.b ), hashWords[ 1 ] );
}

// A hash of more than 16 bytes.
VOK_EXPORT std::uint64_t hashLongBytes(
      const char * bytes, std::size_t size, HashSeed seed ) noexcept;

// A hash of any bytes. The same on every machine for the same seed.
inline std::uint64_t hashBytes( const char * bytes, std::size_t size, HashSeed seed ) noexcept
{
   if ( size > 16 ) {
      return hashLongBytes( bytes, size, seed );
   }
   // Two words that overlap where there are fewer than 16 bytes; the size tells such texts apart.
   std::uint64_t first = 0;
   std::uint64_t last = 0;
   if ( size >= 8 ) {
      first = loadLittle64( bytes );
      last = loadLittle64( bytes + size - 8 );
   } else if ( size >= 4 ) {
      first = loadLittle32( bytes );
      last = loadLittle32( bytes + size - 4 );
   } else if ( size > 0 ) {
      const auto byte = [ bytes ]( std::size_t i ) -> std::uint64_t {
         return static_cast< unsigned char >( bytes[ i ] );
      };
      first = byte( 0 ) << 16 | byte( size / 2 ) << 8 | byte( size - 1 );
   }
   const std::uint64_t folded = multiplyFold( first ^ seed.a, last ^ seed.b ^ hashWords[ 2 ] );
   return multiplyFold( folded ^ size, seed.b ^ hashWords[ 3 ] );
}

// How a key is hashed: specialised for every type that is a key of a collection, as
//    static std::uint64_t hash( const K & key, HashSeed seed );
// It must not throw, and equal keys must have equal hashes. A specialisation may also name a type
// `Query` by which keys are looked up in place of `const K &`, or a copy of what fits into a
// register; its hash takes a Query then.
template< class K > struct KeyHash;

template< class K >
   requires std::integral< K > || std::is_enum_v< K >
struct KeyHash< K > {
   static constexpr std::uint64_t hash( K key, HashSeed seed ) noexcept
   {
      return hashWord( static_cast< std::uint64_t >( key ), seed );
   }
};

template<> struct KeyHash< double > {
   static std::uint64_t hash( double key, HashSeed seed ) noexcept
   {
      // The two zeros are equal.
      const double one = key < 0.0 || key > 0.0 || key != key ? key : 0.0;
      return hashWord( std::bit_cast< std::uint64_t >( one ), seed );
   }
};

template< class T > struct KeyHash< T * > {
   static std::uint64_t hash( const T * key, HashSeed seed ) noexcept
   {
      return hashWord( reinterpret_cast< std::uintptr_t >( key ), seed );
   }
};

template<> struct KeyHash< std::string_view > {
   static std::uint64_t hash( std::string_view key, HashSeed seed ) noexcept
   {
      return hashBytes( key.data(), key.size(), seed );
   }
};

// Texts are looked up by any text, without making a String.
template<> struct KeyHash< Corvo::String > : KeyHash< std::string_view > {
   using Query = std::string_view;
};

// What a key is looked up by.
template< class K > struct KeyQueryOf {
   using Type = std::conditional_t< std::is_scalar_v< K >, K, const K & >;
};
template< class K >
   requires requires { typename KeyHash< K >::Query; }
struct KeyQueryOf< K > {
   using Type = typename KeyHash< K >::Query;
};
template< class K > using KeyQuery = typename KeyQueryOf< K >::Type;

// A checksum of any bytes: fixed for ever, the same in every process and on every machine. It finds
// accidents, not attacks. What happens within one of the consecutive 8-byte words is found with
// certainty, anything else as good as certainly.
VOK_EXPORT std::uint64_t checksum64( const std::byte * bytes, std::size_t size ) noexcept;

} // namespace Vok::Detail
