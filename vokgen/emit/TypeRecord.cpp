// How the records of types are printed.
#include "vokgen/emit/TypeRecord.h"

#include "vokgen/Printer.h"
#include "vokgen/emit/Functions.h"
#include "vokgen/emit/Initialisers.h"
#include "vokgen/emit/ModuleNames.h"
#include "vokgen/emit/Row.h"
#include "vokgen/emit/Spelling.h"

namespace VokGen {

using Model::Attribute;
using Model::EntityType;
using Model::RecordType;
using Model::ValueType;

namespace {

/// How many rows the table of an entity type has.
std::size_t rowCount( const EntityType & type )
{
   return type.attributes.size() + ( type.nameArgument ? 1 : 0 ) +
         ( type.base ? rowCount( *type.base ) : 0 );
}

/// A derived type's table begins with the rows of its base, which stand in the same file.
std::string baseRows( const EntityType & type )
{
   std::string out;
   for ( std::size_t i = 0; type.base && i != rowCount( *type.base ); ++i ) {
      out += type.base->fullName + "::VokTable::attributes[ " + std::to_string( i ) + " ],\n";
   }
   return out;
}

std::string rows( const RecordType & type )
{
   std::string out;
   if ( const EntityType * const entity = Model::asEntity( &type ) ) {
      out = baseRows( *entity ) + ( entity->nameArgument ? rowText( *entity->nameArgument ) : "" );
   }
   for ( const auto & attribute : type.attributes ) {
      out += rowText( *attribute );
   }
   return out;
}

std::string rowTable( const RecordType & type )
{
   const std::string all = rows( type );
   return all.empty() ? "" : fill( { { "rows", all } }, R"(
      static constexpr Vok::AttributeData attributes[] = {
         $rows$
      };
   )" );
}

std::string identityKind( const EntityType & type )
{
   switch ( type.identity() ) {
   case Model::Identity::name:
      return "Vok::IdentityKind::name";
   case Model::Identity::argument:
      return "Vok::IdentityKind::argument";
   case Model::Identity::none:
      break;
   }
   return "";
}

/// How reflection makes an entity: its type, and those of the constructor arguments.
std::string maker( const EntityType & type )
{
   std::string out = "&Vok::Detail::makeEntity< " + type.fullName;
   for ( const Attribute * const argument : type.constructorArguments() ) {
      out += ", " + Scope().argumentType( *argument );
   }
   return out + " >";
}

void describeEntity( const EntityType & type, Initialisers & fields )
{
   const std::size_t arguments = type.constructorArguments().size();
   fields.code( "argumentCount", arguments == 0 ? "" : std::to_string( arguments ) );
   fields.code( "identity", identityKind( type ) );
   fields.code( "base", type.base ? "&" + type.base->fullName + "::vokType" : "" );
   fields.code( "make", maker( type ) );
   fields.code( "live", "&live" );
}

void describeValueType( const ValueType & type, Initialisers & fields )
{
   const std::size_t arguments = type.constructorArguments().size();
   fields.code( "argumentCount", arguments == 0 ? "" : std::to_string( arguments ) );
   fields.code( "value", valueOps( type.fullName ) );
   const std::string reason = type.hasCollection() ? " - has collection" : "";
   fields.text( "notext", type.textable ? "" : "No String constructor for " + type.name + reason );
}

std::string recordFields( const RecordType & type, bool hasRows )
{
   const EntityType * const entity = Model::asEntity( &type );
   const ValueType * const value = Model::asValue( &type );
   const std::string kind = entity ? "entity" : value ? "value"
                                                      : "constants";
   Initialisers fields( 9 );
   fields.text( "name", type.fullName );
   fields.text( "documentation", type.documentation );
   fields.code( "kind", "Vok::TypeKind::" + kind );
   fields.code( "module", "&" + moduleFunction( *type.module ) );
   fields.code( "attributes", hasRows ? "Vok::Detail::tableOf< attributes >()" : "" );
   if ( entity ) {
      describeEntity( *entity, fields );
   } else if ( value ) {
      describeValueType( *value, fields );
   }
   return fields.lines();
}

std::string recordAccessors( const RecordType & type )
{
   if ( !Model::asEntity( &type ) ) {
      return "";
   }
   const std::string start = "const Vok::TypeData & " + type.fullName;
   return "\n" + shortFunction( start + "::vokType() noexcept", "return VokTable::type;" ) +
         shortFunction( start + "::typeData() const noexcept", "return VokTable::type;" );
}

} // namespace

std::string typeRecord( const RecordType & type )
{
   const bool entity = Model::asEntity( &type ) != nullptr;
   const std::string table = rowTable( type );
   return fill( { { "type", type.fullName },
                      { "live",
                            entity ? "static inline constinit Vok::Detail::LiveCount live{ 0 };"
                                   : "" },
                      { "rows", table }, { "fields", recordFields( type, !table.empty() ) } },
                R"(
      struct $type$::VokTable {
         $live$
         $rows$
         static constexpr Vok::TypeData type{ {
               $fields$
         } };
      };
   )" ) + recordAccessors( type );
}

} // namespace VokGen
