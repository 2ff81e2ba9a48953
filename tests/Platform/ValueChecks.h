// What must hold of any value of the platform's types, checked for the values of each test.
#pragma once

#include "Vok/Exceptions.h"
#include "Vok/NboAttrLog.h"
#include "Vok/Strep.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace PlatformTest {

/// The bytes of a log, each as two hexadecimal digits.
inline std::string hex( const Vok::NboAttrLog::Out & log )
{
   constexpr std::string_view digits = "0123456789abcdef";
   std::string text;
   for ( const std::byte byte : log.bytes() ) {
      const unsigned value = std::to_integer< unsigned >( byte );
      text += digits[ value >> 4 ];
      text += digits[ value & 15 ];
   }
   return text;
}

/// The value's text is this one, and the text's value is this one.
template< class V > void expectText( const V & value, std::string_view text )
{
   EXPECT_EQ( Corvo::valueToStrep( value ), text );
   EXPECT_EQ( Corvo::strepToValue< V >( text ), value ) << text;
}

/// The value's log is these bytes; it is read back, and no log cut short is.
template< class V > void expectLog( const V & value, std::string_view bytes )
{
   Vok::NboAttrLog::Out log;
   log << value;
   EXPECT_EQ( hex( log ), bytes );
   EXPECT_EQ( attrLogSize( value ), log.size() );
   Vok::NboAttrLog::In whole( log.data(), log.size() );
   EXPECT_EQ( V( &whole ), value );
   EXPECT_EQ( whole.remaining(), 0u );
   for ( std::size_t size = 0; size < log.size(); ++size ) {
      Vok::NboAttrLog::In cut( log.data(), size );
      EXPECT_THROW( V{ &cut }, Vok::NboAttrLog::Exception ) << size << " of " << bytes;
   }
}

/// All these values differ, and equal themselves only.
template< class V > void expectDistinct( const std::vector< V > & values )
{
   for ( std::size_t i = 0; i < values.size(); ++i ) {
      for ( std::size_t j = 0; j < values.size(); ++j ) {
         const V & a = values[ i ];
         const V & b = values[ j ];
         EXPECT_EQ( a == b, i == j ) << i << " " << j;
         EXPECT_EQ( a != b, i != j ) << i << " " << j;
         EXPECT_EQ( a.isEq( b ), i == j ) << i << " " << j;
         EXPECT_EQ( std::hash< V >()( a ) == std::hash< V >()( b ), i == j ) << i << " " << j;
      }
   }
}

/// The same, and they stand in ascending order.
template< class V > void expectAscending( const std::vector< V > & values )
{
   expectDistinct( values );
   for ( std::size_t i = 0; i < values.size(); ++i ) {
      for ( std::size_t j = 0; j < values.size(); ++j ) {
         EXPECT_EQ( values[ i ] < values[ j ], i < j ) << i << " " << j;
      }
   }
}

/// `call` throws an exception of type E; gives its message.
template< class E, class Call > std::string messageOf( Call call )
{
   try {
      call();
   } catch ( const E & e ) {
      return e.what();
   }
   ADD_FAILURE() << "nothing was thrown";
   return {};
}

/// A V cannot be built from the text: the exception names the text, the offset and what was
/// expected there.
template< class V >
void expectRefused( std::string_view text, std::size_t offset, std::string_view expected )
{
   try {
      const V value{ Corvo::String( text ) };
      ADD_FAILURE() << text << " was taken as " << value.stringValue();
   } catch ( const Corvo::ParseException & e ) {
      Vok::TextOut quoted;
      quoted.putString( text );
      const std::string message = e.what();
      EXPECT_EQ( e.offset(), offset ) << message;
      EXPECT_TRUE( message.starts_with( quoted.view() ) ) << message;
      const std::string place = "at offset " + std::to_string( offset ) + ": expected ";
      EXPECT_NE( message.find( place + std::string( expected ) ), std::string::npos ) << message;
   }
}

} // namespace PlatformTest
