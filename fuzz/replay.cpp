// Runs a fuzzer's body over files and folders of files, as a test: it fails where a body ends the
// process, and where there is nothing to run.
#include "fuzz/Support.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <vector>

namespace fs = std::filesystem;

namespace {

// In order of their names, so that every run is the same.
std::set< fs::path > filesOf( const std::vector< fs::path > & arguments )
{
   std::set< fs::path > files;
   for ( const fs::path & argument : arguments ) {
      if ( !fs::is_directory( argument ) ) {
         files.insert( argument );
         continue;
      }
      const std::size_t before = files.size();
      for ( const fs::directory_entry & entry : fs::directory_iterator( argument ) ) {
         files.insert( entry.path() );
      }
      Fuzz::hold( files.size() != before, argument.string() + " holds inputs" );
   }
   return files;
}

} // namespace

int main( int argc, char ** argv )
{
   const std::set< fs::path > files = filesOf( { argv + 1, argv + argc } );
   Fuzz::hold( !files.empty(), "there are inputs" );
   for ( const fs::path & file : files ) {
      std::cout << file.string() << std::endl; // before a body that may end the process
      std::ifstream in( file, std::ios::binary );
      Fuzz::hold( in.is_open(), "the file can be read" );
      const std::vector< char > bytes{ std::istreambuf_iterator< char >( in ), {} };
      LLVMFuzzerTestOneInput(
            reinterpret_cast< const std::uint8_t * >( bytes.data() ), bytes.size() );
   }
   return 0;
}
