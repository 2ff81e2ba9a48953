// Counts the allocations of a program from its start on, by functions in the place of the C
// library's, which all others end in.
#include "tests/package/loads/Allocations.h"

#include <cerrno>
#include <cstdlib>

// The C library's own, as it exports them for this.
extern "C" {
void * __libc_malloc( std::size_t size );
void * __libc_calloc( std::size_t count, std::size_t size );
void * __libc_realloc( void * memory, std::size_t size );
void * __libc_memalign( std::size_t alignment, std::size_t size );
}

namespace {

constinit std::size_t allocations = 0;

} // namespace

std::size_t allocationsSoFar()
{
   return allocations;
}

extern "C" {

void * malloc( std::size_t size ) noexcept
{
   ++allocations;
   return __libc_malloc( size );
}

void * calloc( std::size_t count, std::size_t size ) noexcept
{
   ++allocations;
   return __libc_calloc( count, size );
}

void * realloc( void * memory, std::size_t size ) noexcept
{
   ++allocations;
   return __libc_realloc( memory, size );
}

void * aligned_alloc( std::size_t alignment, std::size_t size ) noexcept
{
   ++allocations;
   return __libc_memalign( alignment, size );
}

int posix_memalign( void ** memory, std::size_t alignment, std::size_t size ) noexcept
{
   ++allocations;
   *memory = __libc_memalign( alignment, size );
   return *memory ? 0 : ENOMEM;
}

} // extern "C"
