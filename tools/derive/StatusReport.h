// What the agent tells operators: the status of trackers, exporters and collectors.
#pragma once

#include "FlowTracker/FlowTrackerConfig.h"
#include "FlowTracker/FlowTrackerStatus.h"
#include "FlowTracker/HwFlowTrackingConfig.h"
#include "FlowTracker/HwFlowTrackingStatus.h"

namespace Derive {

/// Trees that the status is told from: what is configured, what was derived of it, what the
/// hardware is able to do and what it says.
struct Reported {
   const FlowTracking::Config & config;
   const HwFlowTracking::Config & hw;
   const HwFlowTracking::Capabilities & capabilities;
   const HwFlowTracking::Status & hwStatus;
};

/// Brings the status to what these say; what already is so stays untouched. A tracker is active
/// when hardware has it, an exporter when a side of it is ready and nothing is against it, a
/// collector when its exporter is and it has an address. Of exporters and collectors beyond a limit
/// the first ones by name count.
void reportStatus( const Reported & from, FlowTracking::Status & to );

} // namespace Derive
