// What the programs of benchmarks share.
#pragma once

#include "bench/Shuffle.h"

#include <benchmark/benchmark.h>

namespace Bench {

/// Runs the benchmarks that are registered, as the arguments say; for `main` to return.
inline int runBenchmarks( int argc, char ** argv )
{
   benchmark::Initialize( &argc, argv );
   if ( benchmark::ReportUnrecognizedArguments( argc, argv ) ) {
      return 1;
   }
   benchmark::RunSpecifiedBenchmarks();
   return 0;
}

} // namespace Bench
