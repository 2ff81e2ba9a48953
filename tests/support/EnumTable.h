// Enumerations as the tables of a manual: codes and names, and what is none of them.
#pragma once

#include "Vok/Vok.h"

#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TestSupport {

/// An enumeration, for code that does not know it.
struct EnumOps {
   unsigned bits;
   const char * ( *name )( unsigned code ); ///< stringValue
   std::string ( *streamed )( unsigned code );
   std::string ( *text )( unsigned code );
   unsigned ( *parsed )( std::string_view text );
   unsigned ( *ofCode )( unsigned code ); ///< EInstance( code )
   unsigned ( *ofName )( std::string_view name ); ///< EInstance( name )
};

/// `enumOps< E, EInstance, EInstance >()`
template< class E, E ( *ofCode )( unsigned ), E ( *ofName )( std::string_view ) > EnumOps enumOps()
{
   static constexpr auto code = []( E e ) { return static_cast< unsigned >( e ); };
   return {
      .bits = 8 * sizeof( E ),
      .name = []( unsigned n ) { return stringValue( static_cast< E >( n ) ); },
      .streamed =
            []( unsigned n ) {
               std::ostringstream out;
               out << static_cast< E >( n );
               return out.str();
            },
      .text =
            []( unsigned n ) {
               return std::string( Corvo::valueToStrep( static_cast< E >( n ) ) );
            },
      .parsed = []( std::string_view text ) { return code( Corvo::strepToValue< E >( text ) ); },
      .ofCode = []( unsigned n ) { return code( ofCode( n ) ); },
      .ofName = []( std::string_view name ) { return code( ofName( name ) ); },
   };
}

/// One enumeration.
struct EnumTable {
   std::string_view type; ///< its full name
   EnumOps ops;
   unsigned bits;
   std::vector< std::pair< unsigned, std::string_view > > enumerators; ///< in declared order
};

/// Checks every code and name in every way into the enumeration, and that no other code below 300
/// and no neighbour of a name is taken.
void expectEnumeration( const EnumTable & table );

} // namespace TestSupport
