// Each situation is a function of a stage on which the table is already made.
#include "bench/store/Situations.h"

#include "bench/Check.h"

#include <time.h>
#include <unistd.h>

#include <algorithm>

namespace Bench {

namespace {

constexpr double second = 1e9;

double seconds( std::uint64_t span ) noexcept
{
   return static_cast< double >( span ) / second;
}

// The writer changes as fast as it can; done when all readers have the last state.
Figures updates( Stage & stage )
{
   stage.startReaders();
   stage.awaitMark();
   const std::uint64_t begin = nanoseconds();
   const std::uint64_t before = stage.delivered();
   const std::uint64_t worked = stage.processorTime();
   const std::uint64_t served = stage.server().processorTime();
   const auto written = static_cast< double >( stage.writeRandom() );
   const double took = seconds( stage.mark() - begin );
   const double work = seconds( stage.processorTime() - worked );
   const double server = seconds( stage.server().processorTime() - served );
   const auto told = static_cast< double >( stage.delivered() - before ) / stage.setup().sessions;
   return { { "changes", written }, { "seconds", took }, { "changes/s", written / took },
      { "delivered", told }, { "delivered/s", told / took },
      { "processor us a change", work * 1e6 / written },
      { "processor us delivered", work * 1e6 / ( told * stage.setup().sessions ) },
      { "server's part", server / work } };
}

// So many changes a millisecond, each of which carries its time.
Figures latency( Stage & stage )
{
   stage.startReaders();
   stage.awaitMark();
   TestSupport::Random random( 2 );
   std::uint64_t due = nanoseconds();
   const auto end = due + static_cast< std::uint64_t >( stage.setup().seconds * second );
   const std::uint64_t begin = stage.processorTime();
   std::uint64_t late = 0;
   for ( constexpr std::uint64_t step = 1'000'000; due < end; due += step ) {
      const timespec at{ static_cast< time_t >( due / 1'000'000'000 ),
         static_cast< long >( due % 1'000'000'000 ) };
      clock_nanosleep( CLOCK_MONOTONIC, TIMER_ABSTIME, &at, nullptr );
      late = std::max( late, nanoseconds() - due );
      for ( std::uint32_t i = 0; i != stage.setup().batch; ++i ) {
         const std::uint32_t member = 1 + random.below( stage.setup().members - 1 );
         stage.write( { member, stampColumn, nanoseconds() } );
      }
      stage.writer().flush();
   }
   stage.mark();
   const double work = seconds( stage.processorTime() - begin );
   Histogram all;
   for ( std::uint32_t session = 0; session != stage.slots().size(); ++session ) {
      all.add( stage.slots()[ session ].latencies );
   }
   return { { "p50 us", static_cast< double >( all.quantile( 0.5 ) ) / 1000 },
      { "p99 us", static_cast< double >( all.quantile( 0.99 ) ) / 1000 },
      { "writer late us", static_cast< double >( late ) / 1000 },
      { "processor seconds", work },
      { "delivered", static_cast< double >( stage.delivered() ) / stage.setup().sessions } };
}

// The last of the readers is stopped while the table changes again and again.
Figures stopped( Stage & stage )
{
   stage.startReaders();
   stage.awaitMark();
   const Process & sleeper = stage.reader( stage.readers() - 1 );
   const Slot & slot = stage.slots()[ stage.slots().size() - 1 ];
   sleeper.stop();
   stage.server().forgetPeak();
   const Memory before = stage.server().memory();
   Histogram times;
   const std::uint64_t begin = nanoseconds();
   const auto written = static_cast< double >( stage.writeRandom( &times ) );
   const double took = seconds( stage.mark( 1 ) - begin );
   const Memory after = stage.server().memory();
   const std::uint64_t bytes = sleeper.bytesRead();
   const std::uint64_t woken = nanoseconds();
   sleeper.go();
   const std::uint64_t there = stage.awaitMark();
   const auto more = []( std::size_t a, std::size_t b ) {
      return static_cast< double >( a > b ? a - b : 0 );
   };
   return { { "changes", written }, { "changes/s", written / took },
      { "writer p99 us", static_cast< double >( times.quantile( 0.99 ) ) / 1000 },
      { "server before", static_cast< double >( before.resident ) },
      { "server grew", more( after.resident, before.resident ) },
      { "server peak grew", more( after.peak, before.resident ) },
      { "bytes", static_cast< double >( sleeper.bytesRead() - bytes ) },
      { "seconds", seconds( there - woken ) },
      { "connections lost", static_cast< double >( slot.lost ) } };
}

// One member of a hundred changes while a reader has no connection.
Figures resync( Stage & stage )
{
   stage.startReaders();
   stage.awaitMark();
   stage.slots().ask() = Ask::goAway;
   for ( std::uint32_t session = 0; session != stage.slots().size(); ++session ) {
      while ( !stage.slots()[ session ].away ) {
         usleep( 1000 );
      }
   }
   for ( std::uint32_t member = 50; member < stage.setup().members; member += 100 ) {
      stage.write( { member, 0, stage.model().row( member )[ 0 ] + 1 } );
      if ( ( member / 100 ) % stage.setup().batch == stage.setup().batch - 1 ) {
         stage.writer().flush();
      }
   }
   stage.writeMark();
   stage.writer().settle();
   const std::uint64_t bytes = stage.reader( 0 ).bytesRead();
   const std::uint64_t begin = nanoseconds();
   stage.slots().ask() = Ask::follow;
   const double took = seconds( stage.awaitMark() - begin );
   const std::uint64_t read = stage.reader( 0 ).bytesRead() - bytes;
   require( read != 0, "what a reader gets that comes back" );
   return { { "seconds", took }, { "bytes", static_cast< double >( read ) } };
}

// All readers come at once and take the whole table; and what it takes then.
Figures load( Stage & stage )
{
   const std::size_t before = stage.server().memory().own;
   const std::uint64_t begin = stage.startReaders();
   const double took = seconds( stage.awaitMark() - begin );
   const Memory server = stage.server().memory();
   const auto readers = static_cast< double >( stage.readersMemory() );
   const double sessions = stage.setup().sessions;
   const std::uint64_t marked = nanoseconds();
   const double spread = seconds( stage.mark() - marked );
   const double served =
         server.own > before ? static_cast< double >( server.own - before ) : 0.0;
   return { { "seconds", took }, { "server", static_cast< double >( server.own ) },
      { "server peak", static_cast< double >( server.peak ) },
      { "server a session", served / sessions },
      { "reader", readers / sessions },
      { "both a session", ( static_cast< double >( server.own ) + readers ) / sessions },
      { "a change to all, s", spread } };
}

} // namespace

const std::vector< Situation > & situations()
{
   static const std::vector< Situation > all{
      { "updates", "changes a second until all readers have the last state", updates },
      { "latency", "from a change to its notification, under a fixed load", latency },
      { "stopped", "a reader is stopped while the table changes", stopped },
      { "resync", "a reader comes back to a table of which 1 % has changed", resync },
      { "load", "readers take a whole table at once", load },
   };
   return all;
}

} // namespace Bench
