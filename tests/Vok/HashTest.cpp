// The keyed hash and the checksum: pinned values, spread, and what each has to notice.
#include "Vok/detail/Hash.h"

#include "Vok/detail/Marks.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace Vok::Detail;
using TestSupport::Random;

constexpr HashSeed seed{ 0x0123456789abcdef, 0xfedcba9876543210 };

enum class Colour : std::uint8_t {
   red = 1,
   blue = 200
};

std::string textOf( std::size_t size )
{
   std::string text;
   for ( std::size_t i = 0; i < size; ++i ) {
      text += static_cast< char >( 'A' + i % 57 );
   }
   return text;
}

// The lengths on both sides of every branch.
const std::vector< std::size_t > sizes = { 0, 1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 31, 32, 33, 47,
   48, 49, 63, 64, 65, 80, 81, 127, 128, 129, 130, 192, 193, 1000 };

// A red line here asks: was the hash meant to change? No stored data depends on it.
TEST( HashTest, ValuesUnderAFixedSeed )
{
   EXPECT_EQ( KeyHash< std::uint32_t >::hash( 0, seed ), 0x0717b2b7ae671a2b );
   EXPECT_EQ( KeyHash< std::uint32_t >::hash( 1, seed ), 0x912a5e5667285b61 );
   EXPECT_EQ( KeyHash< std::uint64_t >::hash( ~std::uint64_t{ 0 }, seed ), 0x64b623befc04705a );
   EXPECT_EQ( KeyHash< double >::hash( 1.5, seed ), 0x53b53fa80f4400a6 );
   EXPECT_EQ( hashBytes( "", 0, seed ), 0x519e1059b39e7985 );
   const std::string text = textOf( 200 );
   EXPECT_EQ( hashBytes( text.data(), 3, seed ), 0xc3fe48a8bf7746a6 );
   EXPECT_EQ( hashBytes( text.data(), 7, seed ), 0x78d11976d8cd5c2c );
   EXPECT_EQ( hashBytes( text.data(), 16, seed ), 0xffbdb03ab0816125 );
   EXPECT_EQ( hashBytes( text.data(), 17, seed ), 0x19c694b233d45802 );
   EXPECT_EQ( hashBytes( text.data(), 200, seed ), 0x0996d44d8c844398 );
}

// These may never change: messages of other versions carry them.
TEST( ChecksumTest, Values )
{
   const std::string text = textOf( 200 );
   const auto sum = [ &text ]( std::size_t size ) {
      return checksum64( reinterpret_cast< const std::byte * >( text.data() ), size );
   };
   EXPECT_EQ( sum( 0 ), 0x8d3e65f14f972eec );
   EXPECT_EQ( sum( 1 ), 0xfaab2cbd82aaec72 );
   EXPECT_EQ( sum( 8 ), 0xb805353d337a62a7 );
   EXPECT_EQ( sum( 31 ), 0x2f0fb6bfc14cbc86 );
   EXPECT_EQ( sum( 32 ), 0x2847544eab5b6246 );
   EXPECT_EQ( sum( 200 ), 0xd4234828574b767a );
}

TEST( HashTest, BothWaysToMultiplyAgree )
{
   Random random( 3 );
   for ( int i = 0; i < 10000; ++i ) {
      const std::uint64_t x =
            random.oneIn( 4 ) ? ~std::uint64_t{ 0 } << random.below( 64 ) : random.word();
      const std::uint64_t y =
            random.oneIn( 4 ) ? ~std::uint64_t{ 0 } >> random.below( 64 ) : random.word();
      const Product product = multiply( x, y );
      const Product other = multiplyByHalves( x, y );
      EXPECT_EQ( product.low, x * y );
      EXPECT_EQ( product.low, other.low );
      EXPECT_EQ( product.high, other.high );
   }
   EXPECT_EQ( multiplyByHalves( ~std::uint64_t{ 0 }, ~std::uint64_t{ 0 } ).high,
         ~std::uint64_t{ 0 } - 1 );
}

TEST( HashTest, EqualKeysHaveEqualHashes )
{
   EXPECT_EQ(
         KeyHash< std::uint8_t >::hash( 200, seed ), KeyHash< std::uint64_t >::hash( 200, seed ) );
   EXPECT_EQ( KeyHash< Colour >::hash( Colour::blue, seed ),
         KeyHash< std::uint32_t >::hash( 200, seed ) );
   EXPECT_EQ( KeyHash< bool >::hash( true, seed ), KeyHash< std::uint8_t >::hash( 1, seed ) );
   EXPECT_EQ( KeyHash< double >::hash( -0.0, seed ), KeyHash< double >::hash( 0.0, seed ) );
   EXPECT_NE( KeyHash< double >::hash( 0.0, seed ),
         KeyHash< double >::hash( std::numeric_limits< double >::denorm_min(), seed ) );
   EXPECT_NE( KeyHash< double >::hash( 1.0, seed ), KeyHash< double >::hash( -1.0, seed ) );
   for ( const std::size_t size : sizes ) {
      const std::string text = textOf( size );
      const Corvo::String string( text );
      EXPECT_EQ( KeyHash< Corvo::String >::hash( string, seed ),
            KeyHash< std::string_view >::hash( text, seed ) );
   }
}

TEST( HashTest, DoesNotDependOnWhereTheBytesStand )
{
   alignas( 16 ) std::array< char, 1100 > memory{};
   for ( const std::size_t size : sizes ) {
      const std::string text = textOf( size );
      for ( std::size_t shift = 0; shift < 9; ++shift ) {
         std::memcpy( memory.data() + shift, text.data(), size );
         EXPECT_EQ( hashBytes( memory.data() + shift, size, seed ),
               hashBytes( text.data(), size, seed ) );
         EXPECT_EQ( checksum64( reinterpret_cast< std::byte * >( memory.data() + shift ), size ),
               checksum64( reinterpret_cast< const std::byte * >( text.data() ), size ) );
      }
   }
}

TEST( HashTest, LengthsAndSingleBitsMakeOtherHashes )
{
   for ( const char fill : { '\0', 'x', '\xff' } ) {
      std::set< std::uint64_t > hashes;
      for ( std::size_t size = 0; size < 300; ++size ) {
         const std::string text( size, fill );
         EXPECT_TRUE( hashes.insert( hashBytes( text.data(), size, seed ) ).second );
      }
   }
   for ( const std::size_t size : sizes ) {
      std::string text = textOf( size );
      std::set< std::uint64_t > hashes{ hashBytes( text.data(), size, seed ) };
      for ( std::size_t bit = 0; bit < 8 * size; ++bit ) {
         text[ bit / 8 ] = static_cast< char >( text[ bit / 8 ] ^ 1 << bit % 8 );
         EXPECT_TRUE( hashes.insert( hashBytes( text.data(), size, seed ) ).second );
         text[ bit / 8 ] = static_cast< char >( text[ bit / 8 ] ^ 1 << bit % 8 );
      }
   }
}

TEST( HashTest, EveryWordOfTheSeedMatters )
{
   const std::string text = textOf( 100 );
   for ( int bit = 0; bit < 64; ++bit ) {
      const std::uint64_t flip = std::uint64_t{ 1 } << bit;
      for ( const HashSeed other :
            { HashSeed{ seed.a ^ flip, seed.b }, HashSeed{ seed.a, seed.b ^ flip } } ) {
         EXPECT_NE( hashWord( 5, other ), hashWord( 5, seed ) );
         for ( const std::size_t size : { 0u, 5u, 12u, 30u, 64u, 100u } ) {
            EXPECT_NE(
                  hashBytes( text.data(), size, other ), hashBytes( text.data(), size, seed ) );
         }
      }
   }
}

// Flips each bit of random keys of `size` bytes and counts how often each bit of the hash follows:
// the greatest distance from one half.
template< class Hash > double worstBias( std::size_t size, Hash hash )
{
   const int rounds = 4000;
   std::vector< std::array< int, 64 > > flips( size * 8 );
   Random random( 11 );
   std::string key( size, '\0' );
   for ( int round = 0; round < rounds; ++round ) {
      std::generate(
            key.begin(), key.end(), [ & ] { return static_cast< char >( random.below( 256 ) ); } );
      const std::uint64_t before = hash( key );
      for ( std::size_t bit = 0; bit < flips.size(); ++bit ) {
         std::string other = key;
         other[ bit / 8 ] = static_cast< char >( other[ bit / 8 ] ^ 1 << bit % 8 );
         const std::uint64_t changed = before ^ hash( other );
         for ( std::size_t i = 0; i < 64; ++i ) {
            flips[ bit ][ i ] += static_cast< int >( changed >> i & 1 );
         }
      }
   }
   double worst = 0;
   for ( const auto & counts : flips ) {
      for ( const int count : counts ) {
         worst = std::max( worst, std::abs( double( count ) / rounds - 0.5 ) );
      }
   }
   return worst;
}

TEST( HashTest, EveryBitOfAKeyReachesEveryBitOfItsHash )
{
   // Chance alone strays about 0.04 in so many counts of 4000.
   const auto ofWord = []( const std::string & key ) {
      std::uint64_t word = 0;
      std::memcpy( &word, key.data(), key.size() );
      return hashWord( word, seed );
   };
   EXPECT_LT( worstBias( 4, ofWord ), 0.06 );
   EXPECT_LT( worstBias( 8, ofWord ), 0.06 );
   const auto ofBytes = []( const std::string & key ) {
      return hashBytes( key.data(), key.size(), seed );
   };
   for ( const std::size_t size : { 2u, 3u, 6u, 8u, 13u, 16u, 20u, 40u, 70u } ) {
      EXPECT_LT( worstBias( size, ofBytes ), 0.06 ) << size;
   }
}

TEST( HashTest, KeysInARowSpreadEvenly )
{
   // Strides as counters, addresses and shifted fields have them; the high bits choose the home.
   for ( const int shift : { 0, 4, 12, 24, 32, 48 } ) {
      std::array< int, 256 > high{};
      std::array< int, 256 > low{};
      const int count = 65536;
      for ( std::uint64_t i = 0; i < count; ++i ) {
         const std::uint64_t hash = hashWord( i << shift, seed );
         ++high[ hash >> 56 ];
         ++low[ hash & 255 ];
      }
      for ( const auto & cells : { high, low } ) {
         double chiSquare = 0;
         for ( const int cell : cells ) {
            chiSquare += ( cell - 256.0 ) * ( cell - 256.0 ) / 256;
         }
         EXPECT_LT( chiSquare, 400 ) << shift; // 255 expected, 400 once in 10^8
      }
   }
}

TEST( HashTest, TablesGetSeedsOfTheirOwn )
{
   pinHashSeed( seed );
   std::set< std::pair< std::uint64_t, std::uint64_t > > seeds;
   for ( int i = 0; i < 1000; ++i ) {
      const HashSeed table = tableSeed( 0 );
      EXPECT_TRUE( seeds.emplace( table.a, table.b ).second );
   }
   pinHashSeed( seed );
   const HashSeed plain = tableSeed( 0 );
   pinHashSeed( seed );
   const HashSeed mixed = tableSeed( 0xdeadbeef );
   EXPECT_EQ( plain.a ^ 0xdeadbeef, mixed.a );
   EXPECT_EQ( plain.b, mixed.b );
   EXPECT_TRUE( seeds.contains( { plain.a, plain.b } ) );
}

TEST( ChecksumTest, EveryBitAndEveryByteMatters )
{
   Random random( 99 );
   for ( const std::size_t size : sizes ) {
      std::vector< std::byte > bytes( size );
      for ( std::byte & byte : bytes ) {
         byte = static_cast< std::byte >( random.below( 256 ) );
      }
      const std::uint64_t sum = checksum64( bytes.data(), size );
      for ( std::byte & byte : bytes ) {
         const std::byte before = byte;
         for ( unsigned other = 1; other < 256; ++other ) {
            byte = before ^ static_cast< std::byte >( other );
            EXPECT_NE( checksum64( bytes.data(), size ), sum );
         }
         byte = before;
      }
   }
}

TEST( ChecksumTest, LengthsOrderAndPairsOfBitsMatter )
{
   std::vector< std::byte > bytes( 100 );
   std::set< std::uint64_t > sums;
   for ( std::size_t size = 0; size <= 100; ++size ) {
      EXPECT_TRUE( sums.insert( checksum64( bytes.data(), size ) ).second );
   }
   for ( std::size_t i = 0; i < 800; ++i ) {
      for ( std::size_t j = i + 1; j < 800; j += 7 ) {
         bytes[ i / 8 ] ^= std::byte{ 1 } << i % 8;
         bytes[ j / 8 ] ^= std::byte{ 1 } << j % 8;
         EXPECT_TRUE( sums.insert( checksum64( bytes.data(), 100 ) ).second );
         bytes[ i / 8 ] ^= std::byte{ 1 } << i % 8;
         bytes[ j / 8 ] ^= std::byte{ 1 } << j % 8;
      }
   }
   std::vector< std::byte > swapped( 64 );
   swapped[ 3 ] = std::byte{ 1 };
   const std::uint64_t before = checksum64( swapped.data(), 64 );
   std::swap( swapped[ 3 ], swapped[ 35 ] );
   EXPECT_NE( checksum64( swapped.data(), 64 ), before );
}

// However small the numbers and whatever the stride: no table is drawn a seed under which they
// crowd.
TEST( HashTest, KeysInARowSpreadEvenlyUnderAnySeed )
{
   Random random( 5 );
   for ( const std::uint64_t stride : { 1u, 2u, 3u, 10u, 256u, 1000u, 4096u, 65536u, 1u << 20 } ) {
      for ( int round = 0; round < 200; ++round ) {
         const HashSeed any{ random.word(), random.word() | 1 };
         std::array< int, 256 > high{};
         std::array< int, 256 > low{};
         for ( std::uint64_t i = 0; i < 2048; ++i ) {
            const std::uint64_t hash = hashWord( i * stride, any );
            ++high[ hash >> 56 ];
            ++low[ hash & 255 ];
         }
         // 8 are expected in each; 35 are there once in 10^8.
         EXPECT_LT( *std::max_element( high.begin(), high.end() ), 35 ) << stride;
         EXPECT_LT( *std::max_element( low.begin(), low.end() ), 35 ) << stride;
      }
   }
}

// Both forms of the comparison of marks against the plain meaning of each operation.
template< class Marks > class MarksSuite : public testing::Test {
 protected:
   static unsigned bitsOf( SlotSet set )
   {
      unsigned bits = 0;
      for ( ; set.any(); set.dropFirst() ) {
         bits |= 1u << set.first();
      }
      return bits;
   }

   template< class Test > static unsigned expected( Test test )
   {
      unsigned bits = 0;
      for ( unsigned i = 0; i < MarkGroup::slots; ++i ) {
         bits |= test( i ) ? 1u << i : 0;
      }
      return bits;
   }
};

using MarksTypes = testing::Types< PortableMarks, DefaultMarks >;
TYPED_TEST_SUITE( MarksSuite, MarksTypes );

TYPED_TEST( MarksSuite, ComparesThirteenMarks )
{
   Random random( 8 );
   MarkGroup group;
   std::array< std::uint8_t, MarkGroup::slots > plain{};
   for ( int round = 0; round < 20000; ++round ) {
      const std::size_t slot = random.below( MarkGroup::slots );
      const std::uint64_t one = random.oneIn( 4 ) ? std::uint64_t{ random.below( 4 ) } << 56
                                                  : random.word();
      plain[ slot ] = random.oneIn( 3 ) ? 0 : MarkGroup::markOf( one );
      TypeParam::set( group, slot, plain[ slot ] );
      if ( random.oneIn( 2 ) ) {
         group.goesPast( random.word() ); // no slot is to be taken from what is counted
      }
      const TypeParam marks( group );
      const auto empty = marks.empty();
      EXPECT_EQ( this->bitsOf( empty ),
            this->expected( [ & ]( unsigned i ) { return plain[ i ] == 0; } ) );
      EXPECT_EQ( this->bitsOf( empty.others() ),
            this->expected( [ & ]( unsigned i ) { return plain[ i ] != 0; } ) );
      EXPECT_EQ( this->bitsOf( empty.from( slot ) ),
            this->expected( [ & ]( unsigned i ) { return i >= slot && !plain[ i ]; } ) );
      for ( const std::uint64_t hash : { one, std::uint64_t{ 0 }, random.word() } ) {
         EXPECT_EQ( this->bitsOf( marks.like( hash ) ), this->expected( [ & ]( unsigned i ) {
            return plain[ i ] == MarkGroup::markOf( hash );
         } ) );
      }
   }
}

TEST( MarkGroupTest, CountsWhoWentPastUpToSeven )
{
   MarkGroup group;
   const auto hashOf = []( std::uint64_t value ) { return value << 56 | 0xabcdef; };
   for ( std::uint64_t value = 0; value < 8; ++value ) {
      EXPECT_FALSE( group.passed( hashOf( value ) ) );
      for ( std::uint64_t i = 0; i < value; ++i ) {
         group.goesPast( hashOf( value ) );
         EXPECT_TRUE( group.passed( hashOf( value ) ) );
      }
   }
   for ( std::uint64_t value = 0; value < 7; ++value ) {
      for ( std::uint64_t i = 0; i < value; ++i ) {
         EXPECT_TRUE( group.passed( hashOf( value ) ) );
         group.wentPast( hashOf( value ) );
      }
      EXPECT_FALSE( group.passed( hashOf( value ) ) );
   }
   for ( int i = 0; i < 20; ++i ) {
      group.wentPast( hashOf( 7 ) );
      EXPECT_TRUE( group.passed( hashOf( 7 ) ) ); // nobody knows how many more there were
   }
   for ( std::size_t slot = 0; slot < MarkGroup::slots; ++slot ) {
      EXPECT_EQ( group.bytes()[ slot ], 0 );
   }
}

} // namespace
