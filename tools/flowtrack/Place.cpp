// Taking paths apart, and following them with an eye on what was probably meant.
#include "tools/flowtrack/Place.h"

#include "store/Path.h"
#include "tools/flowtrack/Errors.h"
#include "tools/flowtrack/Trees.h"
#include "tools/flowtrack/json/Hint.h"

#include <cctype>

namespace Flowtrack {

namespace {

bool isWordCharacter( char c )
{
   return std::isalnum( static_cast< unsigned char >( c ) ) != 0 || c == '_';
}

std::size_t wordEnd( std::string_view text, std::size_t from )
{
   while ( from < text.size() && isWordCharacter( text[ from ] ) ) {
      ++from;
   }
   return from;
}

/// Where the bracket at `from` is closed again, behind it; npos where it is not. Brackets in quotes
/// and in values in brackets are passed over.
std::size_t behindBracket( std::string_view text, std::size_t from )
{
   bool quoted = false;
   std::size_t depth = 0;
   for ( std::size_t i = from; i < text.size(); ++i ) {
      const char c = text[ i ];
      if ( quoted ) {
         i += c == '\\' ? 1 : 0;
         quoted = c != '"';
      } else if ( c == '"' ) {
         quoted = true;
      } else if ( c == '[' ) {
         ++depth;
      } else if ( c == ']' && --depth == 0 ) {
         return i + 1;
      }
   }
   return std::string_view::npos;
}

std::vector< std::string > childNames( const Vok::TypeData & type )
{
   std::vector< std::string > names;
   for ( const Vok::AttributeData & attribute : type.attributes() ) {
      if ( isChild( attribute ) ) {
         names.emplace_back( attribute.name() );
      }
   }
   return names;
}

std::string joined( const std::vector< std::string > & words )
{
   std::string text;
   for ( const std::string & word : words ) {
      text.append( text.empty() ? "" : ", " ).append( word );
   }
   return text;
}

/// Why a step leads nowhere.
[[noreturn]] void throwAstray( const Vok::Entity & from, const Member & step )
{
   const Vok::TypeData & type = from.typeData();
   const std::string typeName( type.name() );
   const Vok::AttributeData * const attribute = type.attribute( step.attribute );
   if ( !attribute || !isChild( *attribute ) ) {
      const auto names = childNames( type );
      throw CommandError( notFound,
            "nothing is below " + step.attribute + " of " + typeName + "; " +
                  ( names.empty() ? "it has no children" : "expected " + joined( names ) ),
            FlowtrackJson::didYouMean( step.attribute, names ) );
   }
   if ( attribute->kind() == Vok::AttributeKind::children && !step.key ) {
      throw CommandError( wrongUsage,
            step.attribute + " of " + typeName + " has keys; expected " + step.attribute +
                  "[KEY]" );
   }
   const std::string at( Vok::pathOf( from ).view() );
   throw CommandError( notFound,
         at + " has no " + step.attribute + ( step.key ? "[" + *step.key + "]" : "" ),
         FlowtrackJson::didYouMean( step.key.value_or( "" ), keysOf( from, *attribute ) ) );
}

} // namespace

Place Place::parse( const std::string & path, bool ofFile )
{
   if ( ofFile ) {
      if ( path.empty() || path.front() != '/' ) {
         throw CommandError( wrongUsage,
               "'" + path + "' is no place in a file; expected / and what is below it" );
      }
      return { "", path };
   }
   const std::size_t colon = path.find( ":/" );
   const Place place = colon == std::string::npos
         ? Place{ path, "/" }
         : Place{ path.substr( 0, colon ), path.substr( colon + 1 ) };
   try {
      Vok::Store::checkPath( place.mount );
   } catch ( const Vok::Store::PathException & e ) {
      throw CommandError( wrongUsage, e.what() );
   }
   return place;
}

std::size_t memberEnd( std::string_view text )
{
   const std::size_t end = wordEnd( text, 0 );
   if ( end == 0 || end == text.size() || text[ end ] != '[' ) {
      return end;
   }
   const std::size_t behind = behindBracket( text, end );
   return behind == std::string_view::npos ? 0 : behind;
}

Member Member::parse( const std::string & text )
{
   const std::size_t end = wordEnd( text, 0 );
   if ( end != 0 && memberEnd( text ) == text.size() ) {
      return end == text.size()
            ? Member{ text, {} }
            : Member{ text.substr( 0, end ), text.substr( end + 1, text.size() - end - 2 ) };
   }
   throw CommandError(
         wrongUsage, "'" + text + "' is no attribute; expected NAME or NAME[KEY]" );
}

Steps Steps::parse( std::string_view inTree )
{
   Steps steps;
   std::size_t at = 0;
   while ( at < inTree.size() ) {
      if ( inTree[ at ] != '/' ) {
         throw CommandError( wrongUsage,
               "'" + std::string( inTree ) + "' is no place in a tree; expected / at its byte " +
                     std::to_string( at ) );
      }
      const std::string_view from = inTree.substr( at + 1 );
      const std::size_t end = memberEnd( from );
      if ( end == 0 || ( end == from.size() && from.back() != ']' ) ) {
         break;
      }
      steps.complete.push_back( Member::parse( std::string( from.substr( 0, end ) ) ) );
      at += 1 + end;
   }
   steps.rest = inTree.substr( at );
   return steps;
}

Reached follow( const Corvo::Ptr< Vok::Entity > & root, const std::vector< Member > & steps )
{
   Reached reached{ root, 0 };
   for ( const Member & step : steps ) {
      const Vok::AttributeData * const attribute =
            reached.entity->typeData().attribute( step.attribute );
      const bool fits = attribute && isChild( *attribute ) &&
            step.key.has_value() == ( attribute->kind() == Vok::AttributeKind::children );
      const Corvo::Ptr< Vok::Entity > child =
            fits ? attribute->child( *reached.entity, step.key.value_or( "" ) ) : nullptr;
      if ( !child ) {
         return reached;
      }
      reached = { child, reached.taken + 1 };
   }
   return reached;
}

Corvo::Ptr< Vok::Entity > entityAt(
      const Corvo::Ptr< Vok::Entity > & root, const std::string & inTree )
{
   if ( inTree == "/" ) {
      return root;
   }
   Steps steps = Steps::parse( inTree );
   if ( !steps.rest.empty() ) { // the last one may be a single child
      steps.complete.push_back( Member::parse( steps.rest.substr( 1 ) ) );
   }
   const Reached reached = follow( root, steps.complete );
   if ( reached.taken != steps.complete.size() ) {
      throwAstray( *reached.entity, steps.complete[ reached.taken ] );
   }
   return reached.entity;
}

const Vok::AttributeData & attributeOf( const Vok::TypeData & type, const std::string & name )
{
   const Vok::AttributeData * const attribute = type.attribute( name );
   if ( !attribute ) {
      std::vector< std::string > names;
      for ( const Vok::AttributeData & one : type.attributes() ) {
         names.emplace_back( one.name() );
      }
      const std::string hint = FlowtrackJson::didYouMean( name, names );
      const std::string typeName( type.name() );
      throw CommandError( notFound, typeName + " has no attribute " + name,
            hint.empty() ? "flowtrack describe " + typeName + " lists them" : hint );
   }
   return *attribute;
}

} // namespace Flowtrack
