// Names that stand for a module as a whole.
#pragma once

#include "vokgen/Model.h"

#include <string>

namespace VokGen {

/// "Vok::Modules::Everything", the function that gives the module's reflection object.
std::string moduleFunction( const Model::Module & module );

/// "Everything.reflect.cpp": a file of the module, without a folder.
std::string moduleFile( const Model::Module & module, const std::string & ending );

/// The first lines of a file of the module.
std::string banner( const Model::Module & module );

} // namespace VokGen
