// Where values of a document stand.
#include "tools/flowtrack/json/Document.h"

#include "tools/flowtrack/json/Problem.h"

#include <gtest/gtest.h>

using FlowtrackJson::Document;
using FlowtrackJson::DocumentError;
using FlowtrackJson::Node;
using FlowtrackJson::Place;

namespace {

std::string at( const Document & document, const Node & node )
{
   const Place place = document.placeOf( node.offset );
   return std::to_string( place.line ) + ":" + std::to_string( place.column );
}

std::string errorOf( std::string_view text )
{
   try {
      const Document document( text );
      return "";
   } catch ( const DocumentError & e ) {
      return e.what();
   }
}

TEST( DocumentTest, EveryKindOfValueKnowsItsPlace )
{
   const Document document( "{\n"
                            "  \"a\": null, \"b\" :true,\n"
                            "\t\"c\":[-1.5e3,22 , \"x\\\"y\\u00e9\"],\n"
                            "  \"größe\": {\"d\":[]},\n"
                            "  \"e\": 7}\n" );
   const Node & root = document.root();
   ASSERT_EQ( root.kind, Node::Kind::object );
   ASSERT_EQ( root.members.size(), 5U );
   EXPECT_EQ( at( document, root ), "1:1" );
   EXPECT_EQ( at( document, root.members[ 0 ].value ), "2:8" );
   EXPECT_EQ( at( document, root.members[ 1 ].value ), "2:19" );
   const Node & array = root.members[ 2 ].value;
   EXPECT_EQ( at( document, array ), "3:6" );
   EXPECT_EQ( at( document, array.elements[ 0 ] ), "3:7" );
   EXPECT_EQ( array.elements[ 0 ].text, "-1.5e3" );
   EXPECT_EQ( at( document, array.elements[ 1 ] ), "3:14" );
   EXPECT_EQ( array.elements[ 1 ].text, "22" );
   EXPECT_EQ( at( document, array.elements[ 2 ] ), "3:19" );
   EXPECT_EQ( array.elements[ 2 ].text, "x\"yé" );
   EXPECT_EQ( at( document, root.members[ 3 ].value ), "4:12" );
   EXPECT_EQ( at( document, root.members[ 3 ].value.members[ 0 ].value ), "4:17" );
   EXPECT_EQ( at( document, root.members[ 4 ].value ), "5:8" );
   const Place name = document.placeOf( root.members[ 4 ].offset );
   EXPECT_EQ( name.line, 5U );
   EXPECT_EQ( name.column, 3U );
}

TEST( DocumentTest, OneValueAloneIsADocument )
{
   EXPECT_EQ( Document( " 12" ).root().text, "12" );
   EXPECT_EQ( Document( "\xEF\xBB\xBF[1]" ).root().elements[ 0 ].offset, 4U );
}

TEST( DocumentTest, WhatIsNoJsonIsRefusedWithItsPlace )
{
   EXPECT_TRUE( errorOf( "" ).starts_with( "1:1: found" ) ) << errorOf( "" );
   EXPECT_TRUE( errorOf( "{\n  \"a\": tru\n}" ).starts_with( "2:11: found" ) )
         << errorOf( "{\n  \"a\": tru\n}" );
   EXPECT_TRUE( errorOf( "[1,\n2,,3]" ).starts_with( "2:3: found" ) ) << errorOf( "[1,\n2,,3]" );
   EXPECT_EQ( errorOf( "[1," ),
         "1:4: found unexpected end of input; allowed: '[', '{', or a literal" );
   EXPECT_NE( errorOf( "{\"a\":1} x" ), "" );
   EXPECT_NE( errorOf( "[1e999]" ), "" );
   EXPECT_NE( errorOf( "[\"\xFF\"]" ), "" );
}

TEST( DocumentTest, ANameStandsOnceInAnObject )
{
   EXPECT_EQ( errorOf( "{\"a\":1,\n \"b\":{\"a\":2},\n \"a\":3, \"b\": 4}" ),
         "3:2: found \"a\" a second time; allowed: each name once in an object\n"
         "3:9: found \"b\" a second time; allowed: each name once in an object" );
}

TEST( DocumentTest, DepthIsLimited )
{
   const auto nested = []( std::size_t depth ) {
      return std::string( depth, '[' ) + std::string( depth, ']' );
   };
   EXPECT_EQ( errorOf( nested( 256 ) ), "" );
   EXPECT_EQ( errorOf( nested( 257 ) ), "1:257: found one more level; allowed: 256 levels" );
   EXPECT_NE( errorOf( std::string( 1000000, '[' ) ), "" );
}

TEST( DocumentTest, StepsOfPointersAreEscaped )
{
   EXPECT_EQ( FlowtrackJson::pointerStep( "a/b~c" ), "/a~1b~0c" );
}

} // namespace
