// The shortest decimal of a double, as Raffaello Giulietti finds it in "The Schubfach way to render
// doubles" (2020): three products of a number and its two neighbours with a power of ten say which
// of at most four decimals is inside the interval that reads back as the number.
#include "Vok/detail/DoubleText.h"

#include "Vok/detail/Hash.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace Vok::Detail {

namespace {

// ---- Powers of ten ----------------------------------------------------------------------------

// The first 128 bits of a power of ten, rounded up where there are more.
struct Power {
   std::uint64_t high;
   std::uint64_t low;
};

// A natural number of 1280 bits: they hold 10^324, and 2^1279 divided by 10^292 with bits to spare.
class Natural {
 public:
   constexpr explicit Natural( std::size_t bit )
   {
      words_[ bit / 32 ] = std::uint32_t{ 1 } << bit % 32;
   }

   constexpr void timesTen()
   {
      std::uint64_t carry = 0;
      for ( std::uint32_t & word : words_ ) {
         carry += std::uint64_t{ word } * 10;
         word = static_cast< std::uint32_t >( carry );
         carry >>= 32;
      }
   }
   constexpr void byTen()
   {
      std::uint64_t rest = 0;
      for ( std::size_t i = words_.size(); i-- != 0; ) {
         rest = rest << 32 | words_[ i ];
         words_[ i ] = static_cast< std::uint32_t >( rest / 10 );
         rest %= 10;
      }
   }

   constexpr Power first128( bool roundUp ) const
   {
      std::size_t top = words_.size() - 1;
      while ( words_[ top ] == 0 ) {
         --top;
      }
      const auto word = [ & ]( std::size_t down ) -> std::uint64_t {
         return down <= top ? words_[ top - down ] : 0;
      };
      const int shift = std::countl_zero( words_[ top ] );
      const std::uint64_t first = word( 0 ) << 32 | word( 1 );
      const std::uint64_t second = word( 2 ) << 32 | word( 3 );
      Power power{ first << shift | ( second >> 32 << shift ) >> 32,
         second << shift | ( word( 4 ) << shift ) >> 32 };
      power.low += roundUp ? 1 : 0;
      power.high += roundUp && power.low == 0 ? 1 : 0;
      return power;
   }

 private:
   std::array< std::uint32_t, 40 > words_{};
};

constexpr int leastPower = -292;
constexpr int mostPower = 324;

constexpr auto powers = [] {
   std::array< Power, mostPower - leastPower + 1 > table{};
   Natural up( 0 );
   for ( std::size_t i = -leastPower; i != table.size(); ++i ) {
      // Up to 10^55 they have no more bits.
      table[ i ] = up.first128( i > 55 - leastPower );
      up.timesTen();
   }
   Natural down( 1279 );
   for ( std::size_t i = -leastPower; i-- != 0; ) {
      down.byTen();
      table[ i ] = down.first128( true );
   }
   return table;
}();

// ---- The shortest decimal ---------------------------------------------------------------------

// digits * 10^exponent
struct Decimal {
   std::uint64_t digits;
   int exponent;
};

// The product's bits above the first 128, and whether there are any below them.
std::uint64_t roundedToOdd( const Power & power, std::uint64_t factor ) noexcept
{
   const Product low = multiply( power.low, factor );
   const Product high = multiply( power.high, factor );
   const std::uint64_t middle = high.low + low.high;
   const std::uint64_t top = high.high + ( middle < high.low ? 1 : 0 );
   return top | ( middle > 1 ? 1 : 0 );
}

constexpr int significandBits = 52;

// Of a number above 0. An exponent is that of the significand as a whole number.
Decimal shortest( std::uint64_t significand, int exponent, bool nearerBelow ) noexcept
{
   // log10( 2 ) and, where the next number below is nearer, log10( 3 / 4 ), as fractions of 2^22;
   // log2( 10 ) as one of 2^19. They give the floor for every exponent of a double.
   const int ten = ( exponent * 1'262'611 - ( nearerBelow ? 524'031 : 0 ) ) >> 22;
   const int shift = exponent + ( ( -ten * 1'741'647 ) >> 19 ) + 1;
   const Power & power = powers[ static_cast< std::size_t >( -ten - leastPower ) ];
   const std::uint64_t value = roundedToOdd( power, 4 * significand << shift );
   // An even number is what its bounds are rounded to; an odd one's are outside.
   const std::uint64_t outside = significand % 2;
   const std::uint64_t lower =
         roundedToOdd( power, ( 4 * significand - ( nearerBelow ? 1 : 2 ) ) << shift ) + outside;
   const std::uint64_t upper = roundedToOdd( power, ( 4 * significand + 2 ) << shift ) - outside;

   const std::uint64_t below = value / 4;
   if ( below >= 10 ) {
      const std::uint64_t tens = below / 10;
      const bool tensInside = lower <= 40 * tens;
      const bool nextTensInside = 40 * tens + 40 <= upper;
      if ( tensInside != nextTensInside ) {
         return { tens + ( nextTensInside ? 1 : 0 ), ten + 1 };
      }
   }
   const bool belowInside = lower <= 4 * below;
   const bool nextInside = 4 * below + 4 <= upper;
   if ( belowInside != nextInside ) {
      return { below + ( nextInside ? 1 : 0 ), ten };
   }
   const std::uint64_t middle = 4 * below + 2;
   const bool up = value > middle || ( value == middle && below % 2 == 1 );
   return { below + ( up ? 1 : 0 ), ten };
}

Decimal decimalOf( double number ) noexcept
{
   const auto bits = std::bit_cast< std::uint64_t >( number );
   const std::uint64_t fraction = bits & ( ( std::uint64_t{ 1 } << significandBits ) - 1 );
   const int biased = static_cast< int >( bits >> significandBits & 0x7ff );
   const std::uint64_t significand =
         biased != 0 ? fraction | std::uint64_t{ 1 } << significandBits : fraction;
   const int exponent = ( biased != 0 ? biased : 1 ) - 1023 - significandBits;
   if ( exponent <= 0 && -exponent <= significandBits &&
         significand % ( std::uint64_t{ 1 } << -exponent ) == 0 ) {
      return { significand >> -exponent, 0 }; // a whole number
   }
   return shortest( significand, exponent, fraction == 0 && biased > 1 );
}

// ---- Its text ---------------------------------------------------------------------------------

// Eight digits of a number below 10^8, the first in the lowest byte: it is halved three times, all
// parts at once. The products with 10486 / 2^20 and 103 / 2^10 are quotients by 100 and 10, of what
// is below 10^4 and 100.
constexpr std::uint64_t eightDigits( std::uint64_t number ) noexcept
{
   const std::uint64_t fours = number / 10'000 | number % 10'000 << 32;
   const std::uint64_t hundreds = ( fours * 10'486 >> 20 ) & 0x0000'007f'0000'007f;
   const std::uint64_t twos = hundreds | ( fours - hundreds * 100 ) << 16;
   const std::uint64_t tens = ( twos * 103 >> 10 ) & 0x000f'000f'000f'000f;
   return tens | ( twos - tens * 10 ) << 8;
}

// The digits of a number below 10^17, without zeros at either end; behind them stand at least as
// many zeros as it has.
class Digits {
 public:
   explicit Digits( std::uint64_t number ) noexcept
   {
      constexpr std::uint64_t eight = 100'000'000;
      const std::uint64_t high = number / eight % eight;
      const std::uint64_t first = number / eight / eight;
      const std::uint64_t front = eightDigits( high );
      const std::uint64_t back = eightDigits( number % eight );
      text_[ 0 ] = static_cast< char >( '0' + first );
      put( text_ + 1, front );
      put( text_ + 9, back );
      std::memset( text_ + all, '0', sizeof text_ - all );
      const auto zeros = []( int bits ) { return static_cast< std::size_t >( bits ) / 8; };
      start_ = first != 0 ? 0
            : front != 0  ? 1 + zeros( std::countr_zero( front ) )
                          : 9 + zeros( std::countr_zero( back ) );
      end_ = back != 0   ? all - zeros( std::countl_zero( back ) )
            : front != 0 ? 9 - zeros( std::countl_zero( front ) )
                         : 1;
   }

   const char * begin() const noexcept { return text_ + start_; }
   int count() const noexcept { return static_cast< int >( end_ - start_ ); }
   // How many zeros were left away at the end.
   int zeros() const noexcept { return static_cast< int >( all - end_ ); }

 private:
   static constexpr std::size_t all = 17;

   static void put( char * to, std::uint64_t digits ) noexcept
   {
      digits |= 0x3030'3030'3030'3030;
      if constexpr ( std::endian::native == std::endian::big ) {
         digits = __builtin_bswap64( digits );
      }
      std::memcpy( to, &digits, sizeof digits );
   }

   char text_[ 2 * all + 24 ];
   std::size_t start_;
   std::size_t end_;
};

// More than any part has, so that none is copied by its length.
constexpr std::size_t part = 24;

// d.ddde+dd
char * putScientific( char * to, const Digits & digits, int exponent ) noexcept
{
   const int more = digits.count() - 1;
   to[ 0 ] = *digits.begin();
   to[ 1 ] = '.';
   std::memcpy( to + 2, digits.begin() + 1, part );
   to += more != 0 ? 2 + more : 1;
   exponent += more;
   *to++ = 'e';
   *to++ = exponent < 0 ? '-' : '+';
   const auto size = static_cast< unsigned >( std::abs( exponent ) );
   if ( size >= 100 ) {
      *to++ = static_cast< char >( '0' + size / 100 );
   }
   *to++ = static_cast< char >( '0' + size / 10 % 10 );
   *to++ = static_cast< char >( '0' + size % 10 );
   return to;
}

// 0.00ddd, or ddd.ddd
char * putFixed( char * to, const Digits & digits, int exponent ) noexcept
{
   const int whole = digits.count() + exponent; // digits before the point
   if ( whole > 0 ) {
      std::memcpy( to, digits.begin(), part );
      std::memcpy( to + whole + 1, digits.begin() + whole, part );
      to[ whole ] = '.';
      return to + digits.count() + 1;
   }
   std::memset( to, '0', part );
   to[ 1 ] = '.';
   std::memcpy( to + 2 - whole, digits.begin(), part );
   return to + 2 - whole + digits.count();
}

} // namespace

char * putDouble( char * to, double number ) noexcept
{
   if ( !std::isfinite( number ) ) {
      return std::to_chars( to, to + doubleRoom, number ).ptr;
   }
   if ( std::signbit( number ) ) {
      *to++ = '-';
      number = -number;
   }
   if ( number == 0 ) {
      *to++ = '0';
      return to;
   }
   const Decimal decimal = decimalOf( number );
   const Digits digits( decimal.digits );
   const int exponent = decimal.exponent + digits.zeros();
   // Which form is shorter; where both are as long, the one without an exponent.
   const bool one = digits.count() == 1;
   if ( exponent > ( one ? 4 : 5 ) || -exponent > ( one ? 3 : digits.count() + 3 ) ) {
      return putScientific( to, digits, exponent );
   }
   if ( exponent < 0 ) {
      return putFixed( to, digits, exponent );
   }
   if ( number >= 0x1p53 ) { // all its digits, of which the shortest decimal lacks some
      return std::to_chars( to, to + doubleRoom, number, std::chars_format::fixed ).ptr;
   }
   std::memcpy( to, digits.begin(), part );
   return to + digits.count() + exponent;
}

} // namespace Vok::Detail
