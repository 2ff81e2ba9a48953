// Following attributes, members and trees, deferring, waiting, and mirroring keys.
#include "tests/Vok/Streams.h"
#include "tests/support/Recorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Corvo::Change;
using Corvo::Ptr;
using ::Test::Narrow;
using ::Test::Root;
using ::Test::Tree;
using TestSupport::Heard;
using TestSupport::Recorder;
using TestSupport::Replica;
using TestSupport::Source;
using Vok::Deferred;
using Vok::Follower;
using Vok::KeyMirror;
using Vok::TreeFollower;
using Vok::When;

TEST( FollowerTest, hearsOfItsAttributeAlone )
{
   const auto root = Root::RootIs( "r" );
   std::vector< std::uint16_t > before;
   {
      const Follower follower( *root, Root::midAttrId, [ & ]( const Change & change ) {
         before.push_back( *change.oldValue< std::uint16_t >() );
      } );
      root->midIs( 5 );
      root->countIs( 7 );
      root->midIs( 6 );
   }
   root->midIs( 7 );
   EXPECT_EQ( before, ( std::vector< std::uint16_t >{ 0, 5 } ) );
}

TEST( FollowerTest, hearsOfItsMemberAlone )
{
   const auto root = Root::RootIs( "r" );
   int names = 0;
   int words = 0;
   const Follower name(
         *root, Root::namesAttrId, std::uint32_t{ 5 }, [ & ]( const Change & ) { ++names; } );
   const Follower word( *root, Root::wordsAttrId, "a word", [ & ]( const Change & ) { ++words; } );
   root->namesIs( 5, "x" );
   root->namesIs( 6, "x" );
   root->namesDel( 5 );
   root->wordsIs( "a word" );
   root->wordsIs( "another" );
   EXPECT_EQ( names, 2 );
   EXPECT_EQ( words, 1 );
}

TEST( FollowerTest, mayDestroyItselfAndOutliveItsEntity )
{
   auto root = Root::RootIs( "r" );
   int heard = 0;
   std::unique_ptr< Follower > once;
   const std::string text( 100, 'x' );
   once = std::make_unique< Follower >( *root, Root::midAttrId, [ &, text ]( const Change & ) {
      once.reset();
      heard += static_cast< int >( text.size() );
   } );
   const Follower other( *root, Root::midAttrId, [ & ]( const Change & ) { ++heard; } );
   root->midIs( 1 );
   root->midIs( 2 );
   EXPECT_EQ( heard, 102 );
   root = nullptr;
}

TEST( FollowerTest, whatItThrowsReachesTheMutator )
{
   const auto root = Root::RootIs( "r" );
   const Follower follower(
         *root, Root::midAttrId, []( const Change & ) { throw std::runtime_error( "no" ); } );
   EXPECT_THROW( root->midIs( 1 ), std::runtime_error );
   EXPECT_EQ( root->mid(), 1 );
}

/// Each change as "PATH ATTRIBUTE[KEY]".
class TreeRecorder {
 public:
   explicit TreeRecorder( const Vok::Entity & root )
         : follower_( root, [ this ]( const auto & change, const auto & attribute ) {
              hear( change, attribute );
           } )
   {
   }

   Heard take()
   {
      Heard taken;
      taken.swap( heard_ );
      return taken;
   }

 private:
   void hear( const Change & change, const Vok::AttributeData & attribute )
   {
      std::string text( Vok::pathOf( change.entity ).view() );
      text.append( " " ).append( attribute.name() );
      if ( change.hasKey() ) {
         text.append( "[" ).append( change.keyText().view() ).append( "]" );
      }
      heard_.push_back( text );
   }

   Heard heard_;
   TreeFollower follower_;
};

TEST( TreeFollowerTest, hearsOfAllThatIsBelow )
{
   const auto root = Root::RootIs( "r" );
   const auto old = root->treeIs( "old" );
   TreeRecorder tree( *root );
   root->midIs( 5 );
   old->depthIs( 1 );
   old->groupsIs( "g", 7 )->seenIs( true );
   root->namesIs( 5, "x" );
   root->namesDel( 5 );
   const auto fresh = root->treeIs( "new" );
   fresh->depthIs( 2 );
   EXPECT_EQ( tree.take(),
         ( Heard{ "/ mid", "/tree[old] depth", "/tree[old] groups[7]",
               "/tree[old]/groups[7] seen", "/ names[5]", "/ names[5]", "/ tree[new]",
               "/tree[new] depth" } ) );
}

TEST( TreeFollowerTest, hearsNothingOfWhatHasLeft )
{
   const auto root = Root::RootIs( "r" );
   const auto gone = root->treeIs( "gone" );
   const auto below = gone->groupsIs( "g", 7 );
   const auto first = root->singleIs( "first" );
   TreeRecorder tree( *root );
   root->treeDel( "gone" );
   gone->depthIs( 1 );
   below->innerIs()->pathIs( "x" );
   const auto second = root->singleIs( "second" );
   first->activeIs( true );
   second->activeIs( true );
   root->singleDel();
   second->activeIs( false );
   EXPECT_EQ( tree.take(),
         ( Heard{ "/ tree[gone]", "/ single", "/single active", "/ single" } ) );
}

TEST( TreeFollowerTest, hearsWhatABatchBrings )
{
   Source source;
   Replica replica;
   source.root->treeIs( "stays" );
   replica.read( source.batch() );
   TreeRecorder tree( *replica.root );
   source.root->treeIs( "stays" )->depthIs( 3 );
   source.root->treeIs( "new" )->depthIs( 4 );
   replica.read( source.batch() );
   EXPECT_EQ( tree.take(), ( Heard{ "/ tree[new]", "/tree[stays] depth" } ) );
   source.root->tree( "new" )->depthIs( 5 );
   replica.read( source.batch() );
   EXPECT_EQ( tree.take(), Heard{ "/tree[new] depth" } );
}

TEST( TreeFollowerTest, mayBeDestroyedByWhatItDoes )
{
   const auto root = Root::RootIs( "r" );
   std::unique_ptr< TreeFollower > once;
   std::string did;
   const std::string text( 100, 'x' );
   once = std::make_unique< TreeFollower >(
         *root, [ &, text ]( const Change &, const Vok::AttributeData & ) {
            once.reset();
            did = text;
         } );
   root->midIs( 1 );
   root->midIs( 2 );
   EXPECT_EQ( did.size(), 100U );
}

TEST( TreeFollowerTest, walksDeepTrees )
{
   const auto root = Root::RootIs( "r" );
   Ptr< Tree > deep = root->treeIs( "t" );
   for ( int i = 0; i != 200000; ++i ) {
      deep = deep->kidsIs( "k" );
   }
   int heard = 0;
   const TreeFollower follower(
         *root, [ & ]( const Change &, const Vok::AttributeData & ) { ++heard; } );
   deep->depthIs( 1 );
   EXPECT_EQ( heard, 1 );
}

TEST( DeferredTest, worksOnceABatch )
{
   Source source;
   Replica replica;
   replica.read( source.batch() );
   std::vector< std::size_t > seen;
   Deferred count( [ & ] { seen.push_back( replica.root->tree().size() ); } );
   const Follower trees(
         *replica.root, Root::treeAttrId, [ & ]( const Change & ) { count.request(); } );
   for ( int i = 0; i != 100; ++i ) {
      source.root->treeIs( std::to_string( i ) );
   }
   replica.read( source.batch() );
   EXPECT_TRUE( count.requested() );
   count.run();
   count.run();
   EXPECT_EQ( seen, std::vector< std::size_t >{ 100 } );
}

TEST( DeferredTest, isRequestedAgainMeanwhileOrByAnException )
{
   int runs = 0;
   Deferred * self = nullptr;
   Deferred work( [ & ] {
      if ( ++runs == 1 ) {
         self->request();
      } else if ( runs == 2 ) {
         throw std::runtime_error( "once more" );
      }
   } );
   self = &work;
   work.run();
   EXPECT_EQ( runs, 0 );
   work.request();
   work.run();
   EXPECT_TRUE( work.requested() );
   EXPECT_THROW( work.run(), std::runtime_error );
   EXPECT_TRUE( work.requested() );
   work.run();
   EXPECT_FALSE( work.requested() );
   EXPECT_EQ( runs, 3 );
}

TEST( WhenTest, actsOnceWhenItHolds )
{
   const auto root = Root::RootIs( "r" );
   int acted = 0;
   const auto act = [ & ] { ++acted; };
   const When ten(
         *root, Root::countAttrId, [ & ] { return root->count() >= 10; }, act );
   root->countInc( 9 );
   EXPECT_TRUE( ten.waiting() );
   EXPECT_EQ( acted, 0 );
   root->countInc( 1 );
   EXPECT_FALSE( ten.waiting() );
   root->countInc( 1 );
   root->countIs( 0 );
   root->countIs( 10 );
   EXPECT_EQ( acted, 1 );
   const When now(
         *root, Root::countAttrId, [ & ] { return root->count() == 10; }, act );
   EXPECT_EQ( acted, 2 ) << "it held already";
}

TEST( WhenTest, mayBeDestroyedByWhatItDoes )
{
   const auto root = Root::RootIs( "r" );
   std::unique_ptr< When > when;
   std::string did;
   const std::string text( 100, 'x' );
   when = std::make_unique< When >(
         *root, Root::midAttrId, [ & ] { return root->mid() == 2; }, [ &, text ] {
            when.reset();
            did = text; } );
   root->midIs( 1 );
   EXPECT_NE( when, nullptr );
   root->midIs( 2 );
   EXPECT_EQ( when, nullptr );
   EXPECT_EQ( did.size(), 100U );
}

std::vector< std::string > keysOf( const Vok::Entity & entity, std::string_view collection )
{
   std::vector< std::string > keys;
   for ( const Corvo::String & key : entity.typeData().attribute( collection )->keys( entity ) ) {
      keys.emplace_back( key.view() );
   }
   std::sort( keys.begin(), keys.end() );
   return keys;
}

using Keys = std::vector< std::string >;

TEST( KeyMirrorTest, childrenFollowChildren )
{
   const auto source = Root::RootIs( "source" );
   const auto target = Root::RootIs( "target" );
   source->treeIs( "a" );
   source->treeIs( "two words" );
   const auto stays = target->treeIs( "a" );
   target->treeIs( "goes" );
   {
      const KeyMirror mirror( *source, "tree", *target, "tree" );
      EXPECT_EQ( keysOf( *target, "tree" ), ( Keys{ "\"two words\"", "a" } ) );
      EXPECT_EQ( target->tree( "a" ), stays );
      Recorder heard( *target );
      source->treeIs( "b" )->depthIs( 5 );
      source->treeDel( "a" );
      source->treeDel( "absent" );
      const std::string id = std::to_string( Root::treeAttrId );
      EXPECT_EQ( heard.take(), ( Heard{ id + "[b]", id + "[a] was a" } ) );
      EXPECT_EQ( target->tree( "b" )->depth(), 0U ) << "keys alone";
      source->treeDelAll();
      EXPECT_TRUE( target->tree().empty() );
   }
   source->treeIs( "later" );
   EXPECT_TRUE( target->tree().empty() );
}

TEST( KeyMirrorTest, setsAndMapsAreSourcesAsWell )
{
   const auto root = Root::RootIs( "r" );
   const auto target = Root::RootIs( "target" );
   const KeyMirror trees( *root, "words", *target, "tree" );
   const KeyMirror marks( *root, "names", *target, "marks" );
   root->wordsIs( "w" );
   root->namesIs( 5, "x" );
   root->namesIs( 5, "y" );
   EXPECT_EQ( keysOf( *target, "tree" ), Keys{ "w" } );
   EXPECT_EQ( keysOf( *target, "marks" ), Keys{ "5" } );
   root->wordsDel( "w" );
   root->namesDelAll();
   EXPECT_TRUE( target->tree().empty() && target->marks().empty() );
}

TEST( KeyMirrorTest, refusesWhatItCannotMirror )
{
   const auto root = Root::RootIs( "r" );
   const auto target = Root::RootIs( "target" );
   const auto mirrored = [ & ]( const char * from, const char * to ) {
      try {
         const KeyMirror mirror( *root, from, *target, to );
      } catch ( const std::invalid_argument & e ) {
         return std::string( e.what() );
      }
      return std::string();
   };
   const auto refused = []( const std::string & collection ) {
      return "Test::Root has no collection '" + collection + "' that can be mirrored";
   };
   EXPECT_EQ( mirrored( "absent", "tree" ), refused( "absent" ) );
   EXPECT_EQ( mirrored( "words", "names" ), refused( "names" ) );
   EXPECT_EQ( mirrored( "title", "words" ), refused( "title" ) );
   EXPECT_EQ( mirrored( "words", "groups" ), refused( "groups" ) );
   EXPECT_EQ( mirrored( "words", "words" ), "" );
}

} // namespace
