// What expressions are worth: numbers, texts, enumerators, constants by name, sums.
#pragma once

#include "vokgen/Scopes.h"

#include <optional>

namespace VokGen {

/// Evaluates expressions for one module. Constants are evaluated when they are first named.
class Evaluator {
 public:
   explicit Evaluator( const Scopes & scopes ) : scopes_( scopes ) {}

   /// The value of an expression that stands inside `inside` where something of type `expected` is
   /// wanted: a number that fits its width, one of its enumerators, …. For a value type with one
   /// field that is what its innermost field takes. Reports what is wrong once, and gives nothing
   /// then.
   std::optional< Model::Expression > evaluate( const Ast::Expression & expression,
         const Model::Type & expected, const TypeDraft & inside );

   /// The value of a constant of this module, evaluated if it has not been. False where it is
   /// flawed.
   bool ensure( AttributeDraft & constant, TypeDraft & owner );

 private:
   /// What a name in an expression means. Both null: nothing, and that has been reported.
   struct Meaning {
      const Model::Attribute * constant = nullptr;
      const Model::Enumerator * enumerator = nullptr;
   };

   Meaning find( const std::string & name, Range range, const Model::EnumType * wanted,
         const TypeDraft & inside );
   Meaning findBare( const std::string & name, Range range, const Model::EnumType * wanted,
         const TypeDraft & inside );
   Meaning findQualified( const std::string & name, Range range, const Model::EnumType * wanted,
         const TypeDraft & inside );
   Meaning memberOf( TypeDraft & type, const std::string & name, Range range );
   Meaning constantOf( AttributeDraft & draft, TypeDraft & owner, Range range );
   std::optional< Model::Expression > word( const Ast::Expression & expression,
         const Model::Type & expected, const Model::Type & innermost, const TypeDraft & inside );
   std::optional< Model::Expression > constant( const Model::Attribute & constant, Range range,
         const Model::Type & expected, const Model::Type & innermost );
   std::optional< Model::Expression > sum( const Ast::Expression & expression,
         const Model::Type & innermost, const TypeDraft & inside );
   std::optional< Model::Expression > number( const Ast::Expression & expression,
         const Model::Type & innermost );
   std::optional< Model::Term > term( const Ast::Term & source, const TypeDraft & inside );
   std::optional< Model::Expression > mismatch( Range range, const std::string & found,
         const Model::Type & expected );
   bool fits(
         std::uint64_t value, const std::string & text, Range range, const Model::Type & type );

   const Scopes & scopes_;
   std::size_t depth_ = 0;
   bool tooDeep_ = false; ///< Reported; pieces of that chain are not reported again.
};

/// A text as it is written in a definition: quoted, with escapes.
std::string quoted( std::string_view text );

} // namespace VokGen
