// The names of everything generated, and the names that a definition may not use: each rule once.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace VokGen::Names {

/// First letter in upper case: "ftStatus" → "FtStatus".
std::string capitalised( std::string_view name );
/// First letter in lower case: "FgConfig" → "fgConfig".
std::string uncapitalised( std::string_view name );

// Of an attribute or field x. Its accessor is x itself.
std::string mutator( std::string_view x ); ///< xIs
std::string mutatorByText( std::string_view x ); ///< vokXIs, with a key of any text
std::string remover( std::string_view x ); ///< xDel
std::string clearer( std::string_view x ); ///< xDelAll
std::string incrementer( std::string_view x ); ///< xInc
std::string secondLookup( std::string_view x ); ///< xGet
std::string boundsCheck( std::string_view x ); ///< checkX
std::string attributeId( std::string_view x ); ///< xAttrId
std::string dataMember( std::string_view x ); ///< x_
std::string hashNode( std::string_view x ); ///< HN_X, of a hashed collection or a set
std::string orderedNode( std::string_view x ); ///< VokX, of an ordered collection
std::string keyFunctor( std::string_view x ); ///< XKeyFunktor, of a collection keyed by its members

// Of a type T.
std::string factory( std::string_view type ); ///< tFactory, in T's namespace
std::string creator( std::string_view type ); ///< TIs, static in T
std::string instance( std::string_view enumeration ); ///< EInstance

/// The reflection object: "_<Module>_<16 hexadecimal digits>_vokModule".
std::string reflectionObject( std::string_view module, std::uint64_t fingerprint );

/// A number as 16 hexadecimal digits, lower case.
std::string hexadecimal( std::uint64_t number );

/// C++ keywords, and names that the C++ library defines as macros: no declared name may be one.
bool isCppKeyword( std::string_view name );
/// Whether a name has the form of names that only generated code and the framework give: `vok…`,
/// `HN_…`, `…AttrId`, `…KeyFunktor`, `FlowOut`. No declared name has one.
bool isGeneratedForm( std::string_view name );
/// Members that every entity has besides its attributes: `parent`, `publisher`, ….
std::span< const std::string_view > entityMembers();
/// Functions that every value has: `isEq`, ….
std::span< const std::string_view > valueMembers();
/// Functions of values whose attribute log is written by hand.
std::span< const std::string_view > handLogMembers();
/// Functions that every enumeration or value has in its namespace.
std::span< const std::string_view > freeFunctions();
/// Whether generated code names things in this namespace, whatever the module.
bool isFrameworkNamespace( std::string_view name );

} // namespace VokGen::Names
