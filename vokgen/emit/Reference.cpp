// The order of things on a reference page.
#include "vokgen/emit/Reference.h"

#include "vokgen/Printer.h"
#include "vokgen/emit/Cells.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Escape.h"

namespace VokGen {

using Model::Module;
using Model::TypeDeclaration;
using Model::TypeDeclarationKind;

namespace {

std::string kindInWords( const TypeDeclaration & type )
{
   switch ( type.kind ) {
   case TypeDeclarationKind::enumeration:
      return "enumeration";
   case TypeDeclarationKind::constants:
      return "constants";
   case TypeDeclarationKind::value:
      return "value";
   case TypeDeclarationKind::entity:
      break;
   }
   return "entity";
}

std::string uses( const Module & module )
{
   std::string out;
   for ( const auto & used : module.uses ) {
      out += ( out.empty() ? "Uses the modules " : ", " ) + std::string( "[" ) +
            markdownText( used->name ) + "](" + pageOf( *used, module ) + ")";
   }
   return out.empty() ? "" : " " + out + ".";
}

std::string contents( const Module & module )
{
   std::string rows;
   for ( const TypeDeclaration * const type : module.allTypes() ) {
      rows += "| " + typeLink( *type, module ) + " | " + kindInWords( *type ) + " | " +
            markdownText( firstSentence( type->documentation ) ) + " |\n";
   }
   return rows.empty() ? "" : "| Type | Kind | Meaning |\n|---|---|---|\n" + rows;
}

std::string functions( const Module & module )
{
   std::string rows;
   for ( const auto & function : module.functions ) {
      std::string parameters;
      for ( const Model::Parameter & parameter : function->parameters ) {
         parameters += ( parameters.empty() ? "" : ", " ) + code( parameter.name ) + " " +
               typeLink( parameter.type, module );
      }
      rows += "| " + code( function->nameSpace + "::" + function->name ) + " | " + parameters +
            " | " + ( function->result ? typeLink( *function->result, module ) : "" ) + " | " +
            markdownText( function->documentation ) + " |\n";
   }
   return rows.empty()
         ? ""
         : "## Functions\n\n| Function | Takes | Gives | Meaning |\n|---|---|---|---|\n" + rows;
}

std::string externals( const Module & module )
{
   std::string rows;
   for ( const auto & external : module.externals ) {
      rows += "| " + code( external->fullName ) + " | " + code( external->header ) + " | " +
            markdownText( external->documentation ) + " |\n";
   }
   return rows.empty()
         ? ""
         : "## Types of other headers\n\n| Type | Header | Meaning |\n|---|---|---|\n" + rows;
}

} // namespace

std::string referenceText( const Module & module )
{
   Paragraphs out;
   out.add( "# Module " + markdownText( module.name ) + "\n" );
   out.add( markdownText( module.documentation ) );
   out.add( "Header: " + code( module.header ) + "." + uses( module ) );
   out.add( contents( module ) );
   for ( const TypeDeclaration * const type : module.allTypes() ) {
      out.add( typeSection( *type ) );
   }
   out.add( functions( module ) );
   out.add( externals( module ) );
   return out.text();
}

} // namespace VokGen
