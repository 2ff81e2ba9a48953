// The framing of a byte stream: every cut of a stream gives the same frames, and what is not a
// frame is refused early, cheaply and for good.
#include "store/Framing.h"

#include "tests/support/HeapMeter.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Vok::Store::FrameReader;
using Vok::Store::FrameWriter;
using Vok::Store::FramingException;

using Bytes = std::vector< std::byte >;
using Piece = std::span< const std::byte >;

Bytes bytes( std::string_view text )
{
   const Piece view = std::as_bytes( std::span( text ) );
   return { view.begin(), view.end() };
}

Bytes framed( const std::vector< Bytes > & payloads )
{
   Bytes stream;
   for ( const Bytes & payload : payloads ) {
      FrameWriter().append( payload, stream );
   }
   return stream;
}

// All that the reader makes of one piece.
std::vector< Bytes > fed( FrameReader & reader, Piece piece )
{
   std::vector< Bytes > frames;
   while ( auto frame = reader.feed( piece ) ) {
      frames.push_back( *frame );
   }
   EXPECT_TRUE( piece.empty() );
   return frames;
}

void append( std::vector< Bytes > & to, const std::vector< Bytes > & more )
{
   to.insert( to.end(), more.begin(), more.end() );
}

// The text of the FramingException that the reader throws for this stream, which it must.
std::string refusal( FrameReader & reader, Piece piece )
{
   try {
      while ( reader.feed( piece ) ) {
      }
   } catch ( const FramingException & error ) {
      return error.what();
   }
   return "not refused";
}

std::string endRefusal( FrameReader & reader )
{
   try {
      reader.end();
   } catch ( const FramingException & error ) {
      return error.what();
   }
   return "not refused";
}

const std::vector< Bytes > threeFrames = { bytes( "first" ), {}, bytes( "the third frame" ) };

TEST( FrameWriterTest, BytesOfAFrame )
{
   const Bytes expected = bytes( std::string_view( "Vok1\0\0\0\5hello", 13 ) );
   EXPECT_EQ( framed( { bytes( "hello" ) } ), expected );
}

TEST( FrameWriterTest, LengthIsMostSignificantByteFirst )
{
   const auto header = FrameWriter( 0x01020304 ).header( 0x01020304 );
   const Bytes expected = bytes( "Vok1\1\2\3\4" );
   EXPECT_EQ( Bytes( header.begin(), header.end() ), expected );
}

TEST( FrameWriterTest, LimitIsTheLongestPayload )
{
   const FrameWriter writer( 5 );
   Bytes out = bytes( "before" );
   EXPECT_THROW( writer.append( bytes( "longer" ), out ), FramingException );
   EXPECT_EQ( out, bytes( "before" ) );
   writer.append( bytes( "fives" ), out );
   EXPECT_EQ( out.size(), 6 + 8 + 5U );
   EXPECT_THROW( writer.header( 6 ), FramingException );
}

TEST( FrameWriterTest, NeverLongerThanTheLengthCanSay )
{
   const FrameWriter writer( ~std::size_t{ 0 } );
   EXPECT_NO_THROW( writer.header( 0xFFFFFFFF ) );
   EXPECT_THROW( writer.header( 0x100000000 ), FramingException );
}

TEST( FrameWriterTest, PayloadMayLieInTheOutput )
{
   Bytes out = bytes( "self" );
   FrameWriter().append( out, out );
   EXPECT_EQ( out, bytes( std::string_view( "selfVok1\0\0\0\4self", 16 ) ) );
}

TEST( FrameReaderTest, EveryCutIntoTwo )
{
   const Bytes stream = framed( threeFrames );
   for ( std::size_t cut = 0; cut <= stream.size(); ++cut ) {
      FrameReader reader;
      auto frames = fed( reader, Piece( stream ).first( cut ) );
      append( frames, fed( reader, Piece( stream ).subspan( cut ) ) );
      EXPECT_EQ( frames, threeFrames ) << "cut at " << cut;
      EXPECT_NO_THROW( reader.end() );
   }
}

TEST( FrameReaderTest, EveryCutIntoThree )
{
   const Bytes stream = framed( threeFrames );
   for ( std::size_t second = 0; second <= stream.size(); ++second ) {
      for ( std::size_t first = 0; first <= second; ++first ) {
         FrameReader reader;
         auto frames = fed( reader, Piece( stream ).first( first ) );
         append( frames, fed( reader, Piece( stream ).subspan( first, second - first ) ) );
         append( frames, fed( reader, Piece( stream ).subspan( second ) ) );
         ASSERT_EQ( frames, threeFrames ) << "cut at " << first << " and " << second;
      }
   }
}

TEST( FrameReaderTest, ByteByByte )
{
   const Bytes stream = framed( threeFrames );
   FrameReader reader;
   std::vector< Bytes > frames;
   for ( const std::byte & byte : stream ) {
      append( frames, fed( reader, Piece( &byte, 1 ) ) );
   }
   EXPECT_EQ( frames, threeFrames );
}

TEST( FrameReaderTest, StopsAfterTheFirstFrameOfAPiece )
{
   const Bytes stream = framed( { bytes( "a" ), bytes( "b" ) } );
   FrameReader reader;
   Piece piece = stream;
   EXPECT_EQ( reader.feed( piece ), bytes( "a" ) );
   EXPECT_EQ( piece.size(), 9U );
   EXPECT_EQ( reader.feed( piece ), bytes( "b" ) );
   EXPECT_TRUE( piece.empty() );
}

TEST( FrameReaderTest, EmptyFramesAreFrames )
{
   const std::vector< Bytes > empties( 3 );
   FrameReader reader( 0 );
   EXPECT_EQ( fed( reader, framed( empties ) ), empties );
}

TEST( FrameReaderTest, LimitIsTheLongestPayload )
{
   FrameReader exact( 5 );
   EXPECT_EQ( fed( exact, framed( { bytes( "fives" ) } ) ).size(), 1U );
   FrameReader over( 5 );
   EXPECT_EQ( refusal( over, framed( { bytes( "sixths" ) } ) ),
         "frame of 6 bytes, the limit is 5" );
}

TEST( FrameReaderTest, DefaultLimitIs64MiB )
{
   FrameReader exact;
   EXPECT_TRUE( fed( exact, bytes( std::string_view( "Vok1\4\0\0\0", 8 ) ) ).empty() );
   FrameReader over;
   EXPECT_EQ( refusal( over, bytes( std::string_view( "Vok1\4\0\0\1", 8 ) ) ),
         "frame of 67108865 bytes, the limit is 67108864" );
}

TEST( FrameReaderTest, TooLongIsRefusedBeforeItsFirstByte )
{
   FrameReader reader( 1000 );
   const Bytes header = bytes( "Vok1\xFF\xFF\xFF\xFF" );
   EXPECT_EQ( refusal( reader, header ), "frame of 4294967295 bytes, the limit is 1000" );
}

TEST( FrameReaderTest, MemoryGrowsOnlyWithWhatArrives )
{
   FrameReader reader;
   const TestSupport::HeapMeter meter;
   EXPECT_FALSE( fed( reader, bytes( std::string_view( "Vok1\4\0\0\0", 8 ) ) ).size() );
   EXPECT_LT( meter.peak(), 1000U );

   // What the allocator rounds up to, two buffers at a time.
   constexpr std::size_t slack = 10000;
   const Bytes kilobyte( 1024 );
   for ( std::size_t arrived = 1024; arrived <= 300 * 1024; arrived += 1024 ) {
      Piece piece = kilobyte;
      ASSERT_FALSE( reader.feed( piece ) );
      ASSERT_LE( meter.held(), 2 * arrived + slack );
      ASSERT_LE( meter.peak(), 3 * arrived + slack );
   }
}

TEST( FrameReaderTest, NothingIsHeldBetweenFrames )
{
   const Bytes stream = framed( { Bytes( 100000 ) } );
   FrameReader reader;
   const TestSupport::HeapMeter meter;
   Piece piece = stream;
   EXPECT_EQ( reader.feed( piece ).value().size(), 100000U );
   EXPECT_EQ( meter.held(), 0U );
}

TEST( FrameReaderTest, OutOfMemoryLosesNothing )
{
   const std::vector< Bytes > payloads = { Bytes( 100000 ), bytes( "next" ) };
   const Bytes stream = framed( payloads );
   FrameReader reader;
   Piece piece = Piece( stream ).first( 1000 );
   EXPECT_FALSE( reader.feed( piece ) );
   piece = Piece( stream ).subspan( 1000 );
   {
      const TestSupport::HeapLimit limit( 5000 );
      EXPECT_THROW( reader.feed( piece ), std::bad_alloc );
   }
   EXPECT_EQ( fed( reader, piece ), payloads );
}

TEST( FrameReaderTest, EveryWrongByteOfTheMagicIsRefusedAtOnce )
{
   const Bytes good = framed( { bytes( "x" ) } );
   for ( std::size_t at = 0; at < 4; ++at ) {
      Bytes stream( good.begin(), good.begin() + static_cast< std::ptrdiff_t >( at ) + 1 );
      stream[ at ] ^= std::byte{ 1 };
      FrameReader reader;
      EXPECT_EQ( refusal( reader, stream ).substr( 0, 17 ), "frame begins with" ) << "byte " << at;
   }
}

TEST( FrameReaderTest, RefusalShowsWhatCame )
{
   FrameReader reader;
   EXPECT_EQ( refusal( reader, bytes( "GET / HTTP/1.1" ) ),
         "frame begins with 47 45 54 20, expected 56 6f 6b 31" );
}

TEST( FrameReaderTest, GoodFramesBeforeABadOneAreGiven )
{
   Bytes stream = framed( threeFrames );
   stream.push_back( std::byte{ 0 } );
   FrameReader reader;
   Piece piece = stream;
   for ( const Bytes & expected : threeFrames ) {
      EXPECT_EQ( reader.feed( piece ), expected );
   }
   EXPECT_THROW( reader.feed( piece ), FramingException );
}

TEST( FrameReaderTest, UnusableAfterARefusal )
{
   const Bytes good = framed( threeFrames );
   FrameReader reader( 20 );
   const std::string text = refusal( reader, framed( { Bytes( 21 ) } ) );
   EXPECT_EQ( text, "frame of 21 bytes, the limit is 20" );
   EXPECT_EQ( refusal( reader, good ), text );
   EXPECT_EQ( endRefusal( reader ), text );
}

TEST( FrameReaderTest, EndInsideAFrame )
{
   const Bytes stream = framed( { bytes( "first" ), bytes( "second" ) } );
   for ( std::size_t cut = 0; cut <= stream.size(); ++cut ) {
      FrameReader reader;
      fed( reader, Piece( stream ).first( cut ) );
      const bool between = cut == 0 || cut == 13 || cut == stream.size();
      EXPECT_EQ( endRefusal( reader ) == "not refused", between ) << "cut at " << cut;
   }
}

TEST( FrameReaderTest, EndSaysHowFarTheFrameWas )
{
   FrameReader inHeader;
   fed( inHeader, bytes( "Vok1" ) );
   EXPECT_EQ( endRefusal( inHeader ), "stream ended after 4 of the 8 bytes of a frame header" );
   FrameReader inPayload;
   fed( inPayload, bytes( std::string_view( "Vok1\0\0\0\5he", 10 ) ) );
   EXPECT_EQ( endRefusal( inPayload ), "stream ended after 2 of the 5 bytes of a frame" );
   Piece none;
   EXPECT_THROW( inPayload.feed( none ), FramingException );
}

TEST( FrameReaderTest, EmptyPiecesChangeNothing )
{
   const Bytes stream = framed( threeFrames );
   FrameReader reader;
   std::vector< Bytes > frames;
   for ( const std::byte & byte : stream ) {
      append( frames, fed( reader, Piece() ) );
      append( frames, fed( reader, Piece( &byte, 1 ) ) );
   }
   EXPECT_EQ( frames, threeFrames );
}

} // namespace
