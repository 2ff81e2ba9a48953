// Attribute logs that are cut short, lie about their lengths, or carry what cannot be.
#include "Vok/NboAttrLog.h"
#include "tests/Vok/Bytes.h"
#include "tests/model/Everything.h"
#include "tests/support/HeapMeter.h"
#include "tests/support/Random.h"
#include "tests/support/SpareSlabs.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using TestSupport::bytesOf;
using Vok::NboAttrLog::Exception;
using Vok::NboAttrLog::In;
using Vok::NboAttrLog::Out;

In logOf( std::string_view bytes )
{
   return In( reinterpret_cast< const std::byte * >( bytes.data() ), bytes.size() );
}

// What reading a V of these bytes throws; E is its exact type.
template< class V, class E > std::string whyRefused( std::string_view digits )
{
   const std::string bytes = bytesOf( digits );
   In in = logOf( bytes );
   try {
      V v( &in );
   } catch ( const E & e ) {
      return typeid( e ) == typeid( E ) ? e.what() : "another exception";
   }
   return "taken";
}

template< class V > void expectPrefixesRefused( const V & value )
{
   Out out;
   out << value;
   ASSERT_GT( out.size(), 0U );
   for ( std::size_t size = 0; size != out.size(); ++size ) {
      // A copy of its own, so that a read beyond the end is one beyond an allocation.
      const std::vector< std::byte > prefix( out.data(), out.data() + size );
      In in( prefix.data(), prefix.size() );
      EXPECT_THROW( V{ &in }, Exception ) << typeid( V ).name() << " cut at " << size;
   }
}

::Test::Recipe recipe()
{
   ::Test::Recipe made( ::Test::Narrow( 300 ) );
   made.stepIs(
         1, ::Test::Pair( 1, "one", ::Test::green, ::Test::Level( 3 ), true, Vok::Seconds( 2 ) ) );
   made.stepIs( 2, ::Test::Pair() );
   return made;
}

::Test::Shelf shelf()
{
   ::Test::Shelf made;
   made.boxIs( "lid", 1 );
   made.boxIs( "a text that is too long to stand in place", 2 );
   made.tagsIs( 7 );
   return made;
}

TEST( NboAttrLogHostileTest, numbersLongerThanTheyNeedToBe )
{
   // More than 64 bits, or a last byte that adds nothing.
   for ( const std::string_view digits : { "8000", "ff00", "818000", "8080808080808080808000",
               "ffffffffffffffffff02", "ffffffffffffffffff8100", "80808080808080808000" } ) {
      const std::string bytes = bytesOf( digits );
      In in = logOf( bytes );
      try {
         in.getVarint();
         ADD_FAILURE() << digits << " is taken";
      } catch ( const Exception & e ) {
         EXPECT_STREQ(
               e.what(), "a number in an attribute log is longer than it needs to be" )
               << digits;
      }
   }
}

TEST( NboAttrLogHostileTest, everyPrefixOfEveryValueIsRefused )
{
   expectPrefixesRefused( ::Test::Level( 3 ) );
   expectPrefixesRefused( ::Test::Narrow( 300 ) );
   expectPrefixesRefused( ::Test::Lazy( 0 ) );
   expectPrefixesRefused( ::Test::Full( 9 ) );
   expectPrefixesRefused( ::Test::Interval( 1, 2 ) );
   expectPrefixesRefused( ::Test::Flags( 3 ) );
   expectPrefixesRefused( ::Test::Mode( ::Test::Mode::known ) );
   expectPrefixesRefused( ::Test::Label( "label" ) );
   expectPrefixesRefused(
         ::Test::Pair( 5, "text", ::Test::blue, ::Test::Level(), true, Vok::Seconds() ) );
   expectPrefixesRefused( ::Test::Plain() );
   expectPrefixesRefused( ::Test::Address( 1, 2 ) );
   expectPrefixesRefused( recipe() );
   expectPrefixesRefused( shelf() );
   expectPrefixesRefused( Vok::Seconds( 1 ) );
   expectPrefixesRefused( Corvo::Duration( 1 ) );
}

TEST( NboAttrLogHostileTest, readingPastTheEndSaysHowMuchWasWanted )
{
   EXPECT_EQ( ( whyRefused< ::Test::Level, Exception >( "000000" ) ),
         "the attribute log is cut short: 4 bytes wanted, 3 left" );
   const std::string bytes = bytesOf( "0102" );
   In in = logOf( bytes );
   EXPECT_THROW( in.get< std::uint32_t >(), Exception );
   EXPECT_EQ( in.remaining(), 2U );
   EXPECT_EQ( in.get< std::uint16_t >(), 0x0102 );
}

TEST( NboAttrLogHostileTest, aLengthBeyondTheInputAllocatesNothing )
{
   for ( const char * digits : { "00000005 61626364", "ffffffff 61", "80000000", "7fffffff 00" } ) {
      const std::string bytes = bytesOf( digits );
      In text = logOf( bytes );
      In label = logOf( bytes );
      std::size_t most = 0;
      int refused = 0;
      {
         const TestSupport::HeapMeter heap;
         try {
            text.getString();
         } catch ( const Exception & ) {
            ++refused;
         }
         try {
            ::Test::Label{ &label };
         } catch ( const Exception & ) {
            ++refused;
         }
         most = heap.peak();
      }
      EXPECT_EQ( refused, 2 );
      EXPECT_LT( most, 1024U ) << digits; // the exception and its message
   }
}

TEST( NboAttrLogHostileTest, aCountBeyondTheInputAllocatesNoMoreThanTheInput )
{
   for ( const char * digits :
         { "0100 ffffffff", "0100 ffffffff 00000001", "0100 10000000 0000" } ) {
      const std::string bytes = bytesOf( digits );
      In in = logOf( bytes );
      const TestSupport::HeapMeter heap;
      EXPECT_THROW( ::Test::Recipe{ &in }, Exception );
      EXPECT_LT( heap.peak(), 1024U ) << digits;
   }
   const std::string bytes = bytesOf( "ffffffff 00000000 00000000" );
   In in = logOf( bytes );
   TestSupport::makeSpareSlabs();
   const TestSupport::HeapMeter heap;
   EXPECT_THROW( ::Test::Shelf{ &in }, Exception );
   EXPECT_LT( heap.peak(), 2048U );
}

// What a batch carries is checked before any of it is kept.
TEST( NboAttrLogHostileTest, anOptionalThatHoldsACollectionIsCheckedWithoutBeingKept )
{
   using MaybeRecipe = Vok::Optional< ::Test::Recipe >;
   ::Test::Recipe recipe( ::Test::Narrow( 300 ) );
   for ( std::uint32_t i = 0; i != 5000; ++i ) {
      recipe.stepIs( i, ::Test::Pair() );
   }
   Vok::NboAttrLog::Out out;
   Vok::ValueType< MaybeRecipe >::encode( out, recipe );
   Vok::ValueType< MaybeRecipe >::encode( out, std::nullopt );
   In in( out.bytes() );
   const TestSupport::HeapMeter heap;
   Vok::Detail::checkLog< MaybeRecipe >( in );
   EXPECT_EQ( in.remaining(), 1U );
   Vok::Detail::checkLog< MaybeRecipe >( in );
   EXPECT_EQ( in.remaining(), 0U );
   EXPECT_LT( heap.peak(), 1024U );
}

TEST( NboAttrLogHostileTest, codesThatAreNone )
{
   EXPECT_EQ( ( whyRefused< ::Test::Mode, Exception >( "00000002" ) ),
         "Test::Mode::Kind has no enumerator with code 2" );
   EXPECT_EQ( ( whyRefused< ::Test::Plain, Exception >(
                    "00000003 0000000000000000 00 0000000000000000" ) ),
         "Test::Colour has no enumerator with code 3" );
}

TEST( NboAttrLogHostileTest, aCodeIsNarrowedAndThenChecked )
{
   const std::string taken = bytesOf( "00000107 0000000000000000 00 0000000000000000" );
   In in = logOf( taken );
   EXPECT_EQ( ::Test::Plain( &in ).colour(), ::Test::Colour::blue );
   EXPECT_EQ( ( whyRefused< ::Test::Plain, Exception >(
                    "ffffff05 0000000000000000 00 0000000000000000" ) ),
         "Test::Colour has no enumerator with code 5" );
}

TEST( NboAttrLogHostileTest, truthValuesThatAreNone )
{
   const std::string pair = "00000001 00000000 00000000 00000005";
   EXPECT_EQ( ( whyRefused< ::Test::Pair, Exception >( pair + "02 0000000000000000" ) ),
         "a truth value is 0 or 1 in an attribute log, not 2" );
   EXPECT_EQ( ( whyRefused< ::Test::Pair, Exception >( pair + "ff 0000000000000000" ) ),
         "a truth value is 0 or 1 in an attribute log, not 255" );
}

TEST( NboAttrLogHostileTest, boundsAreCheckedWithTheirMessages )
{
   using Corvo::RangeException;
   for ( const char * digits : { "00000000", "0000000b", "ffffffff" } ) {
      EXPECT_EQ( ( whyRefused< ::Test::Level, RangeException >( digits ) ),
            "Test::Level::value < Test::Level::low or > Test::Level::top not allowed" );
   }
   EXPECT_EQ( ( whyRefused< ::Test::Narrow, RangeException >( "00ff" ) ),
         "Test::Narrow::value < Test::Narrow::min or > Test::Narrow::max not allowed" );
   EXPECT_EQ( ( whyRefused< ::Test::Interval, RangeException >( "0000 0001" ) ),
         "Test::Interval::before < Test::Interval::least or > Test::Interval::most not allowed" );
   EXPECT_EQ( ( whyRefused< ::Test::Interval, RangeException >( "0001 012d" ) ),
         "Test::Interval::after < Test::Interval::least or > Test::Interval::most not allowed" );
   EXPECT_EQ(
         ( whyRefused< ::Test::Label, RangeException >( "00000015" + std::string( 42, '0' ) ) ),
         "Test::Label::bytes > maxLength() not allowed" );
   EXPECT_EQ( ( whyRefused< ::Test::Pair, RangeException >(
                    "00000001 00000000 00000000 00000000 00 0000000000000000" ) ),
         "Test::Level::value < Test::Level::low or > Test::Level::top not allowed" );
   EXPECT_EQ( ( whyRefused< ::Test::Recipe, RangeException >( "0000 00000000" ) ),
         "Test::Narrow::value < Test::Narrow::min or > Test::Narrow::max not allowed" );
}

TEST( NboAttrLogHostileTest, membersOutOfOrderOrTwice )
{
   const std::string why = "the members of a collection are not in ascending order";
   EXPECT_EQ( ( whyRefused< ::Test::Shelf, Exception >( "00000000 00000002 0002 0001" ) ), why );
   EXPECT_EQ( ( whyRefused< ::Test::Shelf, Exception >( "00000000 00000002 0001 0001" ) ), why );
   EXPECT_EQ( ( whyRefused< ::Test::Shelf, Exception >(
                    "00000002 00000001 62 00000001 00000001 61 00000001 00000000" ) ),
         why );
}

// Whatever bytes there are: a value is made or one of two exceptions is thrown.
template< class V > int taken( std::uint64_t seed )
{
   TestSupport::Random random( seed );
   int made = 0;
   for ( int round = 0; round != 2000; ++round ) {
      std::vector< std::byte > bytes( random.below( 64 ) );
      for ( std::byte & byte : bytes ) {
         byte = static_cast< std::byte >(
               random.oneIn( 3 ) ? random.below( 256 ) : random.below( 3 ) );
      }
      In in( bytes.data(), bytes.size() );
      try {
         const V v( &in );
         Out out;
         out << v;
         EXPECT_EQ( out.size(), attrLogSize( v ) );
         EXPECT_LE( out.size(), bytes.size() );
         ++made;
      } catch ( const Exception & ) {
      } catch ( const Corvo::RangeException & ) {
      }
   }
   return made;
}

TEST( NboAttrLogHostileTest, randomBytes )
{
   EXPECT_GT( taken< ::Test::Plain >( 1 ), 0 );
   EXPECT_GT( taken< ::Test::Flags >( 2 ), 0 );
   taken< ::Test::Pair >( 3 );
   taken< ::Test::Recipe >( 4 );
   taken< ::Test::Shelf >( 5 );
   taken< ::Test::Label >( 6 );
   taken< ::Test::Address >( 7 );
}

} // namespace
