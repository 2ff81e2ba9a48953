// Listening at an address, and taking the connections that come.
#include "store/net/uv/Acceptor.h"

#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace Vok::Store::Detail {

namespace {

constexpr int backlog = 512;

// Connections that are taken before others have their turn.
constexpr unsigned acceptsInATurn = 64;

// How long none is taken where the system has no descriptor or no memory left for them.
constexpr std::chrono::milliseconds noneLeftTime( 100 );

/// Whether somebody listens at a Unix socket.
bool isListenedAt( const SocketAddress & address )
{
   const Socket probe = Socket::make( AF_UNIX );
   if ( !probe ) {
      return true; // it cannot be told: nothing is taken away
   }
   const int answer = connect( probe.descriptor(), address.get(), address.size );
   return answer == 0 || errno != ECONNREFUSED;
}

} // namespace

Acceptor::Acceptor( LoopState & loop, const Address & address, Come come )
      : loop_( loop ),
        address_( address ),
        come_( std::move( come ) ),
        pause_( loop, [ this ] { start(); } )
{
   bind();
   poll_ = new uv_poll_t;
   if ( const int code = uv_poll_init( &loop.loop, poll_, socket_.descriptor() ); code != 0 ) {
      delete poll_;
      fail( -code );
   }
   poll_->data = this;
   start();
}

Acceptor::~Acceptor()
{
   uv_close( reinterpret_cast< uv_handle_t * >( poll_ ),
         []( uv_handle_t * handle ) { delete reinterpret_cast< uv_poll_t * >( handle ); } );
   if ( address_.kind == Address::Kind::unixSocket ) {
      unlink( address_.place.c_str() );
   }
}

void Acceptor::fail( int error ) const
{
   throw systemError( -error, address_.text() + " cannot be listened at" );
}

void Acceptor::bind()
{
   SocketAddress at( address_ );
   socket_ = Socket::make( at.family() );
   if ( !socket_ ) {
      fail( errno );
   }
   const bool isUnix = address_.kind == Address::Kind::unixSocket;
   if ( !isUnix ) {
      const int yes = 1; // a port of which old connections are left is free
      setsockopt( socket_.descriptor(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes );
   }
   const auto attempt = [ & ] {
      return ::bind( socket_.descriptor(), at.get(), at.size ) == 0 ? 0 : errno;
   };
   int error = attempt();
   if ( error == EADDRINUSE && isUnix && !isListenedAt( at ) ) {
      unlink( address_.place.c_str() );
      error = attempt();
   }
   if ( error != 0 ) {
      fail( error );
   }
   if ( listen( socket_.descriptor(), backlog ) != 0 ) {
      fail( errno );
   }
   if ( !isUnix && getsockname( socket_.descriptor(), at.get(), &at.size ) == 0 ) {
      address_.port = at.port();
   }
}

void Acceptor::start()
{
   loop_.wait( *poll_, UV_READABLE, []( uv_poll_t * poll, int status, int ) {
      auto * const self = static_cast< Acceptor * >( poll->data );
      if ( status < 0 ) { // the socket has an error, and libuv has stopped
         self->pause_.start( noneLeftTime );
      } else {
         self->loop_.guard( [ self ] { self->accept(); } );
      }
   } );
}

void Acceptor::accept()
{
   for ( unsigned i = 0; i != acceptsInATurn; ++i ) {
      SocketAddress from;
      Socket socket( accept4(
            socket_.descriptor(), from.get(), &from.size, SOCK_CLOEXEC | SOCK_NONBLOCK ) );
      if ( socket ) {
         come_( std::move( socket ), from );
      } else if ( errno == EAGAIN ) {
         return;
      } else if ( errno != EINTR && errno != ECONNABORTED ) {
         uv_poll_stop( poll_ ); // the connection that waits would be told again and again
         pause_.start( noneLeftTime );
         return;
      }
   }
}

} // namespace Vok::Store::Detail
