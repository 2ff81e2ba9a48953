// Where memory ends in the middle of a mutator, the entity is as it was and nobody has been told.
#include "tests/Vok/OutOfMemory.h"
#include "tests/Vok/Streams.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using Corvo::Ptr;
using ::Test::Label;
using ::Test::Level;
using ::Test::Narrow;
using ::Test::Pair;
using ::Test::Recipe;
using ::Test::Root;
using TestSupport::Counter;
using TestSupport::Outcome;
using TestSupport::Source;
using TestSupport::withEveryFailure;

// Too long to stand in place.
Corvo::String longText( std::string_view end )
{
   return Corvo::String( std::string( 40, 'x' ).append( end ) );
}

Pair pair( std::uint32_t id, std::string_view text )
{
   return Pair( id, longText( text ), ::Test::green, Level( 1 ), true, Vok::Seconds( 1 ) );
}

Recipe recipe( std::uint16_t id, std::uint32_t steps )
{
   Recipe made{ Narrow( id ) };
   for ( std::uint32_t step = 0; step != steps; ++step ) {
      made.stepIs( step, pair( step, "step" ) );
   }
   return made;
}

// A tree whose collections have no room for another member.
Ptr< Root > fullTree()
{
   const Ptr< Root > root = Root::RootIs( "root" );
   for ( std::uint32_t i = 0; i != 13; ++i ) {
      const std::string text = std::to_string( i );
      root->namesIs( i, longText( text ) );
      root->byNameIs( longText( text ), pair( i, text ) );
      root->sortedIs( pair( i, text ) );
      root->wordsIs( longText( text ) );
      root->recipesIs( recipe( static_cast< std::uint16_t >( 300 + i ), 3 ) );
      root->treeIs( longText( text ) )->kidsIs( "kid" );
      root->groupsIs( longText( text ), i );
      root->slotsIs( Label( text ), 7 );
      root->numberedIs( Narrow( 300 + i ) );
      root->bindingsIs( Label( text ), root->tree( longText( text ) ), ::Test::red );
      root->refsIs( root->numbered( Narrow( 300 + i ) ) );
      root->leafRefsIs( root->tree( longText( text ) ) );
   }
   for ( std::uint32_t i = 0; i != 30; ++i ) {
      root->stepsIs( i, i );
   }
   for ( std::uint32_t i = 0; i != 64; ++i ) {
      root->marksIs( i );
   }
   root->titleIs( longText( "title" ) );
   root->maybePairIs( pair( 1, "maybe" ) );
   root->recipeIs( recipe( 400, 3 ) );
   root->singleIs( longText( "single" ) );
   return root;
}

enum class Memory {
   needed,
   notNeeded
};
using enum Memory;

struct Operation {
   const char * what;
   Memory memory;
   void ( *run )( Root & );
};

// Every kind of mutator: what inserts, what replaces, what deletes; arguments are made in it, so
// that their allocations fail as well.
// The name of a member of each collection by text.
const Corvo::String member = longText( "5" );
const std::string newWord( 40, 'n' );

const Operation operations[] = {
   { "plain number", notNeeded, []( Root & r ) { r.midIs( 5 ); } },
   { "plain text", needed, []( Root & r ) { r.titleIs( longText( "new" ) ); } },
   { "counter", notNeeded, []( Root & r ) { r.countInc( 5 ); } },
   { "value", needed, []( Root & r ) { r.pairIs( pair( 1, "new" ) ); } },
   { "value with a collection", needed, []( Root & r ) { r.recipeIs( recipe( 401, 40 ) ); } },
   { "optional value", needed, []( Root & r ) { r.maybePairIs( pair( 2, "new" ) ); } },
   { "optional value away", notNeeded, []( Root & r ) { r.maybePairIs( std::nullopt ); } },
   { "map, a new member", needed, []( Root & r ) { r.namesIs( 100, longText( "new" ) ); } },
   { "map, another value", needed, []( Root & r ) { r.namesIs( 5, longText( "new" ) ); } },
   { "map, a member less", notNeeded, []( Root & r ) { r.namesDel( 5 ); } },
   { "map, all", notNeeded, []( Root & r ) { r.namesDelAll(); } },
   { "map by text, a new member", needed,
         []( Root & r ) { r.byNameIs( longText( "n" ), pair( 1, "n" ) ); } },
   { "map by text, another value", needed,
         []( Root & r ) { r.byNameIs( member, pair( 1, "n" ) ); } },
   { "map by text, a member less", notNeeded,
         []( Root & r ) { r.byNameDel( member ); } },
   { "keyed map, a new member", needed, []( Root & r ) { r.recipesIs( recipe( 500, 30 ) ); } },
   { "keyed map, another value", needed, []( Root & r ) { r.recipesIs( recipe( 305, 30 ) ); } },
   { "keyed map, all", notNeeded, []( Root & r ) { r.recipesDelAll(); } },
   { "small keyed map", needed,
         []( Root & r ) { r.plainsIs( ::Test::Plain( ::Test::blue, 1, 2, 3 ) ); } },
   { "ordered map, a new member", needed, []( Root & r ) { r.stepsIs( 100, 1 ); } },
   { "ordered map, another value", notNeeded, []( Root & r ) { r.stepsIs( 5, 1 ); } },
   { "ordered keyed map, a new member", needed,
         []( Root & r ) { r.sortedIs( pair( 100, "new" ) ); } },
   { "ordered keyed map, another value", needed,
         []( Root & r ) { r.sortedIs( pair( 5, "new" ) ); } },
   { "ordered keyed map, a member less", notNeeded, []( Root & r ) { r.sortedDel( 5 ); } },
   { "ordered keyed map, all", notNeeded, []( Root & r ) { r.sortedDelAll(); } },
   { "set", needed, []( Root & r ) { r.wordsIs( longText( "new" ) ); } },
   { "set, a new member of any text", needed,
         []( Root & r ) { r.wordsIs( std::string_view( newWord ) ); } },
   { "set, a member of any text", notNeeded,
         []( Root & r ) { r.wordsIs( member.view() ); } },
   { "set, a member less", notNeeded, []( Root & r ) { r.wordsDel( member ); } },
   { "set of enumerators", needed, []( Root & r ) { r.coloursIs( ::Test::blue ); } },
   { "ordered set", needed, []( Root & r ) { r.marksIs( 100 ); } },
   { "ordered set, all", notNeeded, []( Root & r ) { r.marksDelAll(); } },
   { "child", needed, []( Root & r ) { r.treeIs( longText( "new" ) ); } },
   { "child that exists", notNeeded, []( Root & r ) { r.treeIs( member ); } },
   { "child away", notNeeded, []( Root & r ) { r.treeDel( member ); } },
   { "all children", notNeeded, []( Root & r ) { r.treeDelAll(); } },
   { "child that makes a child", needed, []( Root & r ) { r.groupsIs( longText( "new" ), 100 ); } },
   { "child by a value", needed, []( Root & r ) { r.slotsIs( Label( "a new label" ), 5 ); } },
   { "child with another settable argument", notNeeded,
         []( Root & r ) { r.slotsIs( Label( "5" ), 8 ); } },
   { "child without a name", needed, []( Root & r ) { r.numberedIs( Narrow( 1000 ) ); } },
   { "child that refers to another", needed,
         []( Root & r ) { r.bindingsIs( Label( "new" ), r.tree( member ), {} ); } },
   { "single child of another name", needed, []( Root & r ) { r.singleIs( longText( "new" ) ); } },
   { "single child away", notNeeded, []( Root & r ) { r.singleDel(); } },
   { "single child again", notNeeded,
         []( Root & r ) {
            r.onlyIs();
         } },
   { "reference", needed,
         []( Root & r ) { r.refsIs( ::Test::Numbered::NumberedIs( Narrow( 2000 ) ) ); } },
   { "reference to another", needed,
         []( Root & r ) { r.refsIs( ::Test::Numbered::NumberedIs( Narrow( 305 ) ) ); } },
   { "reference by name", needed,
         []( Root & r ) { r.leafRefsIs( r.tree( member )->kids( "kid" ) ); } },
   { "all references", notNeeded, []( Root & r ) { r.leafRefsDelAll(); } },
   { "a fresh one", needed, []( Root & r ) { r.instantiate(); } },
};

std::size_t entitiesAlive()
{
   std::size_t alive = 0;
   for ( const Vok::TypeData & type :
         Corvo::ModuleInspectData::findType( "Test::Root" )->module().types() ) {
      alive += Vok::AllocTracker::liveCount( type.name() );
   }
   return alive;
}

class OutOfMemoryTest : public testing::TestWithParam< Operation > {};

TEST_P( OutOfMemoryTest, leavesTheTreeAsItWas )
{
   const Ptr< Root > changed = fullTree();
   GetParam().run( *changed );
   const Vok::Digest after = Vok::treeDigest( *changed );
   for ( const bool listening : { false, true } ) {
      std::size_t failures = 0;
      withEveryFailure( [ & ]( auto attempt ) {
         const Ptr< Root > root = fullTree();
         const Vok::Digest before = Vok::treeDigest( *root );
         const std::size_t alive = entitiesAlive();
         Counter counter;
         if ( listening ) {
            root->publisher().notifieeIs( &counter );
         }
         if ( attempt( [ & ] { GetParam().run( *root ); } ) == Outcome::failed ) {
            ++failures;
            EXPECT_EQ( Vok::treeDigest( *root ), before );
            EXPECT_EQ( counter.heard, 0U );
            EXPECT_EQ( entitiesAlive(), alive );
            GetParam().run( *root );
         }
         EXPECT_EQ( Vok::treeDigest( *root ), after );
      } );
      EXPECT_EQ( failures != 0, GetParam().memory == Memory::needed );
   }
}

// With a stream, memory may also be missing to note the change: that may stay, and the replica gets
// to know of it.
TEST_P( OutOfMemoryTest, leavesAStreamThatRecovers )
{
   withEveryFailure( [ & ]( auto attempt ) {
      const Ptr< Root > root = fullTree();
      Vok::EntityVokNboAttrLogSa writer( root );
      TestSupport::Replica replica;
      Vok::NboAttrLog::Out out;
      writer.write( out );
      replica.read( out.bytes() );
      if ( attempt( [ & ] { GetParam().run( *root ); } ) == Outcome::failed ) {
         out.clear();
         writer.write( out );
         replica.read( out.bytes() );
         ASSERT_NO_FATAL_FAILURE( TestSupport::expectEqual( *root, *replica.root ) );
         GetParam().run( *root );
      }
      out.clear();
      writer.write( out );
      replica.read( out.bytes() );
      ASSERT_NO_FATAL_FAILURE( TestSupport::expectEqual( *root, *replica.root ) );
   } );
}

INSTANTIATE_TEST_SUITE_P( Mutators, OutOfMemoryTest, testing::ValuesIn( operations ),
      []( const auto & test ) {
         std::string name( test.param.what );
         std::replace_if(
               name.begin(), name.end(), []( char c ) { return c == ' ' || c == ','; }, '_' );
         return name;
      } );

} // namespace
