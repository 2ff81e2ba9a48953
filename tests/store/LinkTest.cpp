// What a connection sends at once, what it shares with others, and what memory it keeps.
#include "store/Link.h"

#include "tests/support/HeapMeter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace {

using Vok::Store::BatchAssembly;
using Vok::Store::BatchPiece;
using Vok::Store::Bytes;
using Vok::Store::Link;

std::shared_ptr< const Bytes > batchOf( std::size_t size )
{
   auto bytes = std::make_shared< Bytes >( size );
   for ( std::size_t i = 0; i != size; ++i ) {
      ( *bytes )[ i ] = static_cast< std::byte >( i * 7 + size );
   }
   return bytes;
}

/// What arrives of what a link sends, in spans as large as it gives them.
struct Arrived {
   explicit Arrived( Link & link )
   {
      for ( ; !link.output().empty(); ++spans ) {
         const auto span = link.output();
         largest = std::max( largest, span.size() );
         end.receive( span, [ this ]( const Vok::Store::Message & message ) {
            const auto & piece = std::get< BatchPiece >( message );
            if ( const auto batch = assembly.add( piece ) ) {
               batches.emplace_back( batch->begin(), batch->end() );
            }
         } );
         link.sent( span.size() );
      }
   }

   Link end;
   BatchAssembly assembly{ std::size_t{ 1 } << 24 };
   std::vector< Bytes > batches;
   std::size_t spans = 0;
   std::size_t largest = 0;
};

TEST( LinkTest, smallBatchesGoTogether )
{
   Link link;
   for ( std::size_t size = 1; size != 51; ++size ) {
      link.sendBatch( 1, 0, batchOf( size ) );
   }
   const Arrived arrived( link );
   EXPECT_EQ( arrived.spans, 2U ); // what was first, and the others
   ASSERT_EQ( arrived.batches.size(), 50U );
   for ( std::size_t size = 1; size != 51; ++size ) {
      EXPECT_EQ( arrived.batches[ size - 1 ], *batchOf( size ) );
   }
   EXPECT_EQ( link.pending(), 0U );
}

TEST( LinkTest, aLargeBatchIsSharedAndKeepsItsPlace )
{
   Link link;
   const auto large = batchOf( 100000 );
   link.sendBatch( 1, 0, batchOf( 10 ) );
   link.sendBatch( 1, 0, large );
   link.sendBatch( 1, 0, batchOf( 20 ) );
   EXPECT_EQ( large.use_count(), 2 );
   const Arrived arrived( link );
   EXPECT_EQ( arrived.largest, large->size() );
   EXPECT_EQ( large.use_count(), 1 );
   ASSERT_EQ( arrived.batches.size(), 3U );
   EXPECT_EQ( arrived.batches[ 0 ], *batchOf( 10 ) );
   EXPECT_EQ( arrived.batches[ 1 ], *large );
   EXPECT_EQ( arrived.batches[ 2 ], *batchOf( 20 ) );
}

TEST( LinkTest, bytesOnTheirWayStayWhereTheyAre )
{
   Link link;
   link.sendBatch( 1, 0, batchOf( 100 ) );
   const auto onTheWay = link.output();
   const Bytes before( onTheWay.begin(), onTheWay.end() );
   for ( std::size_t size = 1; size != 1000; ++size ) {
      link.sendBatch( 1, 0, batchOf( size ) );
   }
   EXPECT_EQ( link.output().data(), onTheWay.data() );
   EXPECT_TRUE( std::equal( before.begin(), before.end(), onTheWay.begin() ) );
   link.sent( onTheWay.size() );
   const Arrived rest( link );
   EXPECT_EQ( rest.batches.size(), 999U );
}

TEST( LinkTest, aBatchInPiecesIsFreedWithTheNext )
{
   BatchAssembly assembly( std::size_t{ 1 } << 24 );
   const auto half = batchOf( std::size_t{ 1 } << 20 );
   const TestSupport::HeapMeter heap;
   EXPECT_FALSE( assembly.add( { 1, 0, false, *half } ) );
   ASSERT_TRUE( assembly.add( { 1, 0, true, *half } ) );
   EXPECT_GE( heap.held(), 2 * half->size() );
   ASSERT_TRUE( assembly.add( { 1, 0, true, std::span( *half ).first( 10 ) } ) );
   EXPECT_LT( heap.held(), 1000U );
}

TEST( LinkTest, aBatchInPiecesIsFreedOnDemand )
{
   BatchAssembly assembly( std::size_t{ 1 } << 24 );
   const auto half = batchOf( std::size_t{ 1 } << 20 );
   const TestSupport::HeapMeter heap;
   EXPECT_FALSE( assembly.add( { 1, 0, false, *half } ) );
   ASSERT_TRUE( assembly.add( { 1, 0, true, *half } ) );
   assembly.reset();
   EXPECT_LT( heap.held(), 1000U );
   const auto next = assembly.add( { 1, 0, true, std::span( *half ).first( 10 ) } );
   ASSERT_TRUE( next );
   EXPECT_TRUE( std::equal( next->begin(), next->end(), half->begin() ) );
}

} // namespace
