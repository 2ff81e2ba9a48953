// What a store has done, in the text form that Prometheus reads.
#pragma once

#include "store/Server.h"

#include <string>

namespace Flowtrackd {

std::string metricsText( const Vok::Store::Server & server );

} // namespace Flowtrackd
