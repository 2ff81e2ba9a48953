// Reflection of types: values, enumerations, and the making of entities.
#include "Vok/TypeData.h"

#include "Vok/Entity.h"
#include "Vok/Exceptions.h"
#include "Vok/ModuleInspectData.h"
#include "Vok/Path.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/RowAccess.h"
#include "Vok/detail/Storage.h"

#include <stdexcept>
#include <string>

namespace Vok {

namespace {

[[noreturn]] void unknownField( const TypeData & type, std::string_view name )
{
   throw std::out_of_range( std::string( type.name() ) + " has no field " + std::string( name ) );
}

} // namespace

const char * stringValue( TypeKind kind )
{
   switch ( kind ) {
   case TypeKind::value:
      return "value";
   case TypeKind::enumeration:
      return "enumeration";
   case TypeKind::constants:
      return "constants";
   case TypeKind::entity:
      return "entity";
   }
   return "";
}

const Corvo::ModuleInspectData & TypeData::module() const { return row_.module(); }

std::span< const AttributeData > TypeData::attributes() const noexcept
{
   return { row_.attributes.first, row_.attributes.count };
}

std::span< const AttributeData > TypeData::constructorArguments() const noexcept
{
   return { row_.attributes.first, row_.argumentCount };
}

const AttributeData * TypeData::attribute( std::string_view name ) const noexcept
{
   const Detail::AttributeTable & table = row_.attributes;
   if ( table.count == 0 ) {
      return nullptr;
   }
   for ( std::uint32_t hash = Detail::nameHash( name );; ++hash ) {
      const std::uint16_t number = table.places[ hash & table.lastPlace ];
      if ( number == Detail::AttributeTable::none ) {
         return nullptr;
      }
      if ( table.first[ number ].name() == name ) {
         return &table.first[ number ];
      }
   }
}

std::vector< std::pair< std::uint32_t, std::string_view > > TypeData::enumerators() const
{
   std::vector< std::pair< std::uint32_t, std::string_view > > pairs;
   pairs.reserve( row_.enumerators.count );
   for ( const Enumerator & e : row_.enumerators ) {
      pairs.emplace_back( e.code, e.name );
   }
   return pairs;
}

std::string_view TypeData::enumeratorDocumentation( std::uint32_t code ) const noexcept
{
   for ( const Enumerator & e : row_.enumerators ) {
      if ( e.code == code ) {
         return e.documentation;
      }
   }
   return {};
}

// ---- Values -----------------------------------------------------------------------------------

const Detail::ValueOps & TypeData::values() const
{
   if ( !row_.value ) {
      throw std::invalid_argument( std::string( name() ) + " has no values" );
   }
   return *row_.value;
}

Value TypeData::make( TextList args ) const
{
   Detail::OwnedValue value( values() );
   if ( args.size() != 0 ) {
      Detail::valueFromFields( *this, args, value );
   }
   return Value( *this, std::move( value ) );
}

std::size_t TypeData::hash( const void * value ) const
{
   if ( !row_.value || !row_.value->hash ) {
      throw Corvo::NotHashableException( std::string( name() ) + " is not hashable" );
   }
   return row_.value->hash( value );
}

bool TypeData::isEq( const void * a, const void * b ) const { return values().equal( a, b ); }

Corvo::String TypeData::valueToStrep( const void * value ) const { return values().text( value ); }

void TypeData::strepToValue( CharRange & range, void * value ) const
{
   if ( !row_.value || !row_.value->read ) {
      throw Corvo::ParseException( row_.notext.empty()
                  ? "no text constructor for " + std::string( name() )
                  : std::string( row_.notext ) );
   }
   row_.value->read( range, value );
}

const AttributeData & TypeData::field( std::string_view name ) const
{
   const AttributeData * const found = attribute( name );
   if ( !found ) {
      unknownField( *this, name );
   }
   return *found;
}

const Detail::AttributeRow & TypeData::collection( std::string_view name ) const
{
   const Detail::AttributeRow & row = field( name ).row();
   values();
   Detail::needCollection( row );
   return row;
}

Corvo::String TypeData::fieldGet( const void * value, std::string_view name ) const
{
   const Detail::AttributeRow & row = field( name ).row();
   if ( row.kind == AttributeKind::constant ) {
      return Corvo::String( row.defaultText );
   }
   values();
   return Detail::valueText( value, row );
}

void TypeData::fieldSet( void * value, std::string_view name, std::string_view text ) const
{
   const Detail::AttributeRow & row = field( name ).row();
   values();
   Detail::needSettable( *this, row );
   Detail::setField( value, row, text );
}

std::vector< Corvo::String > TypeData::fieldKeys( const void * value, std::string_view name ) const
{
   const Detail::AttributeRow & row = collection( name );
   return Detail::keyTexts( Detail::storageAt( value, row ), row );
}

Corvo::String TypeData::fieldMember(
      const void * value, std::string_view name, std::string_view keyText ) const
{
   const Detail::AttributeRow & row = collection( name );
   return Detail::memberText( Detail::storageAt( value, row ), row, keyText );
}

void TypeData::fieldMemberIs( void * value, std::string_view name, std::string_view keyText,
      std::string_view valueText ) const
{
   const Detail::AttributeRow & row = collection( name );
   Detail::memberPut( nullptr, Detail::storageAt( value, row ), row, keyText, valueText );
}

void TypeData::fieldMemberDel( void * value, std::string_view name, std::string_view keyText ) const
{
   const Detail::AttributeRow & row = collection( name );
   const Detail::OwnedValue key = Detail::fromText( *row.key, keyText );
   row.collection->del( nullptr, row.id, Detail::storageAt( value, row ), key.data() );
}

// ---- Entities ---------------------------------------------------------------------------------

Corvo::Ptr< Entity > TypeData::instantiate( std::string_view name, TextList args ) const
{
   if ( kind() != TypeKind::entity ) {
      throw std::invalid_argument( std::string( this->name() ) + " is no entity type" );
   }
   Detail::EntityArguments arguments( *this );
   arguments.nameIs( name );
   arguments.textsAre( args, nullptr );
   return row_.make->make( arguments.data() );
}

} // namespace Vok
