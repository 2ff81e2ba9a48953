// What must hold, and what a piece of code may cost.
#include "fuzz/Support.h"

#include "fuzz/Meter.h"

#include <cstdlib>
#include <iostream>

namespace Fuzz {

void hold( bool holds, std::string_view what )
{
   if ( !holds ) {
      std::cerr << "does not hold: " << what << std::endl;
      std::abort();
   }
}

namespace {

// Frames are larger under sanitizers: 64 levels of the deepest recursion need a fifth of this.
constexpr std::uint64_t mostStack = 512 << 10;

void holdBudget( const char * what, std::uint64_t used, Budget budget, std::size_t inputSize )
{
   const std::uint64_t most = budget.once + budget.perByte * inputSize;
   if ( used > most ) {
      std::cerr << what << ": at most " << most << " for " << inputSize << " bytes of input, not "
                << used << std::endl;
      hold( false, "an input costs no more than its size allows" );
   }
}

} // namespace

Cost::Cost()
{
   startMeter();
}

void Cost::holdHeap( Budget budget, std::size_t inputSize ) const
{
   holdBudget( "bytes of heap", metered().heap, budget, inputSize );
}

void Cost::holdSteps( Budget budget, std::size_t inputSize ) const
{
   holdBudget( "steps", metered().steps, budget, inputSize );
   holdBudget( "bytes of stack", metered().stack, { mostStack, 0 }, inputSize );
}

} // namespace Fuzz
