// Texts of strings: bare words, quotes, escapes, and that each string has one text.
#include "Vok/Strep.h"
#include "Vok/Vok.h"
#include "tests/support/HeapMeter.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using Corvo::strepToValue;
using Corvo::valueToStrep;
using namespace std::string_view_literals;

std::string_view viewOf( const Corvo::String & text ) { return text.view(); }

std::string whyRefused( std::string_view text )
{
   try {
      strepToValue< Corvo::String >( text );
   } catch ( const Corvo::ParseException & e ) {
      return e.what();
   }
   return "taken";
}

struct Example {
   std::string_view content;
   std::string_view text;
};

TEST( TextStringTest, examples )
{
   const Example examples[] = {
      { "", R"("")" },
      { "a", "a" },
      { "Ethernet3/1", "Ethernet3/1" },
      { "10.0.0.1:80", "10.0.0.1:80" },
      { "fe80::1%eth0", "fe80::1%eth0" },
      { "_a.b/c:d@e%f+g-h", "_a.b/c:d@e%f+g-h" },
      { "5", "5" },
      { "true", "true" },
      { "two words", R"("two words")" },
      { "a=b", R"("a=b")" },
      { "a,b", R"("a,b")" },
      { "[x]", R"("[x]")" },
      { "say \"hi\"", R"("say \"hi\"")" },
      { "back\\slash", R"("back\\slash")" },
      { "line\nbreak", R"("line\nbreak")" },
      { "tab\tstop", R"("tab\tstop")" },
      { "it's", R"("it\x27s")" },
      { "\r", R"("\x0d")" },
      { "nul\0"sv, R"("nul\x00")" },
      { "\x7f", R"("\x7f")" },
      { "gr\xc3\xbc\xc3\x9f", "\"gr\xc3\xbc\xc3\x9f\"" },
      { "\xf0\x9f\x90\x9f", "\"\xf0\x9f\x90\x9f\"" },
      { "\xc3", R"("\xc3")" },
      { "\xff\xfe", R"("\xff\xfe")" },
      { "\xc2\x85", R"("\xc2\x85")" },
      { "\xed\xa0\x80", R"("\xed\xa0\x80")" },
      { "\xc0\x80", R"("\xc0\x80")" },
      { "\xf4\x90\x80\x80", R"("\xf4\x90\x80\x80")" },
   };
   for ( const Example & example : examples ) {
      EXPECT_EQ( valueToStrep( Corvo::String( example.content ) ), example.text );
      EXPECT_EQ( viewOf( strepToValue< Corvo::String >( example.text ) ), example.content );
   }
}

TEST( TextStringTest, everyByteAloneAndInTheMiddleSurvives )
{
   for ( unsigned byte = 0; byte != 256; ++byte ) {
      const char c = static_cast< char >( byte );
      for ( const std::string & content : { std::string( 1, c ), std::string( "ab" ) + c + "cd",
                  std::string( 2, c ), std::string( 100, c ) } ) {
         const Corvo::String text = valueToStrep( Corvo::String( content ) );
         EXPECT_EQ( viewOf( strepToValue< Corvo::String >( text ) ), content ) << byte;
         for ( const char shown : text.view() ) {
            EXPECT_GE( static_cast< unsigned char >( shown ), 0x20 ) << byte;
            EXPECT_NE( shown, '\'' ) << byte;
         }
      }
   }
}

TEST( TextStringTest, randomBytesSurvive )
{
   TestSupport::Random random( 7 );
   for ( int round = 0; round != 3000; ++round ) {
      std::string content( random.below( 40 ), ' ' );
      for ( char & c : content ) {
         c = static_cast< char >(
               random.oneIn( 2 ) ? random.below( 256 ) : 0x80 + random.below( 80 ) );
      }
      const Corvo::String text = valueToStrep( Corvo::String( content ) );
      ASSERT_EQ( viewOf( strepToValue< Corvo::String >( text ) ), content ) << text;
   }
}

// Of all texts that could stand for a string, one is taken: whatever is read prints the same.
TEST( TextStringTest, whatIsReadIsWhatIsPrinted )
{
   TestSupport::Random random( 11 );
   constexpr std::string_view pieces[] = { "\"", "\\", "x", "0", "a", "4", "1", "n", "t", " ", ",",
      "'", "\xc3", "\xbc", "\xe2\x82\xac", "\n", "\\x", "\\\"", "\\n", "]" };
   std::size_t taken = 0;
   for ( int round = 0; round != 20000; ++round ) {
      std::string text = random.oneIn( 4 ) ? "" : "\"";
      for ( std::uint32_t left = random.below( 6 ); left != 0; --left ) {
         text += pieces[ random.below( std::size( pieces ) ) ];
      }
      text += random.oneIn( 3 ) ? "" : "\"";
      try {
         const auto read = strepToValue< Corvo::String >( text );
         ++taken;
         ASSERT_EQ( valueToStrep( read ), text );
      } catch ( const Corvo::ParseException & e ) {
         ASSERT_LE( e.offset(), text.size() );
      }
   }
   EXPECT_GT( taken, 1000U );
}

TEST( TextStringTest, otherTextsOfAStringAreRefused )
{
   for ( const std::string_view text :
         { ""sv, R"("a")"sv, R"("5")"sv, R"("Ethernet3/1")"sv, // could stand bare
               R"("\x61 ")"sv, R"("\x20")"sv, // need no escape
               R"("\x0a")"sv, R"("\x09")"sv, R"("\x22")"sv, R"("\x5c")"sv, // have shorter escapes
               R"("\xFF")"sv, R"("\x0D")"sv, // digits are lower case
               R"("it's")"sv, "\"a\nb\""sv, "\"\t\""sv, "\"\0\""sv, "\"\x7f\""sv, // need one
               R"("\xc3\xbc")"sv, "\"\xc3\""sv, "\"\xc2\x85\""sv, // well-formed or not
               R"("\a")"sv, R"("\x")"sv, R"("\x1")"sv, R"("\xg0")"sv, R"("\u0041")"sv, R"("\ ")"sv,
               R"(")"sv, R"("a b)"sv, R"("a b\)"sv, R"("a b\")"sv, R"("a b" )"sv, R"( "a b")"sv,
               R"("a b"c)"sv, "two words"sv, "a=b"sv, "a,b"sv, "a\"b"sv, "'a'"sv, "\xc3\xbc"sv } ) {
      EXPECT_THROW( strepToValue< Corvo::String >( text ), Corvo::ParseException ) << text;
   }
}

TEST( TextStringTest, saysWhatIsWrongAndWhere )
{
   EXPECT_EQ( whyRefused( "" ), "at offset 0: expected a text, found the end" );
   EXPECT_EQ( whyRefused( "two words" ),
         R"(at offset 3: expected the end of the text, found " words")" );
   EXPECT_EQ( whyRefused( R"("a")" ), R"(at offset 0: expected the text as a, found "\"a\"")" );
   EXPECT_EQ( whyRefused( R"("a b)" ), "at offset 4: expected a closing quote, found the end" );
   EXPECT_EQ(
         whyRefused( R"("a \q")" ), R"(at offset 4: expected \" \\ \n \t or \xHH, found "q\"")" );
   EXPECT_EQ( whyRefused( "\"a\nb\"" ),
         R"(at offset 2: expected a character that needs no escape, found "\nb\"")" );
   // A long rest is not quoted in full.
   EXPECT_LT( whyRefused( "bare \"" + std::string( 10000, 'x' ) ).size(), 100U );
}

// A reader of a text of n bytes holds 2 n at most, and an error quotes little of it.
TEST( TextStringTest, aLongTextIsHeldTwiceAtMost )
{
   const std::string plain( 100000, 'x' );
   const std::string open = "\"" + plain;
   for ( const std::string & text : { open + " \"", open + "\\\\\"", open + "\"",
               open + "\\x41 \"", open + "\n\"", open, plain } ) {
      std::size_t most = 0;
      std::string why;
      {
         const TestSupport::HeapMeter heap;
         try {
            strepToValue< Corvo::String >( text );
         } catch ( const Corvo::ParseException & e ) {
            why = e.what();
         }
         most = heap.peak();
      }
      EXPECT_LE( most, 2 * text.size() + 1024 ) << why;
      EXPECT_LT( why.size(), 100U );
   }
   EXPECT_EQ( whyRefused( "\"" + std::string( 65, 'x' ) + "\"" ),
         "at offset 0: expected the text with the fewest escapes, found "
         "\"\\\"xxxxxxxxxxxxxxxxxxxxxxx\"" );
}

TEST( TextStringTest, bareWordsEndWhereTheyHaveTo )
{
   for ( const char end : { ',', ']', '=', ' ', '"', '[', '(', ';', '\'', '\\', '\n' } ) {
      const std::string text = std::string( "word" ) + end;
      Vok::CharRange range( text );
      EXPECT_EQ( range.string(), "word" );
      EXPECT_EQ( range.offset(), 4U );
      EXPECT_TRUE( range.at( end ) );
   }
}

} // namespace
