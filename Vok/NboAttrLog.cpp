// The attribute log's buffer and reader.
#include "Vok/NboAttrLog.h"

#include "Vok/detail/Pen.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

namespace Vok::NboAttrLog {

namespace {

[[noreturn]] void tooLong( std::size_t size )
{
   throw Exception(
         "a text of " + std::to_string( size ) + " bytes is too long for an attribute log" );
}

} // namespace

Out::Out( Out && other ) noexcept
      : begin_( std::exchange( other.begin_, nullptr ) ),
        at_( std::exchange( other.at_, nullptr ) ),
        end_( std::exchange( other.end_, nullptr ) )
{
}

Out & Out::operator=( Out && other ) noexcept
{
   std::swap( begin_, other.begin_ );
   std::swap( at_, other.at_ );
   std::swap( end_, other.end_ );
   return *this;
}

Out::~Out()
{
   delete[] begin_;
}

void Out::enlarge( std::size_t extra )
{
   const std::size_t held = size();
   if ( extra > std::numeric_limits< std::size_t >::max() / 4 - held ) {
      throw std::bad_alloc();
   }
   const auto before = static_cast< std::size_t >( end_ - begin_ );
   const std::size_t capacity = std::max( { held + extra, 2 * before, std::size_t{ 256 } } );
   auto * const begin = new std::byte[ capacity ];
   if ( held != 0 ) {
      std::memcpy( begin, begin_, held );
   }
   delete[] begin_;
   begin_ = begin;
   at_ = begin + held;
   end_ = begin + capacity;
}

void Out::putString( std::string_view text )
{
   if ( text.size() > std::numeric_limits< std::uint32_t >::max() ) [[unlikely]] {
      tooLong( text.size() );
   }
   std::byte * const at = grow( sizeof( std::uint32_t ) + text.size() );
   const std::uint32_t size = Detail::networkOrder( static_cast< std::uint32_t >( text.size() ) );
   std::memcpy( at, &size, sizeof size );
   Vok::Detail::copyText( at + sizeof size, text );
}

void Out::putLongVarint( std::uint64_t v )
{
   Vok::Detail::Pen( *this, Vok::Detail::Pen::varintRoom ).varint( v );
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
