// The shared blocks of long texts.
#include "Vok/String.h"

#include <cstring>
#include <new>
#include <ostream>
#include <stdexcept>

namespace Corvo {

void String::share( std::string_view text )
{
   if ( text.size() > maxSize() ) {
      throw std::length_error( "Corvo::String: text too long" );
   }
   void * const memory = ::operator new( sizeof( Block ) + text.size() + 1 );
   auto * const block = new ( memory ) Block{ 1 };
   auto * const to = reinterpret_cast< char * >( block + 1 );
   std::memcpy( to, text.data(), text.size() );
   to[ text.size() ] = '\0';
   word_[ 0 ] = reinterpret_cast< std::uintptr_t >( block );
   word_[ 1 ] = packed( text.size(), sharedTag );
}

void String::release() noexcept
{
   Block * const shared = block();
   if ( Vok::Detail::decrementCount( shared->count ) == 0 ) {
      shared->~Block();
      ::operator delete( shared );
   }
}

bool String::sharedEqual( const String & a, const String & b ) noexcept
{
   return std::memcmp( a.sharedBytes(), b.sharedBytes(), a.sharedSize() ) == 0;
}

std::ostream & operator<<( std::ostream & out, const String & text ) { return out << text.view(); }

} // namespace Corvo
