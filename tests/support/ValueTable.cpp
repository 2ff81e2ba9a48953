// Checks a value type or a constants type against its table, through reflection alone.
#include "tests/support/ValueTable.h"

#include "tests/support/TypeNamed.h"

#include <gtest/gtest.h>

#include <string>

namespace TestSupport {

using Vok::AttributeKind;

namespace {

std::string textOf( const Vok::TypeData & type, const Vok::Value & value )
{
   return std::string( type.valueToStrep( value.data() ) );
}

/// Another value and back again.
void expectField( const Vok::TypeData & type, const AttributeRow & row, bool hashable )
{
   const Vok::Value preset = type.make();
   Vok::Value value = type.make();
   EXPECT_EQ( type.fieldGet( value.data(), row.name ), row.preset );
   if ( !row.form.settable || row.other.empty() ) {
      return;
   }
   type.fieldSet( value.data(), row.name, row.other );
   EXPECT_EQ( type.fieldGet( value.data(), row.name ), row.other );
   EXPECT_FALSE( type.isEq( value.data(), preset.data() ) );
   EXPECT_NE( textOf( type, value ), textOf( type, preset ) );
   if ( hashable ) {
      EXPECT_NE( type.hash( value.data() ), type.hash( preset.data() ) );
   }
   Vok::Value read = type.make();
   const std::string text = textOf( type, value );
   Vok::CharRange range( text );
   type.strepToValue( range, read.data() );
   EXPECT_TRUE( range.empty() );
   EXPECT_TRUE( type.isEq( read.data(), value.data() ) );
   type.fieldSet( value.data(), row.name, row.preset );
   EXPECT_TRUE( type.isEq( value.data(), preset.data() ) );
   if ( hashable ) {
      EXPECT_EQ( type.hash( value.data() ), type.hash( preset.data() ) );
   }
}

/// The records of a type, or nothing where it is not of that kind or has another number of them.
const Vok::TypeData * expectRecords( const ValueTable & table, Vok::TypeKind kind )
{
   const Vok::TypeData * type = Corvo::ModuleInspectData::findType( table.type );
   if ( !type || type->kind() != kind || type->attributes().size() != table.fields.size() ) {
      ADD_FAILURE() << "there is no such type, or it has other members";
      return nullptr;
   }
   for ( std::size_t i = 0; i != table.fields.size(); ++i ) {
      SCOPED_TRACE( table.fields[ i ].name );
      expectRecord( type->attributes()[ i ], table.fields[ i ] );
   }
   return type;
}

void expectConstant( const Vok::TypeData & type, const AttributeRow & row )
{
   if ( row.form.kind == AttributeKind::constant ) {
      EXPECT_EQ( type.fieldGet( nullptr, row.name ), row.preset ) << row.name;
   }
}

} // namespace

void expectValue( const ValueTable & table )
{
   SCOPED_TRACE( table.type );
   const Vok::TypeData * type = expectRecords( table, Vok::TypeKind::value );
   if ( !type ) {
      return;
   }
   const Vok::Value preset = type->make();
   if ( table.hashable ) {
      EXPECT_NO_THROW( type->hash( preset.data() ) );
   } else {
      EXPECT_THROW( type->hash( preset.data() ), Corvo::NotHashableException );
   }
   for ( const AttributeRow & row : table.fields ) {
      SCOPED_TRACE( row.name );
      expectConstant( *type, row );
      if ( row.form.kind == AttributeKind::plain ) {
         expectField( *type, row, table.hashable );
      }
   }
}

void expectConstants( const ValueTable & table )
{
   SCOPED_TRACE( table.type );
   if ( const Vok::TypeData * type = expectRecords( table, Vok::TypeKind::constants ) ) {
      for ( const AttributeRow & row : table.fields ) {
         expectConstant( *type, row );
      }
   }
}

void expectFlags( std::string_view name, const std::vector< std::string_view > & flags )
{
   const Vok::TypeData & type = typeNamed( name );
   Vok::Value value = type.make();
   const auto word = [ & ] { return type.fieldGet( value.data(), "value" ); };
   for ( std::size_t bit = 0; bit != flags.size(); ++bit ) {
      SCOPED_TRACE( flags[ bit ] );
      const unsigned mask = 1U << bit;
      for ( const unsigned before : { 0U, 255U, mask, 255U - mask } ) {
         for ( const char * flag : { "true", "false" } ) {
            type.fieldSet( value.data(), "value", std::to_string( before ) );
            const bool was = ( before & mask ) != 0;
            EXPECT_EQ( type.fieldGet( value.data(), flags[ bit ] ), was ? "true" : "false" );
            type.fieldSet( value.data(), flags[ bit ], flag );
            const unsigned after = *flag == 't' ? before | mask : before & ~mask;
            EXPECT_EQ( word(), std::to_string( after ) );
         }
      }
   }
}

} // namespace TestSupport
