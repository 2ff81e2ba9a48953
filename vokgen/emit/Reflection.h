// The reflection records of a module, in a file of their own.
#pragma once

#include "vokgen/Model.h"

#include <string>

namespace VokGen {

std::string reflectionText( const Model::Module & module );

} // namespace VokGen
