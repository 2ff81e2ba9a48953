// Capabilities of a platform in a file.
#pragma once

#include "FlowTracker/HwFlowTrackingStatus.h"

#include <stdexcept>
#include <string>

namespace FlowtrackPlatform {

/// What is wrong in a capabilities file: where, what was expected.
class CapabilitiesException : public std::runtime_error {
 public:
   using std::runtime_error::runtime_error;
};

/// Brings capabilities to what a JSON object says: its names are attributes of
/// HwFlowTracking::Capabilities, a collection is an array or an object; what it leaves out is as in
/// new ones. `file` is what messages call it. Throws CapabilitiesException.
void readCapabilities(
      const std::string & text, const std::string & file, HwFlowTracking::Capabilities & to );

/// The same of a file.
Corvo::Ptr< HwFlowTracking::Capabilities > capabilitiesOfFile( const std::string & file );

} // namespace FlowtrackPlatform
