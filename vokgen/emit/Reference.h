// The reference page of a module, in Markdown, for those who run the switch rather than program it.
#pragma once

#include "vokgen/Model.h"

#include <string>

namespace VokGen {

std::string referenceText( const Model::Module & module );

/// The section of one type: what it is, and a table of what it has.
std::string typeSection( const Model::TypeDeclaration & type );

} // namespace VokGen
