// An attribute is set while 1, 4 or 16 listen, who read the value before.
#include "bench/Check.h"
#include "bench/HeardSubjects.h"
#include "bench/Program.h"

#include <array>
#include <cstdint>
#include <string>

namespace Bench {
namespace {

constexpr std::int64_t changesAtOnce = 1000;

struct Number {
   static constexpr const char * name = "u32";
   template< class Heard > static std::array< std::uint32_t, 2 > values() { return { 5, 70 }; }
   static void set( auto & object, std::uint32_t value ) { object.countIs( value ); }
};
struct Text {
   static constexpr const char * name = "text";
   template< class Heard > static std::array< typename Heard::Text, 2 > values()
   {
      return { "Ethernet3/1", "Ethernet4/2" };
   }
   static void set( auto & object, const auto & value ) { object.titleIs( value ); }
};

template< class Sort, class Heard > void heard( benchmark::State & state, std::size_t listeners )
{
   Heard subject( listeners );
   auto & object = subject.object();
   auto values = Sort::template values< Heard >();
   auto * seen = &values;
   benchmark::DoNotOptimize( seen ); // the compiler knows the values no more
   for ( auto _ : state ) {
      for ( std::int64_t i = 0; i != changesAtOnce; ++i ) {
         Sort::set( object, ( *seen )[ static_cast< std::size_t >( i & 1 ) ] );
      }
   }
   require( subject.heardByLast() == state.iterations() * changesAtOnce, "changes heard" );
   state.SetItemsProcessed( state.iterations() * changesAtOnce );
}

template< class Sort, class Heard > void registerOne()
{
   for ( const std::size_t listeners : { 1U, 4U, 16U } ) {
      const std::string name = std::string( "heard/" ) + Sort::name + "/" +
            std::to_string( listeners ) + "/" + Heard::name;
      benchmark::RegisterBenchmark( name.c_str(),
            [ listeners ]( benchmark::State & state ) {
               heard< Sort, Heard >( state, listeners );
            } );
   }
}

template< class... Heard > void registerAll()
{
   ( registerOne< Number, Heard >(), ... );
   ( registerOne< Text, Heard >(), ... );
}

} // namespace
} // namespace Bench

int main( int argc, char ** argv )
{
   using namespace Bench;
   registerAll< VokHeard, VirtualHeard, BoostHeard, SigcHeard >();
   return runBenchmarks( argc, argv );
}
