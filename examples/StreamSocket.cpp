// System calls behind StreamSocket.
#include "StreamSocket.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace {

[[noreturn]] void fail( const char * what )
{
   throw std::system_error( errno, std::generic_category(), what );
}

int newSocket()
{
   const int descriptor = ::socket( AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0 );
   if ( descriptor < 0 ) {
      fail( "socket" );
   }
   return descriptor;
}

sockaddr_un addressOf( const std::string & path )
{
   sockaddr_un address{};
   address.sun_family = AF_UNIX;
   if ( path.size() >= sizeof address.sun_path ) {
      errno = ENAMETOOLONG;
      fail( path.c_str() );
   }
   std::memcpy( address.sun_path, path.data(), path.size() );
   return address;
}

} // namespace

StreamSocket StreamSocket::listenAt( const std::string & path )
{
   StreamSocket socket( newSocket() );
   const sockaddr_un address = addressOf( path );
   const auto * const any = reinterpret_cast< const sockaddr * >( &address );
   if ( ::bind( socket.descriptor_, any, sizeof address ) != 0 ||
         ::listen( socket.descriptor_, 1 ) != 0 ) {
      fail( path.c_str() );
   }
   return socket;
}

StreamSocket StreamSocket::connectTo( const std::string & path )
{
   const sockaddr_un address = addressOf( path );
   const auto * const any = reinterpret_cast< const sockaddr * >( &address );
   for ( int attempt = 0;; ++attempt ) {
      StreamSocket socket( newSocket() );
      if ( ::connect( socket.descriptor_, any, sizeof address ) == 0 ) {
         return socket;
      }
      if ( attempt == 200 || ( errno != ENOENT && errno != ECONNREFUSED ) ) {
         fail( path.c_str() );
      }
      std::this_thread::sleep_for( std::chrono::milliseconds( 50 ) );
   }
}

StreamSocket::~StreamSocket()
{
   if ( descriptor_ >= 0 ) {
      ::close( descriptor_ );
   }
}

StreamSocket StreamSocket::accept() const
{
   const int descriptor = ::accept4( descriptor_, nullptr, nullptr, SOCK_CLOEXEC );
   if ( descriptor < 0 ) {
      fail( "accept" );
   }
   return StreamSocket( descriptor );
}

void StreamSocket::send( std::span< const std::byte > bytes ) const
{
   while ( !bytes.empty() ) {
      const ssize_t sent = ::send( descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL );
      if ( sent < 0 && errno != EINTR ) {
         fail( "send" );
      }
      bytes = bytes.subspan( sent < 0 ? 0 : static_cast< std::size_t >( sent ) );
   }
}

std::size_t StreamSocket::receive( std::span< std::byte > into ) const
{
   for ( ;; ) {
      const ssize_t received = ::recv( descriptor_, into.data(), into.size(), 0 );
      if ( received >= 0 ) {
         return static_cast< std::size_t >( received );
      }
      if ( errno != EINTR ) {
         fail( "recv" );
      }
   }
}
