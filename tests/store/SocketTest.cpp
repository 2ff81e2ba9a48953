// The store over real sockets: addresses, connections that come, go and come again, and a client
// that is driven by a loop of its own.
#include "tests/store/World.h"

#include "store/net/Connection.h"
#include "store/net/Listener.h"

#include <gtest/gtest.h>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

namespace {

using namespace Vok::Store;
using Corvo::Ptr;
using std::chrono::seconds;
using ::Test::Root;
using TestSupport::Mounts;

TEST( AddressTest, textsComeBack )
{
   for ( const char * const text : { "unix:/run/flowtrackd.sock", "tcp:127.0.0.1:4040",
               "tcp:[::1]:0", "tcp:0.0.0.0:65535" } ) {
      EXPECT_EQ( Address::parse( text ).text(), text );
   }
}

TEST( AddressTest, whatIsNoAddressIsRefused )
{
   for ( const char * const text : { "", "unix:", "unix:relative", "tcp:", "tcp:localhost:1",
               "tcp:127.0.0.1", "tcp:127.0.0.1:", "tcp:127.0.0.1:65536", "tcp:127.0.0.1:1x",
               "/run/socket" } ) {
      EXPECT_THROW( Address::parse( text ), AddressException ) << text;
   }
   EXPECT_THROW( Address::parse( "unix:/" + std::string( 107, 'x' ) ), AddressException );
   EXPECT_NO_THROW( Address::parse( "unix:/" + std::string( 106, 'x' ) ) );
}

/// A folder that goes with the test.
class Folder {
 public:
   Folder()
   {
      std::string name = std::filesystem::temp_directory_path() / "storeXXXXXX";
      path_ = mkdtemp( name.data() );
   }
   ~Folder() { std::filesystem::remove_all( path_ ); }
   std::string socket() const { return "unix:" + path_ + "/socket"; }

 private:
   std::string path_;
};

/// Each kind of address.
class SocketTest : public testing::TestWithParam< bool > {
 protected:
   bool until( const std::function< bool() > & done )
   {
      return loop.runUntil( done, seconds( 20 ) );
   }
   bool same( const std::string & path, const Root & tree )
   {
      return until( [ & ] {
         return mounts.roots.contains( path ) &&
               Vok::treeDigest( *mounts.roots[ path ] ) == Vok::treeDigest( tree );
      } );
   }

   Folder folder;
   SystemClock clock;
   Loop loop;
   Mounts mounts;
   Server server{ clock };
   std::unique_ptr< Listener > listener = std::make_unique< Listener >(
         loop, server, Address::parse( GetParam() ? folder.socket() : "tcp:127.0.0.1:0" ) );
   const Address address = listener->address();
   Client writer{ "writer" };
   Client reader{ "reader" };
   Ptr< Root > root = Root::RootIs( "root" );
};

TEST_P( SocketTest, aReaderFollowsAWriter )
{
   const Connection one( loop, writer, address );
   const Connection two( loop, reader, address );
   const auto writing = writer.write( "a", root );
   const auto reading = reader.read( "a", mounts );
   root->midIs( 7 );
   ASSERT_TRUE( same( "a", *root ) );
   EXPECT_EQ( listener->connections(), 2U );
   for ( std::uint32_t i = 0; i != 100000; ++i ) {
      root->namesIs( i, "a member of a map that takes more than a socket does at once" );
   }
   ASSERT_TRUE( same( "a", *root ) );
   EXPECT_TRUE( until( [ & ] { return writing->settled(); } ) );
}

TEST_P( SocketTest, clientsOutliveTheStore )
{
   Connection one( loop, writer, address );
   Connection two( loop, reader, address );
   const auto writing = writer.write( "a", root );
   const auto reading = reader.read( "a", mounts );
   ASSERT_TRUE( same( "a", *root ) );
   listener.reset();
   ASSERT_TRUE( until( [ & ] { return !one.connected() && !two.connected(); } ) );
   EXPECT_EQ( one.error(), "the other side has closed the connection" );
   root->midIs( 8 );
   listener = std::make_unique< Listener >( loop, server, address );
   ASSERT_TRUE( same( "a", *root ) );
   EXPECT_TRUE( one.connected() );
}

TEST_P( SocketTest, aClientMayComeBeforeTheStore )
{
   listener.reset();
   const Connection one( loop, writer, address );
   const auto writing = writer.write( "a", root );
   ASSERT_TRUE( until( [ & ] { return !one.error().empty(); } ) );
   EXPECT_FALSE( one.connected() );
   listener = std::make_unique< Listener >( loop, server, address );
   EXPECT_TRUE( until( [ & ] { return writing->settled(); } ) );
}

TEST_P( SocketTest, aMountIsStaleOnceItsWriterHasGone )
{
   auto one = std::make_unique< Connection >( loop, writer, address );
   const Connection two( loop, reader, address );
   const auto writing = writer.write( "a", root );
   const auto reading = reader.read( "a", mounts );
   ASSERT_TRUE( same( "a", *root ) );
   one.reset();
   EXPECT_TRUE( until( [ & ] { return mounts.states[ "a" ].stale; } ) );
}

/// What runs the loop is a loop of the program's own.
TEST_P( SocketTest, aDescriptorAndATimeoutDriveIt )
{
   Loop own;
   const Connection one( own, writer, address );
   const auto writing = writer.write( "a", root );
   const auto deadline = std::chrono::steady_clock::now() + seconds( 20 );
   while ( !writing->settled() ) {
      ASSERT_LT( std::chrono::steady_clock::now(), deadline );
      loop.run(); // the store's
      own.run();
      pollfd wait{ own.descriptor(), POLLIN, 0 };
      const auto most = own.timeout() == Loop::never ? 5 : std::min( 5L, own.timeout().count() );
      poll( &wait, 1, static_cast< int >( most ) );
   }
}

TEST_P( SocketTest, whatANotifieeThrowsComesOutOfTheLoop )
{
   struct Thrower : Mounts {
      void mounted( const std::string &, const Ptr< Vok::Entity > & ) override
      {
         throw std::runtime_error( "thrown" );
      }
   } thrower;
   const Connection one( loop, writer, address );
   const Connection two( loop, reader, address );
   const auto writing = writer.write( "a", root );
   const auto reading = reader.read( "a", thrower );
   EXPECT_THROW( until( [] { return false; } ), std::runtime_error );
   const auto again = reader.read( "*", mounts );
   EXPECT_TRUE( same( "a", *root ) );
}

INSTANTIATE_TEST_SUITE_P( Kinds, SocketTest, testing::Bool(),
      []( const auto & test ) { return test.param ? "unixSocket" : "tcp"; } );

TEST( ListenerTest, aSocketThatIsListenedAtIsNotReplacedAndOneThatIsNotIs )
{
   const Folder folder;
   const SystemClock clock;
   Loop loop;
   Server server( clock );
   const Address address = Address::parse( folder.socket() );
   {
      const Listener first( loop, server, address );
      try {
         const Listener second( loop, server, address );
         FAIL() << "two listeners at a socket";
      } catch ( const std::system_error & e ) {
         EXPECT_EQ( e.code(), std::errc::address_in_use );
         EXPECT_NE( std::string( e.what() ).find( address.text() ), std::string::npos );
      }
   }
   // What a process leaves that was killed.
   const int left = socket( AF_UNIX, SOCK_STREAM, 0 );
   sockaddr_un name{};
   name.sun_family = AF_UNIX;
   address.place.copy( name.sun_path, sizeof name.sun_path - 1 );
   ASSERT_EQ( bind( left, reinterpret_cast< sockaddr * >( &name ), sizeof name ), 0 );
   close( left );
   ASSERT_TRUE( std::filesystem::exists( address.place ) );
   EXPECT_NO_THROW( Listener( loop, server, address ) );
}

} // namespace
