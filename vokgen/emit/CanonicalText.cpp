// The texts of values, as the framework prints them.
#include "vokgen/Utf8.h"
#include "vokgen/emit/Literal.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace VokGen {

using Model::Constant;
using Model::Type;
using Model::TypeKind;

namespace {

using Text = std::optional< std::string >;

std::string realText( double number )
{
   std::array< char, 32 > buffer{};
   const double canonical = number == 0.0 ? 0.0 : number;
   const auto end = std::to_chars( buffer.data(), buffer.data() + buffer.size(), canonical ).ptr;
   return { buffer.data(), end };
}

bool isBare( char c )
{
   static constexpr std::string_view others = "_./:@%+-";
   return ( c >= 'a' && c <= 'z' ) || ( c >= 'A' && c <= 'Z' ) || ( c >= '0' && c <= '9' ) ||
         others.find( c ) != std::string_view::npos;
}

/// How many bytes from `at` on stand for themselves between quotes; 0 for what has to be escaped.
/// Of what is not ASCII that is well-formed UTF-8 (RFC 3629) without the control characters of C1.
std::size_t plainBytes( std::string_view text, std::size_t at )
{
   const char c = text[ at ];
   const std::size_t size = utf8Length( text.substr( at ) );
   if ( size < 2 ) {
      const bool special = c == '"' || c == '\\' || c == '\'';
      return size == 1 && c >= ' ' && c <= '~' && !special ? 1 : 0;
   }
   const bool control = c == '\xC2' && static_cast< unsigned char >( text[ at + 1 ] ) < 0xA0;
   return control ? 0 : size;
}

std::string escapedByte( char c )
{
   static constexpr std::string_view digits = "0123456789abcdef";
   switch ( c ) {
   case '"':
      return "\\\"";
   case '\\':
      return "\\\\";
   case '\n':
      return "\\n";
   case '\t':
      return "\\t";
   default:
      break;
   }
   const auto byte = static_cast< unsigned char >( c );
   return { '\\', 'x', digits[ byte >> 4U ], digits[ byte & 15U ] };
}

std::string textToken( std::string_view text )
{
   if ( !text.empty() && std::all_of( text.begin(), text.end(), isBare ) ) {
      return std::string( text );
   }
   std::string out = "\"";
   for ( std::size_t at = 0; at < text.size(); ) {
      if ( const std::size_t plain = plainBytes( text, at ); plain != 0 ) {
         out.append( text.substr( at, plain ) );
         at += plain;
      } else {
         out.append( escapedByte( text[ at++ ] ) );
      }
   }
   return out.append( "\"" );
}

Text enumeratorText( const Constant & value, const Type & type )
{
   if ( value.enumerator ) {
      return value.enumerator->name;
   }
   const Model::Enumerator * const named = type.enumeration->withCode( value.integer );
   return named ? Text( named->name ) : std::nullopt;
}

/// The text of a value: of its only field with `value` in it, or of all fields with their defaults.
Text valueText( const Constant & value, const Model::ValueType & type )
{
   const bool stated = value.kind != Constant::Kind::ownDefault;
   const std::vector< const Model::Attribute * > fields = type.fields();
   if ( type.handDefault && !stated ) {
      return textToken( *type.handDefault );
   }
   if ( type.textByHand || type.hasCollection() || ( stated && !type.onlyField() ) ) {
      return std::nullopt;
   }
   if ( fields.size() == 1 ) {
      return canonicalText( stated ? value : fields.front()->value.value, fields.front()->type );
   }
   std::string out = type.fullName;
   char before = '[';
   for ( const Model::Attribute * const field : fields ) {
      const Text text = canonicalText( field->value.value, field->type );
      if ( !text ) {
         return std::nullopt;
      }
      out.append( 1, before ).append( field->name ).append( 1, '=' ).append( *text );
      before = ',';
   }
   return out.append( "]" );
}

} // namespace

Text canonicalText( const Constant & value, const Type & type )
{
   const bool real = value.kind == Constant::Kind::real;
   switch ( type.kind ) {
   case TypeKind::boolean:
      return value.boolean ? "true" : "false";
   case TypeKind::number:
      return std::to_string( numberOf( value ) );
   case TypeKind::real:
   case TypeKind::seconds:
   case TypeKind::duration:
      return realText( real ? value.real : static_cast< double >( value.integer ) );
   case TypeKind::text:
      return textToken( value.text );
   case TypeKind::enumeration:
      return enumeratorText( value, type );
   case TypeKind::value:
      return valueText( value, *type.value );
   case TypeKind::entity:
   case TypeKind::external:
      break;
   }
   return std::nullopt;
}

} // namespace VokGen
