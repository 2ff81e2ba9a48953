// Writes schemas, modules and documents of every root type into a folder, good documents and
// damaged ones, with what `load` says of them, for validators that others wrote.
#include "tests/flowtrack-json/Trees.h"

#include "tools/flowtrack/json/JsonSchema.h"
#include "tools/flowtrack/json/Yang.h"

#include <algorithm>
#include <fstream>
#include <iostream>

using FlowtrackJson::Json;
using TestSupport::Random;

namespace {

constexpr unsigned good = 10; ///< random trees of each type
constexpr unsigned damagedOfEach = 25; ///< documents made of one tree

/// All values of a document.
void collect( Json & value, std::vector< Json * > & found )
{
   found.push_back( &value );
   if ( value.is_structured() ) {
      for ( Json & below : value ) {
         collect( below, found );
      }
   }
}

Json other( Random & random )
{
   static const std::vector< Json > values = { Json( nullptr ), Json( true ), Json( false ),
      Json( -1 ), Json( 0 ), Json( 1.5 ), Json( 2.0 ), Json( 64 ), Json( 101 ), Json( 256 ),
      Json( 65535 ), Json( 65536 ), Json( 4294967295U ), Json( 4294967296U ), Json( 1e30 ),
      Json( "" ), Json( "x" ), Json( "0" ), Json( "18446744073709551615" ),
      Json( "18446744073709551616" ), Json( "10.0.0.1" ), Json( "10.0.0.256" ), Json( "::1" ),
      Json( "inf" ), Json( "encapGre" ), Json::array(), Json::object(), Json::array( { 1 } ),
      Json::array( { "x" } ) };
   return values[ random.below( static_cast< std::uint32_t >( values.size() ) ) ];
}

std::size_t any( Random & random, const Json & of )
{
   return random.below( static_cast< std::uint32_t >( of.size() ) );
}

/// One damage to an object.
void damageObject( Json & object, Random & random )
{
   std::vector< std::string > names( 1 );
   for ( const auto & [ key, value ] : object.items() ) {
      names.push_back( key );
   }
   const std::string name = object.empty() ? "" : names[ 1 + any( random, object ) ];
   switch ( random.below( 3 ) ) {
   case 0:
      object.erase( name );
      return;
   case 1: {
      Json renamed = Json::object();
      for ( const auto & [ key, value ] : object.items() ) {
         FlowtrackJson::append( renamed, key == name ? key + "x" : key, value );
      }
      object = renamed;
      return;
   }
   default:
      object[ random.oneIn( 2 ) ? "unknown" : "7" ] = other( random );
   }
}

/// One damage to an array.
void damageArray( Json & array, Random & random )
{
   const std::size_t at = array.empty() ? 0 : any( random, array );
   switch ( array.empty() ? 2 : random.below( 3 ) ) {
   case 0:
      array.erase( at );
      return;
   case 1:
      array.push_back( Json( array[ at ] ) );
      return;
   default:
      array.push_back( other( random ) );
   }
}

void damage( Json & document, Random & random )
{
   std::vector< Json * > values;
   collect( document, values );
   Json & value = *values[ random.below( static_cast< std::uint32_t >( values.size() ) ) ];
   if ( value.is_object() && !random.oneIn( 4 ) ) {
      damageObject( value, random );
   } else if ( value.is_array() && !random.oneIn( 4 ) ) {
      damageArray( value, random );
   } else if ( value.is_string() && random.oneIn( 3 ) ) {
      value = value.get< std::string >() + "x";
   } else {
      value = other( random );
   }
}

/// A document with what `load` says of it.
void tell( std::ostream & out, const Json & document, const std::string & type )
{
   const EntityPtr tree = newTree( type );
   const std::string problems = loaded( document.dump(), *tree );
   out << Json{ { "document", document }, { "problems", problems } }.dump() << '\n';
}

void samplesOf( const std::string & type, const std::string & folder )
{
   const Vok::TypeData & record = FlowtrackJson::entityType( type );
   const std::string yang = FlowtrackJson::yangTypeName( type );
   std::ofstream( folder + "/" + yang + ".schema.json" )
         << FlowtrackJson::jsonSchema( record ).dump( 2 ) << '\n';
   std::ofstream( folder + "/" + yang + ".yang" ) << FlowtrackJson::yangModule( record );
   std::ofstream cases( folder + "/" + yang + ".cases" );
   Random random( 1 );
   for ( unsigned i = 0; i != good; ++i ) {
      const EntityPtr tree = i == 0 ? newTree( type ) : randomTree( type, i, 20 * i );
      const Json document = FlowtrackJson::toJson( *tree );
      tell( cases, document, type );
      tell( cases, FlowtrackJson::toJson( *tree, FlowtrackJson::Extent::changed ), type );
      for ( unsigned n = 0; n != damagedOfEach; ++n ) {
         Json damaged = document;
         damage( damaged, random );
         tell( cases, damaged, type );
      }
      std::ofstream( folder + "/" + yang + "." + std::to_string( i ) + ".data.json" )
            << FlowtrackJson::rfc7951( *tree ).dump( 2 ) << '\n';
   }
}

} // namespace

int main( int count, char ** arguments )
{
   if ( count != 2 ) {
      std::cerr << "usage: flowtrack-json-samples FOLDER\n";
      return 2;
   }
   const std::vector< std::string > types = rootTypes();
   for ( const std::string & type : types ) {
      samplesOf( type, arguments[ 1 ] );
   }
   return types.empty() ? 1 : 0;
}
