// The change of a plain attribute, with nobody listening and with one listener.
#include "bench/Check.h"
#include "bench/MutatePeers.h"
#include "bench/Program.h"
#include "tests/model/Everything.h"

#include <cstdint>

namespace Bench {
namespace {

constexpr std::int64_t changesAtOnce = 1000;

// Each call changes the value.
template< class Object > void change( benchmark::State & state, Object & object )
{
   std::uint16_t mid = object.mid();
   for ( auto _ : state ) {
      for ( std::int64_t i = 0; i != changesAtOnce; ++i ) {
         object.midIs( ++mid );
         benchmark::ClobberMemory();
      }
   }
   require( object.mid() == mid, "the value after the changes" );
   state.SetItemsProcessed( state.iterations() * changesAtOnce );
}

void requireHeard( const benchmark::State & state, std::int64_t heard )
{
   require( heard == state.iterations() * changesAtOnce, "changes heard" );
}

void unheardVok( benchmark::State & state )
{
   const auto root = Test::rootFactory( "root" );
   change( state, *root );
}

void unheardSetter( benchmark::State & state )
{
   PlainObject object;
   change( state, object );
}

class Counter : public Corvo::Notifiee {
 public:
   void onChange( const Corvo::Change & change ) override
   {
      heard += change.attrId == Test::Root::midAttrId ? 1 : 0;
   }
   std::int64_t heard = 0;
};

void heardVok( benchmark::State & state )
{
   const auto root = Test::rootFactory( "root" );
   Counter counter;
   root->publisher().notifieeIs( &counter );
   change( state, *root );
   requireHeard( state, counter.heard );
}

class PlainCounter : public Listener {
 public:
   void onMid( const HeardObject & object, std::uint16_t oldValue ) override
   {
      heard += object.mid() != oldValue ? 1 : 0;
   }
   std::int64_t heard = 0;
};

void heardVirtual( benchmark::State & state )
{
   PlainCounter counter;
   HeardObject object( counter );
   change( state, object );
   requireHeard( state, counter.heard );
}

void heardSignal( benchmark::State & state )
{
   std::int64_t heard = 0;
   SignalObject object;
   object.changed.connect( [ &heard ]( const SignalObject & changed, std::uint16_t oldValue ) {
      heard += changed.mid() != oldValue ? 1 : 0;
   } );
   change( state, object );
   requireHeard( state, heard );
}

BENCHMARK( unheardVok )->Name( "change/unheard/Vok" );
BENCHMARK( unheardSetter )->Name( "change/unheard/setter" );
BENCHMARK( heardVok )->Name( "change/heard/Vok" );
BENCHMARK( heardVirtual )->Name( "change/heard/virtual-call" );
BENCHMARK( heardSignal )->Name( "change/heard/boost-signals2" );

} // namespace
} // namespace Bench

int main( int argc, char ** argv ) { return Bench::runBenchmarks( argc, argv ); }
