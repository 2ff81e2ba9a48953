// The attribute log's buffer and reader.
#include "Vok/NboAttrLog.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

namespace Vok::NboAttrLog {

Out::Out( Out && other ) noexcept
      : data_( std::exchange( other.data_, nullptr ) ),
        size_( std::exchange( other.size_, 0 ) ),
        capacity_( std::exchange( other.capacity_, 0 ) )
{
}

Out & Out::operator=( Out && other ) noexcept
{
   std::swap( data_, other.data_ );
   std::swap( size_, other.size_ );
   std::swap( capacity_, other.capacity_ );
   return *this;
}

Out::~Out()
{
   delete[] data_;
}

void Out::enlarge( std::size_t extra )
{
   if ( extra > std::numeric_limits< std::size_t >::max() / 4 - size_ ) {
      throw std::bad_alloc();
   }
   const std::size_t capacity = std::max( { size_ + extra, 2 * capacity_, std::size_t{ 256 } } );
   auto * const data = new std::byte[ capacity ];
   if ( size_ != 0 ) {
      std::memcpy( data, data_, size_ );
   }
   delete[] data_;
   data_ = data;
   capacity_ = capacity;
}

void Out::putString( std::string_view text )
{
   if ( text.size() > std::numeric_limits< std::uint32_t >::max() ) {
      throw Exception( "a text of " + std::to_string( text.size() ) +
            " bytes is too long for an attribute log" );
   }
   reserve( sizeof( std::uint32_t ) + text.size() );
   put( static_cast< std::uint32_t >( text.size() ) );
   putBytes( text.data(), text.size() );
}

void Out::putLongVarint( std::uint64_t v )
{
   constexpr std::size_t most = 10;
   reserve( most );
   std::byte * at = data_ + size_;
   for ( ; v >= 0x80; v >>= 7 ) {
      *at++ = static_cast< std::byte >( v | 0x80 );
   }
   *at++ = static_cast< std::byte >( v );
   size_ = static_cast< std::size_t >( at - data_ );
}

void Out::patch32( std::size_t position, std::uint32_t v ) noexcept
{
   const std::uint32_t ordered = Detail::networkOrder( v );
   std::memcpy( data_ + position, &ordered, sizeof ordered );
}

bool In::getBool()
{
   const auto byte = get< std::uint8_t >();
   if ( byte > 1 ) {
      throw Exception(
            "a truth value is 0 or 1 in an attribute log, not " + std::to_string( byte ) );
   }
   return byte == 1;
}

std::string_view In::getText()
{
   const auto size = get< std::uint32_t >();
   return { reinterpret_cast< const char * >( take( size ) ), size };
}

std::uint64_t In::getLongVarint()
{
   std::uint64_t v = 0;
   for ( unsigned shift = 0; shift < 64; shift += 7 ) {
      const auto byte = get< std::uint8_t >();
      const std::uint64_t bits = byte & 0x7fU;
      if ( shift == 63 && bits > 1 ) {
         break;
      }
      v |= bits << shift;
      if ( byte < 0x80 ) {
         if ( bits == 0 && shift != 0 ) {
            break;
         }
         return v;
      }
   }
   throw Exception( "a number in an attribute log is longer than it needs to be" );
}

void In::cutShort( std::size_t wanted ) const
{
   throw Exception( "the attribute log is cut short: " + std::to_string( wanted ) +
         " bytes wanted, " + std::to_string( remaining() ) + " left" );
}

} // namespace Vok::NboAttrLog
