// The command line of vokgen.
#pragma once

#include <string>
#include <vector>

namespace VokGen {

struct Options {
   enum class Action {
      generate, ///< Write the files of the module.
      check, ///< Only report errors.
      fingerprint, ///< Print the module's fingerprint.
      help ///< Print how vokgen is called.
   };
   Action action = Action::generate;
   std::string outFolder;
   std::vector< std::string > importFolders;
   std::string dependencyFile; ///< Empty for none.
   std::string definitionFile;
   std::string usageError; ///< What is wrong with the command line; empty where nothing is.
};

/// Reads the arguments after the program's name.
Options parseOptions( const std::vector< std::string > & arguments );

/// How vokgen is called, for --help and behind a usage error.
std::string usage();

} // namespace VokGen
