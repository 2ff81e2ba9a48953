// Collections of child entities, each made by its owner under a key that it carries itself.
#include "vokgen/Names.h"
#include "vokgen/emit/Cells.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Spelling.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"
#include "vokgen/emit/attribute/ChildArguments.h"
#include "vokgen/emit/attribute/Collections.h"

namespace VokGen {

using Model::Attribute;

namespace {

class Children final : public AttributeEmitter {
 public:
   Fragments fragments( const Attribute & children ) const override
   {
      const Scope scope( *children.owner );
      const std::string child = memberType( children );
      const auto arguments = childArguments( children );
      const std::string & key = children.collection->keyAttribute->name;
      CollectionWriter writer( children );
      writer.say( comment( { children.documentation, "Key: " + key + "() of the child." } ) );
      writer.accessors( child, "pointer" );
      writer.say( comment( { reinstantiationInWords( children ) } ) );
      writer.mutator( Names::mutator( children.name ), child, scope.parameters( arguments ),
            { "childIs", "", key + ", " + names( arguments ) } );
      writer.mutator( Names::remover( children.name ), child,
            scope.query( children.collection->key ) + " key", { "childDel", "", "key" } );
      writer.mutator( Names::clearer( children.name ), "void", "", { "childDelAll", "", "" } );
      return writer.finish();
   }

   void fillRow( const Attribute & children, Row & row ) const override
   {
      row.kind = "children";
      fillCollectionRow( children, "childrenOps", row );
   }

   Summary summary( const Attribute & children, const Model::Module & page ) const override
   {
      return { orderNote( children ) + "children " + typeLink( children.type, page ) + " " +
               keyNote( children ),
         "empty", "",
         call( Names::mutator( children.name ), names( childArguments( children ) ) ) + ", " +
               call( Names::remover( children.name ), "key" ) + ", " +
               call( Names::clearer( children.name ), "" ),
         reinstantiationInWords( children ) };
   }
};

} // namespace

const AttributeEmitter & childrenEmitter()
{
   static const Children emitter;
   return emitter;
}

} // namespace VokGen
