// What the benchmarks share: a wrong answer ends the run.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace Bench {

/// Ends the program with exit status 1 unless `holds`.
inline void require( bool holds, const char * what )
{
   if ( !holds ) {
      std::fprintf( stderr, "wrong answer: %s\n", what );
      std::exit( 1 );
   }
}

} // namespace Bench
