// The tables of attributes that modules are tested against: what is right, and that what is wrong
// is found.
#include "tests/support/EntityTable.h"
#include "tests/model/Everything.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <exception>
#include <vector>

namespace {

using namespace TestSupport;
using Rows = std::vector< AttributeRow >;

EntityTable tree()
{
   const Rows rows = {
      { 258, "depth", plain( "u32" ), "0", "7" },
      { 259, "kids", children( "Test::Tree" ), "", "a" },
      { 260, "groups", ordered( children( "Test::Group", "seqno", "u32" ) ), "", "5", { "g" } },
      { 261, "slots", children( "Test::Slot", "label", "Test::Label" ), "", "s", { "7" } },
      { 262, "hosts", children( "Test::Host", "hostname" ), "", "h" },
      { 263, "remarks", map( "u32", "Corvo::String" ), "", "7", { "a", "b" } },
      { 264, "dots", ordered( set( "u32" ) ), "", "7" },
      { 265, "links", references( "Test::Tree" ), "", "t" },
      { 266, "best", optional( "Test::Narrow" ), "", "301" },
   };
   return { "Test::Tree", "nameString", rows };
}

EntityTable slot()
{
   const Rows rows = {
      { 258, "label", argument( "Test::Label" ), "left" },
      { 259, "weight", settableArgument( "u16" ), "3", "65535" },
      { 260, "colour", plain( "Test::Colour" ), "red", "blue" },
      { 261, "heavy", function() },
   };
   return { "Test::Slot", "label", rows };
}

/// How many failures a table causes. An exception is one, too: it would fail the test.
int failuresOf( const EntityTable & table )
{
   testing::TestPartResultArray results;
   const testing::ScopedFakeTestPartResultReporter reporter(
         testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results );
   try {
      expectEntity( table );
   } catch ( const std::exception & ) {
      return results.size() + 1;
   }
   return results.size();
}

TEST( EntityTableTest, whatIsRight )
{
   expectEntity( tree() );
   expectEntity( slot() );
   expectEntity( { "Test::Panel", "nameString",
         { { 258, "lit", ordered( references( "Test::Leaf" ) ), "", "l" } } } );
   expectEntity( { "Test::Numbered", "",
         { { 258, "id", argument( "Test::Narrow" ), "300" },
               { 259, "count", plain( "u32" ), "0", "1" } } } );
}

TEST( EntityTableTest, whatIsWrongInARow )
{
   const struct {
      std::size_t row;
      AttributeRow wrong;
   } cases[] = {
      { 0, { 259, "depth", plain( "u32" ), "0", "7" } },
      { 0, { 258, "deep", plain( "u32" ), "0", "7" } },
      { 0, { 258, "depth", plain( "u16" ), "0", "7" } },
      { 0, { 258, "depth", plain( "u32" ), "1", "7" } },
      { 0, { 258, "depth", optional( "u32" ), "0", "7" } },
      { 0, { 258, "depth", plain( "u32" ), "0", "7", {}, within( 0, 9, "no" ) } },
      { 0, { 258, "depth", settableArgument( "u32" ), "0", "7" } },
      { 1, { 259, "kids", children( "Test::Leaf" ), "", "a" } },
      { 1, { 259, "kids", children( "Test::Tree", "hostname" ), "", "a" } },
      { 1, { 259, "kids", ordered( children( "Test::Tree" ) ), "", "a" } },
      { 2, { 260, "groups", children( "Test::Group", "seqno", "u32" ), "", "5", { "g" } } },
      { 2, { 260, "groups", ordered( children( "Test::Group", "seqno" ) ), "", "5", { "g" } } },
   };
   for ( const auto & c : cases ) {
      EntityTable table = tree();
      table.attributes[ c.row ] = c.wrong;
      EXPECT_GT( failuresOf( table ), 0 ) << &c - cases;
   }
}

TEST( EntityTableTest, whatIsMissingOrTooMuch )
{
   EntityTable table = tree();
   table.attributes.pop_back();
   EXPECT_GT( failuresOf( table ), 0 );
   table = tree();
   table.attributes.push_back( { 267, "more", plain( "bool" ), "false", "true" } );
   EXPECT_GT( failuresOf( table ), 0 );
   table = tree();
   table.identity = "";
   EXPECT_GT( failuresOf( table ), 0 );
   table = tree();
   table.type = "Test::NoTree";
   EXPECT_GT( failuresOf( table ), 0 );
}

} // namespace
