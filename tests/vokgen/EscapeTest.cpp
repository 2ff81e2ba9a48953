// Texts of a definition cannot leave the place where they are put.
#include "vokgen/emit/Escape.h"
#include "vokgen/emit/Documentation.h"

#include <gtest/gtest.h>

namespace VokGen {
namespace {

using namespace std::string_literals;

TEST( CppLiteral, standsForTheBytes )
{
   const std::vector< std::pair< std::string, std::string > > cases = {
      { "", R"("")" },
      { "plain", R"("plain")" },
      { R"(a "b" \ c)", R"("a \"b\" \\ c")" },
      { "line\nand\ttab", R"("line\nand\ttab")" },
      { "\r\v\x7F", R"("\015\013\177")" },
      { "\0001"s, R"("\0001")" }, // octal ends after three digits
      { "\x1F"
        "f",
            R"("\037f")" },
      { "\xC3\xA4", R"("\303\244")" },
      { "what?\?/", R"("what?\?/")" },
      { "?\?\?", R"("?\?\?")" },
   };
   for ( const auto & [ bytes, literal ] : cases ) {
      EXPECT_EQ( cppLiteral( bytes ), literal );
   }
}

TEST( CppLiteral, becomesSeveralLiterals )
{
   EXPECT_EQ( cppLiteral( "one two three four five six", 16 ),
         "\"one two three \"\n\"four five six\"" );
   EXPECT_EQ( cppLiteral( std::string( 25, 'x' ), 12 ),
         "\"xxxxxxxxxx\"\n\"xxxxxxxxxx\"\n\"xxxxx\"" );
   // No escape is torn apart.
   EXPECT_EQ( cppLiteral( "aaaaaaaa\n", 10 ), "\"aaaaaaaa\"\n\"\\n\"" );
}

TEST( Comment, isWrappedAndMarked )
{
   EXPECT_EQ( comment( { "the default" } ), "/// the default\n" );
   EXPECT_EQ( comment( { "" } ), "" );
   EXPECT_EQ( comment( { "one", "", "Two." } ), "/// one. Two.\n" );
   EXPECT_EQ( comment( { "one\nstill one\n\ntwo" } ), "/// one still one\n///\n/// two\n" );
   const std::string word( 60, 'w' );
   EXPECT_EQ( comment( { word + " " + word } ), "/// " + word + "\n/// " + word + "\n" );
}

TEST( Comment, staysWithinItsWidth )
{
   const std::string text = comment( { std::string( 250, 'w' ) } );
   for ( std::size_t at = 0; at != text.size(); at = text.find( '\n', at ) + 1 ) {
      EXPECT_LE( text.find( '\n', at ) - at, 94U );
   }
}

TEST( Comment, cannotBeLeft )
{
   EXPECT_EQ( comment( { "a */ b /* c */" } ), "/// a * / b / * c * /\n" );
   EXPECT_EQ( comment( { "ends with \\" } ), "/// ends with \\.\n" );
   EXPECT_EQ( comment( { "ends with ?\?/" } ), "/// ends with ?\?/.\n" );
   EXPECT_EQ( comment( { "a\rb\x01"
                         "c\x7F" } ),
         "/// a b c\n" );
   EXPECT_EQ( comment( { "a\xE2\x80\xAE"
                         "b\xE2\x80\xA8"
                         "c" } ),
         "/// a b c\n" ); // U+202E, U+2028
   EXPECT_EQ( comment( { "not UTF-8: \xFF!" } ), "/// not UTF-8: !\n" );
}

TEST( TrailingComment, standsWhereItFits )
{
   EXPECT_EQ( trailingComment( "red = 0,", "the default" ), " ///< the default" );
   EXPECT_EQ( trailingComment( "red = 0,", std::string( 90, 'w' ) ), "" );
   EXPECT_EQ( trailingComment( "red = 0,", "two\n\nparagraphs" ), "" );
}

TEST( Markdown, hasCodeBetweenBackticks )
{
   const std::vector< std::pair< std::string, std::string > > cases = {
      { "`none` has `a <b> *c* &amp; $d$`.", "`none` has `a <b> *c* &amp; $d$`." },
      { "`one", "\\`one" },
      { "`one` `two", "`one` \\`two" },
      { "``", "\\`\\`" },
      { "``one``", "\\`\\`one\\`\\`" },
      { "`a``b` c", "\\`a\\`\\`b\\` c" },
      { "` a`, `b `", "\\` a\\`, \\`b \\`" },
      { "`a|<b`*`", "\\`a\\|\\<b\\`\\*\\`" }, // would end the cell
      { "`a\\`b`", "\\`a\\\\\\`b\\`" },
      { "`two\nlines`", "`two lines`" },
      { "`a\n`", "\\`a \\`" },
   };
   for ( const auto & [ text, markdown ] : cases ) {
      EXPECT_EQ( markdownText( text ), markdown );
   }
}

TEST( Markdown, isReadAsItStands )
{
   const std::vector< std::pair< std::string, std::string > > cases = {
      { "plain, text. (1) 0.5", "plain, text. (1) 0.5" },
      { "a|b", "a\\|b" },
      { "<b>&amp;*_[x](y)", "\\<b\\>\\&amp;\\*\\_\\[x\\](y)" },
      { "# heading # not", "\\# heading # not" },
      { "- item - not", "\\- item - not" },
      { "12. item", "12\\. item" },
      { "12.5 is none", "12.5 is none" },
      { "two\nlines", "two lines" },
      { "\\", "\\\\" },
   };
   for ( const auto & [ text, markdown ] : cases ) {
      EXPECT_EQ( markdownText( text ), markdown );
   }
}

} // namespace
} // namespace VokGen
