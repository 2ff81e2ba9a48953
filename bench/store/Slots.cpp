// Memory of several processes.
#include "bench/store/Slots.h"

#include "bench/Check.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>

namespace Bench {

Slots::Slots( std::uint32_t count )
      : Slots( memfd_create( "slots", 0 ), slotsAt + count * sizeof( Slot ) )
{
   head_ = new ( head_ ) Head;
   head_->count = count;
   std::uninitialized_value_construct_n( slots(), count );
}

Slots::Slots( int descriptor, std::size_t bytes )
      : descriptor_( descriptor ),
        bytes_( bytes ),
        head_( nullptr )
{
   require( ftruncate( descriptor, static_cast< off_t >( bytes ) ) == 0, "memory to share" );
   void * const memory =
         mmap( nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0 );
   require( memory != MAP_FAILED, "shared memory" );
   head_ = static_cast< Head * >( memory );
}

Slots Slots::inherited( int descriptor )
{
   struct stat about {};
   require( fstat( descriptor, &about ) == 0, "memory that the driver shares" );
   return { descriptor, static_cast< std::size_t >( about.st_size ) };
}

Slots::~Slots()
{
   munmap( head_, bytes_ );
   close( descriptor_ );
}

Slot * Slots::slots() const noexcept
{
   return reinterpret_cast< Slot * >( reinterpret_cast< std::byte * >( head_ ) + slotsAt );
}

} // namespace Bench
