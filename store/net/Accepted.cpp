// What the store does with a client's connection, from its first byte to its last.
#include "store/net/uv/Accepted.h"

#include <new>
#include <utility>

namespace Vok::Store::Detail {

namespace {

// What a connection that is to be closed gets to take its last output.
constexpr std::chrono::milliseconds lastOutputTime( 2000 );

} // namespace

Accepted::Accepted( LoopState & loop, Server & server, AcceptedOwner & owner, Socket socket,
      Peer peer, const TlsState * tls )
      : server_( server ),
        owner_( owner ),
        peer_( std::move( peer ) ),
        stream_( loop, std::move( socket ) ),
        timer_( loop, [ this ] { due(); } )
{
   if ( tls ) {
      tls_ = std::make_unique< TlsFilter >( loop, tls->accepting(), stream_, *this );
   }
}

void Accepted::start()
{
   timer_.start( server_.limits().greetingTime );
   if ( tls_ ) {
      tls_->start();
   } else {
      stream_.start( *this );
      open();
   }
}

void Accepted::secured()
{
   peer_.certificate = tls_->commonName();
   if ( peer_.certificate ) {
      peer_.name = "CN=" + *peer_.certificate + " " + peer_.name;
      open();
   } else {
      unsecured( "TLS: the certificate has not one common name that can be shown" );
   }
}

void Accepted::open()
{
   try {
      session_ = server_.connected( std::move( peer_ ) );
      session_->onOutput( [ this ] { hasOutput(); } );
   } catch ( const std::bad_alloc & ) {
      over();
      return;
   }
   if ( !session_->output().empty() ) {
      hasOutput(); // it is refused
   }
   settle();
}

void Accepted::hasOutput() noexcept
{
   if ( !over_ && !std::exchange( ready_, true ) ) {
      owner_.hasOutput( *this );
   }
}

void Accepted::send()
{
   stream_.send();
   ready_ = false;
   settle();
}

void Accepted::received( std::span< const std::byte > piece )
{
   if ( lingering_ || over_ ) {
      return;
   }
   try {
      session_->receive( piece );
   } catch ( const std::bad_alloc & ) {
      over(); // bytes of it are lost
      return;
   }
   if ( !greeted_ && session_->greeted() ) {
      greeted_ = true;
      timer_.stop();
   }
   settle();
}

std::size_t Accepted::outputs( std::span< std::span< const std::byte > > into )
{
   return session_ ? session_->outputs( into ) : 0;
}

void Accepted::sent( std::size_t count )
{
   try {
      session_->sent( count );
      settle();
   } catch ( const std::bad_alloc & ) {
      over(); // what it missed cannot be told
   }
}

void Accepted::ended( const std::string & )
{
   over();
}

void Accepted::unsecured( const std::string & why )
{
   if ( !session_ ) {
      server_.refused( peer_, why );
   }
   linger();
}

void Accepted::due()
{
   const std::string why = "the client has not said who it is within " +
         std::to_string( server_.limits().greetingTime.count() ) + " milliseconds";
   if ( lingering_ ) {
      over();
   } else if ( session_ ) {
      session_->end( why );
      settle();
   } else {
      server_.refused( peer_, why );
      over();
   }
}

void Accepted::settle()
{
   if ( session_->finished() ) {
      linger();
   } else {
      stream_.reading( session_->takesMore() );
   }
}

// The other side may have sent what is not read any more. Were the socket closed with that in it,
// the system would take back what the other side has not yet read: so it is read, and the other
// side closes first, if it does so in time.
void Accepted::linger()
{
   if ( std::exchange( lingering_, true ) || over_ ) {
      return;
   }
   timer_.start( lastOutputTime );
   if ( tls_ ) {
      tls_->finish();
   }
   stream_.reading( true );
   stream_.finish();
}

void Accepted::over() noexcept
{
   if ( !std::exchange( over_, true ) ) {
      owner_.isOver( *this );
   }
}

} // namespace Vok::Store::Detail
