// Models in the making: what the checker knows of types and attributes besides what it will
// publish.
#pragma once

#include "vokgen/Ast.h"
#include "vokgen/Diagnostics.h"
#include "vokgen/Model.h"

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace VokGen {

/// An attribute on its way through the stages of the checker.
struct AttributeDraft {
   enum class Evaluation {
      pending,
      running,
      done
   };

   Model::Attribute * attribute = nullptr;
   const Ast::Member * source = nullptr; ///< Of a mask, the flag that names it.
   bool flawed = false; ///< Reported; nothing that depends on it is reported again.
   Evaluation evaluation = Evaluation::pending; ///< Of a constant.
};

/// A type on its way through the stages. Enumerations have no attributes.
struct TypeDraft {
   Model::TypeDeclaration * type = nullptr;
   const Ast::Type * source = nullptr;
   const SourceFile * file = nullptr;
   /// Reported: what it contains, or how it behaves, is not to be relied upon.
   bool flawed = false;
   /// A member may be missing, or one of its names was lost with a broken declaration.
   bool incomplete = false;
   std::size_t height = 1; ///< Of a value: values within values, itself included.
   std::size_t parts = 0; ///< Of a value: fields, those of its values counted in their place.
   std::vector< std::unique_ptr< AttributeDraft > > attributes; ///< In declared order.
   std::unordered_map< std::string, AttributeDraft * > byName;
   /// Of an enumeration its own; of any other type those of the enumerations nested in it.
   std::unordered_map< std::string, const Model::Enumerator * > enumerators;
   const Model::Enumerator * zero = nullptr; ///< Of an enumeration, that of code 0.

   AttributeDraft * find( const std::string & name ) const
   {
      const auto found = byName.find( name );
      return found == byName.end() ? nullptr : found->second;
   }

   const Model::Enumerator * findEnumerator( const std::string & name ) const
   {
      const auto found = enumerators.find( name );
      return found == enumerators.end() ? nullptr : found->second;
   }
};

/// A module being checked, and those checked before it.
struct ModuleDraft {
   const Ast::Module * source = nullptr;
   std::shared_ptr< Model::Module > module;
   std::vector< ModuleDraft * > uses;
   bool incomplete = false; ///< A declaration of it was left out.
   std::vector< std::unique_ptr< TypeDraft > > types; ///< Nested ones after their holders.
};

/// What a full name stands for.
struct Symbol {
   ModuleDraft * module = nullptr;
   TypeDraft * type = nullptr;
   const Model::ExternalType * external = nullptr;
   Location where;
};

/// What the checks of all modules of a run share.
struct Workspace {
   explicit Workspace( Diagnostics & d ) : diagnostics( d ) {}

   Diagnostics & diagnostics;
   std::unordered_map< std::string, Symbol > symbols; ///< By full name.
   std::unordered_map< const Model::TypeDeclaration *, TypeDraft * > drafts;
   /// The module below the import folders that declares a type, loaded or not; empty where none
   /// does.
   std::function< std::string( const std::string & ) > moduleDeclaring;

   TypeDraft * draftOf( const Model::TypeDeclaration * type ) const
   {
      const auto found = drafts.find( type );
      return found == drafts.end() ? nullptr : found->second;
   }
   /// The enumerator of code 0; null where there is none.
   const Model::Enumerator * zeroOf( const Model::EnumType * type ) const
   {
      const TypeDraft * draft = draftOf( type );
      return draft ? draft->zero : nullptr;
   }
};

} // namespace VokGen
