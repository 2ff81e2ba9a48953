// How a store takes connections.
#include "store/net/Listener.h"

#include "store/net/uv/Stream.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

namespace Vok::Store {

namespace Detail {

namespace {

constexpr int backlog = 512;

/// A client's connection.
class Accepted final : public StreamUser {
 public:
   Accepted( LoopState & loop, Server & server, bool isUnix )
         : stream( loop, isUnix ),
           session_( server.connected() )
   {
   }

   void received( std::span< const std::byte > piece ) override { session_->receive( piece ); }
   std::span< const std::byte > output() const noexcept override { return session_->output(); }
   void sent( std::size_t count ) override { session_->sent( count ); }
   void ended( const std::string & ) override { ended_ = true; }

   /// Whether nothing more comes of it.
   bool over() const noexcept
   {
      return ended_ || ( session_->finished() && session_->output().empty() );
   }

   Stream stream;

 private:
   std::unique_ptr< Session > session_;
   bool ended_ = false;
};

/// Whether somebody listens at a Unix socket.
bool isListenedAt( const std::string & path )
{
   sockaddr_un to{};
   to.sun_family = AF_UNIX;
   std::memcpy( to.sun_path, path.c_str(), std::min( path.size(), sizeof to.sun_path - 1 ) );
   const int probe = socket( AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0 );
   if ( probe < 0 ) {
      return true; // it cannot be told: nothing is taken away
   }
   const int answer = connect( probe, reinterpret_cast< const sockaddr * >( &to ), sizeof to );
   const bool refused = answer != 0 && errno == ECONNREFUSED;
   close( probe );
   return !refused;
}

} // namespace

class ListenerState final : public LoopUser {
 public:
   ListenerState( Loop & loop, Server & server, const Address & where )
         : address( where ),
           loop_( loop.state() ),
           server_( server ),
           socket_( loop_, where.kind == Address::Kind::unixSocket )
   {
      int code = isUnix() ? bindUnix() : bindTcp();
      if ( code == 0 ) {
         code = socket_.listen( backlog, [ this ]( int error ) { accept( error ); } );
      }
      if ( code != 0 ) {
         throw systemError( code, address.text() + " cannot be listened at" );
      }
      loop_.users.push_back( this );
   }
   ListenerState( const ListenerState & ) = delete;
   ListenerState & operator=( const ListenerState & ) = delete;
   ~ListenerState() override { std::erase( loop_.users, this ); }

   void work() override
   {
      server_.publish();
      for ( const auto & one : accepted_ ) {
         one->stream.send();
      }
      if ( std::erase_if( accepted_, []( const auto & one ) { return one->over(); } ) != 0 ) {
         work(); // their mounts are stale, which is told
      }
   }

   std::size_t connections() const noexcept { return accepted_.size(); }

   Address address;

 private:
   bool isUnix() const noexcept { return address.kind == Address::Kind::unixSocket; }

   int bindUnix()
   {
      const char * const path = address.place.c_str();
      int code = uv_pipe_bind( socket_.pipe(), path );
      if ( code == UV_EADDRINUSE && !isListenedAt( address.place ) ) {
         unlink( path );
         code = uv_pipe_bind( socket_.pipe(), path );
      }
      return code;
   }

   int bindTcp()
   {
      sockaddr_storage at{};
      const char * const place = address.place.c_str();
      if ( uv_ip4_addr( place, address.port, reinterpret_cast< sockaddr_in * >( &at ) ) != 0 ) {
         uv_ip6_addr( place, address.port, reinterpret_cast< sockaddr_in6 * >( &at ) );
      }
      const int code =
            uv_tcp_bind( socket_.tcp(), reinterpret_cast< const sockaddr * >( &at ), 0 );
      int size = sizeof at;
      if ( code == 0 &&
            uv_tcp_getsockname( socket_.tcp(), reinterpret_cast< sockaddr * >( &at ), &size ) ==
                  0 ) {
         // The port is at the same place in both kinds of addresses.
         address.port = ntohs( reinterpret_cast< const sockaddr_in * >( &at )->sin_port );
      }
      return code;
   }

   void accept( int error )
   {
      if ( error != 0 ) {
         return; // as many connections as the system gives: the next ones are taken later
      }
      auto one = std::make_unique< Accepted >( loop_, server_, isUnix() );
      if ( uv_accept( socket_.get(), one->stream.get() ) == 0 ) {
         if ( !isUnix() ) {
            uv_tcp_nodelay( one->stream.tcp(), 1 );
         }
         one->stream.start( *one );
         accepted_.push_back( std::move( one ) );
      }
   }

   LoopState & loop_;
   Server & server_;
   Stream socket_;
   std::vector< std::unique_ptr< Accepted > > accepted_;
};

} // namespace Detail

Listener::Listener( Loop & loop, Server & server, const Address & address )
      : state_( std::make_unique< Detail::ListenerState >( loop, server, address ) )
{
}

Listener::~Listener() = default;

const Address & Listener::address() const noexcept
{
   return state_->address;
}

std::size_t Listener::connections() const noexcept
{
   return state_->connections();
}

} // namespace Vok::Store
