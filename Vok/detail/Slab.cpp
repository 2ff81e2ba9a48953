// Slabs: see Slab.h.
#include "Vok/detail/Slab.h"

#include "Vok/Assert.h"
#include "Vok/detail/Threads.h"

#include <cstdint>
#include <mutex>
#include <new>

#if defined( __SANITIZE_ADDRESS__ )
#define VOK_ADDRESS_SANITIZER
#elif defined( __has_feature )
#if __has_feature( address_sanitizer )
#define VOK_ADDRESS_SANITIZER
#endif
#endif

#ifdef VOK_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#endif

namespace Vok::Detail {

namespace {

constexpr std::size_t slabBytes = 32768;
constexpr std::size_t unit = 16;
constexpr std::size_t largest = 2048;

// The sanitizer's view of memory; nothing in other builds.
void forbid( [[maybe_unused]] void * from, [[maybe_unused]] std::size_t size ) noexcept
{
#ifdef VOK_ADDRESS_SANITIZER
   __asan_poison_memory_region( from, size );
#endif
}

void permit( [[maybe_unused]] void * from, [[maybe_unused]] std::size_t size ) noexcept
{
#ifdef VOK_ADDRESS_SANITIZER
   __asan_unpoison_memory_region( from, size );
#endif
}

bool isForbidden( [[maybe_unused]] void * at ) noexcept
{
#ifdef VOK_ADDRESS_SANITIZER
   return __asan_address_is_poisoned( at ) != 0;
#else
   return false;
#endif
}

// A place that was freed holds the address of the one freed before it.
struct FreePlace {
   FreePlace * next;
};

struct alignas( 64 ) Slab {
   Slab * next = nullptr; // in the list of slabs with room
   Slab * previous = nullptr;
   FreePlace * freed = nullptr;
   std::size_t unused = sizeof( Slab ); // offset of what was never handed out
   std::size_t objects = 0; // handed out now

   bool hasRoom( std::size_t size ) const noexcept
   {
      return freed != nullptr || unused + size <= slabBytes;
   }

   std::byte * at( std::size_t offset ) noexcept
   {
      return reinterpret_cast< std::byte * >( this ) + offset;
   }

   void * take( std::size_t size, std::size_t wanted ) noexcept
   {
      ++objects;
      void * place = freed;
      if ( place != nullptr ) {
         permit( place, sizeof( FreePlace ) );
         freed = freed->next;
         forbid( place, sizeof( FreePlace ) );
      } else {
         place = at( unused );
         unused += size;
      }
      permit( place, wanted );
      return place;
   }

   void give( void * object, std::size_t size ) noexcept
   {
      --objects;
      permit( object, sizeof( FreePlace ) );
      freed = new ( object ) FreePlace{ freed };
      forbid( object, size );
   }

   // An empty slab as if it were new.
   void reset() noexcept
   {
      freed = nullptr;
      unused = sizeof( Slab );
   }
};

Slab * newSlab()
{
   void * const memory = ::operator new ( slabBytes, std::align_val_t{ slabBytes } );
   auto * const slab = new ( memory ) Slab;
   forbid( slab + 1, slabBytes - sizeof( Slab ) );
   return slab;
}

void deleteSlab( Slab * slab ) noexcept
{
   permit( slab, slabBytes );
   ::operator delete ( slab, std::align_val_t{ slabBytes } );
}

Slab * slabOf( void * object ) noexcept
{
   const auto address = reinterpret_cast< std::uintptr_t >( object );
   return reinterpret_cast< Slab * >( address & ~std::uintptr_t{ slabBytes - 1 } );
}

// All slabs of one object size.
struct SizeClass {
   std::mutex lock;
   Slab * withRoom = nullptr; // those that are neither full nor empty
   Slab * spare = nullptr; // an empty one
   std::size_t slabs = 0;

   void link( Slab * slab ) noexcept
   {
      slab->previous = nullptr;
      slab->next = withRoom;
      if ( withRoom != nullptr ) {
         withRoom->previous = slab;
      }
      withRoom = slab;
   }

   [[gnu::noinline]] void unlink( Slab * slab ) noexcept
   {
      ( slab->previous != nullptr ? slab->previous->next : withRoom ) = slab->next;
      if ( slab->next != nullptr ) {
         slab->next->previous = slab->previous;
      }
   }

   // Makes sure that one has room.
   [[gnu::noinline]] void provide()
   {
      if ( spare == nullptr ) {
         spare = newSlab();
         ++slabs;
      }
      link( spare );
      spare = nullptr;
   }

   void * allocate( std::size_t size, std::size_t wanted )
   {
      if ( withRoom == nullptr ) [[unlikely]] {
         provide();
      }
      Slab * const slab = withRoom;
      void * const object = slab->take( size, wanted );
      if ( !slab->hasRoom( size ) ) [[unlikely]] {
         unlink( slab );
      }
      return object;
   }

   // Returns a slab to be deleted, or null.
   Slab * free( void * object, std::size_t size ) noexcept
   {
      Slab * const slab = slabOf( object );
      if ( !slab->hasRoom( size ) ) [[unlikely]] {
         link( slab );
      }
      slab->give( object, size );
      return slab->objects > 0 ? nullptr : emptied( slab );
   }

   [[gnu::noinline]] Slab * emptied( Slab * slab ) noexcept
   {
      unlink( slab );
      if ( spare == nullptr ) {
         slab->reset();
         spare = slab;
         return nullptr;
      }
      --slabs;
      return slab;
   }
};

// Entities may outlive every static object, so the classes are never destroyed.
constinit SizeClass classes[ largest / unit ];

constexpr std::size_t roundedUp( std::size_t size ) noexcept
{
   return size == 0 ? unit : ( size + unit - 1 ) / unit * unit;
}

SizeClass & classOf( std::size_t roundedSize ) noexcept
{
   return classes[ roundedSize / unit - 1 ];
}

[[gnu::noinline]] void * allocateAmongThreads( SizeClass & sizeClass, std::size_t size )
{
   const std::scoped_lock lock( sizeClass.lock );
   return sizeClass.allocate( roundedUp( size ), size );
}

[[gnu::noinline]] Slab * freeAmongThreads(
      SizeClass & sizeClass, void * object, std::size_t size ) noexcept
{
   const std::scoped_lock lock( sizeClass.lock );
   return sizeClass.free( object, roundedUp( size ) );
}

} // namespace

// Both are short where there is one thread: what is rare is a call to somewhere else.
void * slabAllocate( std::size_t size )
{
   if ( size > largest ) [[unlikely]] {
      return ::operator new( size );
   }
   const std::size_t rounded = roundedUp( size );
   SizeClass & sizeClass = classOf( rounded );
   return singleThreaded() ? sizeClass.allocate( rounded, size == 0 ? 1 : size )
                           : allocateAmongThreads( sizeClass, size == 0 ? 1 : size );
}

void slabFree( void * object, std::size_t size ) noexcept
{
   if ( size > largest ) [[unlikely]] {
      ::operator delete( object );
      return;
   }
   if ( isForbidden( object ) ) {
      assertionFailed( "Vok/detail/Slab", __LINE__,
            "void Vok::Detail::slabFree(void*, std::size_t)", "!isForbidden( object )",
            "memory is freed that is not in use" );
   }
   const std::size_t rounded = roundedUp( size );
   SizeClass & sizeClass = classOf( rounded );
   Slab * const empty = singleThreaded() ? sizeClass.free( object, rounded )
                                         : freeAmongThreads( sizeClass, object, rounded );
   if ( empty != nullptr ) [[unlikely]] {
      deleteSlab( empty );
   }
}

std::size_t slabsHeld( std::size_t size )
{
   SizeClass & sizeClass = classOf( roundedUp( size ) );
   const std::scoped_lock lock( sizeClass.lock );
   return sizeClass.slabs;
}

} // namespace Vok::Detail
