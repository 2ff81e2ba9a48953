// Corvo::String: any text in, the same text out, on both sides of every change of representation.
#include "Vok/String.h"

#include "tests/support/HeapMeter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <type_traits>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

using Corvo::String;
using namespace std::string_literals;
using namespace std::string_view_literals;

// A text of a given length in which every byte tells its place.
std::string textOf( std::size_t size )
{
   std::string text;
   for ( std::size_t i = 0; i < size; ++i ) {
      text += static_cast< char >( 'a' + ( i * 7 + i / 26 ) % 26 );
   }
   return text;
}

// Around the longest text in place, the widths of the word-wise loops, and a few long ones.
const std::vector< std::size_t > sizes = { 0, 1, 2, 3, 4, 5, 7, 8, 9, 11, 12, 13, 14, 15, 16, 17,
   18, 23, 24, 31, 32, 33, 63, 64, 65, 255, 256, 1000, 70000 };

TEST( StringTest, TheDefaultIsTheEmptyText )
{
   const String text;
   EXPECT_TRUE( text.empty() );
   EXPECT_EQ( text.size(), 0u );
   EXPECT_STREQ( text.c_str(), "" );
   EXPECT_EQ( text, String( "" ) );
   EXPECT_EQ( text, "" );
   EXPECT_TRUE( String( std::string_view() ).empty() );
   static constinit String constant;
   EXPECT_TRUE( constant.empty() );
}

TEST( StringTest, HoldsEveryLength )
{
   for ( const std::size_t size : sizes ) {
      const std::string expected = textOf( size );
      const String text( expected );
      EXPECT_EQ( text.size(), size );
      EXPECT_EQ( text.empty(), size == 0 );
      EXPECT_EQ( text.view(), expected );
      EXPECT_EQ( std::string( text ), expected );
      EXPECT_EQ( text.data(), text.c_str() );
      EXPECT_EQ( text.c_str()[ size ], '\0' );
      EXPECT_EQ( std::string_view( text ).size(), size );
   }
}

TEST( StringTest, HoldsAnyBytes )
{
   for ( const std::size_t size : sizes ) {
      EXPECT_EQ( String( std::string( size, '\0' ) ).view(), std::string( size, '\0' ) );
      EXPECT_EQ( String( std::string( size, '\xff' ) ).view(), std::string( size, '\xff' ) );
   }
   EXPECT_EQ( String( "a\0b"sv ).size(), 3u );
   EXPECT_NE( String( "a\0b"sv ), String( "a" ) );
   EXPECT_NE( String( "a\0"sv ), String( "a" ) );
   EXPECT_EQ( String( "a\0b" ), "a" );
}

TEST( StringTest, IsMadeImplicitlyFromTexts )
{
   const auto sizeOf = []( const String & text ) { return text.size(); };
   EXPECT_EQ( sizeOf( "literal" ), 7u );
   EXPECT_EQ( sizeOf( "view"sv ), 4u );
   EXPECT_EQ( sizeOf( "string"s ), 6u );
   EXPECT_TRUE( (std::is_convertible_v< String, std::string_view >));
   EXPECT_FALSE( (std::is_convertible_v< String, std::string >));
   EXPECT_TRUE( (std::is_constructible_v< std::string, String >));
   EXPECT_FALSE( (std::is_constructible_v< String, std::nullptr_t >));
   EXPECT_FALSE( (std::is_constructible_v< String, char >));
   EXPECT_FALSE( (std::is_constructible_v< String, int >));
}

TEST( StringTest, IsSmallAndNeverThrowsWhenCopied )
{
   EXPECT_EQ( sizeof( String ), 16u );
   EXPECT_TRUE( std::is_nothrow_copy_constructible_v< String > );
   EXPECT_TRUE( std::is_nothrow_copy_assignable_v< String > );
   EXPECT_TRUE( std::is_nothrow_move_constructible_v< String > );
   EXPECT_TRUE( std::is_nothrow_move_assignable_v< String > );
   EXPECT_TRUE( std::is_nothrow_default_constructible_v< String > );
}

TEST( StringTest, CopiesShareLongTextsAndShortOnesAllocateNothing )
{
   const TestSupport::HeapMeter heap;
   {
      const String brief( "fifteen letters" );
      const String copy( brief );
      EXPECT_NE( copy.data(), brief.data() );
      EXPECT_EQ( heap.peak(), 0u );
      String kept;
      {
         const String longer( "sixteen letters!" );
         const std::size_t one = heap.held();
         EXPECT_GT( one, 0u );
         const String another( longer );
         kept = another;
         EXPECT_EQ( kept.data(), longer.data() );
         EXPECT_EQ( heap.held(), one );
      }
      EXPECT_EQ( kept, "sixteen letters!" );
   }
   EXPECT_EQ( heap.held(), 0u );
}

TEST( StringTest, MovesLeaveTheEmptyText )
{
   for ( const std::size_t size : sizes ) {
      String from( textOf( size ) );
      String to( std::move( from ) );
      EXPECT_EQ( to, textOf( size ) );
      EXPECT_TRUE( from.empty() ); // NOLINT(bugprone-use-after-move)
      String assigned( "something long that stood here before" );
      assigned = std::move( to );
      EXPECT_EQ( assigned, textOf( size ) );
      EXPECT_TRUE( to.empty() ); // NOLINT(bugprone-use-after-move)
      from = assigned;
      EXPECT_EQ( from, assigned );
   }
}

TEST( StringTest, MayBeAssignedFromItselfAndItsOwnParts )
{
   for ( const std::size_t size : { 15u, 30u, 60u } ) {
      String text( textOf( size ) );
      const String & itself = text;
      text = itself;
      EXPECT_EQ( text, textOf( size ) );
      text = text.view().substr( 5 );
      EXPECT_EQ( text, textOf( size ).substr( 5 ) );
      text = text.c_str() + 3;
      EXPECT_EQ( text, textOf( size ).substr( 8 ) );
      String & same = text;
      text = std::move( same );
      EXPECT_EQ( text, textOf( size ).substr( 8 ) );
   }
}

TEST( StringTest, Swaps )
{
   String brief( "brief" );
   String longer( textOf( 100 ) );
   swap( brief, longer );
   EXPECT_EQ( brief, textOf( 100 ) );
   EXPECT_EQ( longer, "brief" );
}

TEST( StringTest, ComparesEveryByteOfEveryLength )
{
   for ( const std::size_t size : { 0u, 1u, 2u, 3u, 4u, 5u, 7u, 8u, 9u, 12u, 14u, 15u, 16u, 17u,
               24u, 31u, 33u, 64u, 65u } ) {
      const std::string base = textOf( size );
      const String text( base );
      const String equal{ std::string( base ) };
      EXPECT_TRUE( text == equal && !( text != equal ) && !( text < equal ) );
      EXPECT_TRUE( text == base && text == std::string_view( base ) && text == base.c_str() );
      for ( std::size_t i = 0; i < size; ++i ) {
         std::string other = base;
         other[ i ] = static_cast< char >( other[ i ] + 1 );
         EXPECT_FALSE( text == String( other ) );
         EXPECT_FALSE( text == other );
         EXPECT_TRUE( text != other.c_str() );
         EXPECT_TRUE( text < String( other ) );
         EXPECT_TRUE( text < other );
         EXPECT_TRUE( String( other ) > text );
      }
      EXPECT_FALSE( text == base + "x" );
      EXPECT_TRUE( text < base + "x" );
      EXPECT_TRUE( text < String( base + '\0' ) );
      EXPECT_NE( text, String( base + '\0' ) );
   }
}

TEST( StringTest, ComparesWithTextsOnEitherSideWithoutMakingAString )
{
   const String text( "a text that is not held in place" );
   const std::string string( text );
   const std::string_view view = text;
   const char * const pointer = text.c_str();
   const TestSupport::HeapMeter heap;
   EXPECT_TRUE( text == string && string == text && text == view && view == text );
   EXPECT_TRUE( text == pointer && pointer == text );
   EXPECT_TRUE( text == "a text that is not held in place" );
   EXPECT_TRUE( "a text that is not held in place" == text );
   EXPECT_TRUE(
         text != "other" && "other" != text && "b" > text && text < "b" && !( "b"s < text ) );
   EXPECT_TRUE( text <= view && view <= text && text >= string && "0"sv < text );
   EXPECT_EQ( heap.peak(), 0u );
}

TEST( StringTest, OrdersBytesAsUnsigned )
{
   EXPECT_LT( String( "a" ), String( "\x80" ) );
   EXPECT_LT( String( "\x7f" ), String( "\xff" ) );
   EXPECT_LT( String( "" ), String( "\0"sv ) );
   EXPECT_LT( String( "ab" ), String( "abc" ) );
   EXPECT_LT( String( "abc" ), "b" );
   std::vector< String > texts = { "pear", "", "\xffz", "apple",
      "a text of more than fifteen letters", "a text of more than fifteen lettert", "A" };
   std::sort( texts.begin(), texts.end() );
   const std::vector< String > sorted = { "", "A", "a text of more than fifteen letters",
      "a text of more than fifteen lettert", "apple", "pear", "\xffz" };
   EXPECT_EQ( texts, sorted );
}

TEST( StringTest, OrdersWhereverTextsDiffer )
{
   constexpr std::pair< char, char > pairs[] = { { '\0', '\1' }, { '\x7f', '\x80' },
      { 'a', '\xff' }, { '\1', '\x80' } };
   for ( std::size_t size = 1; size != 20; ++size ) {
      for ( std::size_t at = 0; at != size; ++at ) {
         for ( const auto & [ less, more ] : pairs ) {
            std::string low( size, 'm' );
            std::string high( size, 'm' );
            low[ at ] = less;
            high[ at ] = more;
            // What follows must not decide.
            std::fill( low.begin() + static_cast< std::ptrdiff_t >( at ) + 1, low.end(), '\xff' );
            const String text( low );
            ASSERT_TRUE( text < String( high ) && String( high ) > text ) << size << ' ' << at;
            ASSERT_TRUE( text < high && high > text ) << size << ' ' << at;
            ASSERT_TRUE( text > low.substr( 0, size - 1 ) && !( text < low ) ) << size << ' ' << at;
         }
      }
   }
}

TEST( StringTest, HashesAsItsView )
{
   for ( const std::size_t size : sizes ) {
      const std::string text = textOf( size );
      EXPECT_EQ( std::hash< String >()( String( text ) ), std::hash< std::string_view >()( text ) );
   }
   std::unordered_set< String, std::hash< String >, std::equal_to<> > names{ "one", "two" };
   EXPECT_TRUE( names.contains( "one"sv ) );
   EXPECT_TRUE( names.contains( "two" ) );
   EXPECT_FALSE( names.contains( "three"s ) );
   std::map< String, int, std::less<> > ordered{ { "b", 1 }, { "a", 2 } };
   EXPECT_EQ( ordered.find( "a"sv )->second, 2 );
}

TEST( StringTest, IsWrittenToStreams )
{
   std::ostringstream out;
   out << String( "with\0nul"sv ) << '|';
   out.width( 8 );
   out << String( "right" );
   EXPECT_EQ( out.str(), "with\0nul|   right"sv );
}

TEST( StringTest, RefusesWhatIsTooLong )
{
   EXPECT_EQ( String::maxSize(), ( std::size_t{ 1 } << 48 ) - 1 );
   EXPECT_THROW( String( std::string_view( "x", String::maxSize() + 1 ) ), std::length_error );
}

TEST( StringTest, ThreadsMayShareCopies )
{
   const String text( textOf( 1000 ) );
   std::vector< std::thread > threads;
   for ( int i = 0; i < 4; ++i ) {
      threads.emplace_back( [ &text ] {
         std::vector< String > copies;
         for ( int round = 0; round < 2000; ++round ) {
            copies.push_back( text );
            String moved( std::move( copies[ static_cast< std::size_t >( round ) / 2 ] ) );
            copies.push_back( moved );
         }
      } );
   }
   for ( std::thread & thread : threads ) {
      thread.join();
   }
   EXPECT_EQ( text, textOf( 1000 ) );
}

} // namespace
