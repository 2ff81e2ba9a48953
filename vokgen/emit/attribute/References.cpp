// Collections of counted references to entities that are owned elsewhere.
#include "vokgen/Names.h"
#include "vokgen/emit/Cells.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Escape.h"
#include "vokgen/emit/Spelling.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"
#include "vokgen/emit/attribute/Collections.h"

namespace VokGen {

using Model::Attribute;

namespace {

class References final : public AttributeEmitter {
 public:
   Fragments fragments( const Attribute & references ) const override
   {
      const Scope scope( *references.owner );
      const std::string reference = memberType( references );
      const std::string & key = references.collection->keyAttribute->name;
      CollectionWriter writer( references );
      writer.say( comment(
            { references.documentation, "Key: " + key + "() of what is referred to." } ) );
      writer.accessors( reference, "pointer" );
      writer.say( comment( { "Throws Corvo::NullPointerException for an empty pointer." } ) );
      writer.mutator( Names::mutator( references.name ), "void", "const " + reference + " & v",
            { "referenceIs", cppLiteral( references.name ), "v" } );
      writer.mutator( Names::remover( references.name ), reference,
            scope.query( references.collection->key ) + " key", { "referenceDel", "", "key" } );
      writer.mutator( Names::clearer( references.name ), "void", "", { "delAll", "", "" } );
      return writer.finish();
   }

   void fillRow( const Attribute & references, Row & row ) const override
   {
      row.kind = "references";
      fillCollectionRow( references, "referencesOps", row );
   }

   Summary summary( const Attribute & references, const Model::Module & page ) const override
   {
      return { orderNote( references ) + "references to " + typeLink( references.type, page ) +
               " " + keyNote( references ),
         "empty", "",
         call( Names::mutator( references.name ), "v" ) + ", " +
               call( Names::remover( references.name ), "key" ) + ", " +
               call( Names::clearer( references.name ), "" ) };
   }
};

} // namespace

const AttributeEmitter & referencesEmitter()
{
   static const References emitter;
   return emitter;
}

} // namespace VokGen
