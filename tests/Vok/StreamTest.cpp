// Change streams: what is pending, what a batch costs, its place in the stream, and who is kept
// alive.
#include "tests/Vok/Streams.h"
#include "tests/support/HeapMeter.h"
#include "tests/support/Recorder.h"

#include <gtest/gtest.h>

#include <new>
#include <optional>
#include <type_traits>

namespace {

using TestSupport::Bytes;
using TestSupport::expectEqual;
using TestSupport::Heard;
using TestSupport::Recorder;
using TestSupport::Replica;
using TestSupport::Source;

std::string id( Vok::AttrId attribute )
{
   return std::to_string( attribute );
}

TEST( StreamTest, theWholeTreeIsPendingAtFirst )
{
   Source source;
   source.root->titleIs( "t" );
   EXPECT_TRUE( source.writer.hasChanges() );
   const Bytes first = source.batch();
   EXPECT_FALSE( first.empty() );
   EXPECT_FALSE( source.writer.hasChanges() );
   EXPECT_TRUE( source.batch().empty() ) << "nothing is pending: nothing is written";
   Replica replica;
   replica.read( first );
   EXPECT_EQ( replica.root->title(), "t" );
   EXPECT_EQ( replica.root->name(), "replica" ) << "the root's own name does not travel";
}

TEST( StreamTest, aBatchIsAppended )
{
   Source source;
   Vok::NboAttrLog::Out out;
   out.put( std::uint32_t{ 7 } );
   source.writer.write( out );
   source.root->titleIs( "second" );
   source.writer.write( out );
   Vok::NboAttrLog::In in( out.bytes() );
   EXPECT_EQ( in.get< std::uint32_t >(), 7U );
   Replica replica;
   replica.reader.read( in );
   EXPECT_EQ( replica.root->title(), "none" ) << "one read takes one batch";
   replica.reader.read( in );
   EXPECT_EQ( replica.root->title(), "second" );
   EXPECT_EQ( in.remaining(), 0U );
}

TEST( StreamTest, changesAreCoalesced )
{
   Source source;
   Replica replica;
   replica.read( source.batch() );
   source.root->countIs( 1 );
   const std::size_t once = source.batch().size();
   for ( std::uint32_t i = 2; i != 1000; ++i ) {
      source.root->countIs( i );
   }
   EXPECT_EQ( source.batch().size(), once );
}

TEST( StreamTest, manyChangesAreHeardOnceAndThereAndBackNotAtAll )
{
   Source source;
   Replica replica;
   source.root->namesIs( 1, "one" );
   replica.read( source.batch() );
   Recorder recorder( *replica.root );
   for ( std::uint32_t i = 1; i != 100; ++i ) {
      source.root->countIs( i );
      source.root->namesIs( 1, Corvo::String( std::to_string( i ) ) );
   }
   source.root->enabledIs( true );
   source.root->enabledIs( false );
   source.root->namesIs( 2, "two" );
   source.root->namesDel( 2 );
   replica.read( source.batch() );
   EXPECT_EQ( recorder.take(),
         ( Heard{ id( ::Test::Root::countAttrId ) + " was 0",
               id( ::Test::Root::namesAttrId ) + "[1] was one" } ) );
}

TEST( StreamTest, aBatchKnowsItsPlace )
{
   Source source;
   Replica replica;
   const Bytes first = source.batch();
   source.root->countIs( 1 );
   const Bytes second = source.batch();
   source.root->countIs( 2 );
   const Bytes third = source.batch();
   EXPECT_EQ( replica.refusal( second ),
         "a batch of changes comes before the whole tree of its stream" );
   replica.read( first );
   EXPECT_EQ( replica.refusal( third ), "batch 3 does not follow batch 1, the last one read" );
   EXPECT_EQ( replica.root->count(), 0U );
   replica.read( second );
   EXPECT_EQ( replica.refusal( second ), "batch 2 does not follow batch 2, the last one read" );
   replica.read( third );
   EXPECT_EQ( replica.root->count(), 2U );
   Source other;
   other.batch();
   other.root->countIs( 9 );
   EXPECT_EQ( replica.refusal( other.batch() ),
         "a batch of changes comes before the whole tree of its stream" );
   replica.read( first ); // a whole tree is always taken, even an old one
   EXPECT_EQ( replica.root->count(), 0U );
}

TEST( StreamTest, aRefusedBatchLeavesTheLogWhereItWas )
{
   Source source;
   Replica replica;
   source.batch();
   source.root->countIs( 1 );
   const Bytes delta = source.batch();
   Vok::NboAttrLog::In in( delta );
   EXPECT_THROW( replica.reader.read( in ), Vok::NboAttrLog::Exception );
   EXPECT_EQ( in.remaining(), delta.size() );
}

TEST( StreamTest, resyncAlsoRemoves )
{
   Source source;
   source.root->namesIs( 1, "one" );
   Replica replica;
   replica.root->namesIs( 2, "two" );
   replica.root->wordsIs( "stale" );
   replica.root->treeIs( "stale" )->kidsIs( "below" );
   replica.root->singleIs( "stale" );
   replica.root->titleIs( "stale" );
   replica.read( source.whole() );
   ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
   source.root->countIs( 4 );
   replica.read( source.batch() );
   EXPECT_EQ( replica.root->count(), 4U );
}

TEST( StreamTest, whatWasEmptiedTakesNoBytes )
{
   Source empty;
   Source emptied;
   ::Test::Root & root = *emptied.root;
   root.namesIs( 1, "one" );
   root.namesDel( 1 );
   root.wordsIs( "word" );
   root.wordsDel( "word" );
   root.marksIs( 1 );
   root.marksDel( 1 );
   root.treeIs( "tree" );
   root.treeDel( "tree" );
   EXPECT_EQ( emptied.whole().size(), empty.whole().size() );
}

TEST( StreamTest, pendingIsToldWhenItBegins )
{
   Source source;
   unsigned told = 0;
   source.writer.onPending( [ & ] { ++told; } );
   source.root->countIs( 1 );
   EXPECT_EQ( told, 0U ) << "the whole tree was pending already";
   source.batch();
   source.root->countIs( 2 );
   source.root->countIs( 3 );
   source.root->treeIs( "a" );
   EXPECT_EQ( told, 1U );
   source.batch();
   source.root->tree( "a" )->depthIs( 1 );
   EXPECT_EQ( told, 2U ) << "by a change further down as well";
   EXPECT_TRUE( source.writer.hasChanges() );
}

TEST( StreamTest, nothingIsLeftBehind )
{
   const auto root = ::Test::Root::RootIs( "r" );
   const auto tree = root->treeIs( "a" );
   const auto replica = ::Test::Root::RootIs( "r" );
   const auto count = root->refCount();
   {
      Vok::EntityVokNboAttrLogSa writer( root );
      Vok::NboAttrLog::Out out;
      writer.write( out );
      EXPECT_TRUE( tree->publisher().hasNotifiee() );
      Vok::EntityVokNboAttrLogReader reader( replica );
      Vok::NboAttrLog::In in( out.bytes() );
      reader.read( in );
   }
   EXPECT_FALSE( root->publisher().hasNotifiee() );
   EXPECT_FALSE( tree->publisher().hasNotifiee() );
   EXPECT_EQ( root->refCount(), count );
   EXPECT_EQ( replica->refCount(), 1U );
   EXPECT_EQ( replica->tree( "a" )->refCount(), 2U ) << "its place, and the pointer looked at here";
}

TEST( StreamTest, whatLeftTheTreeIsKeptByNobody )
{
   const std::size_t before = Vok::AllocTracker::liveCount( "Test::Tree" );
   Source source;
   Replica replica;
   source.root->treeIs( "a" )->kidsIs( "b" );
   replica.read( source.batch() );
   EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Tree" ), before + 4 );
   source.root->treeDel( "a" );
   EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Tree" ), before + 2 );
   replica.read( source.batch() );
   EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Tree" ), before );
}

TEST( StreamTest, aFailedWriteLeavesTheLogAsItWasAndLosesNothing )
{
   Source source;
   Replica replica;
   replica.read( source.batch() );
   source.root->titleIs( Corvo::String( std::string( 100000, 'x' ) ) );
   Vok::NboAttrLog::Out out;
   out.put( std::uint8_t{ 1 } );
   {
      const TestSupport::HeapLimit limit( 50000 );
      EXPECT_THROW( source.writer.write( out ), std::bad_alloc );
   }
   EXPECT_EQ( out.size(), 1U );
   EXPECT_TRUE( source.writer.hasChanges() );
   replica.read( source.batch() );
   ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
}

TEST( StreamTest, writersAndReadersStayWhereTheyAre )
{
   static_assert( !std::is_copy_constructible_v< Vok::EntityVokNboAttrLogSa > );
   static_assert( !std::is_move_constructible_v< Vok::EntityVokNboAttrLogSa > );
   static_assert( !std::is_copy_constructible_v< Vok::EntityVokNboAttrLogReader > );
   static_assert( !std::is_move_constructible_v< Vok::EntityVokNboAttrLogReader > );
}

TEST( StreamTest, twoWritersOfOneTreeAreIndependent )
{
   Source source;
   Vok::EntityVokNboAttrLogSa second( source.root );
   Replica first;
   Replica other;
   first.read( source.batch() );
   source.root->treeIs( "a" )->depthIs( 3 );
   first.read( source.batch() );
   Vok::NboAttrLog::Out out;
   second.write( out );
   other.read( out.bytes() );
   ASSERT_NO_FATAL_FAILURE( expectEqual( *first.root, *other.root ) );
}

TEST( StreamTest, aReplicaCanBeStreamedOn )
{
   Source source;
   Replica middle;
   Vok::EntityVokNboAttrLogSa onward( middle.root );
   Replica end;
   TestSupport::Random random( 5 );
   TestSupport::RandomTree tree( *source.root, random );
   for ( unsigned round = 0; round != 30; ++round ) {
      tree.changes( 10 );
      middle.read( source.batch() );
      Vok::NboAttrLog::Out out;
      onward.write( out );
      end.read( out.bytes() );
      ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *end.root ) ) << "round " << round;
   }
}

TEST( StreamTest, namesAndTextsOfAnyLengthArrive )
{
   for ( std::size_t size = 1; size != 300; ++size ) {
      const std::string text( size, static_cast< char >( 'a' + size % 26 ) );
      Source source;
      Replica replica;
      source.root->treeIs( text );
      source.root->titleIs( text );
      replica.read( source.whole() );
      ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) ) << size;
      source.root->titleIs( text + text );
      replica.read( source.batch() );
      ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) ) << size;
   }
}

TEST( StreamTest, aRootOfAnotherTypeOrOtherArgumentsIsRefused )
{
   Source source;
   const auto leaf = ::Test::Leaf::LeafIs( "l" );
   Vok::EntityVokNboAttrLogReader reader( leaf );
   const Bytes whole = source.batch();
   Vok::NboAttrLog::In in( whole );
   try {
      reader.read( in );
      FAIL();
   } catch ( const Vok::NboAttrLog::Exception & e ) {
      EXPECT_STREQ( e.what(),
            "the stream is of a tree of type Test::Root, the replica's root is a Test::Leaf" );
   }
   const auto group = ::Test::Group::GroupIs( "g", 1 );
   const auto other = ::Test::Group::GroupIs( "g", 2 );
   Vok::EntityVokNboAttrLogSa writer( group );
   Vok::EntityVokNboAttrLogReader otherReader( other );
   Vok::NboAttrLog::Out out;
   writer.write( out );
   Vok::NboAttrLog::In groups( out.bytes() );
   try {
      otherReader.read( groups );
      FAIL();
   } catch ( const Vok::NboAttrLog::Exception & e ) {
      EXPECT_STREQ( e.what(), "the replica's root has another seqno than the writer's: 2 and 1" );
   }
}

TEST( StreamTest, aDerivedRootStreamsTheBaseAttributesToo )
{
   const auto special = ::Test::Special::SpecialIs( "s" );
   const auto replica = ::Test::Special::SpecialIs( "t" );
   special->fill();
   special->titleIs( "derived" );
   Vok::EntityVokNboAttrLogSa writer( special );
   Vok::EntityVokNboAttrLogReader reader( replica );
   Vok::NboAttrLog::Out out;
   writer.write( out );
   Vok::NboAttrLog::In in( out.bytes() );
   reader.read( in );
   ASSERT_NO_FATAL_FAILURE( expectEqual( *special, *replica ) );
   EXPECT_TRUE( replica->colours( ::Test::Colour::green ) );
}

TEST( StreamTest, aTreeOfManyLevelsArrives )
{
   constexpr unsigned levels = 100000;
   const auto top = ::Test::Tree::TreeIs( "top" );
   auto at = top;
   for ( unsigned i = 0; i != levels; ++i ) {
      at = at->kidsIs( "k" );
   }
   at->depthIs( levels );
   const auto replica = ::Test::Tree::TreeIs( "top" );
   Vok::EntityVokNboAttrLogSa writer( top );
   Vok::EntityVokNboAttrLogReader reader( replica );
   Vok::NboAttrLog::Out out;
   writer.write( out );
   Vok::NboAttrLog::In in( out.bytes() );
   reader.read( in );
   EXPECT_EQ( Vok::treeDigest( *top ), Vok::treeDigest( *replica ) );
   at->depthIs( 1 );
   out.clear();
   writer.write( out );
   EXPECT_LT( out.size(), 100U ) << "a change far down costs what it is, not its depth";
   Vok::NboAttrLog::In change( out.bytes() );
   reader.read( change );
   EXPECT_EQ( Vok::treeDigest( *top ), Vok::treeDigest( *replica ) );
   top->kidsDelAll();
   out.clear();
   writer.write( out );
   Vok::NboAttrLog::In deletion( out.bytes() );
   reader.read( deletion );
   EXPECT_EQ( replica->kids().size(), 0U );
}

} // namespace
