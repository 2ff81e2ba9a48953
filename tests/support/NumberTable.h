// Value types of one number as the table of a manual: width, bounds, default, and who checks the
// bounds. The type's own constructors and mutators are used, through the row of functions that
// numberOps makes of a type.
#pragma once

#include "Vok/Vok.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TestSupport {

/// Bytes of a log as hexadecimal digits, and back.
std::string hexOf( const Vok::NboAttrLog::Out & log );
std::vector< std::byte > bytesOf( std::string_view hex );

/// A type with one number called `value`, for code that does not know it.
struct NumberOps {
   unsigned bits;
   bool ordered;
   std::uint64_t ( *preset )();
   std::uint64_t ( *built )( std::uint64_t number ); ///< by the constructor from a number
   /// By the mutator, from the first number to the second; `kept` is what it has afterwards.
   void ( *set )( std::uint64_t from, std::uint64_t to, std::uint64_t & kept );
   std::string ( *text )( std::uint64_t number );
   std::uint64_t ( *parsed )( std::string_view text );
   std::string ( *log )( std::uint64_t number ); ///< hexadecimal
   std::uint64_t ( *decoded )( std::string_view hex );
   bool ( *sameHash )( std::uint64_t a, std::uint64_t b );
   bool ( *equal )( std::uint64_t a, std::uint64_t b );
};

template< class V >
concept Ordered = requires( const V & v )
{
   v < v;
};

template< class V > NumberOps numberOps()
{
   using Number = decltype( V().value() );
   static constexpr auto made = []( std::uint64_t n ) { return V( static_cast< Number >( n ) ); };
   return {
      .bits = 8 * sizeof( Number ),
      .ordered = Ordered< V >,
      .preset = []() -> std::uint64_t { return V().value(); },
      .built = []( std::uint64_t n ) -> std::uint64_t { return made( n ).value(); },
      .set =
            []( std::uint64_t from, std::uint64_t to, std::uint64_t & kept ) {
               V value = made( from );
               kept = from;
               value.valueIs( static_cast< Number >( to ) );
               kept = value.value();
            },
      .text = []( std::uint64_t n ) { return std::string( Corvo::valueToStrep( made( n ) ) ); },
      .parsed = []( std::string_view text ) -> std::uint64_t {
         return Corvo::strepToValue< V >( text ).value();
      },
      .log =
            []( std::uint64_t n ) {
               Vok::NboAttrLog::Out out;
               out << made( n );
               return hexOf( out );
            },
      .decoded = []( std::string_view hex ) -> std::uint64_t {
         const std::vector< std::byte > bytes = bytesOf( hex );
         Vok::NboAttrLog::In in( bytes.data(), bytes.size() );
         return V( &in ).value();
      },
      .sameHash =
            []( std::uint64_t a, std::uint64_t b ) {
               return std::hash< V >()( made( a ) ) == std::hash< V >()( made( b ) );
            },
      .equal = []( std::uint64_t a, std::uint64_t b ) { return made( a ) == made( b ); },
   };
}

/// Who refuses a number beyond the bounds.
enum class Checked {
   always, ///< constructors, the parse, the log and the mutator
   byValidate, ///< validate() alone
   never, ///< nobody; the bounds are the whole width
   unbounded ///< there are none
};

/// A number and the constant that names it; an empty name where there is none.
struct Named {
   std::string_view name;
   std::uint64_t number;
   unsigned bits = 0; ///< of the constant, where they are not the field's
};

/// One type.
struct NumberRow {
   std::string_view type; ///< its full name
   NumberOps ops;
   unsigned bits;
   Named lower;
   Named upper;
   Named preset;
   Checked checked;
   bool ordered = false;
   std::string_view message = {};
};

/// Checks a row: records, default, bounds and their neighbours in every way into the type, text and
/// log forms.
void expectNumber( const NumberRow & row );

} // namespace TestSupport
