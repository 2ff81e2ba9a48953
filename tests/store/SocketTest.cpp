// The store over real sockets of each kind: connections that come, go and come again, and a client
// that is driven by a loop of its own.
#include "tests/store/NetWorld.h"

#include <gtest/gtest.h>

#include <poll.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <thread>

namespace {

using namespace Vok::Store;
using Corvo::Ptr;
using std::chrono::seconds;
using ::Test::Root;
using TestSupport::Kind;
using TestSupport::Mounts;
using TestSupport::NetWorld;

class SocketTest : public testing::TestWithParam< Kind > {
 protected:
   bool until( const std::function< bool() > & done )
   {
      return world.loop.runUntil( done, seconds( 60 ) );
   }
   bool same( const std::string & path, const Root & tree )
   {
      return until( [ & ] {
         if ( !mounts.roots.contains( path ) ) {
            return false;
         }
         const auto & replica = static_cast< const Root & >( *mounts.roots[ path ] );
         return replica.names().size() == tree.names().size() && // quick
               Vok::treeDigest( replica ) == Vok::treeDigest( tree );
      } );
   }

   void listen()
   {
      world.listener = std::make_unique< Listener >( world.loop, world.server, address,
            world.trust ? &world.trust->store : nullptr );
   }

   NetWorld world{ GetParam() };
   const Address address = world.address;
   const TlsContext * const tls = world.tls();
   Mounts mounts;
   Wire writerWire{ "writer" };
   Wire readerWire{ "reader" };
   Client writer{ writerWire };
   Client reader{ readerWire };
   Ptr< Root > root = Root::RootIs( "root" );
};

TEST_P( SocketTest, aReaderFollowsAWriter )
{
   const Connection one( world.loop, writerWire, address, tls );
   const Connection two( world.loop, readerWire, address, tls );
   const auto writing = writer.write( "a", root );
   const auto reading = reader.read( "a", mounts );
   root->midIs( 7 );
   ASSERT_TRUE( same( "a", *root ) );
   EXPECT_EQ( world.listener->connections(), 2U );
   for ( std::uint32_t i = 0; i != 100000; ++i ) {
      root->namesIs( i, "a member of a map that takes more than a socket does at once" );
   }
   ASSERT_TRUE( same( "a", *root ) );
   EXPECT_TRUE( until( [ & ] { return writing->settled(); } ) );
}

TEST_P( SocketTest, clientsOutliveTheStore )
{
   Connection one( world.loop, writerWire, address, tls );
   Connection two( world.loop, readerWire, address, tls );
   const auto writing = writer.write( "a", root );
   const auto reading = reader.read( "a", mounts );
   ASSERT_TRUE( same( "a", *root ) );
   world.listener.reset();
   ASSERT_TRUE( until( [ & ] { return !one.connected() && !two.connected(); } ) );
   EXPECT_EQ( one.error(), "the other side has closed the connection" );
   root->midIs( 8 );
   listen();
   ASSERT_TRUE( same( "a", *root ) );
   EXPECT_TRUE( one.connected() );
}

TEST_P( SocketTest, aClientMayComeBeforeTheStore )
{
   world.listener.reset();
   const Connection one( world.loop, writerWire, address, tls );
   const auto writing = writer.write( "a", root );
   ASSERT_TRUE( until( [ & ] { return !one.error().empty(); } ) );
   EXPECT_FALSE( one.connected() );
   listen();
   EXPECT_TRUE( until( [ & ] { return writing->settled(); } ) );
}

TEST_P( SocketTest, aMountIsStaleOnceItsWriterHasGone )
{
   auto one = std::make_unique< Connection >( world.loop, writerWire, address, tls );
   const Connection two( world.loop, readerWire, address, tls );
   const auto writing = writer.write( "a", root );
   const auto reading = reader.read( "a", mounts );
   ASSERT_TRUE( same( "a", *root ) );
   one.reset();
   EXPECT_TRUE( until( [ & ] { return mounts.states[ "a" ].stale; } ) );
}

/// What runs the loop is a loop of the program's own, which knows a descriptor and a timeout. The
/// store has another thread, and the tree is more than a socket takes at once.
TEST_P( SocketTest, aDescriptorAndATimeoutDriveIt )
{
   std::promise< const NetWorld * > begun;
   std::atomic< bool > done = false;
   std::thread thread( [ & ] {
      NetWorld other( GetParam() );
      begun.set_value( &other );
      other.until( [ & ] { return done.load(); } );
   } );
   const NetWorld & other = *begun.get_future().get();
   Loop own;
   auto one = std::make_unique< Connection >( own, writerWire, other.address, other.tls() );
   const auto writing = writer.write( "a", root );
   for ( std::uint32_t i = 0; i != 100000; ++i ) {
      root->namesIs( i, "a member of a map that takes more than a socket does at once" );
   }
   while ( !writing->settled() ) {
      own.run();
      // Nothing here is due later than when it comes, but for what never happens.
      pollfd wait{ own.descriptor(), POLLIN, 0 };
      const bool now = own.timeout() == std::chrono::milliseconds( 0 );
      const int woken = writing->settled() ? 1 : poll( &wait, 1, now ? 0 : 60000 );
      if ( woken == 0 && !now ) {
         ADD_FAILURE() << "not woken";
         break;
      }
   }
   one.reset();
   done = true;
   thread.join();
}

TEST_P( SocketTest, whatANotifieeThrowsComesOutOfTheLoop )
{
   struct Thrower : Mounts {
      void mounted( const std::string &, const Ptr< Vok::Entity > & ) override
      {
         throw std::runtime_error( "thrown" );
      }
   } thrower;
   const Connection one( world.loop, writerWire, address, tls );
   const Connection two( world.loop, readerWire, address, tls );
   const auto writing = writer.write( "a", root );
   const auto reading = reader.read( "a", thrower );
   EXPECT_THROW( until( [] { return false; } ), std::runtime_error );
   const auto again = reader.read( "*", mounts );
   EXPECT_TRUE( same( "a", *root ) );
}

INSTANTIATE_TEST_SUITE_P( Kinds, SocketTest, TestSupport::eachKind, TestSupport::nameOf );

} // namespace
