// What the compiler has every branch call, by -fsanitize-coverage=trace-pc-guard. Compiled without
// it, since it must not count itself.
#include "tests/support/StepMeter.h"

namespace {

bool counted = false;
std::uint64_t stepCount = 0;
std::uintptr_t deepestStack = 0; // stacks grow towards 0
std::uintptr_t firstStack = 0;

std::uintptr_t stackNow()
{
   return reinterpret_cast< std::uintptr_t >( __builtin_frame_address( 0 ) );
}

} // namespace

// The linker puts these in the place of those that the sanitizers' libraries have.
extern "C" {
void __wrap___sanitizer_cov_trace_pc_guard( std::uint32_t * )
{
   ++stepCount;
   const std::uintptr_t stack = stackNow();
   if ( stack < deepestStack ) {
      deepestStack = stack;
   }
}
void __wrap___sanitizer_cov_trace_pc_guard_init( std::uint32_t *, std::uint32_t * )
{
   counted = true;
}
}

namespace TestSupport {

StepMeter::StepMeter()
{
   stepCount = 0;
   firstStack = deepestStack = stackNow();
}

bool StepMeter::counts()
{
   return counted;
}

std::uint64_t StepMeter::steps() const
{
   return stepCount;
}

std::uint64_t StepMeter::stack() const
{
   return firstStack - deepestStack;
}

} // namespace TestSupport
