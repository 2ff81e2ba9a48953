// The platform of one kind of flow tracking, over a client of the store.
#pragma once

#include "tools/derive/Followed.h"
#include "tools/derive/Following.h"
#include "tools/derive/Paths.h"
#include "tools/derive/Platform.h"
#include "tools/flowtrack-platform/metering/Tracking.h"

#include "FlowTracker/FlowTrackerStatus.h"
#include "FlowTracker/FlowTrackingConfigReq.h"
#include "store/Client.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace FlowtrackPlatform {

/// What capturing counts, since it began or was cleared.
struct CaptureCounters {
   std::uint64_t packets = 0; ///< that came
   std::uint64_t drops = 0; ///< of those, packets that were lost before they were looked at
};

/// What a platform stands on. All of it outlives the platform.
struct PlatformSetup {
   Vok::Store::Client & client;
   Corvo::Ptr< HwFlowTracking::Capabilities > capabilities;
   Tracking & tracking;
   std::function< CaptureCounters() > captured;
   std::function< void() > clearCaptured;
   bool takeOver = false; ///< from a platform that writes the same mounts
};

/// Takes the hardware configuration of one kind, says what is in force and why the rest is not, has
/// flows tracked by it, and answers for the counters of dropped packets (`Derive::Paths` has the
/// mounts). It goes on from what it finds in its own mounts.
class PlatformAgent {
 public:
   PlatformAgent( const PlatformSetup & setup, const std::string & kind );
   PlatformAgent( const PlatformAgent & ) = delete;
   PlatformAgent & operator=( const PlatformAgent & ) = delete;

   /// Does what there is to do, after anything came from the store. Says whether what is tracked
   /// may have changed.
   bool step();

   /// Why packets of an interface cannot be captured; empty: they can.
   void troubleIs( const std::string & intf, const std::string & why );

   /// Why the store does not take what the platform writes; empty where it does.
   std::string refusal() const;

   bool settled() const;

   /// How much of each packet is to be looked at; the headers at least.
   unsigned bytesOfPacket() const;

   const Derive::Paths & paths() const noexcept { return paths_; }

   /// What it tells; null until it knows what it told before.
   Corvo::Ptr< HwFlowTracking::Status > status() const { return status_; }

 private:
   /// The platform's own mounts, as they were before it began.
   struct Before {
      Before( Vok::Store::Client & client, const Derive::Paths & paths )
            : status( client, paths.hwStatus ),
              drops( client, paths.drops )
      {
      }

      Derive::Followed< HwFlowTracking::Status > status;
      Derive::Followed< FlowTracking::Status > drops;
   };

   bool ready();
   void follow();
   void answerDrops();
   void hearRequests();

   PlatformSetup setup_;
   Derive::Paths paths_;
   Derive::Followed< HwFlowTracking::Config > config_;
   Derive::Followed< FlowTracking::PktDropCounterUpdateRequest > dropRequest_;
   Derive::Followed< FlowTracking::ConfigReq > requests_;
   std::optional< Before > before_;
   Corvo::Ptr< HwFlowTracking::Status > status_;
   Corvo::Ptr< FlowTracking::Status > drops_;
   std::vector< std::unique_ptr< Vok::Store::Writing > > writings_;
   const Corvo::Ptr< HwFlowTracking::Config > empty_;
   Corvo::Ptr< const HwFlowTracking::Config > followed_;
   std::unique_ptr< Derive::Platform > platform_;
   std::unique_ptr< Vok::EntityVokNboAttrLogSa > configChanges_; ///< notes that there are any
   std::map< std::string, std::string > troubles_;
   Derive::EntityFollower capabilities_;
   bool changed_ = false; ///< something besides the configuration
   std::optional< FlowTracking::ClearCountersReq > clearCounters_; ///< asked for last
   std::optional< FlowTracking::ClearFtStatisticsReq > clearStatistics_;
};

} // namespace FlowtrackPlatform
