// Every diagnostic, in one small definition file each: errors/<topic>/in.vok, with what is printed
// of it in expected.txt. Modules that it uses lie in imports/.
#include "tests/vokgen/ExpectedText.h"
#include "vokgen/Compiler.h"
#include "vokgen/Lexer.h"
#include "vokgen/Messages.h"
#include "vokgen/TokenCursor.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>

namespace fs = std::filesystem;

namespace VokGenTest {
namespace {

fs::path errorsFolder() { return testFolder() / "errors"; }

std::vector< std::string > topics()
{
   std::vector< std::string > names;
   for ( const fs::directory_entry & entry : fs::directory_iterator( errorsFolder() ) ) {
      if ( fs::exists( entry.path() / "in.vok" ) ) {
         names.push_back( entry.path().filename().string() );
      }
   }
   std::sort( names.begin(), names.end() );
   return names;
}

class ErrorsTest : public ::testing::TestWithParam< std::string > {};

TEST_P( ErrorsTest, printsWhatIsExpected )
{
   const fs::path folder = errorsFolder() / GetParam();
   const WorkingFolder inside( folder );
   std::vector< std::string > imports;
   if ( fs::exists( "imports" ) ) {
      imports.push_back( "imports" );
   }
   const VokGen::Compilation made = VokGen::compile( "in.vok", imports );
   EXPECT_EQ( made.module, nullptr );
   expectText( folder / "expected.txt", made.errors );
}

TEST_P( ErrorsTest, reportsInOrderOfPosition )
{
   const std::string prefix = "in.vok:";
   std::istringstream text( readFile( errorsFolder() / GetParam() / "expected.txt" ) );
   std::pair< int, int > before;
   for ( std::string line; std::getline( text, line ); ) {
      std::pair< int, int > place;
      char colon = 0;
      std::istringstream rest( line.substr( 0, prefix.size() ) == prefix
                  ? line.substr( prefix.size() )
                  : std::string() );
      const bool isError = line.find( ": error: " ) != std::string::npos &&
            ( rest >> place.first >> colon >> place.second );
      if ( isError ) {
         EXPECT_LE( before, place ) << line;
         before = place;
      }
   }
}

std::string testName( const ::testing::TestParamInfo< std::string > & topic )
{
   std::string name = topic.param;
   std::replace( name.begin(), name.end(), '-', '_' );
   return name;
}

INSTANTIATE_TEST_SUITE_P( Topics, ErrorsTest, ::testing::ValuesIn( topics() ), testName );

TEST( GeneratedErrors, cannotRead )
{
   const TemporaryFolder folder;
   const WorkingFolder inside( folder.path() );
   folder.write( "folder.vok/in.vok", "" );
   folder.write( "large.vok", std::string( VokGen::SourceFile::sizeLimit + 1, ' ' ) );
   expectText( errorsFolder() / "cannot-read/expected.txt",
         VokGen::compile( "missing.vok", {} ).errors + VokGen::compile( "folder.vok", {} ).errors +
               VokGen::compile( "large.vok", {} ).errors );
}

TEST( GeneratedErrors, fileTooLong )
{
   const TemporaryFolder folder;
   const WorkingFolder inside( folder.path() );
   std::string text = "module Sample\nnamespace Test {\nenum Colour : u32 { /// A colour.\n";
   for ( std::size_t i = 0; i < VokGen::TokenCursor::tokenLimit / 4; ++i ) {
      text += "c" + std::to_string( i ) + " = " + std::to_string( i ) + "; ///c\n";
   }
   folder.write( "in.vok", text + "}\n}\n" );
   expectText( errorsFolder() / "file-too-long/expected.txt",
         VokGen::compile( "in.vok", {} ).errors );
}

TEST( GeneratedErrors, usesTooDeep )
{
   const TemporaryFolder folder;
   const WorkingFolder inside( folder.path() );
   constexpr int deepest = 64;
   for ( int i = 0; i <= deepest; ++i ) {
      const std::string use =
            i < deepest ? "use M" + std::to_string( i + 1 ) + "\n" : std::string();
      folder.write(
            "M" + std::to_string( i ) + ".vok", "module M" + std::to_string( i ) + "\n" + use );
   }
   expectText( errorsFolder() / "uses-too-deep/expected.txt",
         VokGen::compile( "M0.vok", { "." } ).errors );
   EXPECT_EQ( VokGen::compile( "M1.vok", { "." } ).errors, "" );
}

/// The parts of a message between its placeholders.
std::vector< std::string > fixedParts( std::string_view message )
{
   std::vector< std::string > parts = { "" };
   for ( std::size_t i = 0; i < message.size(); ++i ) {
      if ( message[ i ] == '{' && i + 2 < message.size() && message[ i + 2 ] == '}' ) {
         parts.emplace_back();
         i += 2;
      } else {
         parts.back() += message[ i ];
      }
   }
   return parts;
}

/// Whether a text is a message with some arguments.
bool isMessage( const std::string & text, std::string_view message )
{
   const std::vector< std::string > parts = fixedParts( message );
   std::size_t at = 0;
   for ( const std::string & part : parts ) {
      const std::size_t found = text.find( part, at );
      if ( found == std::string::npos || ( &part == &parts.front() && found != 0 ) ) {
         return false;
      }
      at = found + part.size();
   }
   const std::string & last = parts.back();
   return text.size() >= last.size() && text.substr( text.size() - last.size() ) == last;
}

/// The texts of all errors and notes that are expected anywhere.
std::vector< std::string > expectedTexts()
{
   std::vector< std::string > texts;
   for ( const fs::directory_entry & entry : fs::recursive_directory_iterator( errorsFolder() ) ) {
      if ( entry.path().filename() != "expected.txt" ) {
         continue;
      }
      std::istringstream lines( readFile( entry.path() ) );
      for ( std::string line; std::getline( lines, line ); ) {
         for ( const std::string kind : { ": error: ", ": note: " } ) {
            const std::size_t found = line.find( kind );
            texts.push_back(
                  found == std::string::npos ? line : line.substr( found + kind.size() ) );
         }
      }
   }
   return texts;
}

TEST( Messages, everyOneIsExpectedSomewhere )
{
   const std::vector< std::string > texts = expectedTexts();
   for ( std::size_t i = 0; i < VokGen::messageCount(); ++i ) {
      const auto message = static_cast< VokGen::Message >( i );
      const bool found =
            std::any_of( texts.begin(), texts.end(), [ & ]( const std::string & text ) {
               return isMessage( text, VokGen::messageText( message ) );
            } );
      EXPECT_TRUE( found ) << "no expected.txt holds " << VokGen::messageName( message );
   }
}

TEST( Messages, aMessageIsToldFromOthers )
{
   EXPECT_TRUE( isMessage( "expected ';', found '}'", "expected {0}, found {1}" ) );
   EXPECT_FALSE( isMessage( "as expected a, found b", "expected {0}, found {1}" ) );
   EXPECT_FALSE( isMessage( "'x' is given twice, too", "'{0}' is given twice" ) );
}

} // namespace
} // namespace VokGenTest
