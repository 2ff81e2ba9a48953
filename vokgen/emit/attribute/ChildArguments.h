// The constructor arguments of a child, as the functions that make it take them.
#pragma once

#include "vokgen/Model.h"

#include <string>
#include <vector>

namespace VokGen {

/// The arguments of a child in order.
std::vector< const Model::Attribute * > childArguments( const Model::Attribute & children );

/// What happens to a child that exists already, in a sentence; nothing where its key is its only
/// argument.
std::string reinstantiationInWords( const Model::Attribute & children );

} // namespace VokGen
