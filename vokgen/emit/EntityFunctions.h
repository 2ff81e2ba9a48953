// The functions that each entity type has besides those of its attributes: how it is made, and how
// it is made again.
#pragma once

#include "vokgen/Model.h"

#include <string>

namespace VokGen {

/// The static T::TIs, and in the .cpp its definition.
std::string creatorDeclaration( const Model::EntityType & type );
std::string creatorDefinition( const Model::EntityType & type );

/// The constructor, which is not for clients, and in the .cpp its definition.
std::string constructorDeclaration( const Model::EntityType & type );
std::string constructorDefinition( const Model::EntityType & type );

/// What happens to an entity that exists when it is instantiated again: constant arguments have to
/// be the same, settable ones are set. A derived type has that of its base.
std::string reinstantiateDeclaration( const Model::EntityType & type );
std::string reinstantiateDefinition( const Model::EntityType & type );

std::string instantiateDeclaration(
      const Model::EntityType & type, const std::string & documentation );
std::string instantiateDefinition( const Model::EntityType & type );

} // namespace VokGen
