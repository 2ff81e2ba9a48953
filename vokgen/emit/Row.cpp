// How rows of reflection tables are printed.
#include "vokgen/emit/Row.h"

#include "vokgen/Names.h"
#include "vokgen/Printer.h"
#include "vokgen/emit/Initialisers.h"
#include "vokgen/emit/Literal.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"

#include <algorithm>

namespace VokGen {

using Model::Attribute;

namespace {

bool hasText( const Model::Type & type )
{
   return type.kind != Model::TypeKind::external && type.kind != Model::TypeKind::entity &&
         type.textable();
}

} // namespace

std::string offsetOf( const Attribute & attribute )
{
   return "VOK_OFFSET( " + attribute.owner->name + ", " + Names::dataMember( attribute.name ) +
         " )";
}

std::string valueOps( const std::string & cppName )
{
   return "&Vok::Detail::valueOps< " + cppName + " >";
}

void describeValue( const Attribute & attribute, Row & row )
{
   row.defaultText = canonicalText( attribute.value.value, attribute.type ).value_or( "" );
   if ( attribute.bounds ) {
      row.lowerText = std::to_string( numberOf( attribute.bounds->lower.value ) );
      row.upperText = std::to_string( numberOf( attribute.bounds->upper.value ) );
   }
}

std::string callOf( const Attribute & attribute )
{
   const Model::Function * const function = attribute.function ? &*attribute.function : nullptr;
   const bool texts = !function ||
         ( std::all_of( function->parameters.begin(), function->parameters.end(),
                 []( const Model::Parameter & parameter ) { return hasText( parameter.type ); } ) &&
               ( !function->result || hasText( *function->result ) ) );
   return texts
         ? "&Vok::Detail::callMember< &" + attribute.owner->name + "::" + attribute.name + " >"
         : "";
}

std::string rowText( const Attribute & attribute )
{
   Row row;
   emitterOf( attribute ).fillRow( attribute, row );
   Initialisers fields( 12 );
   fields.code( "id", std::to_string( attribute.id ) );
   fields.text( "name", attribute.reflectedName() );
   fields.text( "documentation", attribute.documentation );
   fields.code( "kind", "Vok::AttributeKind::" + row.kind );
   fields.flag( "ordered", row.ordered );
   fields.flag( "settable", row.settable );
   fields.flag( "identity", row.identity );
   fields.flag( "reference", row.reference );
   fields.text( "typeName", row.typeName );
   fields.text( "keyTypeName", row.keyTypeName );
   fields.text( "keyField", row.keyField );
   fields.text( "defaultText", row.defaultText );
   fields.text( "lowerText", row.lowerText );
   fields.text( "upperText", row.upperText );
   fields.code( "offset", row.offset );
   fields.code( "mask", row.mask );
   fields.code( "maskWidth", row.maskWidth );
   fields.code( "value", row.value );
   fields.code( "key", row.key );
   fields.code( "check", row.check );
   fields.code( "storage", row.storage );
   fields.code( "collection", row.collection );
   fields.code( "call", row.call );
   fields.code( "fromName", row.fromName );
   return fill( { { "fields", fields.lines() } }, R"(
      { {
            $fields$
      } },
   )" );
}

} // namespace VokGen
