// The sections of types on a reference page.
#include "vokgen/Names.h"
#include "vokgen/Printer.h"
#include "vokgen/emit/Cells.h"
#include "vokgen/emit/Documentation.h"
#include "vokgen/emit/Escape.h"
#include "vokgen/emit/Reference.h"
#include "vokgen/emit/Spelling.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"

namespace VokGen {

using Model::Attribute;
using Model::EntityType;
using Model::EnumType;
using Model::RecordType;
using Model::TypeDeclaration;
using Model::ValueType;

namespace {

std::string row( std::initializer_list< std::string > cells )
{
   std::string out = "|";
   for ( const std::string & cell : cells ) {
      out += ( cell.empty() ? "" : " " + cell ) + " |";
   }
   return out + "\n";
}

// ---- Enumerations -----------------------------------------------------------------------------

std::string enumBody( const EnumType & type )
{
   std::string rows = row( { "Name", "Code", "Meaning" } ) + "|---|---|---|\n";
   for ( const auto & enumerator : type.enumerators ) {
      rows += row( { code( enumerator->name ), std::to_string( enumerator->code ),
            markdownText( enumerator->documentation ) } );
   }
   return "Enumeration of " + std::to_string( type.bits ) + " bits.\n\n" + rows;
}

// ---- What has attributes ----------------------------------------------------------------------

std::string attributeRow( const Attribute & attribute, const Model::Module & page )
{
   const Summary summary = emitterOf( attribute ).summary( attribute, page );
   const std::string note = summary.note.empty() ? "" : ". " + summary.note;
   return row( { code( attribute.reflectedName() ), std::to_string( attribute.id ), summary.type,
         summary.value, summary.bounds, summary.settableBy,
         markdownText( attribute.documentation + note ) } );
}

std::string attributeTable( const RecordType & type, const std::string & heading )
{
   const EntityType * const entity = Model::asEntity( &type );
   std::string rows;
   if ( entity && entity->nameArgument ) {
      rows += attributeRow( *entity->nameArgument, *type.module );
   }
   for ( const auto & attribute : type.attributes ) {
      rows += attributeRow( *attribute, *type.module );
   }
   return rows.empty()
         ? ""
         : row( { heading, "Id", "Type", "Default", "Bounds", "Set by", "Meaning" } ) +
               "|---|---|---|---|---|---|---|\n" + rows;
}

/// What a violated bound says.
std::string messages( const RecordType & type )
{
   std::string rows;
   for ( const auto & attribute : type.attributes ) {
      const bool checked = hasCheck( *attribute ) ||
            ( attribute->bounds && attribute->bounds->time == Model::CheckTime::validated );
      if ( checked ) {
         const std::string & message =
               attribute->textLimit ? attribute->textLimit->message : attribute->bounds->message;
         rows += row( { code( attribute->name ), markdownText( message ) } );
      }
   }
   return rows.empty()
         ? ""
         : "What a violated bound reports:\n\n" + row( { "Of", "Message" } ) + "|---|---|\n" + rows;
}

/// Functions of a value, which have no ids.
std::string methods( const ValueType & type )
{
   std::string rows;
   for ( const auto & method : type.methods ) {
      rows += row( { call( method->name, Scope( type ).parameters( *method ) ),
            method->result ? typeLink( *method->result, *type.module ) : "",
            markdownText( method->documentation ) } );
   }
   return rows.empty() ? "" : row( { "Function", "Gives", "Meaning" } ) + "|---|---|---|\n" + rows;
}

std::string propertiesOf( const ValueType & type )
{
   std::string out = "Value type";
   out += type.ordered ? ", ordered" : "";
   out += type.fixed ? ", fixed once it is made" : "";
   out += type.truth ? ", true where it differs from its default" : "";
   out += type.hashable ? "" : ", without a hash";
   out += type.textable ? "" : ", cannot be read from text";
   out += type.constructorsByHand ? ", not made from its fields, which have to fit together" : "";
   return out + ".\n";
}

std::string identityInWords( const EntityType & type )
{
   switch ( type.identity() ) {
   case Model::Identity::name:
      return " Known by its name.";
   case Model::Identity::argument:
      return " Known by its " + code( type.identityArgument()->name ) + ".";
   case Model::Identity::none:
      break;
   }
   return " Without a name.";
}

std::string makingOf( const EntityType & type )
{
   const std::string arguments = names( type.constructorArguments() );
   const std::string creator =
         call( type.fullName + "::" + Names::creator( type.name ), arguments );
   const std::string factory =
         call( type.nameSpace + "::" + Names::factory( type.name ), arguments );
   return "Made by " + ( type.hasFactory ? factory + " or " : "" ) + creator + ".";
}

std::string checksInWords( const EntityType & type )
{
   std::string out;
   for ( const Attribute * const attribute : type.checks ) {
      out += ( out.empty() ? "" : ", " ) + code( attribute->name );
   }
   return out.empty() ? "" : " Making one checks the bounds of " + out + ".";
}

std::string entityIntroduction( const EntityType & type )
{
   const std::string base = type.base
         ? " Has all attributes of " + typeLink( *type.base, *type.module ) + ", and those below."
         : "";
   const std::string fresh =
         type.instantiates ? " `instantiate()` makes a fresh one like it." : std::string();
   return "Entity type. " + makingOf( type ) + identityInWords( type ) + base +
         checksInWords( type ) + fresh + "\n";
}

} // namespace

std::string typeSection( const TypeDeclaration & type )
{
   Paragraphs out;
   out.add( "## <a id=\"" + anchor( type ) + "\"></a>" + code( type.fullName ) + "\n" );
   out.add( markdownText( type.documentation ) );
   if ( const EnumType * const e = Model::asEnum( &type ) ) {
      return out.add( enumBody( *e ) ).text();
   }
   const RecordType & record = *Model::asRecord( &type );
   if ( const ValueType * const value = Model::asValue( &type ) ) {
      out.add( propertiesOf( *value ) ).add( attributeTable( record, "Field" ) );
      out.add( messages( record ) ).add( methods( *value ) );
   } else if ( const EntityType * const entity = Model::asEntity( &type ) ) {
      out.add( entityIntroduction( *entity ) ).add( attributeTable( record, "Attribute" ) );
      out.add( messages( record ) );
   } else {
      out.add( "Constants; there are no values of this type.\n" )
            .add( attributeTable( record, "Name" ) );
   }
   return out.text();
}

} // namespace VokGen
