// A stage of the checker: defaults, and whether defaults and constants are values of their
// types.
#include "vokgen/Check.h"
#include "vokgen/Evaluator.h"

namespace VokGen {
namespace {

using Model::AttributeKind;
using Model::TypeKind;

/// Kinds of attributes that hold something from the start.
bool hasDefault( const Model::Attribute & attribute )
{
   const bool valueArgument = attribute.kind == AttributeKind::constructorArgument &&
         Model::asValue( attribute.owner );
   return attribute.kind == AttributeKind::plain || valueArgument;
}

class DefaultsChecker {
 public:
   DefaultsChecker( const Scopes & scopes, Evaluator & evaluator, TypeDraft & draft )
         : scopes_( scopes ),
           evaluator_( evaluator ),
           draft_( draft )
   {
   }

   void defaults();
   void checkValues();

 private:
   void setDefault( AttributeDraft & draft );
   bool zero( const AttributeDraft & draft, Model::Expression & value );
   void checkElements( AttributeDraft & draft );
   void checkValue( AttributeDraft & draft );
   bool checkAgainst( const AttributeDraft & draft, const Model::Attribute & rule, bool validate );
   void checkValidated( AttributeDraft & draft );

   const Scopes & scopes_;
   Evaluator & evaluator_;
   TypeDraft & draft_;
};

void DefaultsChecker::defaults()
{
   for ( const auto & attribute : draft_.attributes ) {
      if ( attribute->flawed ) {
         continue;
      }
      if ( hasDefault( *attribute->attribute ) ) {
         setDefault( *attribute );
      } else if ( attribute->attribute->kind == AttributeKind::map ) {
         checkElements( *attribute );
      }
      draft_.flawed = draft_.flawed || attribute->flawed;
   }
}

void DefaultsChecker::setDefault( AttributeDraft & draft )
{
   Model::Attribute & attribute = *draft.attribute;
   for ( const Ast::Option & option : draft.source->options ) {
      if ( option.kind == Ast::OptionKind::defaultValue ) {
         auto value = evaluator_.evaluate( option.first, attribute.type, draft_ );
         draft.flawed = !value;
         attribute.defaultStated = true;
         if ( value ) {
            attribute.value = std::move( *value );
         }
         return;
      }
   }
   draft.flawed = !zero( draft, attribute.value );
}

/// The default where none is stated: nothing, none, zero, or what the type's own constructor makes.
bool DefaultsChecker::zero( const AttributeDraft & draft, Model::Expression & value )
{
   const Model::Type & type = draft.attribute->type;
   switch ( type.kind ) {
   case TypeKind::boolean:
      value.value.kind = Model::Constant::Kind::boolean;
      value.text = "false";
      return true;
   case TypeKind::text:
      value.value.kind = Model::Constant::Kind::text;
      value.text = "\"\"";
      return true;
   case TypeKind::number:
      value.value.kind = Model::Constant::Kind::integer;
      value.text = "0";
      value.terms.emplace_back();
      return true;
   case TypeKind::real:
   case TypeKind::seconds:
   case TypeKind::duration:
      value.value.kind = Model::Constant::Kind::real;
      value.text = "0";
      return true;
   case TypeKind::enumeration:
      break;
   default:
      return true;
   }
   const Model::Enumerator * first = scopes_.workspace().zeroOf( type.enumeration );
   if ( !first ) {
      if ( isSound( scopes_, type ) ) {
         scopes_.error( draft.source->name.range, Message::enumWithoutZero,
               { draft.attribute->name, type.fullName } );
      }
      return false;
   }
   value.value.kind = Model::Constant::Kind::enumerator;
   value.value.enumerator = first;
   value.text = first->fullName();
   Model::Term term;
   term.enumerator = first;
   value.terms.push_back( term );
   return true;
}

/// A map gives a default for keys that it has not.
void DefaultsChecker::checkElements( AttributeDraft & draft )
{
   const Model::Type & type = draft.attribute->type;
   if ( type.enumeration && isSound( scopes_, type ) &&
         !scopes_.workspace().zeroOf( type.enumeration ) ) {
      scopes_.error( draft.source->type.range, Message::mapOfEnumWithoutZero,
            { draft.attribute->name, type.fullName } );
      draft.flawed = true;
   }
}

void DefaultsChecker::checkValues()
{
   for ( const auto & attribute : draft_.attributes ) {
      if ( attribute->flawed ) {
         continue;
      }
      const bool constant = attribute->attribute->kind == AttributeKind::constant;
      if ( constant || hasDefault( *attribute->attribute ) ) {
         checkValue( *attribute );
      }
      if ( attribute->attribute->validated ) {
         checkValidated( *attribute );
      }
   }
}

/// The constant that an attribute starts with, looked up in its type where it states none itself.
const Model::Constant & startOf( const Model::Attribute & attribute )
{
   const Model::Attribute * at = &attribute;
   while ( at->value.value.kind == Model::Constant::Kind::ownDefault && at->type.value &&
         at->type.value->onlyField() ) {
      at = at->type.value->onlyField();
   }
   return at->value.value;
}

/// Checks what an attribute starts with against its own bounds, and what it states also against
/// those of its type.
void DefaultsChecker::checkValue( AttributeDraft & draft )
{
   const Model::Attribute & attribute = *draft.attribute;
   if ( !isSound( scopes_, attribute.type ) ) {
      return;
   }
   bool good = checkAgainst( draft, attribute, true );
   if ( !attribute.defaultStated ) {
      return;
   }
   const Model::Attribute * at = &attribute;
   while ( good && at->type.value && at->type.value->onlyField() ) {
      at = at->type.value->onlyField();
      good = checkAgainst( draft, *at, attribute.validated );
   }
}

/// Whether the start value keeps a rule; `validate` includes what only validate() checks.
bool DefaultsChecker::checkAgainst( const AttributeDraft & draft, const Model::Attribute & rule,
      bool validate )
{
   const Model::Constant & start = startOf( *draft.attribute );
   if ( rule.bounds && start.kind == Model::Constant::Kind::integer &&
         ( validate || rule.bounds->time != Model::CheckTime::validated ) ) {
      const std::uint64_t lower = rule.bounds->lower.value.integer;
      const std::uint64_t upper = rule.bounds->upper.value.integer;
      const bool inside = start.integer >= lower && start.integer <= upper;
      if ( !inside && rule.bounds->except != start.integer ) {
         scopes_.error( draft.source->name.range, Message::outsideBounds,
               { draft.attribute->name, std::to_string( start.integer ), std::to_string( lower ),
                     std::to_string( upper ), rule.fullName() } );
         return false;
      }
   }
   if ( rule.textLimit && start.kind == Model::Constant::Kind::text &&
         start.text.size() > rule.textLimit->most.value.integer ) {
      scopes_.error( draft.source->name.range, Message::textTooLong,
            { draft.attribute->name, std::to_string( start.text.size() ),
                  std::to_string( rule.textLimit->most.value.integer ), rule.fullName() } );
      return false;
   }
   return true;
}

void DefaultsChecker::checkValidated( AttributeDraft & draft )
{
   const Model::Type & type = draft.attribute->type;
   if ( !isSound( scopes_, type ) || ( type.value && type.value->hasValidate() ) ) {
      return;
   }
   for ( const Ast::Option & option : draft.source->options ) {
      if ( option.kind == Ast::OptionKind::validated ) {
         scopes_.error( option.range, Message::nothingToValidate, { type.fullName } );
      }
   }
}

} // namespace

void Stages::evaluate( const Scopes & scopes )
{
   Evaluator evaluator( scopes );
   evaluateNumbers( scopes, evaluator );
   for ( const auto & draft : scopes.module().types ) {
      DefaultsChecker( scopes, evaluator, *draft ).defaults();
   }
   for ( const auto & draft : scopes.module().types ) {
      DefaultsChecker( scopes, evaluator, *draft ).checkValues();
   }
}

} // namespace VokGen
