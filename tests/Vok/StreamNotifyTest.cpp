// What the notifiees of a replica hear of a batch, and what they may do meanwhile.
#include "tests/Vok/Streams.h"
#include "tests/support/Recorder.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace {

using Root = ::Test::Root;
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

/// A source and a replica that has followed it so far.
struct StreamNotifyTest : testing::Test {
   StreamNotifyTest()
   {
      source.root->treeIs( "a" )->depthIs( 1 );
      source.root->treeIs( "b" );
      source.root->singleIs( "s" );
      source.root->namesIs( 1, "one" );
      source.root->slotsIs( ::Test::Label( "x" ), 3 );
      replica.read( source.batch() );
   }

   void send() { replica.read( source.batch() ); }

   Source source;
   Replica replica;
};

TEST_F( StreamNotifyTest, unchangedEntitiesKeepTheirIdentity )
{
   const auto a = replica.root->tree( "a" );
   const auto single = replica.root->single();
   const auto only = replica.root->only();
   Recorder root( *replica.root );
   Recorder tree( *a );
   replica.read( source.whole() );
   EXPECT_EQ( replica.root->tree( "a" ), a );
   Source again; // another process with the same contents
   again.root->treeIs( "a" )->depthIs( 2 );
   again.root->treeIs( "b" );
   again.root->singleIs( "s" );
   again.root->namesIs( 1, "one" );
   again.root->slotsIs( ::Test::Label( "x" ), 3 );
   replica.read( again.batch() );
   EXPECT_EQ( replica.root->tree( "a" ), a );
   EXPECT_EQ( replica.root->single(), single );
   EXPECT_EQ( replica.root->only(), only );
   EXPECT_EQ( root.take(), Heard{} );
   EXPECT_EQ( tree.take(), Heard{ id( ::Test::Tree::depthAttrId ) + " was 1" } );
}

TEST_F( StreamNotifyTest, aChildMadeAgainIsANewOne )
{
   const auto a = replica.root->tree( "a" );
   const auto single = replica.root->single();
   Recorder root( *replica.root );
   source.root->treeDel( "a" );
   source.root->treeIs( "a" )->depthIs( 1 );
   source.root->singleDel();
   source.root->singleIs( "s" );
   send();
   EXPECT_NE( replica.root->tree( "a" ), a );
   EXPECT_NE( replica.root->single(), single );
   EXPECT_EQ( a->parent(), nullptr );
   EXPECT_EQ( single->parent(), nullptr );
   const std::string tree = id( Root::treeAttrId ) + "[a]";
   EXPECT_EQ( root.take(),
         ( Heard{ tree + " was a", tree, id( Root::singleAttrId ) + " was s" } ) );
   ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
}

TEST_F( StreamNotifyTest, aChildMadeAgainWithOtherArgumentsIsANewOne )
{
   source.root->groupsIs( "first", 4 )->seenIs( true );
   send();
   const auto group = replica.root->groups( 4 );
   Recorder root( *replica.root );
   source.root->groupsDel( 4 );
   source.root->groupsIs( "second", 4 );
   send();
   EXPECT_NE( replica.root->groups( 4 ), group );
   EXPECT_EQ( replica.root->groups( 4 )->name(), "second" );
   EXPECT_FALSE( replica.root->groups( 4 )->seen() );
   const std::string groups = id( Root::groupsAttrId ) + "[4]";
   EXPECT_EQ( root.take(), ( Heard{ groups + " was first", groups } ) );
}

TEST_F( StreamNotifyTest, aSettableArgumentIsAChangeOfTheChild )
{
   const auto slot = replica.root->slots( ::Test::Label( "x" ) );
   Recorder heard( *slot );
   source.root->slotsIs( ::Test::Label( "x" ), 5 );
   send();
   EXPECT_EQ( replica.root->slots( ::Test::Label( "x" ) ), slot );
   EXPECT_EQ( heard.take(), Heard{ id( ::Test::Slot::weightAttrId ) + " was 3" } );
}

TEST_F( StreamNotifyTest, aKeyMovesBetweenParents )
{
   source.root->tree( "a" )->kidsIs( "k" )->depthIs( 7 );
   send();
   const auto there = replica.root->tree( "a" )->kids( "k" );
   Recorder a( *replica.root->tree( "a" ) );
   Recorder b( *replica.root->tree( "b" ) );
   source.root->tree( "a" )->kidsDel( "k" );
   source.root->tree( "b" )->kidsIs( "k" )->depthIs( 7 );
   send();
   EXPECT_EQ( there->parent(), nullptr );
   EXPECT_NE( replica.root->tree( "b" )->kids( "k" ), there );
   const std::string kids = id( ::Test::Tree::kidsAttrId ) + "[k]";
   EXPECT_EQ( a.take(), Heard{ kids + " was k" } );
   EXPECT_EQ( b.take(), Heard{ kids } );
   ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
}

TEST_F( StreamNotifyTest, theWholeBatchIsInPlaceWhenTheFirstIsTold )
{
   Recorder recorder( *replica.root );
   bool complete = false;
   recorder.then = [ & ]( const Corvo::Change & change ) {
      complete = replica.root->enabled() && replica.root->names( 2 ) == "two" &&
            replica.root->tree( "a" )->depth() == 9;
      EXPECT_EQ( &change.entity, replica.root.get() );
      recorder.then = nullptr;
   };
   source.root->namesIs( 2, "two" );
   source.root->tree( "a" )->depthIs( 9 );
   source.root->enabledIs( true );
   send();
   EXPECT_TRUE( complete );
   EXPECT_EQ( recorder.take().size(), 2U );
}

TEST_F( StreamNotifyTest, aNotifieeDetachesItselfAndDestroysAnother )
{
   Recorder first( *replica.root );
   auto second = std::make_unique< Recorder >( *replica.root );
   Recorder third( *replica.root );
   first.then = [ & ]( const Corvo::Change & ) {
      replica.root->publisher().notifieeDel( &first );
      second.reset();
   };
   source.root->enabledIs( true );
   source.root->countIs( 1 );
   send();
   EXPECT_EQ( first.take().size(), 1U );
   EXPECT_EQ( third.take().size(), 2U );
}

TEST_F( StreamNotifyTest, whoAttachesMeanwhileHearsTheNextBatch )
{
   Recorder late;
   Recorder first( *replica.root );
   first.then = [ & ]( const Corvo::Change & ) { replica.root->publisher().notifieeIs( &late ); };
   source.root->enabledIs( true );
   source.root->countIs( 1 );
   send();
   EXPECT_EQ( late.take(), Heard{} );
   source.root->countIs( 2 );
   send();
   EXPECT_EQ( late.take(), Heard{ id( Root::countAttrId ) + " was 1" } );
}

TEST_F( StreamNotifyTest, aNotifieesOwnChangeHoldsUntilTheWriterSendsThatPlace )
{
   Recorder recorder( *replica.root );
   recorder.then = [ & ]( const Corvo::Change & change ) {
      if ( change.attrId == Root::enabledAttrId ) {
         recorder.then = nullptr;
         replica.root->titleIs( "mine" );
         replica.root->countIs( 77 );
         replica.root->treeDel( "b" );
      }
   };
   source.root->enabledIs( true );
   source.root->countIs( 1 );
   send();
   EXPECT_EQ( replica.root->title(), "mine" );
   EXPECT_EQ( replica.root->count(), 77U );
   source.root->midIs( 3 );
   send();
   EXPECT_EQ( replica.root->mid(), 3U );
   EXPECT_EQ( replica.root->title(), "mine" );
   source.root->countIs( 2 );
   source.root->tree( "b" )->depthIs( 5 ); // the replica has no b any more: nothing to be changed
   send();
   EXPECT_EQ( replica.root->count(), 2U );
   EXPECT_EQ( replica.root->tree( "b" ), nullptr );
   replica.read( source.whole() );
   ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
}

TEST_F( StreamNotifyTest, aNotifieeDeletesWhatTheSameBatchChanged )
{
   Recorder recorder( *replica.root );
   Recorder tree( *replica.root->tree( "a" ) );
   recorder.then = [ & ]( const Corvo::Change & ) {
      recorder.then = nullptr;
      replica.root->treeDelAll();
      replica.root->singleDel();
   };
   source.root->enabledIs( true );
   source.root->tree( "a" )->depthIs( 6 );
   source.root->single()->activeIs( true );
   send();
   EXPECT_EQ( replica.root->tree().size(), 0U );
   EXPECT_EQ( tree.take(), Heard{ id( ::Test::Tree::depthAttrId ) + " was 1" } );
   replica.read( source.whole() );
   ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
}

TEST_F( StreamNotifyTest, anExceptionComesOutWhenAllIsAppliedAndTold )
{
   Recorder first( *replica.root );
   Recorder second( *replica.root );
   unsigned thrown = 0;
   first.then = [ & ]( const Corvo::Change & ) {
      throw std::runtime_error( std::to_string( ++thrown ) );
   };
   source.root->enabledIs( true );
   source.root->countIs( 1 );
   source.root->tree( "a" )->depthIs( 6 );
   const Bytes batch = source.batch();
   Vok::NboAttrLog::In in( batch );
   try {
      replica.reader.read( in );
      FAIL();
   } catch ( const std::runtime_error & e ) {
      EXPECT_STREQ( e.what(), "1" ) << "the first, where there are several";
   }
   EXPECT_EQ( in.remaining(), 0U );
   EXPECT_EQ( second.take().size(), 2U );
   ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
   first.then = nullptr;
   source.root->countIs( 2 );
   send();
   EXPECT_EQ( replica.root->count(), 2U ) << "the stream goes on";
}

TEST_F( StreamNotifyTest, aNotifieeMayDestroyTheReaderAndDropTheReplica )
{
   auto other = std::make_unique< Replica >();
   other->read( source.whole() );
   Recorder first( *other->root );
   Recorder second( *other->root );
   first.then = [ & ]( const Corvo::Change & ) { other.reset(); };
   source.root->enabledIs( true );
   source.root->countIs( 1 );
   const Bytes batch = source.batch();
   Vok::NboAttrLog::In in( batch );
   other->reader.read( in );
   EXPECT_EQ( other, nullptr );
   EXPECT_EQ( second.take().size(), 2U ) << "the entity lives until all are told";
}

TEST_F( StreamNotifyTest, aSetAndAMapWithTheKeyInTheValueAreHeardByKey )
{
   source.root->plainsIs( ::Test::Plain( ::Test::Colour::blue, 5, 0, 0.5 ) );
   source.root->marksIs( 3 );
   send();
   Recorder recorder( *replica.root );
   source.root->plainsIs( ::Test::Plain( ::Test::Colour::blue, 6, 0, 0.5 ) );
   source.root->marksDel( 3 );
   source.root->marksIs( 4 );
   send();
   EXPECT_EQ( recorder.take(),
         ( Heard{ id( Root::plainsAttrId ) +
                     "[blue] was Test::Plain[colour=blue,big=5,small=0,ratio=0.5]",
               id( Root::marksAttrId ) + "[3]", id( Root::marksAttrId ) + "[4]" } ) );
}

} // namespace
