// What is looked at of a packet.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

namespace FlowtrackPlatform {

/// Milliseconds since 1970. Nothing here asks for the time; who captures packets tells it.
using Time = std::uint64_t;

enum class Direction : std::uint8_t {
   ingress = 0,
   egress = 1 ///< the numbers are those of flowDirection
};

/// The headers of a packet; those inside an encapsulation, where flows are looked for in that. What
/// it does not have is 0.
struct Packet {
   enum class Encapsulation : std::uint8_t {
      none,
      mpls,
      vxlan
   };

   Time time = 0;
   std::array< std::uint8_t, 6 > sourceMac{};
   std::array< std::uint8_t, 6 > destinationMac{};
   std::uint16_t vlan = 0;
   Encapsulation encapsulation = Encapsulation::none;
   std::uint32_t vni = 0; ///< of VXLAN
   std::uint32_t label = 0; ///< the topmost of MPLS, with its traffic class and end of stack
   std::uint8_t version = 0; ///< 4 or 6; 0: not IP
   std::array< std::uint8_t, 16 > source{}; ///< of an IPv4 address the first four
   std::array< std::uint8_t, 16 > destination{};
   std::uint8_t protocol = 0;
   std::uint8_t trafficClass = 0;
   std::uint8_t ttl = 0;
   std::uint8_t tcpFlags = 0;
   std::uint32_t flowLabel = 0;
   std::uint32_t fragment = 0; ///< the identification that fragments share
   std::uint16_t fragmentOffset = 0; ///< in units of 8 bytes
   std::uint16_t sourcePort = 0;
   std::uint16_t destinationPort = 0;
   std::uint16_t icmp = 0; ///< type and code
   std::optional< std::uint32_t > queuePair; ///< that RoCEv2 is sent to
   std::uint32_t octets = 0; ///< from the IP header on; of what is not IP, of the frame
   std::uint32_t interface = 0; ///< index of the one that it was seen on
   Direction direction = Direction::ingress;
};

/// Which encapsulations flows are looked for in.
struct DecodeOptions {
   bool mpls = false;
   bool vxlan = false;

   friend bool operator==( const DecodeOptions &, const DecodeOptions & ) = default;
};

/// The headers of a frame whose first bytes these are, and that had `length` bytes. `linkType` is
/// that of capture files (https://www.tcpdump.org/linktypes.html): Ethernet, raw IP, and the two of
/// Linux's "any" device are read. None where there is no link header that could be read; a packet
/// that is cut short has what could be read of it.
std::optional< Packet > decode( int linkType, std::span< const std::uint8_t > bytes,
      std::uint32_t length, const DecodeOptions & options );

} // namespace FlowtrackPlatform
