// The paths of mounts and their patterns.
#include "store/Path.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Vok::Store::checkPath;
using Vok::Store::PathException;
using Vok::Store::PathPattern;

template< class F > std::string refusal( F f )
{
   try {
      f();
   } catch ( const PathException & e ) {
      return e.what();
   }
   return "";
}

TEST( PathTest, namesAreSeparatedBySlashes )
{
   for ( const char * const path : { "a", "a/b", "flowtracking/input/config/sampled/cli",
               "A-z_0.9:x/Ethernet3-1" } ) {
      EXPECT_NO_THROW( checkPath( path ) ) << path;
   }
   EXPECT_NO_THROW( checkPath( std::string( 255, 'x' ) ) );
}

TEST( PathTest, whatIsNoPathIsRefusedWithTheReason )
{
   EXPECT_EQ( refusal( [] { checkPath( "" ); } ), "the path \"\" has an empty name at byte 0" );
   EXPECT_EQ( refusal( [] { checkPath( "/a" ); } ), "the path \"/a\" has an empty name at byte 0" );
   EXPECT_EQ( refusal( [] { checkPath( "a/" ); } ), "the path \"a/\" has an empty name at byte 2" );
   EXPECT_EQ( refusal( [] { checkPath( "a//b" ); } ),
         "the path \"a//b\" has an empty name at byte 2" );
   EXPECT_EQ( refusal( [] { checkPath( "a/*" ); } ),
         "the path \"a/*\" has no letter, digit, '_', '-', '.' or ':' at byte 2" );
   EXPECT_EQ( refusal( [] { checkPath( "a b" ); } ),
         "the path \"a b\" has no letter, digit, '_', '-', '.' or ':' at byte 1" );
   const std::string tooLong = refusal( [] { checkPath( std::string( 256, 'x' ) ); } );
   EXPECT_EQ( tooLong.substr( tooLong.size() - 25 ), " is longer than 255 bytes" );
}

TEST( PathTest, aStarIsAnyOneName )
{
   const PathPattern pattern( "a/*/c/*" );
   EXPECT_FALSE( pattern.isPath() );
   for ( const char * const path : { "a/b/c/d", "a/bb/c/dd" } ) {
      EXPECT_TRUE( pattern.matches( path ) ) << path;
   }
   for ( const char * const path : { "a/b/c", "a/b/c/", "a/b/c/d/e", "a//c/d", "a/b/x/d", "",
               "a/b/cc/d" } ) {
      EXPECT_FALSE( pattern.matches( path ) ) << path;
   }
}

TEST( PathTest, aPathIsThePatternOfItself )
{
   const PathPattern pattern( "a/b" );
   EXPECT_TRUE( pattern.isPath() );
   EXPECT_TRUE( pattern.matches( "a/b" ) );
   EXPECT_FALSE( pattern.matches( "a/bc" ) );
   EXPECT_FALSE( pattern.matches( "a" ) );
}

TEST( PathTest, aStarIsAWholeName )
{
   for ( const char * const text : { "a*", "*a", "a/*b/c", "a/b**", "a/**/b", "a/***", "**/**" } ) {
      EXPECT_THROW( PathPattern{ text }, PathException ) << text;
   }
   EXPECT_TRUE( PathPattern( "*" ).matches( "anything" ) );
}

TEST( PathTest, twoStarsAreOneNameOrMore )
{
   EXPECT_TRUE( PathPattern( "**" ).matches( "a" ) );
   EXPECT_TRUE( PathPattern( "**" ).matches( "a/b/c" ) );
   const PathPattern pattern( "a/*/**" );
   EXPECT_FALSE( pattern.isPath() );
   EXPECT_TRUE( pattern.matches( "a/b/c" ) );
   EXPECT_TRUE( pattern.matches( "a/b/c/d" ) );
   for ( const char * const path : { "a", "a/b", "b/b/c", "" } ) {
      EXPECT_FALSE( pattern.matches( path ) ) << path;
   }
}

} // namespace
