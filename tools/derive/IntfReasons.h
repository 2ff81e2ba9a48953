// Why a platform does not track flows: for a tracker, and for an interface.
#pragma once

#include "FlowTracker/HwFlowTrackingConfig.h"
#include "FlowTracker/HwFlowTrackingStatus.h"

#include <map>
#include <string>
#include <string_view>

namespace Derive {

/// Why a tracker is not put into hardware.
struct Refusal {
   bool beyondMaxTrackers; ///< there are as many trackers already
   std::string reason; ///< for the operator
};

/// The trackers of a configuration that hardware has no room for, by name. Those with lower numbers
/// come first: a new tracker does not drive out an old one. Of the flow limits 0 is none.
using Refusals = std::map< Corvo::String, Refusal >;
Refusals refusals(
      const HwFlowTracking::Config & config, const HwFlowTracking::Capabilities & capabilities );

/// Why packets of interfaces cannot be looked at, of those of which they cannot.
using Troubles = std::map< Wyre::IntfId, std::string >;

/// Keeps why an interface has trouble, or, of an empty reason, that it has none; says whether that
/// is news.
template< class Reasons, class Intf >
bool noteTrouble( Reasons & troubles, const Intf & intf, const std::string & why )
{
   const auto before = troubles.find( intf );
   if ( ( before == troubles.end() ? std::string() : before->second ) == why ) {
      return false;
   }
   if ( why.empty() ) {
      troubles.erase( before );
   } else {
      troubles[ intf ] = why;
   }
   return true;
}

/// Why flows are not tracked on an interface by its binding; empty where they are.
class IntfReasons {
 public:
   IntfReasons( const HwFlowTracking::Config & config,
         const HwFlowTracking::Capabilities & capabilities, const Refusals & refused,
         const Troubles & troubles )
         : config_( config ),
           capabilities_( capabilities ),
           refused_( refused ),
           troubles_( troubles )
   {
   }

   std::string ingress( const HwFlowTracking::IntfFtConfig & binding ) const;
   std::string egress( const HwFlowTracking::IntfFtConfig & binding ) const;

 private:
   std::string ofTracker( const HwFlowTracking::FtConfig & tracker ) const;
   std::string ofKind( std::string_view intf ) const;
   std::string troubleOf( const Wyre::IntfId & intf ) const;
   std::string ofBinding( const HwFlowTracking::IntfFtConfig & binding ) const;

   const HwFlowTracking::Config & config_;
   const HwFlowTracking::Capabilities & capabilities_;
   const Refusals & refused_;
   const Troubles & troubles_;
};

} // namespace Derive
