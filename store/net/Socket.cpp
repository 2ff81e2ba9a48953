// What is asked of the system's sockets.
#include "store/net/uv/Socket.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/un.h>
#include <unistd.h>
#include <uv.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace Vok::Store::Detail {

namespace {

void set( int descriptor, int level, int option, int value ) noexcept
{
   // One that the system does not know is done without.
   static_cast< void >( setsockopt( descriptor, level, option, &value, sizeof value ) );
}

} // namespace

SocketAddress::SocketAddress( const Address & address )
{
   if ( address.kind == Address::Kind::unixSocket ) {
      auto & to = reinterpret_cast< sockaddr_un & >( storage );
      to.sun_family = AF_UNIX;
      address.place.copy( to.sun_path, sizeof to.sun_path - 1 );
      size = sizeof to;
      return;
   }
   auto & v4 = reinterpret_cast< sockaddr_in & >( storage );
   size = sizeof v4;
   if ( uv_ip4_addr( address.place.c_str(), address.port, &v4 ) != 0 ) {
      auto & v6 = reinterpret_cast< sockaddr_in6 & >( storage );
      size = sizeof v6;
      uv_ip6_addr( address.place.c_str(), address.port, &v6 );
   }
}

std::uint16_t SocketAddress::port() const noexcept
{
   // At the same place in both kinds.
   return ntohs( reinterpret_cast< const sockaddr_in & >( storage ).sin_port );
}

std::string SocketAddress::text() const
{
   std::array< char, INET6_ADDRSTRLEN > name{};
   uv_ip_name( get(), name.data(), name.size() );
   const std::string place = name.data();
   return ( family() == AF_INET6 ? "[" + place + "]" : place ) + ":" + std::to_string( port() );
}

Socket::~Socket()
{
   if ( descriptor_ >= 0 ) {
      close( descriptor_ );
   }
}

Socket Socket::make( int family ) noexcept
{
   return Socket( socket( family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0 ) );
}

int Socket::error() const noexcept
{
   int error = 0;
   socklen_t size = sizeof error;
   return getsockopt( descriptor_, SOL_SOCKET, SO_ERROR, &error, &size ) == 0 ? error : errno;
}

void Socket::tuneTcp() const noexcept
{
   // A peer that has vanished is noticed a minute later.
   constexpr int silentSeconds = 30;
   constexpr int betweenSeconds = 10;
   constexpr int questions = 3;
   set( descriptor_, IPPROTO_TCP, TCP_NODELAY, 1 );
   set( descriptor_, SOL_SOCKET, SO_KEEPALIVE, 1 );
   set( descriptor_, IPPROTO_TCP, TCP_KEEPIDLE, silentSeconds );
   set( descriptor_, IPPROTO_TCP, TCP_KEEPINTVL, betweenSeconds );
   set( descriptor_, IPPROTO_TCP, TCP_KEEPCNT, questions );
}

Peer Socket::unixPeer() const
{
   Peer peer;
   ucred who{};
   socklen_t size = sizeof who;
   if ( getsockopt( descriptor_, SOL_SOCKET, SO_PEERCRED, &who, &size ) != 0 ) {
      peer.name = "unknown";
      return peer;
   }
   peer.name = "pid " + std::to_string( who.pid ) + " user " + std::to_string( who.uid );
   peer.user = who.uid;
   size = 0; // how many there are is told where there is too little room
   if ( getsockopt( descriptor_, SOL_SOCKET, SO_PEERGROUPS, nullptr, &size ) != 0 &&
         errno == ERANGE ) {
      peer.groups.resize( size / sizeof( gid_t ) );
      if ( getsockopt( descriptor_, SOL_SOCKET, SO_PEERGROUPS, peer.groups.data(), &size ) != 0 ) {
         peer.groups.clear();
      }
   }
   peer.groups.push_back( who.gid );
   return peer;
}

} // namespace Vok::Store::Detail
