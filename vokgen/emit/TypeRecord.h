// The reflection record of a value type, constants type or entity type, with the rows of its
// attributes.
#pragma once

#include "vokgen/Model.h"

#include <string>

namespace VokGen {

/// The definition of the type's VokTable, and of the functions that give an entity's record.
std::string typeRecord( const Model::RecordType & type );

} // namespace VokGen
