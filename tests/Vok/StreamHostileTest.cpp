// Batches that were cut, damaged or made by hand: applied whole or refused whole.
#include "tests/Vok/Streams.h"
#include "tests/support/HeapMeter.h"
#include "tests/support/Recorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <memory>

namespace {

using TestSupport::Bytes;
using TestSupport::expectEqual;
using TestSupport::Heard;
using TestSupport::Random;
using TestSupport::RandomTree;
using TestSupport::Recorder;
using TestSupport::Replica;
using TestSupport::signedAgain;
using TestSupport::Source;

/// A whole tree and a delta after it, of random changes.
struct Recorded {
   explicit Recorded( std::uint64_t seed )
   {
      Random random( seed );
      Source source;
      RandomTree tree( *source.root, random );
      tree.changes( 60 );
      whole = source.batch();
      tree.changes( 25 );
      source.root->countInc( 1 );
      delta = source.batch();
   }

   Bytes whole;
   Bytes delta;
};

/// A replica in the state before the delta that hears of its root.
struct Listening : Replica {
   explicit Listening( const Recorded & recorded )
   {
      read( recorded.whole );
      before = Vok::treeDigest( *root );
      root->publisher().notifieeIs( &recorder );
   }

   /// Whether the bytes were applied. Refused ones must have left no trace.
   bool takes( const Bytes & bytes )
   {
      Vok::NboAttrLog::In in( bytes );
      try {
         reader.read( in );
         return true;
      } catch ( const Vok::NboAttrLog::Exception & ) {
         EXPECT_EQ( Vok::treeDigest( *root ), before );
         EXPECT_EQ( recorder.take(), Heard{} );
         EXPECT_EQ( in.remaining(), bytes.size() );
         return false;
      }
   }

   Vok::Digest before;
   Recorder recorder;
};

class StreamHostileTest : public testing::TestWithParam< std::uint64_t > {
};

TEST_P( StreamHostileTest, everyPrefixIsRefused )
{
   const Recorded recorded( GetParam() );
   Listening replica( recorded );
   for ( const Bytes * batch : { &recorded.whole, &recorded.delta } ) {
      for ( std::size_t size = 0; size != batch->size(); ++size ) {
         const auto end = batch->begin() + static_cast< std::ptrdiff_t >( size );
         ASSERT_FALSE( replica.takes( Bytes( batch->begin(), end ) ) ) << size;
      }
   }
   EXPECT_TRUE( replica.takes( recorded.delta ) );
}

TEST_P( StreamHostileTest, everyPrefixThatSaysSoIsRefusedOrWhole )
{
   const Recorded recorded( GetParam() );
   auto replica = std::make_unique< Listening >( recorded );
   for ( std::size_t size = 24; size < recorded.delta.size(); ++size ) {
      const auto end = recorded.delta.begin() + static_cast< std::ptrdiff_t >( size );
      if ( replica->takes( signedAgain( Bytes( recorded.delta.begin(), end ) ) ) ) {
         replica = std::make_unique< Listening >( recorded ); // it ended behind a record
      }
   }
}

TEST_P( StreamHostileTest, everyFlippedBitIsFound )
{
   const Recorded recorded( GetParam() );
   Listening replica( recorded );
   Bytes batch = recorded.delta;
   for ( std::size_t i = 0; i != batch.size(); ++i ) {
      for ( unsigned bit = 0; bit != 8; ++bit ) {
         batch[ i ] ^= static_cast< std::byte >( 1U << bit );
         ASSERT_FALSE( replica.takes( batch ) ) << i << " " << bit;
         batch[ i ] ^= static_cast< std::byte >( 1U << bit );
      }
   }
   EXPECT_TRUE( replica.takes( batch ) );
}

TEST_P( StreamHostileTest, forgedBytesAreAppliedWholeOrRefusedWhole )
{
   const Recorded recorded( GetParam() );
   Random random( GetParam() );
   std::size_t taken = 0;
   std::size_t refused = 0;
   for ( const Bytes * batch : { &recorded.whole, &recorded.delta } ) {
      auto replica = std::make_unique< Listening >( recorded );
      for ( unsigned round = 0; round != 1500; ++round ) {
         Bytes forged = *batch;
         for ( unsigned changes = 1 + random.below( 2 ); changes != 0; --changes ) {
            const std::size_t at =
                  16 + random.below( static_cast< std::uint32_t >( forged.size() - 24 ) );
            forged[ at ] = static_cast< std::byte >( random.below( 256 ) );
         }
         if ( replica->takes( signedAgain( std::move( forged ) ) ) ) {
            ++taken;
            replica->read( recorded.whole ); // what it became can be brought back
            ASSERT_EQ( Vok::treeDigest( *replica->root ), replica->before );
            replica = std::make_unique< Listening >( recorded );
         } else {
            ++refused;
         }
      }
   }
   EXPECT_GT( taken, 0U );
   EXPECT_GT( refused, 0U );
}

TEST_P( StreamHostileTest, removedAndDoubledBytesAreAppliedWholeOrRefusedWhole )
{
   const Recorded recorded( GetParam() );
   Random random( GetParam() + 7 );
   auto replica = std::make_unique< Listening >( recorded );
   for ( unsigned round = 0; round != 1500; ++round ) {
      Bytes forged = recorded.delta;
      const auto at = forged.begin() + 16 +
            random.below( static_cast< std::uint32_t >( forged.size() - 24 ) );
      if ( random.oneIn( 2 ) ) {
         forged.erase( at );
      } else {
         forged.insert( at, *at );
      }
      if ( replica->takes( signedAgain( std::move( forged ) ) ) ) {
         replica = std::make_unique< Listening >( recorded );
      }
   }
}

// What is wrong stands behind all that is right, and members of values are many and small.
::Test::Recipe longRecipe()
{
   ::Test::Recipe recipe( ::Test::Narrow( 300 ) );
   for ( std::uint32_t i = 0; i != 20000; ++i ) {
      recipe.stepIs( i, ::Test::Pair() );
   }
   return recipe;
}

/// Where there is much of it, in each place that it can stand in.
TEST( StreamRefusalTest, aBatchIsHeldTwiceAtMost )
{
   using Fill = void ( * )( ::Test::Root & );
   constexpr Fill fills[] = {
      []( ::Test::Root & root ) { root.recipeIs( longRecipe() ); },
      []( ::Test::Root & root ) { root.recipesIs( longRecipe() ); },
      []( ::Test::Root & root ) { root.titleIs( std::string( 100000, 'x' ) ); },
      []( ::Test::Root & root ) {
         for ( std::uint32_t i = 0; i != 20000; ++i ) {
            root.marksIs( i );
         }
      },
      []( ::Test::Root & root ) {
         for ( std::uint32_t i = 0; i != 20000; ++i ) {
            root.namesIs( i, "" );
         }
      },
   };
   for ( const Fill & fill : fills ) {
      Source source;
      fill( *source.root );
      Bytes batch = source.batch();
      batch.insert( batch.end() - 8, std::byte{ 0x7f } );
      batch = signedAgain( std::move( batch ) );

      Replica replica;
      Vok::NboAttrLog::In in( batch );
      const TestSupport::HeapMeter heap;
      EXPECT_THROW( replica.reader.read( in ), Vok::NboAttrLog::Exception );
      EXPECT_LE( heap.peak(), 2 * batch.size() + ( 64 << 10 ) ) << &fill - fills;
   }
}

INSTANTIATE_TEST_SUITE_P( Seeds, StreamHostileTest, testing::Range< std::uint64_t >( 1, 5 ) );

TEST( StreamRefusalTest, theFrameSaysWhatIsWrong )
{
   Source source;
   const Bytes whole = source.batch();
   Replica replica;
   EXPECT_EQ( replica.refusal( Bytes( 3 ) ), "a batch is cut short: 3 bytes" );
   EXPECT_EQ( replica.refusal( Bytes( 100 ) ), "these bytes are no batch" );
   Bytes version = whole;
   version[ 2 ] = std::byte{ 9 };
   EXPECT_EQ( replica.refusal( signedAgain( version ) ),
         "a batch of version 9, 2 is what this side reads" );
   Bytes flags = whole;
   flags[ 3 ] = std::byte{ 3 };
   EXPECT_EQ( replica.refusal( signedAgain( flags ) ),
         "a batch of " + std::to_string( whole.size() ) + " bytes does not fit into the log" );
   Bytes damaged = whole;
   damaged.back() ^= std::byte{ 1 };
   EXPECT_EQ( replica.refusal( damaged ), "the checksum of a batch is wrong" );
}

Bytes bytesOf( std::initializer_list< int > numbers )
{
   Bytes bytes;
   for ( const int number : numbers ) {
      bytes.push_back( static_cast< std::byte >( number ) );
   }
   return bytes;
}

/// The whole collection of children that a reader gets of which more has gone than is there: a
/// single key that is kept.
TEST( StreamRefusalTest, onlyAWholeCollectionKeepsChildren )
{
   Source source;
   source.root->treeIs( "T" );
   Replica replica;
   replica.read( source.batch() );
   Vok::StreamPlace place( source.writer );
   for ( int i = 0; i != 70; ++i ) {
      source.root->treeIs( std::to_string( i ) );
      source.batch();
      source.root->treeDel( std::to_string( i ) );
      source.batch();
   }
   Vok::NboAttrLog::Out out;
   place.catchUp( out );
   const Bytes batch = TestSupport::bytesOf( out );
   const Bytes kept = { std::byte{ 2 }, std::byte{ 2 }, std::byte{ 0 }, std::byte{ 0 },
      std::byte{ 0 }, std::byte{ 1 }, std::byte{ 'T' } };
   const auto at = std::search( batch.begin(), batch.end(), kept.begin(), kept.end() );
   ASSERT_NE( at, batch.end() );
   const auto with = [ & ]( std::ptrdiff_t offset, std::uint8_t byte ) {
      Bytes forged = batch;
      forged[ static_cast< std::size_t >( at - batch.begin() + offset ) ] = std::byte{ byte };
      return replica.refusal( signedAgain( std::move( forged ) ) );
   };
   EXPECT_EQ( with( 0, 0 ), "a member is kept where none has to be" );
   EXPECT_EQ( with( 1, 0 ), "a whole collection deletes a member" );
   EXPECT_EQ( with( 1, 3 ), "a batch names no such operation on a member" );
   replica.read( batch );
   ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
}

/// A writer keeps nothing for an entity that the batch introduces. What is put behind it counts.
TEST( StreamRefusalTest, whatAFreshEntityIsToKeepIsPassedOver )
{
   Source source;
   const auto tree = source.root->treeIs( "T" );
   tree->kidsIs( "A" );
   tree->kidsIs( "B" );
   Bytes batch = source.batch();
   // The root is 0, the tree 1, the root's only child 2, the kids are 3 and 4. Their list, of 8
   // bytes: that it has all, the first one's number (13: 3, and a birth), birth and name, and the
   // next one's number (0: the one after) and name.
   const auto list = [ &batch ]( char first, char second ) {
      const Bytes bytes = bytesOf( { 8, 1, 13, 1, 1, first, 0, 1, second } );
      return std::search( batch.begin(), batch.end(), bytes.begin(), bytes.end() );
   };
   const bool firstIsA = list( 'A', 'B' ) != batch.end();
   const auto at = firstIsA ? list( 'A', 'B' ) : list( 'B', 'A' );
   ASSERT_NE( at, batch.end() );
   // The first one kept, the second one put: by operations, 2 and 1.
   const char first = firstIsA ? 'A' : 'B';
   const char second = firstIsA ? 'B' : 'A';
   const Bytes kept = bytesOf( { 12, 2, 2, 0, 0, 0, 1, first, 1, 17, 1, 1, second } );
   batch.insert( batch.erase( at, at + 9 ), kept.begin(), kept.end() );

   Replica replica;
   replica.read( signedAgain( std::move( batch ) ) );
   const auto there = replica.root->tree( "T" );
   EXPECT_EQ( there->kids().size(), 1U );
   EXPECT_TRUE( there->kids( firstIsA ? "B" : "A" ) );
}

TEST( StreamRefusalTest, bytesBehindAValueAreRefused )
{
   Source source;
   Replica replica;
   replica.read( source.batch() );
   source.root->maybePairIs( ::Test::Pair( 1, "tt", ::Test::Colour::green, ::Test::Level( 2 ), true,
         Vok::Seconds( 1 ) ) );
   const Bytes batch = source.batch();
   const Bytes value = bytesOf( { 1, 0, 0, 0, 1, 0, 0, 0, 2, 't', 't' } );
   Bytes forged = batch;
   const auto at = std::search( forged.begin(), forged.end(), value.begin(), value.end() );
   ASSERT_NE( at, forged.end() );
   const auto length = std::to_integer< int >( *( at - 1 ) );
   *( at - 1 ) = static_cast< std::byte >( length + 1 );
   forged.insert( at + length, std::byte{ 0 } );
   EXPECT_EQ( replica.refusal( signedAgain( std::move( forged ) ) ),
         "a value is longer than what it holds" );
   replica.read( batch );
   ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
}

TEST( StreamRefusalTest, aBoundOrCodeIsRefusedWithItsMessage )
{
   Source source;
   Replica replica;
   replica.read( source.batch() );
   const auto forge = [ & ]( std::uint8_t from, std::uint8_t to ) {
      Bytes batch = source.batch();
      const auto at = std::find( batch.rbegin() + 9, batch.rend(), std::byte{ from } );
      *at = std::byte{ to };
      return replica.refusal( signedAgain( batch ) );
   };
   source.root->tinyIs( 7 );
   EXPECT_EQ( forge( 7, 99 ), "Test::Root::tiny < 1 or > (Test::Level::top - 2) not allowed" );
   replica.read( source.whole() );
   source.root->levelIs( ::Test::Level( 9 ) );
   EXPECT_EQ( forge( 9, 99 ),
         "Test::Level::value < Test::Level::low or > Test::Level::top not allowed" );
   replica.read( source.whole() );
   source.root->colourIs( ::Test::Colour::blue );
   EXPECT_NE( forge( 7, 3 ).find( "Test::Colour" ), std::string::npos );
   replica.read( source.whole() );
   ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
}

} // namespace
