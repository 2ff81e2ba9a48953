// One socket for each version of IP.
#include "tools/flowtrack-platform/UdpSender.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <iostream>
#include <netinet/in.h>
#include <optional>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

namespace FlowtrackPlatform {

namespace {

std::optional< std::vector< std::uint8_t > > socketAddress(
      int family, const std::string & text, std::uint16_t port )
{
   sockaddr_in ip{};
   sockaddr_in6 ip6{};
   ip.sin_family = AF_INET;
   ip.sin_port = htons( port );
   ip6.sin6_family = AF_INET6;
   ip6.sin6_port = htons( port );
   const bool four = family == AF_INET;
   void * const to = four ? static_cast< void * >( &ip.sin_addr ) : &ip6.sin6_addr;
   if ( ::inet_pton( family, text.c_str(), to ) != 1 ) {
      return std::nullopt;
   }
   const auto * const bytes = four ? reinterpret_cast< const std::uint8_t * >( &ip )
                                   : reinterpret_cast< const std::uint8_t * >( &ip6 );
   return std::vector< std::uint8_t >( bytes, bytes + ( four ? sizeof ip : sizeof ip6 ) );
}

const sockaddr * asAddress( const std::vector< std::uint8_t > & bytes )
{
   return reinterpret_cast< const sockaddr * >( bytes.data() );
}

int familyOf( const std::string & address )
{
   return address.find( ':' ) == std::string::npos ? AF_INET : AF_INET6;
}

std::string lastError()
{
   return std::generic_category().message( errno );
}

} // namespace

UdpSender::UdpSender( const DestinationPlan & to )
{
   for ( const CollectorPlan & collector : to.collectors ) {
      const int family = familyOf( collector.address );
      if ( const auto at = socketAddress( family, collector.address, collector.port ) ) {
         collectors_.push_back( { collector.address + " port " + std::to_string( collector.port ),
               family, *at } );
      }
   }
   const auto any = [ this ]( int family ) {
      return std::any_of( collectors_.begin(), collectors_.end(),
            [ family ]( const Collector & one ) { return one.family == family; } );
   };
   sockets_[ 0 ] = any( AF_INET ) ? open( AF_INET, to.source4, to.dscp ) : -1;
   sockets_[ 1 ] = any( AF_INET6 ) ? open( AF_INET6, to.source6, to.dscp ) : -1;
}

UdpSender::~UdpSender()
{
   for ( const int socket : sockets_ ) {
      if ( socket >= 0 ) {
         ::close( socket );
      }
   }
}

int UdpSender::open( int family, const std::string & source, unsigned dscp )
{
   const int socket = ::socket( family, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0 );
   if ( socket < 0 ) {
      complain( "no socket: " + lastError() );
      return -1;
   }
   const int trafficClass = static_cast< int >( dscp << 2 ); // above the bits of ECN
   if ( family == AF_INET ) {
      ::setsockopt( socket, IPPROTO_IP, IP_TOS, &trafficClass, sizeof trafficClass );
   } else {
      ::setsockopt( socket, IPPROTO_IPV6, IPV6_TCLASS, &trafficClass, sizeof trafficClass );
   }
   const auto from = source.empty() ? std::nullopt : socketAddress( family, source, 0 );
   if ( from &&
         ::bind( socket, asAddress( *from ), static_cast< socklen_t >( from->size() ) ) != 0 ) {
      complain( "nothing is sent from " + source + ": " + lastError() );
      ::close( socket );
      return -1;
   }
   return socket;
}

void UdpSender::send( std::span< const std::uint8_t > message )
{
   for ( const Collector & collector : collectors_ ) {
      const int socket = sockets_[ collector.family == AF_INET ? 0 : 1 ];
      if ( socket >= 0 &&
            ::sendto( socket, message.data(), message.size(), 0, asAddress( collector.address ),
                  static_cast< socklen_t >( collector.address.size() ) ) < 0 ) {
         complain( "not sent to " + collector.name + ": " + lastError() );
      }
   }
}

void UdpSender::complain( const std::string & what )
{
   if ( what != complaint_ ) {
      complaint_ = what;
      std::cerr << "flowtrack-platform: " << what << std::endl;
   }
}

} // namespace FlowtrackPlatform
