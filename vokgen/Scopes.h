// What names mean: looked up in the own type, its namespace, outward, then as full names.
#pragma once

#include "vokgen/Draft.h"

#include <optional>

namespace VokGen {

/// Where types may stand.
enum class TypeUse {
   value, ///< Held by value: fields, keys, elements, defaults.
   entity, ///< Children, references, bases.
   parameter ///< Parameters and results: values and external types.
};

/// Looks names up for one module, and reports those that mean nothing.
class Scopes {
 public:
   Scopes( Workspace & workspace, ModuleDraft & module );

   /// The symbol that a name means inside `scope` (a namespace or the full name of a type), in this
   /// module or one that it uses; null where there is none.
   const Symbol * find( const std::string & scope, const std::string & name ) const;

   /// The type that a name means. Where it means none, or none of that use, reports it once and
   /// gives nothing; gives nothing in silence where the declaration may have been lost with an
   /// error.
   std::optional< Model::Type > resolve( const std::string & scope, const Ast::Name & name,
         TypeUse use ) const;

   /// The draft of a type that a name means, whatever its kind; reports as resolve() does.
   TypeDraft * resolveDraft( const std::string & scope, const Ast::Name & name ) const;

   void error(
         Range range, Message message, const std::vector< std::string > & arguments = {} ) const;
   void note(
         Location where, Message message, const std::vector< std::string > & arguments = {} ) const;
   Location location( Range range ) const { return { module_.source->file, range }; }

   /// No further error will be kept: candidates for a suggestion need not be collected.
   bool isFull() const { return workspace_.diagnostics.isFull(); }
   Workspace & workspace() const { return workspace_; }
   ModuleDraft & module() const { return module_; }

 private:
   bool visible( const Symbol & symbol ) const;
   bool mayBeLost() const;
   void reportUnknown( const std::string & scope, const Ast::Name & name ) const;
   std::vector< std::string > visibleNames( const std::string & scope ) const;
   std::optional< Model::Type > typeOf( const Symbol & symbol, const Ast::Name & name,
         TypeUse use ) const;

   Workspace & workspace_;
   ModuleDraft & module_;
};

/// Whether the parts of a type may be relied upon: nothing about it has been reported.
bool isSound( const Scopes & scopes, const Model::Type & type );

/// A built-in type or a type of the framework; nothing for any other name.
std::optional< Model::Type > builtInType( const std::string & name );

/// The use of a declared type as the type of something.
Model::Type typeOf( const Model::TypeDeclaration & declaration );

/// "; did you mean 'x'?" for the candidate that is nearest to a misspelt name; empty where none is
/// near. For many candidates it gives up.
std::string suggestion( std::string_view name, std::vector< std::string > candidates );

} // namespace VokGen
