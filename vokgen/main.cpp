// The command line over the stages: compile, emit, write.
#include "vokgen/Compiler.h"
#include "vokgen/Options.h"
#include "vokgen/OutputFolder.h"
#include "vokgen/emit/Emit.h"

#include <exception>
#include <filesystem>
#include <iostream>

namespace VokGen {
namespace {

void generate( const Options & options, const Compilation & compilation )
{
   const std::vector< OutputFile > files = emitModule( *compilation.module );
   writeFiles( options.outFolder, files );
   if ( options.dependencyFile.empty() ) {
      return;
   }
   std::vector< std::string > outputs;
   outputs.reserve( files.size() );
   for ( const OutputFile & file : files ) {
      outputs.push_back( ( std::filesystem::path( options.outFolder ) / file.path ).string() );
   }
   writeFile( options.dependencyFile, dependencyRule( outputs, compilation.files ) );
}

int run( const Options & options )
{
   if ( options.action == Options::Action::help ) {
      std::cout << usage();
      return 0;
   }
   if ( !options.usageError.empty() ) {
      std::cerr << "vokgen: " << options.usageError << "\n"
                << usage();
      return 2;
   }
   const Compilation compilation = compile( options.definitionFile, options.importFolders );
   std::cerr << compilation.errors;
   if ( !compilation.module ) {
      return 1;
   }
   if ( options.action == Options::Action::fingerprint ) {
      std::cout << compilation.module->fingerprintText() << "\n";
   } else if ( options.action == Options::Action::generate ) {
      generate( options, compilation );
   }
   return 0;
}

} // namespace
} // namespace VokGen

int main( int argc, char ** argv )
{
   try {
      return VokGen::run( VokGen::parseOptions( { argv + 1, argv + argc } ) );
   } catch ( const std::exception & failure ) {
      std::cerr << "vokgen: error: " << failure.what() << "\n";
      return 1;
   }
}
