// Constants types: static constants and functions, and nested enumerations.
#pragma once

#include "vokgen/Model.h"

#include <string>

namespace VokGen {

std::string constantsClass( const Model::ConstantsType & type );

/// Nested enumerations as they stand first in the class that holds them, with their EInstance().
std::string nestedEnums( const Model::RecordType & type );

} // namespace VokGen
