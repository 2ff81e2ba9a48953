// What a hash table knows of thirteen slots: sixteen bytes, compared at once.
//
// Three forms of the same thing: a register of SSE2, one of NEON, and a pair of ordinary words for
// every other machine. The table takes any as a template argument; the tests run the machine's own
// and the ordinary words.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined( __SSE2__ )
#include <emmintrin.h>
#elif defined( __aarch64__ ) && defined( __ARM_NEON ) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
#include <arm_neon.h>
#define VOK_NEON
#endif

namespace Vok::Detail {

// A group of slots: the mark of each, 0 where it is empty, else eight bits of its node's hash, 1 in
// place of 0. Behind them stands how many nodes went past the group because it was full: eight
// counts of three bits, for each value of the lowest three of those bits. A count that has reached
// 7 stays there.
class alignas( 16 ) MarkGroup {
 public:
   static constexpr std::size_t slots = 13;

   static constexpr std::uint8_t markOf( std::uint64_t hash ) noexcept
   {
      const auto mark = static_cast< std::uint8_t >( hash >> 56 );
      return mark != 0 ? mark : 1;
   }

   const std::uint8_t * bytes() const noexcept { return bytes_; }
   std::uint8_t * bytes() noexcept { return bytes_; }

   // Whether a node of this hash may have gone past.
   bool passed( std::uint64_t hash ) const noexcept
   {
      return ( lastFour() & allPassed[ countOf( hash ) ] ) != 0;
   }
   // One more, and one less.
   void goesPast( std::uint64_t hash ) noexcept { change( hash, 1 ); }
   void wentPast( std::uint64_t hash ) noexcept { change( hash, ~0U ); }

 private:
   // The bits of each count in the last four bytes. A table spares a multiplication.
   static constexpr std::uint32_t allPassed[] = { 7U << 8, 7U << 11, 7U << 14, 7U << 17, 7U << 20,
      7U << 23, 7U << 26, 7U << 29 };

   static constexpr std::size_t countOf( std::uint64_t hash ) noexcept { return hash >> 56 & 7; }

   // The last mark and the counts, from the lowest bits on.
   std::uint32_t lastFour() const noexcept
   {
      std::uint32_t word;
      std::memcpy( &word, bytes_ + 12, sizeof word );
      return std::endian::native == std::endian::big ? __builtin_bswap32( word ) : word;
   }
   void change( std::uint64_t hash, std::uint32_t by ) noexcept
   {
      const std::uint32_t all = allPassed[ countOf( hash ) ];
      std::uint32_t word = lastFour();
      if ( ( word & all ) != all ) {
         word += by * ( all / 7 );
         word = std::endian::native == std::endian::big ? __builtin_bswap32( word ) : word;
         std::memcpy( bytes_ + 12, &word, sizeof word );
      }
   }

   std::uint8_t bytes_[ 16 ] = {};
};

// A set of slots of a group, walked from the first on.
class SlotSet {
 public:
   constexpr SlotSet() noexcept = default;
   explicit constexpr SlotSet( std::uint32_t bits ) noexcept : bits_( bits & all ) {}

   constexpr bool any() const noexcept { return bits_ != 0; }
   // The first slot of the set, which is not empty.
   constexpr std::size_t first() const noexcept
   {
      return static_cast< std::uint32_t >( std::countr_zero( bits_ ) );
   }
   constexpr void dropFirst() noexcept { bits_ &= bits_ - 1; }
   // Without those before `slot`.
   constexpr SlotSet from( std::size_t slot ) const noexcept
   {
      return SlotSet( bits_ & ~std::uint32_t{ 0 } << slot );
   }
   // The other slots of the group.
   constexpr SlotSet others() const noexcept { return SlotSet( ~bits_ ); }

 private:
   static constexpr std::uint32_t all = ( 1U << MarkGroup::slots ) - 1;

   std::uint32_t bits_ = 0;
};

// Two words of eight marks each, the first mark lowest.
class PortableMarks {
 public:
   explicit PortableMarks( const MarkGroup & group ) noexcept
         : low_( load( group.bytes() ) ),
           high_( load( group.bytes() + 8 ) )
   {
   }

   // The slots that have the mark of a hash.
   SlotSet like( std::uint64_t hash ) const noexcept
   {
      const std::uint64_t pattern = MarkGroup::markOf( hash ) * ones;
      return zeros( low_ ^ pattern, high_ ^ pattern );
   }
   SlotSet empty() const noexcept { return zeros( low_, high_ ); }

   static void set( MarkGroup & group, std::size_t slot, std::uint8_t mark ) noexcept
   {
      group.bytes()[ slot ] = mark;
   }

 private:
   static constexpr std::uint64_t ones = 0x0101010101010101;
   static constexpr std::uint64_t lowBits = 0x7f * ones;

   static std::uint64_t load( const std::uint8_t * from ) noexcept
   {
      std::uint64_t word;
      std::memcpy( &word, from, sizeof word );
      if constexpr ( std::endian::native == std::endian::big ) {
         word = __builtin_bswap64( word );
      }
      return word;
   }
   static SlotSet zeros( std::uint64_t low, std::uint64_t high ) noexcept
   {
      return SlotSet( zeroBytes( low ) | zeroBytes( high ) << 8 );
   }
   // A bit for each byte that is zero. The product gathers the highest bits of all bytes on top.
   static std::uint32_t zeroBytes( std::uint64_t word ) noexcept
   {
      const std::uint64_t highest = ~( ( ( word & lowBits ) + lowBits ) | word | lowBits );
      return static_cast< std::uint32_t >( ( highest >> 7 ) * 0x0102040810204080 >> 56 );
   }

   std::uint64_t low_;
   std::uint64_t high_;
};

// Sixteen bytes from somewhere in here on have ones in one of them.
inline constexpr std::uint8_t onesInOneByte[ 31 ] = { 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
   0xff };

// Those that have ones in the byte of a slot.
constexpr const std::uint8_t * onesInByte( std::size_t slot ) noexcept
{
   return onesInOneByte + sizeof( MarkGroup ) - 1 - slot;
}

// SSE2 and NEON write a whole group, of which one mark is another: its address is known before the
// slot is, so that reads of other groups need not wait for it; and who reads this one next gets it
// from where it waits to be stored.

#if defined( __SSE2__ )

// The mark of a hash, by its highest byte, four times: a table spares a branch and a product.
inline constexpr auto fourMarks = [] {
   std::array< std::uint32_t, 256 > table{};
   for ( std::uint64_t i = 0; i < table.size(); ++i ) {
      table[ i ] = MarkGroup::markOf( i << 56 ) * 0x01010101U;
   }
   return table;
}();

class SseMarks {
 public:
   explicit SseMarks( const MarkGroup & group ) noexcept
         : marks_( _mm_load_si128( reinterpret_cast< const __m128i * >( group.bytes() ) ) )
   {
   }

   SlotSet like( std::uint64_t hash ) const noexcept
   {
      return equal( _mm_set1_epi32( static_cast< int >( fourMarks[ hash >> 56 ] ) ) );
   }
   SlotSet empty() const noexcept { return equal( _mm_setzero_si128() ); }

   static void set( MarkGroup & group, std::size_t slot, std::uint8_t mark ) noexcept
   {
      auto * const at = reinterpret_cast< __m128i * >( group.bytes() );
      const __m128i one =
            _mm_loadu_si128( reinterpret_cast< const __m128i * >( onesInByte( slot ) ) );
      const __m128i marks = _mm_set1_epi8( static_cast< char >( mark ) );
      _mm_store_si128( at,
            _mm_or_si128( _mm_andnot_si128( one, _mm_load_si128( at ) ),
                  _mm_and_si128( one, marks ) ) );
   }

 private:
   SlotSet equal( __m128i other ) const noexcept
   {
      return SlotSet(
            static_cast< std::uint32_t >( _mm_movemask_epi8( _mm_cmpeq_epi8( marks_, other ) ) ) );
   }

   __m128i marks_;
};

using DefaultMarks = SseMarks;

#elif defined( VOK_NEON )

class NeonMarks {
 public:
   explicit NeonMarks( const MarkGroup & group ) noexcept : marks_( vld1q_u8( group.bytes() ) ) {}

   SlotSet like( std::uint64_t hash ) const noexcept
   {
      return those( vceqq_u8( marks_, vdupq_n_u8( MarkGroup::markOf( hash ) ) ) );
   }
   SlotSet empty() const noexcept { return those( vceqzq_u8( marks_ ) ); }

   static void set( MarkGroup & group, std::size_t slot, std::uint8_t mark ) noexcept
   {
      const uint8x16_t marks = vld1q_u8( group.bytes() );
      const uint8x16_t one = vld1q_u8( onesInByte( slot ) );
      vst1q_u8( group.bytes(), vbslq_u8( one, vdupq_n_u8( mark ), marks ) );
   }

 private:
   // Each byte's own bit among eight.
   static constexpr std::uint8_t ownBits[ 16 ] = { 1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32,
      64, 128 };

   // A bit for each byte that has ones, which NEON has no instruction for: of each byte its own bit
   // is left, and eight neighbours are added up, two and two.
   static SlotSet those( uint8x16_t ones ) noexcept
   {
      uint8x16_t bits = vandq_u8( ones, vld1q_u8( ownBits ) );
      bits = vpaddq_u8( bits, bits );
      bits = vpaddq_u8( bits, bits );
      bits = vpaddq_u8( bits, bits );
      return SlotSet( vgetq_lane_u16( vreinterpretq_u16_u8( bits ), 0 ) );
   }

   uint8x16_t marks_;
};

using DefaultMarks = NeonMarks;

#else

using DefaultMarks = PortableMarks;

#endif

} // namespace Vok::Detail
