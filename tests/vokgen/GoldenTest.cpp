// What is generated for each construct of the language: golden/<feature>/in.vok, with the expected
// files beside it. Modules that it uses lie in imports/.
#include "tests/vokgen/ExpectedText.h"
#include "vokgen/Compiler.h"
#include "vokgen/emit/Emit.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace VokGenTest {
namespace {

fs::path goldenFolder() { return testFolder() / "golden"; }

std::vector< std::string > features()
{
   std::vector< std::string > names;
   for ( const fs::directory_entry & entry : fs::directory_iterator( goldenFolder() ) ) {
      names.push_back( entry.path().filename().string() );
   }
   std::sort( names.begin(), names.end() );
   return names;
}

/// Every golden is the definition of a module Sample.
VokGen::Compilation compiled( const std::string & feature )
{
   const fs::path folder = goldenFolder() / feature;
   const WorkingFolder inside( folder );
   std::vector< std::string > imports;
   if ( fs::exists( "imports" ) ) {
      imports.push_back( "imports" );
   }
   return VokGen::compileText( "Sample.vok", readFile( folder / "in.vok" ), imports );
}

class GoldenTest : public ::testing::TestWithParam< std::string > {};

TEST_P( GoldenTest, generatesWhatIsExpected )
{
   const VokGen::Compilation made = compiled( GetParam() );
   ASSERT_EQ( made.errors, "" );
   const std::string stem = "Sample";
   for ( const VokGen::OutputFile & file : VokGen::emitModule( *made.module ) ) {
      ASSERT_EQ( file.path.substr( 0, stem.size() ), stem );
      expectText( goldenFolder() / GetParam() / ( "expected" + file.path.substr( stem.size() ) ),
            file.text );
   }
}

std::string testName( const ::testing::TestParamInfo< std::string > & feature )
{
   std::string name = feature.param;
   std::replace( name.begin(), name.end(), '-', '_' );
   return name;
}

INSTANTIATE_TEST_SUITE_P( Features, GoldenTest, ::testing::ValuesIn( features() ), testName );

/// The texts of all files of a module with every construct, one after the other.
std::string everything()
{
   const VokGen::Compilation made =
         VokGen::compile( ( testFolder().parent_path() / "model/Everything.vok" ).string(), {} );
   EXPECT_EQ( made.errors, "" );
   std::string all;
   for ( const VokGen::OutputFile & file : VokGen::emitModule( *made.module ) ) {
      all += file.text;
   }
   return all;
}

TEST( Emission, isTheSameEachTime ) { EXPECT_EQ( everything(), everything() ); }

TEST( Emission, namesNoFolder )
{
   EXPECT_EQ( everything().find( testFolder().parent_path().string() ), std::string::npos );
}

} // namespace
} // namespace VokGenTest
