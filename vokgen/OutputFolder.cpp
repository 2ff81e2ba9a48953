#include "vokgen/OutputFolder.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <unistd.h>

namespace fs = std::filesystem;

namespace VokGen {
namespace {

bool holds( const fs::path & path, const std::string & text )
{
   std::error_code failed;
   if ( fs::file_size( path, failed ) != text.size() || failed ) {
      return false;
   }
   std::ifstream file( path, std::ios::binary );
   std::string now( text.size(), '\0' );
   file.read( now.data(), static_cast< std::streamsize >( now.size() ) );
   return file && now == text;
}

/// A path as it stands in a rule of make.
std::string escaped( const std::string & path )
{
   std::string result;
   for ( const char c : path ) {
      if ( c == ' ' || c == '#' || c == '\\' ) {
         result += '\\';
      } else if ( c == '$' ) {
         result += '$';
      }
      result += c;
   }
   return result;
}

} // namespace

void writeFile( const std::string & path, const std::string & text )
{
   // The process id keeps two runs apart that write into one folder.
   const std::string temporary = path + ".tmp" + std::to_string( ::getpid() );
   std::ofstream file( temporary, std::ios::binary | std::ios::trunc );
   file << text;
   file.close();
   std::error_code failed;
   if ( file ) {
      fs::rename( temporary, path, failed );
   }
   if ( !file || failed ) {
      std::error_code ignored;
      fs::remove( temporary, ignored );
      throw std::runtime_error( "cannot write " + path );
   }
}

void writeFiles( const std::string & folder, const std::vector< OutputFile > & files )
{
   for ( const OutputFile & file : files ) {
      const fs::path path = fs::path( folder ) / file.path;
      std::error_code failed;
      fs::create_directories( path.parent_path(), failed );
      if ( failed ) {
         throw std::runtime_error( "cannot make the folder " + path.parent_path().string() );
      }
      if ( !holds( path, file.text ) ) {
         writeFile( path.string(), file.text );
      }
   }
}

std::string dependencyRule( const std::vector< std::string > & outputs,
      const std::vector< std::string > & inputs )
{
   std::string rule;
   for ( const std::string & output : outputs ) {
      rule += ( rule.empty() ? "" : " " ) + escaped( output );
   }
   rule += ":";
   for ( const std::string & input : inputs ) {
      rule += " \\\n  " + escaped( input );
   }
   return rule + "\n";
}

} // namespace VokGen
