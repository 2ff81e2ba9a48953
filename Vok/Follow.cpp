// Following, deferring, waiting and mirroring.
#include "Vok/Follow.h"

#include "Vok/Entity.h"
#include "Vok/ModuleInspectData.h"
#include "Vok/Path.h"
#include "Vok/TypeData.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Storage.h"

#include <algorithm>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace Vok {

Follower::Follower( const Entity & entity, AttrId attribute, Told told )
      : attribute_( attribute ),
        told_( std::make_shared< const Told >( std::move( told ) ) )
{
   entity.publisher().notifieeIs( this );
}

void Follower::onChange( const Corvo::Change & change )
{
   if ( change.attrId == attribute_ ) {
      const std::shared_ptr< const Told > told = told_;
      ( *told )( change );
   }
}

namespace {

bool isChild( const AttributeData & attribute )
{
   return attribute.kind() == AttributeKind::children || attribute.kind() == AttributeKind::child;
}

// Calls f with an entity and all that is below it, without recursion: a tree may be deeper than the
// stack.
template< class F > void eachBelow( const Entity & top, F f )
{
   std::vector< const Entity * > waiting{ &top };
   while ( !waiting.empty() ) {
      const Entity & entity = *waiting.back();
      waiting.pop_back();
      f( entity );
      for ( const AttributeData & attribute : entity.typeData().attributes() ) {
         const Detail::AttributeRow & row = attribute.row();
         if ( isChild( attribute ) ) {
            row.collection->each( Detail::storageOf( entity, row ),
                  [ & ]( const void *, const void * child ) {
                     waiting.push_back( row.collection->pointee( child ) );
                     return true;
                  } );
         }
      }
   }
}

const AttributeData & changedAttribute( const Corvo::Change & change )
{
   const auto attributes = change.entity.typeData().attributes();
   return *std::find_if( attributes.begin(), attributes.end(),
         [ & ]( const AttributeData & attribute ) { return attribute.id() == change.attrId; } );
}

} // namespace

TreeFollower::TreeFollower( const Entity & root, Told told )
      : told_( std::make_shared< const Told >( std::move( told ) ) )
{
   attach( root );
}

void TreeFollower::attach( const Entity & top )
{
   eachBelow( top, [ this ]( const Entity & entity ) { entity.publisher().notifieeIs( this ); } );
}

void TreeFollower::detach( const Entity & top )
{
   eachBelow( top, [ this ]( const Entity & entity ) { entity.publisher().notifieeDel( this ); } );
}

void TreeFollower::onChange( const Corvo::Change & change )
{
   const AttributeData & attribute = changedAttribute( change );
   if ( isChild( attribute ) ) {
      const Detail::AttributeRow & row = attribute.row();
      if ( change.hasOldValue() ) {
         const Entity * const gone = row.collection->pointee( change.oldValueAddress() );
         if ( &rootOf( *gone ) != &rootOf( change.entity ) ) { // it may have come back meanwhile
            detach( *gone );
         }
      }
      const Entity * const here = row.collection->entity(
            Detail::storageOf( change.entity, row ), change.keyAddress() );
      if ( here ) {
         attach( *here );
      }
   }
   const std::shared_ptr< const Told > told = told_;
   ( *told )( change, attribute );
}

void Deferred::run()
{
   if ( !requested_ ) {
      return;
   }
   requested_ = false;
   try {
      work_();
   } catch ( ... ) {
      requested_ = true;
      throw;
   }
}

When::When( const Entity & entity, AttrId attribute, std::function< bool() > holds,
      std::function< void() > then )
      : holds_( std::move( holds ) ),
        then_( std::move( then ) ),
        follower_( entity, attribute, [ this ]( const Corvo::Change & ) { ask(); } )
{
   ask();
}

void When::ask()
{
   if ( waiting_ && holds_() ) {
      waiting_ = false;
      const std::function< void() > then = std::move( then_ );
      then();
   }
}

namespace {

const AttributeData & collectionOf(
      const Entity & entity, std::string_view name, std::initializer_list< AttributeKind > kinds )
{
   const AttributeData * const attribute = entity.typeData().attribute( name );
   if ( !attribute || std::find( kinds.begin(), kinds.end(), attribute->kind() ) == kinds.end() ) {
      throw std::invalid_argument( std::string( entity.typeData().name() )
                                         .append( " has no collection '" )
                                         .append( name )
                                         .append( "' that can be mirrored" ) );
   }
   return *attribute;
}

// A child has to be made of its key alone.
const AttributeData & targetOf( const Entity & entity, std::string_view name )
{
   const AttributeData & attribute =
         collectionOf( entity, name, { AttributeKind::children, AttributeKind::set } );
   if ( attribute.kind() == AttributeKind::set ) {
      return attribute;
   }
   const TypeData & child = *Corvo::ModuleInspectData::findType( attribute.typeName() );
   return child.constructorArguments().size() == 1 ? attribute : collectionOf( entity, name, {} );
}

} // namespace

KeyMirror::KeyMirror( const Entity & source, std::string_view sourceCollection, Entity & target,
      std::string_view targetCollection )
      : from_( collectionOf( source, sourceCollection,
              { AttributeKind::children, AttributeKind::set, AttributeKind::map } ) ),
        to_( targetOf( target, targetCollection ) ),
        target_( target ),
        follower_( source, from_.id(),
              [ this ]( const Corvo::Change & change ) { follow( change ); } )
{
   std::vector< Corvo::String > wanted = from_.keys( source );
   std::sort( wanted.begin(), wanted.end() );
   for ( const Corvo::String & key : to_.keys( target ) ) {
      if ( !std::binary_search( wanted.begin(), wanted.end(), key ) ) {
         to_.memberDel( target, key );
      }
   }
   for ( const Corvo::String & key : wanted ) {
      make( key );
   }
}

void KeyMirror::follow( const Corvo::Change & change )
{
   const Detail::AttributeRow & row = from_.row();
   const void * const source = Detail::storageOf( change.entity, row );
   if ( row.collection->find( source, change.keyAddress() ) ) {
      make( change.keyText() );
   } else {
      to_.memberDel( target_, change.keyText() );
   }
}

void KeyMirror::make( std::string_view key )
{
   if ( to_.kind() == AttributeKind::children ) {
      to_.childIs( target_, key, {} );
   } else {
      to_.memberIs( target_, key, "" );
   }
}

} // namespace Vok
