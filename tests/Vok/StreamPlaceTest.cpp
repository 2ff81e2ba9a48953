// One stream for many readers: those that stop, and those that come later.
#include "tests/Vok/Streams.h"
#include "tests/support/HeapMeter.h"
#include "tests/support/RandomEntity.h"
#include "tests/support/Recorder.h"
#include "tests/support/SpareSlabs.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Told = Vok::StreamPlace::Told;
using TestSupport::Bytes;
using TestSupport::expectEqual;
using TestSupport::Random;
using TestSupport::RandomEntity;
using TestSupport::RandomTree;
using TestSupport::Replica;
using TestSupport::Source;

/// A replica whose reader stops now and then.
struct Follower : Replica {
   std::unique_ptr< Vok::StreamPlace > place; ///< where it stopped

   Told catchUp()
   {
      Vok::NboAttrLog::Out out;
      const Told told = place->catchUp( out );
      read( out.bytes() );
      return told;
   }
   Told goOn()
   {
      const Told told = catchUp();
      place.reset();
      return told;
   }
   void join( Source & source )
   {
      Vok::NboAttrLog::Out out;
      source.writer.writeWhole( out );
      read( out.bytes() );
   }
   void stop( Source & source ) { place = std::make_unique< Vok::StreamPlace >( source.writer ); }
};

struct Readers {
   explicit Readers( Source & writer, Random & draws, std::size_t count ) : source( writer ),
                                                                            random( draws )
   {
      for ( std::size_t i = 0; i != count; ++i ) {
         followers.push_back( std::make_unique< Follower >() );
      }
      source.batch();
      for ( const auto & follower : followers ) {
         follower->join( source );
      }
   }

   /// Some stop before the batch, and some that had stopped go on behind it.
   void round()
   {
      for ( const auto & follower : followers ) {
         if ( !follower->place && random.oneIn( 4 ) ) {
            follower->stop( source );
         }
      }
      const Bytes batch = source.batch();
      for ( auto & follower : followers ) {
         if ( !follower->place ) {
            ASSERT_NO_THROW( follower->read( batch ) );
         } else if ( random.oneIn( 6 ) ) {
            ASSERT_NO_THROW( random.oneIn( 3 ) ? follower->catchUp() : follower->goOn() );
         } else if ( random.oneIn( 40 ) ) {
            follower = std::make_unique< Follower >();
            ASSERT_NO_THROW( follower->join( source ) );
         } else {
            continue;
         }
         ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *follower->root ) );
      }
   }

   void end()
   {
      source.batch();
      for ( const auto & follower : followers ) {
         if ( follower->place ) {
            ASSERT_NO_THROW( follower->goOn() );
            ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *follower->root ) );
         }
      }
   }

   Source & source;
   Random & random;
   std::vector< std::unique_ptr< Follower > > followers;
};

class StreamPlaceRandom : public testing::TestWithParam< std::uint64_t > {
};

TEST_P( StreamPlaceRandom, everyReaderFollows )
{
   Random random( GetParam() );
   Source source;
   RandomTree tree( *source.root, random );
   Readers readers( source, random, 6 );
   for ( unsigned round = 0; round != 60; ++round ) {
      tree.changes( 1 + random.below( 30 ) );
      ASSERT_NO_FATAL_FAILURE( readers.round() ) << "round " << round;
   }
   ASSERT_NO_FATAL_FAILURE( readers.end() );
}

TEST_P( StreamPlaceRandom, everyReaderFollowsReferences )
{
   Random random( GetParam() + 1000 );
   Source source;
   RandomEntity tree( *source.root, random );
   Readers readers( source, random, 4 );
   for ( unsigned round = 0; round != 40; ++round ) {
      tree.changes( 1 + random.below( 40 ) );
      if ( random.oneIn( 30 ) ) {
         source.writer.resync();
      }
      ASSERT_NO_FATAL_FAILURE( readers.round() ) << "round " << round;
   }
   ASSERT_NO_FATAL_FAILURE( readers.end() );
}

INSTANTIATE_TEST_SUITE_P( Seeds, StreamPlaceRandom, testing::Range< std::uint64_t >( 1, 31 ) );

/// A tree with a reader that has it and has stopped.
struct Stopped {
   Source source;
   Follower reader;

   explicit Stopped( const std::function< void( ::Test::Root & ) > & fill = {} )
   {
      if ( fill ) {
         fill( *source.root );
      }
      source.batch();
      reader.join( source );
      reader.stop( source );
   }
   void expectSame() const { expectEqual( *source.root, *reader.root ); }
};

TEST( StreamPlaceTest, theLastOfManyChangesIsToldOnce )
{
   Stopped tree;
   for ( std::uint32_t i = 0; i != 1000; ++i ) {
      tree.source.root->midIs( static_cast< std::uint16_t >( i % 7 + 1 ) );
      tree.source.root->namesIs( i % 3, std::to_string( i ) );
      tree.source.batch();
   }
   TestSupport::Counter heard( *tree.reader.root );
   Vok::NboAttrLog::Out out;
   EXPECT_EQ( tree.reader.place->catchUp( out ), Told::changes );
   EXPECT_LT( out.size(), 120U );
   tree.reader.read( out.bytes() );
   EXPECT_EQ( heard.heard, 4U );
   tree.expectSame();
   EXPECT_EQ( tree.reader.catchUp(), Told::nothing );
}

TEST( StreamPlaceTest, whoHasStoppedCostsNoMoreForChangesOfTheSame )
{
   Stopped tree;
   const auto change = [ & ]( std::uint32_t i ) {
      tree.source.root->namesIs( i % 5, std::to_string( i % 10 ) );
      tree.source.root->treeIs( "t" )->depthIs( i );
      tree.source.batch();
   };
   for ( std::uint32_t i = 0; i != 10; ++i ) {
      change( i );
   }
   const TestSupport::HeapMeter heap;
   for ( std::uint32_t i = 0; i != 10000; ++i ) {
      change( i );
   }
   EXPECT_EQ( heap.held(), 0U );
   tree.reader.goOn();
   tree.expectSame();
}

TEST( StreamPlaceTest, whatCameAndWentWhileAReaderStoppedIsBounded )
{
   Stopped tree( []( ::Test::Root & root ) {
      root.namesIs( 1, "stays" );
      root.namesIs( 2, "goes" );
   } );
   TestSupport::makeSpareSlabs();
   const TestSupport::HeapMeter heap;
   for ( std::uint32_t i = 100; i != 20000; ++i ) {
      tree.source.root->namesIs( i, "came" );
      tree.source.batch();
      tree.source.root->namesDel( i );
      tree.source.batch();
   }
   EXPECT_LT( heap.held(), 40000U );
   tree.source.root->namesDel( 2 );
   tree.source.batch();
   Vok::NboAttrLog::Out out;
   EXPECT_EQ( tree.reader.place->catchUp( out ), Told::changes );
   EXPECT_LT( out.size(), 1000U );
   tree.reader.read( out.bytes() );
   tree.expectSame();
}

TEST( StreamPlaceTest, aKeyThatGoesAndComesAgainIsToldAlone )
{
   Stopped tree( []( ::Test::Root & root ) {
      for ( std::uint32_t i = 0; i != 100; ++i ) {
         root.namesIs( i, "stays" );
      }
   } );
   for ( std::uint32_t i = 0; i != 1000; ++i ) {
      tree.source.root->namesDel( 7 );
      tree.source.batch();
      tree.source.root->namesIs( 7, "came again" );
      tree.source.batch();
   }
   Vok::NboAttrLog::Out out;
   EXPECT_EQ( tree.reader.place->catchUp( out ), Told::changes );
   EXPECT_LT( out.size(), 120U );
   tree.reader.read( out.bytes() );
   tree.expectSame();
}

/// Of a collection of which more has gone than is there, what stays is told to stay.
TEST( StreamPlaceTest, childrenThatStayKeepTheirIdentity )
{
   Stopped tree( []( ::Test::Root & root ) { root.treeIs( "stays" )->depthIs( 1 ); } );
   const Corvo::Ptr< ::Test::Tree > before = tree.reader.root->tree( "stays" );
   for ( std::uint32_t i = 0; i != 200; ++i ) {
      tree.source.root->treeIs( std::to_string( i ) )->depthIs( i );
      tree.source.batch();
      tree.source.root->treeDel( std::to_string( i ) );
      tree.source.batch();
   }
   tree.source.root->treeIs( "new" )->depthIs( 2 );
   tree.source.root->treeIs( "stays" )->depthIs( 3 );
   tree.source.batch();
   TestSupport::Counter heard( *tree.reader.root );
   EXPECT_EQ( tree.reader.goOn(), Told::changes );
   tree.expectSame();
   EXPECT_EQ( tree.reader.root->tree( "stays" ), before );
   EXPECT_EQ( heard.heard, 1U ); // of the root's children, the new one
}

/// What the replica's own users deleted is not there to be kept.
TEST( StreamPlaceTest, whatTheReplicaLostIsNotKept )
{
   Stopped tree( []( ::Test::Root & root ) { root.treeIs( "stays" ); } );
   for ( std::uint32_t i = 0; i != 200; ++i ) {
      tree.source.root->treeIs( std::to_string( i ) );
      tree.source.batch();
      tree.source.root->treeDel( std::to_string( i ) );
      tree.source.batch();
   }
   tree.reader.root->treeDel( "stays" );
   EXPECT_EQ( tree.reader.goOn(), Told::changes );
   EXPECT_EQ( tree.reader.root->tree().size(), 0U );
}

TEST( StreamPlaceTest, aNumberThatIsUsedAgainIsAnotherEntity )
{
   Stopped tree( []( ::Test::Root & root ) { root.treeIs( "a" )->depthIs( 7 ); } );
   tree.source.root->treeDel( "a" );
   tree.source.batch();
   tree.source.root->treeIs( "b" );
   tree.source.batch();
   tree.reader.goOn();
   tree.expectSame();
}

TEST( StreamPlaceTest, aReaderThatHasItAllIsToldNothing )
{
   Stopped tree;
   Vok::NboAttrLog::Out out;
   EXPECT_EQ( tree.reader.place->catchUp( out ), Told::nothing );
   EXPECT_EQ( out.size(), 0U );
}

/// Nothing differs after all, and the reader is told so: it goes on with the next batch.
TEST( StreamPlaceTest, whatIsAsItWasTakesAReaderOn )
{
   Stopped tree;
   tree.source.root->treeIs( "t" );
   tree.source.batch();
   tree.source.root->treeDel( "t" );
   tree.source.batch();
   EXPECT_EQ( tree.reader.goOn(), Told::changes );
   tree.source.root->midIs( 5 );
   tree.reader.read( tree.source.batch() );
   tree.expectSame();
}

TEST( StreamPlaceTest, aWholeTreeForAllIsOneForThoseThatStopped )
{
   Stopped tree;
   tree.source.root->midIs( 4 );
   tree.source.whole();
   tree.source.root->midIs( 5 );
   tree.source.batch();
   EXPECT_EQ( tree.reader.goOn(), Told::wholeTree );
   tree.expectSame();
}

TEST( StreamPlaceTest, nobodyCatchesUpBeforeWhatIsPendingIsWritten )
{
   Stopped tree;
   tree.source.root->midIs( 9 );
   Vok::NboAttrLog::Out out;
   EXPECT_THROW( tree.reader.place->catchUp( out ), std::logic_error );
   EXPECT_THROW( tree.source.writer.writeWhole( out ), std::logic_error );
   EXPECT_EQ( out.size(), 0U );
   tree.source.batch();
   tree.reader.goOn();
   tree.expectSame();
}

TEST( StreamPlaceTest, aPlaceOutlivesItsWriter )
{
   auto source = std::make_unique< Source >();
   source->batch();
   Vok::StreamPlace place( source->writer );
   source.reset();
   Vok::NboAttrLog::Out out;
   EXPECT_THROW( place.catchUp( out ), std::logic_error );
}

/// One place serves all that stopped later, and sends the whole tree to whoever is older.
TEST( StreamPlaceTest, aPlaceServesLaterReaders )
{
   Stopped tree;
   std::vector< std::unique_ptr< Follower > > later;
   for ( std::uint16_t i = 0; i != 10; ++i ) {
      later.push_back( std::make_unique< Follower >() );
      later.back()->join( tree.source );
      tree.source.root->midIs( static_cast< std::uint16_t >( 100 + i ) );
      tree.source.root->treeIs( std::to_string( i ) );
      tree.source.batch();
   }
   tree.reader.place->moveTo( 4 );
   EXPECT_EQ( tree.reader.place->position().batch, 4U );
   tree.reader.place->moveTo( 2 );
   tree.reader.place->moveTo( 100 );
   EXPECT_EQ( tree.reader.place->position().batch, 4U );
   for ( const auto & reader : later ) {
      Vok::NboAttrLog::Out out;
      const bool older = reader->reader.position().batch < 4;
      EXPECT_EQ( tree.reader.place->catchUp( reader->reader.position(), out ),
            older ? Told::wholeTree : Told::changes );
      reader->read( out.bytes() );
      EXPECT_EQ( reader->reader.position(), tree.source.writer.position() );
      ASSERT_NO_FATAL_FAILURE( expectEqual( *tree.source.root, *reader->root ) );
   }
   Vok::NboAttrLog::Out out;
   const Vok::StreamPosition elsewhere{ 1, 5 };
   EXPECT_EQ( tree.reader.place->catchUp( elsewhere, out ), Told::wholeTree );
}

/// Places are moved in any order, and each keeps what its reader misses.
TEST( StreamPlaceTest, whatNoPlaceNeedsIsForgotten )
{
   Random random( 3 );
   Source source;
   RandomTree tree( *source.root, random );
   source.batch();
   std::vector< std::unique_ptr< Follower > > readers;
   for ( unsigned round = 0; round != 300; ++round ) {
      if ( readers.size() < 5 ) {
         readers.push_back( std::make_unique< Follower >() );
         readers.back()->join( source );
         readers.back()->stop( source );
      }
      tree.changes( 1 + random.below( 5 ) );
      source.batch();
      const std::size_t one = random.below( static_cast< std::uint32_t >( readers.size() ) );
      Follower & reader = *readers[ one ];
      Vok::NboAttrLog::Out out;
      reader.place->catchUp( reader.reader.position(), out );
      reader.read( out.bytes() );
      ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *reader.root ) ) << round;
      if ( random.oneIn( 2 ) ) {
         tree.changes( 1 );
         source.batch();
      }
      reader.place->moveTo( reader.reader.position().batch );
      if ( random.oneIn( 20 ) ) {
         readers.erase( readers.begin() + static_cast< std::ptrdiff_t >( one ) );
      }
   }
}

TEST( StreamPlaceTest, aReaderTakesNoOtherReadersBatch )
{
   Stopped tree;
   Follower other;
   other.join( tree.source );
   tree.source.root->midIs( 9 );
   other.read( tree.source.batch() );
   Vok::NboAttrLog::Out out;
   tree.reader.place->catchUp( out );
   EXPECT_EQ( other.refusal( out.bytes() ), "batch 2 does not follow batch 2, the last one read" );
   tree.reader.read( out.bytes() );
   tree.expectSame();
}

} // namespace
