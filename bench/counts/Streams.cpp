// A tree as one batch, one change as a batch, both read by a replica; the digest of a tree.
#include "bench/Check.h"
#include "bench/counts/Situations.h"

#include "FlowTracker/ApplicationId.h"
#include "FlowTracker/FlowTrackerStatus.h"
#include "Vok/Vok.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace Bench {
namespace {

using FlowTracking::Application;
using FlowTracking::ApplicationId;
using FlowTracking::ApplicationIdMap;

constexpr std::uint32_t members = 1000;
constexpr std::uint32_t times = 200;

Application application( std::uint32_t id, std::uint32_t version )
{
   return Application(
         ApplicationId( id ), "application " + std::to_string( version ), "Web", "Safe" );
}

// A table of values, or a status of entities: what is filled, and what changes in it.
struct Table {
   using Tree = ApplicationIdMap;
   static Corvo::Ptr< Tree > make() { return FlowTracking::applicationIdMapFactory( "table" ); }
   static void fill( Tree & tree )
   {
      for ( std::uint32_t id = 1; id <= members; ++id ) {
         tree.applicationIs( ApplicationId( id ), application( id, id ) );
      }
   }
   static void change( Tree & tree, std::uint32_t version )
   {
      tree.applicationIs( ApplicationId( 7 ), application( 7, version ) );
   }
};
struct Status {
   using Tree = FlowTracking::Status;
   static Corvo::Ptr< Tree > make() { return FlowTracking::statusFactory( "status" ); }
   static void fill( Tree & tree )
   {
      for ( std::uint32_t i = 0; i != members; ++i ) {
         tree.ftStatusIs( "tracker" + std::to_string( i ) )->activeIs( i % 2 == 0 );
      }
   }
   static void change( Tree & tree, std::uint32_t version )
   {
      tree.ftStatus( "tracker7" )->activeIs( version % 2 != 0 ); // it begins with 1
   }
};

// A tree, and a replica that has all of it.
template< class Kind > struct Streamed {
   using Tree = typename Kind::Tree;

   Streamed()
   {
      Kind::fill( *tree );
      writer.write( out );
      receive( reader );
   }

   void send()
   {
      out.clear();
      writer.write( out );
   }
   void receive( Vok::EntityVokNboAttrLogReader & to )
   {
      Vok::NboAttrLog::In in( out.data(), out.size() );
      to.read( in );
      require( in.remaining() == 0, "all of a batch is read" );
   }

   Corvo::Ptr< Tree > tree = Kind::make();
   Corvo::Ptr< Tree > replica = Kind::make();
   Vok::EntityVokNboAttrLogSa writer{ tree };
   Vok::EntityVokNboAttrLogReader reader{ replica };
   Vok::NboAttrLog::Out out;
   std::uint32_t version = 0;
};

template< class Kind > void addStream( Situations & all, const std::string & kind )
{
   const auto streamed = std::make_shared< Streamed< Kind > >();
   all.push_back( { kind + "/whole-out", members, [ streamed ] {
                      streamed->writer.resync();
                      streamed->send();
                      require( streamed->out.size() > members, "a whole tree" );
                   } } );
   // With the replica's end.
   all.push_back( { kind + "/whole-in", members, [ streamed ] {
                      const Corvo::Ptr< typename Kind::Tree > replica = Kind::make();
                      Vok::EntityVokNboAttrLogReader reader( replica );
                      streamed->receive( reader );
                   } } );
   const auto changing = std::make_shared< Streamed< Kind > >();
   all.push_back( { kind + "/change-out-and-in", times, [ changing ] {
                      for ( std::uint32_t i = 0; i != times; ++i ) {
                         Kind::change( *changing->tree, ++changing->version );
                         changing->send();
                         changing->receive( changing->reader );
                      }
                      require( changing->out.size() < 100, "a change is small in any tree" );
                   } } );
   all.push_back( { kind + "/digest", members, [ streamed ] {
                      require( Vok::treeDigest( *streamed->tree ) ==
                                  Vok::treeDigest( *streamed->replica ),
                            "a replica is like its tree" );
                   } } );
}

} // namespace

void addStreams( Situations & situations )
{
   addStream< Table >( situations, "values" );
   addStream< Status >( situations, "entities" );
}

} // namespace Bench
