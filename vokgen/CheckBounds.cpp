// A stage of the checker: flags, constants, bounds and defaults.
#include "vokgen/Check.h"
#include "vokgen/Evaluator.h"
#include "vokgen/MemberRules.h"

namespace VokGen {
namespace {

using Model::AttributeKind;

Model::CheckTime timeOf( Ast::BoundsTime time )
{
   switch ( time ) {
   case Ast::BoundsTime::onSet:
      return Model::CheckTime::onSet;
   case Ast::BoundsTime::validated:
      return Model::CheckTime::validated;
   case Ast::BoundsTime::unchecked:
      return Model::CheckTime::never;
   default:
      return Model::CheckTime::always;
   }
}

/// Settles the numbers of one type.
class NumbersChecker {
 public:
   NumbersChecker( const Scopes & scopes, Evaluator & evaluator, TypeDraft & draft )
         : scopes_( scopes ),
           evaluator_( evaluator ),
           draft_( draft )
   {
   }

   void flags();
   void constants();
   void options();

 private:
   void flag( AttributeDraft & draft, std::unordered_map< std::string, Range > & bits );
   void option( AttributeDraft & draft, const Ast::Option & option );
   void bounds( AttributeDraft & draft, const Ast::Option & option );
   bool checkTimes( const AttributeDraft & draft, const Ast::Option & option );
   void textLimit( AttributeDraft & draft, const Ast::Option & option );
   void builtFrom( AttributeDraft & draft, const Ast::Option & option );
   void empty( AttributeDraft & draft, const Ast::Option & option );
   void counter( const AttributeDraft & draft, const Ast::Option & option );
   void flaw( AttributeDraft & draft );

   const Scopes & scopes_;
   Evaluator & evaluator_;
   TypeDraft & draft_;
};

void NumbersChecker::flaw( AttributeDraft & draft )
{
   draft.flawed = true;
   draft_.flawed = true;
}

void NumbersChecker::flags()
{
   std::unordered_map< std::string, Range > bits;
   for ( const auto & attribute : draft_.attributes ) {
      if ( !attribute->flawed && attribute->attribute->kind == AttributeKind::flag ) {
         flag( *attribute, bits );
      }
   }
}

void NumbersChecker::flag( AttributeDraft & draft, std::unordered_map< std::string, Range > & bits )
{
   const Ast::Member & source = *draft.source;
   const AttributeDraft * word = draft_.find( source.word.text );
   AttributeDraft * mask = source.mask ? draft_.find( source.mask->text ) : nullptr;
   const bool lost = word ? word->flawed : draft_.incomplete;
   if ( !word && !lost ) {
      scopes_.error( source.word.range, Message::unknownField,
            { source.word.text, draft_.type->name } );
   }
   if ( !word || lost ) {
      flaw( draft );
      if ( mask ) {
         flaw( *mask );
      }
      return;
   }
   const Model::Attribute & field = *word->attribute;
   const std::string bit = std::to_string( source.bit );
   const bool fits = source.bit < field.type.bits;
   if ( field.kind != AttributeKind::plain || !field.type.isNumber() ) {
      scopes_.error( source.word.range, Message::flagOfOther, { source.word.text } );
   } else if ( !fits ) {
      scopes_.error( source.bitRange, Message::bitBeyondWord,
            { bit, field.name, field.type.fullName, std::to_string( field.type.bits - 1 ) } );
   } else {
      const auto [ first, added ] = bits.emplace( field.name + " " + bit, source.bitRange );
      if ( !added ) {
         scopes_.error( source.bitRange, Message::bitTwice, { bit, field.name } );
         scopes_.note( scopes_.location( first->second ), Message::firstUsedHere, { bit } );
      }
   }
   draft.attribute->flag->word = &field;
   if ( mask && mask->source == draft.source && mask->attribute ) {
      Model::Term term;
      term.integer = fits ? std::uint64_t( 1 ) << source.bit : 1;
      mask->attribute->type = field.type;
      mask->attribute->value.value.kind = Model::Constant::Kind::integer;
      mask->attribute->value.value.integer = term.integer;
      mask->attribute->value.text = std::to_string( term.integer );
      mask->attribute->value.terms = { term };
      mask->attribute->defaultStated = true;
      mask->evaluation = AttributeDraft::Evaluation::done;
   }
}

void NumbersChecker::constants()
{
   for ( const auto & attribute : draft_.attributes ) {
      if ( !attribute->flawed && attribute->attribute->kind == AttributeKind::constant ) {
         attribute->attribute->defaultStated = true;
         evaluator_.ensure( *attribute, draft_ );
         draft_.flawed = draft_.flawed || attribute->flawed;
      }
   }
}

void NumbersChecker::options()
{
   for ( const auto & attribute : draft_.attributes ) {
      for ( std::size_t i = 0; !attribute->flawed && i < attribute->source->options.size(); ++i ) {
         option( *attribute, attribute->source->options[ i ] );
      }
   }
}

void NumbersChecker::option( AttributeDraft & draft, const Ast::Option & option )
{
   if ( !MemberRules::allowed( draft_.type->kind, draft.source->kind, option.kind ) ) {
      return;
   }
   switch ( option.kind ) {
   case Ast::OptionKind::bounds:
      bounds( draft, option );
      break;
   case Ast::OptionKind::most:
      textLimit( draft, option );
      break;
   case Ast::OptionKind::from:
      builtFrom( draft, option );
      break;
   case Ast::OptionKind::empty:
      empty( draft, option );
      break;
   case Ast::OptionKind::counter:
      counter( draft, option );
      break;
   default:
      break;
   }
}

/// Bounds of entities are checked by mutators, those of values at any time.
bool NumbersChecker::checkTimes( const AttributeDraft & draft, const Ast::Option & option )
{
   const Model::ValueType * value = Model::asValue( draft_.type );
   if ( !value && option.time != Ast::BoundsTime::onSet ) {
      scopes_.error( option.range, Message::boundsOfEntity, { draft.attribute->name } );
      return false;
   }
   if ( value && value->fixed && option.time == Ast::BoundsTime::onSet ) {
      scopes_.error( option.range, Message::boundsWithoutMutator, { draft_.type->name } );
      return false;
   }
   return true;
}

void NumbersChecker::bounds( AttributeDraft & draft, const Ast::Option & option )
{
   Model::Attribute & attribute = *draft.attribute;
   const bool sound = isSound( scopes_, attribute.type );
   const Model::Type * number = sound ? attribute.type.innermost() : nullptr;
   if ( sound && ( !number || !number->isNumber() ) ) {
      scopes_.error(
            option.range, Message::boundsOfOther, { attribute.name, attribute.type.fullName } );
      number = nullptr;
   }
   if ( !number || !checkTimes( draft, option ) ) {
      flaw( draft );
      return;
   }
   const auto lower = evaluator_.evaluate( option.first, *number, draft_ );
   const auto upper = evaluator_.evaluate( option.second, *number, draft_ );
   const auto except = option.except ? evaluator_.evaluate( *option.except, *number, draft_ )
                                     : std::nullopt;
   const bool inverted = lower && upper && lower->value.integer > upper->value.integer;
   if ( inverted ) {
      scopes_.error( option.range, Message::boundsInverted,
            { std::to_string( lower->value.integer ), std::to_string( upper->value.integer ) } );
   }
   if ( !lower || !upper || inverted || ( option.except && !except ) ) {
      flaw( draft );
      return;
   }
   const Model::Type & incoming = attribute.builtFrom ? *attribute.builtFrom : *number;
   Model::Bounds & made = attribute.bounds.emplace();
   made.time = timeOf( option.time );
   made.lower = *lower;
   made.upper = *upper;
   made.lowerCanFail = lower->value.integer > 0;
   made.upperCanFail = upper->value.integer < incoming.largest();
   made.message = made.time == Model::CheckTime::validated
         ? option.text
         : attribute.fullName() + " < " + lower->text + " or > " + upper->text + " not allowed";
   if ( except ) {
      made.except = except->value.integer;
   }
}

void NumbersChecker::textLimit( AttributeDraft & draft, const Ast::Option & option )
{
   if ( !draft.attribute->type.isText() ) {
      scopes_.error( option.range, Message::mostOfOther,
            { draft.attribute->name, draft.attribute->type.fullName } );
      flaw( draft );
      return;
   }
   const auto most = evaluator_.evaluate( option.first, *builtInType( "u32" ), draft_ );
   if ( !most ) {
      flaw( draft );
      return;
   }
   draft.attribute->textLimit = Model::TextLimit{ *most, option.text };
}

/// `from` a wider number: what comes in must be checked before it is narrowed.
void NumbersChecker::builtFrom( AttributeDraft & draft, const Ast::Option & option )
{
   Model::Attribute & attribute = *draft.attribute;
   if ( !attribute.builtFrom ) {
      flaw( draft );
      return;
   }
   const Model::Type & from = *attribute.builtFrom;
   const bool wider =
         from.isNumber() && attribute.type.isNumber() && from.bits > attribute.type.bits;
   bool always = false;
   for ( const Ast::Option & other : draft.source->options ) {
      always = always ||
            ( other.kind == Ast::OptionKind::bounds && other.time == Ast::BoundsTime::always );
   }
   if ( !wider ) {
      scopes_.error(
            option.type.range, Message::notWider, { from.fullName, attribute.type.fullName } );
   } else if ( !always ) {
      scopes_.error( option.range, Message::fromWithoutBounds, { attribute.name } );
   }
   if ( !wider || !always ) {
      flaw( draft );
   }
}

void NumbersChecker::empty( AttributeDraft & draft, const Ast::Option & option )
{
   Model::Attribute & attribute = *draft.attribute;
   const bool sound = isSound( scopes_, attribute.type );
   const Model::ValueType * value = sound ? attribute.type.value : nullptr;
   const Model::Attribute * number = value ? value->onlyField() : nullptr;
   if ( sound && ( !number || !number->type.isNumber() || number->name != "value" ) ) {
      scopes_.error(
            option.range, Message::emptyOfOther, { attribute.name, attribute.type.fullName } );
      number = nullptr;
   }
   const auto word =
         number ? evaluator_.evaluate( option.first, number->type, draft_ ) : std::nullopt;
   if ( word ) {
      attribute.emptyWord = word->value.integer;
   } else {
      flaw( draft );
   }
}

void NumbersChecker::counter( const AttributeDraft & draft, const Ast::Option & option )
{
   if ( !draft.attribute->type.isNumber() ) {
      scopes_.error( option.range, Message::counterOfOther,
            { draft.attribute->name, draft.attribute->type.fullName } );
   }
   for ( const Ast::Option & other : draft.source->options ) {
      if ( other.kind == Ast::OptionKind::bounds ) {
         scopes_.error( option.range, Message::counterWithBounds, { draft.attribute->name } );
      }
   }
}

} // namespace

void Stages::evaluateNumbers( const Scopes & scopes, Evaluator & evaluator )
{
   for ( const auto & draft : scopes.module().types ) {
      NumbersChecker( scopes, evaluator, *draft ).flags();
   }
   for ( const auto & draft : scopes.module().types ) {
      NumbersChecker( scopes, evaluator, *draft ).constants();
   }
   for ( const auto & draft : scopes.module().types ) {
      NumbersChecker( scopes, evaluator, *draft ).options();
   }
}

} // namespace VokGen
