// The checked model of a module: what the emitters read. Everything in it is resolved, in range and
// complete; the checker builds it once, and nobody changes it afterwards.
#pragma once

#include "vokgen/ModelType.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace VokGen::Model {

/// A function that belongs to a namespace rather than to a type.
struct FreeFunction : Function {
   std::string nameSpace; ///< Such as "FlowTracking" or "A::B".
};

enum class TypeDeclarationKind {
   enumeration,
   constants,
   value,
   entity
};

/// A type that a module declares.
struct TypeDeclaration {
   explicit TypeDeclaration( TypeDeclarationKind k ) : kind( k ) {}
   virtual ~TypeDeclaration() = default;
   TypeDeclaration( const TypeDeclaration & ) = delete;
   TypeDeclaration & operator=( const TypeDeclaration & ) = delete;

   TypeDeclarationKind kind;
   std::string name; ///< "Status"
   std::string fullName; ///< "FlowTracking::PacketBuffer::Status"; also its C++ spelling.
   std::string nameSpace; ///< "FlowTracking": the namespace, without the type that holds it.
   /// UTF-8 without control characters but tabs; a line end stands between two paragraphs. Like all
   /// documentation of the model it may hold any mark-up and end in a backslash.
   std::string documentation;
   const Module * module = nullptr;
   const RecordType * holder = nullptr; ///< The type that a nested enumeration belongs to.
};

struct Enumerator {
   std::string name;
   std::string documentation;
   std::uint32_t code = 0;
   const EnumType * type = nullptr;

   std::string fullName() const; ///< "FlowTracking::EncapType::encapNone"
};

struct EnumType : TypeDeclaration {
   EnumType() : TypeDeclaration( TypeDeclarationKind::enumeration ) {}

   unsigned bits = 8; ///< 8, 16 or 32
   std::vector< std::unique_ptr< Enumerator > > enumerators; ///< In declared order, never empty.

   const Enumerator * find( std::string_view enumerator ) const;
   const Enumerator * withCode( std::uint64_t code ) const;
};

/// What a type with members has in common with its like.
struct RecordType : TypeDeclaration {
   using TypeDeclaration::TypeDeclaration;

   /// The type's own members that reflection lists, in ascending order of their ids: for a value
   /// that is fields and collections, then flags, then constants; for the others it is declared
   /// order.
   std::vector< std::unique_ptr< Attribute > > attributes;
   std::vector< std::unique_ptr< EnumType > > enums; ///< Nested, in declared order.
   std::vector< std::unique_ptr< Function > > methods; ///< Of a value: they take no id.

   const Attribute * find( std::string_view attribute ) const; ///< Own attributes only.
   std::vector< const Attribute * > ofKind( AttributeKind kind ) const;

   /// Types whose C++ definition must come before this one's: they are held by value, or derived
   /// from, or their constants are used. Some may belong to other modules. Each once.
   std::vector< const TypeDeclaration * > needsDefined;
   /// Types that it is enough to have declared before: children and referred entities.
   std::vector< const TypeDeclaration * > needsDeclared;
};

/// Static constants and static functions, without instances. Functions are attributes here.
struct ConstantsType : RecordType {
   ConstantsType() : RecordType( TypeDeclarationKind::constants ) {}
};

/// One `constructor( … )` written by hand.
struct ByHandConstructor {
   std::string documentation;
   std::vector< Parameter > parameters;
};

struct ValueType : RecordType {
   ValueType() : RecordType( TypeDeclarationKind::value ) {}

   bool ordered = false; ///< `<` over its fields in declared order
   bool fixed = false; ///< without mutators
   bool truth = false; ///< explicit operator bool: differs from the default
   bool hashable = true;
   bool textable = true; ///< has a text constructor; never for one that holds a collection
   bool textByHand = false; ///< its text form is written by hand
   std::optional< std::string > handDefault; ///< the text, as a string, of its default
   bool logByHand = false; ///< its attribute-log form is written by hand
   bool constructorsByHand = false; ///< none is generated from its fields
   std::vector< ByHandConstructor > constructors;

   /// Fields in the order in which the constructor takes them: `( id : T )` first, then the others.
   std::vector< const Attribute * > fields() const;
   /// The fields of `( id : T )`: they have no mutator, and where there are any, they alone are
   /// what the constructor takes.
   std::vector< const Attribute * > constructorArguments() const;
   std::vector< const Attribute * > collections() const;
   bool hasCollection() const { return !collections().empty(); }

   /// The only field of a type that has one field, no collection and no constructor argument; such
   /// a type is built from, compared with bounds as, and given defaults of, that field.
   const Attribute * onlyField() const;
   /// `validated "text"`: has a validate() that checks what construction does not.
   bool hasValidate() const;
};

enum class Identity {
   name, ///< `( name )`: Corvo::String, reflected as nameString, id 154.
   argument, ///< `identity x : T`: name() is its text.
   none ///< name() is empty.
};

struct EntityType : RecordType {
   EntityType() : RecordType( TypeDeclarationKind::entity ) {}

   const EntityType * base = nullptr;
   bool hasFactory = true;
   bool instantiates = false; ///< has instantiate(), be it with or without an id
   /// The plain `name` of an own argument list, as an attribute of id 154; null where there is
   /// none. It is not among `attributes`.
   std::unique_ptr< Attribute > nameArgument;
   /// `checks x`: bounds that the constructor checks as well, own and inherited attributes.
   std::vector< const Attribute * > checks;

   /// What constructor, T::TIs and factory take, in order; the base's for a derived type.
   const std::vector< const Attribute * > & constructorArguments() const;
   std::vector< const Attribute * > ownConstructorArguments;

   Identity identity() const;
   const Attribute * identityArgument() const; ///< The name or the `identity`; null for none.

   /// An own or inherited attribute, the plain name included; null where there is none.
   const Attribute * findWithBase( std::string_view attribute ) const;
   /// Inherited attributes first, then the own ones: ascending ids, without the plain name.
   std::vector< const Attribute * > allAttributes() const;
};

/// A C++ type from a header that no module stands for; only functions take or give it.
struct ExternalType {
   std::string fullName;
   std::string header; ///< As it is included: "FlowTracking/Client.h".
   std::string documentation;
};

struct Module {
   Module() = default;
   Module( const Module & ) = delete;
   Module & operator=( const Module & ) = delete;

   std::string name;
   std::string documentation;
   std::string fileName; ///< "ApplicationId.vok", without a folder.
   std::string header; ///< How others include it: "FlowTracker/ApplicationId.h".
   std::uint64_t fingerprint = 0;

   std::vector< std::shared_ptr< const Module > > uses; ///< In declared order.
   std::vector< std::unique_ptr< ExternalType > > externals;
   /// Types outside other types, in declared order.
   std::vector< std::unique_ptr< TypeDeclaration > > types;
   std::vector< std::unique_ptr< FreeFunction > > functions; ///< In declared order.

   /// All types in declared order, nested enumerations after the type that holds them: the order of
   /// the module's type table.
   std::vector< const TypeDeclaration * > allTypes() const;
   /// The types of `types` in an order in which C++ can define them.
   std::vector< const TypeDeclaration * > definitionOrder;

   std::string fingerprintText() const; ///< 16 hexadecimal digits, lower case.
};

/// The entity type, value type, … that a declaration is; null where it is another kind.
const EnumType * asEnum( const TypeDeclaration * );
const ConstantsType * asConstants( const TypeDeclaration * );
const ValueType * asValue( const TypeDeclaration * );
const EntityType * asEntity( const TypeDeclaration * );
const RecordType * asRecord( const TypeDeclaration * );

} // namespace VokGen::Model
