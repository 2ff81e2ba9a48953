// Where agents, platforms and operators meet in the store.
#pragma once

#include <string>
#include <vector>

namespace Derive {

/// The mounts of one kind of flow tracking, such as "sampled".
struct Paths {
   explicit Paths( const std::string & kind );

   // Operators write these.
   std::string config; ///< FlowTracking::Config, at the path that its functions give
   std::string bindings; ///< FlowTracking::FlowTrackerIntfConfigs
   std::string configRequests; ///< FlowTracking::ConfigReq
   std::string agentRequests; ///< FlowTracking::AgentReq
   std::string dropRequest; ///< FlowTracking::PktDropCounterUpdateRequest

   // The agent writes these.
   std::string status; ///< FlowTracking::Status
   std::string ids; ///< FlowTracking::FtIdStatus
   std::string hwConfig; ///< HwFlowTracking::Config

   // The platform writes these.
   std::string hwStatus; ///< HwFlowTracking::Status
   std::string capabilities; ///< HwFlowTracking::Capabilities
   std::string drops; ///< FlowTracking::Status, of which the platform has the counters only
};

/// The names of all kinds, as they stand in paths.
std::vector< std::string > allKinds();

} // namespace Derive
