// The flow groups of a tracker.
#pragma once

#include "FlowTracker/FlowTrackerConfig.h"
#include "FlowTracker/HwFlowTrackingConfig.h"

namespace Derive {

/// Brings the groups of a tracker, their index by name, their generations and the tracker's
/// generation of groups to what its configuration says.
///
/// Groups stand in hardware in the order of their sequence numbers, those with the same number by
/// name. A hardware number is hwFgSeqnoMultiple times the configured one, or the next that is free;
/// the groups with reserved names have the reserved numbers, above all others.
///
/// A group's generation is raised with each update of it, which also notes in the change bit map
/// what it changed; the tracker's when the set of groups changed. While the groups are being
/// committed or numbered anew, hwFgConfigGenIdUpdateNeeded stands instead, and the generation is
/// raised once at the end.
void deriveGroups( const FlowTracking::FlowTrackerConfig & from, HwFlowTracking::FtConfig & to );

} // namespace Derive
