// flowtrack types and describe: what reflection tells of the types.
#include "tools/flowtrack/Commands.h"
#include "tools/flowtrack/Context.h"
#include "tools/flowtrack/Place.h"
#include "tools/flowtrack/Table.h"
#include "tools/flowtrack/json/Hint.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace Flowtrack {

namespace {

using Vok::AttributeData;
using Vok::AttributeKind;
using Vok::TypeData;

std::vector< const TypeData * > allTypes()
{
   std::vector< const TypeData * > types;
   for ( const Corvo::ModuleInspectData & module : Corvo::ModuleInspectData::modules() ) {
      for ( const TypeData & type : module.types() ) {
         types.push_back( &type );
      }
   }
   std::sort( types.begin(), types.end(),
         []( const TypeData * a, const TypeData * b ) { return a->name() < b->name(); } );
   return types;
}

/// The type of a full name, or of its last part where no other one has that.
const TypeData & typeNamed( const std::string & name )
{
   std::vector< const TypeData * > found;
   std::vector< std::string > known;
   for ( const TypeData * const type : allTypes() ) {
      const std::string_view full = type->name();
      if ( full == name ) {
         return *type;
      }
      if ( full.size() > name.size() + 2 && full.ends_with( name ) &&
            full.substr( full.size() - name.size() - 2, 2 ) == "::" ) {
         found.push_back( type );
      }
      known.emplace_back( full );
      known.emplace_back( full.substr( full.rfind( ':' ) + 1 ) );
   }
   if ( found.empty() ) {
      throw CommandError( notFound, "there is no type " + name + "; flowtrack types lists them",
            FlowtrackJson::didYouMean( name, known ) );
   }
   if ( found.size() > 1 ) {
      std::string names;
      for ( const TypeData * const type : found ) {
         names.append( names.empty() ? "" : ", " ).append( type->name() );
      }
      throw CommandError( wrongUsage, name + " may be one of " + names );
   }
   return *found.front();
}

std::string firstSentence( std::string_view text )
{
   const std::size_t end = text.find( ". " );
   return std::string( text.substr( 0, end == std::string_view::npos ? end : end + 1 ) );
}

/// `map u32 -> string`, `children T by name`.
std::string typeText( const AttributeData & attribute )
{
   std::string name( attribute.typeName() );
   const std::string ordered = attribute.ordered() ? "ordered " : "";
   const std::string by =
         attribute.keyField().empty() ? "" : " by " + std::string( attribute.keyField() );
   switch ( attribute.kind() ) {
   case AttributeKind::plain:
   case AttributeKind::constructorArgument:
      return name;
   case AttributeKind::map:
      return ordered + "map " +
            ( by.empty() ? std::string( attribute.keyTypeName() ) + " -> " + name : name + by );
   default:
      return ordered + stringValue( attribute.kind() ) + ( name.empty() ? "" : " " ) + name + by;
   }
}

std::string bounds( const AttributeData & attribute )
{
   if ( attribute.lowerText().empty() && attribute.upperText().empty() ) {
      return "";
   }
   return std::string( attribute.lowerText() ) + ".." + std::string( attribute.upperText() );
}

void describeType( Context & context, const TypeData & type )
{
   std::ostream & out = context.out;
   out << type.name() << ": " << stringValue( type.kind() ) << " of module "
       << type.module().name();
   if ( type.base() ) {
      out << ", a " << type.base()->name();
   }
   out << '\n'
       << type.documentation() << '\n';
   Table enumerators( { "NAME", "CODE", "MEANING" } );
   for ( const auto & [ code, name ] : type.enumerators() ) {
      enumerators.add( { std::string( name ), std::to_string( code ),
            std::string( type.enumeratorDocumentation( code ) ) } );
   }
   Table attributes( { "NAME", "TYPE", "DEFAULT", "BOUNDS", "ID", "MEANING" } );
   for ( const AttributeData & attribute : type.attributes() ) {
      attributes.add( { std::string( attribute.name() ), typeText( attribute ),
            std::string( attribute.defaultText() ), bounds( attribute ),
            std::to_string( attribute.id() ), firstSentence( attribute.documentation() ) } );
   }
   for ( Table * const table : { &enumerators, &attributes } ) {
      if ( !table->empty() ) {
         out << '\n';
         table->dropEmptyColumns();
         table->print( out, context.colours );
      }
   }
}

/// Its own line for whatever there is to tell.
void line( std::ostream & out, const char * what, std::string_view text )
{
   if ( !text.empty() ) {
      out << what << ": " << text << '\n';
   }
}

void describeAttribute( std::ostream & out, const TypeData & type, const AttributeData & attribute )
{
   out << type.name() << '.' << attribute.name() << '\n'
       << attribute.documentation() << '\n';
   line( out, "type", typeText( attribute ) );
   line( out, "kind", stringValue( attribute.kind() ) );
   line( out, "key", attribute.keyTypeName() );
   line( out, "default", attribute.defaultText() );
   line( out, "bounds", bounds( attribute ) );
   line( out, "settable", attribute.settable() ? "yes" : "no" );
   line( out, "id", std::to_string( attribute.id() ) );
}

void describe( Context & context, const std::string & what )
{
   const std::size_t dot = what.find( '.' );
   const TypeData & type = typeNamed( what.substr( 0, dot ) );
   if ( dot == std::string::npos ) {
      describeType( context, type );
      return;
   }
   const AttributeData & attribute = attributeOf( type, what.substr( dot + 1 ) );
   describeAttribute( context.out, type, attribute );
   const TypeData * const of = Corvo::ModuleInspectData::findType( attribute.typeName() );
   if ( of ) {
      context.out << '\n';
      describeType( context, *of );
   }
}

} // namespace

void addTypes( CLI::App & app, Context & context )
{
   CLI::App * const command =
         app.add_subcommand( "types", "Lists the types of the data model." );
   command->callback( [ &context ] {
      Table table( { "TYPE", "KIND", "MODULE", "MEANING" } );
      for ( const TypeData * const type : allTypes() ) {
         table.add( { std::string( type->name() ), stringValue( type->kind() ),
               std::string( type->module().name() ), firstSentence( type->documentation() ) } );
      }
      table.print( context.out, context.colours );
   } );
}

void addDescribe( CLI::App & app, Context & context )
{
   CLI::App * const command = app.add_subcommand( "describe",
         "Tells what a type or an attribute means: its documentation, default, bounds and id." );
   const auto what = std::make_shared< std::string >();
   command
         ->add_option( "TYPE", *what,
               "TYPE or TYPE.ATTRIBUTE; the last part of a type's name, where only one has it" )
         ->required();
   command->callback( [ &context, what ] { describe( context, *what ); } );
}

} // namespace Flowtrack
