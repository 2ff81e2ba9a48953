// Derived attributes: computed on each read by a function written by hand.
#include "vokgen/emit/Cells.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Spelling.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"

namespace VokGen {

using Model::Attribute;

namespace {

class Derived final : public AttributeEmitter {
 public:
   Fragments fragments( const Attribute & attribute ) const override
   {
      Fragments out;
      out.members = comment( { attribute.documentation } ) +
            Scope( *attribute.owner ).type( attribute.type ) + " " + attribute.name + "() const;\n";
      return out;
   }

   void fillRow( const Attribute & attribute, Row & row ) const override
   {
      row.kind = "derived";
      row.typeName = attribute.type.fullName;
      row.call = callOf( attribute );
   }

   Summary summary( const Attribute & attribute, const Model::Module & page ) const override
   {
      return { typeLink( attribute.type, page ), "", boundsCell( attribute ),
         "computed on each read" };
   }
};

} // namespace

const AttributeEmitter & derivedEmitter()
{
   static const Derived emitter;
   return emitter;
}

} // namespace VokGen
