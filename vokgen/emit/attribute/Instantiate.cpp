// instantiate(): a fresh entity with the same constructor arguments.
#include "vokgen/emit/Cells.h"
#include "vokgen/emit/EntityFunctions.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"

namespace VokGen {

using Model::Attribute;

namespace {

class Instantiate final : public AttributeEmitter {
 public:
   Fragments fragments( const Attribute & attribute ) const override
   {
      const Model::EntityType & type = *Model::asEntity( attribute.owner );
      Fragments out;
      out.members = instantiateDeclaration( type, attribute.documentation );
      out.definitions = instantiateDefinition( type );
      return out;
   }

   void fillRow( const Attribute & attribute, Row & row ) const override
   {
      row.kind = "function";
      row.call = callOf( attribute );
   }

   Summary summary( const Attribute & attribute, const Model::Module & page ) const override
   {
      return { "function; gives a new " + typeLink( *attribute.owner, page ), "", "", "" };
   }
};

} // namespace

const AttributeEmitter & instantiateEmitter()
{
   static const Instantiate emitter;
   return emitter;
}

} // namespace VokGen
