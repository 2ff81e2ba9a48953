// Paths: written, followed, refused.
#include "Vok/Path.h"
#include "tests/model/Everything.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using Corvo::Ptr;
using ::Test::Label;
using ::Test::Narrow;
using ::Test::Root;

class PathTest : public testing::Test {
 protected:
   Ptr< Root > root_ = Root::RootIs( "r" );

   // The path of an entity, which leads back to it.
   std::string path( const Vok::Entity & entity )
   {
      const Corvo::String text = Vok::pathOf( entity );
      EXPECT_EQ( Vok::entityAt( *root_, text ), &entity ) << text;
      return std::string( text );
   }
};

TEST_F( PathTest, everyKindOfChildHasOne )
{
   EXPECT_EQ( path( *root_ ), "/" );
   EXPECT_EQ( path( *root_->treeIs( "spine" ) ), "/tree[spine]" );
   EXPECT_EQ( path( *root_->groupsIs( "g", 7 ) ), "/groups[7]" );
   EXPECT_EQ( path( *root_->slotsIs( Label( "left" ), 1 ) ), "/slots[left]" );
   EXPECT_EQ( path( *root_->numberedIs( Narrow( 300 ) ) ), "/numbered[300]" );
   EXPECT_EQ( path( *root_->bindingsIs( Label( "b" ), nullptr, ::Test::red ) ), "/bindings[b]" );
   EXPECT_EQ( path( *root_->singleIs( "s" ) ), "/single" );
   EXPECT_EQ( path( *root_->only() ), "/only" );
}

TEST_F( PathTest, stepsFollowOneAnother )
{
   const auto tree = root_->treeIs( "a" )->kidsIs( "b" );
   EXPECT_EQ( path( *tree ), "/tree[a]/kids[b]" );
   EXPECT_EQ( path( *tree->hostsIs( "h" ) ), "/tree[a]/kids[b]/hosts[h]" );
   EXPECT_EQ( path( *tree->groupsIs( "g", 4294967295U )->inner() ),
         "/tree[a]/kids[b]/groups[4294967295]/inner" );
}

TEST_F( PathTest, keysAreInTheirTextForm )
{
   EXPECT_EQ( path( *root_->treeIs( "two words" ) ), R"(/tree["two words"])" );
   EXPECT_EQ( path( *root_->treeIs( "" ) ), R"(/tree[""])" );
   EXPECT_EQ( path( *root_->treeIs( "a]/b[" ) ), R"(/tree["a]/b["])" );
   EXPECT_EQ( path( *root_->treeIs( "a/b" ) ), "/tree[a/b]" );
   EXPECT_EQ( path( *root_->treeIs( std::string_view( "\0\"", 2 ) ) ), R"(/tree["\x00\""])" );
   EXPECT_EQ( path( *root_->slotsIs( Label( "a b" ), 1 ) ), R"(/slots["a b"])" );
}

TEST_F( PathTest, anEntityWithoutAParentIsItsOwnRoot )
{
   const auto tree = root_->treeIs( "a" );
   const auto kid = tree->kidsIs( "b" );
   EXPECT_EQ( &Vok::rootOf( *kid ), root_.get() );
   EXPECT_EQ( &Vok::rootOf( *root_ ), root_.get() );
   root_->treeDel( "a" );
   EXPECT_EQ( &Vok::rootOf( *kid ), tree.get() );
   EXPECT_EQ( Vok::pathOf( *tree ), "/" );
   EXPECT_EQ( Vok::pathOf( *kid ), "/kids[b]" );
   EXPECT_EQ( Vok::entityAt( *tree, "/kids[b]" ), kid );
}

TEST_F( PathTest, aPathMayStartAtAnyEntity )
{
   const auto tree = root_->treeIs( "a" );
   EXPECT_EQ( Vok::entityAt( *tree, "/" ), tree );
   EXPECT_EQ( Vok::entityAt( *tree, "/kids[b]" ), nullptr );
   const auto kid = tree->kidsIs( "b" );
   EXPECT_EQ( Vok::entityAt( *tree, "/kids[b]" ), kid );
}

TEST_F( PathTest, whatIsNotThereIsNull )
{
   root_->onlyDel();
   for ( const char * path : { "/tree[absent]", "/tree[absent]/kids[more]", "/groups[7]", "/single",
               "/only", "/only/more" } ) {
      EXPECT_EQ( Vok::entityAt( *root_, path ), nullptr ) << path;
   }
}

TEST_F( PathTest, whatIsNoPathIsRefused )
{
   root_->treeIs( "a" );
   root_->groupsIs( "g", 7 );
   root_->singleIs( "s" );
   for ( const char * path : { "", "tree[a]", "//", "/tree", "/tree[", "/tree[a", "/tree[]",
               "/tree[a b]", "/tree[a]x", "/tree[a]/", "/tree[a]/absent[b]", "/tree[\"a\"]",
               "/groups[07]", "/groups[x]", "/single[s]", "/single/", "/names[1]", "/refs[300]",
               "/mid", "/absent", "/Tree[a]", " /", "/ tree[a]", "/tree[a]]" } ) {
      EXPECT_THROW( Vok::entityAt( *root_, path ), Corvo::ParseException ) << '"' << path << '"';
   }
   EXPECT_THROW( Vok::entityAt( *root_, "/numbered[5]" ), Corvo::RangeException );
}

TEST_F( PathTest, theErrorSaysWhereAndWhat )
{
   try {
      Vok::entityAt( *root_, "/names[1]" );
      FAIL();
   } catch ( const Corvo::ParseException & e ) {
      EXPECT_EQ( e.offset(), 1U );
      EXPECT_STREQ( e.what(),
            "at offset 1: expected a collection of children or a single child of Test::Root, "
            R"(found "names[1]")" );
   }
}

} // namespace
