// The daemon: a store, its sockets, its disk, its metrics, and its life under a service manager.
#pragma once

#include "tools/flowtrackd/Config.h"
#include "tools/flowtrackd/Log.h"

namespace Flowtrackd {

/// Serves until SIGTERM or SIGINT, then ends cleanly: what was acknowledged is kept. Throws
/// std::exception where it cannot begin.
void serve( const Config & config, Log & log );

} // namespace Flowtrackd
