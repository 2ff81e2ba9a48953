// The meter where there is a sanitizer, which tells of the heap.
#include "fuzz/Meter.h"

#include "tests/support/StepMeter.h"

#include <sanitizer/allocator_interface.h>

#include <cstddef>
#include <optional>

namespace {

std::ptrdiff_t heldBytes = 0; // those from before the start may go
std::ptrdiff_t mostBytes = 0;

// These must call nothing that may be counted itself.

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

std::optional< TestSupport::StepMeter > meter;

} // namespace

namespace Fuzz {

void startMeter()
{
   meter.emplace();
   heldBytes = mostBytes = 0;
}

Metered metered()
{
   const auto heap = static_cast< std::uint64_t >( installed != 0 ? mostBytes : 0 );
   return { heap, meter->steps(), meter->stack() };
}

} // namespace Fuzz
