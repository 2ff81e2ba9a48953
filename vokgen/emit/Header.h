// The header of a module.
#pragma once

#include "vokgen/Model.h"

#include <string>

namespace VokGen {

std::string headerText( const Model::Module & module );

} // namespace VokGen
