// How types are spelled in generated C++.
#pragma once

#include "vokgen/Model.h"

#include <string>
#include <string_view>
#include <vector>

namespace VokGen {

/// Where code stands: it decides how much of a full name has to be written.
class Scope {
 public:
   /// Outside of all namespaces: names are written in full.
   Scope() = default;
   /// In a namespace, outside of types.
   explicit Scope( std::string nameSpace ) : nameSpace_( std::move( nameSpace ) ) {}
   /// Among the members of a type, or in a definition of one of them.
   explicit Scope( const Model::TypeDeclaration & type );

   /// A full name without the namespace that the code stands in. It stays in full where a nested
   /// enumeration hides what would be left of it.
   std::string name( std::string_view fullName ) const;

   /// A value's type: "std::uint32_t", "Level", "Wyre::IpAddr".
   std::string type( const Model::Type & type ) const { return name( type.cppName ); }

   /// How a value is given and taken: scalars by value, all else as `const T &`.
   std::string given( const Model::Type & type ) const;

   /// How a key is asked for: texts as std::string_view, so that none has to be made.
   std::string query( const Model::Type & key ) const;

   /// What a constructor argument is taken as, and what it is stored as.
   std::string argumentGiven( const Model::Attribute & argument ) const;
   std::string argumentType( const Model::Attribute & argument ) const;

   /// "Corvo::Ptr< Tree >"
   std::string pointer( const Model::TypeDeclaration & entity ) const;
   std::string constPointer( const Model::TypeDeclaration & entity ) const;

   /// "const Corvo::String & name, std::uint32_t seqno"
   std::string parameters( const std::vector< const Model::Attribute * > & arguments ) const;
   std::string parameters( const Model::Function & function ) const;

   /// What a function returns; "void" for one that returns nothing.
   std::string result( const Model::Function & function ) const;

 private:
   std::string nameSpace_;
   const Model::RecordType * type_ = nullptr;
};

/// "name, seqno"
std::string names( const std::vector< const Model::Attribute * > & attributes );

/// A parameter list with a blank inside its parentheses, none where it is empty.
std::string inParentheses( std::string_view parameters );

/// Whether values of a type can be constants of the compiler: its class is literal.
bool isLiteral( const Model::Type & type );
bool isLiteral( const Model::ValueType & type );

} // namespace VokGen
