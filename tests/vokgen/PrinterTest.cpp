// Layouts: how they are filled in, and what stops the generator.
#include "vokgen/Printer.h"

#include <gtest/gtest.h>

namespace VokGen {
namespace {

/// The message that filling in a layout fails with; empty where it does not fail.
std::string failure( Variables variables, std::string_view layout )
{
   try {
      fill( variables, layout );
   } catch ( const InternalError & error ) {
      return error.what();
   }
   return "";
}

TEST( Printer, fillsInALine )
{
   EXPECT_EQ( fill( { { "type", "bool" }, { "name", "on" } }, "$type$ $name$() const;" ),
         "bool on() const;" );
   EXPECT_EQ( fill( { { "a", "x" } }, "$a$$a$" ), "xx" );
   EXPECT_EQ( fill( {}, "no variable" ), "no variable" );
   EXPECT_EQ( fill( { { "a", "" } }, "<$a$>" ), "<>" );
   EXPECT_EQ( fill( {}, "5 $$" ), "5 $" );
}

TEST( Printer, doesNotFillInWhatAValueHolds )
{
   EXPECT_EQ( fill( { { "a", "$b$" }, { "b", "1" } }, "$a$ $b$" ), "$b$ 1" );
}

TEST( Printer, removesTheSharedIndentation )
{
   EXPECT_EQ( fill( { { "name", "A" } }, R"(
      class $name$ {
       public:
         int x;

         int y;
      };
   )" ),
         "class A {\n public:\n   int x;\n\n   int y;\n};\n" );
   EXPECT_EQ( fill( {}, "\none\n   two\n" ), "one\n   two\n" );
   EXPECT_EQ( fill( {}, "\n" ), "" );
}

TEST( Printer, indentsAValueOfSeveralLinesAsItsPlace )
{
   const std::string members = "int x;\n\nint y;\n";
   EXPECT_EQ( fill( { { "members", members } }, R"(
      struct A {
         $members$
      };
   )" ),
         "struct A {\n   int x;\n\n   int y;\n};\n" );
   EXPECT_EQ( fill( { { "list", "1,\n2" } }, R"(
         int a[] = { $list$ };
   )" ),
         "int a[] = { 1,\n2 };\n" );
   EXPECT_EQ( fill( { { "text", "\"a\"\n\"b\"" } }, R"(
      f(
            $text$ );
   )" ),
         "f(\n      \"a\"\n      \"b\" );\n" );
}

TEST( Printer, takesTheLineOfAnEmptyValueAway )
{
   constexpr std::string_view layout = R"(
      struct A {
         $first$

         $second$

         $third$
      };
   )";
   EXPECT_EQ( fill( { { "first", "1;" }, { "second", "2;" }, { "third", "3;" } }, layout ),
         "struct A {\n   1;\n\n   2;\n\n   3;\n};\n" );
   EXPECT_EQ( fill( { { "first", "1;" }, { "second", "" }, { "third", "3;" } }, layout ),
         "struct A {\n   1;\n\n   3;\n};\n" );
   EXPECT_EQ( fill( { { "first", "" }, { "second", "2;" }, { "third", "3;" } }, layout ),
         "struct A {\n   2;\n\n   3;\n};\n" );
   EXPECT_EQ( fill( { { "first", "1;" }, { "second", "2;" }, { "third", "" } }, layout ),
         "struct A {\n   1;\n\n   2;\n};\n" );
   EXPECT_EQ( fill( { { "first", "" }, { "second", "" }, { "third", "" } }, layout ),
         "struct A {\n};\n" );
}

TEST( Printer, keepsSectionsOfAClassApart )
{
   constexpr std::string_view layout = R"(
      class A {
       public:
         $first$

         int x;

         $last$

       private:
         int y;
      };
   )";
   EXPECT_EQ( fill( { { "first", "" }, { "last", "" } }, layout ),
         "class A {\n public:\n   int x;\n\n private:\n   int y;\n};\n" );
}

TEST( Printer, leavesNoBlankLineAtTheEnds )
{
   EXPECT_EQ( fill( { { "a", "" }, { "b", "" } }, R"(
      $a$

      text

      $b$
   )" ),
         "text\n" );
}

TEST( Printer, stopsAtAnUnknownVariable )
{
   EXPECT_EQ( failure( { { "name", "A" } }, "class $nmae$ $name$" ),
         "layout with the unknown variable $nmae$" );
   EXPECT_EQ( failure( {}, "\n   $members$\n" ), "layout with the unknown variable $members$" );
}

TEST( Printer, stopsAtAVariableThatIsNotUsed )
{
   EXPECT_EQ( failure( { { "name", "A" }, { "base", "B" } }, "class $name$" ),
         "variable $base$ is not in the layout: class $name$" );
}

TEST( Printer, stopsAtASingleDollar )
{
   EXPECT_EQ(
         failure( { { "name", "A" } }, "class $name" ), "layout with a single $: class $name" );
   EXPECT_NE( failure( { { "name", "A" } }, "\n$name$ $\nname$\n" ), "" );
}

TEST( Paragraphs, standApart )
{
   EXPECT_EQ( Paragraphs().add( "one\n" ).add( "" ).add( "two" ).add( "three\n" ).text(),
         "one\n\ntwo\n\nthree\n" );
   EXPECT_EQ( Paragraphs().add( "" ).text(), "" );
}

} // namespace
} // namespace VokGen
