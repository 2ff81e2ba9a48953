// A stage of the checker: ids, hash salts, and the order in which C++ can define the types.
#include "vokgen/Check.h"
#include "vokgen/Circles.h"

#include <algorithm>

namespace VokGen {
namespace {

using Model::AttributeKind;

constexpr unsigned nameStringId = 154;
constexpr unsigned firstEntityId = 258;
constexpr unsigned firstFieldId = 2;

/// The 32-bit FNV-1a hash of a text.
std::uint32_t saltOf( std::string_view text )
{
   std::uint32_t hash = 2166136261U;
   for ( const char c : text ) {
      hash = ( hash ^ static_cast< unsigned char >( c ) ) * 16777619U;
   }
   return hash;
}

/// In a value: constructor arguments, fields and collections, flags, constants.
int rankInValue( AttributeKind kind )
{
   switch ( kind ) {
   case AttributeKind::constructorArgument:
      return 0;
   case AttributeKind::flag:
      return 2;
   case AttributeKind::constant:
      return 3;
   default:
      return 1;
   }
}

void numberType( Model::RecordType & type )
{
   unsigned next = firstFieldId;
   if ( type.kind == Model::TypeDeclarationKind::value ) {
      std::stable_sort( type.attributes.begin(), type.attributes.end(),
            []( const auto & a, const auto & b ) {
               return rankInValue( a->kind ) < rankInValue( b->kind );
            } );
   } else if ( type.kind == Model::TypeDeclarationKind::entity ) {
      auto & entity = static_cast< Model::EntityType & >( type );
      next = firstEntityId;
      for ( const Model::EntityType * base = entity.base; base; base = base->base ) {
         if ( !base->attributes.empty() ) {
            next = base->attributes.back()->id + 1;
            break;
         }
      }
      if ( entity.nameArgument ) {
         entity.nameArgument->id = nameStringId;
      }
   }
   for ( const auto & attribute : type.attributes ) {
      attribute->id = next++;
      if ( attribute->collection ) {
         attribute->collection->hashSalt = saltOf( attribute->fullName() );
      }
   }
}

/// Collects what a type's definition needs of other types.
class NeedsOf {
 public:
   NeedsOf( const Scopes & scopes, const TypeDraft & draft )
         : scopes_( scopes ),
           draft_( draft )
   {
   }

   /// Fills the type's needsDefined and needsDeclared; gives the former as drafts.
   std::vector< Need > collect();

 private:
   void defined( const Model::TypeDeclaration * type, Range range );
   void declared( const Model::TypeDeclaration * type );
   void held( const Model::Type & type, Range range );
   void passed( const Model::Type & type, Range range );
   void used( const Model::Expression & expression, Range range );
   void function( const Model::Function & function, Range range );
   void attribute( const AttributeDraft & draft );

   const Scopes & scopes_;
   const TypeDraft & draft_;
   std::vector< Need > needs_;
   std::vector< const Model::TypeDeclaration * > declared_;
};

void NeedsOf::defined( const Model::TypeDeclaration * type, Range range )
{
   const Model::EnumType * enumeration = Model::asEnum( type );
   if ( enumeration && enumeration->holder ) {
      type = enumeration->holder;
   }
   if ( type && type != draft_.type ) {
      needs_.push_back( { scopes_.workspace().draftOf( type ), range } );
   }
}

void NeedsOf::declared( const Model::TypeDeclaration * type )
{
   if ( type && type != draft_.type ) {
      declared_.push_back( type );
   }
}

void NeedsOf::held( const Model::Type & type, Range range )
{
   defined( type.value, range );
   defined( type.enumeration, range );
   declared( type.entity );
}

void NeedsOf::passed( const Model::Type & type, Range range )
{
   declared( type.value );
   defined( type.enumeration, range );
}

void NeedsOf::used( const Model::Expression & expression, Range range )
{
   for ( const Model::Term & term : expression.terms ) {
      defined( term.constant ? term.constant->owner : nullptr, range );
      defined( term.enumerator ? term.enumerator->type : nullptr, range );
   }
}

void NeedsOf::function( const Model::Function & function, Range range )
{
   for ( const Model::Parameter & parameter : function.parameters ) {
      passed( parameter.type, range );
   }
   if ( function.result ) {
      passed( *function.result, range );
   }
}

void NeedsOf::attribute( const AttributeDraft & draft )
{
   const Model::Attribute & attribute = *draft.attribute;
   const Ast::Member & source = *draft.source;
   const Range range = source.type.empty() ? source.name.range : source.type.range;
   if ( attribute.function ) {
      function( *attribute.function, range );
      return;
   }
   held( attribute.type, range );
   used( attribute.value, range );
   if ( attribute.collection ) {
      held( attribute.collection->key, range );
   }
   if ( attribute.bounds ) {
      used( attribute.bounds->lower, range );
      used( attribute.bounds->upper, range );
   }
   if ( attribute.textLimit ) {
      used( attribute.textLimit->most, range );
   }
}

std::vector< Need > NeedsOf::collect()
{
   if ( const Model::EntityType * entity = Model::asEntity( draft_.type ) ) {
      defined( entity->base, draft_.source->base ? draft_.source->base->range : Range() );
   }
   for ( const auto & draft : draft_.attributes ) {
      if ( !draft->flawed ) {
         attribute( *draft );
      }
   }
   if ( const Model::ValueType * value = Model::asValue( draft_.type ) ) {
      for ( const auto & method : value->methods ) {
         function( *method, draft_.source->name.range );
      }
      for ( const Model::ByHandConstructor & constructor : value->constructors ) {
         Model::Function asFunction;
         asFunction.parameters = constructor.parameters;
         function( asFunction, draft_.source->name.range );
      }
   }
   if ( draft_.type->kind == Model::TypeDeclarationKind::enumeration ) {
      return {};
   }
   auto & type = static_cast< Model::RecordType & >( *draft_.type );
   std::unordered_set< const Model::TypeDeclaration * > seen;
   for ( const Need & need : needs_ ) {
      if ( seen.insert( need.type->type ).second ) {
         type.needsDefined.push_back( need.type->type );
      }
   }
   for ( const Model::TypeDeclaration * other : declared_ ) {
      if ( seen.insert( other ).second ) {
         type.needsDeclared.push_back( other );
      }
   }
   return std::move( needs_ );
}

} // namespace

void Stages::number( const Scopes & scopes )
{
   Model::Module & module = *scopes.module().module;
   const auto foreign = [ & ]( const TypeDraft & draft ) { return draft.type->module != &module; };
   CircleFinder order(
         scopes, Message::definedInCircle,
         [ & ]( const TypeDraft & draft ) {
            return foreign( draft ) ? std::vector< Need >() : NeedsOf( scopes, draft ).collect();
         },
         [ & ]( TypeDraft & draft ) {
            const Model::EnumType * enumeration = Model::asEnum( draft.type );
            if ( foreign( draft ) || ( enumeration && enumeration->holder ) ) {
               return;
            }
            module.definitionOrder.push_back( draft.type );
            if ( Model::asRecord( draft.type ) ) {
               numberType( static_cast< Model::RecordType & >( *draft.type ) );
            }
         } );
   for ( const auto & draft : scopes.module().types ) {
      order.walk( *draft );
   }
}

} // namespace VokGen
