// By reflection: no attribute is named here.
#include "tools/flowtrack-platform/CapabilitiesFile.h"

#include "Vok/Vok.h"

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

namespace FlowtrackPlatform {

namespace {

using Json = nlohmann::json;
using Vok::AttributeKind;

std::string expected( const Vok::AttributeData & attribute )
{
   std::string type( attribute.typeName() );
   switch ( attribute.kind() ) {
   case AttributeKind::set:
      return "an array of " + type;
   case AttributeKind::map:
      return "an object of " + type;
   default:
      return type;
   }
}

[[noreturn]] void refuse( const std::string & where, const Json & found, const std::string & what )
{
   throw CapabilitiesException( where + ": found " + found.dump() + "; expected " + what );
}

/// The text of a number, a truth value or a word, as attributes read it.
std::string textOf( const Json & value, const std::string & where,
      const Vok::AttributeData & attribute )
{
   const bool boolean = attribute.typeName() == "bool";
   if ( value.is_boolean() == boolean && ( value.is_boolean() || value.is_number_unsigned() ) ) {
      return value.dump();
   }
   if ( value.is_string() ) {
      return value.get< std::string >();
   }
   refuse( where, value, expected( attribute ) );
}

void put( Vok::Entity & to, const Vok::AttributeData & attribute, const Json & value,
      const std::string & where )
{
   if ( attribute.kind() == AttributeKind::set && value.is_array() ) {
      for ( const Json & element : value ) {
         attribute.memberIs( to, textOf( element, where, attribute ), {} );
      }
   } else if ( attribute.kind() == AttributeKind::map && value.is_object() ) {
      for ( const auto & [ key, element ] : value.items() ) {
         attribute.memberIs( to, Corvo::valueToStrep( Corvo::String( key ) ),
               textOf( element, std::string( where ).append( "/" ).append( key ), attribute ) );
      }
   } else if ( attribute.kind() == AttributeKind::plain ||
         attribute.kind() == AttributeKind::optional ) {
      attribute.set( to, textOf( value, where, attribute ) );
   } else {
      refuse( where, value, expected( attribute ) );
   }
}

} // namespace

void readCapabilities(
      const std::string & text, const std::string & file, HwFlowTracking::Capabilities & to )
{
   Json all;
   try {
      all = Json::parse( text );
   } catch ( const Json::parse_error & e ) {
      throw CapabilitiesException( file + ": byte " + std::to_string( e.byte ) + ": no JSON" );
   }
   if ( !all.is_object() ) {
      refuse( file, all, "an object" );
   }
   for ( const auto & [ name, value ] : all.items() ) {
      const std::string where = std::string( file ).append( ": /" ).append( name );
      const Vok::AttributeData * const attribute = to.typeData().attribute( name );
      if ( !attribute || !attribute->settable() ) {
         refuse( where, value, "an attribute of " + std::string( to.typeData().name() ) );
      }
      try {
         put( to, *attribute, value, where );
      } catch ( const Corvo::ParseException & ) {
         refuse( where, value, expected( *attribute ) );
      } catch ( const Corvo::RangeException & e ) {
         refuse( where, value, e.what() );
      }
   }
}

Corvo::Ptr< HwFlowTracking::Capabilities > capabilitiesOfFile( const std::string & file )
{
   std::ifstream from( file );
   const std::string text{ std::istreambuf_iterator< char >( from ), {} };
   if ( !from ) {
      throw CapabilitiesException( file + ": cannot be read" );
   }
   auto made = HwFlowTracking::capabilitiesFactory( "capabilities" );
   readCapabilities( text, file, *made );
   return made;
}

} // namespace FlowtrackPlatform
