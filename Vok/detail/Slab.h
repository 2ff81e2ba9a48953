// The allocator of entities and of other small parts of trees: slabs of one size each.
//
// A slab is an aligned piece of memory, so that the slab of an object is found by masking the
// object's address:
//
//    header | object | object | object | never used yet ...
//
// It hands out what was freed last, else what was never used. Slabs with room stand in a list of
// their size; a slab that becomes empty is given back, but for one of each size, so that a
// single object that comes and goes does not make and free a slab each time. Freed memory is
// poisoned for AddressSanitizer.
#pragma once

#include "Vok/Export.h"

#include <cstddef>

namespace Vok::Detail {

// Memory for an object of `size` bytes, aligned for every type without extended alignment. Beyond
// 2 KiB it comes from operator new. Throws std::bad_alloc. May be called by several threads.
VOK_EXPORT void * slabAllocate( std::size_t size );

// Gives memory back that slabAllocate returned for the same size; by any thread.
VOK_EXPORT void slabFree( void * object, std::size_t size ) noexcept;

// For tests: the slabs held for objects of this size, an empty one included.
VOK_EXPORT std::size_t slabsHeld( std::size_t size );

} // namespace Vok::Detail
