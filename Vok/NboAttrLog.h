// The attribute log: values as bytes in network byte order.
//
// Numbers stand at their declared width, most significant byte first; a bool is one byte, 0 or 1;
// a double is its eight bytes of IEEE 754; a text is a 4-byte length and its bytes. A value is
// its fields in declared order, nothing between them.
#pragma once

#include "Vok/Exceptions.h"
#include "Vok/Export.h"
#include "Vok/String.h"

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string_view>

namespace Vok::NboAttrLog {

namespace Detail {

/// Converts between the machine's byte order and the network's; its own inverse.
template< std::unsigned_integral U > constexpr U networkOrder( U v ) noexcept
{
   if constexpr ( std::endian::native == std::endian::big || sizeof( U ) == 1 ) {
      return v;
   } else if constexpr ( sizeof( U ) == 2 ) {
      return __builtin_bswap16( v );
   } else if constexpr ( sizeof( U ) == 4 ) {
      return __builtin_bswap32( v );
   } else {
      return __builtin_bswap64( v );
   }
}

} // namespace Detail

/// An appending buffer of bytes. Appending costs amortised constant time per byte; it throws
/// std::bad_alloc and is then as it was.
class VOK_EXPORT Out {
 public:
   Out() noexcept = default;
   Out( Out && other ) noexcept;
   Out & operator=( Out && other ) noexcept;
   ~Out();

   /// The bytes, valid until the next call that appends or clears.
   const std::byte * data() const noexcept { return begin_; }
   std::size_t size() const noexcept { return static_cast< std::size_t >( at_ - begin_ ); }
   std::span< const std::byte > bytes() const noexcept { return { begin_, size() }; }

   /// Forgets the contents and keeps the memory.
   void clear() noexcept { at_ = begin_; }

   /// Appends one number at its width.
   template< std::unsigned_integral U > [[gnu::always_inline]] void put( U v )
   {
      const U ordered = Detail::networkOrder( v );
      std::memcpy( grow( sizeof( U ) ), &ordered, sizeof( U ) );
   }
   void putBool( bool v ) { put( static_cast< std::uint8_t >( v ? 1 : 0 ) ); }
   void putDouble( double v ) { put( std::bit_cast< std::uint64_t >( v ) ); }
   void putBytes( const void * bytes, std::size_t size )
   {
      if ( size != 0 ) {
         std::memcpy( grow( size ), bytes, size );
      }
   }

   /// Appends a text: its length as 32 bits, then its bytes. A longer text than 32 bits can count
   /// throws Exception.
   void putString( std::string_view text );

   /// Appends a number in as few bytes as it needs: 7 bits a byte, least significant first, the
   /// high bit set on all but the last.
   void putVarint( std::uint64_t v )
   {
      if ( v < 0x80 ) {
         put( static_cast< std::uint8_t >( v ) );
      } else if ( v < 0x4000 ) {
         std::byte * const at = grow( 2 );
         at[ 0 ] = static_cast< std::byte >( v | 0x80 );
         at[ 1 ] = static_cast< std::byte >( v >> 7 );
      } else {
         putLongVarint( v );
      }
   }

   /// Overwrites a byte that was appended before, at `position` from the start.
   void patch8( std::size_t position, std::uint8_t v ) noexcept
   {
      begin_[ position ] = static_cast< std::byte >( v );
   }
   /// The same with 32 bits.
   void patch32( std::size_t position, std::uint32_t v ) noexcept
   {
      const std::uint32_t ordered = Detail::networkOrder( v );
      std::memcpy( begin_ + position, &ordered, sizeof ordered );
   }

   /// Takes back what was appended after `size`.
   void truncate( std::size_t size ) noexcept { at_ = begin_ + size; }

   /// Where the next bytes go, with room for so many; `wrote` tells where those end that were
   /// written there. Throws std::bad_alloc.
   std::byte * room( std::size_t most )
   {
      reserve( most );
      return at_;
   }
   void wrote( std::byte * end ) noexcept { at_ = end; }

   /// Makes room for `extra` more bytes, so that appending those cannot throw.
   void reserve( std::size_t extra )
   {
      if ( static_cast< std::size_t >( end_ - at_ ) < extra ) [[unlikely]] {
         enlarge( extra );
      }
   }

 private:
   std::byte * grow( std::size_t extra )
   {
      reserve( extra );
      std::byte * const at = at_;
      at_ += extra;
      return at;
   }
   void enlarge( std::size_t extra );
   void putLongVarint( std::uint64_t v );

   std::byte * begin_ = nullptr;
   std::byte * at_ = nullptr; // where the next byte goes
   std::byte * end_ = nullptr; // of the memory
};

/// A reader over bytes that it does not own and that must stay as they are meanwhile. Reading
/// past the end, or a length or code that cannot be, throws Exception and leaves the position
/// where it was or inside the value that failed. No read allocates more than the bytes that are
/// left.
class VOK_EXPORT In {
 public:
   In( const std::byte * data, std::size_t size ) noexcept : at_( data ),
                                                             end_( data + size ) {}
   explicit In( std::span< const std::byte > bytes ) noexcept : In( bytes.data(), bytes.size() ) {}

   std::size_t remaining() const noexcept { return static_cast< std::size_t >( end_ - at_ ); }

   /// Where reading goes on.
   const std::byte * position() const noexcept { return at_; }

   template< std::unsigned_integral U > U get()
   {
      U v;
      std::memcpy( &v, take( sizeof( U ) ), sizeof( U ) );
      return Detail::networkOrder( v );
   }

   /// 0 or 1; any other byte is refused.
   bool getBool();
   double getDouble() { return std::bit_cast< double >( get< std::uint64_t >() ); }

   /// A text, as a view into the bytes read.
   std::string_view getText();
   Corvo::String getString() { return Corvo::String( getText() ); }

   /// A number as putVarint writes it; a longer form than needed is refused.
   std::uint64_t getVarint()
   {
      if ( at_ != end_ ) {
         const auto first = static_cast< std::uint8_t >( *at_ );
         if ( first < 0x80 ) {
            ++at_;
            return first;
         }
         if ( remaining() >= 2 ) {
            const auto second = static_cast< std::uint8_t >( at_[ 1 ] );
            if ( second < 0x80 && second != 0 ) {
               at_ += 2;
               return ( first & 0x7fU ) | std::uint64_t{ second } << 7;
            }
         }
      }
      return getLongVarint();
   }

   /// The next `size` bytes, which are passed over.
   std::span< const std::byte > getBytes( std::size_t size ) { return { take( size ), size }; }

 private:
   const std::byte * take( std::size_t size )
   {
      if ( remaining() < size ) {
         cutShort( size );
      }
      const std::byte * const at = at_;
      at_ += size;
      return at;
   }
   std::uint64_t getLongVarint();
   [[noreturn]] void cutShort( std::size_t wanted ) const;

   const std::byte * at_;
   const std::byte * end_;
};

} // namespace Vok::NboAttrLog
