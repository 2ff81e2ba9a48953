// Frames whose headers are known, byte by byte.
#pragma once

#include "tools/flowtrack-platform/ipfix/Bytes.h"

#include <cstdint>
#include <initializer_list>

namespace FlowTest {

using FlowtrackPlatform::append;
using FlowtrackPlatform::appendNumber;
using FlowtrackPlatform::Bytes;

inline Bytes joined( std::initializer_list< Bytes > parts )
{
   Bytes whole;
   for ( const Bytes & part : parts ) {
      append( whole, part );
   }
   return whole;
}

inline Bytes ethernet( unsigned type )
{
   return { 2, 0, 0, 0, 0, 9, 2, 0, 0, 0, 0, 8, static_cast< std::uint8_t >( type >> 8 ),
      static_cast< std::uint8_t >( type ) };
}

/// From 10.0.0.`source` to 10.0.1.1, with what is behind the header.
inline Bytes ipv4( unsigned protocol, const Bytes & behind, unsigned source = 1 )
{
   Bytes header = { 0x45, 0x28 };
   appendNumber( header, 20 + behind.size(), 2 );
   appendNumber( header, 0x12340000, 4 ); // identification, no fragment
   appendNumber( header, 63, 1 );
   appendNumber( header, protocol, 1 );
   appendNumber( header, 0, 2 );
   appendNumber( header, 0x0a000000 + source, 4 );
   appendNumber( header, 0x0a000101, 4 );
   return joined( { header, behind } );
}

/// From 2001:db8::1 to 2001:db8::2.
inline Bytes ipv6( unsigned next, const Bytes & behind )
{
   Bytes header = { 0x62, 0x81, 0x23, 0x45 };
   appendNumber( header, behind.size(), 2 );
   append( header, Bytes{ static_cast< std::uint8_t >( next ), 61 } );
   for ( const std::uint8_t last : { std::uint8_t{ 1 }, std::uint8_t{ 2 } } ) {
      append( header, Bytes{ 0x20, 1, 0x0d, 0xb8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, last } );
   }
   return joined( { header, behind } );
}

inline Bytes tcp( unsigned from, unsigned to, unsigned flags )
{
   Bytes header;
   appendNumber( header, from, 2 );
   appendNumber( header, to, 2 );
   appendNumber( header, 1, 4 ); // sequence and acknowledgement
   appendNumber( header, 2, 4 );
   appendNumber( header, 0x5000 + flags, 2 );
   appendNumber( header, 0, 6 );
   return header;
}

inline Bytes udp( unsigned from, unsigned to, const Bytes & behind = {} )
{
   Bytes header;
   appendNumber( header, from, 2 );
   appendNumber( header, to, 2 );
   appendNumber( header, 8 + behind.size(), 2 );
   appendNumber( header, 0, 2 );
   return joined( { header, behind } );
}

/// With the number 0x010203.
inline Bytes vxlan( const Bytes & inside )
{
   return joined( { Bytes{ 8, 0, 0, 0, 1, 2, 3, 0 }, inside } );
}

} // namespace FlowTest
