// What is measured of a map: lookup, insertion into an empty one, removal of all members, all three
// mixed, iteration.
#pragma once

#include "bench/Check.h"
#include "bench/MapKeys.h"
#include "bench/Program.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace Bench {

/// How large the maps are, as it stands in the names of benchmarks.
struct MapSize {
   const char * name;
   std::size_t size;
   bool once = false; // measured a single time
};

/// The measurements of one map by one type of key.
template< class Map, class Key > class MapCases {
   using State = benchmark::State;
   using KeysOf = Keys< Key >;
   using Body = void ( * )( State &, const KeysOf & );

 public:
   /// Registers "<prefix><case>/<key>/<size>/<contender>".
   static void add( const std::string & prefix, const std::string & key, const char * contender,
         std::span< const MapSize > sizes )
   {
      static constexpr std::pair< const char *, Body > cases[] = {
         { "hit", hit },
         { "miss", miss },
         { "insert", insert },
         { "erase", erase },
         { "mixed", mixed },
         { "iterate", iterate },
         { "iterate-thinned", iterateThinned },
      };
      for ( const auto & [ caseName, body ] : cases ) {
         for ( const MapSize & size : sizes ) {
            const std::string name =
                  prefix + caseName + "/" + key + "/" + size.name + "/" + contender;
            auto * const made = benchmark::RegisterBenchmark( name.c_str(),
                  [ run = body, count = size.size ]( State & state ) {
                     run( state, KeysOf::of( count ) );
                  } );
            if ( size.once ) {
               made->Iterations( 1 )->Repetitions( 1 );
            }
         }
      }
   }

 private:
   // A map with all members, or with every fourth of them; it is made once.
   static const Map & filled( const KeysOf & keys, bool thinned = false )
   {
      static std::map< std::pair< std::size_t, bool >, Map > made;
      Map & map = made[ { keys.size, thinned } ];
      if ( map.size() == 0 ) {
         for ( const auto & [ key, number ] : keys.members ) {
            map.insert( key, number );
         }
         for ( const auto & [ key, number ] : keys.orders[ 0 ] ) {
            if ( thinned && number % 4 != 0 ) {
               map.erase( key );
            }
         }
      }
      return map;
   }

   static void countCalls( State & state, std::size_t calls )
   {
      state.SetItemsProcessed( state.iterations() * static_cast< std::int64_t >( calls ) );
   }
   static void countCalls( State & state, const KeysOf & keys )
   {
      countCalls( state, keys.size * keys.orders.size() );
   }

   static void hit( State & state, const KeysOf & keys )
   {
      const Map & map = filled( keys );
      for ( auto _ : state ) {
         Number sum = 0;
         for ( const auto & order : keys.orders ) {
            for ( const auto & [ key, number ] : order ) {
               sum += map.find( key );
            }
         }
         require( sum == keys.sum() * keys.orders.size(), "find of a member" );
      }
      countCalls( state, keys );
   }

   static void miss( State & state, const KeysOf & keys )
   {
      const Map & map = filled( keys );
      for ( auto _ : state ) {
         std::size_t found = 0;
         for ( const Key & key : keys.strangers ) {
            found += std::size_t{ map.find( key ) != absent };
         }
         require( found == 0, "find of a stranger" );
      }
      countCalls( state, keys );
   }

   static void insert( State & state, const KeysOf & keys )
   {
      for ( auto _ : state ) {
         state.PauseTiming();
         std::vector< Map > maps( keys.orders.size() );
         std::size_t inserted = 0;
         state.ResumeTiming();
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

   static void erase( State & state, const KeysOf & keys )
   {
      for ( auto _ : state ) {
         state.PauseTiming();
         std::vector< Map > maps( keys.orders.size(), filled( keys ) );
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

   static void mixed( State & state, const KeysOf & keys )
   {
      for ( auto _ : state ) {
         state.PauseTiming();
         std::vector< Map > map( 1, filled( keys ) );
         std::size_t effects = 0;
         state.ResumeTiming();
         for ( const auto & [ deed, key ] : keys.deeds ) {
            effects += std::size_t{ deed == Deed::find ? map[ 0 ].find( key ) != absent
                     : deed == Deed::insert            ? map[ 0 ].insert( key, 1 )
                                                       : map[ 0 ].erase( key ) };
         }
         state.PauseTiming();
         require( effects == keys.effects, "lookups, insertions and removals" );
         map.clear();
         state.ResumeTiming();
      }
      countCalls( state, keys.deeds.size() );
   }

   // One iteration begins when the one before has its sum: the processor would go through several
   // small maps at once.
   static void iterateOver( State & state, const KeysOf & keys, const Map & map, Number wanted )
   {
      std::size_t none = 0;
      benchmark::DoNotOptimize( none );
      for ( auto _ : state ) {
         Number sum = 0;
         for ( std::size_t i = 0; i != keys.orders.size(); ++i ) {
            ( &map )[ sum & none ].each( [ &sum ]( Number number ) { sum += number; } );
            benchmark::ClobberMemory();
         }
         require( sum == wanted * keys.orders.size(), "iterate" );
      }
      countCalls( state, map.size() * keys.orders.size() );
   }

   static void iterate( State & state, const KeysOf & keys )
   {
      iterateOver( state, keys, filled( keys ), keys.sum() );
   }

   static void iterateThinned( State & state, const KeysOf & keys )
   {
      const Number fourth = keys.size / 4;
      iterateOver( state, keys, filled( keys, true ), 4 * ( fourth * ( fourth + 1 ) / 2 ) );
   }
};

} // namespace Bench
