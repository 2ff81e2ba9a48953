#include "vokgen/Lexer.h"

#include "vokgen/Utf8.h"

#include <gtest/gtest.h>

namespace VokGen {
namespace {

/// A text with all its tokens and comments.
struct Lexed {
   explicit Lexed( std::string text )
         : file( "in.vok", std::move( text ) ),
           lexer( file, diagnostics )
   {
      for ( Token token = lexer.next(); token.kind != TokenKind::end; token = lexer.next() ) {
         tokens.push_back( token );
      }
   }

   std::vector< std::string > texts() const
   {
      std::vector< std::string > result;
      for ( const Token & token : tokens ) {
         result.emplace_back( file.text( token.range ) );
      }
      return result;
   }

   SourceFile file;
   Diagnostics diagnostics;
   Lexer lexer;
   std::vector< Token > tokens;
};

using Texts = std::vector< std::string >;

TEST( Lexer, splitsWithoutBlanks )
{
   EXPECT_EQ( Lexed( "a:A::b=1..20;" ).texts(),
         ( Texts{ "a", ":", "A", "::", "b", "=", "1", "..", "20", ";" } ) );
   EXPECT_EQ( Lexed( "map K->V" ).texts(), ( Texts{ "map", "K", "->", "V" } ) );
   EXPECT_EQ( Lexed( "(a-1+2)" ).texts(), ( Texts{ "(", "a", "-", "1", "+", "2", ")" } ) );
}

TEST( Lexer, tellsRealNumbersFromRanges )
{
   const Lexed lexed( "1.5 1..5 1e9 1.5e-3 2e" );
   EXPECT_EQ( lexed.texts(), ( Texts{ "1.5", "1", "..", "5", "1e9", "1.5e-3", "2e" } ) );
   EXPECT_EQ( lexed.tokens[ 0 ].kind, TokenKind::real );
   EXPECT_EQ( lexed.tokens[ 1 ].kind, TokenKind::integer );
   EXPECT_EQ( lexed.tokens[ 4 ].kind, TokenKind::real );
   EXPECT_EQ( lexed.tokens[ 6 ].kind, TokenKind::broken );
}

TEST( Lexer, knowsWhereTokensStand )
{
   const Lexed lexed( "module A\n\tuse B // remark\n" );
   const Place place = lexed.file.place( lexed.tokens[ 3 ].range.begin );
   EXPECT_EQ( place.line, 2U );
   EXPECT_EQ( place.column, 6U );
   EXPECT_TRUE( lexed.tokens[ 2 ].startsLine );
   EXPECT_FALSE( lexed.tokens[ 3 ].startsLine );
}

TEST( Lexer, countsColumnsInCharacters )
{
   const Lexed lexed( "\"\xC3\xA4\xE2\x82\xAC\" x" );
   EXPECT_EQ( lexed.file.place( lexed.tokens[ 1 ].range.begin ).column, 6U );
}

TEST( Lexer, attachesComments )
{
   Lexed lexed( "/// before\n/// and more\na; /// behind\n/// before b\nb;  /// behind\n    /// as "
                "well\n" );
   ASSERT_EQ( lexed.lexer.docs().size(), 4U );
   const std::vector< DocComment > & docs = lexed.lexer.docs();
   EXPECT_EQ( docs[ 0 ].text, "before and more" );
   EXPECT_FALSE( docs[ 0 ].trailing );
   EXPECT_EQ( docs[ 0 ].token, 0U );
   EXPECT_EQ( docs[ 1 ].text, "behind" );
   EXPECT_TRUE( docs[ 1 ].trailing );
   EXPECT_EQ( docs[ 1 ].token, 1U );
   EXPECT_EQ( docs[ 2 ].text, "before b" );
   EXPECT_EQ( docs[ 2 ].token, 2U );
   EXPECT_EQ( docs[ 3 ].text, "behind as well" );
   EXPECT_EQ( docs[ 3 ].token, 3U );
}

TEST( Lexer, keepsParagraphs )
{
   Lexed lexed( "/// one\n/// line\n///\n/// another\na" );
   ASSERT_EQ( lexed.lexer.docs().size(), 1U );
   EXPECT_EQ( lexed.lexer.docs()[ 0 ].text, "one line\nanother" );
}

TEST( Lexer, detachesCommentsBeforeAnEmptyLine )
{
   Lexed lexed( "/// nothing\n\n/// something\n// ordinary\na" );
   ASSERT_EQ( lexed.lexer.docs().size(), 2U );
   EXPECT_TRUE( lexed.lexer.docs()[ 0 ].detached );
   EXPECT_FALSE( lexed.lexer.docs()[ 1 ].detached );
}

TEST( Lexer, takesRulersForOrdinaryComments )
{
   Lexed lexed( "//////////\na" );
   EXPECT_TRUE( lexed.lexer.docs().empty() );
   EXPECT_FALSE( lexed.diagnostics.hasErrors() );
}

TEST( Lexer, decodesEscapes )
{
   EXPECT_EQ( textValue( R"("a\"b\\c\n\t\x00\xfF")" ), std::string( "a\"b\\c\n\t\0\xFF", 9 ) );
   EXPECT_EQ( textValue( "\"\"" ), "" );
}

TEST( Utf8, lengthsOfCharacters )
{
   EXPECT_EQ( utf8Length( "" ), 0U );
   EXPECT_EQ( utf8Length( "a" ), 1U );
   EXPECT_EQ( utf8Length( "\xC3\xA4" ), 2U );
   EXPECT_EQ( utf8Length( "\xE2\x82\xAC" ), 3U );
   EXPECT_EQ( utf8Length( "\xF0\x9F\x98\x80" ), 4U );
   for ( const char * bad : { "\x80", "\xC3", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80",
               "\xE2\x82", "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF" } ) {
      EXPECT_EQ( utf8Length( bad ), 0U ) << bad;
   }
}

TEST( Utf8, plainCharacters )
{
   for ( const char * plain : { "a", "\t", "\xC3\xA4", "\xE2\x80\x94", "\xF0\x9F\x98\x80" } ) {
      EXPECT_TRUE( isPlain( plain ) ) << plain;
   }
   for ( const char * other :
         { "\x01", "\x7F", "\xC2\x85", "\xE2\x80\xAE", "\xE2\x80\x8B", "\xEF\xBB\xBF" } ) {
      EXPECT_FALSE( isPlain( other ) ) << other;
   }
}

} // namespace
} // namespace VokGen
