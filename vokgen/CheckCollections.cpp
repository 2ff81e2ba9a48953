// A stage of the checker: keys of collections, and what making a child takes.
#include "vokgen/Check.h"

#include <algorithm>

namespace VokGen {
namespace {

using Model::AttributeKind;

class CollectionsChecker {
 public:
   CollectionsChecker( const Scopes & scopes, TypeDraft & draft )
         : scopes_( scopes ),
           draft_( draft )
   {
   }

   void check();

 private:
   void check( AttributeDraft & draft );
   bool findValueKey( AttributeDraft & draft );
   bool findEntityKey( AttributeDraft & draft );
   void checkKeyType( const AttributeDraft & draft );
   void childArguments( AttributeDraft & draft );

   const Scopes & scopes_;
   TypeDraft & draft_;
};

void CollectionsChecker::check()
{
   for ( const auto & attribute : draft_.attributes ) {
      if ( attribute->flawed ) {
         continue;
      }
      if ( attribute->attribute->isCollection() ) {
         check( *attribute );
      } else if ( attribute->source->by ) {
         scopes_.error( attribute->source->by->range, Message::misplacedBy );
      }
   }
}

void CollectionsChecker::check( AttributeDraft & draft )
{
   const AttributeKind kind = draft.attribute->kind;
   const bool keyed = kind == AttributeKind::map || kind == AttributeKind::children ||
         kind == AttributeKind::references;
   if ( draft.source->by && !keyed ) {
      scopes_.error( draft.source->by->range, Message::misplacedBy );
      return;
   }
   if ( !isSound( scopes_, draft.attribute->type ) ) {
      return;
   }
   const bool good = !draft.source->by ? true
         : kind == AttributeKind::map  ? findValueKey( draft )
                                       : findEntityKey( draft );
   if ( good && kind != AttributeKind::child ) {
      checkKeyType( draft );
   }
   if ( kind == AttributeKind::children || kind == AttributeKind::child ) {
      childArguments( draft );
   }
}

/// `map V by x`: x is a field of V.
bool CollectionsChecker::findValueKey( AttributeDraft & draft )
{
   Model::Collection & collection = *draft.attribute->collection;
   const Model::ValueType * value = draft.attribute->type.value;
   const Ast::Name & by = *draft.source->by;
   if ( !value ) {
      scopes_.error( draft.source->type.range, Message::keyOfNoValue,
            { draft.attribute->type.fullName } );
      return false;
   }
   std::vector< std::string > names;
   for ( const Model::Attribute * field : value->fields() ) {
      if ( field->name == by.text ) {
         collection.keyAttribute = field;
         collection.key = field->type;
         return true;
      }
      names.push_back( field->name );
   }
   scopes_.error( by.range, Message::keyNoField,
         { by.text, value->fullName, suggestion( by.text, names ) } );
   return false;
}

/// `children T by x`, `references T by x`: x is what T is constructed with, and never changes.
bool CollectionsChecker::findEntityKey( AttributeDraft & draft )
{
   Model::Collection & collection = *draft.attribute->collection;
   const Model::EntityType & entity = *draft.attribute->type.entity;
   const Ast::Name & by = *draft.source->by;
   std::vector< std::string > names;
   for ( const Model::Attribute * argument : entity.constructorArguments() ) {
      names.push_back( argument->name );
      if ( argument->name != by.text ) {
         continue;
      }
      if ( argument->settable || argument->isReference ) {
         scopes_.error( by.range, Message::keyNotConstant, { by.text, entity.fullName } );
         return false;
      }
      collection.keyAttribute = argument;
      collection.key = argument->type;
      return true;
   }
   scopes_.error( by.range, Message::keyNoArgument,
         { by.text, entity.fullName, suggestion( by.text, names ) } );
   return false;
}

void CollectionsChecker::checkKeyType( const AttributeDraft & draft )
{
   const Model::Collection & collection = *draft.attribute->collection;
   const Model::Type & key = collection.key;
   if ( !isSound( scopes_, key ) ) {
      return;
   }
   const Ast::Member & source = *draft.source;
   const Range range = source.by ? source.by->range
         : source.key            ? source.key->range
                                 : source.type.range;
   if ( collection.ordered && !key.ordered() ) {
      scopes_.error( range, Message::keyNotOrdered, { key.fullName } );
   } else if ( !collection.ordered && !key.hashable() ) {
      scopes_.error( range, Message::keyNotHashable, { key.fullName } );
   } else if ( !key.textable() ) {
      scopes_.error( range, Message::keyNotTextable, { key.fullName } );
   }
}

/// Which arguments the mutator takes, and what becomes of each when the child is there already.
void CollectionsChecker::childArguments( AttributeDraft & draft )
{
   Model::Collection & collection = *draft.attribute->collection;
   const bool single = draft.attribute->kind == AttributeKind::child;
   const Model::EntityType & entity = *draft.attribute->type.entity;
   for ( const Model::Attribute * argument : entity.constructorArguments() ) {
      Model::ChildArgument made;
      made.argument = argument;
      if ( !single && argument == collection.keyAttribute ) {
         made.rule = Model::Reinstantiation::key;
      } else if ( single && argument->isIdentity ) {
         made.rule = Model::Reinstantiation::replace;
      } else if ( argument->settable ) {
         made.rule = Model::Reinstantiation::update;
      }
      collection.arguments.push_back( made );
   }
   if ( collection.constructed && !collection.arguments.empty() ) {
      scopes_.error( draft.source->type.range, Message::constructedWithArguments,
            { entity.fullName } );
   }
}

} // namespace

void Stages::checkCollections( const Scopes & scopes )
{
   for ( const auto & draft : scopes.module().types ) {
      CollectionsChecker( scopes, *draft ).check();
   }
}

} // namespace VokGen
