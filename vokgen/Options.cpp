#include "vokgen/Options.h"

#include <filesystem>

namespace VokGen {
namespace {

/// What is missing or contradicts itself when all arguments have been read.
std::string complaint( const Options & options )
{
   if ( options.definitionFile.empty() ) {
      return "expected a definition file";
   }
   const bool generates = options.action == Options::Action::generate;
   if ( generates && options.outFolder.empty() ) {
      return "expected '--out' and a folder, '--check' or '--fingerprint'";
   }
   if ( !generates && !options.outFolder.empty() ) {
      return "'--out' belongs to neither '--check' nor '--fingerprint', which write no files";
   }
   if ( !generates && !options.dependencyFile.empty() ) {
      return "'--depfile' belongs to neither '--check' nor '--fingerprint', which write no files";
   }
   for ( const std::string & folder : options.importFolders ) {
      std::error_code failed;
      if ( !std::filesystem::is_directory( folder, failed ) ) {
         return "'--import " + folder + "' is no folder";
      }
   }
   return {};
}

} // namespace

Options parseOptions( const std::vector< std::string > & arguments )
{
   Options options;
   for ( std::size_t i = 0; i < arguments.size(); ++i ) {
      const std::string & argument = arguments[ i ];
      const bool takesValue =
            argument == "--out" || argument == "--import" || argument == "--depfile";
      if ( takesValue && i + 1 == arguments.size() ) {
         options.usageError = "expected a path after '" + argument + "'";
         return options;
      }
      if ( argument == "--out" ) {
         options.outFolder = arguments[ ++i ];
      } else if ( argument == "--import" ) {
         options.importFolders.push_back( arguments[ ++i ] );
      } else if ( argument == "--depfile" ) {
         options.dependencyFile = arguments[ ++i ];
      } else if ( argument == "--check" ) {
         options.action = Options::Action::check;
      } else if ( argument == "--fingerprint" ) {
         options.action = Options::Action::fingerprint;
      } else if ( argument == "--help" ) {
         options.action = Options::Action::help;
         return options;
      } else if ( argument.size() > 1 && argument.front() == '-' ) {
         options.usageError = "unknown option '" + argument + "'";
         return options;
      } else if ( !options.definitionFile.empty() ) {
         options.usageError = "expected one definition file, found '" + options.definitionFile +
               "' and '" + argument + "'";
         return options;
      } else {
         options.definitionFile = argument;
      }
   }
   options.usageError = complaint( options );
   return options;
}

std::string usage()
{
   return "usage: vokgen --out DIR [--import DIR]... [--depfile FILE] FILE.vok\n"
          "       vokgen --check [--import DIR]... FILE.vok\n"
          "       vokgen --fingerprint [--import DIR]... FILE.vok\n"
          "\n"
          "Makes C++ and a reference page of a definition file.\n"
          "\n"
          "  --out DIR       the folder to write to; it is made if need be\n"
          "  --import DIR    a folder below which used modules are found, as MODULE.vok\n"
          "  --depfile FILE  write there, for make or Ninja, which files the output depends on\n"
          "  --check         only report errors\n"
          "  --fingerprint   print the fingerprint of the module\n"
          "\n"
          "Exit status: 0 done, 1 errors in a definition file or in writing, 2 wrong usage.\n";
}

} // namespace VokGen
