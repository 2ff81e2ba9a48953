// The command line of vokgen and the writing of files.
#include "tests/vokgen/ExpectedText.h"
#include "vokgen/ImportPath.h"
#include "vokgen/Options.h"
#include "vokgen/OutputFolder.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace VokGen {
namespace {

using VokGenTest::readFile;
using VokGenTest::TemporaryFolder;

TEST( Options, readsEverything )
{
   const Options options = parseOptions(
         { "--out", "gen", "--import", "/", "--import", ".", "--depfile", "a.d", "A.vok" } );
   EXPECT_EQ( options.usageError, "" );
   EXPECT_EQ( options.action, Options::Action::generate );
   EXPECT_EQ( options.outFolder, "gen" );
   EXPECT_EQ( options.importFolders, ( std::vector< std::string >{ "/", "." } ) );
   EXPECT_EQ( options.dependencyFile, "a.d" );
   EXPECT_EQ( options.definitionFile, "A.vok" );
   EXPECT_EQ( parseOptions( { "--check", "A.vok" } ).action, Options::Action::check );
   EXPECT_EQ( parseOptions( { "--fingerprint", "A.vok" } ).action, Options::Action::fingerprint );
   EXPECT_EQ( parseOptions( { "--help" } ).usageError, "" );
}

TEST( Options, refusesWhatItDoesNotKnow )
{
   const std::vector< std::pair< std::vector< std::string >, std::string > > cases = {
      { {}, "expected a definition file" },
      { { "A.vok" }, "expected '--out' and a folder, '--check' or '--fingerprint'" },
      { { "--out" }, "expected a path after '--out'" },
      { { "--fast", "A.vok" }, "unknown option '--fast'" },
      { { "--check", "A.vok", "B.vok" },
            "expected one definition file, found 'A.vok' and 'B.vok'" },
      { { "--check", "--out", "gen", "A.vok" },
            "'--out' belongs to neither '--check' nor '--fingerprint', which write no files" },
      { { "--check", "--depfile", "a.d", "A.vok" },
            "'--depfile' belongs to neither '--check' nor '--fingerprint', which write no files" },
      { { "--check", "--import", "/nowhere/at/all", "A.vok" },
            "'--import /nowhere/at/all' is no folder" },
   };
   for ( const auto & [ arguments, error ] : cases ) {
      EXPECT_EQ( parseOptions( arguments ).usageError, error );
   }
}

TEST( OutputFolder, leavesEqualFilesAlone )
{
   const TemporaryFolder folder;
   const std::string out = ( folder.path() / "gen/Room" ).string();
   writeFiles( out, { { "A.h", "one" }, { "sub/A.cpp", "" } } );
   EXPECT_EQ( readFile( out + "/A.h" ), "one" );
   EXPECT_TRUE( fs::exists( out + "/sub/A.cpp" ) );

   const auto longAgo = fs::file_time_type::clock::now() - std::chrono::hours( 24 );
   fs::last_write_time( out + "/A.h", longAgo );
   writeFiles( out, { { "A.h", "one" } } );
   EXPECT_EQ( fs::last_write_time( out + "/A.h" ), longAgo );
   writeFiles( out, { { "A.h", "two" } } );
   EXPECT_NE( fs::last_write_time( out + "/A.h" ), longAgo );
   EXPECT_EQ( readFile( out + "/A.h" ), "two" );
}

TEST( OutputFolder, leavesNoTemporaryFiles )
{
   const TemporaryFolder folder;
   writeFiles( folder.path().string(), { { "A.h", "one" }, { "B.h", "two" } } );
   EXPECT_EQ( std::distance( fs::directory_iterator( folder.path() ), {} ), 2 );
}

TEST( OutputFolder, saysWhatItCannotWrite )
{
   const TemporaryFolder folder;
   folder.write( "file", "" );
   EXPECT_THROW( writeFiles( ( folder.path() / "file" ).string(), { { "A.h", "one" } } ),
         std::runtime_error );
   fs::create_directory( folder.path() / "A.h" );
   folder.write( "A.h/inside", "" );
   EXPECT_THROW( writeFiles( folder.path().string(), { { "A.h", "one" } } ), std::runtime_error );
   EXPECT_EQ( std::distance( fs::directory_iterator( folder.path() ), {} ), 2 );
}

TEST( OutputFolder, writesDependencyRules )
{
   EXPECT_EQ( dependencyRule( { "gen/A.h", "gen/A.cpp" }, { "A.vok", "a room/B$.vok" } ),
         "gen/A.h gen/A.cpp: \\\n  A.vok \\\n  a\\ room/B$$.vok\n" );
}

TEST( ImportPath, findsModulesAnywhereBelow )
{
   const TemporaryFolder folder;
   folder.write( "Room/A.vok", "" );
   folder.write( "Room/Deep/B.vok", "" );
   folder.write( ".hidden/C.vok", "" );
   folder.write( "build/CMakeCache.txt", "" );
   folder.write( "build/gen/A.vok", "" );
   const std::string root = folder.path().string();
   ImportPath path( { root, root + "/Room" } );
   EXPECT_EQ( path.modules(), ( std::vector< std::string >{ "A", "B" } ) );
   EXPECT_EQ( path.filesOf( "A" ), std::vector< std::string >{ root + "/Room/A.vok" } );
   EXPECT_TRUE( path.filesOf( "C" ).empty() );
}

TEST( ImportPath, includesHeadersFromTheInnermostFolder )
{
   const TemporaryFolder folder;
   folder.write( "FlowTracker/A.vok", "" );
   folder.write( "Platform/Wyre/B.vok", "" );
   const std::string root = folder.path().string();
   const ImportPath path( { root, root + "/Platform/" } );
   EXPECT_EQ( path.headerOf( root + "/FlowTracker/A.vok" ), "FlowTracker/A.h" );
   EXPECT_EQ( path.headerOf( root + "/Platform/Wyre/B.vok" ), "Wyre/B.h" );
   EXPECT_EQ(
         ImportPath( { root + "/FlowTracker" } ).headerOf( root + "/Platform/Wyre/B.vok" ), "B.h" );
   EXPECT_EQ( ImportPath( {} ).headerOf( "A.vok" ), "A.h" );
}

} // namespace
} // namespace VokGen
