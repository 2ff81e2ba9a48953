// Files written so that a build sees what changed: whole or not at all, and only when they differ.
#pragma once

#include "vokgen/emit/Emit.h"

#include <string>
#include <vector>

namespace VokGen {

/// Writes files into a folder, which is made if need be. A file whose text is the same already is
/// left alone, its time included; any other is written under a temporary name beside it and then
/// renamed. Throws std::runtime_error with a text for people where that fails.
void writeFiles( const std::string & folder, const std::vector< OutputFile > & files );

/// Writes one file in the same way, whatever it held.
void writeFile( const std::string & path, const std::string & text );

/// A rule for make and Ninja: each of `outputs` depends on all of `inputs`.
std::string dependencyRule( const std::vector< std::string > & outputs,
      const std::vector< std::string > & inputs );

} // namespace VokGen
