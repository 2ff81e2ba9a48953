// What the hardware configuration is derived from.
#pragma once

#include "tools/derive/Resolver.h"

#include "FlowTracker/FlowTrackerConfig.h"
#include "FlowTracker/FlowTrackingConfigReq.h"
#include "FlowTracker/HwFlowTrackingStatus.h"
#include "Vok/Vok.h"

#include <functional>

namespace Derive {

/// Trees that other processes write, and what else is asked. The resolvers live longer than what
/// asks them.
struct Sources {
   Corvo::Ptr< const FlowTracking::Config > config;
   Corvo::Ptr< const FlowTracking::FlowTrackerIntfConfigs > bindings;
   Corvo::Ptr< const FlowTracking::AgentReq > requests;
   Corvo::Ptr< const HwFlowTracking::Capabilities > capabilities;
   Resolver & hosts; ///< collectors by host name
   Resolver & interfaces; ///< source addresses by name of the local interface
   std::function< Corvo::Duration() > now; ///< the time at which offload starts
};

} // namespace Derive
