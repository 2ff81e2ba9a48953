// Eight 16-bit words compared at once: how the hash table looks at its metadata.
//
// Two forms of the same thing: one SSE2 register, and a pair of ordinary words for every other
// machine. The table takes either as a template argument; the tests run both.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace Vok::Detail {

// A set of lanes, walked from the first on. Two bits stand for a lane; only the lower is ever set.
class LaneSet {
 public:
   constexpr LaneSet() noexcept = default;
   explicit constexpr LaneSet( std::uint32_t bits ) noexcept : bits_( bits ) {}
   constexpr bool any() const noexcept { return bits_ != 0; }
   // The first lane of the set, which is not empty.
   constexpr std::size_t first() const noexcept
   {
      return static_cast< std::size_t >( std::countr_zero( bits_ ) ) / 2;
   }
   constexpr void dropFirst() noexcept { bits_ &= bits_ - 1; }

 private:
   std::uint32_t bits_ = 0;
};

// Two words of four lanes each, the first lane lowest.
class PortableLanes {
 public:
   static constexpr std::size_t width = 8;

   static PortableLanes load( const std::uint16_t * from ) noexcept
   {
      if constexpr ( std::endian::native == std::endian::little ) {
         std::uint64_t words[ 2 ];
         std::memcpy( words, from, sizeof words );
         return { words[ 0 ], words[ 1 ] };
      } else {
         return { four( from[ 0 ], from[ 1 ], from[ 2 ], from[ 3 ] ),
            four( from[ 4 ], from[ 5 ], from[ 6 ], from[ 7 ] ) };
      }
   }
   void store( std::uint16_t * to ) const noexcept
   {
      if constexpr ( std::endian::native == std::endian::little ) {
         const std::uint64_t words[ 2 ] = { low_, high_ };
         std::memcpy( to, words, sizeof words );
      } else {
         for ( std::size_t i = 0; i < width; ++i ) {
            to[ i ] = static_cast< std::uint16_t >( ( i < 4 ? low_ : high_ ) >> i % 4 * 16 );
         }
      }
   }
   static constexpr PortableLanes all( std::uint16_t word ) noexcept
   {
      return { word * ones, word * ones };
   }
   // 0x0100, 0x0200 ... 0x0800.
   static constexpr PortableLanes ramp() noexcept
   {
      return { four( 0x100, 0x200, 0x300, 0x400 ), four( 0x500, 0x600, 0x700, 0x800 ) };
   }

   // The sum lane by lane, where no lane overflows.
   constexpr PortableLanes plus( PortableLanes other ) const noexcept
   {
      return { low_ + other.low_, high_ + other.high_ };
   }
   // The difference lane by lane; the lanes after one that falls below zero are undefined.
   constexpr PortableLanes minus( PortableLanes other ) const noexcept
   {
      return { low_ - other.low_, high_ - other.high_ };
   }
   // The first `count` lanes, and from then on those of `other`; count <= width.
   constexpr PortableLanes firstOf( std::size_t count, PortableLanes other ) const noexcept
   {
      const auto chosen = []( std::size_t lanes ) {
         return lanes >= 4 ? ~std::uint64_t{ 0 } : ( std::uint64_t{ 1 } << 16 * lanes ) - 1;
      };
      const std::uint64_t low = chosen( count );
      const std::uint64_t high = chosen( count < 4 ? 0 : count - 4 );
      return { ( low_ & low ) | ( other.low_ & ~low ), ( high_ & high ) | ( other.high_ & ~high ) };
   }
   // The lanes that are equal to those of `other`.
   constexpr LaneSet equal( PortableLanes other ) const noexcept
   {
      return gathered( zeros( low_ ^ other.low_ ), zeros( high_ ^ other.high_ ) );
   }
   // The lanes that are less than those of `other`.
   constexpr LaneSet below( PortableLanes other ) const noexcept
   {
      return gathered( less( low_, other.low_ ), less( high_, other.high_ ) );
   }
   // The lanes that are not.
   constexpr LaneSet atLeast( PortableLanes other ) const noexcept
   {
      return gathered( ~less( low_, other.low_ ) & tops, ~less( high_, other.high_ ) & tops );
   }
   constexpr LaneSet nonZero() const noexcept
   {
      return gathered( ~zeros( low_ ) & tops, ~zeros( high_ ) & tops );
   }

 private:
   static constexpr std::uint64_t ones = 0x0001000100010001;
   static constexpr std::uint64_t tops = 0x8000800080008000;

   constexpr PortableLanes( std::uint64_t low, std::uint64_t high ) noexcept
         : low_( low ),
           high_( high )
   {
   }

   static constexpr std::uint64_t four(
         std::uint64_t a, std::uint64_t b, std::uint64_t c, std::uint64_t d ) noexcept
   {
      return a | b << 16 | c << 32 | d << 48;
   }
   // The top bit of every lane of `x` that is zero.
   static constexpr std::uint64_t zeros( std::uint64_t x ) noexcept
   {
      return ~( ( ( x & ~tops ) + ~tops ) | x ) & tops;
   }
   // The top bit of every lane where `x` is less than `y`: either the top bits say so, or they are
   // equal and the difference of the rest borrows.
   static constexpr std::uint64_t less( std::uint64_t x, std::uint64_t y ) noexcept
   {
      const std::uint64_t difference = ( x | tops ) - ( y & ~tops );
      return ( ( ~x & y ) | ( ~( x ^ y ) & ~difference ) ) & tops;
   }
   // Top bits of lanes, 16 apart, as bits 2 apart.
   static constexpr LaneSet gathered( std::uint64_t low, std::uint64_t high ) noexcept
   {
      const auto packed = []( std::uint64_t bits ) {
         // Bits 0, 16, 32 and 48 come together at 42, 44, 46 and 48, where no others fall.
         return static_cast< std::uint32_t >(
               ( ( bits >> 15 ) * ( 1ull << 42 | 1ull << 28 | 1ull << 14 | 1 ) >> 42 ) & 0x55 );
      };
      return LaneSet( packed( low ) | packed( high ) << 8 );
   }

   std::uint64_t low_;
   std::uint64_t high_;
};

#ifdef __SSE2__

class SseLanes {
 public:
   static constexpr std::size_t width = 8;

   static SseLanes load( const std::uint16_t * from ) noexcept
   {
      __m128i lanes;
      std::memcpy( &lanes, from, sizeof lanes );
      return SseLanes( lanes );
   }
   void store( std::uint16_t * to ) const noexcept { std::memcpy( to, &lanes_, sizeof lanes_ ); }
   static SseLanes all( std::uint16_t word ) noexcept
   {
      return SseLanes( _mm_set1_epi16( static_cast< short >( word ) ) );
   }
   static SseLanes ramp() noexcept
   {
      return SseLanes( _mm_setr_epi16( 0x100, 0x200, 0x300, 0x400, 0x500, 0x600, 0x700, 0x800 ) );
   }

   SseLanes plus( SseLanes other ) const noexcept
   {
      return SseLanes( _mm_add_epi16( lanes_, other.lanes_ ) );
   }
   SseLanes minus( SseLanes other ) const noexcept
   {
      return SseLanes( _mm_sub_epi16( lanes_, other.lanes_ ) );
   }
   SseLanes firstOf( std::size_t count, SseLanes other ) const noexcept
   {
      const __m128i chosen = _mm_cmpgt_epi16( _mm_set1_epi16( static_cast< short >( count ) ),
            _mm_setr_epi16( 0, 1, 2, 3, 4, 5, 6, 7 ) );
      return SseLanes( _mm_or_si128(
            _mm_and_si128( chosen, lanes_ ), _mm_andnot_si128( chosen, other.lanes_ ) ) );
   }
   LaneSet equal( SseLanes other ) const noexcept
   {
      return LaneSet( bits( _mm_cmpeq_epi16( lanes_, other.lanes_ ) ) );
   }
   LaneSet below( SseLanes other ) const noexcept
   {
      return LaneSet( notBelow( other ) ^ everyLane );
   }
   LaneSet atLeast( SseLanes other ) const noexcept { return LaneSet( notBelow( other ) ); }
   LaneSet nonZero() const noexcept
   {
      return LaneSet( bits( _mm_cmpeq_epi16( lanes_, _mm_setzero_si128() ) ) ^ everyLane );
   }

 private:
   static constexpr std::uint32_t everyLane = 0x5555;

   explicit SseLanes( __m128i lanes ) noexcept : lanes_( lanes ) {}

   // There is no unsigned comparison; a difference that stops at zero is above it exactly where the
   // other lane is greater.
   std::uint32_t notBelow( SseLanes other ) const noexcept
   {
      const __m128i above = _mm_subs_epu16( other.lanes_, lanes_ );
      return bits( _mm_cmpeq_epi16( above, _mm_setzero_si128() ) );
   }

   // The lanes of a comparison, 0 or -1, as one bit each.
   static std::uint32_t bits( __m128i lanes ) noexcept
   {
      return static_cast< std::uint32_t >( _mm_movemask_epi8( lanes ) ) & everyLane;
   }

   __m128i lanes_;
};

using DefaultLanes = SseLanes;

#else

using DefaultLanes = PortableLanes;

#endif

} // namespace Vok::Detail
