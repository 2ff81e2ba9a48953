// The command line as a whole.
#pragma once

#include "tools/flowtrack/Errors.h"

#include <iosfwd>

namespace Flowtrack {

/// Runs the command that the arguments say, tells errors, and gives what the program exits with.
ExitCode run( int argc, char ** argv, std::ostream & out, std::ostream & err );

} // namespace Flowtrack
