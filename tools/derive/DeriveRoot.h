// The settings of the root.
#pragma once

#include "tools/derive/Sources.h"

#include "FlowTracker/HwFlowTrackingConfig.h"

namespace Derive {

/// Encapsulations as flags; encapNone has none.
template< class View > FlowTracking::EncapFlags encapFlags( View encaps )
{
   FlowTracking::EncapFlags flags;
   for ( const FlowTracking::EncapType encap : encaps ) {
      if ( encap != FlowTracking::EncapType::encapNone ) {
         const unsigned bit = static_cast< unsigned >( encap ) - 1;
         flags.valueIs( static_cast< std::uint8_t >( flags.value() | 1U << bit ) );
      }
   }
   return flags;
}

/// Brings the root's own attributes to what the sources say: all but trackers, bindings and
/// ignorable queue pairs.
void deriveRoot( const Sources & from, HwFlowTracking::Config & to );

} // namespace Derive
