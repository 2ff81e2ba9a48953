// The bindings of interfaces to trackers.
#pragma once

#include "FlowTracker/FlowTrackerConfig.h"
#include "FlowTracker/HwFlowTrackingConfig.h"

namespace Derive {

/// What ingress and egress have in common: the same calls under different names.
struct Ingress {
   using Bindings = FlowTracking::FlowTrackerIntfConfigs;
   using Hw = HwFlowTracking::Config;

   static constexpr Vok::AttrId attrId = Bindings::flowTrackerIntfConfigAttrId;
   static auto configured( const Bindings & from ) { return from.flowTrackerIntfConfig(); }
   static auto configured( const Bindings & from, const Wyre::IntfId & intf )
   {
      return from.flowTrackerIntfConfig( intf );
   }
   static auto bound( const Hw & to ) { return to.hwIntfFtConfig(); }
   static auto bound( const Hw & to, const Wyre::IntfId & intf )
   {
      return to.hwIntfFtConfig( intf );
   }
   template< class... Args > static void bind( Hw & to, const Args &... args )
   {
      to.hwIntfFtConfigIs( args... );
   }
   static void unbind( Hw & to, const Wyre::IntfId & intf ) { to.hwIntfFtConfigDel( intf ); }
};

struct Egress {
   using Bindings = FlowTracking::FlowTrackerIntfConfigs;
   using Hw = HwFlowTracking::Config;

   static constexpr Vok::AttrId attrId = Bindings::flowTrackerEgressIntfConfigAttrId;
   static auto configured( const Bindings & from ) { return from.flowTrackerEgressIntfConfig(); }
   static auto configured( const Bindings & from, const Wyre::IntfId & intf )
   {
      return from.flowTrackerEgressIntfConfig( intf );
   }
   static auto bound( const Hw & to ) { return to.hwEgressIntfFtConfig(); }
   static auto bound( const Hw & to, const Wyre::IntfId & intf )
   {
      return to.hwEgressIntfFtConfig( intf );
   }
   template< class... Args > static void bind( Hw & to, const Args &... args )
   {
      to.hwEgressIntfFtConfigIs( args... );
   }
   static void unbind( Hw & to, const Wyre::IntfId & intf ) { to.hwEgressIntfFtConfigDel( intf ); }
};

/// Brings the binding of one interface to what is configured. Trackers come first: an interface
/// whose tracker is not in hardware is not bound.
template< class Direction >
void deriveBinding( const FlowTracking::FlowTrackerIntfConfigs & from, HwFlowTracking::Config & to,
      const Wyre::IntfId & intf )
{
   const auto configured = Direction::configured( from, intf );
   const auto tracker = configured ? to.hwFtConfig( configured->trackerName() ) : nullptr;
   if ( const auto bound = Direction::bound( to, intf ); bound &&
         !( tracker && bound->hwFtConfig() == tracker &&
               bound->sampleMode() == configured->sampleMode() ) ) {
      Direction::unbind( to, intf );
   }
   if ( tracker ) {
      Direction::bind( to, intf, Corvo::Ptr< const HwFlowTracking::FtConfig >( tracker ),
            configured->sampleMode() );
   }
}

/// The same for every interface.
template< class Direction >
void deriveBindings(
      const FlowTracking::FlowTrackerIntfConfigs & from, HwFlowTracking::Config & to )
{
   for ( const auto & bound : Direction::bound( to ) ) {
      const Wyre::IntfId intf = bound->intfId();
      if ( !Direction::configured( from, intf ) ) {
         Direction::unbind( to, intf );
      }
   }
   for ( const auto & configured : Direction::configured( from ) ) {
      deriveBinding< Direction >( from, to, configured->intfId() );
   }
}

} // namespace Derive
