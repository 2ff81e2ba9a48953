// Calls from a thread that may not make them, in debug builds.
#include "tests/store/NetWorld.h"

#include <gtest/gtest.h>

#include <thread>

#ifndef NDEBUG

namespace {

using namespace Vok::Store;
using TestSupport::Kind;
using TestSupport::NetWorld;

template< class F > void elsewhere( F f )
{
   std::thread( f ).join();
}

class ThreadDeathTest : public testing::Test {
 protected:
   ThreadDeathTest() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }

   NetWorld world{ Kind::unixSocket };
   Wire wire{ "client" };
};

TEST_F( ThreadDeathTest, aLoopBelongsToTheThreadThatMadeIt )
{
   EXPECT_DEATH( elsewhere( [ & ] { world.loop.run(); } ),
         "Loop::run: assertion .*: called from a thread that may not" );
   EXPECT_DEATH( elsewhere( [ & ] {
      world.loop.runUntil( [] { return true; }, std::chrono::seconds( 1 ) );
   } ),
         "Loop::runUntil" );
   EXPECT_DEATH( elsewhere( [ & ] { world.loop.descriptor(); } ), "Loop::descriptor" );
   EXPECT_DEATH( elsewhere( [ & ] { world.loop.timeout(); } ), "Loop::timeout" );
   EXPECT_DEATH( elsewhere( [ & ] { world.loop.watch( 0, [] {} ); } ), "Loop::watch" );
}

TEST_F( ThreadDeathTest, soDoItsConnectionsAndListeners )
{
   const Connection connection( world.loop, wire, world.address );
   Wire other( "another" );
   EXPECT_DEATH( elsewhere( [ & ] { Connection( world.loop, other, world.address ); } ),
         "Connection::Connection" );
   EXPECT_DEATH( elsewhere( [ & ] { static_cast< void >( connection.connected() ); } ),
         "Connection::connected" );
   EXPECT_DEATH( elsewhere( [ & ] { static_cast< void >( connection.error() ); } ),
         "Connection::error" );
   EXPECT_DEATH( elsewhere( [ & ] { world.listener->connections(); } ), "Listener::connections" );
   EXPECT_DEATH( elsewhere( [ & ] { world.listener.reset(); } ), "Listener::~Listener" );
   EXPECT_DEATH( elsewhere( [ & ] { Listener( world.loop, world.server, world.address ); } ),
         "Listener::Listener" );
}

} // namespace

#endif
