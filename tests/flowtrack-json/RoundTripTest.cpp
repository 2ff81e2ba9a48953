// What is written is read back: random trees of every root type.
#include "tests/flowtrack-json/Trees.h"

#include "tools/flowtrack/json/Diff.h"
#include "tools/flowtrack/json/Json.h"

#include <gtest/gtest.h>

using FlowtrackJson::Extent;
using FlowtrackJson::jsonText;

namespace {

constexpr std::uint64_t trees = 12;
constexpr unsigned changes = 150;

class RoundTrip : public testing::TestWithParam< std::string > {};

TEST_P( RoundTrip, AllOfATreeIsReadBack )
{
   for ( std::uint64_t seed = 1; seed <= trees; ++seed ) {
      const EntityPtr tree = randomTree( GetParam(), seed, changes );
      const std::string text = jsonText( *tree );
      const EntityPtr back = newTree( GetParam() );
      ASSERT_EQ( loaded( text, *back ), "" ) << text;
      EXPECT_EQ( FlowtrackJson::textOf( FlowtrackJson::differences( *tree, *back ) ), "" );
      EXPECT_EQ( Vok::treeDigest( *back ), Vok::treeDigest( *tree ) ) << text;
      EXPECT_EQ( jsonText( *back ), text );
   }
}

TEST_P( RoundTrip, WhatIsChangedIsEnough )
{
   for ( std::uint64_t seed = 1; seed <= trees; ++seed ) {
      const EntityPtr tree = randomTree( GetParam(), seed, changes );
      const std::string text = jsonText( *tree, Extent::changed );
      const EntityPtr back = newTree( GetParam() );
      ASSERT_EQ( loaded( text, *back ), "" ) << text;
      EXPECT_EQ( Vok::treeDigest( *back ), Vok::treeDigest( *tree ) ) << text;
   }
}

TEST_P( RoundTrip, AnyTreeIsReplacedByAnyOther )
{
   for ( std::uint64_t seed = 1; seed <= trees; ++seed ) {
      const EntityPtr tree = randomTree( GetParam(), seed, changes );
      for ( const Extent extent : { Extent::all, Extent::changed } ) {
         const EntityPtr other = randomTree( GetParam(), seed + trees, changes );
         ASSERT_EQ( loaded( jsonText( *tree, extent ), *other, true ), "" );
         EXPECT_EQ( FlowtrackJson::textOf( FlowtrackJson::differences( *tree, *other ) ), "" );
         EXPECT_EQ( Vok::treeDigest( *other ), Vok::treeDigest( *tree ) );
      }
   }
}

TEST_P( RoundTrip, TheTextDoesNotDependOnHistory )
{
   const EntityPtr tree = randomTree( GetParam(), 1, changes );
   EXPECT_EQ( jsonText( *copyOf( *tree ) ), jsonText( *tree ) );
}

std::string nameOf( const testing::TestParamInfo< std::string > & info )
{
   std::string name = info.param;
   std::erase( name, ':' );
   return name;
}

INSTANTIATE_TEST_SUITE_P( Types, RoundTrip, testing::ValuesIn( rootTypes() ), nameOf );
INSTANTIATE_TEST_SUITE_P(
      TypesThatHoldTheirOwn, RoundTrip, testing::Values( "Test::Tree" ), nameOf );

} // namespace
