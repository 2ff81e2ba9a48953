// Runs contenders as benchmarks, or between marks for callgrind.
#include "bench/Contenders.h"

#include "bench/Program.h"

#if __has_include( <valgrind/callgrind.h> )
#include <valgrind/callgrind.h>
#else
#define CALLGRIND_START_INSTRUMENTATION
#define CALLGRIND_STOP_INSTRUMENTATION
#define CALLGRIND_DUMP_STATS_AT( name )
#endif

#include <cstdint>
#include <cstdio>
#include <ctime>
#include <deque>
#include <regex>
#include <string_view>

namespace Bench {
namespace {

// What stays the same from one repetition to the next.
class Ready {
 public:
   explicit Ready( const Contender & contender ) : contender_( contender ) {}

   Prepared & operator*()
   {
      if ( !prepared_.once ) {
         prepared_ = contender_.prepare();
         prepared_.once(); // what happens the first time only is not measured
         prepared_.check();
      }
      return prepared_;
   }

   /// After all that was measured of it, if anything was.
   void check()
   {
      if ( prepared_.once ) {
         prepared_.check();
      }
   }

 private:
   Contender contender_;
   Prepared prepared_;
};

double each( std::size_t count, std::size_t operations )
{
   return static_cast< double >( count ) / static_cast< double >( operations );
}

// Nanoseconds of the processor's time that the work has taken so far, here and elsewhere.
std::uint64_t processorTime( const Prepared & prepared )
{
   timespec own{};
   clock_gettime( CLOCK_PROCESS_CPUTIME_ID, &own );
   return static_cast< std::uint64_t >( own.tv_sec ) * 1'000'000'000 +
         static_cast< std::uint64_t >( own.tv_nsec ) +
         ( prepared.elsewhere ? prepared.elsewhere() : 0 );
}

void measure( benchmark::State & state, Ready & ready )
{
   Prepared & prepared = *ready;
   const std::size_t before = allocations();
   const std::uint64_t start = processorTime( prepared );
   for ( auto _ : state ) {
      prepared.once();
   }
   const std::uint64_t took = processorTime( prepared ) - start;
   const auto operations = static_cast< std::size_t >( state.iterations() ) * prepared.operations;
   state.counters[ "allocations" ] = each( allocations() - before, operations );
   state.SetItemsProcessed( static_cast< std::int64_t >( operations ) );
   if ( prepared.elsewhere ) {
      state.counters[ "items_per_second" ] = 1e9 * each( operations, took );
   }
   if ( prepared.bytes ) {
      state.counters[ "bytes" ] = static_cast< double >( prepared.bytes() );
   }
}

void count( const Contender & contender )
{
   Ready ready( contender );
   Prepared & prepared = *ready;
   prepared.once(); // the allocator tidies up what the check has freed
   const std::size_t before = allocations();
   CALLGRIND_START_INSTRUMENTATION;
   prepared.once();
   CALLGRIND_STOP_INSTRUMENTATION;
   CALLGRIND_DUMP_STATS_AT( contender.name.c_str() );
   const double allocated = each( allocations() - before, prepared.operations );
   prepared.check();
   std::printf( "%s %zu %.3f %zu\n", contender.name.c_str(), prepared.operations, allocated,
         prepared.bytes ? prepared.bytes() : 0 );
}

} // namespace

int runContenders( const Contenders & contenders, int argc, char ** argv )
{
   if ( argc == 3 && std::string_view( argv[ 1 ] ) == "--instructions" ) {
      const std::regex wanted( argv[ 2 ] );
      for ( const Contender & contender : contenders ) {
         if ( std::regex_search( contender.name, wanted ) ) {
            count( contender );
         }
      }
      return 0;
   }
   std::deque< Ready > all( contenders.begin(), contenders.end() );
   for ( std::size_t i = 0; i != all.size(); ++i ) {
      benchmark::RegisterBenchmark( contenders[ i ].name.c_str(),
            [ &ready = all[ i ] ]( benchmark::State & state ) { measure( state, ready ); } );
   }
   const int status = runBenchmarks( argc, argv );
   for ( Ready & ready : all ) {
      ready.check();
   }
   return status;
}

} // namespace Bench
