// How values that a definition states stand in generated files: as C++, and as the text that the
// framework reads and writes.
#pragma once

#include "vokgen/Model.h"
#include "vokgen/emit/Spelling.h"

#include <cstdint>
#include <optional>
#include <string>

namespace VokGen {

/// "5", "4294967295U"
std::string numberLiteral( std::uint64_t number );

/// A value of a type as a C++ expression: `5`, `Colour::red`, `Level( 3 )`,
/// `Corvo::String( "none" )`.
std::string literal( const Model::Constant & value, const Model::Type & type, const Scope & scope );

/// The number that a constant of a number or enumeration stands for.
std::uint64_t numberOf( const Model::Constant & value );

/// The text of a value as the framework prints it; nothing where only the running program knows it:
/// a text form written by hand, a collection.
std::optional< std::string > canonicalText(
      const Model::Constant & value, const Model::Type & type );

} // namespace VokGen
