// The emitters' entry: the files that a module becomes.
#pragma once

#include <string>
#include <vector>

namespace VokGen {

namespace Model {
struct Module;
} // namespace Model

/// A file to write, below the folder of the command line's --out.
struct OutputFile {
   std::string path; ///< Relative, such as "ApplicationId.reflect.cpp".
   std::string text;
};

/// All files of a module, the same for the same model. Writes nothing itself.
std::vector< OutputFile > emitModule( const Model::Module & module );

} // namespace VokGen
