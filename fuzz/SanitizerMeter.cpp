// The meter where there is a sanitizer, which tells of the heap. In the fuzzers the code that the
// compiler puts at every branch, by -fsanitize-coverage=trace-pc-guard, tells of steps and stack.
#include "fuzz/Meter.h"

#include <sanitizer/allocator_interface.h>

#include <cstddef>

namespace {

std::uint64_t stepCount = 0;
std::uintptr_t deepestStack = 0; // stacks grow towards 0
std::uintptr_t firstStack = 0;
std::ptrdiff_t heldBytes = 0; // those from before the start may go
std::ptrdiff_t mostBytes = 0;

// These must call nothing that may be counted itself.

std::uintptr_t stackNow()
{
   return reinterpret_cast< std::uintptr_t >( __builtin_frame_address( 0 ) );
}

void allocated( const volatile void *, std::size_t size )
{
   heldBytes += static_cast< std::ptrdiff_t >( size );
   if ( heldBytes > mostBytes ) {
      mostBytes = heldBytes;
   }
}

void freed( const volatile void * memory )
{
   if ( memory ) {
      heldBytes -= static_cast< std::ptrdiff_t >(
            __sanitizer_get_allocated_size( const_cast< const void * >( memory ) ) );
   }
}

const int installed = __sanitizer_install_malloc_and_free_hooks( allocated, freed );

} // namespace

// The linker puts these in the place of those that the fuzzing library has and does not use.
extern "C" {
void __wrap___sanitizer_cov_trace_pc_guard( std::uint32_t * )
{
   ++stepCount;
   const std::uintptr_t stack = stackNow();
   if ( stack < deepestStack ) {
      deepestStack = stack;
   }
}
void __wrap___sanitizer_cov_trace_pc_guard_init( std::uint32_t *, std::uint32_t * ) {}
}

namespace Fuzz {

void startMeter()
{
   stepCount = 0;
   firstStack = deepestStack = stackNow();
   heldBytes = mostBytes = 0;
}

Metered metered()
{
   const auto heap = static_cast< std::uint64_t >( installed != 0 ? mostBytes : 0 );
   return { heap, stepCount, firstStack - deepestStack };
}

} // namespace Fuzz
