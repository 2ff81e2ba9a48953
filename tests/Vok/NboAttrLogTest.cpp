// The attribute log, byte by byte: what values look like in it.
#include "Vok/NboAttrLog.h"
#include "tests/Vok/Bytes.h"
#include "tests/model/Everything.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

namespace {

using TestSupport::bytesOf;
using TestSupport::hex;
using Vok::NboAttrLog::In;
using Vok::NboAttrLog::Out;

TEST( NboAttrLogTest, numbersAtTheirWidthMostSignificantByteFirst )
{
   Out out;
   out.put( std::uint8_t{ 0x01 } );
   out.put( std::uint16_t{ 0x0203 } );
   out.put( std::uint32_t{ 0x04050607 } );
   out.put( std::uint64_t{ 0x08090a0b0c0d0e0f } );
   EXPECT_EQ( hex( out ), "01 0203 04050607 08090a0b0c0d0e0f" );
   In in( out.data(), out.size() );
   EXPECT_EQ( in.remaining(), 15U );
   EXPECT_EQ( in.get< std::uint8_t >(), 0x01 );
   EXPECT_EQ( in.get< std::uint16_t >(), 0x0203 );
   EXPECT_EQ( in.remaining(), 12U );
   EXPECT_EQ( in.get< std::uint32_t >(), 0x04050607U );
   EXPECT_EQ( in.get< std::uint64_t >(), 0x08090a0b0c0d0e0fU );
   EXPECT_EQ( in.remaining(), 0U );
}

TEST( NboAttrLogTest, numbersOfAnyWidthInSevenBitsAByte )
{
   struct Row {
      std::uint64_t number;
      std::string_view bytes;
   };
   for ( const Row & row : { Row{ 0, "00" }, Row{ 1, "01" }, Row{ 127, "7f" },
               Row{ 128, "8001" }, Row{ 16383, "ff7f" }, Row{ 16384, "808001" },
               Row{ 0x7fffffffffffffff, "ffffffffffffffff7f" },
               Row{ 0x8000000000000000, "80808080808080808001" },
               Row{ 0xffffffffffffffff, "ffffffffffffffffff01" } } ) {
      Out out;
      out.putVarint( row.number );
      EXPECT_EQ( hex( out ), row.bytes ) << row.number;
      In in( out.data(), out.size() );
      EXPECT_EQ( in.getVarint(), row.number );
      EXPECT_EQ( in.remaining(), 0U ) << row.number;
   }
}

TEST( NboAttrLogTest, truthValuesAndDoubles )
{
   Out out;
   out.putBool( false );
   out.putBool( true );
   out.putDouble( 1.5 );
   out.putDouble( -std::numeric_limits< double >::infinity() );
   EXPECT_EQ( hex( out ), "00 01 3ff8000000000000 fff0000000000000" );
   In in( out.data(), out.size() );
   EXPECT_FALSE( in.getBool() );
   EXPECT_TRUE( in.getBool() );
   EXPECT_EQ( in.getDouble(), 1.5 );
   EXPECT_EQ( in.getDouble(), -std::numeric_limits< double >::infinity() );
}

TEST( NboAttrLogTest, textsBehindTheirLength )
{
   Out out;
   out.putString( "" );
   out.putString( std::string_view( "a\0\xff", 3 ) );
   EXPECT_EQ( hex( out ), "00000000 00000003 6100ff" );
   In in( out.data(), out.size() );
   EXPECT_EQ( in.getString(), "" );
   EXPECT_EQ( in.getText(), std::string_view( "a\0\xff", 3 ) );
   EXPECT_EQ( in.remaining(), 0U );
}

TEST( NboAttrLogTest, anEmptyLog )
{
   Out out;
   EXPECT_EQ( out.size(), 0U );
   In in( out.data(), out.size() );
   EXPECT_EQ( in.remaining(), 0U );
   EXPECT_THROW( in.get< std::uint8_t >(), Vok::NboAttrLog::Exception );
}

TEST( NboAttrLogTest, appendsAndIsCleared )
{
   Out out;
   std::string all;
   for ( unsigned i = 0; i != 1000; ++i ) {
      out << ::Test::Level( 1 + i % 10 );
      EXPECT_EQ( out.size(), 4 * ( i + 1 ) );
   }
   In in( out.data(), out.size() );
   for ( unsigned i = 0; i != 1000; ++i ) {
      ASSERT_EQ( ::Test::Level( &in ).value(), 1 + i % 10 );
   }
   out.clear();
   EXPECT_EQ( out.size(), 0U );
   out << ::Test::Level( 9 );
   EXPECT_EQ( hex( out ), "00000009" );
}

TEST( NboAttrLogTest, isMovedAndNotCopied )
{
   static_assert( !std::is_copy_constructible_v< Out > );
   Out out;
   out.put( std::uint8_t{ 7 } );
   Out moved( std::move( out ) );
   EXPECT_EQ( hex( moved ), "07" );
   EXPECT_EQ( out.size(), 0U ); // NOLINT(bugprone-use-after-move)
   out.put( std::uint8_t{ 8 } );
   moved = std::move( out );
   EXPECT_EQ( hex( moved ), "08" );
}

// ---- Values -----------------------------------------------------------------------------------

// The value's bytes, its size in the log, and the value that they are read as.
template< class V > void expectBytes( const V & value, std::string_view expected )
{
   Out out;
   out << value;
   EXPECT_EQ( hex( out ), expected );
   EXPECT_EQ( attrLogSize( value ), out.size() );
   In in( out.data(), out.size() );
   EXPECT_TRUE( V( &in ) == value ) << expected;
   EXPECT_EQ( in.remaining(), 0U );
}

TEST( NboAttrLogValueTest, fieldsInDeclaredOrderAtTheirWidth )
{
   expectBytes( ::Test::Level( 10 ), "0000000a" );
   expectBytes( ::Test::Narrow( 258 ), "0102" ); // the width of the field, not of its argument
   expectBytes( ::Test::Full( 65535 ), "ffff" );
   expectBytes( ::Test::Lazy( 5 ), "00000005" );
   expectBytes( ::Test::Interval( 1, 300 ), "0001012c" );
   expectBytes( ::Test::Label( "ab" ), "000000026162" );
   expectBytes( ::Test::Label(), "00000000" );
}

TEST( NboAttrLogValueTest, anEnumerationIs32BitsAndABitSetItsWord )
{
   expectBytes( ::Test::Mode( ::Test::Mode::known ), "00000001" );
   expectBytes( ::Test::Flags( 0x81 ), "81" );
}

TEST( NboAttrLogValueTest, severalFields )
{
   expectBytes(
         ::Test::Pair( 1, "ab", ::Test::blue, ::Test::Level( 2 ), true, Vok::Seconds( 1.5 ) ),
         "00000001 00000002 6162 00000007 00000002 01 3ff8000000000000" );
   expectBytes( ::Test::Plain( ::Test::green, 0x0102030405060708, 9, 0.5 ),
         "00000001 0102030405060708 09 3fe0000000000000" );
   EXPECT_EQ( attrLogSize( ::Test::Pair() ), 4U + 4 + 4 + 4 + 1 + 8 );
}

TEST( NboAttrLogValueTest, aLogWrittenByHand )
{
   expectBytes( ::Test::Address( 1, 2 ), "00020001" );
}

TEST( NboAttrLogValueTest, timesAreTheirSeconds )
{
   expectBytes( Vok::Seconds( 1.5 ), "3ff8000000000000" );
   expectBytes( Vok::Seconds(), "0000000000000000" );
   expectBytes( Vok::Seconds( -0.0 ), "0000000000000000" );
   expectBytes( Corvo::Duration( -2 ), "c000000000000000" );
   expectBytes( Corvo::Duration::infinity(), "7ff0000000000000" );
   expectBytes( Vok::Seconds( -std::numeric_limits< double >::quiet_NaN() ), "7ff8000000000000" );
}

TEST( NboAttrLogValueTest, doublesThatAreEqualHaveOneForm )
{
   expectBytes( ::Test::Plain( ::Test::red, 0, 0, -0.0 ),
         "00000000 0000000000000000 00 0000000000000000" );
   const std::string nan = bytesOf( "00000000 0000000000000000 00 fff8000000000001" );
   In in( reinterpret_cast< const std::byte * >( nan.data() ), nan.size() );
   expectBytes( ::Test::Plain( &in ), "00000000 0000000000000000 00 7ff8000000000000" );
}

TEST( NboAttrLogValueTest, collectionsAreCountedAndInTheOrderOfTheirKeys )
{
   ::Test::Recipe recipe( ::Test::Narrow( 256 ) );
   expectBytes( recipe, "0100 00000000" );
   recipe.stepIs( 0x0201, ::Test::Pair() );
   recipe.stepIs( 0x0102, ::Test::Pair() );
   const std::string pair = "00000000 00000000 00000000 00000005 00 0000000000000000";
   expectBytes( recipe, "0100 00000002 00000102 " + pair + " 00000201 " + pair );
   ::Test::Shelf shelf;
   expectBytes( shelf, "00000000 00000000" );
   shelf.tagsIs( 0x0201 );
   shelf.tagsIs( 0x0102 );
   shelf.tagsIs( 0x0003 );
   shelf.boxIs( "b", 1 );
   shelf.boxIs( "a", 2 );
   expectBytes(
         shelf, "00000002 00000001 61 00000002 00000001 62 00000001 00000003 0003 0102 0201" );
}

} // namespace
