// Addresses of either family: text and log.
#include "Wyre/IpGenAddr.h"

#include <string>

namespace Wyre {

IpGenAddr::IpGenAddr( const IpAddr & ip ) : family_( AddressFamily::ipv4 ),
                                            ip_( ip ) {}

IpGenAddr::IpGenAddr( const Ip6Addr & ip6 ) : family_( AddressFamily::ipv6 ),
                                              ip6_( ip6 ) {}

IpGenAddr::IpGenAddr( const Corvo::String & text )
{
   if ( text.empty() ) {
      return;
   }
   // Every IPv6 address has a colon, and no IPv4 address has one.
   if ( text.view().find( ':' ) != std::string_view::npos ) {
      *this = IpGenAddr( Ip6Addr( text ) );
   } else {
      *this = IpGenAddr( IpAddr( text ) );
   }
}

Corvo::String IpGenAddr::stringValue() const
{
   switch ( family_ ) {
   case AddressFamily::ipv4:
      return ip_.stringValue();
   case AddressFamily::ipv6:
      return ip6_.stringValue();
   case AddressFamily::ipunknown:
      break;
   }
   return Corvo::String();
}

std::size_t IpGenAddr::logSize() const
{
   switch ( family_ ) {
   case AddressFamily::ipv4:
      return 1 + attrLogSize( ip_ );
   case AddressFamily::ipv6:
      return 1 + attrLogSize( ip6_ );
   case AddressFamily::ipunknown:
      break;
   }
   return 1;
}

void IpGenAddr::writeLog( Vok::NboAttrLog::Out & log ) const
{
   log.put( static_cast< std::uint8_t >( family_ ) );
   switch ( family_ ) {
   case AddressFamily::ipv4:
      log << ip_;
      break;
   case AddressFamily::ipv6:
      log << ip6_;
      break;
   case AddressFamily::ipunknown:
      break;
   }
}

void IpGenAddr::readLog( Vok::NboAttrLog::In & log )
{
   const unsigned family = log.get< std::uint8_t >();
   switch ( family ) {
   case static_cast< unsigned >( AddressFamily::ipv4 ):
      *this = IpGenAddr( IpAddr( &log ) );
      break;
   case static_cast< unsigned >( AddressFamily::ipv6 ):
      *this = IpGenAddr( Ip6Addr( &log ) );
      break;
   case static_cast< unsigned >( AddressFamily::ipunknown ):
      *this = IpGenAddr();
      break;
   default:
      throw Vok::NboAttrLog::Exception(
            "Wyre::AddressFamily has no code " + std::to_string( family ) );
   }
}

} // namespace Wyre
