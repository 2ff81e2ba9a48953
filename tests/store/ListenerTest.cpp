// Where a store may listen, and what a listener does when connections are too many or too silent.
#include "tests/store/NetWorld.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

namespace {

using namespace Vok::Store;
using TestSupport::Kind;
using TestSupport::Mounts;
using TestSupport::NetWorld;
using TestSupport::RawClient;

std::string refusedAt( const std::string & address )
{
   const SystemClock clock;
   Loop loop;
   Server server( clock );
   try {
      const Listener listener( loop, server, Address::parse( address ) );
   } catch ( const std::invalid_argument & e ) {
      return e.what();
   }
   return "";
}

TEST( ListenerTest, tcpWithoutTlsIsForLoopback )
{
   for ( const char * const place : { "0.0.0.0", "192.0.2.1", "[::]", "[2001:db8::1]",
               "[::ffff:192.0.2.1]" } ) {
      const std::string address = std::string( "tcp:" ) + place + ":4040";
      EXPECT_EQ( refusedAt( address ),
            address + " cannot be listened at: TCP without TLS is for loopback addresses" );
   }
   EXPECT_EQ( refusedAt( "tcp:127.0.0.2:0" ), "" );
   EXPECT_EQ( refusedAt( "tls:127.0.0.1:4041" ), "tls:127.0.0.1:4041 needs a TLS context" );
}

TEST( ListenerTest, aSocketThatIsListenedAtIsNotReplacedAndOneThatIsNotIs )
{
   NetWorld world( Kind::unixSocket );
   const std::string path = world.address.place;
   try {
      const Listener second( world.loop, world.server, world.address );
      FAIL() << "two listeners at a socket";
   } catch ( const std::system_error & e ) {
      EXPECT_EQ( e.code(), std::errc::address_in_use );
      EXPECT_NE( std::string( e.what() ).find( world.address.text() ), std::string::npos );
   }
   world.listener.reset();
   EXPECT_FALSE( std::filesystem::exists( path ) );
   // What a process leaves that was killed.
   const int left = socket( AF_UNIX, SOCK_STREAM, 0 );
   sockaddr_un name{};
   name.sun_family = AF_UNIX;
   path.copy( name.sun_path, sizeof name.sun_path - 1 );
   ASSERT_EQ( bind( left, reinterpret_cast< sockaddr * >( &name ), sizeof name ), 0 );
   close( left );
   ASSERT_TRUE( std::filesystem::exists( path ) );
   EXPECT_NO_THROW( Listener( world.loop, world.server, world.address ) );
}

/// A writer at one of a store's listeners goes: readers at the other are told, though nothing
/// happens at theirs.
TEST( ListenerTest, listenersOfOneStoreTellEachOthersConnections )
{
   const SystemClock clock;
   Loop loop;
   Server server( clock );
   Listener first( loop, server, Address::parse( "tcp:127.0.0.1:0" ) );
   Listener second( loop, server, Address::parse( "tcp:127.0.0.1:0" ) );
   Wire writerWire( "writer" );
   Wire readerWire( "reader" );
   Client writer( writerWire );
   Client reader( readerWire );
   Mounts mounts;
   const auto writing = writer.write( "a", ::Test::Root::RootIs( "root" ) );
   const auto reading = reader.read( "a", mounts );
   for ( const bool other : { false, true } ) {
      auto one = std::make_unique< Connection >(
            loop, writerWire, ( other ? first : second ).address() );
      const Connection two( loop, readerWire, ( other ? second : first ).address() );
      const auto staleIs = [ & ]( bool stale ) {
         const auto is = [ & ] {
            return mounts.states[ "a" ].stale == stale && mounts.roots.contains( "a" ) &&
                  two.connected();
         };
         return loop.runUntil( is, std::chrono::seconds( 20 ) );
      };
      ASSERT_TRUE( staleIs( false ) );
      one.reset();
      EXPECT_TRUE( staleIs( true ) );
   }
}

/// While it lives, this process gets no new descriptor.
class NoDescriptors {
 public:
   NoDescriptors()
   {
      getrlimit( RLIMIT_NOFILE, &before_ );
      rlimit now = before_;
      now.rlim_cur = 1;
      setrlimit( RLIMIT_NOFILE, &now );
   }
   NoDescriptors( const NoDescriptors & ) = delete;
   NoDescriptors & operator=( const NoDescriptors & ) = delete;
   ~NoDescriptors() { setrlimit( RLIMIT_NOFILE, &before_ ); }

 private:
   rlimit before_{};
};

/// A connection for which there is no descriptor waits, and does not keep the loop busy.
TEST( ListenerTest, waitsForDescriptors )
{
#if defined( __clang__ )
#if __has_feature( undefined_behavior_sanitizer )
   GTEST_SKIP() << "the sanitizer takes descriptors to look whether memory is there";
#endif
#endif
   NetWorld world( Kind::tcp );
   RawClient & one = world.raw();
   one.send( TestSupport::greeting() );
   unsigned turns = 0;
   {
      const NoDescriptors none;
      world.loop.runUntil(
            [ & ] {
               ++turns;
               return false;
            },
            std::chrono::milliseconds( 1000 ) );
   }
   EXPECT_EQ( world.listener->connections(), 0U );
   EXPECT_LT( turns, 50U );
   EXPECT_TRUE( world.until( [ & ] { return one.has< Welcome >(); } ) );
}

} // namespace
