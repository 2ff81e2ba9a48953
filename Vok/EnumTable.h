// What generated enumerations are made of: a table of codes and names, and the four functions
// that each has.
#pragma once

#include "Vok/CharRange.h"
#include "Vok/Export.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>

namespace Vok {

/// One enumerator: its code, its name and what it means.
struct Enumerator {
   std::uint32_t code;
   std::string_view name;
   std::string_view documentation;
};

/// The table of one enumeration, found from its type by the function `vokEnumTable( E )`.
struct EnumTable {
   std::string_view name; ///< full name
   std::span< const Enumerator > enumerators; ///< in declared order

   /// The enumerator of a code or of a name; null where there is none.
   constexpr const Enumerator * byCode( std::uint32_t code ) const noexcept
   {
      // Most enumerations count up from 0.
      if ( code < enumerators.size() && enumerators[ code ].code == code ) {
         return &enumerators[ code ];
      }
      for ( const Enumerator & e : enumerators ) {
         if ( e.code == code ) {
            return &e;
         }
      }
      return nullptr;
   }
   constexpr const Enumerator * byName( std::string_view wanted ) const noexcept
   {
      for ( const Enumerator & e : enumerators ) {
         if ( e.name == wanted ) {
            return &e;
         }
      }
      return nullptr;
   }
};

namespace Detail {

/// The static text of a code's name; a code without one ends the process by assertion.
VOK_EXPORT const char * enumName( const EnumTable & table, std::uint32_t code );

/// The code of a number or a name; Corvo::EnumRangeException where the enumeration lacks it.
VOK_EXPORT std::uint32_t enumInstance( const EnumTable & table, std::uint64_t code );
VOK_EXPORT std::uint32_t enumInstance( const EnumTable & table, std::string_view name );

/// Reads one whole name; an unknown one throws Corvo::EnumRangeException and consumes nothing.
VOK_EXPORT std::uint32_t enumFromText( const EnumTable & table, CharRange & range );

/// The code that a log carries; NboAttrLog::Exception where the enumeration lacks it.
VOK_EXPORT std::uint32_t enumFromLog( const EnumTable & table, std::uint32_t code );

/// Narrowed to the enumeration's width first, as the log carries 32 bits.
template< class E > E enumFromLog( std::uint32_t code )
{
   const auto narrow = static_cast< std::underlying_type_t< E > >( code );
   return static_cast< E >( enumFromLog( vokEnumTable( E() ), std::uint32_t{ narrow } ) );
}

} // namespace Detail

/// What the functions of each generated enumeration call.
namespace Enumeration {

template< class E > const char * name( E e )
{
   return Detail::enumName( vokEnumTable( e ), static_cast< std::uint32_t >( e ) );
}

template< class E > void read( CharRange & range, E * into )
{
   *into = static_cast< E >( Detail::enumFromText( vokEnumTable( E() ), range ) );
}

template< class E > E ofCode( std::uint64_t code )
{
   return static_cast< E >( Detail::enumInstance( vokEnumTable( E() ), code ) );
}

template< class E > E ofName( std::string_view name )
{
   return static_cast< E >( Detail::enumInstance( vokEnumTable( E() ), name ) );
}

} // namespace Enumeration
} // namespace Vok
