#include "tests/vokgen/ExpectedText.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <vector>

namespace fs = std::filesystem;

namespace VokGenTest {
namespace {

std::vector< std::string > linesOf( const std::string & text )
{
   std::vector< std::string > lines;
   std::istringstream stream( text );
   for ( std::string line; std::getline( stream, line ); ) {
      lines.push_back( line );
   }
   return lines;
}

/// The first difference, with a few lines around it.
std::string difference( const std::string & expected, const std::string & actual )
{
   const std::vector< std::string > before = linesOf( expected );
   const std::vector< std::string > after = linesOf( actual );
   std::size_t first = 0;
   while ( first < before.size() && first < after.size() && before[ first ] == after[ first ] ) {
      ++first;
   }
   constexpr std::size_t shown = 6;
   std::string result = "from line " + std::to_string( first + 1 ) + " on:\n";
   for ( std::size_t i = first; i < before.size() && i < first + shown; ++i ) {
      result += "- " + before[ i ] + "\n";
   }
   for ( std::size_t i = first; i < after.size() && i < first + shown; ++i ) {
      result += "+ " + after[ i ] + "\n";
   }
   return result;
}

} // namespace

fs::path testFolder() { return fs::path( TEST_SOURCE_DIR ); }

std::string readFile( const fs::path & path )
{
   std::ifstream file( path, std::ios::binary );
   std::ostringstream text;
   text << file.rdbuf();
   return text.str();
}

void expectText( const fs::path & file, const std::string & actual )
{
   if ( std::getenv( "VOKGEN_ACCEPT" ) ) {
      std::ofstream( file, std::ios::binary ) << actual;
      return;
   }
   ASSERT_TRUE( fs::exists( file ) ) << file << " is missing";
   const std::string expected = readFile( file );
   EXPECT_TRUE( expected == actual )
         << fs::relative( file, testFolder() ).string() << " (-) differs from what was made (+), "
         << difference( expected, actual )
         << "To accept what was made: VOKGEN_ACCEPT=1 ctest -R '^vokgen\\.', then read the diff.";
}

WorkingFolder::WorkingFolder( const fs::path & folder ) : before_( fs::current_path() )
{
   fs::current_path( folder );
}

WorkingFolder::~WorkingFolder() { fs::current_path( before_ ); }

TemporaryFolder::TemporaryFolder()
{
   std::string name = ( fs::temp_directory_path() / "vokgenXXXXXX" ).string();
   if ( !::mkdtemp( name.data() ) ) {
      throw std::runtime_error( "cannot make a temporary folder" );
   }
   path_ = name;
}

TemporaryFolder::~TemporaryFolder()
{
   std::error_code ignored;
   fs::remove_all( path_, ignored );
}

void TemporaryFolder::write( const std::string & name, const std::string & text ) const
{
   fs::create_directories( ( path_ / name ).parent_path() );
   std::ofstream( path_ / name, std::ios::binary ) << text;
}

} // namespace VokGenTest
