// One change among many members, told to a replica: written only (`change-out`), or written and
// read (`change-through`). Contenders that go through the whole table are left out where that would
// take minutes. Tables of 1e7 take some gigabytes each.
#include "bench/Check.h"
#include "bench/Contenders.h"
#include "bench/changes/ChangingTable.h"
#include "tests/support/Random.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>

namespace Bench {
namespace {

using namespace Changes;

// The members that change are 64 from all over the table: what is measured is the work, not how
// much of the table the processor's caches hold.
class Changing {
 public:
   Changing( Make make, std::uint32_t members, bool replicated )
         : table_( make( members, replicated ) ),
           replicated_( replicated )
   {
      TestSupport::Random random( members );
      for ( std::uint32_t & number : numbers_ ) {
         number = 1 + random.below( members );
      }
   }

   void once()
   {
      ++changes_;
      table_->change( numbers_[ changes_ % std::size( numbers_ ) ],
            { 1'000'000 + changes_, 1'000'000'000 + 100 * changes_ } );
      most_ = std::max( most_, table_->out() );
      if ( replicated_ ) {
         table_->in();
      }
   }
   void check() const
   {
      require( most_ >= 2 * sizeof( std::uint32_t ), "a change is told" );
      require( !replicated_ || table_->alike(), "a replica has what the table has" );
   }
   std::size_t most() const noexcept { return most_; }

 private:
   std::unique_ptr< ChangingTable > table_;
   bool replicated_;
   std::uint32_t numbers_[ 64 ];
   std::uint64_t changes_ = 0;
   std::size_t most_ = 0;
};

struct Peer {
   const char * name;
   Make make;
   std::uint32_t most; // members
};

constexpr Peer peers[] = {
   { "Vok", values, 10'000'000 },
   { "Vok-entities", entities, 1'000'000 },
   { "bare-delta", bareDelta, 10'000'000 },
#ifdef WITH_PROTOBUF
   { "protobuf-delta", protobufDelta, 10'000'000 },
   { "protobuf", protobufWhole, 1'000'000 },
#endif
#ifdef WITH_YANG
   { "libyang-diff", yangDiff, 10'000 },
#endif
};

struct Size {
   const char * name;
   std::uint32_t members;
};

constexpr Size sizes[] = {
   { "1e2", 100 },
   { "1e3", 1000 },
   { "1e4", 10'000 },
   { "1e5", 100'000 },
   { "1e6", 1'000'000 },
   { "1e7", 10'000'000 },
};

Contender contenderOf( const Peer & peer, const Size & size, bool through )
{
   const auto prepare = [ &peer, &size, through ] {
      const auto changing = std::make_shared< Changing >( peer.make, size.members, through );
      return Prepared{ [ changing ] { changing->once(); }, [ changing ] { changing->check(); },
         [ changing ] { return changing->most(); }, 1, {} };
   };
   const char * const situation = through ? "change-through/" : "change-out/";
   return { std::string( situation ) + size.name + '/' + peer.name, prepare };
}

} // namespace
} // namespace Bench

int main( int argc, char ** argv )
{
   using namespace Bench;
   Contenders contenders;
   for ( const Size & size : sizes ) {
      for ( const Peer & peer : peers ) {
         if ( size.members <= peer.most ) {
            contenders.push_back( contenderOf( peer, size, false ) );
            contenders.push_back( contenderOf( peer, size, true ) );
         }
      }
   }
   return runContenders( contenders, argc, argv );
}
