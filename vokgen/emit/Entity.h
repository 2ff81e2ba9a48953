// Entity types in generated code.
#pragma once

#include "vokgen/Model.h"

#include <string>

namespace VokGen {

/// The class.
std::string entityClass( const Model::EntityType & type );

/// The factory, behind the class; empty for a type without one.
std::string entityFactory( const Model::EntityType & type );

/// Its inline members that stand behind all classes.
std::string entityInlines( const Model::EntityType & type );

/// Its members in the .cpp.
std::string entityDefinitions( const Model::EntityType & type );

} // namespace VokGen
