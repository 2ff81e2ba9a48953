// Who gets through TLS, who does not, and what each side is told.
#include "tests/store/NetWorld.h"

#include <gtest/gtest.h>

#include <openssl/pem.h>

#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace Vok::Store;
using TestSupport::Authority;
using TestSupport::Bystanders;
using TestSupport::Folder;
using TestSupport::Kind;
using TestSupport::NetWorld;
using TestSupport::RawClient;
using TestSupport::Ssl;
using TestSupport::SslContext;

// ---- Files ------------------------------------------------------------------------------------

class TlsFilesTest : public testing::Test {
 protected:
   std::string refusal() const
   {
      try {
         const TlsContext context( files );
      } catch ( const TlsException & e ) {
         return e.what();
      }
      return "";
   }
   std::string garbage() const
   {
      const std::string path = folder.path() + "/garbage";
      std::ofstream( path ) << "no certificate\n";
      return path;
   }

   Folder folder;
   Authority authority{ folder.path(), "authority" };
   TlsFiles files = authority.issue( { { "agent" }, {} } );
};

TEST_F( TlsFilesTest, eachThatIsMissingIsNamed )
{
   EXPECT_EQ( refusal(), "" );
   const TlsFiles good = files;
   files.certificate = "/nowhere/a";
   EXPECT_EQ( refusal(), "certificate /nowhere/a: No such file or directory" );
   files = good;
   files.key = "/nowhere/b";
   EXPECT_EQ( refusal(), "key /nowhere/b: No such file or directory" );
   files = good;
   files.authority = "/nowhere/c";
   EXPECT_EQ( refusal(), "authority /nowhere/c: No such file or directory" );
   files.authority.clear();
   EXPECT_EQ( refusal().substr( 0, 19 ), "authority (no file)" );
}

TEST_F( TlsFilesTest, eachThatIsNoneIsNamed )
{
   const TlsFiles good = files;
   files.certificate = garbage();
   EXPECT_EQ( refusal(), "certificate " + garbage() + ": no start line" );
   files = good;
   files.key = garbage();
   EXPECT_EQ( refusal().substr( 0, 5 + garbage().size() ), "key " + garbage() + ":" );
   files = good;
   files.authority = garbage();
   EXPECT_EQ( refusal().substr( 0, 11 + garbage().size() ), "authority " + garbage() + ":" );
}

TEST_F( TlsFilesTest, theKeyIsTheCertificates )
{
   files.key = authority.issue( { { "another" }, {} } ).key;
   EXPECT_EQ( refusal(), "key " + files.key + ": key values mismatch" );
}

/// Nobody is asked for a password: the program would wait for it.
TEST_F( TlsFilesTest, aKeyHasNoPassword )
{
   std::FILE * const file = std::fopen( files.key.c_str(), "r+" );
   ASSERT_NE( file, nullptr );
   const TestSupport::Key key( PEM_read_PrivateKey( file, nullptr, nullptr, nullptr ) );
   std::rewind( file );
   unsigned char password[] = "password";
   EXPECT_EQ( PEM_write_PrivateKey(
                    file, key.get(), EVP_aes_128_cbc(), password, 8, nullptr, nullptr ),
         1 );
   std::fclose( file );
   EXPECT_EQ( refusal().substr( 0, 4 + files.key.size() ), "key " + files.key );
}

/// What the store says of those that it sends away.
class Refusals final : public Observer {
 public:
   void happened( const Event & event ) override
   {
      if ( event.kind == Event::Kind::refused ) {
         texts.emplace_back( event.text );
         EXPECT_EQ( event.peer.substr( 0, 10 ), "127.0.0.1:" );
      }
   }

   std::vector< std::string > texts;
};

// ---- Clients that do not get in ---------------------------------------------------------------

/// A store and clients that set OpenSSL up as they like. Whatever they do, others notice nothing.
class TlsClientTest : public testing::Test {
 protected:
   ~TlsClientTest() override
   {
      world.raws.clear();
      EXPECT_TRUE( world.until( [ & ] { return world.listener->connections() == 2; } ) );
      EXPECT_TRUE( bystanders.undisturbed() );
      EXPECT_EQ( world.server.counters().sessions, sessions ) << "one was let in";
   }

   RawClient & raw( const TlsFiles & files, int newest = TLS1_3_VERSION )
   {
      const SslContext context( SSL_CTX_new( TLS_client_method() ) );
      SSL_CTX_set_max_proto_version( context.get(), newest );
      if ( !files.certificate.empty() ) {
         EXPECT_EQ( SSL_CTX_use_certificate_file( context.get(), files.certificate.c_str(),
                          SSL_FILETYPE_PEM ),
               1 );
         EXPECT_EQ( SSL_CTX_use_PrivateKey_file(
                          context.get(), files.key.c_str(), SSL_FILETYPE_PEM ),
               1 );
      }
      world.raws.push_back( std::make_unique< RawClient >(
            world.address, Ssl( SSL_new( context.get() ) ) ) );
      world.raws.back()->send( TestSupport::greeting() );
      return *world.raws.back();
   }

   /// What both sides say of one that gets in nowhere.
   void expect( const RawClient & one, const std::string & error, const std::string & refusal )
   {
      EXPECT_TRUE( world.until( [ & ] { return one.closed(); } ) );
      EXPECT_FALSE( one.has< Welcome >() );
      EXPECT_EQ( one.error(), error );
      ASSERT_EQ( refusals.texts.size(), 1U );
      EXPECT_EQ( refusals.texts.front(), "TLS: " + refusal );
      refusals.texts.clear();
   }

   Refusals refusals;
   NetWorld world{ Kind::tls, ServerSetup{ .observer = &refusals } };
   Bystanders bystanders{ world };
   const std::uint64_t sessions = world.server.counters().sessions;
   Folder folder;
};

TEST_F( TlsClientTest, withoutACertificate )
{
   expect( raw( {} ), "tlsv13 alert certificate required",
         "peer did not return a certificate" );
}

TEST_F( TlsClientTest, withOneOfAnotherAuthority )
{
   Authority other( folder.path(), "other" );
   expect( raw( other.issue( { { "agent" }, {} } ) ), "tlsv1 alert unknown ca",
         "certificate verify failed: unable to get local issuer certificate" );
}

TEST_F( TlsClientTest, withOneOfAnAuthorityOfTheSameName )
{
   Authority other( folder.path(), "authority" );
   expect( raw( other.issue( { { "agent" }, {} } ) ), "tlsv1 alert decrypt error",
         "certificate verify failed: certificate signature failure" );
}

TEST_F( TlsClientTest, withOneThatHasExpired )
{
   expect( raw( world.trust->authority.issue( { { "agent" }, {}, -60 } ) ),
         "sslv3 alert certificate expired", "certificate verify failed: certificate has expired" );
}

TEST_F( TlsClientTest, withOlderTls )
{
   expect( raw( world.trust->clientFiles, TLS1_2_VERSION ), "tlsv1 alert protocol version",
         "unsupported protocol" );
}

/// Rights are given to names: one that cannot be read is none.
TEST_F( TlsClientTest, withoutANameOrWithTwoOrWithOneThatCannotBeShown )
{
   Authority & authority = world.trust->authority;
   for ( const std::vector< std::string > & names : std::vector< std::vector< std::string > >{
               {}, { "agent", "admin" }, { "agent\nadmin" }, { std::string( "agent\0x", 7 ) } } ) {
      expect( raw( authority.issue( { names, "DNS:agent" } ) ), "",
            "the certificate has not one common name that can be shown" );
   }
}

// ---- Handshakes that come to nothing -----------------------------------------------------------

/// Little time and few connections for those who have not proved who they are.
class TlsHandshakeTest : public testing::Test {
 protected:
   ServerSetup setup()
   {
      ServerSetup setup;
      setup.observer = &refusals;
      setup.limits.greetingTime = std::chrono::milliseconds( 1500 );
      setup.limits.sessionsOfUser = 8;
      return setup;
   }

   ~TlsHandshakeTest() override
   {
      world.raws.clear();
      EXPECT_TRUE( world.until( [ & ] { return world.listener->connections() == 2; } ) );
      EXPECT_TRUE( bystanders.undisturbed() );
      EXPECT_EQ( world.server.counters().sessions, sessions ) << "one was let in";
   }

   /// One who does not speak TLS, whatever is sent.
   RawClient & plain()
   {
      world.raws.push_back( std::make_unique< RawClient >( world.address ) );
      return *world.raws.back();
   }
   bool ends( const RawClient & one )
   {
      return world.until( [ & ] { return one.closed(); } );
   }

   Refusals refusals;
   NetWorld world{ Kind::tls, setup() };
   Bystanders bystanders{ world };
   const std::uint64_t sessions = world.server.counters().sessions;
};

TEST_F( TlsHandshakeTest, whatIsNone )
{
   RawClient & one = plain();
   one.send( TestSupport::greeting() );
   EXPECT_TRUE( ends( one ) );
   RawClient & two = plain();
   two.send( std::as_bytes( std::span( std::string_view( "GET / HTTP/1.1\r\n\r\n" ) ) ) );
   EXPECT_TRUE( ends( two ) );
   EXPECT_EQ( refusals.texts,
         ( std::vector< std::string >{ "TLS: wrong version number", "TLS: http request" } ) );
}

TEST_F( TlsHandshakeTest, thatDoesNotGoOn )
{
   RawClient & silent = plain();
   RawClient & begun = plain();
   const std::byte head[] = { std::byte{ 22 }, std::byte{ 3 }, std::byte{ 1 } };
   begun.send( head );
   EXPECT_TRUE( ends( silent ) );
   EXPECT_TRUE( ends( begun ) );
   EXPECT_EQ( silent.received() + begun.received(), 0U );
   const std::string late = "the client has not said who it is within 1500 milliseconds";
   EXPECT_EQ( refusals.texts, std::vector< std::string >( 2, late ) );
}

/// A first message in records of one byte, which says that it is long.
TEST_F( TlsHandshakeTest, thatHasNoEnd )
{
   RawClient & one = plain();
   const auto record = []( int byte ) {
      return Bytes{ std::byte{ 22 }, std::byte{ 3 }, std::byte{ 1 }, std::byte{ 0 }, std::byte{ 1 },
         static_cast< std::byte >( byte ) };
   };
   for ( const int byte : { 1, 0, 255, 255 } ) { // a greeting of 65535 bytes
      one.send( record( byte ) );
   }
   for ( int i = 0; i != 60000; ++i ) {
      one.send( record( 0 ) );
   }
   EXPECT_TRUE( ends( one ) );
   ASSERT_EQ( refusals.texts.size(), 1U );
   EXPECT_EQ( refusals.texts.front(), "TLS: more than 65536 bytes of a handshake" );
}

TEST_F( TlsHandshakeTest, thatAreTooMany )
{
   const std::size_t most = 2 + setup().limits.sessionsOfUser;
   for ( int i = 0; i != 50; ++i ) {
      plain();
      world.until( [] { return true; } );
      ASSERT_LE( world.listener->connections(), most );
   }
   EXPECT_EQ( world.listener->connections(), most );
   EXPECT_TRUE( bystanders.undisturbed() );
}

// ---- Servers that are not believed ------------------------------------------------------------

class TlsServerTest : public testing::Test {
 protected:
   /// Why a client does not connect to a store with such a certificate; empty where it does.
   std::string error( const TlsFiles & files, const std::string & name = {} )
   {
      const TlsContext store( files );
      const Listener listener( loop, server, Address::parse( "tls:127.0.0.1:0" ), &store );
      Wire wire( "client" );
      const Client user( wire );
      const Connection connection( loop, wire, listener.address(), &client, name );
      EXPECT_TRUE( loop.runUntil(
            [ & ] { return connection.connected() || !connection.error().empty(); },
            std::chrono::seconds( 20 ) ) );
      return connection.error();
   }

   Folder folder;
   Authority authority{ folder.path(), "authority" };
   TlsContext client{ authority.issue( { { "agent" }, {} } ) };
   SystemClock clock;
   Loop loop;
   Server server{ clock };
};

TEST_F( TlsServerTest, isForTheAddressOrTheName )
{
   const TlsFiles files = authority.issue( { { "x" }, "IP:127.0.0.1,DNS:store.example" } );
   EXPECT_EQ( error( files ), "" );
   EXPECT_EQ( error( files, "store.example" ), "" );
   EXPECT_EQ( error( files, "other.example" ),
         "TLS: certificate verify failed: hostname mismatch" );
   EXPECT_EQ( error( files, "127.0.0.2" ), "TLS: certificate verify failed: IP address mismatch" );
   EXPECT_EQ( error( authority.issue( { { "x" }, "IP:127.0.0.2" } ) ),
         "TLS: certificate verify failed: IP address mismatch" );
}

/// Common names are for people, and for the names of clients.
TEST_F( TlsServerTest, itsCommonNameIsNotItsName )
{
   EXPECT_EQ( error( authority.issue( { { "store.example" }, {} } ), "store.example" ),
         "TLS: certificate verify failed: hostname mismatch" );
}

TEST_F( TlsServerTest, hasExpired )
{
   EXPECT_EQ( error( authority.issue( { { "x" }, "IP:127.0.0.1", -60 } ) ),
         "TLS: certificate verify failed: certificate has expired" );
}

TEST_F( TlsServerTest, isOfAnotherAuthority )
{
   Authority other( folder.path(), "other" );
   TlsFiles files = other.issue( { { "x" }, "IP:127.0.0.1" } );
   EXPECT_EQ( error( files ),
         "TLS: certificate verify failed: unable to get local issuer certificate" );
}

/// The client's own is not good enough: what it is told says so.
TEST_F( TlsServerTest, doesNotBelieveTheClient )
{
   TlsFiles files = authority.issue( { { "x" }, "IP:127.0.0.1" } );
   files.authority = Authority( folder.path(), "other" ).issue( { { "y" }, {} } ).authority;
   const TlsContext store( files );
   const Listener listener( loop, server, Address::parse( "tls:127.0.0.1:0" ), &store );
   Wire wire( "client" );
   const Client user( wire );
   const Connection connection( loop, wire, listener.address(), &client );
   EXPECT_TRUE( loop.runUntil( [ & ] { return !connection.error().empty(); },
         std::chrono::seconds( 20 ) ) );
   EXPECT_EQ( connection.error(), "TLS: tlsv1 alert unknown ca" );
}

TEST_F( TlsServerTest, needsAContext )
{
   Wire wire( "client" );
   EXPECT_THROW( Connection( loop, wire, Address::parse( "tls:127.0.0.1:1" ) ),
         std::invalid_argument );
}

} // namespace
