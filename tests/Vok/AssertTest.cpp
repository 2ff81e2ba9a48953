// The last line of a process that failed an assertion.
#include "Vok/Assert.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

// Matches what the process wrote, from the first character to the last. GoogleTest's own patterns
// search anywhere, so the line is compared by a matcher.
auto wrote( std::string line )
{
   return testing::Truly(
         [ line = std::move( line ) ]( const std::string & text ) { return text == line; } );
}

TEST( AssertDeathTest, SaysWhereAndWhatAndWhy )
{
   EXPECT_EXIT( Vok::assertionFailed( "Room/File", 105, "int f(int)", "v > 0", "v is 0" ),
         testing::KilledBySignal( SIGABRT ),
         wrote( "Room/File:105: int f(int): assertion \"v > 0\" failed: v is 0\n" ) );
}

TEST( AssertDeathTest, NeedsNoMessage )
{
   EXPECT_EXIT( Vok::assertionFailed( "F", -1, "f()", "false" ), testing::KilledBySignal( SIGABRT ),
         wrote( "F:-1: f(): assertion \"false\" failed\n" ) );
}

TEST( AssertDeathTest, StaysOneLine )
{
   EXPECT_EXIT( Vok::assertionFailed( "F", 1, "f()", "false",
                      "two\nlines\tand\x7f"
                      "bytes \xc3\xa4" ),
         testing::KilledBySignal( SIGABRT ),
         wrote( "F:1: f(): assertion \"false\" failed: two lines and bytes \xc3\xa4\n" ) );
}

TEST( AssertDeathTest, CutsOffWhatIsTooLong )
{
   const std::string start = "F:1: f(): assertion \"false\" failed: ";
   EXPECT_EXIT( Vok::assertionFailed( "F", 1, "f()", "false", std::string( 10000, 'x' ) ),
         testing::KilledBySignal( SIGABRT ),
         wrote( start + std::string( 4095 - start.size(), 'x' ) + "\n" ) );
}

} // namespace
