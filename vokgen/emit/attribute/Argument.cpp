// Constructor arguments: fixed for life, or with a mutator where they are settable.
#include "vokgen/Names.h"
#include "vokgen/emit/Cells.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"
#include "vokgen/emit/attribute/Storage.h"

namespace VokGen {

using Model::Attribute;

namespace {

std::string role( const Attribute & argument )
{
   if ( argument.isIdentity ) {
      return "constructor, the identity";
   }
   return argument.settable ? "constructor, " + call( Names::mutator( argument.name ), "v" )
                            : "constructor";
}

class Argument final : public AttributeEmitter {
 public:
   Fragments fragments( const Attribute & argument ) const override
   {
      Fragments out;
      out.members = comment( { argument.documentation } );
      out.data = dataMember( argument );
      if ( Model::asValue( argument.owner ) ) {
         out.members += fieldAccessor( argument );
         return out;
      }
      out.members += accessorHead( argument, "" ) + ";\n";
      out.inlines = accessorDefinition( argument );
      if ( argument.settable ) {
         out.members += mutatorHead( argument, "" ) + ";\n";
         out.inlines += mutatorDefinition( argument );
      }
      return out;
   }

   void fillRow( const Attribute & argument, Row & row ) const override
   {
      const bool keptByEntity = argument.isIdentity && argument.type.isText();
      row.kind = "constructorArgument";
      row.settable = argument.settable;
      row.identity = argument.isIdentity;
      row.reference = argument.isReference;
      row.typeName = argument.type.fullName;
      if ( !keptByEntity ) {
         row.offset = offsetOf( argument );
      }
      if ( !argument.isReference ) {
         row.value = valueOps( argument.type.cppName );
      }
      if ( argument.isIdentity && !keptByEntity ) {
         row.fromName = "&Vok::Detail::fromName< " + argument.type.cppName + " >";
      }
      if ( Model::asValue( argument.owner ) ) {
         describeValue( argument, row );
      }
   }

   Summary summary( const Attribute & argument, const Model::Module & page ) const override
   {
      const std::string type = typeLink( argument.type, page );
      const std::string start = Model::asValue( argument.owner ) ? defaultCell( argument ) : "";
      return { argument.isReference ? "reference to " + type : type, start, boundsCell( argument ),
         role( argument ) };
   }
};

} // namespace

const AttributeEmitter & argumentEmitter()
{
   static const Argument emitter;
   return emitter;
}

} // namespace VokGen
