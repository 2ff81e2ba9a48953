// The counting operator new and delete behind HeapMeter.
#include "tests/support/HeapMeter.h"

#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

std::atomic< std::size_t > heldBytes{ 0 };
std::atomic< std::size_t > peakBytes{ 0 };
std::atomic< std::size_t > mostBytes{ std::numeric_limits< std::size_t >::max() };

// How many allocations are still good; less than zero once one has failed.
constexpr std::int64_t allGood = std::numeric_limits< std::int64_t >::max();
std::atomic< std::int64_t > goodOnes{ allGood };
std::atomic< bool > failsForGood{ false };

bool isToFail() noexcept
{
   if ( goodOnes == allGood ) {
      return false;
   }
   const std::int64_t left = --goodOnes;
   return left == -1 || ( left < -1 && failsForGood );
}

void give( void * memory ) noexcept
{
   if ( memory != nullptr ) {
      heldBytes -= malloc_usable_size( memory );
      std::free( memory );
   }
}

void * counted( void * memory )
{
   if ( memory == nullptr ) {
      throw std::bad_alloc();
   }
   const std::size_t now = heldBytes += malloc_usable_size( memory );
   if ( now > mostBytes || isToFail() ) {
      give( memory );
      throw std::bad_alloc();
   }
   std::size_t peak = peakBytes;
   while ( peak < now && !peakBytes.compare_exchange_weak( peak, now ) ) {
   }
   return memory;
}

void * aligned( std::size_t size, std::align_val_t alignment )
{
   const auto boundary = static_cast< std::size_t >( alignment );
   return counted( std::aligned_alloc( boundary, ( size + boundary - 1 ) / boundary * boundary ) );
}

} // namespace

void * operator new( std::size_t size )
{
   return counted( std::malloc( std::max< std::size_t >( size, 1 ) ) );
}

void * operator new( std::size_t size, std::align_val_t alignment )
{
   return aligned( size, alignment );
}

void operator delete( void * memory ) noexcept { give( memory ); }
void operator delete( void * memory, std::size_t ) noexcept { give( memory ); }
void operator delete( void * memory, std::align_val_t ) noexcept { give( memory ); }
void operator delete( void * memory, std::size_t, std::align_val_t ) noexcept { give( memory ); }

// The C++ library's would call those above, a sanitizer's do not.
void * operator new[]( std::size_t size ) { return ::operator new( size ); }
void * operator new[]( std::size_t size, std::align_val_t alignment )
{
   return ::operator new( size, alignment );
}
void operator delete[]( void * memory ) noexcept { give( memory ); }
void operator delete[]( void * memory, std::size_t ) noexcept { give( memory ); }
void operator delete[]( void * memory, std::align_val_t ) noexcept { give( memory ); }
void operator delete[]( void * memory, std::size_t, std::align_val_t ) noexcept { give( memory ); }

namespace TestSupport {

HeapMeter::HeapMeter() : base_( heldBytes )
{
   peakBytes = base_;
}

std::size_t HeapMeter::peak() const
{
   return peakBytes - base_;
}

std::size_t HeapMeter::held() const
{
   const std::size_t now = heldBytes;
   return now > base_ ? now - base_ : 0;
}

HeapLimit::HeapLimit( std::size_t more )
{
   mostBytes = heldBytes + more;
}

HeapLimit::~HeapLimit()
{
   mostBytes = std::numeric_limits< std::size_t >::max();
}

HeapFault::HeapFault( std::size_t nth, Lasts lasts )
{
   failsForGood = lasts == Lasts::forGood;
   goodOnes = static_cast< std::int64_t >( nth ) - 1;
}

HeapFault::~HeapFault()
{
   goodOnes = allGood;
}

bool HeapFault::struck() const
{
   return goodOnes < 0;
}

} // namespace TestSupport
