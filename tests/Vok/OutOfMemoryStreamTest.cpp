// Where memory ends in a stream: a batch is written whole or not at all, and read whole or not at
// all.
#include "tests/Vok/OutOfMemory.h"
#include "tests/Vok/Streams.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using Corvo::Ptr;
using ::Test::Label;
using ::Test::Narrow;
using ::Test::Root;
using TestSupport::Counter;
using TestSupport::expectEqual;
using TestSupport::Outcome;
using TestSupport::Replica;
using TestSupport::Source;
using TestSupport::withEveryFailure;

// Changes with every kind of record in their batch: attributes, members, births, deaths, references
// inside and outside.
void change( Root & root, std::uint32_t round )
{
   const std::string text = "a text too long to stand in place " + std::to_string( round );
   root.titleIs( text );
   root.maybeIntIs( round );
   root.onlyIs()->pathIs( text );
   for ( std::uint32_t i = 0; i != 20; ++i ) {
      root.namesIs( i * 3 + round, text );
      root.wordsIs( text + std::to_string( i ) );
      root.stepsIs( i, round );
   }
   root.namesDel( 3 );
   root.treeDel( "gone " + std::to_string( round - 1 ) );
   root.treeIs( "gone " + std::to_string( round ) );
   const auto tree = root.treeIs( text );
   tree->kidsIs( text )->depthIs( round );
   tree->groupsIs( text, round );
   root.slotsIs( Label( "slot" ), static_cast< std::uint16_t >( round ) );
   root.bindingsIs( Label( std::to_string( round ) ), tree, ::Test::blue );
   root.leafRefsIs( tree );
   root.refsIs( ::Test::Numbered::NumberedIs( Narrow( 300 + round ) ) );
   root.singleIs( text );
}

TEST( OutOfMemoryStreamTest, aWriterIsMadeOrNot )
{
   withEveryFailure( []( auto attempt ) {
      const Ptr< Root > root = Root::RootIs( "root" );
      change( *root, 1 );
      const Vok::Digest before = Vok::treeDigest( *root );
      const std::uint32_t references = root->refCount();
      if ( attempt( [ & ] { Vok::EntityVokNboAttrLogSa writer( root ); } ) == Outcome::failed ) {
         EXPECT_FALSE( root->publisher().hasNotifiee() );
         EXPECT_EQ( root->refCount(), references );
      }
      EXPECT_EQ( Vok::treeDigest( *root ), before );
   } );
}

TEST( OutOfMemoryStreamTest, aReaderIsMadeOrNot )
{
   withEveryFailure( []( auto attempt ) {
      const Ptr< Root > root = Root::RootIs( "root" );
      const std::uint32_t references = root->refCount();
      attempt( [ & ] { Vok::EntityVokNboAttrLogReader reader( root ); } );
      EXPECT_EQ( root->refCount(), references );
   } );
}

// Whether the whole tree is written, or what changed since the last batch.
class OutOfMemoryBatchTest : public testing::TestWithParam< bool > {};

TEST_P( OutOfMemoryBatchTest, isWrittenOrNot )
{
   withEveryFailure( []( auto attempt ) {
      Source source;
      Replica replica;
      change( *source.root, 1 );
      replica.read( source.batch() );
      change( *source.root, 2 );
      if ( GetParam() ) {
         source.writer.resync();
      }
      Vok::NboAttrLog::Out out;
      out.put( std::uint8_t{ 7 } );
      if ( attempt( [ & ] { source.writer.write( out ); } ) == Outcome::failed ) {
         EXPECT_EQ( out.size(), 1U );
         EXPECT_TRUE( source.writer.hasChanges() );
         replica.read( source.batch() );
      } else {
         replica.read( std::span( out.data() + 1, out.size() - 1 ) );
      }
      ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
      change( *source.root, 3 );
      replica.read( source.batch() );
      ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
   } );
}

TEST_P( OutOfMemoryBatchTest, isReadOrNot )
{
   for ( const bool listening : { false, true } ) {
      withEveryFailure( [ listening ]( auto attempt ) {
         Source source;
         Replica replica;
         change( *source.root, 1 );
         replica.read( source.batch() );
         change( *source.root, 2 );
         const auto batch = GetParam() ? source.whole() : source.batch();
         const Vok::Digest before = Vok::treeDigest( *replica.root );
         Counter counter;
         if ( listening ) {
            replica.root->publisher().notifieeIs( &counter );
         }
         if ( attempt( [ & ] { replica.read( batch ); } ) == Outcome::failed ) {
            EXPECT_EQ( Vok::treeDigest( *replica.root ), before );
            EXPECT_EQ( counter.heard, 0U );
            replica.read( batch );
         }
         EXPECT_EQ( counter.heard != 0, listening );
         ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
         change( *source.root, 3 );
         replica.read( source.batch() );
         ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
      } );
   }
}

// A batch that cannot be noted for a reader that stopped is not written: the next one is the whole
// tree, for that reader as well.
TEST( OutOfMemoryStreamTest, aReaderThatStoppedMissesNothing )
{
   withEveryFailure( []( auto attempt ) {
      Source source;
      Replica replica;
      change( *source.root, 1 );
      replica.read( source.batch() );
      Vok::StreamPlace place( source.writer );
      change( *source.root, 2 );
      Vok::NboAttrLog::Out out;
      if ( attempt( [ & ] { source.writer.write( out ); } ) == Outcome::failed ) {
         EXPECT_EQ( out.size(), 0U );
         source.batch();
      }
      place.catchUp( out = {} );
      replica.read( out.bytes() );
      ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
   } );
}

TEST( OutOfMemoryStreamTest, aReaderCatchesUpOrNot )
{
   withEveryFailure( []( auto attempt ) {
      Source source;
      Replica replica;
      change( *source.root, 1 );
      replica.read( source.batch() );
      Vok::StreamPlace place( source.writer );
      for ( std::uint32_t round = 2; round != 5; ++round ) {
         change( *source.root, round );
         source.batch();
      }
      Vok::NboAttrLog::Out out;
      if ( attempt( [ & ] { place.catchUp( out ); } ) == Outcome::failed ) {
         EXPECT_EQ( out.size(), 0U );
         EXPECT_EQ( place.catchUp( out ), Vok::StreamPlace::Told::changes );
      }
      replica.read( out.bytes() );
      ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
   } );
}

INSTANTIATE_TEST_SUITE_P( Stream, OutOfMemoryBatchTest, testing::Bool(),
      []( const auto & test ) { return test.param ? "whole" : "delta"; } );

} // namespace
