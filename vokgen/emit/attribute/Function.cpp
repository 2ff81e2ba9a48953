// Functions that take an id: of entities, and the static ones of constants types. They are written
// by hand, but for those that give a text.
#include "vokgen/emit/Cells.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Escape.h"
#include "vokgen/emit/Functions.h"
#include "vokgen/emit/Spelling.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"

namespace VokGen {

using Model::Attribute;

namespace {

std::string declaration( const Attribute & attribute )
{
   const Model::Function & function = *attribute.function;
   const Scope scope( *attribute.owner );
   const bool changesNothing = !function.isStatic && !function.mutating;
   const std::string head = ( function.isStatic ? "static " : "" ) +
         scope.result( function ) + " " + function.name +
         inParentheses( scope.parameters( function ) ) + ( changesNothing ? " const" : "" );
   return function.text
         ? shortFunction( head, "return " + cppLiteral( *function.text, 80 ) + ";", 3 )
         : head + ";\n";
}

/// "function ( kind `Corvo::String` ), gives `Corvo::String`"
std::string signature( const Model::Function & function, const Model::Module & page )
{
   std::string parameters;
   for ( const Model::Parameter & parameter : function.parameters ) {
      parameters += ( parameters.empty() ? "" : ", " ) + code( parameter.name ) + " " +
            typeLink( parameter.type, page );
   }
   const std::string list = parameters.empty() ? "" : " of " + parameters;
   const std::string result =
         function.result ? "; gives " + typeLink( *function.result, page ) : std::string();
   return "function" + list + result;
}

class Function final : public AttributeEmitter {
 public:
   Fragments fragments( const Attribute & attribute ) const override
   {
      Fragments out;
      out.members = comment( { attribute.documentation } ) + declaration( attribute );
      return out;
   }

   void fillRow( const Attribute & attribute, Row & row ) const override
   {
      row.kind = "function";
      row.call = attribute.function->isStatic ? "" : callOf( attribute );
   }

   Summary summary( const Attribute & attribute, const Model::Module & page ) const override
   {
      return { signature( *attribute.function, page ), "", "", "" };
   }
};

} // namespace

const AttributeEmitter & functionEmitter()
{
   static const Function emitter;
   return emitter;
}

} // namespace VokGen
