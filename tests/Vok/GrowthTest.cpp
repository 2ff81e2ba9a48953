// How costs grow with size, in steps of the code: nothing that should be linear is quadratic, and a
// change costs the same whatever the size of the tree.
#include "tests/Vok/Streams.h"
#include "tests/support/Recorder.h"
#include "tests/support/StepMeter.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using Corvo::Ptr;
using ::Test::Narrow;
using ::Test::Pair;
using ::Test::Root;
using ::Test::Tree;
using TestSupport::Bytes;
using TestSupport::Counter;
using TestSupport::Replica;
using TestSupport::Source;
using TestSupport::StepMeter;

/// Runs one thing of a size, and says how many steps it takes, without what prepares it.
struct Work {
   const char * name;
   std::function< std::uint64_t( std::uint32_t size ) > steps;
};

std::ostream & operator<<( std::ostream & out, const Work & work )
{
   return out << work.name;
}

template< class F > std::uint64_t stepsOf( F && f )
{
   const StepMeter meter;
   f();
   return meter.steps();
}

std::string nameOf( std::uint32_t i ) { return "member " + std::to_string( i ); }

Pair pairOf( std::uint32_t id )
{
   return Pair( id, nameOf( id ), ::Test::green, ::Test::Level( 1 ), true, Vok::Seconds( 1 ) );
}

// A root with `size` members in every kind of collection.
void fill( Root & root, std::uint32_t size )
{
   for ( std::uint32_t i = 0; i != size; ++i ) {
      root.namesIs( i, nameOf( i ) );
      root.sortedIs( pairOf( i ) );
      root.wordsIs( nameOf( i ) );
      root.marksIs( i );
      const Ptr< Tree > kid = root.treeIs( nameOf( i ) );
      root.groupsIs( nameOf( i ), i );
      root.leafRefsIs( kid );
   }
}

void empty( Root & root, std::uint32_t size )
{
   for ( std::uint32_t i = 0; i != size; ++i ) {
      root.namesDel( i );
      root.sortedDel( i );
      root.wordsDel( nameOf( i ) );
      root.marksDel( i );
      root.leafRefsDel( nameOf( i ) );
      root.treeDel( nameOf( i ) );
      root.groupsDel( i );
   }
}

// A chain of children, each with another name; the root refers to every one of them.
Ptr< Root > chain( std::uint32_t size )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   Ptr< Tree > last = root->treeIs( "first" );
   for ( std::uint32_t i = 0; i != size; ++i ) {
      last = last->kidsIs( nameOf( i ) );
      root->leafRefsIs( last );
   }
   return root;
}

::Test::Recipe recipeOf( std::uint32_t size )
{
   ::Test::Recipe recipe( Narrow( 300 ) );
   for ( std::uint32_t i = 0; i != size; ++i ) {
      recipe.stepIs( i, pairOf( i ) );
   }
   return recipe;
}

std::uint64_t readOf( const Bytes & whole )
{
   Replica replica;
   return stepsOf( [ & ] { replica.read( whole ); } );
}

const Work linear[] = {
   { "filling",
         []( std::uint32_t size ) {
            const Ptr< Root > root = Root::RootIs( "r" );
            return stepsOf( [ & ] { fill( *root, size ); } );
         } },
   { "filling and emptying while a writer and a notifiee listen",
         []( std::uint32_t size ) {
            Source source;
            source.batch();
            Counter counter( *source.root );
            return stepsOf( [ & ] {
               fill( *source.root, size );
               empty( *source.root, size );
               source.batch();
            } );
         } },
   { "emptying",
         []( std::uint32_t size ) {
            const Ptr< Root > root = Root::RootIs( "r" );
            fill( *root, size );
            return stepsOf( [ & ] { empty( *root, size ); } );
         } },
   { "destroying",
         []( std::uint32_t size ) {
            Ptr< Root > root = Root::RootIs( "r" );
            fill( *root, size );
            return stepsOf( [ & ] { root = nullptr; } );
         } },
   { "writing a whole tree",
         []( std::uint32_t size ) {
            Source source;
            fill( *source.root, size );
            return stepsOf( [ & ] { source.batch(); } );
         } },
   { "reading a whole tree",
         []( std::uint32_t size ) {
            Source source;
            fill( *source.root, size );
            return readOf( source.batch() );
         } },
   { "writing changes of all",
         []( std::uint32_t size ) {
            Source source;
            source.batch();
            fill( *source.root, size );
            return stepsOf( [ & ] { source.batch(); } );
         } },
   { "reading changes of all, heard",
         []( std::uint32_t size ) {
            Source source;
            Replica replica;
            replica.read( source.batch() );
            fill( *source.root, size );
            const Bytes all = source.batch();
            Counter counter( *replica.root );
            return stepsOf( [ & ] { replica.read( all ); } );
         } },
   { "reading that all goes",
         []( std::uint32_t size ) {
            Source source;
            Replica replica;
            fill( *source.root, size );
            replica.read( source.batch() );
            empty( *source.root, size );
            const Bytes none = source.batch();
            return stepsOf( [ & ] { replica.read( none ); } );
         } },
   { "the digest",
         []( std::uint32_t size ) {
            const Ptr< Root > root = Root::RootIs( "r" );
            fill( *root, size );
            return stepsOf( [ & ] { Vok::treeDigest( *root ); } );
         } },
   { "the digest of a chain that is referred to",
         []( std::uint32_t size ) {
            const Ptr< Root > root = chain( size );
            return stepsOf( [ & ] { Vok::treeDigest( *root ); } );
         } },
   { "writing and reading a chain that is referred to",
         []( std::uint32_t size ) {
            Source source;
            source.root = chain( size );
            Vok::EntityVokNboAttrLogSa writer( source.root );
            Vok::NboAttrLog::Out out;
            const std::uint64_t written = stepsOf( [ & ] { writer.write( out ); } );
            return written + readOf( TestSupport::bytesOf( out ) );
         } },
   { "the path of the last of a chain",
         []( std::uint32_t size ) {
            const Ptr< Root > root = chain( size );
            const auto last = root->leafRefs( nameOf( size - 1 ) );
            return stepsOf( [ & ] { Vok::entityAt( *root, Vok::pathOf( *last ) ); } );
         } },
   { "a value with a collection, to its log and back",
         []( std::uint32_t size ) {
            return stepsOf( [ & ] {
               Vok::NboAttrLog::Out out;
               out << recipeOf( size );
               Vok::NboAttrLog::In in( out.bytes() );
               EXPECT_TRUE( ::Test::Recipe( &in ).isEq( recipeOf( size ) ) );
            } );
         } },
   { "a text, to its form and back",
         []( std::uint32_t size ) {
            const Corvo::String text( std::string( size, '\n' ) + "\xc3\xbc\"" );
            return stepsOf( [ & ] {
               const Corvo::String form = Corvo::valueToStrep( text );
               EXPECT_EQ( Corvo::strepToValue< Corvo::String >( form.view() ), text );
            } );
         } },
   { "notifiees that come, hear and go",
         []( std::uint32_t size ) {
            const Ptr< Root > root = Root::RootIs( "r" );
            std::vector< std::unique_ptr< Counter > > counters;
            return stepsOf( [ & ] {
               for ( std::uint32_t i = 0; i != size; ++i ) {
                  counters.push_back( std::make_unique< Counter >( *root ) );
               }
               root->midIs( 5 );
               counters.clear();
            } );
         } },
   { "a notifiee that listens to all and leaves",
         []( std::uint32_t size ) {
            const Ptr< Root > root = chain( size );
            auto counter = std::make_unique< Counter >();
            return stepsOf( [ & ] {
               for ( const auto & tree : root->leafRefs() ) {
                  tree->publisher().notifieeIs( counter.get() );
               }
               counter.reset();
            } );
         } },
};

const Work flat[] = {
   { "writing and reading one change",
         []( std::uint32_t size ) {
            Source source;
            Replica replica;
            fill( *source.root, size );
            replica.read( source.batch() );
            return stepsOf( [ & ] {
               source.root->namesIs( size / 2, "other" );
               source.root->tree( nameOf( size / 2 ) )->depthIs( 7 );
               source.root->treeDel( nameOf( 1 ) );
               source.root->wordsIs( "new" );
               replica.read( source.batch() );
            } );
         } },
   { "a writer that has nothing to say",
         []( std::uint32_t size ) {
            Source source;
            fill( *source.root, size );
            source.batch();
            return stepsOf( [ & ] { source.batch(); } );
         } },
   { "looking up",
         []( std::uint32_t size ) {
            const Ptr< Root > root = Root::RootIs( "r" );
            fill( *root, size );
            return stepsOf( [ & ] {
               EXPECT_EQ( root->names( size / 2 ), nameOf( size / 2 ) );
               EXPECT_TRUE( root->tree( nameOf( size / 2 ) ) );
               EXPECT_FALSE( root->words( "not there" ) );
            } );
         } },
};

class LinearTest : public testing::TestWithParam< Work > {};
class FlatTest : public testing::TestWithParam< Work > {};

constexpr std::uint32_t small = 1000;
constexpr std::uint32_t large = 16 * small;

// Trees of keys grow by a level, and tables have steps: half as much again is no square.
TEST_P( LinearTest, growsWithTheSize )
{
   if ( !StepMeter::counts() ) {
      GTEST_SKIP() << "this build counts no steps";
   }
   const std::uint64_t few = GetParam().steps( small );
   const std::uint64_t many = GetParam().steps( large );
   EXPECT_GT( few, small );
   EXPECT_LE( many, few * ( large / small ) * 3 / 2 ) << few;
}

TEST_P( FlatTest, doesNotGrowWithTheSize )
{
   if ( !StepMeter::counts() ) {
      GTEST_SKIP() << "this build counts no steps";
   }
   const std::uint64_t few = GetParam().steps( small );
   const std::uint64_t many = GetParam().steps( large );
   EXPECT_GT( few, 0U );
   EXPECT_LE( many, few * 3 / 2 ) << few;
}

INSTANTIATE_TEST_SUITE_P( Growth, LinearTest, testing::ValuesIn( linear ) );
INSTANTIATE_TEST_SUITE_P( Growth, FlatTest, testing::ValuesIn( flat ) );

} // namespace
