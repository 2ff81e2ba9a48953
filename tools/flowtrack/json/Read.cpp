// Each form has its reader. What only the type itself can refuse is left to the type.
#include "tools/flowtrack/json/Read.h"

#include "tools/flowtrack/json/Json.h"
#include "tools/flowtrack/json/Text.h"
#include "tools/flowtrack/json/Words.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>

namespace FlowtrackJson {

using Vok::AttributeData;
using Vok::AttributeKind;
using Vok::TypeData;

namespace {

using Text = std::optional< std::string >;
using Kind = Node::Kind;

bool isDigits( std::string_view text )
{
   return !text.empty() && ( text[ 0 ] != '0' || text.size() == 1 ) &&
         text.find_first_not_of( "0123456789" ) == std::string_view::npos;
}

/// A whole number as JSON may write it, such as 1e3; none where it is not one, or below zero.
std::optional< std::uint64_t > wholeNumber( std::string_view text )
{
   std::uint64_t whole = 0;
   if ( isDigits( text ) ) {
      const auto [ end, error ] = std::from_chars( text.data(), text.data() + text.size(), whole );
      return error == std::errc() ? std::optional( whole ) : std::nullopt;
   }
   double real = 0;
   std::from_chars( text.data(), text.data() + text.size(), real );
   constexpr double exact = 9007199254740992;
   return real >= 0 && real <= exact && real == std::floor( real )
         ? std::optional( static_cast< std::uint64_t >( real ) )
         : std::nullopt;
}

} // namespace

Spot below( const Spot & spot, std::string_view step, std::string definition )
{
   return { spot.pointer + pointerStep( step ), std::move( definition ) };
}

void Reading::wrong( std::size_t offset, const Spot & spot, std::string found, std::string allowed )
{
   const Place at = document_.placeOf( offset );
   problems.push_back( { spot.pointer, at.line, at.column, std::move( found ),
         std::move( allowed ), spot.definition } );
}

void Reading::wrong( const Node & node, const Spot & spot, std::string allowed )
{
   wrong( node.offset, spot, described( node ), std::move( allowed ) );
}

void Reading::unknown( const Member & member, const Spot & spot, const TypeData & type,
      const std::vector< std::string > & offered )
{
   wrong( member.offset, below( spot, member.name, std::string( type.name() ) ),
         described( Node( Kind::text, member.name ) ),
         oneOf( offered ) + suggestion( member.name, offered ) );
}

bool Reading::is( Kind kind, const Node & node, const Spot & spot, std::string_view allowed )
{
   if ( node.kind != kind ) {
      wrong( node, spot, std::string( allowed ) );
   }
   return node.kind == kind;
}

bool Reading::done( const Node & node, const Spot & spot, const std::function< void() > & what )
{
   try {
      what();
      return true;
   } catch ( const Corvo::ParseException & e ) {
      wrong( node, spot, e.what() );
   } catch ( const Corvo::RangeException & e ) {
      wrong( node, spot, e.what() );
   } catch ( const Corvo::ReinstantiationException & e ) {
      wrong( node, spot, e.what() );
   }
   return false;
}

Text Reading::text( const Node & node, const Shape & shape, const Spot & spot )
{
   switch ( shape.form ) {
   case Form::truth:
      return is( Kind::truth, node, spot, allowedBy( shape ) ) ? Text( node.text ) : Text();
   case Form::number:
   case Form::bigNumber:
      return number( node, shape, spot );
   case Form::real:
      return real( node, spot );
   case Form::text: {
      if ( !is( Kind::text, node, spot, allowedBy( shape ) ) ) {
         return {};
      }
      std::string text;
      const bool good =
            done( node, spot, [ & ] { text = printed( shape, keyText( shape, node.text ) ); } );
      return good ? Text( std::move( text ) ) : Text();
   }
   case Form::choice:
      return choice( node, shape, spot );
   case Form::flags:
      return flags( node, shape, spot );
   case Form::object:
      break;
   }
   const auto read = value( node, shape, spot );
   return read ? Text( shape.type->valueToStrep( read->data() ) ) : Text();
}

Text Reading::number( const Node & node, const Shape & shape, const Spot & spot )
{
   const bool big = shape.form == Form::bigNumber;
   std::optional< std::uint64_t > found;
   if ( big ? node.kind == Kind::text && isDigits( node.text ) : node.kind == Kind::number ) {
      found = wholeNumber( node.text );
   }
   if ( !found || *found < shape.least || *found > shape.most ) {
      wrong( node, spot, allowedBy( shape ) );
      return {};
   }
   return std::to_string( *found );
}

Text Reading::real( const Node & node, const Spot & spot )
{
   static const std::set< std::string_view > words = { "inf", "-inf", "nan" };
   if ( node.kind == Kind::text && words.contains( node.text ) ) {
      return node.text;
   }
   if ( !is( Kind::number, node, spot, R"(a number, "inf", "-inf" or "nan")" ) ) {
      return {};
   }
   double real = 0;
   std::from_chars( node.text.data(), node.text.data() + node.text.size(), real );
   return std::string( Corvo::valueToStrep( real ) );
}

Text Reading::choice( const Node & node, const Shape & shape, const Spot & spot )
{
   std::vector< std::string > names;
   for ( const auto & [ code, name ] : shape.choices->enumerators() ) {
      names.emplace_back( name );
   }
   const bool isText = node.kind == Kind::text;
   if ( isText && std::find( names.begin(), names.end(), node.text ) != names.end() ) {
      return node.text;
   }
   wrong( node, spot, allowedBy( shape ) + ( isText ? suggestion( node.text, names ) : "" ) );
   return {};
}

Text Reading::flags( const Node & node, const Shape & shape, const Spot & spot )
{
   if ( !is( Kind::array, node, spot, allowedBy( shape ) ) ) {
      return {};
   }
   std::uint64_t word = 0;
   bool good = true;
   for ( std::size_t i = 0; i != node.elements.size(); ++i ) {
      const Node & element = node.elements[ i ];
      const Spot at = below( spot, std::to_string( i ), spot.definition );
      const auto flag = std::find_if( shape.flags.begin(), shape.flags.end(),
            [ & ]( const Flag & f ) {
               return element.kind == Kind::text && f.name == element.text;
            } );
      if ( flag == shape.flags.end() ) {
         wrong( element, at, allowedBy( shape ) );
         good = false;
      } else if ( ( word >> flag->bit & 1 ) != 0 ) {
         wrong( element, at, "each flag once" );
         good = false;
      } else {
         word |= std::uint64_t{ 1 } << flag->bit;
      }
   }
   return good ? Text( std::to_string( word ) ) : Text();
}

std::optional< std::string > Reading::key(
      const Member & member, const Shape & shape, const Spot & spot )
{
   std::string text = keyText( shape, member.name );
   const Node name( Kind::text, member.name, member.offset );
   if ( shape.form == Form::number || shape.form == Form::bigNumber ) {
      const auto number = isDigits( text ) ? wholeNumber( text ) : std::nullopt;
      if ( !number || *number < shape.least || *number > shape.most ) {
         wrong( name, spot, allowedBy( shape ) + ", as the name of the member" );
         return {};
      }
      return text;
   }
   if ( shape.form == Form::choice ) {
      return choice( name, shape, spot );
   }
   const bool good = done( name, spot, [ & ] { text = printed( shape, text ); } );
   return good ? std::optional( std::move( text ) ) : std::nullopt;
}

std::string printed( const Shape & shape, const std::string & text )
{
   if ( !shape.type || shape.type->kind() != Vok::TypeKind::value ) {
      return text;
   }
   Vok::CharRange range( text );
   Vok::Value value = shape.type->make();
   shape.type->strepToValue( range, value.data() );
   range.needEnd();
   return std::string( shape.type->valueToStrep( value.data() ) );
}

} // namespace FlowtrackJson
