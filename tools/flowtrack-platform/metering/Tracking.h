// All trackers of a platform, and the interfaces that are bound to them.
#pragma once

#include "tools/flowtrack-platform/flows/Sampler.h"
#include "tools/flowtrack-platform/metering/TrackerMeter.h"

#include "FlowTracker/HwFlowTrackingConfig.h"
#include "FlowTracker/HwFlowTrackingStatus.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <tuple>
#include <vector>

namespace FlowtrackPlatform {

/// An interface in one direction.
struct Port {
   std::string intf;
   Direction direction = Direction::ingress;

   friend auto operator<=>( const Port &, const Port & ) = default;
};

/// Tracks flows as a hardware configuration says, as far as the status says that hardware does.
class Tracking {
 public:
   /// `indexOf` tells the index of an interface by its name.
   Tracking( MakeSender makeSender, std::function< std::uint32_t( const std::string & ) > indexOf )
         : makeSender_( std::move( makeSender ) ),
           indexOf_( std::move( indexOf ) )
   {
   }

   /// Why packets of interfaces cannot be captured, of those of which they cannot.
   using Troubles = std::map< std::string, std::string >;

   /// Does what these say from now on. The packets of a binding that is not active for its trouble
   /// only are wanted all the same.
   void follow( const HwFlowTracking::Config & config, const HwFlowTracking::Status & status,
         const HwFlowTracking::Capabilities & capabilities, const Troubles & troubles );

   /// The interfaces whose packets it wants.
   std::vector< Port > ports() const;

   /// Whether a port's tracker has an exporter that has somewhere to send to.
   bool exports( const Port & port ) const;

   /// Takes a frame of a port: its first bytes, and the length that it had.
   void frame( const Port & port, int linkType, std::span< const std::uint8_t > bytes,
         std::uint32_t length, Time time );

   void tick( Time now );
   void end( Time now );

   /// Of all trackers.
   TrackerMeter::Counters counters() const;
   void clearCounters();

   /// Of one tracker; of all, where the name is empty.
   void clearCounters( const std::string & tracker );

   /// What of the configuration cannot be done, a line each.
   const std::vector< std::string > & complaints() const noexcept { return complaints_; }

 private:
   struct Bound {
      std::string tracker;
      bool filtered; ///< sampled are packets that a group selects
      std::uint32_t index;
      Sampler sampler;
   };

   void trackers( const HwFlowTracking::Config & config, const HwFlowTracking::Status & status,
         const HwFlowTracking::Capabilities & capabilities );
   void bind( const Port & port, const HwFlowTracking::IntfFtConfig & binding,
         std::map< Port, Bound > & to );

   MakeSender makeSender_;
   std::function< std::uint32_t( const std::string & ) > indexOf_;
   std::map< std::string, std::unique_ptr< TrackerMeter > > meters_;
   std::map< Port, Bound > bound_;
   TrackerMeter::Counters gone_; ///< of trackers that are no longer there
   std::vector< std::string > complaints_;
};

} // namespace FlowtrackPlatform
