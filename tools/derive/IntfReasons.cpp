// The limits of hardware for trackers, and what kinds of interface it can do.
#include "tools/derive/IntfReasons.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace Derive {

namespace Hw = HwFlowTracking;

namespace {

std::string named( const Hw::FtConfig & tracker )
{
   return "tracker " + std::string( tracker.name() );
}

} // namespace

Refusals refusals( const Hw::Config & config, const Hw::Capabilities & capabilities )
{
   std::vector< Corvo::Ptr< Hw::FtConfig > > trackers;
   for ( const auto & tracker : config.hwFtConfig() ) {
      trackers.push_back( tracker );
   }
   std::sort( trackers.begin(), trackers.end(), []( const auto & a, const auto & b ) {
      return a->ftId().value() < b->ftId().value();
   } );
   Refusals refused;
   std::uint32_t taken = 0;
   std::uint64_t flows = 0;
   for ( const auto & tracker : trackers ) {
      const std::uint64_t size = tracker->flowTableSize().value();
      const std::uint64_t each = capabilities.maxFlowsPerTracker();
      const std::uint64_t all = capabilities.maxFlows();
      const std::string asks =
            named( *tracker ) + " asks for " + std::to_string( size ) + " flows, ";
      if ( taken == capabilities.maxTrackers() ) {
         refused[ tracker->name() ] = { true,
            named( *tracker ) + " is beyond the limit of " + std::to_string( taken ) };
      } else if ( each != 0 && size > each ) {
         refused[ tracker->name() ] = { false, asks + "at most " + std::to_string( each ) };
      } else if ( all != 0 && flows + size > all ) {
         refused[ tracker->name() ] = { false, asks + std::to_string( all - flows ) + " are left" };
      } else {
         ++taken;
         flows += size;
      }
   }
   return refused;
}

/// What holds for every interface of a tracker. A binding keeps its tracker alive even after that
/// has left the configuration.
std::string IntfReasons::ofTracker( const Hw::FtConfig & tracker ) const
{
   if ( !capabilities_.supported() ) {
      return "flow tracking is not supported";
   }
   if ( config_.hwFtConfig( tracker.name() ).get() != &tracker ) {
      return named( tracker ) + " has left the configuration";
   }
   const auto found = refused_.find( tracker.name() );
   return found == refused_.end() ? std::string() : found->second.reason;
}

std::string IntfReasons::ofKind( std::string_view intf ) const
{
   if ( intf.find( '.' ) != std::string_view::npos && !capabilities_.subIntfSupported() ) {
      return "subinterfaces are not supported";
   }
   if ( intf.starts_with( "Tunnel" ) && !capabilities_.tunnelIntfSupported() ) {
      return "tunnel interfaces are not supported";
   }
   if ( intf.starts_with( "Dps" ) && !capabilities_.dpsIntfSupported() ) {
      return "interfaces of DPS are not supported";
   }
   return {};
}

std::string IntfReasons::troubleOf( const Wyre::IntfId & intf ) const
{
   const auto found = troubles_.find( intf );
   return found == troubles_.end() ? std::string() : found->second;
}

/// What holds in both directions.
std::string IntfReasons::ofBinding( const Hw::IntfFtConfig & binding ) const
{
   const std::string reason = ofTracker( *binding.hwFtConfig() );
   return reason.empty() ? ofKind( binding.intfId().stringValue() ) : reason;
}

std::string IntfReasons::ingress( const Hw::IntfFtConfig & binding ) const
{
   const std::string reason = ofBinding( binding );
   return reason.empty() ? troubleOf( binding.intfId() ) : reason;
}

std::string IntfReasons::egress( const Hw::IntfFtConfig & binding ) const
{
   const std::string reason = ofBinding( binding );
   if ( reason.empty() && !capabilities_.egressFlowTrackerIntfSupported() ) {
      return "packets that leave an interface are not tracked";
   }
   return reason.empty() ? troubleOf( binding.intfId() ) : reason;
}

} // namespace Derive
