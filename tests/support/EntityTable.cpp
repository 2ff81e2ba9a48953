// Checks the records of an entity type against its table.
#include "tests/support/EntityTable.h"

#include "tests/support/ValueTable.h"

#include <gtest/gtest.h>

namespace TestSupport {

using Vok::AttributeData;
using Vok::AttributeKind;

namespace {

Form form( AttributeKind kind, std::string_view type, std::string_view keyType = "",
      std::string_view keyField = "" )
{
   return { .kind = kind, .type = type, .keyType = keyType, .keyField = keyField };
}

Form fixed( Form form )
{
   form.settable = false;
   return form;
}

} // namespace

Form plain( std::string_view type )
{
   return form( AttributeKind::plain, type );
}

Form optional( std::string_view type )
{
   return form( AttributeKind::optional, type );
}

Form constant( std::string_view type )
{
   return fixed( form( AttributeKind::constant, type ) );
}

Form derived( std::string_view type )
{
   return fixed( form( AttributeKind::derived, type ) );
}

Form argument( std::string_view type )
{
   return fixed( settableArgument( type ) );
}

Form settableArgument( std::string_view type )
{
   return form( AttributeKind::constructorArgument, type );
}

Form set( std::string_view type )
{
   return form( AttributeKind::set, type, type );
}

Form map( std::string_view keyType, std::string_view type )
{
   return form( AttributeKind::map, type, keyType );
}

Form mapBy( std::string_view field, std::string_view keyType, std::string_view type )
{
   return form( AttributeKind::map, type, keyType, field );
}

Form children( std::string_view type, std::string_view field, std::string_view keyType )
{
   return form( AttributeKind::children, type, keyType, field );
}

Form child( std::string_view type )
{
   return form( AttributeKind::child, type );
}

Form constructedChild( std::string_view type )
{
   Form made = child( type );
   made.constructed = true;
   return made;
}

Form references( std::string_view type, std::string_view field, std::string_view keyType )
{
   return form( AttributeKind::references, type, keyType, field );
}

Form ordered( Form collection )
{
   collection.ordered = true;
   return collection;
}

Form function()
{
   return fixed( form( AttributeKind::function, "" ) );
}

std::vector< SetBounds > within(
      std::uint64_t lower, std::uint64_t upper, std::string_view message )
{
   return { { lower, upper, message } };
}

namespace {

/// The default as the record gives it: constructor arguments and what is derived have none.
std::string_view presetOf( const AttributeRow & row )
{
   const bool none = row.form.kind == AttributeKind::constructorArgument ||
         row.form.kind == AttributeKind::derived;
   return none ? std::string_view() : row.preset;
}

/// What is derived, before anything changes from which it is.
void expectDerived( const Vok::Entity & fresh, const EntityTable & table )
{
   for ( const AttributeRow & row : table.attributes ) {
      if ( row.form.kind == AttributeKind::derived ) {
         EXPECT_EQ( fresh.typeData().attribute( row.name )->get( fresh ), row.preset ) << row.name;
      }
   }
}

} // namespace

void expectRecord( const AttributeData & record, const AttributeRow & row )
{
   EXPECT_EQ( record.id(), row.id );
   EXPECT_EQ( record.name(), row.name );
   EXPECT_EQ( record.kind(), row.form.kind ) << stringValue( record.kind() );
   EXPECT_EQ( record.typeName(), row.form.type );
   EXPECT_EQ( record.keyTypeName(), row.form.keyType );
   EXPECT_EQ( record.keyField(), row.form.keyField );
   EXPECT_EQ( record.ordered(), row.form.ordered );
   EXPECT_EQ( record.settable(), row.form.settable );
   EXPECT_EQ( record.defaultText(), presetOf( row ) );
   EXPECT_EQ( record.lowerText(),
         row.bounds.empty() ? "" : std::to_string( row.bounds[ 0 ].lower ) );
   EXPECT_EQ( record.upperText(),
         row.bounds.empty() ? "" : std::to_string( row.bounds[ 0 ].upper ) );
   EXPECT_FALSE( record.documentation().empty() );
}

Corvo::Ptr< Vok::Entity > entityOf( const EntityTable & table )
{
   std::string_view name = "entity";
   std::vector< Corvo::String > args;
   for ( const AttributeRow & row : table.attributes ) {
      if ( row.name == table.identity ) {
         name = row.preset;
      } else if ( row.form.kind == AttributeKind::constructorArgument ) {
         args.emplace_back( row.preset );
      }
   }
   return Corvo::ModuleInspectData::findType( table.type )->instantiate( name, args );
}

void expectEntity( const EntityTable & table )
{
   SCOPED_TRACE( table.type );
   ASSERT_NE( Corvo::ModuleInspectData::findType( table.type ), nullptr );
   expectEntity( *entityOf( table ), table );
}

void expectEntity( Vok::Entity & fresh, const EntityTable & table )
{
   SCOPED_TRACE( table.type );
   const Vok::TypeData & type = fresh.typeData();
   ASSERT_EQ( type.name(), table.type );
   ASSERT_EQ( type.kind(), Vok::TypeKind::entity );
   const std::span< const AttributeData > records = type.attributes();
   const std::size_t named = table.identity == "nameString" ? 1 : 0;
   ASSERT_EQ( records.size(), table.attributes.size() + named );
   if ( named == 1 ) {
      expectRecord( records[ 0 ], { 154, "nameString", argument( "Corvo::String" ) } );
   }
   expectDerived( fresh, table );
   for ( std::size_t i = 0; i != table.attributes.size(); ++i ) {
      const AttributeRow & row = table.attributes[ i ];
      SCOPED_TRACE( row.name );
      ASSERT_NO_FATAL_FAILURE( expectRecord( records[ i + named ], row ) );
      ASSERT_EQ( records[ i + named ].name(), row.name );
      expectChanges( fresh, row );
      setOther( fresh, row );
   }
}

void expectConsecutive( const std::vector< Vok::AttrId > & ids )
{
   for ( std::size_t i = 0; i != ids.size(); ++i ) {
      EXPECT_EQ( ids[ i ], 258 + i ) << i;
   }
}

} // namespace TestSupport
