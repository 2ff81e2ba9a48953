// One connected socket: Unix or TCP. Part of Connection.cpp and Accepted.cpp.
//
// libuv says when a socket can be read and written; reading and writing are done here, because
// libuv's own writing raises SIGPIPE, which would end a program whose peer has gone.
#pragma once

#include "store/net/uv/LoopState.h"
#include "store/net/uv/Socket.h"

#include <uv.h>

#include <cstddef>
#include <functional>
#include <span>
#include <string>

namespace Vok::Store::Detail {

/// Whose bytes go over a socket. None of these destroys the stream.
class StreamUser {
 public:
   virtual ~StreamUser() = default;
   virtual void received( std::span< const std::byte > piece ) = 0;

   /// The pieces to be sent next, in order, as many as `into` takes: how many. They stay until
   /// `sent`.
   virtual std::size_t outputs( std::span< std::span< const std::byte > > into ) = 0;
   virtual void sent( std::size_t count ) = 0;

   /// The other side has gone, or the socket failed: the stream is of no use any more.
   virtual void ended( const std::string & why ) = 0;
};

/// A socket. Bytes are read as they come, and sent as far as the system takes them at once; what is
/// left goes when it takes more.
class Stream {
 public:
   /// Throws std::system_error.
   Stream( LoopState & loop, Socket socket );
   Stream( const Stream & ) = delete;
   Stream & operator=( const Stream & ) = delete;

   /// Closes it; nothing more is told.
   ~Stream();

   /// Begins to connect; `done` is told how that ended, with an error of the system or 0. Returns
   /// such an error where it cannot begin.
   int connect( const SocketAddress & to, std::function< void( int error ) > done );

   /// It is connected: begins to read.
   void start( StreamUser & user );

   /// Sends what is to be sent.
   void send();

   /// Tells the other side that nothing comes after what is to be sent. Reading goes on.
   void finish();

   /// Whether it reads, which it does at first.
   void reading( bool yes );

 private:
   void onEvent( int events );
   void read();
   void arm();
   void end( const std::string & why );

   LoopState & loop_;
   Socket socket_;
   uv_poll_t * poll_; // libuv needs it until it is closed
   int armed_ = 0; // the events that it waits for
   std::function< void( int error ) > connecting_;
   StreamUser * user_ = nullptr; // null before it is connected, and once it has ended
   bool blocked_ = false; // the system takes no more at present
   bool reading_ = true;
   bool finishing_ = false;
};

} // namespace Vok::Store::Detail
