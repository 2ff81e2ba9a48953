// The order of things in a module's reflection file.
#include "vokgen/emit/Reflection.h"

#include "vokgen/Names.h"
#include "vokgen/Printer.h"
#include "vokgen/emit/Enum.h"
#include "vokgen/emit/Escape.h"
#include "vokgen/emit/Initialisers.h"
#include "vokgen/emit/ModuleNames.h"
#include "vokgen/emit/TypeRecord.h"

#include <map>
#include <set>

namespace VokGen {

using Model::EnumType;
using Model::Module;
using Model::TypeDeclaration;

namespace {

/// Identifiers for the tables of enumerations: "colour", "holderStatus"; numbered where two
/// namespaces have the same.
std::map< const EnumType *, std::string > identifiers( const Module & module )
{
   std::map< const EnumType *, std::string > out;
   std::set< std::string > taken;
   for ( const TypeDeclaration * const type : module.allTypes() ) {
      if ( const EnumType * const e = Model::asEnum( type ) ) {
         const std::string name =
               Names::uncapitalised( ( e->holder ? e->holder->name : "" ) + e->name );
         std::string unique = name;
         for ( int number = 2; !taken.insert( unique ).second; ++number ) {
            unique = name + std::to_string( number );
         }
         out.emplace( e, unique );
      }
   }
   return out;
}

std::string usesTable( const Module & module )
{
   std::string uses;
   for ( const auto & used : module.uses ) {
      uses += "&" + moduleFunction( *used ) + ",\n";
   }
   return uses.empty() ? "" : fill( { { "uses", uses } }, R"(
      constexpr Corvo::ModuleInspectData::Use uses[] = {
         $uses$
      };
   )" );
}

std::string typesTable( const std::string & types )
{
   return types.empty() ? "" : fill( { { "types", types } }, R"(
      constexpr const Vok::TypeData * types[] = {
         $types$
      };
   )" );
}

std::string moduleFields( const Module & module )
{
   Initialisers fields( 6 );
   fields.text( "name", module.name );
   fields.text( "documentation", module.documentation );
   fields.code( "fingerprint", "0x" + module.fingerprintText() );
   fields.code( "types", module.types.empty() ? "" : "types" );
   fields.code( "uses", module.uses.empty() ? "" : "uses" );
   return fields.lines();
}

/// The reflection object, and the one initialiser that runs when the library is loaded.
std::string moduleObject( const Module & module, const std::string & tables )
{
   return fill( { { "tables", tables },
                      { "object", Names::reflectionObject( module.name, module.fingerprint ) },
                      { "fields", moduleFields( module ) },
                      { "function", moduleFunction( module ) } },
         R"(
      $tables$

      /// The reflection object of the module: its types in declared order.
      extern const Corvo::ModuleInspectData $object$;
      constinit const Corvo::ModuleInspectData $object$( {
            $fields$
      } );
      const Corvo::ModuleInspectData & $function$() noexcept
      {
         return $object$;
      }

      namespace {
      // The one initialiser of the module: the standard streams first, then the registration.
      const std::ios_base::Init streams;
      const Vok::Detail::ModuleRegistration registration( $object$ );
      } // namespace
   )" );
}

std::string anonymous( const std::string & text )
{
   return text.empty() ? "" : "namespace {\n" + text + "} // namespace\n";
}

} // namespace

std::string reflectionText( const Module & module )
{
   const auto names = identifiers( module );
   Paragraphs records;
   std::string types;
   for ( const TypeDeclaration * const type : module.allTypes() ) {
      if ( const EnumType * const e = Model::asEnum( type ) ) {
         records.add( enumTables( *e, names.at( e ) ) );
         types += "&" + names.at( e ) + "Type,\n";
      } else {
         records.add( typeRecord( *Model::asRecord( type ) ) );
         types += "&" + type->fullName + "::VokTable::type,\n";
      }
   }
   const std::string tables = anonymous( typesTable( types ) + usesTable( module ) );
   return fill( { { "banner", banner( module ) },
                      { "header", cppLiteral( module.header ) },
                      { "vok", cppLiteral( "Vok/GeneratedTables.h" ) },
                      { "records", records.text() },
                      { "module", moduleObject( module, tables ) } },
         R"(
      $banner$
      #include $header$

      #include $vok$

      $records$

      $module$
   )" );
}

} // namespace VokGen
