// Tokens to tree: the grammar of the definition language (docs/language.md ends with it).
#pragma once

#include "vokgen/Ast.h"
#include "vokgen/Diagnostics.h"

namespace VokGen {

/// Parses a file. Errors are reported, and what could not be read is left out or marked as broken,
/// so that the tree may be checked all the same.
Ast::Module parse( const SourceFile & file, Diagnostics & diagnostics );

} // namespace VokGen
