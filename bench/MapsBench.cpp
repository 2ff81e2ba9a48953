// Hash maps: insertion into an empty one, lookup, removal of all members, iteration.
#include "bench/Check.h"
#include "bench/MapSubjects.h"
#include "bench/Program.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Bench {
namespace {

template< class Key > Key keyFrom( TestSupport::Random & random );
template<> std::uint64_t keyFrom( TestSupport::Random & random ) { return random.word(); }

// Of 16 to 24 bytes: the first 16 are the word, so that no two are the same.
template<> std::string keyFrom( TestSupport::Random & random )
{
   std::string key;
   for ( std::uint64_t word = random.word(); key.size() != 16; word >>= 4 ) {
      key += "0123456789abcdef"[ word & 15 ];
   }
   key.append( random.below( 9 ), 'x' );
   return key;
}

template< class Key > using Members = std::vector< std::pair< Key, Number > >;

// The members of a map of some size, and keys that are not in it. A small map is gone through in
// several orders, or the processor would learn the one.
template< class Key > struct Keys {
   std::size_t size;
   Members< Key > members;
   std::vector< Members< Key > > orders;
   std::vector< Key > strangers;

   explicit Keys( std::size_t ofSize ) : size( ofSize )
   {
      TestSupport::Random random( 2018 + size );
      for ( Number number = 0; number != size; ++number ) {
         members.emplace_back( keyFrom< Key >( random ), number );
      }
      for ( std::size_t calls = 0; calls < 16000; calls += size ) {
         orders.push_back( members );
         shuffle( orders.back(), random );
      }
      while ( strangers.size() != size * orders.size() ) {
         strangers.push_back( keyFrom< Key >( random ) );
      }
   }

   Number sum() const { return Number{ size } * ( size - 1 ) / 2; }

   static const Keys & of( std::size_t size )
   {
      static std::map< std::size_t, Keys > made;
      return made.try_emplace( size, size ).first->second;
   }
};

// A map with all members; it is made once.
template< class Map, class Key > const Map & filled( const Keys< Key > & keys )
{
   static std::map< std::size_t, Map > made;
   Map & map = made[ keys.size ];
   if ( map.size() == 0 ) {
      for ( const auto & [ key, number ] : keys.members ) {
         map.insert( key, number );
      }
   }
   return map;
}

template< class Key > void countCalls( benchmark::State & state, const Keys< Key > & keys )
{
   state.SetItemsProcessed(
         state.iterations() * static_cast< std::int64_t >( keys.size * keys.orders.size() ) );
}

template< class Map, class Key > void findHit( benchmark::State & state, const Keys< Key > & keys )
{
   const Map & map = filled< Map >( keys );
   for ( auto _ : state ) {
      Number sum = 0;
      for ( const Members< Key > & order : keys.orders ) {
         for ( const auto & [ key, number ] : order ) {
            const Number * const found = map.find( key );
            sum += found != nullptr ? *found : keys.size * keys.size;
         }
      }
      require( sum == keys.sum() * keys.orders.size(), "find of a member" );
   }
   countCalls( state, keys );
}

template< class Map, class Key > void findMiss( benchmark::State & state, const Keys< Key > & keys )
{
   const Map & map = filled< Map >( keys );
   for ( auto _ : state ) {
      std::size_t found = 0;
      for ( const Key & key : keys.strangers ) {
         found += std::size_t{ map.find( key ) != nullptr };
      }
      require( found == 0, "find of a stranger" );
   }
   countCalls( state, keys );
}

template< class Map, class Key > void insert( benchmark::State & state, const Keys< Key > & keys )
{
   for ( auto _ : state ) {
      std::vector< Map > maps( keys.orders.size() );
      std::size_t inserted = 0;
      for ( std::size_t i = 0; i != maps.size(); ++i ) {
         for ( const auto & [ key, number ] : keys.orders[ i ] ) {
            inserted += std::size_t{ maps[ i ].insert( key, number ) };
         }
      }
      state.PauseTiming();
      require( inserted == keys.size * maps.size() && maps[ 0 ].size() == keys.size, "insert" );
      maps.clear();
      state.ResumeTiming();
   }
   countCalls( state, keys );
}

template< class Map, class Key > void erase( benchmark::State & state, const Keys< Key > & keys )
{
   for ( auto _ : state ) {
      state.PauseTiming();
      std::vector< Map > maps( keys.orders.size(), filled< Map >( keys ) );
      std::size_t erased = 0;
      state.ResumeTiming();
      for ( std::size_t i = 0; i != maps.size(); ++i ) {
         for ( const auto & [ key, number ] : keys.orders[ i ] ) {
            erased += std::size_t{ maps[ i ].erase( key ) };
         }
      }
      state.PauseTiming();
      require( erased == keys.size * maps.size() && maps[ 0 ].size() == 0, "erase" );
      maps.clear();
      state.ResumeTiming();
   }
   countCalls( state, keys );
}

template< class Map, class Key > void iterate( benchmark::State & state, const Keys< Key > & keys )
{
   const Map & map = filled< Map >( keys );
   for ( auto _ : state ) {
      Number sum = 0;
      for ( std::size_t i = 0; i != keys.orders.size(); ++i ) {
         map.each( [ &sum ]( Number number ) { sum += number; } );
         benchmark::ClobberMemory();
      }
      require( sum == keys.sum() * keys.orders.size(), "iterate" );
   }
   countCalls( state, keys );
}

template< class Map, class Key > void registerMap( const std::string & keyName )
{
   using Body = void ( * )( benchmark::State &, const Keys< Key > & );
   const std::pair< const char *, std::size_t > sizes[] = {
      { "1e3", 1000 },
      { "1e5", 100'000 },
      { "1e6", 1'000'000 },
   };
   const std::pair< const char *, Body > cases[] = {
      { "find-hit", findHit< Map, Key > },
      { "find-miss", findMiss< Map, Key > },
      { "insert", insert< Map, Key > },
      { "erase", erase< Map, Key > },
      { "iterate", iterate< Map, Key > },
   };
   for ( const auto & [ caseName, body ] : cases ) {
      for ( const auto & [ sizeName, size ] : sizes ) {
         const std::string name =
               std::string( caseName ) + "/" + keyName + "/" + sizeName + "/" + Map::name;
         benchmark::RegisterBenchmark( name.c_str(),
               [ run = body, count = size ]( benchmark::State & state ) {
                  run( state, Keys< Key >::of( count ) );
               } );
      }
   }
}

template< class Key > void registerMaps( const std::string & keyName )
{
   registerMap< VokMap< Key >, Key >( keyName );
   registerMap< BoostMap< Key >, Key >( keyName );
   registerMap< AbslMap< Key >, Key >( keyName );
   registerMap< StdMap< Key >, Key >( keyName );
}

} // namespace
} // namespace Bench

int main( int argc, char ** argv )
{
   Bench::registerMaps< std::uint64_t >( "u64" );
   Bench::registerMaps< std::string >( "text" );
   return Bench::runBenchmarks( argc, argv );
}
