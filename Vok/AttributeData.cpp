// Reflection of an entity's attributes.
#include "Vok/Attribute.h"
#include "Vok/Entity.h"
#include "Vok/Exceptions.h"
#include "Vok/ModuleInspectData.h"
#include "Vok/Path.h"
#include "Vok/TypeData.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/RowAccess.h"
#include "Vok/detail/Storage.h"

#include <optional>
#include <stdexcept>
#include <string>

namespace Vok {

namespace {

using Detail::AttributeRow;
using Detail::OwnedValue;
using Detail::storageOf;

[[noreturn]] void doesNotFit( const AttributeRow & row, const char * what )
{
   throw std::invalid_argument( std::string( row.name ) + " " + what );
}

void needEntities( const AttributeRow & row )
{
   if ( !row.collection || !row.collection->entity ) {
      doesNotFit( row, "holds no entities" );
   }
}

Corvo::String referenceText( const Entity & entity, const AttributeRow & row )
{
   const auto * const target = *static_cast< const Entity * const * >( storageOf( entity, row ) );
   if ( !target || &rootOf( *target ) != &rootOf( entity ) ) {
      return {};
   }
   return pathOf( *target );
}

// Stores a value that differs and tells of it; the check of bounds stands between.
void store( Entity & entity, const AttributeRow & row, OwnedValue & next )
{
   void * const storage = storageOf( entity, row );
   std::optional< OwnedValue > word;
   if ( row.storage ) {
      row.storage->load( storage, word.emplace( *row.value ).data() );
   }
   if ( row.value->equal( word ? word->data() : storage, next.data() ) ) {
      return;
   }
   if ( row.check ) {
      row.check( next.data() );
   }
   if ( word ) {
      row.storage->store( storage, next.data() );
      row.value->swap( word->data(), next.data() );
   } else {
      row.value->swap( storage, next.data() );
   }
   if ( entity.publisher().hasNotifiee() ) {
      Attribute::publish( entity, row.id, {}, { row.value, next.data() } );
   }
}

} // namespace

const char * stringValue( AttributeKind kind )
{
   switch ( kind ) {
   case AttributeKind::plain:
      return "plain";
   case AttributeKind::optional:
      return "optional";
   case AttributeKind::constant:
      return "constant";
   case AttributeKind::constructorArgument:
      return "constructorArgument";
   case AttributeKind::derived:
      return "derived";
   case AttributeKind::function:
      return "function";
   case AttributeKind::map:
      return "map";
   case AttributeKind::set:
      return "set";
   case AttributeKind::children:
      return "children";
   case AttributeKind::child:
      return "child";
   case AttributeKind::references:
      return "references";
   }
   return "";
}

void Detail::checkMemberKey( const AttributeRow & row, const void * key, const void * value )
{
   if ( row.keyField.empty() ) {
      return;
   }
   const TypeData * const type = Corvo::ModuleInspectData::findType( row.typeName );
   if ( type && type->fieldGet( value, row.keyField ) != row.key->text( key ) ) {
      throw std::invalid_argument( "the key of a member of " + std::string( row.name ) +
            " is its field " + std::string( row.keyField ) + ", which is another" );
   }
}

Corvo::String AttributeData::get( const Entity & entity ) const
{
   switch ( row_.kind ) {
   case AttributeKind::constant:
      return Corvo::String( row_.defaultText );
   case AttributeKind::derived:
      return row_.call( const_cast< Entity & >( entity ), {} );
   case AttributeKind::function:
      doesNotFit( row_, "is a function" );
   case AttributeKind::child: {
      const Entity * const only = row_.collection->entity( storageOf( entity, row_ ), nullptr );
      return only ? only->name() : Corvo::String();
   }
   default:
      break;
   }
   if ( row_.reference ) {
      return referenceText( entity, row_ );
   }
   if ( row_.identity && !row_.fromName ) {
      return row_.value->text( &entity.name() );
   }
   return Detail::valueText( &entity, row_ );
}

void AttributeData::set( Entity & entity, std::string_view text ) const
{
   if ( !Detail::isSettable( row_ ) ) { // else there is no need to know the type
      Detail::needSettable( entity.typeData(), row_ );
   }
   OwnedValue next = Detail::fromText( *row_.value, text );
   store( entity, row_, next );
}

Corvo::String AttributeData::call( Entity & entity, TextList args ) const
{
   if ( row_.kind != AttributeKind::function || !row_.call ) {
      doesNotFit( row_, "is no function" );
   }
   return row_.call( entity, args.span() );
}

std::vector< Corvo::String > AttributeData::keys( const Entity & entity ) const
{
   if ( !row_.collection ) {
      doesNotFit( row_, "is no collection" );
   }
   return Detail::keyTexts( storageOf( entity, row_ ), row_ );
}

void AttributeData::each( const Entity & entity,
      const std::function< void( std::string_view, std::string_view ) > & f ) const
{
   Detail::needCollection( row_ );
   row_.collection->each( storageOf( entity, row_ ), [ & ]( const void * key, const void * value ) {
      const Corvo::String keyText = row_.key->text( key );
      f( keyText.view(), row_.value->text( value ).view() );
      return true;
   } );
}

Corvo::String AttributeData::member( const Entity & entity, std::string_view keyText ) const
{
   Detail::needCollection( row_ );
   return Detail::memberText( storageOf( entity, row_ ), row_, keyText );
}

void AttributeData::memberIs(
      Entity & entity, std::string_view keyText, std::string_view valueText ) const
{
   Detail::needCollection( row_ );
   Detail::memberPut( &entity, storageOf( entity, row_ ), row_, keyText, valueText );
}

Value AttributeData::memberValue( const Entity & entity, std::string_view keyText ) const
{
   Detail::needCollection( row_ );
   const OwnedValue key = Detail::fromText( *row_.key, keyText );
   const void * const value = row_.collection->find( storageOf( entity, row_ ), key.data() );
   const TypeData * const type = Corvo::ModuleInspectData::findType( row_.typeName );
   if ( !value ) {
      throw std::out_of_range(
            std::string( row_.name ) + " has no member " + std::string( keyText ) );
   }
   if ( !type ) {
      doesNotFit( row_, "holds no values of a value type" );
   }
   return Value( *type, OwnedValue( *row_.value, value ) );
}

void AttributeData::memberValueIs(
      Entity & entity, std::string_view keyText, const Value & value ) const
{
   Detail::needCollection( row_ );
   const OwnedValue key = Detail::fromText( *row_.key, keyText );
   if ( value.typeData().name() != row_.typeName ) {
      doesNotFit( row_, "holds values of another type" );
   }
   Detail::checkMemberKey( row_, key.data(), value.data() );
   row_.collection->put( &entity, row_.id, storageOf( entity, row_ ), key.data(), value.data() );
}

void AttributeData::memberDel( Entity & entity, std::string_view keyText ) const
{
   if ( !row_.collection ) {
      doesNotFit( row_, "is no collection" );
   }
   void * const storage = storageOf( entity, row_ );
   if ( row_.kind == AttributeKind::child ) {
      row_.collection->del( &entity, row_.id, storage, nullptr );
      return;
   }
   const OwnedValue key = Detail::fromText( *row_.key, keyText );
   row_.collection->del( &entity, row_.id, storage, key.data() );
}

Corvo::Ptr< Entity > AttributeData::child( const Entity & entity, std::string_view keyText ) const
{
   needEntities( row_ );
   const void * const storage = storageOf( entity, row_ );
   if ( row_.kind == AttributeKind::child ) {
      return row_.collection->entity( storage, nullptr );
   }
   const OwnedValue key = Detail::fromText( *row_.key, keyText );
   return row_.collection->entity( storage, key.data() );
}

Corvo::Ptr< Entity > AttributeData::childIs(
      Entity & entity, std::string_view keyText, TextList args ) const
{
   needEntities( row_ );
   if ( row_.kind == AttributeKind::references ) {
      doesNotFit( row_, "refers to entities and makes none" );
   }
   void * const storage = storageOf( entity, row_ );
   const TypeData & type = row_.collection->memberType();
   Detail::EntityArguments arguments( type );
   std::optional< OwnedValue > key;
   if ( row_.kind == AttributeKind::children ) {
      key.emplace( Detail::fromText( *row_.key, keyText ) );
      arguments.keyIs( row_.keyField, key->data() );
   }
   arguments.textsAre( args, const_cast< Entity * >( &rootOf( entity ) ) );
   Corvo::Ptr< Entity > existing =
         row_.collection->entity( storage, key ? key->data() : nullptr );
   if ( row_.kind == AttributeKind::children && existing ) {
      type.row().make->reinstantiate( *existing, arguments.data() );
      return existing;
   }
   Corvo::Ptr< Entity > made = type.row().make->make( arguments.data() );
   if ( existing && existing->name() == made->name() ) {
      type.row().make->reinstantiate( *existing, arguments.data() );
      return existing;
   }
   row_.collection->insert( entity, row_.id, storage, made );
   return made;
}

} // namespace Vok
