// Numbers in network byte order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace FlowtrackPlatform {

using Bytes = std::vector< std::uint8_t >;

/// Appends the lowest `length` bytes of a number, the highest of them first.
inline void appendNumber( Bytes & to, std::uint64_t value, unsigned length )
{
   for ( unsigned left = length; left != 0; --left ) {
      to.push_back( static_cast< std::uint8_t >( value >> ( 8 * ( left - 1 ) ) ) );
   }
}

inline void append( Bytes & to, std::span< const std::uint8_t > bytes )
{
   to.insert( to.end(), bytes.begin(), bytes.end() );
}

/// Writes over what stands at `place`.
inline void replaceNumber( Bytes & in, std::size_t place, std::uint64_t value, unsigned length )
{
   for ( unsigned i = 0; i != length; ++i ) {
      in[ place + i ] = static_cast< std::uint8_t >( value >> ( 8 * ( length - 1 - i ) ) );
   }
}

} // namespace FlowtrackPlatform
