// Keeps slabs out of what is measured of the heap: one is made at a time, however little is wanted
// of it.
#pragma once

#include "Vok/detail/Slab.h"
#include "Vok/detail/TableBlock.h"

#include <cstddef>
#include <vector>

namespace TestSupport {

/// Leaves an empty slab of every size that small tables have, which is kept: the next ones find
/// their room there.
inline void makeSpareSlabs()
{
   for ( std::size_t size = 16; size <= Vok::Detail::largestTableInSlab; size += 16 ) {
      std::vector< void * > taken;
      for ( const auto held = Vok::Detail::slabsHeld( size );
            Vok::Detail::slabsHeld( size ) == held; ) {
         taken.push_back( Vok::Detail::slabAllocate( size ) );
      }
      for ( void * const object : taken ) {
         Vok::Detail::slabFree( object, size );
      }
   }
}

} // namespace TestSupport
