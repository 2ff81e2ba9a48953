// The program vokgen as a build calls it: what it writes, prints and returns.
#include "tests/vokgen/ExpectedText.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <set>

namespace VokGenTest {
namespace {

namespace fs = std::filesystem;

constexpr const char * good = R"(/// A module.
module Lamp
namespace Lamp {
value Watt {                                   /// Power.
   value : u32 = 60;                           /// watts
}
}
)";

class ProgramTest : public testing::Test {
 protected:
   struct Result {
      int status;
      std::string output;
      std::string errors;
   };

   fs::path path( const std::string & name ) const { return folder_.path() / name; }

   // Runs the program in the folder of the test.
   Result run( const std::string & arguments )
   {
      const std::string command = "cd '" + folder_.path().string() + "' && " VOKGEN " " +
            arguments + " > output 2> errors";
      const int status = std::system( command.c_str() );
      return { WEXITSTATUS( status ), readFile( path( "output" ) ), readFile( path( "errors" ) ) };
   }

   void write( const std::string & name, const std::string & text ) const
   {
      folder_.write( name, text );
   }

   std::set< std::string > made( const std::string & folder ) const
   {
      std::set< std::string > names;
      if ( fs::exists( path( folder ) ) ) {
         for ( const auto & entry : fs::directory_iterator( path( folder ) ) ) {
            names.insert( entry.path().filename().string() );
         }
      }
      return names;
   }

 private:
   TemporaryFolder folder_;
};

TEST_F( ProgramTest, writesTheFilesOfAModuleAndWhatTheyDependOn )
{
   write( "Lamp.vok", good );
   const Result result = run( "--out gen --depfile lamp.d Lamp.vok" );
   EXPECT_EQ( result.errors, "" );
   EXPECT_EQ( result.status, 0 );
   EXPECT_EQ( made( "gen" ),
         ( std::set< std::string >{ "Lamp.h", "Lamp.cpp", "Lamp.reflect.cpp", "Lamp.md" } ) );
   const std::string rule = readFile( path( "lamp.d" ) );
   EXPECT_TRUE( rule.starts_with( "gen/Lamp.h" ) ) << rule;
   EXPECT_NE( rule.find( ": " ), std::string::npos ) << rule;
   EXPECT_NE( rule.find( "Lamp.vok" ), std::string::npos ) << rule;
}

TEST_F( ProgramTest, writesNothingWhereAnythingIsWrong )
{
   write( "Lamp.vok", std::string( good ) + "value Watt { /// Again.\n}\n" );
   const Result result = run( "--out gen Lamp.vok" );
   EXPECT_EQ( result.status, 1 );
   EXPECT_TRUE( result.errors.starts_with( "Lamp.vok:8:7: error: " ) ) << result.errors;
   EXPECT_EQ( result.output, "" );
   EXPECT_EQ( made( "gen" ), std::set< std::string >{} );
}

TEST_F( ProgramTest, checksWithoutWriting )
{
   write( "Lamp.vok", good );
   const Result result = run( "--check Lamp.vok" );
   EXPECT_EQ( result.status, 0 );
   EXPECT_EQ( result.output + result.errors, "" );
   EXPECT_EQ( made( "." ), ( std::set< std::string >{ "Lamp.vok", "output", "errors" } ) );
}

TEST_F( ProgramTest, printsTheFingerprint )
{
   write( "Lamp.vok", good );
   const Result result = run( "--fingerprint Lamp.vok" );
   EXPECT_EQ( result.status, 0 );
   EXPECT_EQ( result.output.size(), 17U ) << result.output;
   EXPECT_EQ( result.output.find_first_not_of( "0123456789abcdef" ), 16U ) << result.output;
}

TEST_F( ProgramTest, helpsWhoAsksAndWhoErrs )
{
   const Result help = run( "--help" );
   EXPECT_EQ( help.status, 0 );
   EXPECT_NE( help.output.find( "--out" ), std::string::npos );
   EXPECT_EQ( help.errors, "" );
   const Result wrong = run( "--fast Lamp.vok" );
   EXPECT_EQ( wrong.status, 2 );
   EXPECT_EQ( wrong.errors, "vokgen: unknown option '--fast'\n" + help.output );
   EXPECT_EQ( wrong.output, "" );
}

TEST_F( ProgramTest, saysWhatItCannotReadOrWrite )
{
   const Result absent = run( "--check Absent.vok" );
   EXPECT_EQ( absent.status, 1 );
   EXPECT_NE( absent.errors.find( "Absent.vok" ), std::string::npos ) << absent.errors;
   write( "Lamp.vok", good );
   write( "file", "" );
   const Result blocked = run( "--out file/gen Lamp.vok" );
   EXPECT_EQ( blocked.status, 1 );
   EXPECT_TRUE( blocked.errors.starts_with( "vokgen: error: " ) ) << blocked.errors;
   EXPECT_NE( blocked.errors.find( "file/gen" ), std::string::npos ) << blocked.errors;
}

} // namespace
} // namespace VokGenTest
