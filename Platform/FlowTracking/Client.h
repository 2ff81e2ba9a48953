// FlowTracking::Client: how those who ask for flow tracking on an interface name its sample modes.
#pragma once

#include <cstdint>

namespace FlowTracking::Client {

/// Which packets of an interface a client wants sampled. A bare enumeration, without text form, log
/// form and reflection: the data model has a sample mode of its own and converts this one to it.
enum class FlowTrackerSampleMode : std::uint8_t {
   sampleModeAll = 0, ///< all packets
   sampleModeTargeted = 1, ///< targeted packets only
};
using enum FlowTrackerSampleMode;

} // namespace FlowTracking::Client
