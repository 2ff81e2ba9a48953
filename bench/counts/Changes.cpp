// Changes of attributes, unheard and heard; reflection; children that come and go.
#include "bench/Check.h"
#include "bench/counts/Situations.h"
#include "tests/model/Everything.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <utility>

namespace Bench {
namespace {

constexpr std::uint32_t times = 1000;

using Root = Corvo::Ptr< Test::Root >;

// change( root, i ) changes something with every i.
template< class Change > void addChange( Situations & all, const char * name, Change change )
{
   all.push_back( { name, times, [ root = Test::rootFactory( "root" ), change ] {
                      for ( std::uint32_t i = 0; i != times; ++i ) {
                         change( *root, i );
                         std::atomic_signal_fence( std::memory_order_seq_cst ); // each is made
                      }
                   } } );
}

void addUnheard( Situations & all )
{
   addChange( all, "set/bool",
         []( Test::Root & root, std::uint32_t i ) { root.enabledIs( i % 2 == 0 ); } );
   addChange( all, "set/bounded",
         []( Test::Root & root, std::uint32_t i ) { root.levelIs( Test::Level( i % 7 + 1 ) ); } );
   addChange( all, "set/u16", []( Test::Root & root, std::uint32_t i ) {
      root.midIs( static_cast< std::uint16_t >( i ) );
   } );
   addChange( all, "set/equal", []( Test::Root & root, std::uint32_t ) { root.midIs( 7 ); } );
   addChange( all, "set/optional",
         []( Test::Root & root, std::uint32_t i ) { root.maybeIntIs( i ); } );
   const std::array< Corvo::String, 2 > words{ "some", "other" };
   addChange( all, "set/text",
         [ words ]( Test::Root & root, std::uint32_t i ) { root.titleIs( words[ i % 2 ] ); } );
   const std::array< Corvo::String, 2 > texts{ "a text that is too long for its place",
      "another one, which is not much shorter" };
   addChange( all, "set/long-text",
         [ texts ]( Test::Root & root, std::uint32_t i ) { root.titleIs( texts[ i % 2 ] ); } );
   const std::array< Test::Pair, 2 > pairs{ Test::Pair(),
      Test::Pair( 1, "one", Test::blue, Test::Level( 3 ), true, Vok::Seconds( 2 ) ) };
   addChange( all, "set/value",
         [ pairs ]( Test::Root & root, std::uint32_t i ) { root.pairIs( pairs[ i % 2 ] ); } );
}

class Counter final : public Corvo::Notifiee {
 public:
   void onChange( const Corvo::Change & change ) override
   {
      heard += change.attrId == Test::Root::midAttrId ? 1U : 0U;
   }
   std::uint32_t heard = 0;
};

void addHeard( Situations & all, std::uint32_t listeners )
{
   const auto counters = std::make_shared< std::vector< Counter > >( listeners );
   const Root root = Test::rootFactory( "root" );
   for ( Counter & counter : *counters ) {
      root->publisher().notifieeIs( &counter );
   }
   all.push_back( { "heard/" + std::to_string( listeners ), times, [ root, counters ] {
                      const std::uint32_t before = counters->back().heard;
                      for ( std::uint32_t i = 0; i != times; ++i ) {
                         root->midIs( static_cast< std::uint16_t >( i + 1 ) );
                      }
                      require( counters->back().heard - before == times, "changes heard" );
                   } } );
}

void addReflection( Situations & all )
{
   addChange( all, "reflection/set", []( Test::Root & root, std::uint32_t i ) {
      root.typeData().attribute( "mid" )->set( root, i % 2 == 0 ? "12" : "345" );
   } );
   addChange( all, "reflection/get", []( Test::Root & root, std::uint32_t ) {
      require( root.typeData().attribute( "title" )->get( root ).size() != 0, "a text" );
   } );
}

void addChildren( Situations & all )
{
   std::vector< Corvo::String > names;
   for ( std::uint32_t i = 0; i != times; ++i ) {
      names.emplace_back( "child" + std::to_string( i ) );
   }
   const Corvo::Ptr< Test::Tree > tree = Test::treeFactory( "tree" );
   all.push_back( { "children/make-and-destroy", times, [ tree, names ] {
                      for ( const Corvo::String & name : names ) {
                         tree->hostsIs( name );
                      }
                      require( tree->hosts().size() == times, "children" );
                      for ( const Corvo::String & name : names ) {
                         tree->hostsDel( name );
                      }
                   } } );
   all.push_back( { "entity/make-and-destroy", times, [] {
                      for ( std::uint32_t i = 0; i != times; ++i ) {
                         Test::leafFactory( "leaf" );
                      }
                   } } );
}

} // namespace

void addChanges( Situations & situations )
{
   addUnheard( situations );
   addHeard( situations, 1 );
   addHeard( situations, 4 );
   addReflection( situations );
   addChildren( situations );
}

} // namespace Bench
