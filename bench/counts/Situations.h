// What instructions are counted of: each situation by itself, prepared before it is counted.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace Bench {

/// One call of `run` is counted, and does so many operations. It may be called again, and checks
/// its own result.
struct Situation {
   std::string name;
   std::size_t operations;
   std::function< void() > run;
};
using Situations = std::vector< Situation >;

void addChanges( Situations & situations );
void addMaps( Situations & situations );
void addStreams( Situations & situations );
void addTexts( Situations & situations );

} // namespace Bench
