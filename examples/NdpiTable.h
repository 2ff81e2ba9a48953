// The table of applications that `ndpiReader -h` prints.
#pragma once

#include "FlowTracker/ApplicationId.h"

#include <istream>
#include <vector>

/// Reads the rows below the heading "Id Protocol Layer_4 Breed Category", up to the first line
/// that is none. The columns stand where the heading's words stand; names and breeds may be of
/// several words. The breed becomes the sub-category. Throws std::runtime_error where there is no
/// such table or a row has no number.
std::vector< FlowTracking::Application > readNdpiTable( std::istream & in );
