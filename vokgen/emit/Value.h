// Value types in generated code.
#pragma once

#include "vokgen/Model.h"

#include <string>

namespace VokGen {

/// The class.
std::string valueClass( const Model::ValueType & type );

/// Its inline members that stand behind all classes.
std::string valueInlines( const Model::ValueType & type );

/// Its members in the .cpp.
std::string valueDefinitions( const Model::ValueType & type );

/// The specialisation of std::hash; empty for a type without a hash.
std::string valueHash( const Model::ValueType & type );

// ---- Constructors: ValueConstructors.cpp ------------------------------------------------------

/// The declarations of all constructors, those that are inline with their definitions.
std::string valueConstructors( const Model::ValueType & type );

/// The constructors that stand in the .cpp, and the reading of a log.
std::string valueConstructorDefinitions( const Model::ValueType & type );

} // namespace VokGen
