// A table of counters of which one member at a time changes, here and in a replica elsewhere: what
// each contender of ChangesBench is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace Bench::Changes {

struct Traffic {
   std::uint64_t packets = 0;
   std::uint64_t bytes = 0;
   bool operator==( const Traffic & ) const = default;
};

/// What a member has before it changes.
constexpr Traffic firstOf( std::uint32_t number )
{
   return { number, 100ULL * number };
}

class ChangingTable {
 public:
   ChangingTable() = default;
   ChangingTable( const ChangingTable & ) = delete;
   ChangingTable & operator=( const ChangingTable & ) = delete;
   virtual ~ChangingTable() = default;

   virtual void change( std::uint32_t number, const Traffic & traffic ) = 0;

   /// Writes what changed since the last time. Returns how many bytes that are.
   virtual std::size_t out() = 0;

   /// The replica reads what was written last.
   virtual void in() = 0;

   /// Whether the replica has what the table has.
   virtual bool alike() const = 0;
};

/// Makes a contender's table of so many members, numbered from 1. `replicated`: with a replica that
/// has all of it, which costs as much memory again.
using Make = std::unique_ptr< ChangingTable > ( * )( std::uint32_t members, bool replicated );

std::unique_ptr< ChangingTable > values( std::uint32_t members, bool replicated );
std::unique_ptr< ChangingTable > entities( std::uint32_t members, bool replicated );
std::unique_ptr< ChangingTable > bareDelta( std::uint32_t members, bool replicated );
std::unique_ptr< ChangingTable > protobufDelta( std::uint32_t members, bool replicated );
std::unique_ptr< ChangingTable > protobufWhole( std::uint32_t members, bool replicated );
std::unique_ptr< ChangingTable > yangDiff( std::uint32_t members, bool replicated );

} // namespace Bench::Changes
