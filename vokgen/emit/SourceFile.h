// The .cpp of a module: what its functions do, as far as it is not written by hand.
#pragma once

#include "vokgen/Model.h"

#include <string>

namespace VokGen {

std::string sourceText( const Model::Module & module );

} // namespace VokGen
