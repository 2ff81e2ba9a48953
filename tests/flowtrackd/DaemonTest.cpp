// The daemon as a process: what it says to a service manager, to operators and to clients, and what
// outlives it.
#include "tests/store/Folder.h"

#include "FlowTracker/FlowTrackerConfig.h"
#include "store/Client.h"
#include "store/Wire.h"
#include "store/net/Connection.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <spawn.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char ** environ;

namespace {

using namespace Vok::Store;
using Corvo::Ptr;
using FlowTracking::Config;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr seconds patience( 60 );

std::string contents( const std::string & file )
{
   std::ifstream in( file, std::ios::binary );
   return { std::istreambuf_iterator< char >( in ), {} };
}

/// A flowtrackd, whose standard error goes to a file.
class Daemon {
 public:
   Daemon( const std::vector< std::string > & args, const std::string & log )
   {
      std::vector< char * > argv{ const_cast< char * >( FLOWTRACKD ) };
      for ( const std::string & arg : args ) {
         argv.push_back( const_cast< char * >( arg.c_str() ) );
      }
      argv.push_back( nullptr );
      posix_spawn_file_actions_t actions;
      posix_spawn_file_actions_init( &actions );
      posix_spawn_file_actions_addopen(
            &actions, STDERR_FILENO, log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600 );
      EXPECT_EQ( posix_spawn( &pid_, FLOWTRACKD, &actions, nullptr, argv.data(), environ ), 0 );
      posix_spawn_file_actions_destroy( &actions );
   }
   Daemon( const Daemon & ) = delete;
   Daemon & operator=( const Daemon & ) = delete;
   ~Daemon()
   {
      if ( pid_ != 0 ) {
         end( SIGKILL );
      }
   }

   /// How it ended by itself, or by a signal that is sent.
   int end( int signal = 0 )
   {
      if ( signal != 0 ) {
         ::kill( pid_, signal );
      }
      int status = 0;
      ::waitpid( std::exchange( pid_, 0 ), &status, 0 );
      return WIFEXITED( status ) ? WEXITSTATUS( status ) : -WTERMSIG( status );
   }

 private:
   pid_t pid_ = 0;
};

struct Trees final : MountListener {
   void mounted( const std::string & path, const Ptr< Vok::Entity > & root ) override
   {
      roots[ path ] = root;
   }
   void stateIs( const std::string & path, const MountState & state ) override
   {
      states[ path ] = state;
   }
   void failed( const std::string & path, const std::string & text ) override
   {
      failures[ path ] = text;
   }

   std::map< std::string, Ptr< Vok::Entity > > roots;
   std::map< std::string, MountState > states;
   std::map< std::string, std::string > failures;
};

/// A client of the daemon.
struct Program {
   explicit Program( const std::string & name, const std::string & address )
         : wire( name ),
           connection( loop, wire, Address::parse( address ) )
   {
   }

   bool until( const std::function< bool() > & done ) { return loop.runUntil( done, patience ); }

   Loop loop;
   Wire wire;
   Client client{ wire };
   Connection connection;
};

class DaemonTest : public testing::Test {
 protected:
   std::string configIs( const std::string & text )
   {
      std::ofstream( folder.path() + "/f.toml" ) << text;
      return folder.path() + "/f.toml";
   }

   std::unique_ptr< Daemon > start( const std::string & text )
   {
      return std::make_unique< Daemon >(
            std::vector< std::string >{ "--config", configIs( text ), "--listen", address }, log );
   }

   std::string kept() const { return folder.path() + "/kept"; }

   TestSupport::Folder folder;
   const std::string address = "unix:" + folder.path() + "/store";
   const std::string log = folder.path() + "/log";
};

TEST_F( DaemonTest, whatWasAcknowledgedOutlivesIt )
{
   const std::string config =
         "[kept]\nfolder = \"" + kept() + "\"\npaths = [ \"config/**\" ]\n";
   auto daemon = start( config );
   const Ptr< Config > root = Config::ConfigIs( "c" );
   {
      Program writer( "writer", address );
      const auto writing = writer.client.write( "config/a", root );
      const auto passing = writer.client.write( "status/a", Config::ConfigIs( "s" ) );
      for ( std::uint32_t i = 1; i != 20; ++i ) {
         root->ipfixExportShapingRateIs( i );
         ASSERT_TRUE( writer.until( [ & ] { return writing->settled(); } ) );
      }
      ASSERT_TRUE( writer.until( [ & ] { return passing->settled(); } ) );
   }
   EXPECT_EQ( daemon->end( SIGKILL ), -SIGKILL );
   daemon = start( config );
   Program reader( "reader", address );
   Trees trees;
   const auto reading = reader.client.read( "*/*", trees );
   ASSERT_TRUE( reader.until( [ & ] { return trees.roots.contains( "config/a" ); } ) );
   EXPECT_EQ( Vok::treeDigest( *trees.roots[ "config/a" ] ), Vok::treeDigest( *root ) );
   EXPECT_TRUE( trees.states[ "config/a" ].stale );
   EXPECT_EQ( trees.states[ "config/a" ].writer, "writer" );
   EXPECT_FALSE( trees.roots.contains( "status/a" ) );
   EXPECT_EQ( daemon->end( SIGTERM ), 0 );
   EXPECT_NE( contents( log ).find( "event=recovered path=config/a" ), std::string::npos );
   EXPECT_NE( contents( log ).find( "event=stopped" ), std::string::npos );
}

TEST_F( DaemonTest, aDamagedDatabaseIsSetAsideAndTheRestIsServed )
{
   const std::string config = "[kept]\nfolder = \"" + kept() + "\"\npaths = [ \"config/*\" ]\n";
   auto daemon = start( config );
   {
      Program writer( "writer", address );
      const auto a = writer.client.write( "config/a", Config::ConfigIs( "a" ) );
      const auto b = writer.client.write( "config/b", Config::ConfigIs( "b" ) );
      ASSERT_TRUE( writer.until( [ & ] { return a->settled() && b->settled(); } ) );
   }
   EXPECT_EQ( daemon->end( SIGTERM ), 0 );
   std::size_t damaged = 0;
   for ( const auto & entry : std::filesystem::recursive_directory_iterator( kept() ) ) {
      const std::string folderName = entry.path().parent_path().filename();
      if ( entry.path().extension() == ".sqlite" && folderName.back() == 'a' ) {
         std::ofstream( entry.path() ) << "this is no database, and was never one";
         ++damaged;
      }
   }
   ASSERT_EQ( damaged, 1U );
   daemon = start( config );
   Program reader( "reader", address );
   Trees trees;
   const auto reading = reader.client.read( "config/*", trees );
   ASSERT_TRUE( reader.until( [ & ] { return trees.roots.contains( "config/b" ); } ) );
   EXPECT_FALSE( trees.roots.contains( "config/a" ) );
   EXPECT_NE( contents( log ).find( "event=setAside path=config/a" ), std::string::npos )
         << contents( log );
}

TEST_F( DaemonTest, rulesAreOfTheUserWhoConnects )
{
   const std::string me = std::to_string( ::getuid() );
   const auto daemon = start( "[[access]]\npath = \"mine/*\"\nwrite = [ \"user:" + me +
         "\" ]\nread = [ \"user:" + me +
         "\" ]\n[[access]]\npath = \"others/*\"\nwrite = [ \"user:12345\" ]\n" );
   Program program( "program", address );
   const auto mine = program.client.write( "mine/a", Config::ConfigIs( "a" ) );
   const auto others = program.client.write( "others/a", Config::ConfigIs( "a" ) );
   Trees trees;
   const auto reading = program.client.read( "others/a", trees );
   ASSERT_TRUE( program.until( [ & ] {
      return mine->settled() && !others->refusal().empty() && !trees.failures.empty();
   } ) );
   EXPECT_EQ( others->refusal(), "user " + me + " may not write others/a" );
   EXPECT_EQ( trees.failures[ "others/a" ], "user " + me + " may not read others/a" );
}

TEST_F( DaemonTest, aWrongConfigurationIsToldAndNothingIsDone )
{
   const std::string file = configIs( "listn = 5" );
   EXPECT_EQ( Daemon( { "--config", file }, log ).end(), 2 );
   EXPECT_EQ( Daemon( { "--config", configIs( "" ) }, log ).end(), 2 );
   EXPECT_EQ( Daemon( { "--listen", "here" }, log ).end(), 2 );
   EXPECT_EQ(
         Daemon( { "--config", configIs( "" ), "--listen", address, "--check" }, log ).end(), 0 );
   EXPECT_EQ( contents( log ).substr( 0, contents( log ).find( ';' ) ),
         "flowtrackd: " + file + ":1:1: there is no \"listn\" here" );
}

TEST_F( DaemonTest, whereItCannotListenItSaysSo )
{
   EXPECT_EQ( Daemon( { "--listen", "unix:" + folder.path() + "/no/such/folder" }, log ).end(), 1 );
   EXPECT_NE( contents( log ).find( "event=failed text=" ), std::string::npos );
}

/// What a service manager hears.
TEST_F( DaemonTest, itSaysWhenItIsReadyAliveAndStopping )
{
   const std::string place = folder.path() + "/notify";
   const int socket = ::socket( AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0 );
   sockaddr_un name{};
   name.sun_family = AF_UNIX;
   place.copy( name.sun_path, sizeof name.sun_path - 1 );
   ASSERT_EQ( ::bind( socket, reinterpret_cast< const sockaddr * >( &name ), sizeof name ), 0 );
   const timeval most{ patience.count(), 0 };
   ::setsockopt( socket, SOL_SOCKET, SO_RCVTIMEO, &most, sizeof most );
   const auto heard = [ & ] {
      char text[ 200 ];
      const ssize_t size = ::recv( socket, text, sizeof text, 0 );
      return std::string( text, size < 0 ? 0 : static_cast< std::size_t >( size ) );
   };
   ::setenv( "NOTIFY_SOCKET", place.c_str(), 1 );
   ::setenv( "WATCHDOG_USEC", "100000", 1 );
   const auto daemon = start( "" );
   ::unsetenv( "NOTIFY_SOCKET" );
   ::unsetenv( "WATCHDOG_USEC" );
   EXPECT_EQ( heard(), "READY=1" );
   EXPECT_EQ( heard(), "WATCHDOG=1" );
   EXPECT_EQ( heard(), "WATCHDOG=1" );
   EXPECT_EQ( daemon->end( SIGTERM ), 0 );
   std::string last = heard();
   while ( last == "WATCHDOG=1" ) {
      last = heard();
   }
   EXPECT_EQ( last, "STOPPING=1" );
   ::close( socket );
}

/// What a collector of metrics is answered.
TEST_F( DaemonTest, metricsAreToldOverHttp )
{
   const std::string place = folder.path() + "/metrics";
   const auto daemon = start( "metrics = \"unix:" + place + "\"\n" );
   Program program( "program", address );
   const auto writing = program.client.write( "a", Config::ConfigIs( "a" ) );
   ASSERT_TRUE( program.until( [ & ] { return writing->settled(); } ) );
   const auto answer = [ & ]( const std::string & request ) {
      const int socket = ::socket( AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0 );
      sockaddr_un name{};
      name.sun_family = AF_UNIX;
      place.copy( name.sun_path, sizeof name.sun_path - 1 );
      EXPECT_EQ(
            ::connect( socket, reinterpret_cast< const sockaddr * >( &name ), sizeof name ), 0 );
      EXPECT_EQ( ::send( socket, request.data(), request.size(), 0 ),
            static_cast< ssize_t >( request.size() ) );
      std::string text;
      char piece[ 4096 ];
      for ( ssize_t size = 0; ( size = ::recv( socket, piece, sizeof piece, 0 ) ) > 0; ) {
         text.append( piece, static_cast< std::size_t >( size ) );
      }
      ::close( socket );
      return text;
   };
   const std::string text = answer( "GET /metrics HTTP/1.0\r\n\r\n" );
   EXPECT_EQ( text.substr( 9, 6 ), "200 OK" ) << text;
   EXPECT_NE( text.find( "\r\nContent-Type: text/plain; version=0.0.4" ), std::string::npos );
   EXPECT_NE( text.find( "\nflowtrackd_sessions 1\n" ), std::string::npos );
   EXPECT_NE(
         text.find( "\nflowtrackd_mount_batches_in_total{path=\"a\"} 1\n" ), std::string::npos );
   EXPECT_EQ( answer( "GET / HTTP/1.0\r\n\r\n" ).substr( 9, 3 ), "404" );
   EXPECT_EQ( answer( "POST /metrics HTTP/1.0\r\n\r\n" ).substr( 9, 3 ), "405" );
}

} // namespace
