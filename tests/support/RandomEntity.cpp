// Random changes of a tree of any type. Two draws never stand in one list of call arguments, whose
// order is the compiler's: a seed means the same changes everywhere.
#include "tests/support/RandomEntity.h"

#include "tests/support/TypeNamed.h"

#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Storage.h"

#include <algorithm>
#include <set>

namespace TestSupport {

using Vok::AttributeData;
using Vok::AttributeKind;
using Vok::TypeData;
using Vok::TypeKind;

namespace {

/// Whether values of a type hold collections, and so have no text to be read from.
bool holdsCollection( std::string_view type )
{
   const TypeData * record = Corvo::ModuleInspectData::findType( type );
   if ( record ) {
      for ( const AttributeData & a : record->attributes() ) {
         if ( a.kind() == AttributeKind::map || a.kind() == AttributeKind::set ) {
            return true;
         }
      }
   }
   return false;
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

/// Adds the entities of a type that a tree holds.
void collect( const Corvo::Ptr< Vok::Entity > & entity, const TypeData & type,
      std::vector< Corvo::Ptr< Vok::Entity > > & found )
{
   if ( &entity->typeData() == &type ) {
      found.push_back( entity );
   }
   for ( const auto & child : childrenOf( *entity ) ) {
      collect( child, type, found );
   }
}

/// Whether what an entity owns and refers to leads to another. References are counted: a circle of
/// them would never go.
bool reaches( const Vok::Entity & from, const Vok::Entity & to )
{
   std::set< const Vok::Entity * > seen = { &from };
   std::vector< const Vok::Entity * > next = { &from };
   while ( !next.empty() && next.back() != &to ) {
      const Vok::Entity & at = *next.back();
      next.pop_back();
      auto beyond = childrenOf( at );
      for ( const AttributeData & a : at.typeData().attributes() ) {
         if ( a.kind() == AttributeKind::references ) {
            for ( const Corvo::String & key : a.keys( at ) ) {
               beyond.push_back( a.child( at, key ) );
            }
         }
      }
      for ( const auto & entity : beyond ) {
         if ( seen.insert( entity.get() ).second ) {
            next.push_back( entity.get() );
         }
      }
   }
   return !next.empty();
}

/// The record of an entity type, or null for what is none.
const TypeData * entityType( std::string_view name )
{
   const TypeData * type = Corvo::ModuleInspectData::findType( name );
   return type && type->kind() == TypeKind::entity ? type : nullptr;
}

} // namespace

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
   case AttributeKind::references:
      return changeReferences( entity, attribute );
   default:
      return; // constants, functions and what is derived do not change
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

/// Some entity of a type that the tree holds, or null where it holds none.
Corvo::Ptr< Vok::Entity > RandomEntity::anyOf( const TypeData & type )
{
   std::vector< Corvo::Ptr< Vok::Entity > > found;
   collect( &root_, type, found );
   return found.empty()
         ? nullptr
         : found[ random_.below( static_cast< std::uint32_t >( found.size() ) ) ];
}

/// An entity that is in no tree. Its type has a name, or no identity.
Corvo::Ptr< Vok::Entity > RandomEntity::stranger( const TypeData & type )
{
   std::string name;
   std::vector< Corvo::String > args;
   for ( const AttributeData & a : type.constructorArguments() ) {
      if ( a.name() == "nameString" ) {
         name = values_.name();
      } else {
         args.emplace_back( values_.key( a.typeName() ) );
      }
   }
   auto made = type.instantiate( name, args );
   change( *made );
   return made;
}

/// A child with random arguments besides its key; null where there is nothing it could refer to.
Corvo::Ptr< Vok::Entity > RandomEntity::childIs(
      Vok::Entity & entity, const AttributeData & attribute, std::string_view key )
{
   std::vector< Corvo::String > args;
   for ( const AttributeData & a : typeNamed( attribute.typeName() ).constructorArguments() ) {
      const bool named = a.name() == "nameString";
      if ( const TypeData * referred = entityType( a.typeName() ) ) {
         const auto target = anyOf( *referred );
         if ( !target ) {
            return nullptr;
         }
         args.push_back( Vok::pathOf( *target ) );
      } else if ( ( named ? "name" : a.name() ) != attribute.keyField() ) {
         args.emplace_back( named ? values_.name() : values_.text( a.typeName() ) );
      }
   }
   return attribute.childIs( entity, key, args );
}

void RandomEntity::changeChildren( Vok::Entity & entity, const AttributeData & attribute )
{
   const std::string key = values_.key( attribute.keyTypeName() );
   const bool gone = random_.oneIn( 6 );
   if ( gone ) {
      attribute.memberDel( entity, key );
   }
   auto child = attribute.child( entity, key );
   if ( !child && ( !gone || random_.oneIn( 2 ) ) ) {
      child = childIs( entity, attribute, key );
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
      child = childIs( entity, attribute, "" );
   }
   change( *child );
}

void RandomEntity::changeReferences( Vok::Entity & entity, const AttributeData & attribute )
{
   const std::string key = values_.key( attribute.keyTypeName() );
   if ( random_.oneIn( 4 ) ) {
      return attribute.memberDel( entity, key );
   }
   const auto referred = attribute.child( entity, key );
   if ( referred && random_.oneIn( 2 ) ) {
      return change( *referred );
   }
   const TypeData & type = typeNamed( attribute.typeName() );
   auto target = random_.oneIn( 3 ) ? nullptr : anyOf( type );
   if ( !target ) {
      target = stranger( type );
   }
   if ( reaches( *target, entity ) ) {
      return;
   }
   const Vok::Detail::AttributeRow & row = attribute.row();
   row.collection->insert( entity, row.id, Vok::Detail::storageOf( entity, row ), target );
}

} // namespace TestSupport
