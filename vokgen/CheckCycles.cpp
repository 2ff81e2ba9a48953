// A stage of the checker: types that would contain, construct or derive from themselves.
#include "vokgen/Check.h"
#include "vokgen/Circles.h"

#include <algorithm>

namespace VokGen {
namespace {

constexpr std::size_t depthLimit = 64;
constexpr std::size_t partsLimit = 4096;

/// The drafts of values that a value holds: as fields, and as members and keys of collections.
std::vector< Need > contents( const Scopes & scopes, const TypeDraft & draft )
{
   std::vector< Need > needs;
   if ( !Model::asValue( draft.type ) ) {
      return needs;
   }
   const auto add = [ & ]( const Model::Type & type, Range range ) {
      if ( type.value ) {
         needs.push_back( { scopes.workspace().draftOf( type.value ), range } );
      }
   };
   for ( const auto & attribute : draft.attributes ) {
      if ( attribute->flawed || attribute->attribute->kind == Model::AttributeKind::constant ) {
         continue;
      }
      add( attribute->attribute->type, attribute->source->type.range );
      if ( attribute->attribute->collection && attribute->source->key ) {
         add( attribute->attribute->collection->key, attribute->source->key->range );
      }
   }
   return needs;
}

/// Counts what a value holds when all that it contains has been counted.
void measure( const Scopes & scopes, TypeDraft & draft )
{
   const bool foreign = draft.file != scopes.module().source->file;
   const Model::ValueType * value = Model::asValue( draft.type );
   if ( foreign || !value ) {
      return;
   }
   draft.height = 1;
   draft.parts = 0;
   for ( const auto & attribute : draft.attributes ) {
      if ( attribute->flawed || attribute->attribute->kind == Model::AttributeKind::constant ) {
         continue;
      }
      const TypeDraft * held = scopes.workspace().draftOf( attribute->attribute->type.value );
      draft.height = std::max( draft.height, held ? held->height + 1 : 1 );
      draft.parts += held ? held->parts : 1;
      draft.flawed = draft.flawed || ( held && held->flawed );
   }
   if ( !draft.flawed && ( draft.height > depthLimit || draft.parts > partsLimit ) ) {
      const bool deep = draft.height > depthLimit;
      scopes.error( draft.source->name.range,
            deep ? Message::valueTooDeep : Message::valueTooLarge,
            { draft.type->name, std::to_string( deep ? depthLimit : partsLimit ) } );
      draft.flawed = true;
   }
   draft.parts = std::min( draft.parts, partsLimit + 1 );
}

/// Ends chains of bases that lead back to where they started, or too far.
void checkBase( const Scopes & scopes, TypeDraft & draft )
{
   auto * entity = draft.type->kind == Model::TypeDeclarationKind::entity
         ? static_cast< Model::EntityType * >( draft.type )
         : nullptr;
   if ( !entity || !entity->base ) {
      return;
   }
   std::vector< const Model::EntityType * > line = { entity };
   const Model::EntityType * base = entity->base;
   while ( base && line.size() <= depthLimit &&
         std::find( line.begin(), line.end(), base ) == line.end() ) {
      line.push_back( base );
      base = base->base;
   }
   if ( !base ) {
      return;
   }
   // Of a circle further up only its own types are told.
   if ( base == entity ) {
      scopes.error( draft.source->base->range, Message::derivesFromItself, { entity->name } );
   } else if ( line.size() > depthLimit && isSound( scopes, typeOf( *base ) ) ) {
      scopes.error( draft.source->base->range, Message::derivedTooDeep,
            { entity->name, std::to_string( depthLimit ) } );
   }
   entity->base = nullptr;
   draft.flawed = true;
   draft.incomplete = true;
}

/// The drafts of entities that constructing an entity constructs.
std::vector< Need > constructed( const Scopes & scopes, const TypeDraft & draft )
{
   std::vector< Need > needs;
   const Model::EntityType * entity = Model::asEntity( draft.type );
   if ( !entity ) {
      return needs;
   }
   if ( entity->base ) {
      needs.push_back( { scopes.workspace().draftOf( entity->base ), draft.source->base->range } );
   }
   for ( const auto & attribute : draft.attributes ) {
      const bool constructs = !attribute->flawed && attribute->attribute->collection &&
            attribute->attribute->collection->constructed;
      if ( constructs ) {
         needs.push_back( { scopes.workspace().draftOf( attribute->attribute->type.entity ),
               attribute->source->type.range } );
      }
   }
   return needs;
}

} // namespace

void Stages::checkCycles( const Scopes & scopes )
{
   CircleFinder values(
         scopes, Message::containsItself,
         [ & ]( const TypeDraft & draft ) { return contents( scopes, draft ); },
         [ & ]( TypeDraft & draft ) { measure( scopes, draft ); } );
   CircleFinder entities(
         scopes, Message::constructsItself,
         [ & ]( const TypeDraft & draft ) { return constructed( scopes, draft ); },
         []( TypeDraft & ) {} );
   for ( const auto & draft : scopes.module().types ) {
      checkBase( scopes, *draft );
   }
   for ( const auto & draft : scopes.module().types ) {
      values.walk( *draft );
      entities.walk( *draft );
   }
}

} // namespace VokGen
