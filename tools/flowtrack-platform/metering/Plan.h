// What a tracker is to do, out of the trees that say so.
#pragma once

#include "tools/flowtrack-platform/flows/FlowTable.h"
#include "tools/flowtrack-platform/ipfix/MessageWriter.h"

#include "FlowTracker/HwFlowTrackingConfig.h"
#include "FlowTracker/HwFlowTrackingStatus.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace FlowtrackPlatform {

/// What the records of a group hold, and what tells its flows apart.
struct Layout {
   std::uint16_t templateId = 0;
   std::vector< Ipfix::RecordType > fields; ///< numbers of elements, in the order of the record
   std::vector< Ipfix::RecordType > keys; ///< of elements; some or all of the fields

   Template asTemplate() const;

   friend bool operator==( const Layout &, const Layout & ) = default;
};

/// Packets that one layout is for. The groups of a tracker, each once for every kind of packet that
/// it selects, in order: a packet is of the first that selects it.
struct GroupPlan {
   std::string name; ///< empty: the tracker has no groups
   Packet::Encapsulation encapsulation = Packet::Encapsulation::none;
   std::uint8_t version = 0; ///< of IP
   bool roceOnly = false;
   Layout layout;
   std::set< std::string > exporters; ///< names of those that get its records

   bool selects( const Packet & packet ) const
   {
      return packet.encapsulation == encapsulation && packet.version == version &&
            ( !roceOnly || packet.queuePair );
   }

   friend bool operator==( const GroupPlan &, const GroupPlan & ) = default;
};

struct CollectorPlan {
   std::string address; ///< as inet_pton(3) reads it
   std::uint16_t port = 0;

   friend bool operator==( const CollectorPlan &, const CollectorPlan & ) = default;
};

/// Where records go, and how.
struct DestinationPlan {
   std::vector< CollectorPlan > collectors;
   std::string source4; ///< address; empty: the system chooses
   std::string source6;
   std::uint8_t dscp = 0;
   std::size_t mostBytes = 1400; ///< of a message

   friend bool operator==( const DestinationPlan &, const DestinationPlan & ) = default;
};

struct ExporterPlan {
   std::string name;
   DestinationPlan destination;
   Time templateInterval = 3600000;
   std::uint32_t templateRequests = 0; ///< another number: templates are sent at once

   friend bool operator==( const ExporterPlan &, const ExporterPlan & ) = default;
};

struct TrackerPlan {
   std::string name;
   std::uint32_t domain = 0; ///< the tracker's number is its observation domain
   std::uint32_t sampleRate = 1;
   std::uint32_t sampleLimit = 0;
   FlowLimits limits;
   DecodeOptions decode;
   std::set< std::uint32_t > ignoredQueuePairs;
   std::vector< GroupPlan > groups;
   std::vector< ExporterPlan > exporters;

   friend bool operator==( const TrackerPlan &, const TrackerPlan & ) = default;
};

/// The plan of a tracker that hardware takes, as far as its capabilities go: of exporters and of
/// collectors beyond a limit the first by name count; formats other than IPFIX are not exported.
/// `before` is the plan until now, or null: its groups stay while their generation has still to be
/// raised. What cannot be done is appended to `complaints`, a line each.
TrackerPlan planOf( const HwFlowTracking::Config & config,
      const HwFlowTracking::FtConfig & tracker, const HwFlowTracking::Capabilities & capabilities,
      const TrackerPlan * before, std::vector< std::string > & complaints );

} // namespace FlowtrackPlatform
