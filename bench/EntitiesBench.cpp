// Entities made and destroyed: by themselves, as children under their names, as a whole tree.
#include "bench/Check.h"
#include "bench/EntitySubjects.h"
#include "bench/HashMaps.h"
#include "bench/Program.h"

#include <cstddef>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

namespace Bench {
namespace {

using benchmark::State;

// Names in the order of birth, and the order of death.
struct Names {
   std::vector< std::string > born;
   std::vector< std::size_t > dying;

   explicit Names( std::size_t size ) : dying( size )
   {
      TestSupport::Random random( size );
      for ( std::size_t number = 0; number != size; ++number ) {
         born.push_back( "Ethernet" + std::to_string( number ) );
      }
      std::iota( dying.begin(), dying.end(), std::size_t{ 0 } );
      shuffle( dying, random );
   }
};

void countEach( State & state, std::size_t count )
{
   state.SetItemsProcessed( state.iterations() * static_cast< std::int64_t >( count ) );
}

// Adds "<what>/<size>/<contender>", which calls run( state, count ).
void add( const char * what, std::size_t count, const char * contender,
      void ( *run )( State &, std::size_t ) )
{
   const std::size_t digits = std::to_string( count ).size() - 1;
   const std::string name =
         std::string( what ) + "/1e" + std::to_string( digits ) + "/" + contender;
   benchmark::RegisterBenchmark(
         name.c_str(), [ run, count ]( State & state ) { run( state, count ); } );
}

// ---- By themselves ----------------------------------------------------------------------------

// Which part of a life is timed.
enum class Part {
   birth,
   death,
   both
};

template< class Subject, Part part > void alone( State & state, std::size_t count )
{
   const Names names( count );
   std::vector< typename Subject::Pointer > objects( count );
   for ( auto _ : state ) {
      if ( part == Part::death ) {
         state.PauseTiming();
      }
      for ( std::size_t i = 0; i != count; ++i ) {
         objects[ i ] = Subject::make( names.born[ i ] );
      }
      if ( part == Part::birth ) {
         state.PauseTiming();
      } else if ( part == Part::death ) {
         state.ResumeTiming();
      }
      for ( const std::size_t i : names.dying ) {
         objects[ i ] = nullptr;
      }
      if ( part == Part::birth ) {
         state.ResumeTiming();
      }
   }
   countEach( state, count );
}

template< class Subject > void addAlone()
{
   for ( const std::size_t count : { 1000U, 100'000U } ) {
      add( "alone/create", count, Subject::name, alone< Subject, Part::birth > );
      add( "alone/destroy", count, Subject::name, alone< Subject, Part::death > );
      add( "alone/life", count, Subject::name, alone< Subject, Part::both > );
   }
}

// In an arena all end together.
void arenaLife( State & state, std::size_t count )
{
   const Names names( count );
   std::vector< BenchMessages::Item * > objects( count );
   for ( auto _ : state ) {
      google::protobuf::Arena arena;
      for ( std::size_t i = 0; i != count; ++i ) {
         objects[ i ] = google::protobuf::Arena::CreateMessage< BenchMessages::Item >( &arena );
         objects[ i ]->set_name( names.born[ i ] );
      }
   }
   countEach( state, count );
}

// ---- Children ---------------------------------------------------------------------------------

template< class Children > void makeAll( Children & children, const Names & names )
{
   for ( const std::string & name : names.born ) {
      children.make( name );
   }
}

template< class Children > void createKeyed( State & state, std::size_t count )
{
   const Names names( count );
   for ( auto _ : state ) {
      auto children = std::make_unique< Children >();
      makeAll( *children, names );
      state.PauseTiming();
      require( children->size() == count, "children made" );
      children.reset();
      state.ResumeTiming();
   }
   countEach( state, count );
}

template< class Children > void destroyKeyed( State & state, std::size_t count )
{
   const Names names( count );
   for ( auto _ : state ) {
      state.PauseTiming();
      auto children = std::make_unique< Children >();
      makeAll( *children, names );
      state.ResumeTiming();
      for ( const std::size_t i : names.dying ) {
         children->destroy( names.born[ i ] );
      }
      state.PauseTiming();
      require( children->size() == 0, "children destroyed" );
      children.reset();
      state.ResumeTiming();
   }
   countEach( state, count );
}

template< class Children > void addKeyed( const char * contender )
{
   for ( const std::size_t count : { 1000U, 100'000U } ) {
      add( "keyed/create", count, contender, createKeyed< Children > );
      add( "keyed/destroy", count, contender, destroyKeyed< Children > );
   }
}

// ---- Trees ------------------------------------------------------------------------------------

constexpr std::size_t foldersOfEach = 10;

template< class Tree > void build( State & state, std::size_t count )
{
   const TreeNames names( foldersOfEach, count / foldersOfEach / foldersOfEach );
   for ( auto _ : state ) {
      auto made = std::make_unique< Tree >( names );
      state.PauseTiming();
      require( made->size() == foldersOfEach, "a tree" );
      made.reset();
      state.ResumeTiming();
   }
   countEach( state, count );
}

template< class Tree > void tearDown( State & state, std::size_t count )
{
   const TreeNames names( foldersOfEach, count / foldersOfEach / foldersOfEach );
   for ( auto _ : state ) {
      state.PauseTiming();
      auto made = std::make_unique< Tree >( names );
      require( made->size() == foldersOfEach, "a tree" );
      state.ResumeTiming();
      made.reset();
   }
   countEach( state, count );
}

template< class Tree > void addTree( const char * contender )
{
   for ( const std::size_t count : { 10'000U, 100'000U } ) {
      add( "tree/build", count, contender, build< Tree > );
      add( "tree/teardown", count, contender, tearDown< Tree > );
   }
}

template< class V > using StdByName = std::unordered_map< std::string, V >;
template< class V > using AbslByName = absl::flat_hash_map< std::string, V >;
template< class V > using BoostByName = boost::unordered_flat_map< std::string, V >;

} // namespace
} // namespace Bench

int main( int argc, char ** argv )
{
   using namespace Bench;
   addAlone< VokAlone >();
   addAlone< SharedAlone >();
   addAlone< NewAlone >();
   addAlone< MessageAlone >();
   for ( const std::size_t count : { 1000U, 100'000U } ) {
      add( "alone/life", count, "protobuf-arena", arenaLife );
   }
   addKeyed< VokChildren >( "Vok" );
   eachHashMap< std::string, std::shared_ptr< PlainItem > >(
         []< class Map >( const char * name ) { addKeyed< SharedChildren< Map > >( name ); } );
   addTree< VokTree >( "Vok" );
   addTree< SharedTree< StdByName > >( "std" );
   addTree< SharedTree< AbslByName > >( "absl-flat" );
   addTree< SharedTree< BoostByName > >( "boost-flat" );
   addTree< ArenaTree >( "protobuf-arena" );
   return runBenchmarks( argc, argv );
}
