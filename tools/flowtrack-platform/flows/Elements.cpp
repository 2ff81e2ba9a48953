// The table of elements, in the order of their numbers.
#include "tools/flowtrack-platform/flows/Elements.h"

#include "Ipfix/IpfixTypes.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace FlowtrackPlatform {

namespace {

/// A number of a packet.
template< auto member, unsigned length > void number( const Packet & packet, Bytes & to )
{
   appendNumber( to, static_cast< std::uint64_t >( packet.*member ), length );
}

template< auto member > void mac( const Packet & packet, Bytes & to )
{
   append( to, packet.*member );
}

/// An address of a packet; zeros where the packet is of another version of IP.
template< auto member, unsigned version > void address( const Packet & packet, Bytes & to )
{
   constexpr std::size_t length = version == 4 ? 4 : 16;
   if ( packet.version == version ) {
      append( to, std::span( packet.*member ).template first< length >() );
   } else {
      to.resize( to.size() + length );
   }
}

template< unsigned version > void icmpOf( const Packet & packet, Bytes & to )
{
   appendNumber( to, packet.version == version ? packet.icmp : 0U, 2 );
}

template< auto member, unsigned length > void counter( const Flow & flow, Bytes & to )
{
   appendNumber( to, static_cast< std::uint64_t >( flow.*member ), length );
}

template< auto member > void seconds( const Flow & flow, Bytes & to )
{
   appendNumber( to, flow.*member / 1000, 4 );
}

void tcpFlagsOfPacket( const Packet & packet, Bytes & to )
{
   appendNumber( to, packet.tcpFlags, 2 );
}

void vxlanId( const Packet & packet, Bytes & to )
{
   // layer2SegmentId: a byte that says what kind of network it is, VXLAN, and 7 for its number.
   appendNumber( to, packet.vni == 0 ? 0 : 1, 1 );
   appendNumber( to, packet.vni, 7 );
}

/// Of an interface that packets arrive at or leave by, and 0 in the other direction.
template< Direction direction > void interfaceOf( const Packet & packet, Bytes & to )
{
   appendNumber( to, packet.direction == direction ? packet.interface : 0, 4 );
}

void forwardingStatus( const Packet & /*packet*/, Bytes & to )
{
   constexpr unsigned forwarded = 1U << 6;
   appendNumber( to, forwarded, 1 );
}

// clang-format off
constexpr Element table[] = {
   { Ipfix::octetDeltaCount, 8, nullptr, counter< &Flow::octets, 8 > },
   { Ipfix::packetDeltaCount, 8, nullptr, counter< &Flow::packets, 8 > },
   { Ipfix::protocolIdentifier, 1, number< &Packet::protocol, 1 >, nullptr },
   { Ipfix::ipClassOfService, 1, number< &Packet::trafficClass, 1 >, nullptr },
   { Ipfix::tcpControlBits, 2, tcpFlagsOfPacket, counter< &Flow::tcpFlags, 2 > },
   { Ipfix::sourceTransportPort, 2, number< &Packet::sourcePort, 2 >, nullptr },
   { Ipfix::sourceIPv4Address, 4, address< &Packet::source, 4 >, nullptr },
   { Ipfix::ingressInterface, 4, interfaceOf< Direction::ingress >, nullptr },
   { Ipfix::destinationTransportPort, 2, number< &Packet::destinationPort, 2 >, nullptr },
   { Ipfix::destinationIPv4Address, 4, address< &Packet::destination, 4 >, nullptr },
   { Ipfix::egressInterface, 4, interfaceOf< Direction::egress >, nullptr },
   { Ipfix::minimumIpTotalLength, 8, nullptr, counter< &Flow::shortest, 8 > },
   { Ipfix::maximumIpTotalLength, 8, nullptr, counter< &Flow::longest, 8 > },
   { Ipfix::sourceIPv6Address, 16, address< &Packet::source, 6 >, nullptr },
   { Ipfix::destinationIPv6Address, 16, address< &Packet::destination, 6 >, nullptr },
   { Ipfix::flowLabelIPv6, 4, number< &Packet::flowLabel, 4 >, nullptr },
   { Ipfix::icmpTypeCodeIPv4, 2, icmpOf< 4 >, nullptr },
   { Ipfix::minimumTTL, 1, nullptr, counter< &Flow::lowestTtl, 1 > },
   { Ipfix::maximumTTL, 1, nullptr, counter< &Flow::highestTtl, 1 > },
   { Ipfix::fragmentIdentification, 4, number< &Packet::fragment, 4 >, nullptr },
   { Ipfix::sourceMacAddress, 6, mac< &Packet::sourceMac >, nullptr },
   { Ipfix::vlanId, 2, number< &Packet::vlan, 2 >, nullptr },
   { Ipfix::ipVersion, 1, number< &Packet::version, 1 >, nullptr },
   { Ipfix::flowDirection, 1, number< &Packet::direction, 1 >, nullptr },
   { Ipfix::mplsTopLabelStackSection, 3, number< &Packet::label, 3 >, nullptr },
   { Ipfix::destinationMacAddress, 6, mac< &Packet::destinationMac >, nullptr },
   { Ipfix::fragmentOffset, 2, number< &Packet::fragmentOffset, 2 >, nullptr },
   { Ipfix::forwardingStatus, 1, forwardingStatus, nullptr },
   { Ipfix::flowEndReason, 1, nullptr, counter< &Flow::reason, 1 > },
   { Ipfix::icmpTypeCodeIPv6, 2, icmpOf< 6 >, nullptr },
   { Ipfix::flowStartSeconds, 4, nullptr, seconds< &Flow::start > },
   { Ipfix::flowEndSeconds, 4, nullptr, seconds< &Flow::end > },
   { Ipfix::flowStartMilliseconds, 8, nullptr, counter< &Flow::start, 8 > },
   { Ipfix::flowEndMilliseconds, 8, nullptr, counter< &Flow::end, 8 > },
   { Ipfix::ipTTL, 1, number< &Packet::ttl, 1 >, nullptr },
   { Ipfix::layer2SegmentId, 8, vxlanId, nullptr },
};
// clang-format on

static_assert( std::is_sorted( std::begin( table ), std::end( table ),
      []( const Element & a, const Element & b ) { return a.number < b.number; } ) );

} // namespace

const Element * findElement( Ipfix::RecordType number )
{
   const auto at = std::lower_bound( std::begin( table ), std::end( table ), number,
         []( const Element & element, Ipfix::RecordType n ) { return element.number < n; } );
   return at != std::end( table ) && at->number == number ? at : nullptr;
}

} // namespace FlowtrackPlatform
