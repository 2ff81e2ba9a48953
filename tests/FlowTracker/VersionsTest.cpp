// Streams between two versions of the data model: what the table in docs/log.md says of each change
// is what becomes of it. The programs of both sides are built in tests/versions.
#include "tests/FlowTracker/VersionCases.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

using FlowTrackerTest::VersionCase;
using FlowTrackerTest::versionCases;
using FlowTrackerTest::VersionStream;

/// A row of the table: a change, the attribute or the type that shows it, and the verdicts.
struct Row {
   std::string change;
   std::string shown;
   std::string toOlder;
   std::string toNewer;
};

/// What is left of a cell without the blanks around it.
std::string trimmed( const std::string & cell )
{
   const std::size_t first = std::min( cell.find_first_not_of( ' ' ), cell.size() );
   return cell.substr( first, cell.find_last_not_of( ' ' ) + 1 - first );
}

Row rowOf( const std::string & line )
{
   std::vector< std::string > cells;
   std::istringstream text( line.substr( 1 ) );
   for ( std::string cell; std::getline( text, cell, '|' ); ) {
      cells.push_back( trimmed( cell ) );
   }
   EXPECT_EQ( cells.size(), 3U ) << line;
   cells.resize( 3 );
   const std::size_t comma = cells[ 0 ].find( ", `" );
   EXPECT_NE( comma, std::string::npos ) << line;
   if ( comma == std::string::npos ) {
      return {};
   }
   const std::string shown = cells[ 0 ].substr( comma + 3, cells[ 0 ].size() - comma - 4 );
   return { cells[ 0 ].substr( 0, comma ), shown, cells[ 1 ], cells[ 2 ] };
}

/// The rows of the page's table of versions.
std::vector< Row > documentedRows()
{
   std::ifstream page( TEST_SOURCE_DIR "/../../docs/log.md" );
   std::vector< Row > rows;
   bool inside = false;
   for ( std::string line; std::getline( page, line ); ) {
      if ( line.starts_with( "| the newer version |" ) ) {
         inside = true;
         std::getline( page, line ); // the rule below the heads
      } else if ( line.empty() ) {
         inside = false;
      } else if ( inside ) {
         rows.push_back( rowOf( line ) );
      }
   }
   return rows;
}

/// One line of a case's report as the program prints it. A line that bears out the verdict has to
/// be one of the verdict's.
std::string reported( const std::string & line, const Row & row, const std::string & verdict )
{
   const std::string word = line.substr( 0, line.find( ':' ) );
   if ( line == "passed over" ) {
      EXPECT_EQ( verdict, word );
      return "passed over: " + row.shown;
   }
   if ( line == "refused" ) {
      std::string message = verdict;
      EXPECT_TRUE( message.starts_with( "refused: `" ) && message.ends_with( "`" ) ) << verdict;
      message = message.substr( 0, message.size() - 1 ).erase( 9, 1 );
      const std::size_t dots = message.find( "…" );
      return dots == std::string::npos
            ? message
            : message.replace( dots, std::string_view( "…" ).size(), row.shown );
   }
   if ( word == "arrives" || word == "stays" ) {
      EXPECT_EQ( verdict, word );
      return "has" + line.substr( word.size() );
   }
   return line;
}

/// The report of a case, as the program prints it where the verdict is right.
std::string expectedReport( const VersionStream & stream, const Row & row,
      const std::string & verdict )
{
   std::istringstream lines{ std::string( stream.report ) };
   std::string report;
   bool borneOut = false;
   for ( std::string line; std::getline( lines, line ); ) {
      const std::string word = line.substr( 0, line.find( ':' ) );
      borneOut = borneOut || verdict.starts_with( word );
      report += reported( line, row, verdict ) + "\n";
   }
   EXPECT_TRUE( borneOut ) << "no line of the report bears it out: " << verdict;
   return report;
}

class VersionsTest : public testing::Test {
 protected:
   void SetUp() override { std::filesystem::create_directories( folder_ ); }
   void TearDown() override { std::filesystem::remove_all( folder_ ); }

   /// What the reader reports of the writer's batches.
   std::string report( const char * writer, const char * reader, const VersionStream & stream )
   {
      run( std::string( writer ) + " write", stream.writer );
      return run( std::string( reader ) + " read", stream.reader );
   }

   void expect( const Row & row, const VersionCase & versions )
   {
      SCOPED_TRACE( row.change );
      EXPECT_EQ( report( NEWER, OLDER, versions.toOlder ),
            expectedReport( versions.toOlder, row, row.toOlder ) );
      EXPECT_EQ( report( OLDER, NEWER, versions.toNewer ),
            expectedReport( versions.toNewer, row, row.toNewer ) );
   }

 private:
   /// Runs a program on the log of this test with a script; what it prints.
   std::string run( const std::string & program, std::string_view script )
   {
      std::ofstream( folder_ / "script" ) << script;
      const std::string at = " '" + folder_.string() + "/";
      const std::string command =
            program + at + "log' <" + at + "script' >" + at + "output' 2>&1";
      const int status = std::system( command.c_str() );
      std::ifstream file( folder_ / "output" );
      const std::string output( std::istreambuf_iterator< char >( file ), {} );
      EXPECT_EQ( WEXITSTATUS( status ), 0 ) << command << "\n"
                                            << script << "\n"
                                            << output;
      return output;
   }

   const std::filesystem::path folder_ =
         testing::TempDir() + "versions" + std::to_string( ::getpid() );
};

TEST_F( VersionsTest, theDocumentedVerdictsHold )
{
   const std::vector< Row > rows = documentedRows();
   ASSERT_EQ( rows.size(), versionCases().size() );
   for ( std::size_t i = 0; i != rows.size(); ++i ) {
      ASSERT_EQ( rows[ i ].change, versionCases()[ i ].change );
      expect( rows[ i ], versionCases()[ i ] );
   }
}

TEST_F( VersionsTest, theNewerVersionHasTheDocumentedChanges )
{
   std::ifstream list( TEST_SOURCE_DIR "/../versions/changes" );
   std::vector< std::string > changes;
   for ( std::string line; std::getline( list, line ); ) {
      if ( !line.starts_with( "== " ) ) {
         continue;
      }
      const std::string change = line.substr( 3 );
      if ( changes.empty() || changes.back() != change ) {
         changes.push_back( change );
      }
   }
   std::vector< std::string > documented;
   for ( const Row & row : documentedRows() ) {
      documented.push_back( row.change );
   }
   EXPECT_EQ( changes, documented );
}

} // namespace
