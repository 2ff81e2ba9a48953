// Whole trees as bytes and back: a configuration and a status of flow tracking, by the framework
// and by others. What is read is destroyed again, which counts.
#include "bench/Check.h"
#include "bench/Contenders.h"
#include "bench/trees/Trees.h"

#include <memory>
#include <string>

namespace Bench {
namespace {

using namespace Trees;

template< class Tree > struct Peer {
   const char * name;
   Codecs< Tree > ( *make )( const Tree & );
};

template< class Tree > constexpr Peer< Tree > peers[] = {
   { "Vok", vok },
   { "by-hand", byHand },
   { "memcpy", copied },
#ifdef WITH_PROTOBUF
   { "protobuf", protobuf },
   { "protobuf-arena", protobufArena },
#endif
#ifdef WITH_CAPN_PROTO
   { "capnproto", capnProto },
#endif
#ifdef WITH_FLAT_BUFFERS
   { "flatbuffers", flatBuffers },
#endif
};

template< class Tree >
void add( Contenders & contenders, const std::string & size, Tree ( *make )( std::size_t ),
      std::size_t count )
{
   for ( const Peer< Tree > & peer : peers< Tree > ) {
      const auto codecs = std::make_shared< Codecs< Tree > >(); // one for both directions
      for ( const bool out : { true, false } ) {
         contenders.push_back( { ( out ? "encode/" : "decode/" ) + size + '/' + peer.name,
               [ &peer, codecs, out, make, count ] {
                  const Tree tree = make( count );
                  if ( !codecs->data ) {
                     *codecs = peer.make( tree );
                  }
                  const auto check = [ codecs, make, count ] {
                     require( codecs->data() == make( count ), "a tree is what it was" );
                  };
                  return Prepared{ out ? codecs->encode : codecs->decode, check, codecs->bytes,
                     entitiesOf( tree ), {} };
               } } );
      }
   }
}

} // namespace
} // namespace Bench

int main( int argc, char ** argv )
{
   Bench::Contenders contenders;
   Bench::add( contenders, "config/3", Bench::configOf, 3 );
   Bench::add( contenders, "config/1e3", Bench::configOf, 1000 );
   Bench::add( contenders, "status/1e3", Bench::statusOf, 1000 );
   Bench::add( contenders, "status/1e6", Bench::statusOf, 1'000'000 );
   return Bench::runContenders( contenders, argc, argv );
}
