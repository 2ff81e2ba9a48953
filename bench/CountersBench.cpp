// Counters that all change, as fast as they can, told to another process with a message each
// millisecond. The time is that of the processor, in both processes, for one change until the other
// process has it or a later one of the same member.
#include "bench/Check.h"
#include "bench/Contenders.h"
#include "bench/Shuffle.h"
#include "bench/counters/Counters.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Bench {
namespace {

using namespace Counters;
using Clock = std::chrono::steady_clock;

constexpr std::uint32_t changesOfOnce = 200'000;

class Counting {
 public:
   Counting( Make make, std::uint32_t members ) : writer_( make( members ) )
   {
      for ( std::uint32_t number = 1; number <= members; ++number ) {
         order_.push_back( number );
      }
      TestSupport::Random random( members );
      shuffle( order_, random );
   }

   void once()
   {
      Clock::time_point next = Clock::now() + period;
      for ( std::uint32_t i = 0; i != changesOfOnce; ++i ) {
         ++changes_;
         writer_->change( order_[ changes_ % order_.size() ],
               { 1'000'000 + changes_, 1'000'000'000 + 100 * changes_ } );
         if ( changes_ % lookEach == 0 && Clock::now() >= next ) {
            writer_->flush();
            next = Clock::now() + period;
         }
      }
      writer_->settle();
   }
   void check() { require( writer_->alike(), "the other process has what was written" ); }
   std::uint64_t elsewhere() const { return writer_->elsewhere(); }

 private:
   static constexpr std::chrono::milliseconds period{ 1 };
   static constexpr std::uint64_t lookEach = 64; // changes, as a look at the clock takes longer

   std::unique_ptr< Writer > writer_;
   std::vector< std::uint32_t > order_;
   std::uint64_t changes_ = 0;
};

struct Peer {
   const char * name;
   Make make;
};

std::vector< Peer > peers()
{
   std::vector< Peer > all{ { "Vok", values }, { "Vok-entities", entities },
      { "logged-by-hand", loggedByHand }, { "coalesced-by-hand", coalescedByHand } };
#ifdef WITH_REDIS
   if ( hasRedis() ) {
      all.push_back( { "redis", redis } );
   }
#endif
   return all;
}

Contender contenderOf( const Peer & peer, const char * name, std::uint32_t members )
{
   const auto prepare = [ peer, members ] {
      const auto counting = std::make_shared< Counting >( peer.make, members );
      return Prepared{ [ counting ] { counting->once(); }, [ counting ] { counting->check(); }, {},
         changesOfOnce, [ counting ] { return counting->elsewhere(); } };
   };
   return { std::string( name ) + peer.name, prepare };
}

} // namespace
} // namespace Bench

int main( int argc, char ** argv )
{
   using namespace Bench;
   Contenders contenders;
   for ( const Peer & peer : peers() ) {
      contenders.push_back( contenderOf( peer, "counters/1e3/", 1000 ) );
      contenders.push_back( contenderOf( peer, "counters/1e5/", 100'000 ) );
   }
   return runContenders( contenders, argc, argv );
}
