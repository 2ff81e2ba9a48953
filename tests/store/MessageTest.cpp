// The form of the protocol's messages, and what is none.
#include "store/Backoff.h"
#include "store/Link.h"
#include "tests/store/Samples.h"
#include "tests/support/HeapMeter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace Vok::Store;
using TestSupport::bytes;
using TestSupport::bytesOf;
using TestSupport::samples;

std::string refusal( const Bytes & frame )
{
   try {
      decode( frame );
   } catch ( const ProtocolException & e ) {
      return e.what();
   }
   return "";
}

TEST( MessageTest, eachComesBackAsItWas )
{
   ASSERT_EQ( samples().size(), std::variant_size_v< Message > );
   for ( std::size_t i = 0; i != samples().size(); ++i ) {
      const Bytes first = bytesOf( samples()[ i ] );
      EXPECT_EQ( first.front(), static_cast< std::byte >( i ) );
      const Message message = decode( first );
      EXPECT_EQ( message.index(), i );
      EXPECT_EQ( bytesOf( message ), first ) << i;
   }
}

TEST( MessageTest, bytesAreAsDocumented )
{
   EXPECT_EQ( bytesOf( OpenReader{ 2, "*", { { "a", 3, 4 } } } ),
         bytes( { 2, 0, 0, 0, 2, 0, 0, 0, 1, '*', 0, 0, 0, 1, 0, 0, 0, 1, 'a', 0, 0, 0, 0, 0, 0, 0,
               3, 0, 0, 0, 0, 0, 0, 0, 4 } ) );
   EXPECT_EQ( bytesOf( BatchPiece{ 3, 4, true, {} } ).size(), batchPieceHead );
}

TEST( MessageTest, everyPrefixAndEverySurplusIsRefused )
{
   for ( const Message & sample : samples() ) {
      Bytes whole = bytesOf( sample );
      for ( std::size_t size = 0; size != whole.size(); ++size ) {
         EXPECT_NE( refusal( Bytes( whole.begin(), whole.begin() + std::ptrdiff_t( size ) ) ), "" );
      }
      whole.push_back( std::byte{ 0 } );
      EXPECT_NE( refusal( whole ).find( "has 1 bytes too many" ), std::string::npos );
   }
   EXPECT_EQ( refusal( bytes( { 15 } ) ), "there is no message of kind 15" );
}

/// A number of list members takes no memory before they come.
TEST( MessageTest, aListIsAsLongAsItsBytes )
{
   const Bytes frame = bytes( { 2, 0, 0, 0, 2, 0, 0, 0, 1, '*', 255, 255, 255, 255 } );
   const TestSupport::HeapMeter heap;
   EXPECT_NE( refusal( frame ), "" );
   EXPECT_LT( heap.peak(), 4096U );
}

TEST( LinkTest, messagesComeOutHoweverTheyAreCut )
{
   for ( std::size_t most = 1; most != 60; ++most ) {
      Link from;
      Link to;
      for ( const Message & sample : samples() ) {
         from.send( sample );
      }
      std::vector< Bytes > got;
      while ( from.pending() != 0 ) {
         const auto piece = from.output().first( std::min( most, from.output().size() ) );
         to.receive( piece, [ & ]( const Message & m ) { got.push_back( bytesOf( m ) ); } );
         from.sent( piece.size() );
      }
      ASSERT_EQ( got.size(), samples().size() );
      for ( std::size_t i = 0; i != got.size(); ++i ) {
         EXPECT_EQ( got[ i ], bytesOf( samples()[ i ] ) );
      }
   }
}

TEST( LinkTest, aLargeBatchComesInPiecesAndIsNotCopied )
{
   auto batch = std::make_shared< Bytes >( 3 * batchPiece + 17 );
   for ( std::size_t i = 0; i != batch->size(); ++i ) {
      ( *batch )[ i ] = static_cast< std::byte >( i * 7 );
   }
   const TestSupport::HeapMeter heap;
   Link from;
   from.sendBatch( 1, 2, batch );
   EXPECT_LT( heap.held(), 10000U );
   Link to;
   BatchAssembly assembly( 10 * batchPiece );
   unsigned pieces = 0;
   bool complete = false;
   while ( from.pending() != 0 ) {
      to.receive( from.output(), [ & ]( const Message & message ) {
         ++pieces;
         const auto & piece = std::get< BatchPiece >( message );
         EXPECT_EQ( piece.channel, 1U );
         EXPECT_EQ( piece.mount, 2U );
         if ( const auto whole = assembly.add( piece ) ) {
            complete = std::equal( whole->begin(), whole->end(), batch->begin(), batch->end() );
         }
      } );
      from.sent( from.output().size() );
   }
   EXPECT_EQ( pieces, 4U );
   EXPECT_TRUE( complete );
}

TEST( LinkTest, aBatchBeyondTheLimitIsRefused )
{
   BatchAssembly assembly( 5 );
   const Bytes three = bytes( { 1, 2, 3 } );
   EXPECT_FALSE( assembly.add( { 1, 0, false, three } ) );
   EXPECT_THROW( assembly.add( { 1, 0, true, three } ), ProtocolException );
}

TEST( BackoffTest, waitsLongerEachTimeAndNeverTooLong )
{
   Backoff backoff( 7 );
   std::chrono::milliseconds most( 50 );
   for ( int i = 0; i != 30; ++i ) {
      const auto wait = backoff.next();
      EXPECT_GE( wait, most / 2 );
      EXPECT_LE( wait, most );
      most = std::min( 2 * most, std::chrono::milliseconds( 10000 ) );
   }
   backoff.reset();
   EXPECT_LE( backoff.next(), std::chrono::milliseconds( 50 ) );
}

} // namespace
