// A stage of the checker: what values and entities demand of their parts.
#include "vokgen/Check.h"

#include <algorithm>
#include <set>

namespace VokGen {
namespace {

using Model::AttributeKind;

/// Whether a value has its text as a field or a method.
bool hasStringValue( const Model::ValueType & value )
{
   const std::vector< const Model::Attribute * > fields = value.fields();
   const bool isField =
         std::any_of( fields.begin(), fields.end(), []( const Model::Attribute * field ) {
            return field->name == "stringValue" && field->type.isText();
         } );
   return isField ||
         std::any_of( value.methods.begin(), value.methods.end(), []( const auto & method ) {
            return method->name == "stringValue" && !method->isStatic &&
                  method->parameters.empty() && method->result && method->result->isText();
         } );
}

/// Whether a value has a constructor that takes a text and nothing else.
bool isBuiltFromText( const Model::ValueType & value )
{
   const bool byArguments = !value.constructorArguments().empty();
   const auto taken = byArguments ? value.constructorArguments() : value.fields();
   const bool fromField =
         !value.constructorsByHand && taken.size() == 1 && taken.front()->type.isText();
   const auto takesText = []( const Model::ByHandConstructor & constructor ) {
      return constructor.parameters.size() == 1 && constructor.parameters.front().type.isText();
   };
   return fromField ||
         std::any_of( value.constructors.begin(), value.constructors.end(), takesText );
}

class ValueChecker {
 public:
   ValueChecker( const Scopes & scopes, const TypeDraft & draft )
         : scopes_( scopes ),
           draft_( draft ),
           value_( *Model::asValue( draft.type ) )
   {
   }

   void check();

 private:
   void checkCollection();
   void checkField( const AttributeDraft & draft );
   void checkConstructors();
   void checkByHand();
   Range nameRange() const { return draft_.source->name.range; }

   const Scopes & scopes_;
   const TypeDraft & draft_;
   const Model::ValueType & value_;
};

void ValueChecker::check()
{
   const bool holdsNothing = value_.fields().empty() && value_.collections().empty();
   if ( holdsNothing && !draft_.incomplete && !draft_.flawed && !value_.attributes.empty() ) {
      scopes_.error( nameRange(), Message::valueWithoutFields, { value_.name } );
   }
   checkCollection();
   for ( const auto & attribute : draft_.attributes ) {
      const bool field = !attribute->flawed &&
            ( attribute->attribute->kind == AttributeKind::plain ||
                  attribute->attribute->kind == AttributeKind::constructorArgument );
      if ( field && isSound( scopes_, attribute->attribute->type ) ) {
         checkField( *attribute );
      }
   }
   if ( !draft_.flawed && !draft_.incomplete ) {
      checkConstructors();
      checkByHand();
   }
}

/// A text that is written by hand is taken by a constructor, and given by stringValue().
/// Constructors are written by hand where fields have to fit together: nothing that is generated
/// may then make a value, or change it.
void ValueChecker::checkByHand()
{
   const bool textByHand = value_.textByHand && value_.textable;
   if ( textByHand && !isBuiltFromText( value_ ) ) {
      scopes_.error( nameRange(), Message::textByHandDemands,
            { value_.name, "constructor( text : string );" } );
   }
   if ( textByHand && !hasStringValue( value_ ) ) {
      scopes_.error( nameRange(), Message::textByHandDemands,
            { value_.name, "method stringValue() -> string;" } );
   }
   if ( !value_.constructorsByHand ) {
      return;
   }
   if ( value_.fields().size() < 2 ) {
      scopes_.error( nameRange(), Message::constructorsOfOneField, { value_.name } );
   }
   const auto demand = [ this ]( bool met, const char * culprit, const char * word ) {
      if ( !met ) {
         scopes_.error(
               nameRange(), Message::constructorsDemand, { value_.name, culprit, word } );
      }
   };
   demand( value_.fixed, "its mutators", "'fixed'" );
   demand( value_.textByHand || !value_.textable, "a text", "'by hand text' or 'untextable'" );
   demand( value_.logByHand, "a log", "'by hand log'" );
}

void ValueChecker::checkCollection()
{
   if ( !value_.hasCollection() ) {
      return;
   }
   const std::string collection = value_.collections().front()->name;
   if ( value_.hashable ) {
      scopes_.error(
            nameRange(), Message::collectionDemands, { value_.name, collection, "unhashable" } );
   }
   if ( value_.textable ) {
      scopes_.error(
            nameRange(), Message::collectionDemands, { value_.name, collection, "untextable" } );
   }
   if ( value_.ordered ) {
      scopes_.error( nameRange(), Message::orderedCollection, { value_.name, collection } );
   }
}

void ValueChecker::checkField( const AttributeDraft & draft )
{
   const Model::Type & type = draft.attribute->type;
   const Range range = draft.source->type.range;
   if ( value_.hashable && !type.hashable() ) {
      scopes_.error(
            range, Message::fieldDemands, { type.fullName, "hash", value_.name, "unhashable" } );
   }
   if ( value_.textable && !value_.textByHand && !type.textable() ) {
      scopes_.error( range, Message::fieldDemands,
            { type.fullName, "text form", value_.name, "untextable" } );
   }
   if ( value_.ordered && !type.ordered() ) {
      scopes_.error( range, Message::fieldNotOrdered, { type.fullName, value_.name } );
   }
}

/// The types of a constructor's parameters, to tell two of them apart.
template< class List, class TypeOf >
std::string signature( const List & list, TypeOf typeOf )
{
   std::string result;
   for ( const auto & element : list ) {
      result += typeOf( element ).fullName + ", ";
   }
   return result.substr( 0, result.size() - std::min< std::size_t >( result.size(), 2 ) );
}

void ValueChecker::checkConstructors()
{
   const bool byArguments = !value_.constructorArguments().empty();
   const auto fields = byArguments ? value_.constructorArguments() : value_.fields();
   std::set< std::string > known = { "" };
   if ( !value_.constructorsByHand ) {
      known.insert( signature( fields, []( const Model::Attribute * field ) {
         return field->builtFrom.value_or( field->type );
      } ) );
   }
   std::size_t next = 0;
   for ( const Ast::Member & member : draft_.source->members ) {
      if ( member.kind != Ast::MemberKind::constructor || member.broken ) {
         continue;
      }
      const std::string types = signature( value_.constructors.at( next++ ).parameters,
            []( const Model::Parameter & parameter ) { return parameter.type; } );
      if ( !known.insert( types ).second ) {
         scopes_.error( member.kindRange, Message::constructorTwice, { value_.name, types } );
      }
   }
}

class EntityChecker {
 public:
   EntityChecker( const Scopes & scopes, const TypeDraft & draft, Model::EntityType & entity )
         : scopes_( scopes ),
           draft_( draft ),
           entity_( entity )
   {
   }

   void check();

 private:
   void checkArguments();
   void checkIdentity( const Ast::Member & argument, const AttributeDraft & draft );
   void addCheck( const Ast::Name & name );
   std::vector< std::string > boundedNames() const;

   const Scopes & scopes_;
   const TypeDraft & draft_;
   Model::EntityType & entity_;
};

void EntityChecker::check()
{
   checkArguments();
   std::set< std::string > seen;
   for ( const Ast::Name & name : draft_.source->checks ) {
      if ( seen.insert( name.text ).second ) {
         addCheck( name );
      } else {
         scopes_.error( name.range, Message::modifierTwice, { "checks " + name.text } );
      }
   }
}

void EntityChecker::checkArguments()
{
   const Ast::Member * identity = nullptr;
   for ( const auto & attribute : draft_.attributes ) {
      const Ast::Member & source = *attribute->source;
      if ( source.kind != Ast::MemberKind::argument || attribute->flawed ) {
         continue;
      }
      if ( source.isReference && attribute->attribute->settable ) {
         scopes_.error( source.range, Message::settableReference, { source.name.text } );
      }
      if ( !attribute->attribute->isIdentity ) {
         continue;
      }
      if ( identity ) {
         scopes_.error( source.name.range, Message::identityTwice, { entity_.name } );
         scopes_.note( scopes_.location( identity->name.range ), Message::firstDeclaredHere,
               { identity->name.text } );
      } else {
         checkIdentity( source, *attribute );
      }
      identity = &source;
   }
}

void EntityChecker::checkIdentity( const Ast::Member & argument, const AttributeDraft & draft )
{
   const Model::Type & type = draft.attribute->type;
   if ( argument.isReference || draft.attribute->settable ) {
      scopes_.error( argument.range, Message::identityNotConstant, { argument.name.text } );
   } else if ( isSound( scopes_, type ) && !type.isText() ) {
      if ( !type.value || !hasStringValue( *type.value ) ) {
         scopes_.error( argument.type.range, Message::identityWithoutText,
               { argument.name.text, type.fullName } );
      } else if ( !isBuiltFromText( *type.value ) ) {
         scopes_.error( argument.type.range, Message::identityNotFromText,
               { argument.name.text, type.fullName } );
      }
   }
}

std::vector< std::string > EntityChecker::boundedNames() const
{
   std::vector< std::string > names;
   for ( const Model::Attribute * attribute : entity_.allAttributes() ) {
      if ( attribute->bounds ) {
         names.push_back( attribute->name );
      }
   }
   return names;
}

void EntityChecker::addCheck( const Ast::Name & name )
{
   bool lost = false;
   for ( const TypeDraft * at = &draft_; at; ) {
      const AttributeDraft * found = at->find( name.text );
      lost = lost || at->incomplete || ( found && found->flawed );
      const Model::EntityType * entity = Model::asEntity( at->type );
      at = scopes_.workspace().draftOf( entity->base );
   }
   const Model::Attribute * attribute = entity_.findWithBase( name.text );
   if ( attribute && attribute->bounds ) {
      entity_.checks.push_back( attribute );
   } else if ( attribute && !lost ) {
      scopes_.error( name.range, Message::checksWithoutBounds, { attribute->fullName() } );
   } else if ( !lost ) {
      scopes_.error( name.range, Message::unknownMember,
            { name.text, entity_.fullName, suggestion( name.text, boundedNames() ) } );
   }
}

} // namespace

void Stages::checkRecords( const Scopes & scopes )
{
   for ( const auto & draft : scopes.module().types ) {
      if ( Model::asValue( draft->type ) ) {
         ValueChecker( scopes, *draft ).check();
      } else if ( Model::asEntity( draft->type ) ) {
         EntityChecker( scopes, *draft, static_cast< Model::EntityType & >( *draft->type ) )
               .check();
      }
   }
}

} // namespace VokGen
