// What reader processes tell the driver, in memory that all of them share.
#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>

#include <time.h>

namespace Bench {

/// The clock of all processes.
inline std::uint64_t nanoseconds() noexcept
{
   timespec now{};
   clock_gettime( CLOCK_MONOTONIC, &now );
   return static_cast< std::uint64_t >( now.tv_sec ) * 1'000'000'000U +
         static_cast< std::uint64_t >( now.tv_nsec );
}

/// Counts spans of time, to within 1/16 of each.
class Histogram {
 public:
   void add( std::uint64_t span ) noexcept { ++counts_[ index( span ) ]; }

   void add( const Histogram & other ) noexcept
   {
      for ( std::size_t i = 0; i != size; ++i ) {
         counts_[ i ] += other.counts_[ i ];
      }
   }

   /// The span that `part` of all do not exceed; 0 where there are none.
   std::uint64_t quantile( double part ) const noexcept
   {
      std::uint64_t all = 0;
      for ( const std::uint32_t count : counts_ ) {
         all += count;
      }
      auto left = static_cast< std::uint64_t >( part * static_cast< double >( all ) );
      for ( std::size_t i = 0; i != size; ++i ) {
         if ( left < counts_[ i ] ) {
            return top( i );
         }
         left -= counts_[ i ];
      }
      return 0;
   }

 private:
   static constexpr std::size_t steps = 16; // to a power of two
   static constexpr std::size_t size = 61 * steps;

   static std::size_t index( std::uint64_t span ) noexcept
   {
      if ( span < steps ) {
         return static_cast< std::size_t >( span );
      }
      const auto power = static_cast< std::size_t >( std::bit_width( span ) ) - 5;
      return ( power + 1 ) * steps + static_cast< std::size_t >( span >> power ) - steps;
   }
   static std::uint64_t top( std::size_t index ) noexcept
   {
      if ( index < steps ) {
         return index;
      }
      const std::size_t power = index / steps - 1;
      return ( ( index % steps + steps + 1 ) << power ) - 1;
   }

   std::array< std::uint32_t, size > counts_{};
};

/// One session. Written by its process only.
struct Slot {
   std::atomic< std::uint64_t > mark{ 0 }; ///< the last one told of; what stands below is older
   std::atomic< std::uint64_t > at{ 0 }; ///< when it came
   std::atomic< std::uint64_t > digest{ 0 }; ///< of its table then
   std::atomic< std::uint64_t > delivered{ 0 }; ///< changes that it was told of
   std::atomic< std::uint64_t > lost{ 0 }; ///< connections that the server ended
   std::atomic< bool > away{ false }; ///< it has gone, as it was asked to
   Histogram latencies; ///< of changes that carry their time
};

/// What the driver asks of sessions.
enum class Ask : std::uint32_t {
   follow,
   goAway
};

/// The memory: made by the driver, opened by the processes that it starts.
class Slots {
 public:
   explicit Slots( std::uint32_t count );

   /// What a process has inherited.
   static Slots inherited( int descriptor );

   Slots( const Slots & ) = delete;
   Slots & operator=( const Slots & ) = delete;
   ~Slots();

   int descriptor() const noexcept { return descriptor_; }
   std::uint32_t size() const noexcept { return head_->count; }
   Slot & operator[]( std::uint32_t session ) const noexcept { return slots()[ session ]; }
   std::atomic< Ask > & ask() const noexcept { return head_->ask; }

 private:
   struct Head {
      std::atomic< Ask > ask{ Ask::follow };
      std::uint32_t count = 0;
   };
   static constexpr std::size_t slotsAt = alignof( std::max_align_t );
   static_assert( sizeof( Head ) <= slotsAt );

   Slots( int descriptor, std::size_t bytes );
   Slot * slots() const noexcept;

   int descriptor_;
   std::size_t bytes_;
   Head * head_;
};

} // namespace Bench
