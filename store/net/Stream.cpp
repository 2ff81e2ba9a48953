// Reading from sockets and writing to them.
#include "store/net/uv/Stream.h"

#include <sys/socket.h>
#include <sys/uio.h>

#include <array>
#include <cerrno>
#include <utility>

namespace Vok::Store::Detail {

namespace {

// What one connection gets before it is the next one's turn.
constexpr unsigned readsInATurn = 16;
constexpr std::size_t bytesInATurn = std::size_t{ 4 } << 20;

// Pieces that are sent at once.
constexpr std::size_t piecesAtOnce = 64;

std::string errorText( int error )
{
   return std::generic_category().message( error );
}

} // namespace

Stream::Stream( LoopState & loop, Socket socket ) : loop_( loop ),
                                                    socket_( std::move( socket ) ),
                                                    poll_( new uv_poll_t )
{
   if ( const int code = uv_poll_init( &loop.loop, poll_, socket_.descriptor() ); code != 0 ) {
      delete poll_;
      throw systemError( code, "a socket cannot be waited for" );
   }
   poll_->data = this;
}

Stream::~Stream()
{
   uv_close( reinterpret_cast< uv_handle_t * >( poll_ ),
         []( uv_handle_t * handle ) { delete reinterpret_cast< uv_poll_t * >( handle ); } );
}

int Stream::connect( const SocketAddress & to, std::function< void( int error ) > done )
{
   if ( ::connect( socket_.descriptor(), to.get(), to.size ) != 0 && errno != EINPROGRESS ) {
      return errno;
   }
   connecting_ = std::move( done );
   arm();
   return 0;
}

void Stream::start( StreamUser & user )
{
   user_ = &user;
   arm();
}

void Stream::reading( bool yes )
{
   if ( reading_ != yes ) {
      reading_ = yes;
      arm();
   }
}

void Stream::finish()
{
   finishing_ = true;
   send();
}

// Says what is waited for, which costs nothing where it is what it was.
void Stream::arm()
{
   const bool write = connecting_ || ( user_ && blocked_ );
   const int events = ( write ? UV_WRITABLE : 0 ) | ( user_ && reading_ ? UV_READABLE : 0 );
   if ( std::exchange( armed_, events ) == events ) {
      return;
   }
   if ( events == 0 ) {
      uv_poll_stop( poll_ );
      return;
   }
   loop_.wait( *poll_, events, []( uv_poll_t * poll, int status, int happened ) {
      auto * const self = static_cast< Stream * >( poll->data );
      if ( status < 0 ) { // the socket has an error, and libuv has stopped
         self->armed_ = 0;
         happened = UV_READABLE | UV_WRITABLE;
      }
      self->loop_.guard( [ & ] { self->onEvent( happened ); } );
   } );
}

void Stream::onEvent( int events )
{
   if ( connecting_ ) {
      const auto done = std::exchange( connecting_, nullptr );
      arm();
      done( socket_.error() );
      return;
   }
   if ( ( events & UV_WRITABLE ) != 0 ) {
      blocked_ = false;
      send();
   }
   if ( ( events & UV_READABLE ) != 0 ) {
      read();
   }
   arm();
}

void Stream::read()
{
   for ( unsigned i = 0; i != readsInATurn && user_ && reading_; ++i ) {
      const ssize_t size =
            recv( socket_.descriptor(), loop_.input.data(), loop_.input.size(), 0 );
      if ( size > 0 ) {
         const auto count = static_cast< std::size_t >( size );
         user_->received( std::span( loop_.input ).first( count ) );
         if ( count != loop_.input.size() ) {
            return; // that was all
         }
      } else if ( size == 0 ) {
         end( "the other side has closed the connection" );
      } else if ( errno == EAGAIN ) {
         return;
      } else if ( errno != EINTR ) {
         end( errorText( errno ) );
      }
   }
}

void Stream::send()
{
   std::array< std::span< const std::byte >, piecesAtOnce > pieces;
   std::array< iovec, piecesAtOnce > vectors;
   for ( std::size_t done = 0; user_ && !blocked_; ) {
      const std::size_t count = user_->outputs( pieces );
      if ( count == 0 ) {
         break;
      }
      std::size_t whole = 0;
      for ( std::size_t i = 0; i != count; ++i ) {
         // The system writes from what it is given; its vectors are not const.
         vectors[ i ] = { const_cast< std::byte * >( pieces[ i ].data() ), pieces[ i ].size() };
         whole += pieces[ i ].size();
      }
      msghdr message{};
      message.msg_iov = vectors.data();
      message.msg_iovlen = count;
      const ssize_t size = sendmsg( socket_.descriptor(), &message, MSG_NOSIGNAL );
      if ( size >= 0 ) {
         done += static_cast< std::size_t >( size );
         user_->sent( static_cast< std::size_t >( size ) );
         blocked_ = static_cast< std::size_t >( size ) != whole || done > bytesInATurn;
      } else if ( errno == EAGAIN ) {
         blocked_ = true;
      } else if ( errno != EINTR ) {
         end( errorText( errno ) );
      }
   }
   if ( user_ && !blocked_ && std::exchange( finishing_, false ) ) {
      shutdown( socket_.descriptor(), SHUT_WR );
   }
   arm();
}

void Stream::end( const std::string & why )
{
   if ( StreamUser * const user = std::exchange( user_, nullptr ) ) {
      arm();
      user->ended( why );
   }
}

} // namespace Vok::Store::Detail
