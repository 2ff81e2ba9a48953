// A flow, as it is counted between two reports.
#pragma once

#include "tools/flowtrack-platform/flows/Packet.h"

#include <cstdint>

namespace FlowtrackPlatform {

/// Why a flow is reported; the numbers are those of flowEndReason.
enum class EndReason : std::uint8_t {
   none = 0,
   idle = 1, ///< no packet came for the inactive timeout
   active = 2, ///< it goes on, and the active interval is over
   ended = 3, ///< TCP ended it
   forced = 4, ///< metering ends, or begins anew
   noResources = 5
};

struct Flow {
   Packet first; ///< of all that were seen of the flow
   std::uint64_t packets = 0; ///< since the last report, as all that follows
   std::uint64_t octets = 0;
   Time start = 0; ///< of the first packet
   Time end = 0; ///< of the last one
   std::uint8_t tcpFlags = 0; ///< of all packets
   std::uint32_t shortest = 0; ///< octets
   std::uint32_t longest = 0;
   std::uint8_t lowestTtl = 0;
   std::uint8_t highestTtl = 0;
   EndReason reason = EndReason::none;
};

} // namespace FlowtrackPlatform
