// What things cost in bytes: members of sets and maps, entities and children; and what the heap
// holds at most during a change that is heard.
#include "bench/Check.h"
#include "bench/EntitySubjects.h"
#include "bench/HashMaps.h"
#include "bench/HeardSubjects.h"
#include "bench/MapKeys.h"
#include "bench/Program.h"
#include "tests/support/HeapMeter.h"
#include "tests/support/SpareSlabs.h"

#include <absl/container/flat_hash_set.h>
#include <absl/container/node_hash_set.h>
#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <unordered_set>
#include <vector>

namespace Bench {
namespace {

constexpr std::size_t fewest = 100'000;

// Adds a benchmark whose figure is what measure() returns.
template< class Measure > void add( const std::string & name, Measure measure )
{
   benchmark::RegisterBenchmark( name.c_str(), [ measure ]( benchmark::State & state ) {
      for ( auto _ : state ) {
         state.counters[ "bytes" ] = measure();
      }
   } )->Iterations( 1 )
         ->Repetitions( 1 );
}

// The bytes of each member of a collection that grows from 100,000 to 200,000 members: the mean, or
// the figure would tell how far it is from its next growth. `grow( n )` adds the n-th.
template< class Grow > double meanOfEach( Grow grow )
{
   const TestSupport::HeapMeter heap;
   double sum = 0;
   for ( std::uint32_t i = 0; i != 2 * fewest; ++i ) {
      grow( i );
      if ( i >= fewest ) {
         sum += static_cast< double >( heap.held() ) / ( i + 1 );
      }
   }
   return sum / fewest;
}

// The bytes of each of many objects that make( n ) makes.
template< class Make > double bytesOfEach( Make make )
{
   std::vector< decltype( make( std::uint32_t{ 0 } ) ) > objects( fewest );
   const TestSupport::HeapMeter heap;
   for ( std::uint32_t i = 0; i != fewest; ++i ) {
      objects[ i ] = make( i );
   }
   return static_cast< double >( heap.held() ) / fewest;
}

// ---- Sets and maps ----------------------------------------------------------------------------

template< class Set > void addSet( const char * contender )
{
   add( std::string( "bytes/u32-set/" ) + contender, [] {
      Set set;
      const double bytes = meanOfEach( [ & ]( std::uint32_t i ) {
         set.insert( keyOf< std::uint32_t >( i ) );
      } );
      require( set.size() == 2 * fewest, "members of a set" );
      return bytes;
   } );
}

template< class Map, class Text > void addTexts( const char * contender )
{
   add( std::string( "bytes/text-map/" ) + contender, [] {
      Map map;
      const double bytes = meanOfEach( [ & ]( std::uint32_t i ) {
         map.try_emplace( Text( keyOf< std::string >( i ) ), Text( keyOf< std::string >( ~i ) ) );
      } );
      require( map.size() == 2 * fewest, "members of a map" );
      return bytes;
   } );
   add( std::string( "bytes/text-map-short/" ) + contender, [] {
      Map map;
      const double bytes = meanOfEach( [ & ]( std::uint32_t i ) {
         map.try_emplace( Text( "Ethernet" + std::to_string( i ) ), Text( std::to_string( i ) ) );
      } );
      require( map.size() == 2 * fewest, "members of a map" );
      return bytes;
   } );
}

/// Collections of Vok with the interface of the standard ones.
class VokSet {
   using Node = Vok::SetNode< std::uint32_t >;

 public:
   void insert( std::uint32_t key )
   {
      set_.findOrInsert( key, [ key ] { return Node{ key }; } );
   }
   std::size_t size() const { return set_.size(); }

 private:
   Vok::HashMap2018< Node, std::uint32_t, std::uint32_t > set_;
};
class VokTexts {
   using Node = Vok::MapNode< Corvo::String, Corvo::String >;

 public:
   void try_emplace( const Corvo::String & key, const Corvo::String & value )
   {
      map_.findOrInsert( key, [ & ] { return Node{ key, value }; } );
   }
   std::size_t size() const { return map_.size(); }

 private:
   Vok::HashMap2018< Node, Corvo::String, Corvo::String > map_;
};

void addCollections()
{
   addSet< VokSet >( "Vok" );
   addSet< absl::flat_hash_set< std::uint32_t > >( "absl-flat" );
   addSet< absl::node_hash_set< std::uint32_t > >( "absl-node" );
   addSet< boost::unordered_flat_set< std::uint32_t > >( "boost-flat" );
   addSet< std::unordered_set< std::uint32_t > >( "std" );
   addTexts< VokTexts, Corvo::String >( "Vok" );
   eachHashMap< std::string, std::string >(
         []< class Map >( const char * name ) { addTexts< Map, std::string >( name ); } );
}

// ---- Entities ---------------------------------------------------------------------------------

template< class Subject > void addAlone()
{
   add( std::string( "bytes/entity/" ) + Subject::name, [] {
      return bytesOfEach(
            []( std::uint32_t i ) { return Subject::make( "Ethernet" + std::to_string( i ) ); } );
   } );
}

template< class Children > void addKeyed( const char * contender )
{
   add( std::string( "bytes/keyed/" ) + contender, [] {
      Children children;
      const double bytes = meanOfEach(
            [ & ]( std::uint32_t i ) { children.make( "Ethernet" + std::to_string( i ) ); } );
      require( children.size() == 2 * fewest, "children" );
      return bytes;
   } );
}

// The same attributes as Bench::Record, without what tells of them.
struct PlainRecord {
   std::string name = "record";
   std::string title;
   std::uint64_t packets = 0;
   std::uint64_t bytes = 0;
   std::uint8_t kind = 0;
   bool exact = false;
   std::optional< std::uint32_t > maybe;
   std::uint32_t limit = 1;
   std::uint32_t count = 0;
   void * parent = nullptr;
   bool enabled = false;
};

BenchMessages::Record filledMessage()
{
   BenchMessages::Record message;
   message.set_title( "title" );
   message.mutable_rate();
   return message;
}

void addEntities()
{
   addAlone< VokAlone >();
   addAlone< SharedAlone >();
   addAlone< NewAlone >();
   addAlone< MessageAlone >();
   addKeyed< VokChildren >( "Vok" );
   eachHashMap< std::string, std::shared_ptr< PlainItem > >(
         []< class Map >( const char * name ) { addKeyed< SharedChildren< Map > >( name ); } );
   add( "bytes/six-attributes/Vok",
         [] { return bytesOfEach( []( std::uint32_t ) { return recordFactory( "record" ); } ); } );
   add( "bytes/six-attributes/make-shared", [] {
      return bytesOfEach( []( std::uint32_t ) { return std::make_shared< PlainRecord >(); } );
   } );
   add( "bytes/six-attributes/protobuf", [] {
      return bytesOfEach( []( std::uint32_t ) {
         return std::make_unique< BenchMessages::Record >( filledMessage() );
      } );
   } );
}

// ---- Changes ----------------------------------------------------------------------------------

template< class Heard > void addChange()
{
   for ( const std::size_t listeners : { 1U, 4U, 16U } ) {
      add( "bytes/change/" + std::to_string( listeners ) + "/" + Heard::name, [ listeners ] {
         Heard subject( listeners );
         const typename Heard::Text texts[] = { "Ethernet3/1", "Ethernet4/2" };
         subject.object().titleIs( texts[ 1 ] );
         const TestSupport::HeapMeter heap;
         for ( std::uint32_t i = 0; i != 100; ++i ) {
            subject.object().countIs( i + 1 );
            subject.object().titleIs( texts[ i % 2 ] );
         }
         const std::size_t held = heap.peak();
         require( subject.heardByLast() == 201, "changes heard" );
         require( held == 0 || !std::is_same_v< Heard, VokHeard >,
               "a heard change allocates nothing" );
         return static_cast< double >( held );
      } );
   }
}

template< class... Heard > void addChanges()
{
   ( addChange< Heard >(), ... );
}

} // namespace
} // namespace Bench

int main( int argc, char ** argv )
{
   using namespace Bench;
   TestSupport::makeSpareSlabs(); // a process has them once, for all of its small tables
   addCollections();
   addEntities();
   addChanges< VokHeard, VirtualHeard, BoostHeard, SigcHeard >();
   return runBenchmarks( argc, argv );
}
