// How time passes for a store over sockets and its clients.
#include "tests/store/NetWorld.h"

#include <stdexcept>

namespace TestSupport {

using namespace Vok::Store;
using Milliseconds = std::chrono::milliseconds;
using Steady = std::chrono::steady_clock;

Ssl Trust::ssl() const
{
   const SslContext context( SSL_CTX_new( TLS_client_method() ) );
   if ( SSL_CTX_use_certificate_file(
              context.get(), clientFiles.certificate.c_str(), SSL_FILETYPE_PEM ) != 1 ||
         SSL_CTX_use_PrivateKey_file(
               context.get(), clientFiles.key.c_str(), SSL_FILETYPE_PEM ) != 1 ) {
      throw std::runtime_error( sslReason() );
   }
   return Ssl( SSL_new( context.get() ) ); // shares the context
}

NetWorld::NetWorld( Kind what, const ServerSetup & setup )
      : kind( what ),
        trust( what == Kind::tls ? std::make_unique< Trust >() : nullptr ),
        server( clock, setup ),
        listener( std::make_unique< Listener >( loop, server,
              Address::parse( what == Kind::unixSocket ? "unix:" + folder.path() + "/socket"
                          : what == Kind::tcp          ? "tcp:127.0.0.1:0"
                                                       : "tls:127.0.0.1:0" ),
              trust ? &trust->store : nullptr ) ),
        address( listener->address() )
{
}

bool NetWorld::until( const std::function< bool() > & done )
{
   const auto deadline = Steady::now() + std::chrono::seconds( 60 );
   while ( Steady::now() < deadline ) {
      loop.run();
      for ( const auto & one : raws ) {
         one->step();
      }
      if ( done() ) {
         return true;
      }
      pollfd wait{ loop.descriptor(), POLLIN, 0 };
      poll( &wait, 1, 1 );
   }
   return false;
}

void NetWorld::pass( Milliseconds time )
{
   const auto end = Steady::now() + time;
   until( [ & ] { return Steady::now() >= end; } );
}

RawClient & NetWorld::raw()
{
   raws.push_back( std::make_unique< RawClient >( address, trust ? trust->ssl() : Ssl() ) );
   return *raws.back();
}

RawClient & NetWorld::greeted()
{
   RawClient & one = raw();
   one.send( greeting() );
   if ( !until( [ & ] { return one.has< Welcome >(); } ) ) {
      throw std::runtime_error( "a greeting is not heard" );
   }
   return one;
}

Bystanders::Bystanders( NetWorld & world )
      : world_( world ),
        writing_( writer_.write( "a", root ) ),
        reading_( reader_.read( "a", mounts_ ) ),
        one_( std::make_unique< Connection >(
              world.loop, writerWire_, world.address, world.tls() ) ),
        two_( std::make_unique< Connection >(
              world.loop, readerWire_, world.address, world.tls() ) )
{
   if ( !agree() ) {
      throw std::runtime_error( "a reader does not follow a writer" );
   }
   before_ = errors(); // on a slow machine they may have come too late, and again
}

bool Bystanders::undisturbed()
{
   root->midIs( ++changes_ );
   return agree() && errors() == before_ && mounts_.failures.empty();
}

bool Bystanders::agree()
{
   return world_.until( [ & ] {
      return mounts_.roots.contains( "a" ) &&
            Vok::treeDigest( *mounts_.roots[ "a" ] ) == Vok::treeDigest( *root ) &&
            writing_->settled();
   } );
}

} // namespace TestSupport
