// Plain attributes of entities and fields of values: an accessor, a mutator, a data member.
#include "vokgen/Names.h"
#include "vokgen/Printer.h"
#include "vokgen/emit/Cells.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Functions.h"
#include "vokgen/emit/Spelling.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"
#include "vokgen/emit/attribute/Storage.h"

namespace VokGen {

using Model::Attribute;

namespace {

// ---- Fields of values -------------------------------------------------------------------------

std::string fieldMutator( const Attribute & field )
{
   const Scope scope( *field.owner );
   const Model::Type & taken = takenAs( field );
   const std::string member = Names::dataMember( field.name );
   const std::string head =
         "void " + Names::mutator( field.name ) + "( " + scope.given( taken ) + " v )";
   const std::string store = field.builtFrom
         ? member + " = static_cast< " + scope.type( field.type ) + " >( v );"
         : member + " = v;";
   if ( !hasCheck( field ) ) {
      const bool silent = taken.scalar() || isLiteral( taken );
      return shortFunction( head + ( silent ? " noexcept" : "" ), store, 3 );
   }
   return fill(
         { { "rule", comment( { refusalInWords( field, "v" ), "It keeps its value then." } ) },
               { "head", head }, { "member", member }, { "check", checkName( field ) },
               { "store", store } },
         R"(
      $rule$
      $head$
      {
         if ( v != $member$ ) {
            $check$( v );
            $store$
         }
      }
   )" );
}

Fragments fieldFragments( const Attribute & field )
{
   Fragments out;
   out.members = comment( { field.documentation } ) + fieldAccessor( field ) +
         ( field.hasMutator() ? fieldMutator( field ) : "" );
   out.checks = fieldCheck( field );
   out.data = dataMember( field );
   return out;
}

// ---- Attributes of entities -------------------------------------------------------------------

std::string incrementer( const Attribute & attribute, const std::string & qualifier )
{
   const std::string type = Scope( *attribute.owner ).type( attribute.type );
   return type + " " + qualifier + Names::incrementer( attribute.name ) + "( " + type + " delta )";
}

Fragments entityFragments( const Attribute & attribute )
{
   Fragments out;
   const std::string id = Names::attributeId( attribute.name );
   const std::string member = Names::dataMember( attribute.name );
   out.members = comment( { attribute.documentation } ) + accessorHead( attribute, "" ) + ";\n" +
         comment( { refusalInWords( attribute, "v" ) } ) + mutatorHead( attribute, "" ) + ";\n";
   out.inlines = accessorDefinition( attribute ) + mutatorDefinition( attribute );
   if ( attribute.counter ) {
      out.members += comment( { "Adds, modulo the width, and returns the new value." } ) +
            incrementer( attribute, "" ) + ";\n";
      out.inlines +=
            shortFunction( "inline " + incrementer( attribute, attribute.owner->name + "::" ),
                  "return Vok::Attribute::increment( *this, " + id + ", " + member + ", delta );" );
   }
   out.checks = entityCheckDeclaration( attribute );
   out.definitions = entityCheckDefinition( attribute );
   out.data = dataMember( attribute );
   return out;
}

class Plain final : public AttributeEmitter {
 public:
   Fragments fragments( const Attribute & attribute ) const override
   {
      return Model::asValue( attribute.owner ) ? fieldFragments( attribute )
                                               : entityFragments( attribute );
   }

   void fillRow( const Attribute & attribute, Row & row ) const override
   {
      row.kind = "plain";
      row.settable = attribute.hasMutator();
      row.typeName = attribute.type.fullName;
      row.offset = offsetOf( attribute );
      row.value = reflectedOps( attribute );
      row.check = checkedBy( attribute );
      describeValue( attribute, row );
   }

   Summary summary( const Attribute & attribute, const Model::Module & page ) const override
   {
      Summary out{ typeLink( attribute.type, page ), defaultCell( attribute ),
         boundsCell( attribute ), "" };
      if ( attribute.hasMutator() ) {
         out.settableBy = call( Names::mutator( attribute.name ), "v" );
      }
      if ( attribute.counter ) {
         out.settableBy += ", " + call( Names::incrementer( attribute.name ), "delta" );
      }
      return out;
   }
};

} // namespace

const AttributeEmitter & plainEmitter()
{
   static const Plain emitter;
   return emitter;
}

} // namespace VokGen
