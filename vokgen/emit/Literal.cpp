// C++ expressions of constants.
#include "vokgen/emit/Literal.h"

#include "vokgen/Printer.h"
#include "vokgen/emit/Escape.h"

#include <array>
#include <charconv>
#include <cmath>

namespace VokGen {

using Model::Constant;
using Model::Type;
using Model::TypeKind;

namespace {

std::string realLiteral( double number )
{
   if ( std::isinf( number ) ) {
      return std::string( number < 0 ? "-" : "" ) + "std::numeric_limits< double >::infinity()";
   }
   std::array< char, 32 > buffer{};
   const auto end = std::to_chars( buffer.data(), buffer.data() + buffer.size(), number ).ptr;
   std::string text( buffer.data(), end );
   return text.find_first_of( ".e" ) == std::string::npos ? text + ".0" : text;
}

double realOf( const Constant & value )
{
   return value.kind == Constant::Kind::real ? value.real
                                             : static_cast< double >( numberOf( value ) );
}

/// A text that holds a NUL says how long it is. A literal of several lines begins on one of its
/// own.
std::string textLiteral( const std::string & text )
{
   if ( text.empty() ) {
      return "Corvo::String()";
   }
   const bool nul = text.find( '\0' ) != std::string::npos;
   const std::string size = std::to_string( text.size() );
   const std::string bytes = cppLiteral( text, 70 );
   const std::string open = nul ? "Corvo::String( std::string_view(" : "Corvo::String(";
   if ( bytes.find( '\n' ) == std::string::npos ) {
      return open + " " + bytes + ( nul ? ", " + size + " ) )" : " )" );
   }
   std::string out = fill( { { "open", open },
                                 { "bytes", bytes },
                                 { "close", nul ? ",\n" + size + " ) )" : " )" } },
         R"(
      $open$
            $bytes$$close$
   )" );
   out.pop_back(); // the line goes on
   return out;
}

/// A value of a type of one field is built from that field's value.
std::string valueLiteral(
      const Constant & value, const Model::ValueType & type, const Scope & scope )
{
   const Model::Attribute * const field = type.onlyField();
   if ( !field ) {
      throw InternalError( type.fullName + " is not built from one value" );
   }
   return scope.name( type.fullName ) + "( " + literal( value, field->type, scope ) + " )";
}

} // namespace

std::string numberLiteral( std::uint64_t number )
{
   constexpr std::uint64_t largestInt = 2147483647;
   return std::to_string( number ) + ( number > largestInt ? "U" : "" );
}

std::uint64_t numberOf( const Constant & value )
{
   return value.kind == Constant::Kind::enumerator ? value.enumerator->code : value.integer;
}

std::string literal( const Constant & value, const Type & type, const Scope & scope )
{
   switch ( type.kind ) {
   case TypeKind::boolean:
      return value.boolean ? "true" : "false";
   case TypeKind::number:
      return numberLiteral( numberOf( value ) );
   case TypeKind::real:
      return realLiteral( realOf( value ) );
   case TypeKind::text:
      return textLiteral( value.text );
   case TypeKind::seconds:
      return "Vok::Seconds( " + realLiteral( realOf( value ) ) + " )";
   case TypeKind::duration:
      return std::isinf( realOf( value ) )
            ? "Corvo::Duration::infinity()"
            : "Corvo::Duration( " + realLiteral( realOf( value ) ) + " )";
   case TypeKind::enumeration:
      return scope.name( value.enumerator->fullName() );
   case TypeKind::value:
      return valueLiteral( value, *type.value, scope );
   case TypeKind::entity:
   case TypeKind::external:
      break;
   }
   throw InternalError( "no value of type " + type.fullName + " can be written down" );
}

} // namespace VokGen
