// Counts what is asked of the allocator: the program's malloc, and with it that of all libraries
// and of operator new, is the C library's with a count before it.
#include "bench/Contenders.h"

#include <cstddef>
#include <cstdlib>

// The names by which the GNU C library has its own ones.
extern "C" void * __libc_malloc( std::size_t size ); // NOLINT(bugprone-reserved-identifier)
extern "C" void * __libc_calloc( std::size_t count, std::size_t size ); // NOLINT
extern "C" void * __libc_realloc( void * memory, std::size_t size ); // NOLINT
extern "C" void * __libc_memalign( std::size_t alignment, std::size_t size ); // NOLINT

namespace {

std::size_t asked = 0; // the programs have one thread

} // namespace

std::size_t Bench::allocations() noexcept
{
   return asked;
}

extern "C" void * malloc( std::size_t size )
{
   ++asked;
   return __libc_malloc( size );
}

extern "C" void * calloc( std::size_t count, std::size_t size )
{
   ++asked;
   return __libc_calloc( count, size );
}

extern "C" void * realloc( void * memory, std::size_t size )
{
   ++asked;
   return __libc_realloc( memory, size );
}

extern "C" void * aligned_alloc( std::size_t alignment, std::size_t size )
{
   ++asked;
   return __libc_memalign( alignment, size );
}
