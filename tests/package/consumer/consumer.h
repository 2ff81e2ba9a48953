// What the two translation units share.
#pragma once

#include "FlowTracker/ApplicationId.h"

/// The name of application 5.
Corvo::String describe( const FlowTracking::ApplicationIdMap & map );
