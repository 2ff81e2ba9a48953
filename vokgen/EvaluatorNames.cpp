// Names in expressions: constants and enumerators, from near to far.
#include "vokgen/Evaluator.h"

namespace VokGen {
namespace {

/// Constants that name one another in a chain.
constexpr std::size_t depthLimit = 64;

/// The draft of the entity type that an entity derives from; null for any other.
TypeDraft * baseOf( const Scopes & scopes, const TypeDraft & draft )
{
   const Model::EntityType * entity = Model::asEntity( draft.type );
   return entity ? scopes.workspace().draftOf( entity->base ) : nullptr;
}

/// Names of all that a name without `::` could have meant.
std::vector< std::string > bareCandidates( const Scopes & scopes, const Model::EnumType * wanted,
      const TypeDraft & inside )
{
   std::vector< std::string > names = { "true", "false" };
   if ( wanted ) {
      for ( const auto & enumerator : wanted->enumerators ) {
         names.push_back( enumerator->name );
      }
   }
   for ( const TypeDraft * type = &inside; type; type = baseOf( scopes, *type ) ) {
      for ( const auto & [ name, draft ] : type->byName ) {
         if ( draft->attribute && draft->attribute->kind == Model::AttributeKind::constant ) {
            names.push_back( name );
         }
      }
   }
   return names;
}

/// Names of all members and enumerators of a type, its bases included.
std::vector< std::string > memberNames( const Scopes & scopes, const TypeDraft & type )
{
   std::vector< std::string > names;
   for ( const TypeDraft * at = &type; at; at = baseOf( scopes, *at ) ) {
      for ( const auto & [ name, draft ] : at->byName ) {
         names.push_back( name );
      }
      for ( const auto & [ name, enumerator ] : at->enumerators ) {
         names.push_back( name );
      }
   }
   return names;
}

const Model::Enumerator * enumeratorOf( const Scopes & scopes, const Model::EnumType & type,
      const std::string & name )
{
   const TypeDraft * draft = scopes.workspace().draftOf( &type );
   return draft ? draft->findEnumerator( name ) : nullptr;
}

} // namespace

bool Evaluator::ensure( AttributeDraft & constant, TypeDraft & owner )
{
   if ( constant.flawed || constant.evaluation == AttributeDraft::Evaluation::done ) {
      return !constant.flawed;
   }
   const Ast::Member & source = *constant.source;
   if ( source.kind == Ast::MemberKind::flag ) {
      return false; // A mask; the flags' check sets it before any constant is asked for.
   }
   const bool running = constant.evaluation == AttributeDraft::Evaluation::running;
   if ( running ) {
      scopes_.error( source.name.range, Message::constantOfItself, { source.name.text } );
   } else if ( depth_ == depthLimit && !tooDeep_ ) {
      scopes_.error( source.name.range, Message::constantTooDeep,
            { source.name.text, std::to_string( depthLimit ) } );
      tooDeep_ = true;
   }
   if ( running || depth_ == depthLimit ) {
      constant.flawed = true;
      return false;
   }
   constant.evaluation = AttributeDraft::Evaluation::running;
   ++depth_;
   std::optional< Model::Expression > value;
   for ( const Ast::Option & option : source.options ) {
      value = evaluate( option.first, constant.attribute->type, owner );
   }
   --depth_;
   constant.evaluation = AttributeDraft::Evaluation::done;
   constant.flawed = constant.flawed || !value;
   if ( value ) {
      constant.attribute->value = std::move( *value );
   }
   return !constant.flawed;
}

Evaluator::Meaning Evaluator::constantOf( AttributeDraft & draft, TypeDraft & owner, Range range )
{
   if ( draft.attribute && draft.attribute->kind != Model::AttributeKind::constant ) {
      scopes_.error( range, Message::notAConstant, { draft.attribute->fullName() } );
      scopes_.note( { owner.file, draft.source->name.range }, Message::declaredHere,
            { draft.attribute->name } );
      return {};
   }
   return { ensure( draft, owner ) ? draft.attribute : nullptr, nullptr };
}

Evaluator::Meaning Evaluator::find( const std::string & name, Range range,
      const Model::EnumType * wanted, const TypeDraft & inside )
{
   const bool bare = name.find( "::" ) == std::string::npos;
   return bare ? findBare( name, range, wanted, inside )
               : findQualified( name, range, wanted, inside );
}

Evaluator::Meaning Evaluator::findBare( const std::string & name, Range range,
      const Model::EnumType * wanted, const TypeDraft & inside )
{
   if ( wanted ) {
      if ( const Model::Enumerator * enumerator = enumeratorOf( scopes_, *wanted, name ) ) {
         return { nullptr, enumerator };
      }
   }
   bool lost = scopes_.isFull();
   for ( TypeDraft * type = scopes_.workspace().draftOf( inside.type ); type;
         type = baseOf( scopes_, *type ) ) {
      if ( AttributeDraft * draft = type->find( name ) ) {
         return constantOf( *draft, *type, range );
      }
      if ( const Model::Enumerator * enumerator = type->findEnumerator( name ) ) {
         return { nullptr, enumerator };
      }
      lost = lost || type->incomplete;
   }
   if ( !lost ) {
      scopes_.error( range, Message::unknownConstant,
            { name,
                  wanted ? "an enumerator of " + wanted->fullName + " or a constant" : "a constant",
                  inside.type->name,
                  suggestion( name, bareCandidates( scopes_, wanted, inside ) ) } );
   }
   return {};
}

/// A member of a type: one of its constants, or an enumerator of it or of what is nested in it.
Evaluator::Meaning Evaluator::memberOf( TypeDraft & type, const std::string & name, Range range )
{
   bool lost = scopes_.isFull();
   for ( TypeDraft * at = &type; at; at = baseOf( scopes_, *at ) ) {
      if ( AttributeDraft * draft = at->find( name ) ) {
         return constantOf( *draft, *at, range );
      }
      if ( const Model::Enumerator * enumerator = at->findEnumerator( name ) ) {
         return { nullptr, enumerator };
      }
      lost = lost || at->incomplete;
   }
   if ( !lost ) {
      scopes_.error( range, Message::unknownMember,
            { name, type.type->fullName, suggestion( name, memberNames( scopes_, type ) ) } );
      const auto symbol = scopes_.workspace().symbols.find( type.type->fullName );
      if ( symbol != scopes_.workspace().symbols.end() ) {
         scopes_.note( symbol->second.where, Message::declaredHere, { type.type->fullName } );
      }
   }
   return {};
}

Evaluator::Meaning Evaluator::findQualified( const std::string & name, Range range,
      const Model::EnumType * wanted, const TypeDraft & inside )
{
   const std::size_t split = name.rfind( "::" );
   const std::string prefix = name.substr( 0, split );
   const std::string last = name.substr( split + 2 );
   const std::string & scope = inside.type->fullName;
   if ( wanted && !scopes_.find( scope, prefix ) ) {
      // Enumerators are reached through the namespace of their enumeration too.
      const std::string around = wanted->fullName.substr( 0, wanted->fullName.rfind( "::" ) );
      const bool through = around == prefix ||
            ( around.size() > prefix.size() + 2 &&
                  around.compare( around.size() - prefix.size() - 2, std::string::npos,
                        "::" + prefix ) == 0 );
      const Model::Enumerator * enumerator =
            through ? enumeratorOf( scopes_, *wanted, last ) : nullptr;
      if ( enumerator ) {
         return { nullptr, enumerator };
      }
   }
   const Range prefixRange = { range.begin,
      range.end - static_cast< std::uint32_t >( last.size() ) - 2 };
   TypeDraft * type = scopes_.resolveDraft( scope, { prefix, prefixRange } );
   return type ? memberOf( *type, last, range ) : Meaning();
}

} // namespace VokGen
