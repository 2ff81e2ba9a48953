// From a definition file to its checked model: all stages before the emitters, in one call.
#pragma once

#include "vokgen/Model.h"

#include <memory>
#include <string>
#include <vector>

namespace VokGen {

struct Compilation {
   /// The module; null where anything was reported. It keeps the modules that it uses alive.
   std::shared_ptr< const Model::Module > module;
   std::string errors; ///< As they are printed; empty where there are none.
   std::vector< std::string > files; ///< Every file that was read, the first one first.
};

/// Compiles a definition file. Used modules are found below the import folders. Throws nothing but
/// std::bad_alloc, whatever the file holds.
Compilation compile( const std::string & path, const std::vector< std::string > & importFolders );

/// The same for a text; `path` is how messages name it.
Compilation compileText( const std::string & path, std::string text,
      const std::vector< std::string > & importFolders );

} // namespace VokGen
