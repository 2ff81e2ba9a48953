// Random changes of a tree of any type. Two draws never stand in one list of call arguments, whose
// order is the compiler's: a seed means the same changes everywhere.
#include "tests/support/RandomEntity.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <utility>

namespace TestSupport {

using Vok::AttributeData;
using Vok::AttributeKind;
using Vok::TypeData;
using Vok::TypeKind;

namespace {

const TypeData & typeNamed( std::string_view name )
{
   const TypeData * type = Corvo::ModuleInspectData::findType( name );
   if ( !type ) {
      throw std::invalid_argument( "no type is called " + std::string( name ) );
   }
   return *type;
}

/// What a number type holds at most; 0 for what is no number.
std::uint64_t mostOf( std::string_view type )
{
   static const std::map< std::string_view, std::uint64_t > mosts = { { "u8", 0xff },
      { "u16", 0xffff }, { "u32", 0xffffffff }, { "u64", 0xffffffffffffffff } };
   const auto most = mosts.find( type );
   return most == mosts.end() ? 0 : most->second;
}

bool isCollection( AttributeKind kind )
{
   return kind == AttributeKind::map || kind == AttributeKind::set;
}

/// Whether values of a type hold collections, and so have no text to be read from.
bool holdsCollection( std::string_view type )
{
   const TypeData * record = Corvo::ModuleInspectData::findType( type );
   if ( !record ) {
      return false;
   }
   const auto members = record->attributes();
   return std::any_of( members.begin(), members.end(),
         []( const AttributeData & a ) { return isCollection( a.kind() ); } );
}

/// What an entity owns, in an order that is not that of a hash table.
std::vector< Corvo::Ptr< Vok::Entity > > childrenOf( const Vok::Entity & entity )
{
   std::vector< Corvo::Ptr< Vok::Entity > > children;
   for ( const AttributeData & a : entity.typeData().attributes() ) {
      if ( a.kind() == AttributeKind::children ) {
         std::vector< Corvo::String > keys = a.keys( entity );
         std::sort( keys.begin(), keys.end() );
         for ( const Corvo::String & key : keys ) {
            children.push_back( a.child( entity, key ) );
         }
      } else if ( a.kind() == AttributeKind::child ) {
         if ( auto child = a.child( entity, "" ) ) {
            children.push_back( std::move( child ) );
         }
      }
   }
   return children;
}

/// The fields of a value that hold it, in constructor order: those that are no constants.
std::vector< const AttributeData * > fieldsOf( const TypeData & type )
{
   std::vector< const AttributeData * > fields;
   for ( const AttributeData & a : type.attributes() ) {
      if ( a.kind() == AttributeKind::plain || a.kind() == AttributeKind::constructorArgument ) {
         fields.push_back( &a );
      }
   }
   return fields;
}

} // namespace

std::string RandomValue::number( std::uint64_t lower, std::uint64_t upper )
{
   const std::uint64_t span = upper - lower;
   const std::uint32_t how = random_.below( 4 );
   if ( few_ || how == 0 ) {
      const std::uint64_t few = std::min< std::uint64_t >( span, 5 );
      return std::to_string( lower + random_.below( static_cast< std::uint32_t >( few ) + 1 ) );
   }
   if ( how == 1 ) {
      return std::to_string( upper );
   }
   const std::uint64_t word = random_.word();
   return std::to_string( lower + ( span + 1 == 0 ? word : word % ( span + 1 ) ) );
}

std::string RandomValue::name()
{
   return std::string( 1, static_cast< char >( 'a' + random_.below( 6 ) ) );
}

std::string RandomValue::string()
{
   if ( few_ ) {
      return name();
   }
   std::string bytes;
   for ( std::uint32_t size = random_.below( 21 ); size != 0; --size ) {
      bytes += static_cast< char >( random_.below( 256 ) );
   }
   return std::string( Corvo::valueToStrep( Corvo::String( bytes ) ) );
}

std::string RandomValue::key( std::string_view type )
{
   const bool before = std::exchange( few_, true );
   std::string drawn = text( type );
   few_ = before;
   return drawn;
}

std::string RandomValue::text( std::string_view type, std::string_view lower,
      std::string_view upper )
{
   if ( !lower.empty() ) {
      const std::uint64_t least = std::stoull( std::string( lower ) );
      return number( least, std::stoull( std::string( upper ) ) );
   }
   if ( const std::uint64_t most = mostOf( type ) ) {
      return number( 0, most );
   }
   if ( type == "bool" ) {
      return random_.oneIn( 2 ) ? "true" : "false";
   }
   if ( type == "double" || type == "Vok::Seconds" || type == "Corvo::Duration" ) {
      return std::string( Corvo::valueToStrep( random_.below( 1000 ) / 8.0 ) );
   }
   if ( type == "Corvo::String" ) {
      return string();
   }
   const TypeData & record = typeNamed( type );
   if ( record.kind() == TypeKind::enumeration ) {
      const auto enumerators = record.enumerators();
      const auto count = static_cast< std::uint32_t >( enumerators.size() );
      const auto which = random_.below( few_ ? std::min( count, 6U ) : count );
      return std::string( enumerators[ which ].second );
   }
   const Vok::Value made = value( record );
   return std::string( record.valueToStrep( made.data() ) );
}

Vok::Value RandomValue::value( const TypeData & type )
{
   const auto fields = fieldsOf( type );
   const bool fixed = std::none_of( fields.begin(), fields.end(),
         []( const AttributeData * field ) { return field->settable(); } );
   std::vector< Corvo::String > args;
   Vok::Value made = type.make();
   for ( const AttributeData * field : fields ) {
      const std::string drawn = text( field->typeName(), field->lowerText(), field->upperText() );
      if ( fixed ) {
         args.emplace_back( drawn );
      } else {
         type.fieldSet( made.data(), field->name(), drawn );
      }
   }
   if ( fixed ) {
      made = type.make( args );
   }
   addMembers( made );
   return made;
}

void RandomValue::addMembers( Vok::Value & value )
{
   const TypeData & type = value.typeData();
   for ( const AttributeData & a : type.attributes() ) {
      if ( isCollection( a.kind() ) ) {
         for ( std::uint32_t count = random_.below( 4 ); count != 0; --count ) {
            const std::string where = key( a.keyTypeName() );
            const std::string what = a.kind() == AttributeKind::set ? "" : text( a.typeName() );
            type.fieldMemberIs( value.data(), a.name(), where, what );
         }
      }
   }
}

void RandomEntity::changes( std::size_t count )
{
   for ( std::size_t i = 0; i != count; ++i ) {
      change();
   }
}

void RandomEntity::change()
{
   change( root_ );
}

/// Changes an entity that is there as often as all that is around it.
void RandomEntity::change( Vok::Entity & entity )
{
   if ( random_.oneIn( 2 ) ) {
      const auto children = childrenOf( entity );
      if ( !children.empty() ) {
         const auto count = static_cast< std::uint32_t >( children.size() );
         return change( *children[ random_.below( count ) ] );
      }
   }
   const auto attributes = entity.typeData().attributes();
   const auto which = random_.below( static_cast< std::uint32_t >( attributes.size() ) );
   change( entity, attributes[ which ] );
}

void RandomEntity::change( Vok::Entity & entity, const AttributeData & attribute )
{
   switch ( attribute.kind() ) {
   case AttributeKind::plain:
   case AttributeKind::optional:
   case AttributeKind::constructorArgument:
      return changeValue( entity, attribute );
   case AttributeKind::map:
      return changeMap( entity, attribute );
   case AttributeKind::set:
      return changeSet( entity, attribute );
   case AttributeKind::children:
      return changeChildren( entity, attribute );
   case AttributeKind::child:
      return changeChild( entity, attribute );
   default:
      return; // constants, functions and what is derived do not change; references are left alone
   }
}

void RandomEntity::changeValue( Vok::Entity & entity, const AttributeData & attribute )
{
   if ( !attribute.settable() || holdsCollection( attribute.typeName() ) ) {
      return;
   }
   if ( attribute.kind() == AttributeKind::optional && random_.oneIn( 3 ) ) {
      return attribute.set( entity, "" );
   }
   attribute.set( entity,
         values_.text( attribute.typeName(), attribute.lowerText(), attribute.upperText() ) );
}

void RandomEntity::changeMap( Vok::Entity & entity, const AttributeData & attribute )
{
   if ( random_.oneIn( 3 ) ) {
      return attribute.memberDel( entity, values_.key( attribute.keyTypeName() ) );
   }
   if ( const TypeData * type = Corvo::ModuleInspectData::findType( attribute.typeName() );
         type && type->kind() == TypeKind::value ) {
      const Vok::Value value = values_.value( *type );
      const std::string key = attribute.keyField().empty()
            ? values_.key( attribute.keyTypeName() )
            : std::string( type->fieldGet( value.data(), attribute.keyField() ) );
      return attribute.memberValueIs( entity, key, value );
   }
   const std::string key = values_.key( attribute.keyTypeName() );
   attribute.memberIs( entity, key, values_.text( attribute.typeName() ) );
}

void RandomEntity::changeSet( Vok::Entity & entity, const AttributeData & attribute )
{
   const std::string key = values_.key( attribute.keyTypeName() );
   if ( random_.oneIn( 3 ) ) {
      attribute.memberDel( entity, key );
   } else {
      attribute.memberIs( entity, key, "" );
   }
}

/// The arguments of a child without its key.
std::vector< Corvo::String > RandomEntity::arguments( const AttributeData & attribute )
{
   std::vector< Corvo::String > args;
   for ( const AttributeData & a : typeNamed( attribute.typeName() ).constructorArguments() ) {
      const bool named = a.name() == "nameString";
      if ( ( named ? "name" : a.name() ) != attribute.keyField() ) {
         args.emplace_back( named ? values_.name() : values_.text( a.typeName() ) );
      }
   }
   return args;
}

void RandomEntity::changeChildren( Vok::Entity & entity, const AttributeData & attribute )
{
   for ( const AttributeData & a : typeNamed( attribute.typeName() ).constructorArguments() ) {
      const TypeData * type = Corvo::ModuleInspectData::findType( a.typeName() );
      if ( type && type->kind() == TypeKind::entity ) {
         return;
      }
   }
   const std::string key = values_.key( attribute.keyTypeName() );
   const bool gone = random_.oneIn( 6 );
   if ( gone ) {
      attribute.memberDel( entity, key );
   }
   auto child = attribute.child( entity, key );
   if ( !child && ( !gone || random_.oneIn( 2 ) ) ) {
      child = attribute.childIs( entity, key, arguments( attribute ) );
   }
   if ( child ) {
      change( *child );
   }
}

void RandomEntity::changeChild( Vok::Entity & entity, const AttributeData & attribute )
{
   if ( random_.oneIn( 6 ) ) {
      return attribute.memberDel( entity, "" );
   }
   auto child = attribute.child( entity, "" );
   if ( !child || random_.oneIn( 6 ) ) {
      child = attribute.childIs( entity, "", arguments( attribute ) );
   }
   change( *child );
}

} // namespace TestSupport
