// For tests of what is left where memory ends: every allocation of an operation fails once.
#pragma once

#include "tests/model/Everything.h"
#include "tests/support/HeapMeter.h"
#include "tests/support/Recorder.h"

#include "Vok/Vok.h"
#include "Vok/detail/BatchNode.h"
#include "Vok/detail/ReplicaSlots.h"
#include "Vok/detail/Slab.h"
#include "Vok/detail/TableBlock.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <initializer_list>
#include <new>
#include <utility>
#include <vector>

namespace TestSupport {

/// While it lives, no slab of the test module's entities, and of what is made for them, small
/// tables among it, has room: each asks for memory, so that it can fail.
class FullSlabs {
 public:
   FullSlabs()
   {
      for ( const std::size_t size : { sizeof( Test::Leaf ), sizeof( Test::Bare ),
                  sizeof( Test::Host ), sizeof( Test::Slot ), sizeof( Test::Numbered ),
                  sizeof( Test::Group ), sizeof( Test::Binding ), sizeof( Test::Tree ),
                  sizeof( Test::Root ), sizeof( Vok::Detail::NotifieeList ),
                  sizeof( Vok::Detail::SlotPage ), sizeof( Vok::Detail::BatchWriter::Node ) } ) {
         fill( size );
      }
      for ( std::size_t tables = 96; tables <= Vok::Detail::largestTableInSlab;
            tables += 16 ) {
         fill( tables );
      }
   }

   ~FullSlabs()
   {
      for ( const auto & [ object, size ] : taken_ ) {
         Vok::Detail::slabFree( object, size );
      }
   }

   FullSlabs( const FullSlabs & ) = delete;
   FullSlabs & operator=( const FullSlabs & ) = delete;

 private:
   void take( std::size_t size )
   {
      taken_.emplace_back( Vok::Detail::slabAllocate( size ), size );
   }

   static_assert( sizeof( Test::Root ) <= 2048, "larger objects stand in no slab" );

   // Takes objects until there is one slab more. How many that were.
   std::size_t takeSlab( std::size_t size )
   {
      const std::size_t held = Vok::Detail::slabsHeld( size );
      std::size_t count = 0;
      for ( ; Vok::Detail::slabsHeld( size ) == held; ++count ) {
         take( size );
      }
      return count;
   }

   void fill( std::size_t size )
   {
      takeSlab( size );
      for ( std::size_t left = takeSlab( size ); left > 1; --left ) {
         take( size );
      }
   }

   std::vector< std::pair< void *, std::size_t > > taken_;
};

/// How one run of an operation ended.
enum class Outcome {
   done,
   failed
};

/// Calls `test( attempt )` again and again. `attempt( f )` calls f() while one more allocation than
/// before is good and the next one fails, alone or with all that follow; it says whether
/// std::bad_alloc came out. Ends when f() has no allocation left that could fail.
template< class Test > void withEveryFailure( Test test )
{
   for ( const auto lasts : { HeapFault::Lasts::once, HeapFault::Lasts::forGood } ) {
      bool struck = true;
      for ( std::size_t nth = 1; struck; ++nth ) {
         ASSERT_LT( nth, 20000U ) << "there is no end of allocations";
         const auto attempt = [ & ]( auto operation ) {
            const FullSlabs slabs;
            const HeapFault fault( nth, lasts );
            Outcome outcome = Outcome::done;
            try {
               operation();
            } catch ( const std::bad_alloc & ) {
               outcome = Outcome::failed;
            }
            struck = fault.struck();
            return outcome;
         };
         test( attempt );
         if ( testing::Test::HasFailure() ) {
            FAIL() << "where allocation " << nth << " fails";
         }
      }
   }
}

} // namespace TestSupport
