// Who may do what, how much of it, and what the store tells of itself.
#include "tests/store/World.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using Corvo::Ptr;
using ::Test::Root;
using TestSupport::Mounts;
using TestSupport::settle;
using TestSupport::TestClient;
using TestSupport::TestStore;
using Vok::Store::Event;
using Vok::Store::Limits;
using Vok::Store::MountEntry;
using Vok::Store::Peer;
using Vok::Store::Right;

/// The rights of user 1: `mine/` to read and write, `theirs/` to read. Others may do everything.
class TestAccess final : public Vok::Store::Access {
 public:
   bool allows( const Peer & peer, Right right, std::string_view path ) const override
   {
      if ( peer.user != 1U ) {
         return true;
      }
      return path.starts_with( "mine/" ) ? right != Right::takeOver
                                         : path.starts_with( "theirs/" ) && right == Right::read;
   }
};

class Log final : public Vok::Store::Observer {
 public:
   void happened( const Event & event ) override
   {
      lines.push_back( std::string( name( event.kind ) ) + " path=" + std::string( event.path ) +
            " program=" + std::string( event.program ) + " peer=" + std::string( event.peer ) +
            " text=" + std::string( event.text ) );
   }

   std::vector< std::string > lines;
};

class AccessTest : public testing::Test {
 protected:
   AccessTest()
   {
      one.peer = { "pid 5 user 1", 1, {}, {} };
      two.peer = { "pid 6 user 2", 2, {}, {} };
      one.connect();
      two.connect();
   }

   void settled() { settle( store, { &one, &two } ); }

   TestAccess access;
   TestStore store{ { .access = &access } };
   TestClient one{ store, "one" };
   TestClient two{ store, "two" };
   Mounts mounts;
   Ptr< Root > root = Root::RootIs( "root" );
};

TEST_F( AccessTest, whoMayNotWriteIsRefusedBeforeAnythingIsMade )
{
   const auto mine = one.client.write( "mine/a", root );
   const auto theirs = one.client.write( "theirs/a", root );
   settled();
   EXPECT_TRUE( mine->open() );
   EXPECT_EQ( theirs->refusal(), "user 1 may not write theirs/a" );
   EXPECT_EQ( store.server->mounts().size(), 1U );
}

TEST_F( AccessTest, takingOverIsARightOfItsOwn )
{
   const auto held = two.client.write( "mine/a", root );
   settled();
   const auto taken = one.client.write( "mine/a", Root::RootIs( "other" ), true );
   settled();
   EXPECT_EQ( taken->refusal(), "user 1 may not take mine/a over from two" );
   EXPECT_TRUE( held->open() );
   two.disconnect(); // what has no writer is not taken from one
   const auto again = one.client.write( "mine/a", Root::RootIs( "other" ), true );
   settled();
   EXPECT_TRUE( again->open() );
}

TEST_F( AccessTest, aReaderSeesOnlyWhatItMayRead )
{
   const auto a = two.client.write( "mine/a", root );
   const auto b = two.client.write( "theirs/b", Root::RootIs( "b" ) );
   const auto c = two.client.write( "secret/c", Root::RootIs( "c" ) );
   const auto all = one.client.read( "*/*", mounts );
   const auto exact = one.client.read( "secret/c", mounts );
   settled();
   EXPECT_EQ( mounts.roots.size(), 2U );
   EXPECT_FALSE( mounts.roots.contains( "secret/c" ) );
   EXPECT_EQ( mounts.failures,
         std::vector< std::string >{ "secret/c: user 1 may not read secret/c" } );
   const auto later = two.client.write( "secret/d", Root::RootIs( "d" ) );
   settled();
   EXPECT_EQ( mounts.roots.size(), 2U );
   std::vector< MountEntry > list;
   one.client.list( "*/*", false, [ & ]( const auto & entries ) { list = entries; } );
   settled();
   ASSERT_EQ( list.size(), 2U );
   EXPECT_EQ( list[ 0 ].path, "mine/a" );
   EXPECT_EQ( list[ 1 ].path, "theirs/b" );
}

class LimitsTest : public testing::Test {
 protected:
   /// What a connection that the store ends is told.
   std::string ended( TestClient & client )
   {
      try {
         settle( store, { &client } );
      } catch ( const Vok::Store::ProtocolException & e ) {
         return e.what();
      }
      return "";
   }

   static Limits limits()
   {
      Limits made;
      made.sessions = 3;
      made.sessionsOfUser = 2;
      made.mounts = 2;
      made.channels = 3;
      made.greeting = 100;
      made.batch = 10000;
      made.unfinished = 15000;
      made.tree = 50000;
      return made;
   }

   TestStore store{ { .limits = limits() } };
};

TEST_F( LimitsTest, connectionsAreCountedInAllAndForEachUser )
{
   TestClient a( store, "a" );
   TestClient b( store, "b" );
   TestClient c( store, "c" );
   TestClient d( store, "d" );
   a.peer.user = b.peer.user = c.peer.user = 1;
   a.connect();
   b.connect();
   c.connect();
   EXPECT_EQ( ended( c ),
         "the store ends the connection: user 1 has 2 connections, and gets no more" );
   c.disconnect();
   c.peer = { "CN=c", {}, {}, "c" };
   c.connect();
   EXPECT_EQ( ended( c ), "" );
   d.connect();
   EXPECT_EQ( ended( d ),
         "the store ends the connection: the store has 3 connections, and takes no more" );
   d.disconnect();
   a.disconnect();
   d.connect();
   EXPECT_EQ( ended( d ), "" );
}

TEST_F( LimitsTest, aGreetingIsShort )
{
   TestClient a( store, std::string( 200, 'x' ) );
   a.connect();
   EXPECT_NE( ended( a ).find( "100" ), std::string::npos );
}

TEST_F( LimitsTest, mountsAndChannelsAreCounted )
{
   TestClient a( store, "a" );
   a.connect();
   const auto one = a.client.write( "1", Root::RootIs( "1" ) );
   const auto two = a.client.write( "2", Root::RootIs( "2" ) );
   const auto three = a.client.write( "3", Root::RootIs( "3" ) );
   settle( store, { &a } );
   EXPECT_EQ( three->refusal(), "the store has 2 mounts at most" );
   Mounts mounts;
   const auto fourth = a.client.read( "1", mounts );
   const auto fifth = a.client.read( "2", mounts );
   settle( store, { &a } );
   EXPECT_EQ( mounts.roots.size(), 1U );
   EXPECT_EQ( mounts.failures,
         std::vector< std::string >{ "2: a connection has 3 channels at most" } );
   EXPECT_TRUE( one->open() );
}

TEST_F( LimitsTest, aBatchAndWhatIsBegunAreBounded )
{
   TestClient a( store, "a" );
   a.connect();
   const Ptr< Root > root = Root::RootIs( "1" );
   const auto writing = a.client.write( "1", root );
   settle( store, { &a } );
   for ( std::uint32_t i = 0; i != 1000; ++i ) {
      root->namesIs( i, "much text for a member" );
   }
   EXPECT_EQ( ended( a ), "the store ends the connection: a batch is longer than 10000 bytes" );

   TestClient b( store, "b" );
   b.connect();
   for ( std::uint32_t channel = 1; channel != 3; ++channel ) {
      b.wire.send( Vok::Store::OpenWriter{
            channel, std::to_string( channel ), "Test::Root", true } );
      const Vok::Store::Bytes half( 9000 );
      b.wire.send( Vok::Store::BatchPiece{ channel, 0, false, half } );
   }
   EXPECT_EQ( ended( b ),
         "the store ends the connection: the batches that a connection has begun may have 15000 "
         "bytes in all" );
}

TEST_F( LimitsTest, aTreeIsBounded )
{
   TestClient a( store, "a" );
   TestClient b( store, "b" );
   a.connect();
   b.connect();
   const Ptr< Root > root = Root::RootIs( "1" );
   const auto writing = a.client.write( "1", root );
   Mounts mounts;
   const auto reading = b.client.read( "1", mounts );
   std::uint32_t members = 0;
   while ( writing->refusal().empty() && members != 10000 ) {
      root->namesIs( ++members, "much text for a member" );
      settle( store, { &a, &b } );
   }
   EXPECT_EQ( writing->refusal(), "the tree at 1 has more than 50000 bytes" );
   EXPECT_GE( members, 50000U / 40 );
   EXPECT_LE( members, 75000U / 25 );
   EXPECT_EQ( Vok::treeDigest( *mounts.roots.at( "1" ) ), Vok::treeDigest( *root ) );
   EXPECT_TRUE( mounts.states[ "1" ].stale );
   // Changes of the same members are as many as they like.
   const Ptr< Root > small = Root::RootIs( "1" );
   const auto next = a.client.write( "1", small );
   for ( std::uint32_t i = 0; i != 10000; ++i ) {
      small->namesIs( i % 10, std::to_string( i ) );
      settle( store, { &a } );
   }
   EXPECT_TRUE( next->settled() );
}

TEST( ObserverTest, isToldWhatHappens )
{
   Log log;
   TestStore store( { .observer = &log } );
   TestClient one( store, "one" );
   one.peer.name = "peer 1";
   one.connect();
   const auto writing = one.client.write( "a", Root::RootIs( "a" ) );
   settle( store, { &one } );
   TestClient two( store, "two" );
   two.connect();
   const auto no = two.client.write( "a", Root::RootIs( "b" ) );
   settle( store, { &one, &two } );
   const auto taken = two.client.write( "a", Root::RootIs( "b" ), true );
   settle( store, { &one, &two } );
   two.disconnect();
   const std::vector< std::string > expected = {
      "connected path= program= peer=peer 1 text=",
      "greeted path= program=one peer=peer 1 text=",
      "mounted path=a program= peer= text=Test::Root",
      "writerCame path=a program=one peer=peer 1 text=",
      "connected path= program= peer= text=",
      "greeted path= program=two peer= text=",
      "refused path=a program=two peer= text=a is written by one",
      "takenOver path=a program=two peer=peer 1 text=one",
      "refused path=a program=one peer=peer 1 text=a is taken over by two",
      "writerCame path=a program=two peer= text=",
      "writerGone path=a program=two peer= text=",
      "disconnected path= program=two peer= text=",
   };
   EXPECT_EQ( log.lines, expected );
}

/// A reader that had something and gets all of it is worth a line that says why.
TEST( ObserverTest, isToldWhyAWholeTreeIsSent )
{
   Log log;
   TestStore store( { .observer = &log } );
   TestClient one( store, "one" );
   TestClient two( store, "two" );
   one.connect();
   two.connect();
   const Ptr< Root > root = Root::RootIs( "a" );
   const auto writing = one.client.write( "a", root );
   Mounts mounts;
   const auto reading = two.client.read( "a", mounts );
   settle( store, { &one, &two } );
   one.disconnect();
   two.disconnect();
   store.restart();
   one.connect();
   settle( store, { &one, &two } );
   log.lines.clear();
   two.connect();
   settle( store, { &one, &two } );
   ASSERT_EQ( log.lines.size(), 3U );
   EXPECT_EQ( log.lines.back(), "wholeTree path=a program=two peer= text=it follows another "
                                "stream: the store or the mount began anew" );
}

TEST( ListTest, tellsAllThatIsKnownOfAMount )
{
   TestStore store;
   TestClient one( store, "one" );
   TestClient two( store, "two" );
   one.connect();
   two.connect();
   const Ptr< Root > root = Root::RootIs( "a" );
   const auto writing = one.client.write( "a", root );
   Mounts mounts;
   const auto reading = two.client.read( "a", mounts );
   settle( store, { &one, &two } );
   root->midIs( 7 );
   settle( store, { &one, &two } );
   std::vector< MountEntry > list;
   const auto take = [ & ]( const std::vector< MountEntry > & entries ) { list = entries; };
   two.client.list( "*", true, take );
   settle( store, { &one, &two } );
   ASSERT_EQ( list.size(), 1U );
   const MountEntry & a = list.front();
   EXPECT_EQ( a.path, "a" );
   EXPECT_EQ( a.type, "Test::Root" );
   EXPECT_EQ( a.writer, "one" );
   EXPECT_FALSE( a.stale );
   EXPECT_EQ( a.since, 1000U );
   EXPECT_FALSE( a.kept );
   EXPECT_EQ( a.readers, 1U );
   EXPECT_EQ( a.batchesIn, 2U );
   EXPECT_EQ( a.batchesOut, 2U );
   EXPECT_EQ( a.differences, 0U );
   EXPECT_EQ( a.wholeTrees, 1U );
   EXPECT_GT( a.bytesIn, 0U );
   EXPECT_GT( a.bytesOut, 0U );
   EXPECT_GT( a.bytes, 0U );
   EXPECT_EQ( Vok::Digest( a.digestHigh, a.digestLow ), Vok::treeDigest( *root ) );
   EXPECT_THROW( two.client.list( "a//b", false, take ), Vok::Store::PathException );

   list.clear();
   two.disconnect();
   two.client.list( "*", false, take ); // is asked with the next connection
   two.connect();
   settle( store, { &one, &two } );
   ASSERT_EQ( list.size(), 1U );
   EXPECT_EQ( list.front().bytes, 0U );
}

/// More than a frame has room for.
TEST( ListTest, mayBeLong )
{
   TestStore store( { .limits = { .channels = 5000 } } );
   TestClient one( store, "one" );
   one.connect();
   std::vector< std::unique_ptr< Vok::Store::Writing > > writings;
   const Ptr< Root > root = Root::RootIs( "a" );
   for ( int i = 0; i != 2500; ++i ) {
      writings.push_back( one.client.write( "a/" + std::to_string( 10000 + i ), root ) );
   }
   std::vector< MountEntry > list;
   one.client.list( "a/*", false, [ & ]( const auto & entries ) { list = entries; } );
   settle( store, { &one } );
   ASSERT_EQ( list.size(), 2500U );
   EXPECT_EQ( list.front().path, "a/10000" );
   EXPECT_EQ( list.back().path, "a/12499" );
}

} // namespace
