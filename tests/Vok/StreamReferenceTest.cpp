// References of a streamed tree: into it, out of it, and across its edge.
#include "tests/Vok/Streams.h"
#include "tests/support/Recorder.h"

#include <gtest/gtest.h>

namespace {

using Root = ::Test::Root;
using TestSupport::Bytes;
using TestSupport::expectEqual;
using TestSupport::Heard;
using TestSupport::Recorder;
using TestSupport::Replica;
using TestSupport::Source;

struct StreamReferenceTest : testing::Test {
   void send()
   {
      replica.read( source.batch() );
      ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
   }

   Source source;
   Replica replica;
};

TEST_F( StreamReferenceTest, intoTheTreeIsTheReplicasOwnEntity )
{
   const auto tree = source.root->treeIs( "a" )->kidsIs( "b" );
   source.root->leafRefsIs( tree );
   source.root->bindingsIs( ::Test::Label( "l" ), tree, ::Test::Colour::blue );
   send();
   const auto there = replica.root->tree( "a" )->kids( "b" );
   EXPECT_EQ( replica.root->leafRefs( "b" ), there );
   EXPECT_EQ( replica.root->bindings( ::Test::Label( "l" ) )->target(), there );
}

TEST_F( StreamReferenceTest, whatAResyncDoesNotLeadToIsNotFollowed )
{
   const auto outside = ::Test::Tree::TreeIs( "outside" );
   source.root->leafRefsIs( outside );
   send();
   source.writer.resync();
   source.root->leafRefsDel( "outside" );
   send();
   outside->depthIs( 7 );
   EXPECT_FALSE( source.writer.hasChanges() );
   source.root->countIs( 1 );
   send();
}

TEST_F( StreamReferenceTest, aResyncFindsAnewWhatIsOutside )
{
   const auto outside = ::Test::Tree::TreeIs( "outside" );
   const auto below = outside->kidsIs( "below" );
   source.root->leafRefsIs( outside );
   source.root->leafRefsIs( below );
   send();
   EXPECT_EQ( replica.root->leafRefs( "below" )->parent(), replica.root->leafRefs( "outside" ) );

   source.writer.resync();
   source.root->leafRefsDel( "outside" ); // nothing but that leads to what is above `below`
   send();
   EXPECT_FALSE( source.writer.hasChanges() );
   below->depthIs( 9 );
   send();
   EXPECT_EQ( replica.root->leafRefs( "below" )->depth(), 9U );
   outside->depthIs( 7 );
   EXPECT_FALSE( source.writer.hasChanges() );
}

TEST_F( StreamReferenceTest, aResyncCountsReferencesAnew )
{
   const auto inTree = source.root->treeIs( "a" )->kidsIs( "b" );
   const auto outside = ::Test::Tree::TreeIs( "outside" );
   outside->kidsIs( "below" )->linksIs( inTree );
   source.root->leafRefsIs( outside );
   source.root->leafRefsIs( inTree );
   send();

   source.writer.resync();
   source.root->leafRefsDel( "outside" ); // with all below it, which refers to `b`
   send();
   source.root->tree( "a" )->kidsDel( "b" );
   inTree->depthIs( 5 );
   send();
   EXPECT_EQ( replica.root->leafRefs( "b" )->depth(), 5U );
   inTree->depthIs( 6 );
   send();
   EXPECT_EQ( replica.root->leafRefs( "b" )->depth(), 6U );
}

TEST_F( StreamReferenceTest, aRootMayHaveAReferenceAmongItsArguments )
{
   const auto target = ::Test::Tree::TreeIs( "t" );
   target->depthIs( 3 );
   const auto made = [ & ] {
      return ::Test::Binding::BindingIs( ::Test::Label( "l" ), target, ::Test::Colour::blue );
   };
   const auto root = made();
   const auto copy = made();
   Vok::EntityVokNboAttrLogSa writer( root );
   Vok::EntityVokNboAttrLogReader reader( copy );
   Vok::NboAttrLog::Out out;
   writer.write( out );
   Vok::NboAttrLog::In in( out.bytes() );
   reader.read( in );
   EXPECT_EQ( Vok::treeDigest( *root ), Vok::treeDigest( *copy ) );
}

TEST_F( StreamReferenceTest, whatLeavesLetsGoOfWhatItReferredTo )
{
   const auto outside = ::Test::Tree::TreeIs( "outside" );
   const auto below = outside->kidsIs( "below" );
   source.root->treeIs( "a" )->kidsIs( "b" )->linksIs( outside );
   source.root->treeIs( "c" )->linksIs( below );
   send();
   const Corvo::Ptr< const ::Test::Tree > there =
         replica.root->tree( "a" )->kids( "b" )->links( "outside" );
   EXPECT_EQ( replica.root->tree( "c" )->links( "below" ), there->kids( "below" ) );
   source.root->treeDel( "a" );
   send();
   EXPECT_EQ( there->refCount(), 1U );
   send(); // that `below` stands alone now
   outside->depthIs( 5 );
   EXPECT_FALSE( source.writer.hasChanges() ) << "nothing leads there any more";
   below->depthIs( 6 );
   send();
   EXPECT_EQ( replica.root->tree( "c" )->links( "below" )->depth(), 6U );
}

// First a part of what is outside is referred to, then what it is a part of.
TEST_F( StreamReferenceTest, whatIsKnownFromOutsideKeepsWhatItHasAsAChild )
{
   const auto outside = ::Test::Tree::TreeIs( "outside" );
   const auto part = outside->kidsIs( "part" );
   part->depthIs( 5 );
   part->kidsIs( "below" )->depthIs( 6 );
   source.root->leafRefsIs( part );
   send();
   source.root->leafRefsIs( outside );
   send();
   const auto there = replica.root->leafRefs( "outside" )->kids( "part" );
   EXPECT_EQ( there, replica.root->leafRefs( "part" ) );
   EXPECT_EQ( there->depth(), 5U );
   EXPECT_EQ( there->kids( "below" )->depth(), 6U );
}

TEST_F( StreamReferenceTest, anEntityThatLeftTheTreeIsHeldParentless )
{
   const auto tree = source.root->treeIs( "a" );
   tree->kidsIs( "below" )->depthIs( 2 );
   source.root->leafRefsIs( tree );
   send();
   const auto there = replica.root->tree( "a" );
   source.root->treeDel( "a" );
   send();
   EXPECT_EQ( replica.root->tree( "a" ), nullptr );
   EXPECT_EQ( replica.root->leafRefs( "a" ), there ) << "it keeps its identity";
   EXPECT_EQ( there->parent(), nullptr );
   tree->depthIs( 9 );
   tree->kids( "below" )->depthIs( 3 );
   send();
   EXPECT_EQ( there->depth(), 9U ) << "and is followed outside as well";
   EXPECT_EQ( there->kids( "below" )->depth(), 3U );
   source.root->leafRefsDel( "a" );
   send();
   EXPECT_EQ( there->refCount(), 1U );
}

TEST_F( StreamReferenceTest, anEntityThatNeverWasInTheTreeTravelsWhole )
{
   const auto outside = ::Test::Tree::TreeIs( "o" );
   outside->depthIs( 4 );
   outside->kidsIs( "k" )->depthIs( 5 );
   source.root->leafRefsIs( outside );
   send();
   const auto there = replica.root->leafRefs( "o" );
   EXPECT_EQ( there->parent(), nullptr );
   EXPECT_EQ( there->depth(), 4U );
   EXPECT_EQ( there->kids( "k" )->depth(), 5U );
}

TEST_F( StreamReferenceTest, oneEntityReferredToTwiceIsOne )
{
   const auto outside = ::Test::Tree::TreeIs( "o" );
   source.root->leafRefsIs( outside );
   source.root->bindingsIs( ::Test::Label( "l" ), outside, ::Test::Colour::red );
   send();
   EXPECT_EQ(
         replica.root->leafRefs( "o" ), replica.root->bindings( ::Test::Label( "l" ) )->target() );
}

TEST_F( StreamReferenceTest, aReferenceToAnotherEntityOfTheSameKeyIsAChange )
{
   source.root->numberedIs( ::Test::Narrow( 300 ) );
   source.root->refsIs( source.root->numbered( ::Test::Narrow( 300 ) ) );
   send();
   const auto before = replica.root->refs( ::Test::Narrow( 300 ) );
   Recorder recorder( *replica.root );
   source.root->refsIs( ::Test::Numbered::NumberedIs( ::Test::Narrow( 300 ) ) );
   send();
   EXPECT_NE( replica.root->refs( ::Test::Narrow( 300 ) ), before );
   EXPECT_EQ( recorder.take().size(), 1U );
}

TEST_F( StreamReferenceTest, aRestartedWriterLeavesWhatDidNotChangeAlone )
{
   const auto fill = []( Root & root ) {
      const auto outside = ::Test::Tree::TreeIs( "o" );
      outside->depthIs( 4 );
      outside->kidsIs( "k" )->depthIs( 5 );
      root.leafRefsIs( outside );
      root.bindingsIs( ::Test::Label( "l" ), outside, ::Test::Colour::red );
      root.bindingsIs( ::Test::Label( "m" ), ::Test::Tree::TreeIs( "p" ), ::Test::Colour::red );
      root.bindingsIs( ::Test::Label( "n" ), root.treeIs( "in" ), ::Test::Colour::red );
   };
   fill( *source.root );
   send();
   const auto reference = replica.root->leafRefs( "o" );
   const auto binding = replica.root->bindings( ::Test::Label( "m" ) );
   Recorder recorder( *replica.root );
   Recorder target( *binding->target() );
   Source again;
   fill( *again.root );
   const_cast< ::Test::Tree & >( *again.root->bindings( ::Test::Label( "m" ) )->target() )
         .depthIs( 8 );
   replica.read( again.batch() );
   ASSERT_NO_FATAL_FAILURE( expectEqual( *again.root, *replica.root ) );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( target.take(), Heard{ std::to_string( ::Test::Tree::depthAttrId ) + " was 0" } );
   EXPECT_EQ( replica.root->leafRefs( "o" ), reference );
   EXPECT_EQ( replica.root->bindings( ::Test::Label( "m" ) ), binding );
}

TEST_F( StreamReferenceTest, aBindingFollowsItsTargetMadeAgain )
{
   source.root->bindingsIs( ::Test::Label( "l" ), source.root->treeIs( "a" ), ::Test::Colour::red );
   send();
   source.root->treeDel( "a" );
   source.root->bindingsDel( ::Test::Label( "l" ) );
   source.root->bindingsIs( ::Test::Label( "l" ), source.root->treeIs( "a" ), ::Test::Colour::red );
   send();
   EXPECT_EQ( replica.root->bindings( ::Test::Label( "l" ) )->target(), replica.root->tree( "a" ) );
}

} // namespace
