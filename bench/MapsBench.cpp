// Hash maps beside the peers of HashMaps.h, by numbers and by texts.
#include "bench/HashMaps.h"
#include "bench/MapCases.h"

namespace Bench {
namespace {

constexpr MapSize sizes[] = {
   { "1e1", 10 },
   { "1e2", 100 },
   { "1e3", 1000 },
   { "1e4", 10'000 },
   { "1e5", 100'000 },
   { "1e6", 1'000'000 },
   { "1e7", 10'000'000, true },
};

template< class Key > void addAll( const char * key, std::span< const MapSize > of )
{
   MapCases< VokHashMap< Key >, Key >::add( "", key, "Vok", of );
   eachHashMap< Key, Number >( [ & ]< class Map >( const char * name ) {
      MapCases< StandardMap< Map >, Key >::add( "", key, name, of );
   } );
}

} // namespace
} // namespace Bench

int main( int argc, char ** argv )
{
   using namespace Bench;
   addAll< std::uint32_t >( "u32", sizes );
   addAll< std::string >( "text", std::span( sizes ).first( 6 ) );
   return runBenchmarks( argc, argv );
}
