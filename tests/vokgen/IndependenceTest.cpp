// What is generated depends on the definition files and on nothing around them: not on the locale,
// the time zone, the folders, or the order of import folders.
#include "tests/vokgen/ExpectedText.h"
#include "vokgen/Compiler.h"
#include "vokgen/OutputFolder.h"
#include "vokgen/emit/Emit.h"

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <locale>
#include <map>
#include <optional>

namespace fs = std::filesystem;

namespace VokGenTest {
namespace {

using Imports = std::vector< std::string >;

/// Numbers as many countries write them: 1.234,5.
class CommaNumbers : public std::numpunct< char > {
   char do_decimal_point() const override { return ','; }
   char do_thousands_sep() const override { return '.'; }
   std::string do_grouping() const override { return "\3"; }
   std::string do_truename() const override { return "wahr"; }
   std::string do_falsename() const override { return "falsch"; }
};

/// An environment variable with another value for as long as this lives.
class Variable {
 public:
   Variable( const char * name, const char * value ) : name_( name )
   {
      if ( const char * before = std::getenv( name ) ) {
         before_ = before;
      }
      ::setenv( name, value, 1 );
   }
   ~Variable()
   {
      if ( before_ ) {
         ::setenv( name_, before_->c_str(), 1 );
      } else {
         ::unsetenv( name_ );
      }
   }
   Variable( const Variable & ) = delete;
   Variable & operator=( const Variable & ) = delete;

 private:
   const char * name_;
   std::optional< std::string > before_;
};

/// The locales of the process as they are here, restored at the end.
class Locales {
 public:
   Locales() : names_( std::setlocale( LC_ALL, nullptr ) ) {}
   ~Locales()
   {
      std::locale::global( before_ );
      std::setlocale( LC_ALL, names_.c_str() );
   }
   Locales( const Locales & ) = delete;
   Locales & operator=( const Locales & ) = delete;

 private:
   std::locale before_;
   std::string names_;
};

/// Two modules, one with every kind of number and text, in a tree as that of a project.
class Project {
 public:
   Project()
   {
      const std::string imports = "golden/uses/imports/";
      folder_.write( "Rooms/Everything.vok",
            readFile( testFolder().parent_path() / "model/Everything.vok" ) );
      folder_.write( "Rooms/Sample.vok", readFile( testFolder() / "golden/uses/in.vok" ) );
      folder_.write( "Shapes/Deep/Shapes.vok", readFile( testFolder() / imports / "Shapes.vok" ) );
      folder_.write(
            "Colours/Deep/Colours.vok", readFile( testFolder() / imports / "Colours.vok" ) );
   }

   std::string path( const std::string & name ) const { return ( folder_.path() / name ).string(); }
   Imports imports() const { return { path( "" ), path( "Shapes" ), path( "Colours" ) }; }

 private:
   TemporaryFolder folder_;
};

/// All files of one module by their names, as they stand in an output folder.
std::map< std::string, std::string > generated( const std::string & file, const Imports & imports,
      const std::string & outFolder )
{
   const VokGen::Compilation made = VokGen::compile( file, imports );
   EXPECT_EQ( made.errors, "" );
   std::map< std::string, std::string > texts;
   if ( made.module ) {
      VokGen::writeFiles( outFolder, VokGen::emitModule( *made.module ) );
      for ( const auto & entry : fs::recursive_directory_iterator( outFolder ) ) {
         texts.emplace( entry.path().filename().string(), readFile( entry.path() ) );
      }
      fs::remove_all( outFolder );
   }
   EXPECT_EQ( texts.size(), 4U );
   return texts;
}

class Independence : public ::testing::Test {
 protected:
   std::map< std::string, std::string > everything() const
   {
      return generated( project_.path( "Rooms/Everything.vok" ), {}, project_.path( "gen" ) );
   }
   std::map< std::string, std::string > sample( const Imports & imports ) const
   {
      return generated( project_.path( "Rooms/Sample.vok" ), imports, project_.path( "gen" ) );
   }

   Project project_;
};

TEST_F( Independence, ofTheLocale )
{
   const auto expected = everything();
   const Locales restored;
   std::locale::global( std::locale( std::locale::classic(), new CommaNumbers ) );
   EXPECT_EQ( everything(), expected );
   for ( const char * name : { "C", "de_DE.UTF-8", "tr_TR.UTF-8", "ja_JP.UTF-8" } ) {
      const Variable all( "LC_ALL", name );
      const Variable language( "LANG", name );
      std::setlocale( LC_ALL, "" ); // Where it is not installed, nothing changes.
      EXPECT_EQ( everything(), expected ) << name;
   }
}

TEST_F( Independence, ofTheTimeZone )
{
   const auto expected = everything();
   for ( const char * zone : { "UTC", "Asia/Kathmandu", "XYZ+11:30" } ) {
      const Variable variable( "TZ", zone );
      ::tzset();
      EXPECT_EQ( everything(), expected ) << zone;
   }
   ::tzset();
}

TEST_F( Independence, ofTheWorkingFolder )
{
   const auto expected = sample( project_.imports() );
   {
      const WorkingFolder inside( project_.path( "" ) );
      EXPECT_EQ( generated( "Rooms/Sample.vok", { ".", "Shapes", "Colours" }, "gen" ), expected );
   }
   {
      const WorkingFolder inside( project_.path( "Rooms" ) );
      EXPECT_EQ( generated( "Sample.vok", { "..", "../Shapes/", "./../Colours" }, "gen" ),
            expected );
      EXPECT_EQ( sample( project_.imports() ), expected );
   }
}

TEST_F( Independence, ofTheOutputFolder )
{
   const auto expected = sample( project_.imports() );
   for ( const char * folder : { "other", "deep/er/still", "with blank" } ) {
      EXPECT_EQ( generated( project_.path( "Rooms/Sample.vok" ), project_.imports(),
                       project_.path( folder ) ),
            expected )
            << folder;
   }
}

TEST_F( Independence, ofTheOrderOfImportFolders )
{
   Imports imports = project_.imports();
   const auto expected = sample( imports );
   EXPECT_NE( expected.at( "Sample.h" ).find( "\"Deep/Shapes.h\"" ), std::string::npos );
   EXPECT_NE( expected.at( "Sample.reflect.cpp" ).find( "\"Rooms/Sample.h\"" ), std::string::npos );
   std::sort( imports.begin(), imports.end() );
   do {
      EXPECT_EQ( sample( imports ), expected );
   } while ( std::next_permutation( imports.begin(), imports.end() ) );
   imports.push_back( imports.front() );
   EXPECT_EQ( sample( imports ), expected );
}

} // namespace
} // namespace VokGenTest
