// Long hashes, checksums, and where the seed comes from.
#include "Vok/detail/Hash.h"

#include <atomic>
#include <cstring>
#include <mutex>
#include <random>
#include <sys/random.h>

namespace Vok::Detail {

namespace {

HashSeed drawnSeed()
{
   HashSeed seed;
   static_assert( sizeof seed == 16 );
   if ( ::getrandom( &seed, sizeof seed, 0 ) != sizeof seed ) {
      // The kernel is too old, or a sandbox forbids the call.
      std::random_device device;
      const auto word = [ &device ] { return std::uint64_t{ device() } << 32 | device(); };
      seed = { word(), word() };
   }
   return seed;
}

struct Process {
   std::mutex lock; // of the seed, until it is drawn
   std::atomic< bool > drawn = false;
   HashSeed seed;
   std::atomic< std::uint64_t > tables = 0;
};

// Tables may be made and filled by static initialisers and destructors of any object file.
constinit Process process;

} // namespace

HashSeed tableSeed( std::uint32_t constant ) noexcept
{
   if ( !process.drawn.load( std::memory_order_acquire ) ) {
      const std::lock_guard guard( process.lock );
      if ( !process.drawn.load( std::memory_order_relaxed ) ) {
         process.seed = drawnSeed();
         process.drawn.store( true, std::memory_order_release );
      }
   }
   const std::uint64_t table = process.tables.fetch_add( 1, std::memory_order_relaxed ) + 1;
   return { process.seed.a ^ multiplyFold( table, hashWords[ 4 ] ) ^ constant,
      ( process.seed.b ^ table * hashWords[ 5 ] ) | 1 };
}

void pinHashSeed( HashSeed seed ) noexcept
{
   const std::lock_guard guard( process.lock );
   process.seed = seed;
   process.drawn = true;
   process.tables = 0;
}

std::uint64_t hashLongBytes( const char * bytes, std::size_t size, HashSeed seed ) noexcept
{
   const std::uint64_t length = size;
   std::uint64_t state = seed.b ^ hashWords[ 3 ];
   if ( size > 64 ) {
      // Four chains that do not wait for each other.
      std::uint64_t chain[ 4 ] = { state, state, state, state };
      do {
         for ( std::size_t i = 0; i < 4; ++i ) {
            chain[ i ] = multiplyFold( loadLittle64( bytes + 16 * i ) ^ seed.a ^ hashWords[ 4 + i ],
                  loadLittle64( bytes + 16 * i + 8 ) ^ chain[ i ] );
         }
         bytes += 64;
         size -= 64;
      } while ( size > 64 );
      state = multiplyFold( chain[ 0 ] ^ hashWords[ 0 ], chain[ 1 ] ^ seed.b ) ^
            multiplyFold( chain[ 2 ] ^ hashWords[ 1 ], chain[ 3 ] ^ seed.a );
   }
   while ( size > 16 ) {
      state = multiplyFold(
            loadLittle64( bytes ) ^ seed.a ^ hashWords[ 2 ], loadLittle64( bytes + 8 ) ^ state );
      bytes += 16;
      size -= 16;
   }
   // The last 16 bytes, some of them for the second time.
   state = multiplyFold( loadLittle64( bytes + size - 16 ) ^ seed.a ^ hashWords[ 6 ],
         loadLittle64( bytes + size - 8 ) ^ state );
   return multiplyFold( state ^ length, seed.b ^ hashWords[ 7 ] );
}

namespace {

// One step of a chain. For a fixed word it maps states one to one, and for a fixed state words:
// what differs once, differs to the end. A single product would pass the topmost bit on alone, and
// a second flipped bit could undo the first; two, with the high half folded down before each, do
// not.
std::uint64_t stirred( std::uint64_t state, std::uint64_t word ) noexcept
{
   std::uint64_t x = state ^ word;
   x = ( x ^ x >> 32 ) * hashWords[ 0 ];
   return ( x ^ x >> 29 ) * hashWords[ 7 ];
}

std::uint64_t loadPart( const std::byte * bytes, std::size_t size ) noexcept
{
   std::uint64_t word = 0;
   for ( std::size_t i = 0; i < size; ++i ) {
      word |= std::to_integer< std::uint64_t >( bytes[ i ] ) << ( 8 * i );
   }
   return word;
}

} // namespace

std::uint64_t checksum64( const std::byte * bytes, std::size_t size ) noexcept
{
   std::uint64_t state = hashWords[ 1 ] ^ std::uint64_t{ size } * hashWords[ 2 ];
   if ( size >= 32 ) {
      std::uint64_t chain[ 4 ] = { hashWords[ 3 ], hashWords[ 4 ], hashWords[ 5 ], hashWords[ 6 ] };
      for ( ; size >= 32; bytes += 32, size -= 32 ) {
         for ( std::size_t i = 0; i < 4; ++i ) {
            chain[ i ] = stirred( chain[ i ], loadLittle64( bytes + 8 * i ) );
         }
      }
      for ( const std::uint64_t part : chain ) {
         state = stirred( state, part );
      }
   }
   for ( ; size >= 8; bytes += 8, size -= 8 ) {
      state = stirred( state, loadLittle64( bytes ) );
   }
   if ( size > 0 ) {
      state = stirred( state, loadPart( bytes, size ) );
   }
   return state ^ state >> 32;
}

} // namespace Vok::Detail
