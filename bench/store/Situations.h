// The situations in which subjects are compared.
#pragma once

#include "bench/store/Stage.h"

#include <string>
#include <vector>

namespace Bench {

struct Situation {
   const char * name;
   const char * what;
   Figures ( *play )( Stage & stage );
};

const std::vector< Situation > & situations();

} // namespace Bench
