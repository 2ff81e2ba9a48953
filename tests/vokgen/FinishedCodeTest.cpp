// Long lines of generated code are broken; what cannot be right is refused.
#include "vokgen/emit/FinishedCode.h"
#include "vokgen/Printer.h"

#include <gtest/gtest.h>

namespace VokGen {
namespace {

std::string failure( std::string_view text )
{
   try {
      finishedCode( "A.h", text );
   } catch ( const InternalError & error ) {
      return error.what();
   }
   return "";
}

/// A name of that many characters.
std::string name( std::size_t size ) { return std::string( size, 'n' ); }

TEST( FinishedCode, leavesWhatFits )
{
   const std::string text = "int f( int a, int b );\n\n   // " + name( 94 ) + "\n";
   EXPECT_EQ( finishedCode( "A.h", text ), text );
   EXPECT_EQ( finishedCode( "A.h", "" ), "" );
}

TEST( FinishedCode, countsCharactersNotBytes )
{
   std::string text = "// ";
   for ( int i = 0; i != 97; ++i ) {
      text += "\xC3\xA4";
   }
   EXPECT_EQ( failure( text ), "" );
   EXPECT_NE( failure( text + "x" ), "" );
}

TEST( FinishedCode, breaksBehindTheParenthesisWhereTheRestFits )
{
   const std::string a = name( 38 );
   const std::string b = name( 33 );
   EXPECT_EQ( finishedCode( "A.h", "   void f( int " + a + ", int " + b + " ) const;\n" ),
         "   void f(\n         int " + a + ", int " + b + " ) const;\n" );
}

TEST( FinishedCode, breaksBehindCommasWhereItDoesNot )
{
   const std::string n = name( 30 );
   EXPECT_EQ(
         finishedCode( "A.h", "f( " + n + ", " + n + ", " + n + ", " + n + ", " + n + " );\n" ),
         "f( " + n + ", " + n + ", " + n + ",\n      " + n + ", " + n + " );\n" );
   EXPECT_EQ( finishedCode( "A.h",
                    "f( " + n + ", " + n + ", " + n + ", " + n + ", " + n + ", " + n + ", " + n +
                          " );\n" ),
         "f( " + n + ", " + n + ", " + n + ",\n      " + n + ", " + n + ",\n      " + n + ", " + n +
               " );\n" );
}

TEST( FinishedCode, breaksBehindAnAssignmentFirst )
{
   const std::string a = name( 45 );
   EXPECT_EQ( finishedCode( "A.h", "using " + a + " = Vok::MapNode< " + a + ", 0 >;\n" ),
         "using " + a + " =\n      Vok::MapNode< " + a + ", 0 >;\n" );
}

TEST( FinishedCode, breaksBeforeAFunctionsName )
{
   const std::string a = name( 45 );
   const std::string b = name( 46 );
   EXPECT_EQ( finishedCode( "A.h", "   const " + a + " & " + b + "() const noexcept;\n" ),
         "   const " + a + " &\n   " + b + "() const noexcept;\n" );
   EXPECT_EQ(
         finishedCode( "A.h", "Ptr< " + a + " > " + b + "::f( int " + a + ", int " + b + " )\n" ),
         "Ptr< " + a + " >\n" + b + "::f(\n      int " + a + ",\n      int " + b + " )\n" );
   const std::string c = name( 40 );
   EXPECT_EQ( finishedCode( "A.h", "   return " + a + "::" + c + "( 1, 2 );\n" ),
         "   return " + a + "::" + c + "(\n         1, 2 );\n" );
}

TEST( FinishedCode, keepsTemplatesAndNestedCallsTogether )
{
   const std::string a = name( 20 );
   const std::string line = "Vok::Ptr< " + a + " > f( const Map< " + a + ", int > & " + a +
         ", g( 1, 2 ) ) { return; }";
   EXPECT_EQ( finishedCode( "A.h", "inline " + line ),
         "inline Vok::Ptr< " + a + " > f(\n      const Map< " + a + ", int > & " + a +
               ", g( 1, 2 ) ) { return; }\n" );
}

TEST( FinishedCode, doesNotBreakLiteralsAndComments )
{
   EXPECT_NE( failure( "// " + name( 50 ) + ", ( " + name( 50 ) + " )" ), "" );
   EXPECT_NE( failure( "\"" + name( 50 ) + ", ( " + name( 50 ) + " )\"" ), "" );
}

TEST( FinishedCode, stopsAtALineThatCannotBeBroken )
{
   EXPECT_EQ( failure( "one\n// " + name( 98 ) + "\n" ),
         "A.h:2: a line that cannot be broken is 101 columns wide: // " + name( 98 ) );
   EXPECT_NE( failure( "f( \"" + name( 101 ) + "\" );" ), "" );
   EXPECT_NE( failure( "f( a ); // " + name( 101 ) ), "" );
}

TEST( FinishedCode, leavesNamesThatNoLineCanHold )
{
   const std::string n = name( 101 );
   EXPECT_EQ( finishedCode( "A.h", "f( " + n + ", b );\n" ), "f(\n      " + n + ",\n      b );\n" );
}

TEST( FinishedCode, stopsAtABracketWithoutPartner )
{
   EXPECT_EQ( failure( "struct A {\n   int x;\n\n" ),
         "A.h:3: the file ends inside a bracket that was opened in line 1" );
   EXPECT_EQ( failure( "}\n" ), "A.h:1: a bracket is closed that is not open" );
   EXPECT_EQ( failure( "f( { ) }\n" ), "A.h:1: a bracket is closed that is not open" );
   EXPECT_EQ( failure( "// {\nconst char * a = \"({\\\"[\"; char b = '{';\n" ), "" );
}

} // namespace
} // namespace VokGen
