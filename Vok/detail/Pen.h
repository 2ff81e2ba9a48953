// Several small things for a log, written with one look at how much room there is.
#pragma once

#include "Vok/NboAttrLog.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Vok::Detail {

/// Copies a text. Most are short; for those a call costs more than the copy.
inline void copyText( std::byte * to, std::string_view text ) noexcept
{
   const std::size_t size = text.size();
   const char * const from = text.data();
   if ( size > 32 ) {
      std::memcpy( to, from, size );
   } else if ( size > 16 ) {
      std::memcpy( to, from, 16 );
      std::memcpy( to + size - 16, from + size - 16, 16 ); // some of them twice
   } else if ( size >= 8 ) {
      std::memcpy( to, from, 8 );
      std::memcpy( to + size - 8, from + size - 8, 8 );
   } else if ( size >= 4 ) {
      std::memcpy( to, from, 4 );
      std::memcpy( to + size - 4, from + size - 4, 4 );
   } else {
      for ( std::size_t i = 0; i != size; ++i ) {
         to[ i ] = static_cast< std::byte >( from[ i ] );
      }
   }
}

/// Writes to the end of a log, in which it makes room for all that it is going to write. What it
/// wrote stands there once it is gone.
class Pen {
 public:
   /// Room that these take at most; a number of a width takes as much as the widest.
   static constexpr std::size_t varintRoom = 10;
   static constexpr std::size_t numberRoom = 8;

   /// Throws std::bad_alloc where there is no memory for so many bytes.
   Pen( NboAttrLog::Out & out, std::size_t most ) : out_( out ),
                                                    at_( out.room( most ) ) {}
   Pen( const Pen & ) = delete;
   Pen & operator=( const Pen & ) = delete;
   ~Pen() { out_.wrote( at_ ); }

   void byte( std::uint8_t v ) noexcept { *at_++ = static_cast< std::byte >( v ); }
   void varint( std::uint64_t v ) noexcept
   {
      for ( ; v >= 0x80; v >>= 7 ) {
         byte( static_cast< std::uint8_t >( v | 0x80 ) );
      }
      byte( static_cast< std::uint8_t >( v ) );
   }
   /// A number of 1 to 8 bytes.
   void number( std::uint64_t v, unsigned width ) noexcept
   {
      const std::uint64_t ordered = NboAttrLog::Detail::networkOrder( v << ( 64 - 8 * width ) );
      std::memcpy( at_, &ordered, sizeof ordered );
      at_ += width;
   }
   void bytes( std::string_view v ) noexcept
   {
      copyText( at_, v );
      at_ += v.size();
   }

 private:
   NboAttrLog::Out & out_;
   std::byte * at_;
};

} // namespace Vok::Detail
