// Reading and changing attributes by their rows.
#include "Vok/detail/RowAccess.h"

#include "Vok/Entity.h"
#include "Vok/Exceptions.h"
#include "Vok/Path.h"
#include "Vok/ValueType.h"
#include "Vok/detail/Calls.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Storage.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace Vok::Detail {

namespace {

// The word of a flag, as a number, and back.
std::uint64_t loadWord( const void * at, std::uint8_t width )
{
   switch ( width ) {
   case 1:
      return *static_cast< const std::uint8_t * >( at );
   case 2:
      return *static_cast< const std::uint16_t * >( at );
   case 4:
      return *static_cast< const std::uint32_t * >( at );
   default:
      return *static_cast< const std::uint64_t * >( at );
   }
}

void storeWord( void * at, std::uint8_t width, std::uint64_t word )
{
   switch ( width ) {
   case 1:
      *static_cast< std::uint8_t * >( at ) = static_cast< std::uint8_t >( word );
      break;
   case 2:
      *static_cast< std::uint16_t * >( at ) = static_cast< std::uint16_t >( word );
      break;
   case 4:
      *static_cast< std::uint32_t * >( at ) = static_cast< std::uint32_t >( word );
      break;
   default:
      *static_cast< std::uint64_t * >( at ) = word;
   }
}

bool isConstructorField( const TypeData & type, const AttributeRow & row )
{
   const bool explicitArguments =
         type.attributes().front().kind() == AttributeKind::constructorArgument;
   return explicitArguments ? row.kind == AttributeKind::constructorArgument
                            : row.kind == AttributeKind::plain && row.mask == 0;
}

} // namespace

void wrongArgumentCount( std::size_t given, std::size_t wanted )
{
   throw Corvo::ConstructorArgsException( std::to_string( given ) + " arguments given, " +
         std::to_string( wanted ) + " wanted" );
}

OwnedValue fromText( const ValueOps & ops, std::string_view text )
{
   if ( !ops.read ) {
      throw Corvo::ParseException( std::string( ops.name ) + " has no text constructor" );
   }
   CharRange range( text );
   OwnedValue value( ops );
   ops.read( range, value.data() );
   range.needEnd();
   return value;
}

Corvo::String valueText( const void * object, const AttributeRow & row )
{
   const void * const storage = storageAt( object, row );
   if ( row.mask != 0 ) {
      const bool set = ( loadWord( storage, row.maskWidth ) & row.mask ) != 0;
      return valueOps< bool >.text( &set );
   }
   if ( row.storage ) {
      OwnedValue value( *row.value );
      row.storage->load( storage, value.data() );
      return row.value->text( value.data() );
   }
   if ( row.collection ) {
      TextOut out;
      char before = '[';
      for ( const Corvo::String & key : keyTexts( storage, row ) ) {
         out.put( before );
         before = ',';
         out.put( key.view() );
         if ( row.kind == AttributeKind::map ) {
            out.put( '=' );
            out.put( memberText( storage, row, key.view() ).view() );
         }
      }
      out.put( before == '[' ? "[]" : "]" );
      return out.text();
   }
   return row.value->text( storage );
}

void setField( void * object, const AttributeRow & row, std::string_view text )
{
   void * const storage = storageAt( object, row );
   OwnedValue next = fromText( *row.value, text );
   if ( row.mask != 0 ) {
      const std::uint64_t word = loadWord( storage, row.maskWidth );
      const bool set = *static_cast< const bool * >( next.data() );
      storeWord( storage, row.maskWidth, set ? word | row.mask : word & ~row.mask );
      return;
   }
   if ( row.check ) {
      row.check( next.data() );
   }
   row.value->swap( storage, next.data() );
}

void valueFromFields( const TypeData & type, TextList args, OwnedValue & value )
{
   std::vector< const AttributeRow * > rows;
   for ( const AttributeData & attribute : type.attributes() ) {
      if ( isConstructorField( type, attribute.row() ) ) {
         rows.push_back( &attribute.row() );
      }
   }
   if ( rows.size() != args.size() ) {
      wrongArgumentCount( args.size(), rows.size() );
   }
   for ( std::size_t i = 0; i != rows.size(); ++i ) {
      setField( value.data(), *rows[ i ], args[ i ].view() );
   }
}

void needSettable( const TypeData & type, const AttributeRow & row )
{
   if ( !isSettable( row ) ) {
      throw std::invalid_argument( std::string( type.name() ) + "::" + std::string( row.name ) +
            " cannot be set" );
   }
}

void needCollection( const AttributeRow & row )
{
   if ( row.kind != AttributeKind::map && row.kind != AttributeKind::set ) {
      throw std::invalid_argument( std::string( row.name ) + " is no map and no set" );
   }
}

std::vector< Corvo::String > keyTexts( const void * collection, const AttributeRow & row )
{
   std::vector< Corvo::String > texts;
   row.collection->each( collection, [ & ]( const void * key, const void * ) {
      texts.push_back( key ? row.key->text( key ) : Corvo::String() );
      return true;
   } );
   if ( !row.ordered && row.kind != AttributeKind::child ) {
      std::sort( texts.begin(), texts.end() );
   }
   return texts;
}

Corvo::String memberText(
      const void * collection, const AttributeRow & row, std::string_view keyText )
{
   const OwnedValue key = fromText( *row.key, keyText );
   const void * const value = row.collection->find( collection, key.data() );
   if ( !value ) {
      throw std::out_of_range(
            std::string( row.name ) + " has no member " + std::string( keyText ) );
   }
   return row.value->text( value );
}

void memberPut( Entity * owner, void * collection, const AttributeRow & row,
      std::string_view keyText, std::string_view valueText )
{
   const OwnedValue key = fromText( *row.key, keyText );
   if ( row.kind == AttributeKind::set ) {
      row.collection->put( owner, row.id, collection, key.data(), key.data() );
      return;
   }
   const OwnedValue value = fromText( *row.value, valueText );
   checkMemberKey( row, key.data(), value.data() );
   row.collection->put( owner, row.id, collection, key.data(), value.data() );
}

// ---- Constructor arguments --------------------------------------------------------------------

EntityArguments::EntityArguments( const TypeData & type ) : type_( type )
{
   for ( const AttributeData & argument : type.constructorArguments() ) {
      if ( argument.row().reference ) {
         addresses_.push_back( nullptr );
      } else {
         addresses_.push_back( values_.emplace_back( *argument.row().value ).data() );
      }
      given_.push_back( false );
   }
}

void EntityArguments::nameIs( std::string_view name )
{
   const auto arguments = type_.constructorArguments();
   for ( std::size_t i = 0; i != arguments.size(); ++i ) {
      const AttributeRow & row = arguments[ i ].row();
      if ( row.identity ) {
         void * const value = const_cast< void * >( addresses_[ i ] );
         if ( row.fromName ) {
            row.fromName( name, value );
         } else {
            *static_cast< Corvo::String * >( value ) = Corvo::String( name );
         }
         given_[ i ] = true;
      }
   }
}

void EntityArguments::keyIs( std::string_view argument, const void * key )
{
   const auto arguments = type_.constructorArguments();
   for ( std::size_t i = 0; i != arguments.size(); ++i ) {
      const AttributeRow & row = arguments[ i ].row();
      if ( row.name == argument || ( row.id == 154 && argument == "name" ) ) {
         addresses_[ i ] = key;
         given_[ i ] = true;
      }
   }
}

void EntityArguments::textsAre( TextList texts, Entity * root )
{
   const auto arguments = type_.constructorArguments();
   const auto missing =
         static_cast< std::size_t >( std::count( given_.begin(), given_.end(), false ) );
   if ( missing != texts.size() ) {
      throw Corvo::ConstructorArgsException( std::string( type_.name() ) + " takes " +
            std::to_string( missing ) + " arguments besides its identity or key, " +
            std::to_string( texts.size() ) + " are given" );
   }
   std::size_t next = 0;
   for ( std::size_t i = 0; i != arguments.size(); ++i ) {
      if ( given_[ i ] ) {
         continue;
      }
      const AttributeRow & row = arguments[ i ].row();
      const std::string_view text = texts[ next++ ].view();
      if ( row.reference ) {
         addresses_[ i ] = reference( row, text, root );
      } else {
         OwnedValue value = fromText( *row.value, text );
         row.value->swap( const_cast< void * >( addresses_[ i ] ), value.data() );
      }
   }
}

const void * EntityArguments::reference(
      const AttributeRow & row, std::string_view path, Entity * root ) const
{
   const std::string what = std::string( type_.name() ) + "::" + std::string( row.name );
   if ( !root ) {
      throw Corvo::ConstructorArgsException( what + " is a reference and cannot be given as text" );
   }
   const Entity * const target = entityAt( *root, path );
   if ( !target || target->typeData().name() != row.typeName ) {
      throw Corvo::ConstructorArgsException( what + ": there is no " + std::string( row.typeName ) +
            " at " + std::string( path ) );
   }
   return target;
}

} // namespace Vok::Detail
