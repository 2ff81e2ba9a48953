// Ethernet, VLAN tags, MPLS, IPv4 and IPv6, TCP, UDP, ICMP, VXLAN and RoCEv2.
#include "tools/flowtrack-platform/flows/Packet.h"

#include <algorithm>
#include <cstddef>

namespace FlowtrackPlatform {

namespace {

enum LinkType {
   ethernet = 1,
   rawIp = 101,
   rawIpOfSystem = 12, ///< the same, as libpcap calls it on Linux
   cooked = 113,
   cooked2 = 276
};

enum EtherType {
   etherIpv4 = 0x0800,
   etherVlan = 0x8100,
   etherIpv6 = 0x86dd,
   etherMpls = 0x8847,
   etherServiceVlan = 0x88a8
};

enum Protocol {
   hopByHop = 0,
   icmp = 1,
   tcp = 6,
   udp = 17,
   routing = 43,
   fragment = 44,
   icmpv6 = 58,
   destinationOptions = 60
};

constexpr std::uint16_t vxlanPort = 4789;
constexpr std::uint16_t rocePort = 4791;

/// Reads on. Behind the end all is 0, and the end is noted.
class Reader {
 public:
   explicit Reader( std::span< const std::uint8_t > bytes ) : bytes_( bytes ) {}

   std::uint32_t number( unsigned length )
   {
      std::uint32_t value = 0;
      for ( unsigned i = 0; i != length; ++i ) {
         value = value << 8 | ( at_ < bytes_.size() ? bytes_[ at_ ] : 0U );
         ++at_;
      }
      return value;
   }

   std::uint8_t byte() { return static_cast< std::uint8_t >( number( 1 ) ); }
   std::uint16_t word() { return static_cast< std::uint16_t >( number( 2 ) ); }

   template< std::size_t n >
   void copy( std::array< std::uint8_t, n > & to, std::size_t count )
   {
      for ( std::size_t i = 0; i != count; ++i ) {
         to[ i ] = byte();
      }
   }

   void skip( std::size_t count ) { at_ += count; }
   bool past() const noexcept { return at_ > bytes_.size(); }
   std::uint8_t next() const noexcept { return at_ < bytes_.size() ? bytes_[ at_ ] : 0; }

   std::span< const std::uint8_t > rest() const
   {
      return bytes_.subspan( std::min( at_, bytes_.size() ) );
   }

 private:
   std::span< const std::uint8_t > bytes_;
   std::size_t at_ = 0;
};

class Decoder {
 public:
   explicit Decoder( const DecodeOptions & options ) : options_( options ) {}

   Packet & packet() noexcept { return packet_; }

   void ethernetFrame( Reader & from )
   {
      from.copy( packet_.destinationMac, 6 );
      from.copy( packet_.sourceMac, 6 );
      network( from.word(), from );
   }

   void network( std::uint16_t type, Reader & from )
   {
      for ( ; ( type == etherVlan || type == etherServiceVlan ) && !from.past();
            type = from.word() ) {
         packet_.vlan = from.word() & 0xfff;
      }
      if ( type == etherIpv4 || type == etherIpv6 ) {
         ip( from );
      } else if ( type == etherMpls && options_.mpls ) {
         labels( from );
      }
   }

   void ip( Reader & from )
   {
      const unsigned version = from.next() >> 4;
      if ( version == 4 ) {
         ipv4( from );
      } else if ( version == 6 ) {
         ipv6( from );
      }
   }

 private:
   void labels( Reader & from )
   {
      packet_.encapsulation = Packet::Encapsulation::mpls;
      std::uint32_t entry = from.number( 4 );
      packet_.label = entry >> 8;
      while ( ( entry & 0x100 ) == 0 && !from.past() ) {
         entry = from.number( 4 );
      }
      ip( from );
   }

   void ipv4( Reader & from )
   {
      packet_.version = 4;
      const unsigned header = ( from.byte() & 0xfU ) * 4;
      packet_.trafficClass = from.byte();
      packet_.octets = from.word();
      packet_.fragment = from.word();
      packet_.fragmentOffset = from.word() & 0x1fff;
      packet_.ttl = from.byte();
      packet_.protocol = from.byte();
      from.skip( 2 );
      from.copy( packet_.source, 4 );
      from.copy( packet_.destination, 4 );
      from.skip( header > 20 ? header - 20 : 0 );
      if ( packet_.fragmentOffset == 0 ) {
         transport( from );
      }
   }

   void ipv6( Reader & from )
   {
      packet_.version = 6;
      const std::uint32_t first = from.number( 4 );
      packet_.trafficClass = static_cast< std::uint8_t >( first >> 20 );
      packet_.flowLabel = first & 0xfffff;
      packet_.octets = from.word() + 40U;
      packet_.protocol = from.byte();
      packet_.ttl = from.byte();
      from.copy( packet_.source, 16 );
      from.copy( packet_.destination, 16 );
      extensions( from );
      if ( packet_.fragmentOffset == 0 ) {
         transport( from );
      }
   }

   void extensions( Reader & from )
   {
      while ( !from.past() ) {
         const unsigned kind = packet_.protocol;
         if ( kind == fragment ) {
            packet_.protocol = from.byte();
            from.skip( 1 );
            packet_.fragmentOffset = static_cast< std::uint16_t >( from.word() >> 3 );
            packet_.fragment = from.number( 4 );
         } else if ( kind == hopByHop || kind == routing || kind == destinationOptions ) {
            packet_.protocol = from.byte();
            from.skip( from.byte() * 8U + 6 );
         } else {
            return;
         }
      }
   }

   void transport( Reader & from )
   {
      switch ( packet_.protocol ) {
      case tcp:
         packet_.sourcePort = from.word();
         packet_.destinationPort = from.word();
         from.skip( 9 );
         packet_.tcpFlags = from.byte();
         return;
      case udp:
         packet_.sourcePort = from.word();
         packet_.destinationPort = from.word();
         from.skip( 4 );
         return datagram( from );
      case icmp:
      case icmpv6:
         packet_.icmp = from.word();
         return;
      default:
         return;
      }
   }

   void datagram( Reader & from )
   {
      if ( packet_.destinationPort == rocePort ) {
         from.skip( 5 ); // of the base transport header
         const std::uint32_t pair = from.number( 3 );
         if ( !from.past() ) {
            packet_.queuePair = pair;
         }
      } else if ( packet_.destinationPort == vxlanPort && options_.vxlan &&
            packet_.encapsulation != Packet::Encapsulation::vxlan && ( from.next() & 8U ) != 0 ) {
         from.skip( 4 );
         const std::uint32_t vni = from.number( 3 );
         from.skip( 1 );
         inside( vni, from );
      }
   }

   /// What is inside stands in place of what is around it.
   void inside( std::uint32_t vni, Reader & from )
   {
      packet_ = Packet();
      packet_.encapsulation = Packet::Encapsulation::vxlan;
      packet_.vni = vni;
      packet_.octets = static_cast< std::uint32_t >( from.rest().size() ); // where it is not IP
      ethernetFrame( from );
   }

   const DecodeOptions & options_;
   Packet packet_;
};

} // namespace

std::optional< Packet > decode( int linkType, std::span< const std::uint8_t > bytes,
      std::uint32_t length, const DecodeOptions & options )
{
   Reader from( bytes );
   Decoder decoder( options );
   decoder.packet().octets = length;
   switch ( linkType ) {
   case ethernet:
      if ( bytes.size() < 14 ) {
         return std::nullopt;
      }
      decoder.ethernetFrame( from );
      break;
   case rawIp:
   case rawIpOfSystem:
      decoder.ip( from );
      break;
   case cooked:
      from.skip( 14 );
      decoder.network( from.word(), from );
      break;
   case cooked2: {
      const std::uint16_t type = from.word();
      from.skip( 18 );
      decoder.network( type, from );
      break;
   }
   default:
      return std::nullopt;
   }
   return decoder.packet();
}

} // namespace FlowtrackPlatform
