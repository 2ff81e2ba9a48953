// Enumerations in generated code.
#pragma once

#include "vokgen/Model.h"

#include <string>

namespace VokGen {

/// The `enum class` and its `using enum`, as they stand in the namespace or in the type that holds
/// them.
std::string enumDefinition( const Model::EnumType & type );

/// EInstance() by code and by name; static members of the type that holds a nested enumeration.
std::string enumInstances( const Model::EnumType & type );

/// What argument lookup finds in the namespace: names, reading, writing.
std::string enumFunctions( const Model::EnumType & type );

/// Table and record of the enumeration, for the reflection file; `identifier` is unique in it.
std::string enumTables( const Model::EnumType & type, const std::string & identifier );

} // namespace VokGen
