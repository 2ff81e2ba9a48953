// What every subject keeps: members with four counters each, changed at random from a fixed seed.
#pragma once

#include "tests/support/Random.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Bench {

inline constexpr std::size_t columns = 4;
inline constexpr std::array< const char *, columns > columnNames{
   "packets", "bytes", "drops", "stamp"
};

/// Of the first member: the number of a mark, which a writer sets behind what it changed. Of the
/// others: the time of a change, in situations that measure latency.
inline constexpr std::uint32_t stampColumn = 3;

using Row = std::array< std::uint64_t, columns >;

/// The name of a member; short enough for every subject to hold it in place.
inline std::string memberName( std::uint32_t member )
{
   return "flow" + std::to_string( member );
}

struct Change {
   std::uint32_t member = 0;
   std::uint32_t column = 0;
   std::uint64_t value = 0;
};

/// A number for a table that does not depend on the order of its members: the sum of those of all.
inline std::uint64_t rowDigest( std::string_view name, const Row & row ) noexcept
{
   std::uint64_t digest = 14695981039346656037U;
   const auto stir = [ & ]( std::uint64_t word ) {
      digest = ( digest ^ word ) * 0x9e3779b97f4a7c15;
      digest ^= digest >> 32;
   };
   for ( const char letter : name ) {
      stir( static_cast< unsigned char >( letter ) );
   }
   for ( const std::uint64_t counter : row ) {
      stir( counter );
   }
   return digest;
}

/// The writer's table, as it should be everywhere.
class Model {
 public:
   explicit Model( std::uint32_t members ) : rows_( members )
   {
      for ( std::uint32_t member = 0; member != members; ++member ) {
         rows_[ member ] = { member + 1U, std::uint64_t{ member } * 1500 + 64, 0, 0 };
      }
   }

   std::uint32_t size() const noexcept { return static_cast< std::uint32_t >( rows_.size() ); }
   const Row & row( std::uint32_t member ) const noexcept { return rows_[ member ]; }
   void apply( const Change & change ) noexcept
   {
      rows_[ change.member ][ change.column ] = change.value;
   }

   /// One counter of one member, raised.
   Change randomChange( TestSupport::Random & random ) const noexcept
   {
      const std::uint32_t member = random.below( size() );
      const std::uint32_t column = random.below( stampColumn );
      return { member, column, rows_[ member ][ column ] + 1 + random.below( 1000 ) };
   }

   std::uint64_t digest() const
   {
      std::uint64_t sum = 0;
      for ( std::uint32_t member = 0; member != size(); ++member ) {
         sum += rowDigest( memberName( member ), rows_[ member ] );
      }
      return sum;
   }

 private:
   std::vector< Row > rows_;
};

} // namespace Bench
