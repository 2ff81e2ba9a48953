// Sets: each element is its own key.
#include "vokgen/Names.h"
#include "vokgen/emit/Cells.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Spelling.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"
#include "vokgen/emit/attribute/Collections.h"

namespace VokGen {

using Model::Attribute;

namespace {

class Set final : public AttributeEmitter {
 public:
   Fragments fragments( const Attribute & set ) const override
   {
      const Scope scope( *set.owner );
      CollectionWriter writer( set );
      writer.say( comment( { set.documentation } ) );
      writer.accessors( "bool", "contains" );
      writer.storer( "setIs" );
      writer.mutator( Names::remover( set.name ), "void", scope.query( set.type ) + " key",
            { "setDel", "", "key" } );
      writer.mutator( Names::clearer( set.name ), "void", "", { "delAll", "", "" } );
      return writer.finish();
   }

   void fillRow( const Attribute & set, Row & row ) const override
   {
      row.kind = "set";
      fillCollectionRow( set, "setOps", row );
   }

   Summary summary( const Attribute & set, const Model::Module & page ) const override
   {
      return { orderNote( set ) + "set of " + typeLink( set.type, page ), "empty",
         boundsCell( set ),
         call( Names::mutator( set.name ), "key" ) + ", " +
               call( Names::remover( set.name ), "key" ) + ", " +
               call( Names::clearer( set.name ), "" ) };
   }
};

} // namespace

const AttributeEmitter & setEmitter()
{
   static const Set emitter;
   return emitter;
}

} // namespace VokGen
