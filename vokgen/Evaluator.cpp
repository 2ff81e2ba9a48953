#include "vokgen/Evaluator.h"

#include <limits>

namespace VokGen {
namespace {

bool isReal( const Model::Type & type )
{
   return type.kind == Model::TypeKind::real || type.kind == Model::TypeKind::seconds ||
         type.kind == Model::TypeKind::duration;
}

/// What messages say is wanted where a type is.
std::string wantedFor( const Model::Type & type )
{
   switch ( type.kind ) {
   case Model::TypeKind::boolean:
      return "'true' or 'false'";
   case Model::TypeKind::number:
      return "a number from 0 to " + std::to_string( type.largest() );
   case Model::TypeKind::real:
   case Model::TypeKind::seconds:
   case Model::TypeKind::duration:
      return "a number or 'infinity'";
   case Model::TypeKind::text:
      return "a text in quotes";
   case Model::TypeKind::enumeration:
      return "an enumerator of " + type.fullName;
   default:
      return "a value of " + type.fullName;
   }
}

Model::Expression ofTerm( std::string text, Model::Term term )
{
   Model::Expression result;
   result.text = std::move( text );
   result.value.kind = Model::Constant::Kind::integer;
   result.value.integer = term.integer;
   result.terms.push_back( term );
   return result;
}

/// A term as messages print it.
std::string textOf( const Model::Term & term )
{
   if ( term.constant ) {
      return term.constant->fullName();
   }
   return term.enumerator ? term.enumerator->fullName() : std::to_string( term.integer );
}

Model::Expression ofReal( std::string text, double value )
{
   Model::Expression result;
   result.text = std::move( text );
   result.value.kind = Model::Constant::Kind::real;
   result.value.real = value;
   return result;
}

} // namespace

std::string quoted( std::string_view text )
{
   constexpr std::string_view digits = "0123456789ABCDEF";
   std::string result = "\"";
   for ( const char c : text ) {
      const auto byte = static_cast< unsigned char >( c );
      if ( c == '"' || c == '\\' ) {
         result += { '\\', c };
      } else if ( c == '\n' ) {
         result += "\\n";
      } else if ( c == '\t' ) {
         result += "\\t";
      } else if ( byte < 0x20U || byte >= 0x7FU ) {
         result += { '\\', 'x', digits[ byte >> 4U ], digits[ byte & 15U ] };
      } else {
         result += c;
      }
   }
   return result + "\"";
}

std::optional< Model::Expression > Evaluator::mismatch( Range range, const std::string & found,
      const Model::Type & expected )
{
   scopes_.error( range, Message::wrongValue, { wantedFor( expected ), found } );
   return std::nullopt;
}

bool Evaluator::fits( std::uint64_t value, const std::string & text, Range range,
      const Model::Type & type )
{
   const bool good = value <= type.largest();
   if ( !good ) {
      scopes_.error( range, Message::doesNotFit,
            { text, type.fullName, std::to_string( type.largest() ) } );
   }
   return good;
}

std::optional< Model::Expression > Evaluator::evaluate( const Ast::Expression & expression,
      const Model::Type & expected, const TypeDraft & inside )
{
   if ( !isSound( scopes_, expected ) ) {
      return std::nullopt;
   }
   const Model::Type * innermost = expected.innermost();
   if ( expression.kind == Ast::Expression::Kind::word ) {
      return word( expression, expected, innermost ? *innermost : expected, inside );
   }
   if ( !innermost ) {
      scopes_.error( expression.range, Message::severalFields, { expected.fullName } );
      return std::nullopt;
   }
   if ( expression.kind == Ast::Expression::Kind::sum ) {
      return sum( expression, *innermost, inside );
   }
   if ( expression.kind == Ast::Expression::Kind::text ) {
      if ( innermost->kind != Model::TypeKind::text ) {
         return mismatch( expression.range, quoted( expression.text ), *innermost );
      }
      Model::Expression result;
      result.text = quoted( expression.text );
      result.value.kind = Model::Constant::Kind::text;
      result.value.text = expression.text;
      return result;
   }
   return number( expression, *innermost );
}

std::optional< Model::Expression > Evaluator::number( const Ast::Expression & expression,
      const Model::Type & innermost )
{
   const bool integer = expression.kind == Ast::Expression::Kind::integer;
   const double sign = expression.negative ? -1.0 : 1.0;
   if ( isReal( innermost ) ) {
      const double value = integer ? static_cast< double >( expression.integer ) : expression.real;
      return ofReal( expression.text, sign * value );
   }
   const bool whole = innermost.kind == Model::TypeKind::number && integer;
   if ( !whole ) {
      return mismatch( expression.range, expression.text, innermost );
   }
   if ( expression.negative && expression.integer != 0 ) {
      scopes_.error( expression.range, Message::doesNotFit,
            { expression.text, innermost.fullName, std::to_string( innermost.largest() ) } );
      return std::nullopt;
   }
   if ( !fits( expression.integer, expression.text, expression.range, innermost ) ) {
      return std::nullopt;
   }
   Model::Term term;
   term.integer = expression.integer;
   return ofTerm( std::to_string( expression.integer ), term );
}

std::optional< Model::Expression > Evaluator::word( const Ast::Expression & expression,
      const Model::Type & expected, const Model::Type & innermost, const TypeDraft & inside )
{
   const bool truth = expression.text == "true" || expression.text == "false";
   if ( truth ) {
      if ( innermost.kind != Model::TypeKind::boolean || expression.negative ) {
         return mismatch( expression.range, "'" + expression.text + "'", innermost );
      }
      Model::Expression result;
      result.text = expression.text;
      result.value.kind = Model::Constant::Kind::boolean;
      result.value.boolean = expression.text == "true";
      return result;
   }
   if ( expression.text == "infinity" && isReal( innermost ) ) {
      const double infinity = std::numeric_limits< double >::infinity();
      return expression.negative ? ofReal( "-infinity", -infinity )
                                 : ofReal( "infinity", infinity );
   }
   if ( expression.text == "infinity" ) {
      return mismatch( expression.range, "'infinity'", innermost );
   }
   if ( expression.negative ) {
      return mismatch( expression.range, "'-' before a name", innermost );
   }
   const Meaning meaning =
         find( expression.text, expression.range, innermost.enumeration, inside );
   if ( meaning.constant ) {
      return constant( *meaning.constant, expression.range, expected, innermost );
   }
   if ( !meaning.enumerator ) {
      return std::nullopt;
   }
   if ( meaning.enumerator->type != innermost.enumeration ) {
      return mismatch( expression.range, "an enumerator of " + meaning.enumerator->type->fullName,
            innermost );
   }
   Model::Term term;
   term.integer = meaning.enumerator->code;
   term.enumerator = meaning.enumerator;
   Model::Expression result = ofTerm( meaning.enumerator->fullName(), term );
   result.value.kind = Model::Constant::Kind::enumerator;
   result.value.enumerator = meaning.enumerator;
   return result;
}

/// A constant by name: its type is the expected one, or of the same kind as its innermost field.
std::optional< Model::Expression > Evaluator::constant( const Model::Attribute & constant,
      Range range, const Model::Type & expected, const Model::Type & innermost )
{
   const bool sameType = constant.type == expected || constant.type == innermost;
   const bool bothReal = isReal( innermost ) && constant.type.kind == Model::TypeKind::real;
   const bool bothNumbers = innermost.kind == Model::TypeKind::number &&
         constant.type.kind == Model::TypeKind::number;
   if ( !sameType && !bothReal && !bothNumbers ) {
      return mismatch( range, "a constant of type " + constant.type.fullName, innermost );
   }
   Model::Expression result;
   result.text = constant.fullName();
   result.value = constant.value.value;
   Model::Term term;
   term.constant = &constant;
   term.integer = result.value.integer;
   if ( result.value.kind == Model::Constant::Kind::enumerator ) {
      term.integer = result.value.enumerator->code;
   }
   result.terms.push_back( term );
   if ( bothNumbers && !fits( term.integer, result.text, range, innermost ) ) {
      return std::nullopt;
   }
   return result;
}

std::optional< Model::Term > Evaluator::term( const Ast::Term & source, const TypeDraft & inside )
{
   Model::Term result;
   result.subtracted = source.subtracted;
   result.integer = source.integer;
   if ( source.kind == Ast::Term::Kind::integer ) {
      return result;
   }
   const Meaning meaning = find( source.name.text, source.name.range, nullptr, inside );
   if ( !meaning.constant && !meaning.enumerator ) {
      return std::nullopt;
   }
   result.constant = meaning.constant;
   result.enumerator = meaning.enumerator;
   if ( meaning.enumerator ) {
      result.integer = meaning.enumerator->code;
      return result;
   }
   const Model::Constant & value = meaning.constant->value.value;
   if ( value.kind == Model::Constant::Kind::enumerator ) {
      result.integer = value.enumerator->code;
   } else if ( value.kind == Model::Constant::Kind::integer ) {
      result.integer = value.integer;
   } else {
      scopes_.error( source.name.range, Message::sumOfOther,
            { source.name.text, meaning.constant->type.fullName } );
      return std::nullopt;
   }
   return result;
}

std::optional< Model::Expression > Evaluator::sum( const Ast::Expression & expression,
      const Model::Type & innermost, const TypeDraft & inside )
{
   if ( innermost.kind != Model::TypeKind::number ) {
      return mismatch( expression.range, "a sum", innermost );
   }
   Model::Expression result;
   result.value.kind = Model::Constant::Kind::integer;
   std::uint64_t total = 0;
   bool inRange = true;
   for ( const Ast::Term & source : expression.terms ) {
      const std::optional< Model::Term > term = this->term( source, inside );
      if ( !term ) {
         return std::nullopt;
      }
      const bool subtracted = term->subtracted;
      const std::uint64_t sum = subtracted ? total - term->integer : total + term->integer;
      inRange = inRange && ( subtracted ? term->integer <= total : sum >= total );
      total = sum;
      if ( !result.terms.empty() ) {
         result.text += subtracted ? " - " : " + ";
      }
      result.text += textOf( *term );
      result.terms.push_back( *term );
   }
   result.text = "(" + result.text + ")";
   if ( !inRange ) {
      scopes_.error( expression.range, Message::sumOutOfRange, { result.text } );
      return std::nullopt;
   }
   result.value.integer = total;
   const std::string shown = result.text + " = " + std::to_string( total );
   if ( !fits( total, shown, expression.range, innermost ) ) {
      return std::nullopt;
   }
   return result;
}

} // namespace VokGen
