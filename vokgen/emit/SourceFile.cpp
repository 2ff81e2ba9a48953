// Definitions of values and entities, in the order of the header.
#include "vokgen/emit/SourceFile.h"

#include "vokgen/Printer.h"
#include "vokgen/emit/Entity.h"
#include "vokgen/emit/Escape.h"
#include "vokgen/emit/ModuleNames.h"
#include "vokgen/emit/Namespaces.h"
#include "vokgen/emit/Value.h"

namespace VokGen {

namespace {

std::string definitions( const Model::Module & module )
{
   Namespaces out;
   for ( const Model::TypeDeclaration * const type : module.definitionOrder ) {
      out.section( type->name );
      if ( const auto * const value = Model::asValue( type ) ) {
         out.add( type->nameSpace, valueDefinitions( *value ) );
      } else if ( const auto * const entity = Model::asEntity( type ) ) {
         out.add( type->nameSpace, entityDefinitions( *entity ) );
      }
   }
   return out.finish();
}

} // namespace

std::string sourceText( const Model::Module & module )
{
   return fill( { { "banner", banner( module ) },
                      { "header", cppLiteral( module.header ) },
                      { "definitions", definitions( module ) } },
         R"(
      $banner$
      #include $header$

      $definitions$
   )" );
}

} // namespace VokGen
