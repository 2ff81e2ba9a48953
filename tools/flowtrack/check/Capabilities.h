// What a platform can, held against what is asked of it.
#pragma once

#include "tools/flowtrack/check/Rules.h"

#include <vector>

namespace FlowtrackCheck {

/// The rule of that name: what the configuration, and the bindings where they are given, ask for
/// and the capabilities do not have, by the reading of the agents.
void beyondCapabilities( const Checked & checked, std::vector< Finding > & findings );

} // namespace FlowtrackCheck
