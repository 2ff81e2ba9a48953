// The order of things in a module's header.
#include "vokgen/emit/Header.h"

#include "vokgen/Printer.h"
#include "vokgen/emit/Constants.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Entity.h"
#include "vokgen/emit/Enum.h"
#include "vokgen/emit/Escape.h"
#include "vokgen/emit/ModuleNames.h"
#include "vokgen/emit/Namespaces.h"
#include "vokgen/emit/Spelling.h"
#include "vokgen/emit/Value.h"

#include <set>

namespace VokGen {

using Model::Module;
using Model::TypeDeclaration;

namespace {

constexpr std::string_view aboutValues = "Values are copied. Of a field x, x() reads it and xIs( v "
                                         ") stores it; references that they give "
                                         "hold until the field changes. Collections in a value "
                                         "work as those of entities do, and notify "
                                         "nobody.";

constexpr std::string_view aboutEntities =
      "Entities are made by their factories and held through Corvo::Ptr. Of an attribute x, x() "
      "reads it "
      "and xIs( v ) stores it and tells the notifiees of the entity; where v equals what is stored "
      "it "
      "does nothing. Texts and values are given by reference, which holds until that attribute, of "
      "a "
      "map that member, changes; an optional is given as a copy.\n\n"
      "Of a collection, x() is a live view of it, valid as long as the entity, and the collection "
      "may be "
      "changed while it is iterated. x( key ) is the member: of a map the type's default where "
      "there "
      "is none, of a set whether it holds the key, of children and references the pointer or null. "
      "xDel( key ) deletes a member and returns it, of a set nothing; deleting what is not there "
      "is "
      "silent. xDelAll() deletes all and gives the memory back. Of children, xIs() makes the child "
      "or "
      "returns the one that exists under that key.";

/// Each header once, in the order in which the formatter keeps them.
std::string includes( const Module & module )
{
   std::set< std::string > headers;
   for ( const auto & used : module.uses ) {
      headers.insert( used->header );
   }
   for ( const auto & external : module.externals ) {
      headers.insert( external->header );
   }
   std::string out;
   for ( const std::string & header : headers ) {
      out += "#include \"" + header + "\"\n";
   }
   return out;
}

void addForwardDeclarations( const Module & module, Namespaces & out )
{
   // A run of types of one namespace is one paragraph.
   std::string run;
   std::string nameSpace;
   for ( const auto & type : module.types ) {
      if ( Model::asEntity( type.get() ) ) {
         if ( type->nameSpace != nameSpace ) {
            out.add( nameSpace, run );
            run.clear();
            nameSpace = type->nameSpace;
         }
         run += "class " + type->name + ";\n";
      }
   }
   out.add( nameSpace, run );
}

void addEnums( const Module & module, Namespaces & out )
{
   out.section( "Enumerations" );
   for ( const auto & type : module.types ) {
      if ( const auto * const e = Model::asEnum( type.get() ) ) {
         out.add( e->nameSpace,
               enumDefinition( *e ) + "\n" + enumFunctions( *e ) + enumInstances( *e ) );
      }
   }
}

/// The functions of the enumerations that a type holds, which are no members of it.
void addNestedFunctions( const TypeDeclaration & type, Namespaces & out )
{
   for ( const auto & nested : Model::asRecord( &type )->enums ) {
      out.add( type.nameSpace, enumFunctions( *nested ) );
   }
}

void addValues( const Module & module, Namespaces & out )
{
   out.section( "Constants and values", aboutValues );
   for ( const TypeDeclaration * const type : module.definitionOrder ) {
      const auto * const constants = Model::asConstants( type );
      const auto * const value = Model::asValue( type );
      if ( constants || value ) {
         out.add(
               type->nameSpace, constants ? constantsClass( *constants ) : valueClass( *value ) );
         addNestedFunctions( *type, out );
      }
   }
}

void addEntities( const Module & module, Namespaces & out )
{
   out.section( "Entities", aboutEntities );
   for ( const TypeDeclaration * const type : module.definitionOrder ) {
      if ( const auto * const entity = Model::asEntity( type ) ) {
         out.add( type->nameSpace, entityClass( *entity ) );
         out.add( type->nameSpace, entityFactory( *entity ) );
         addNestedFunctions( *type, out );
      }
   }
}

void addFunctions( const Module & module, Namespaces & out )
{
   out.section( "Functions" );
   for ( const auto & function : module.functions ) {
      const Scope scope( function->nameSpace );
      out.add( function->nameSpace,
            comment( { function->documentation } ) + "VOK_EXPORT " + scope.result( *function ) +
                  " " + function->name + inParentheses( scope.parameters( *function ) ) + ";\n" );
   }
}

void addInlines( const Module & module, Namespaces & out )
{
   out.section( "Inline members" );
   for ( const TypeDeclaration * const type : module.definitionOrder ) {
      if ( const auto * const value = Model::asValue( type ) ) {
         out.add( type->nameSpace, valueInlines( *value ) );
      } else if ( const auto * const entity = Model::asEntity( type ) ) {
         out.add( type->nameSpace, entityInlines( *entity ) );
      }
   }
}

std::string hashes( const Module & module )
{
   std::string out;
   for ( const TypeDeclaration * const type : module.definitionOrder ) {
      if ( const auto * const value = Model::asValue( type ) ) {
         out += valueHash( *value );
      }
   }
   return out;
}

std::string declarations( const Module & module )
{
   Namespaces out;
   addForwardDeclarations( module, out );
   addEnums( module, out );
   addValues( module, out );
   addEntities( module, out );
   addFunctions( module, out );
   addInlines( module, out );
   return out.finish();
}

std::string moduleDocumentation( const Module & module )
{
   const std::string text = plainComment( { module.documentation } );
   return text.empty() ? "" : "//\n" + text;
}

} // namespace

std::string headerText( const Module & module )
{
   return fill(
         { { "banner", banner( module ) }, { "documentation", moduleDocumentation( module ) },
               { "generated", cppLiteral( "Vok/Generated.h" ) }, { "includes", includes( module ) },
               { "declarations", declarations( module ) }, { "hashes", hashes( module ) },
               { "module", module.name } },
         R"(
      $banner$
      $documentation$
      #pragma once

      #include $generated$

      $includes$

      static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

      $declarations$

      $hashes$

      namespace Vok::Modules {

      /// The reflection object of module $module$.
      VOK_EXPORT const Corvo::ModuleInspectData & $module$() noexcept;

      } // namespace Vok::Modules
   )" );
}

} // namespace VokGen
