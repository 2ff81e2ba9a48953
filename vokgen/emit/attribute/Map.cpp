// Maps: values by a key that stands beside them or is one of their fields.
#include "vokgen/Names.h"
#include "vokgen/emit/Cells.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Spelling.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"
#include "vokgen/emit/attribute/Collections.h"

namespace VokGen {

using Model::Attribute;
using Model::SecondLookup;

namespace {

bool isKeyed( const Attribute & map )
{
   return map.collection->origin == Model::KeyOrigin::member;
}

void addSecondLookup( CollectionWriter & writer, const Attribute & map, const std::string & given )
{
   const std::string name = Names::secondLookup( map.name );
   if ( map.collection->secondLookup == SecondLookup::same ) {
      writer.say( comment( { "Another name of " + map.name + "( key )." } ) );
      writer.accessor( name, given, "value" );
   } else if ( map.collection->secondLookup == SecondLookup::optional ) {
      writer.say( comment( { "The value under a key, or no value." } ) );
      writer.accessor(
            name, "Vok::Optional< " + Scope( *map.owner ).type( map.type ) + " >", "optional" );
   }
}

class Map final : public AttributeEmitter {
 public:
   Fragments fragments( const Attribute & map ) const override
   {
      const Scope scope( *map.owner );
      const std::string value = scope.given( map.type ) + " value";
      const std::string keyRule = isKeyed( map )
            ? "Key: " + map.collection->keyAttribute->name + "() of the value."
            : "";
      CollectionWriter writer( map );
      writer.say( comment( { map.documentation, keyRule } ) );
      writer.accessors( scope.given( map.type ), "value" );
      addSecondLookup( writer, map, scope.given( map.type ) );
      if ( isKeyed( map ) ) {
         writer.mutator( Names::mutator( map.name ), "void", value, { "keyedIs", "", "value" } );
      } else {
         writer.storer( "mapIs", value );
      }
      writer.mutator( Names::remover( map.name ), scope.type( map.type ),
            scope.query( map.collection->key ) + " key", { "mapDel", "", "key" } );
      writer.mutator( Names::clearer( map.name ), "void", "", { "delAll", "", "" } );
      return writer.finish();
   }

   void fillRow( const Attribute & map, Row & row ) const override
   {
      row.kind = "map";
      fillCollectionRow( map, "mapOps", row );
   }

   Summary summary( const Attribute & map, const Model::Module & page ) const override
   {
      const std::string value = typeLink( map.type, page );
      const std::string key = typeLink( map.collection->key, page );
      const std::string type = isKeyed( map ) ? value + " " + keyNote( map ) + " (" + key + ")"
                                              : "from " + key + " to " + value;
      return { orderNote( map ) + "map " + ( isKeyed( map ) ? "of " : "" ) + type, "empty",
         boundsCell( map ),
         call( Names::mutator( map.name ), isKeyed( map ) ? "value" : "key, value" ) + ", " +
               call( Names::remover( map.name ), "key" ) + ", " +
               call( Names::clearer( map.name ), "" ) };
   }
};

} // namespace

const AttributeEmitter & mapEmitter()
{
   static const Map emitter;
   return emitter;
}

} // namespace VokGen
