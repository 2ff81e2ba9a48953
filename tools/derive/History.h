// What of a hardware configuration tells of the past.
#pragma once

#include "FlowTracker/HwFlowTrackingConfig.h"

namespace Derive {

/// Gives generations, change bit maps and start times of one tree to another, for a comparison:
/// they depend on what was before, as only the numbers of trackers do besides. Everything else
/// follows from the configuration.
void takeHistory( const HwFlowTracking::Config & from, HwFlowTracking::Config & to );

} // namespace Derive
