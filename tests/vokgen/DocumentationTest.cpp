// The pages on definition files say what is so: their examples compile, their errors are printed.
#include "tests/vokgen/ExpectedText.h"
#include "vokgen/Compiler.h"

#include <gtest/gtest.h>

namespace VokGenTest {
namespace {

/// The texts of the fenced blocks that start with a line, from a place in the page on.
std::vector< std::string > blocks( const std::string & page, const std::string & fence,
      std::size_t from = 0 )
{
   std::vector< std::string > found;
   const std::string opening = "\n" + fence + "\n";
   for ( std::size_t at = page.find( opening, from ); at != std::string::npos; ) {
      const std::size_t begin = at + opening.size();
      const std::size_t end = page.find( "```\n", begin );
      found.push_back( page.substr( begin, end - begin ) );
      at = page.find( opening, end + 3 );
   }
   return found;
}

std::string languagePage() { return readFile( testFolder() / "../../docs/language.md" ); }

TEST( LanguagePage, examplesAreAModule )
{
   std::string text;
   const std::vector< std::string > examples = blocks( languagePage(), "```vok" );
   EXPECT_GT( examples.size(), 10U );
   for ( const std::string & example : examples ) {
      text += example + "\n";
   }
   const VokGen::Compilation made = VokGen::compileText( "Garden.vok", text, {} );
   EXPECT_EQ( made.errors, "" );
   EXPECT_NE( made.module, nullptr );
}

TEST( LanguagePage, errorsArePrintedLikeThat )
{
   const std::string page = languagePage();
   const std::string shown = blocks( page, "```", page.find( "\n## Errors" ) ).at( 0 );
   const std::string lines( 8, '\n' );
   const VokGen::Compilation made = VokGen::compileText( "Garden.vok",
         "module Garden\nnamespace Garden {\nentity Config( name ) { /// A garden." + lines + "\n" +
               "   beds : u8 = 300;                            /// beds of a new garden" + lines +
               "   beds : u32 = 0;                             /// again\n}\n}\n",
         {} );
   EXPECT_EQ( made.errors, shown );
}

TEST( ContributingPage, theModuleCompiles )
{
   const auto root = testFolder() / "../..";
   const std::string text = blocks( readFile( root / "docs/contributing.md" ), "```vok" ).at( 0 );
   const VokGen::Compilation made =
         VokGen::compileText( "PortLabels.vok", text, { ( root / "Platform" ).string() } );
   EXPECT_EQ( made.errors, "" );
   EXPECT_NE( made.module, nullptr );
}

} // namespace
} // namespace VokGenTest
