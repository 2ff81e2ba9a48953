// The form of the messages, field by field.
#include "store/Message.h"

#include <concepts>
#include <utility>

namespace Vok::Store {

namespace {

using NboAttrLog::In;
using NboAttrLog::Out;

/// A message, or a part of one.
template< class M >
concept Fielded = std::tuple_size_v< decltype( M::fields ) >
!= 0;

template< Fielded M > void put( Out & out, const M & message );

void put( Out & out, bool v )
{
   out.putBool( v );
}

template< std::unsigned_integral U > void put( Out & out, U v )
{
   out.put( v );
}

void put( Out & out, const std::string & v )
{
   out.putString( v );
}

void put( Out & out, std::span< const std::byte > v )
{
   out.put( static_cast< std::uint32_t >( v.size() ) );
   out.putBytes( v.data(), v.size() );
}

template< class T > void put( Out & out, const std::vector< T > & v )
{
   out.put( static_cast< std::uint32_t >( v.size() ) );
   for ( const T & one : v ) {
      put( out, one );
   }
}

template< Fielded M > void put( Out & out, const M & message )
{
   std::apply( [ & ]( auto... field ) { ( put( out, message.*field ), ... ); }, M::fields );
}

template< Fielded M > void get( In & in, M & message );

void get( In & in, bool & v )
{
   v = in.getBool();
}

template< std::unsigned_integral U > void get( In & in, U & v )
{
   v = in.get< U >();
}

void get( In & in, std::string & v )
{
   v = in.getText();
}

void get( In & in, std::span< const std::byte > & v )
{
   v = in.getBytes( in.get< std::uint32_t >() );
}

// As many as come: a number of them that the bytes do not bear out takes no memory.
template< class T > void get( In & in, std::vector< T > & v )
{
   for ( auto count = in.get< std::uint32_t >(); count != 0; --count ) {
      get( in, v.emplace_back() );
   }
}

template< Fielded M > void get( In & in, M & message )
{
   std::apply( [ & ]( auto... field ) { ( get( in, message.*field ), ... ); }, M::fields );
}

template< std::size_t... kind >
Message decodeKind( std::size_t which, In & in, std::index_sequence< kind... > )
{
   Message message;
   const bool known =
         ( ( kind == which && ( get( in, message.emplace< kind >() ), true ) ) || ... );
   if ( !known ) {
      throw ProtocolException( "there is no message of kind " + std::to_string( which ) );
   }
   return message;
}

} // namespace

void encode( const Message & message, NboAttrLog::Out & out )
{
   out.put( static_cast< std::uint8_t >( message.index() ) );
   std::visit( [ & ]( const auto & one ) { put( out, one ); }, message );
}

Message decode( std::span< const std::byte > frame )
{
   In in( frame );
   try {
      const auto kind = in.get< std::uint8_t >();
      Message message =
            decodeKind( kind, in, std::make_index_sequence< std::variant_size_v< Message > >() );
      if ( in.remaining() != 0 ) {
         throw ProtocolException( "a message of kind " + std::to_string( kind ) + " has " +
               std::to_string( in.remaining() ) + " bytes too many" );
      }
      return message;
   } catch ( const NboAttrLog::Exception & e ) {
      throw ProtocolException( std::string( "a message is cut short: " ) + e.what() );
   }
}

} // namespace Vok::Store
