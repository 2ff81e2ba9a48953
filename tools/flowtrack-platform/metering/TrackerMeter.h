// Meters the packets of one tracker, and exports its flows.
#pragma once

#include "tools/flowtrack-platform/flows/Elements.h"
#include "tools/flowtrack-platform/flows/FlowTable.h"
#include "tools/flowtrack-platform/metering/Exporter.h"
#include "tools/flowtrack-platform/metering/Plan.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace FlowtrackPlatform {

/// Does what a plan says. It has no socket and no clock.
class TrackerMeter {
 public:
   struct Counters {
      std::uint64_t packets = 0; ///< that were counted, or would have been
      std::uint64_t tableFull = 0; ///< of those, packets of flows that had no room
   };

   TrackerMeter( const TrackerPlan & plan, MakeSender makeSender );
   TrackerMeter( const TrackerMeter & ) = delete;
   TrackerMeter & operator=( const TrackerMeter & ) = delete;

   /// Another plan from now on. Where its groups differ, all flows are reported first.
   void planIs( const TrackerPlan & plan );
   const TrackerPlan & plan() const noexcept { return plan_; }

   void interfacesAre( const InterfaceNames & names );

   /// Whether a packet is one of those that are tracked.
   bool selects( const Packet & packet ) const { return groupOf( packet ) != none; }

   /// Counts a packet that was sampled.
   void count( const Packet & packet );

   /// Reports, and sends, what is due at a time.
   void tick( Time now );

   /// Reports and sends all that there is.
   void end( Time now );

   const Counters & counters() const noexcept { return counters_; }
   void clearCounters() { counters_ = {}; }

 private:
   static constexpr std::size_t none = static_cast< std::size_t >( -1 );

   /// The elements of a layout, found once.
   struct Group {
      std::vector< const Element * > fields;
      std::vector< const Element * > keys;
   };

   void apply();
   std::size_t groupOf( const Packet & packet ) const;
   void report( std::size_t group, const Flow & flow );

   MakeSender makeSender_;
   TrackerPlan plan_;
   InterfaceNames interfaces_;
   Time now_ = 0;
   std::vector< Group > groups_;
   std::map< std::string, std::unique_ptr< Exporter > > exporters_;
   FlowTable table_{ [ this ]( std::size_t group, const Flow & flow ) { report( group, flow ); } };
   Bytes key_;
   Bytes record_;
   Counters counters_;
};

} // namespace FlowtrackPlatform
