// The text form of addresses.
#include "store/net/Address.h"

#include <uv.h>

#include <charconv>

namespace Vok::Store {

namespace {

// What a Unix socket's path may take, with the null behind it (unix(7)).
constexpr std::size_t longestSocketPath = 107;

[[noreturn]] void refuse( std::string_view text )
{
   throw AddressException( "\"" + std::string( text.substr( 0, 200 ) ) +
         "\" is no address: unix:/path/of/a/socket, tcp:127.0.0.1:4040 or tls:[::1]:4041 is one" );
}

bool isIp( const Address & address )
{
   sockaddr_in v4{};
   sockaddr_in6 v6{};
   return uv_ip4_addr( address.place.c_str(), address.port, &v4 ) == 0 ||
         uv_ip6_addr( address.place.c_str(), address.port, &v6 ) == 0;
}

} // namespace

Address Address::parse( std::string_view text )
{
   Address address;
   if ( text.starts_with( "unix:/" ) ) {
      address.place = text.substr( 5 );
      if ( address.place.size() > longestSocketPath ) {
         throw AddressException( "the path of a socket has at most " +
               std::to_string( longestSocketPath ) + " bytes: " + address.place );
      }
      return address;
   }
   const std::size_t colon = text.rfind( ':' );
   const bool tls = text.starts_with( "tls:" );
   if ( ( !tls && !text.starts_with( "tcp:" ) ) || colon < 4 ) {
      refuse( text );
   }
   address.kind = tls ? Kind::tls : Kind::tcp;
   std::string_view host = text.substr( 4, colon - 4 );
   if ( host.starts_with( '[' ) && host.ends_with( ']' ) ) {
      host = host.substr( 1, host.size() - 2 );
   }
   address.place = host;
   const char * const end = text.data() + text.size();
   const auto [ rest, error ] = std::from_chars( text.data() + colon + 1, end, address.port );
   if ( error != std::errc() || rest != end || !isIp( address ) ) {
      refuse( text );
   }
   return address;
}

bool Address::isLoopback() const noexcept
{
   sockaddr_in v4{};
   sockaddr_in6 v6{};
   if ( kind == Kind::unixSocket ) {
      return false;
   }
   if ( uv_ip4_addr( place.c_str(), port, &v4 ) == 0 ) {
      return ntohl( v4.sin_addr.s_addr ) >> 24 == 127;
   }
   return uv_ip6_addr( place.c_str(), port, &v6 ) == 0 && IN6_IS_ADDR_LOOPBACK( &v6.sin6_addr );
}

std::string Address::text() const
{
   if ( kind == Kind::unixSocket ) {
      return "unix:" + place;
   }
   const bool v6 = place.find( ':' ) != std::string::npos;
   const char * const start = kind == Kind::tls ? "tls:" : "tcp:";
   return start + ( v6 ? "[" + place + "]" : place ) + ":" + std::to_string( port );
}

} // namespace Vok::Store
