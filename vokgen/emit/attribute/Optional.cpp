// Optional attributes: a value or none.
#include "vokgen/Names.h"
#include "vokgen/emit/Cells.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Literal.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"
#include "vokgen/emit/attribute/Storage.h"

namespace VokGen {

using Model::Attribute;

namespace {

class Optional final : public AttributeEmitter {
 public:
   Fragments fragments( const Attribute & attribute ) const override
   {
      const std::string empty = attribute.emptyWord
            ? std::to_string( *attribute.emptyWord ) + " is stored, and given, as no value."
            : "";
      Fragments out;
      out.members = comment( { attribute.documentation, empty } ) + accessorHead( attribute, "" ) +
            ";\n" + mutatorHead( attribute, "" ) + ";\n";
      out.inlines = accessorDefinition( attribute ) + mutatorDefinition( attribute );
      out.data = dataMember( attribute );
      return out;
   }

   void fillRow( const Attribute & attribute, Row & row ) const override
   {
      const std::string & type = attribute.type.cppName;
      row.kind = "optional";
      row.settable = true;
      row.typeName = attribute.type.fullName;
      row.offset = offsetOf( attribute );
      row.value = valueOps( "Vok::Optional< " + type + " >" );
      if ( attribute.emptyWord ) {
         row.storage = "&Vok::Detail::wordStorage< " + type + ", " +
               numberLiteral( *attribute.emptyWord ) + " >";
      }
   }

   Summary summary( const Attribute & attribute, const Model::Module & page ) const override
   {
      return { "optional " + typeLink( attribute.type, page ), "unset", boundsCell( attribute ),
         call( Names::mutator( attribute.name ), "v" ) };
   }
};

} // namespace

const AttributeEmitter & optionalEmitter()
{
   static const Optional emitter;
   return emitter;
}

} // namespace VokGen
