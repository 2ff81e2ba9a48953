// Sense beyond single values: what the parts of a configuration mean for one another.
#pragma once

#include "FlowTracker/FlowTrackerConfig.h"
#include "FlowTracker/HwFlowTrackingConfig.h"
#include "FlowTracker/HwFlowTrackingStatus.h"

#include <string>
#include <vector>

namespace FlowtrackCheck {

/// What is checked together. Rules that need a tree that is not given find nothing.
struct Checked {
   const FlowTracking::Config * config = nullptr;
   const FlowTracking::FlowTrackerIntfConfigs * bindings = nullptr;
   const HwFlowTracking::Config * hardware = nullptr;
   const HwFlowTracking::Capabilities * capabilities = nullptr;
};

/// Something that makes no sense, and why.
struct Finding {
   std::string rule;
   std::string path; ///< of the entity in its tree
   std::string message;
};

/// What a configuration is held to.
struct Rule {
   const char * name;
   const char * reason; ///< why whoever breaks it will not be happy
   void ( *check )( const Checked & checked, std::vector< Finding > & findings );
};

/// All rules, in the order in which they are checked.
const std::vector< Rule > & rules();

/// What all rules find; in the order of rules, then of paths.
std::vector< Finding > check( const Checked & checked );

} // namespace FlowtrackCheck
