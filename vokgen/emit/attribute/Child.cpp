// A single child, which is there or not.
#include "vokgen/Names.h"
#include "vokgen/emit/Cells.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Functions.h"
#include "vokgen/emit/Spelling.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"
#include "vokgen/emit/attribute/ChildArguments.h"
#include "vokgen/emit/attribute/Collections.h"

namespace VokGen {

using Model::Attribute;

namespace {

class Child final : public AttributeEmitter {
 public:
   Fragments fragments( const Attribute & attribute ) const override
   {
      const std::string child = memberType( attribute );
      const auto arguments = childArguments( attribute );
      const std::string presence = attribute.collection->constructed
            ? "Made with its owner; null where it was deleted."
            : "Null where there is none.";
      CollectionWriter writer( attribute );
      writer.say( comment( { attribute.documentation, presence } ) + child + " " + attribute.name +
            "() const noexcept;\n" + comment( { reinstantiationInWords( attribute ) } ) );
      writer.mutator( Names::mutator( attribute.name ), child,
            Scope( *attribute.owner ).parameters( arguments ),
            { "singleIs", "", names( arguments ) } );
      writer.mutator( Names::remover( attribute.name ), child, "", { "singleDel", "", "" } );
      Fragments out = writer.finish();
      out.inlines = shortFunction(
            "inline " + child + " " + writer.qualifier() + attribute.name + "() const noexcept",
            "return " + Names::dataMember( attribute.name ) + ";" );
      return out;
   }

   void fillRow( const Attribute & attribute, Row & row ) const override
   {
      row.kind = "child";
      row.settable = true;
      row.typeName = attribute.type.fullName;
      row.offset = offsetOf( attribute );
      row.collection = "&Vok::Detail::childOps< " + attribute.type.cppName + " >";
   }

   Summary summary( const Attribute & attribute, const Model::Module & page ) const override
   {
      return { "child " + typeLink( attribute.type, page ),
         attribute.collection->constructed ? "made with its owner" : "none", "",
         call( Names::mutator( attribute.name ), names( childArguments( attribute ) ) ) + ", " +
               call( Names::remover( attribute.name ), "" ),
         reinstantiationInWords( attribute ) };
   }
};

} // namespace

const AttributeEmitter & childEmitter()
{
   static const Child emitter;
   return emitter;
}

} // namespace VokGen
