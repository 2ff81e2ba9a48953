// Maps in the order of their keys, by numbers and by texts.
#include "bench/MapCases.h"

#include <absl/container/btree_map.h>

#include <map>

namespace Bench {
namespace {

constexpr MapSize sizes[] = {
   { "1e1", 10 },
   { "1e3", 1000 },
   { "1e5", 100'000 },
   { "1e6", 1'000'000, true },
};

template< class Key > void addAll( const char * key )
{
   const std::span< const MapSize > of( sizes );
   MapCases< VokOrderedMap< Key >, Key >::add( "ordered/", key, "Vok", of );
   MapCases< StandardMap< std::map< Key, Number > >, Key >::add( "ordered/", key, "std-map", of );
   MapCases< StandardMap< absl::btree_map< Key, Number > >, Key >::add(
         "ordered/", key, "absl-btree", of );
}

} // namespace
} // namespace Bench

int main( int argc, char ** argv )
{
   using namespace Bench;
   addAll< std::uint32_t >( "u32" );
   addAll< std::string >( "text" );
   return runBenchmarks( argc, argv );
}
