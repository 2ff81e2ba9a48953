// Reading from sockets and writing to them.
#include "store/net/uv/Stream.h"

#include <algorithm>
#include <utility>

namespace Vok::Store::Detail {

Stream::Stream( LoopState & loop, bool unixSocket ) : loop_( loop ),
                                                      socket_( new Socket )
{
   const int code = unixSocket ? uv_pipe_init( &loop.loop, &socket_->pipe, 0 )
                               : uv_tcp_init( &loop.loop, &socket_->tcp );
   if ( code != 0 ) {
      delete socket_;
      throw systemError( code, "a socket cannot be made" );
   }
   socket_->owner = this;
   socket_->handle.data = socket_;
}

Stream::~Stream()
{
   socket_->owner = nullptr;
   uv_close( &socket_->handle, []( uv_handle_t * handle ) {
      delete static_cast< Socket * >( handle->data );
   } );
}

Stream * Stream::ownerOf( const uv_stream_t * stream ) noexcept
{
   return static_cast< const Socket * >( stream->data )->owner;
}

void Stream::start( StreamUser & user )
{
   user_ = &user;
   const auto buffer = []( uv_handle_t * handle, std::size_t, uv_buf_t * into ) {
      auto * const socket = static_cast< Socket * >( handle->data );
      into->base = reinterpret_cast< char * >( socket->input );
      into->len = sizeof socket->input;
   };
   if ( const int code = uv_read_start( get(), buffer, onRead ); code != 0 ) {
      end( code );
   }
}

void Stream::onRead( uv_stream_t * stream, ssize_t size, const uv_buf_t * buffer )
{
   Stream * const self = ownerOf( stream );
   if ( !self || !self->user_ || size == 0 ) {
      return;
   }
   self->loop_.guard( [ & ] {
      if ( size < 0 ) {
         self->end( static_cast< int >( size ) );
      } else {
         self->user_->received( std::as_bytes(
               std::span( buffer->base, static_cast< std::size_t >( size ) ) ) );
      }
   } );
}

void Stream::send()
{
   while ( user_ && writing_ == 0 ) {
      const std::span< const std::byte > bytes = user_->output();
      if ( bytes.empty() ) {
         return;
      }
      // libuv writes only what it is told to; its buffers are not const.
      uv_buf_t buffer = uv_buf_init(
            const_cast< char * >( reinterpret_cast< const char * >( bytes.data() ) ),
            static_cast< unsigned >( std::min( bytes.size(), std::size_t{ 1 } << 30 ) ) );
      const int done = uv_try_write( get(), &buffer, 1 );
      if ( done > 0 ) {
         user_->sent( static_cast< std::size_t >( done ) );
      } else if ( done == UV_EAGAIN ) {
         const int code = uv_write( &socket_->request, get(), &buffer, 1, onWritten );
         if ( code != 0 ) {
            end( code );
            return;
         }
         writing_ = buffer.len;
      } else {
         end( done );
         return;
      }
   }
}

void Stream::onWritten( uv_write_t * request, int status )
{
   Stream * const self = ownerOf( request->handle );
   if ( !self ) {
      return;
   }
   self->loop_.guard( [ & ] {
      const std::size_t count = std::exchange( self->writing_, 0 );
      if ( !self->user_ ) {
         return;
      }
      if ( status < 0 ) {
         self->end( status );
         return;
      }
      self->user_->sent( count );
      self->send();
   } );
}

int Stream::listen( int backlog, std::function< void( int error ) > come )
{
   come_ = std::move( come );
   return uv_listen( get(), backlog, []( uv_stream_t * stream, int status ) {
      if ( Stream * const self = ownerOf( stream ) ) {
         self->loop_.guard( [ & ] { self->come_( status ); } );
      }
   } );
}

void Stream::end( int code )
{
   if ( StreamUser * const user = std::exchange( user_, nullptr ) ) {
      uv_read_stop( get() );
      user->ended( code == UV_EOF ? "the other side has closed the connection"
                                  : uv_strerror( code ) );
   }
}

} // namespace Vok::Store::Detail
