// The flows of a tracker.
#pragma once

#include "tools/flowtrack-platform/flows/Flow.h"

#include <cstddef>
#include <functional>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>

namespace FlowtrackPlatform {

/// When flows are reported, in milliseconds; and how many there may be.
struct FlowLimits {
   Time inactive = 15000; ///< silence that ends a flow
   Time active = 300000; ///< reports of a flow that goes on; 0: none
   std::size_t flows = 153600;
   bool tcpEnds = false; ///< a flow that TCP ends is reported at once

   friend bool operator==( const FlowLimits &, const FlowLimits & ) = default;
};

/// Counts packets by flow, and reports flows by timers. Its time is that of the packets and of
/// `tick`, which may come out of order: a packet that is late counts as of the latest time.
class FlowTable {
 public:
   /// `report` gets the group and what was counted since the last report: never a flow without
   /// packets.
   using Report = std::function< void( std::size_t group, const Flow & flow ) >;

   explicit FlowTable( Report report ) : report_( std::move( report ) ) {}

   /// In force from the next packet or tick on. A table that has more flows keeps them.
   void limitsAre( const FlowLimits & limits ) { limits_ = limits; }

   /// Counts a packet of the flow that has a key, in a group. Returns false, and counts nothing,
   /// where the flow is new and there is no room for it.
   bool add( std::size_t group, std::string_view key, const Packet & packet );

   /// Reports what is due at a time.
   void tick( Time now );

   /// Reports all flows, and forgets them.
   void flush( EndReason reason );

   std::size_t size() const noexcept { return flows_.size(); }

 private:
   struct Entry;
   using Entries = std::list< Entry >;
   using Reports = std::list< Entries::iterator >;
   struct Entry {
      std::string key; ///< with the group in front
      std::size_t group;
      Flow flow;
      Time seen; ///< last
      Time since; ///< when it began, or was reported last
      Reports::iterator report;
   };

   Entries::iterator make( std::size_t group, std::string key, const Packet & packet );
   void count( Entry & entry, const Packet & packet );
   void report( Entry & entry, EndReason reason );
   void drop( Entries::iterator entry, EndReason reason );

   Report report_;
   FlowLimits limits_;
   Time now_ = 0;
   Entries idle_; ///< by when they were seen, the longest ago first
   Reports reports_; ///< by when they were reported, the longest ago first
   std::unordered_map< std::string_view, Entries::iterator > flows_; ///< keys are the entries'
};

} // namespace FlowtrackPlatform
