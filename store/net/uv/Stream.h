// One connected socket, as libuv has it: a pipe or TCP. Part of Connection.cpp and Listener.cpp.
#pragma once

#include "store/net/uv/LoopState.h"

#include <uv.h>

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <system_error>

namespace Vok::Store::Detail {

/// What a program tells of an error of libuv.
inline std::system_error systemError( int code, const std::string & what )
{
   return { -code, std::generic_category(), what };
}

/// Whose bytes go over a socket. None of these destroys the stream.
class StreamUser {
 public:
   virtual ~StreamUser() = default;
   virtual void received( std::span< const std::byte > piece ) = 0;

   /// The bytes to be sent next, which stay until `sent`.
   virtual std::span< const std::byte > output() const noexcept = 0;
   virtual void sent( std::size_t count ) = 0;

   /// The other side has gone, or the socket failed: the stream is of no use any more.
   virtual void ended( const std::string & why ) = 0;
};

/// A socket. Bytes are read as they come, and sent as far as the system takes them at once; what is
/// left goes when it takes more.
class Stream {
 public:
   Stream( LoopState & loop, bool unixSocket );
   Stream( const Stream & ) = delete;
   Stream & operator=( const Stream & ) = delete;

   /// Closes it; nothing more is told.
   ~Stream();

   uv_stream_t * get() noexcept { return &socket_->stream; }
   uv_pipe_t * pipe() noexcept { return &socket_->pipe; }
   uv_tcp_t * tcp() noexcept { return &socket_->tcp; }

   /// It is connected: begins to read.
   void start( StreamUser & user );

   /// Sends what is to be sent.
   void send();

   /// It is bound: `come( 0 )` is called for each connection that can be accepted, with an error
   /// where one could not be made. An error of libuv, or 0.
   int listen( int backlog, std::function< void( int error ) > come );

 private:
   /// What libuv needs until the socket is closed, which is after the stream has gone.
   struct Socket {
      union {
         uv_handle_t handle;
         uv_stream_t stream;
         uv_pipe_t pipe;
         uv_tcp_t tcp;
      };
      uv_write_t request{};
      Stream * owner = nullptr; ///< null: it has gone
      std::byte input[ 65536 ];
   };

   static Stream * ownerOf( const uv_stream_t * stream ) noexcept;
   static void onRead( uv_stream_t * stream, ssize_t size, const uv_buf_t * buffer );
   static void onWritten( uv_write_t * request, int status );
   void end( int code );

   LoopState & loop_;
   Socket * socket_;
   StreamUser * user_ = nullptr; // null before it is connected, and once it has ended
   std::function< void( int ) > come_;
   std::size_t writing_ = 0; // bytes of a request that is under way
};

} // namespace Vok::Store::Detail
