// What the programs of benchmarks share.
#pragma once

#include "tests/support/Random.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <utility>

namespace Bench {

/// Puts items into an order that `random` chooses.
template< class Items > void shuffle( Items & items, TestSupport::Random & random )
{
   for ( std::size_t left = items.size(); left > 1; --left ) {
      std::swap( items[ left - 1 ], items[ random.below( static_cast< std::uint32_t >( left ) ) ] );
   }
}

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
