// A table of applications as one batch: written, and read into a fresh replica; and the batch of
// one change in tables of several sizes.
#include "FlowTracker/ApplicationId.h"
#include "Vok/Vok.h"
#include "bench/Check.h"
#include "bench/Messages.pb.h"
#include "bench/Program.h"

#include <google/protobuf/arena.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <utility>

namespace Bench {
namespace {

using FlowTracking::Application;
using FlowTracking::ApplicationId;
using FlowTracking::ApplicationIdMap;
using google::protobuf::Arena;
using Table = Corvo::Ptr< ApplicationIdMap >;
using Message = BenchMessages::ApplicationIdMap;

constexpr std::uint32_t tableSize = 10'000;

// The texts of an application, some shorter and some longer than what stands in place.
struct Texts {
   std::string name;
   const char * category;
   const char * subCategory;
};

Texts textsOf( TestSupport::Random & random )
{
   static constexpr const char * categories[] = { "Web", "Streaming", "VPN", "Database", "Music",
      "SoftwareUpdate", "ConnectivityCheck", "RemoteAccess", "Collaborative", "SocialNetwork" };
   static constexpr const char * kinds[] = { "Safe", "Acceptable", "Fun", "Unsafe",
      "PotentiallyDangerous", "TrackerOrAdvertisement" };
   Texts texts{ "", categories[ random.below( std::size( categories ) ) ],
      kinds[ random.below( std::size( kinds ) ) ] };
   for ( std::uint32_t left = 4 + random.below( 21 ); left != 0; --left ) {
      texts.name += static_cast< char >( 'a' + random.below( 26 ) );
   }
   return texts;
}

Table tableOf( std::uint32_t size )
{
   TestSupport::Random random( size );
   Table table = FlowTracking::applicationIdMapFactory( "applications" );
   for ( std::uint32_t id = 1; id <= size; ++id ) {
      const Texts texts = textsOf( random );
      table->applicationIs( ApplicationId( id ),
            Application( ApplicationId( id ), texts.name, texts.category, texts.subCategory ) );
   }
   return table;
}

void fill( Message & message, std::uint32_t size )
{
   TestSupport::Random random( size );
   message.set_name( "applications" );
   for ( std::uint32_t id = 1; id <= size; ++id ) {
      Texts texts = textsOf( random );
      BenchMessages::Application & application = ( *message.mutable_application() )[ id ];
      application.set_app_id( id );
      application.set_app_name( std::move( texts.name ) );
      application.set_category( texts.category );
      application.set_sub_category( texts.subCategory );
   }
}

// Whether a message holds what a table holds.
bool equal( const Message & message, const ApplicationIdMap & table )
{
   std::size_t same = 0;
   for ( const auto & [ id, value ] : table.application() ) {
      const auto found = message.application().find( id.value() );
      if ( found != message.application().end() &&
            found->second.app_id() == value.appId().value() &&
            value.appName() == found->second.app_name() &&
            value.category() == found->second.category() &&
            value.subCategory() == found->second.sub_category() ) {
         ++same;
      }
   }
   return same == tableSize && message.application().size() == tableSize;
}

Table replicaOf( const Vok::NboAttrLog::Out & batch )
{
   Table replica = FlowTracking::applicationIdMapFactory( "applications" );
   Vok::EntityVokNboAttrLogReader reader( replica );
   Vok::NboAttrLog::In in( batch.data(), batch.size() );
   reader.read( in );
   require( in.remaining() == 0, "all of a batch is read" );
   return replica;
}

void countMembers( benchmark::State & state, std::size_t bytes )
{
   state.SetItemsProcessed( state.iterations() * std::int64_t{ tableSize } );
   state.counters[ "bytes" ] = static_cast< double >( bytes );
}

void encodeVok( benchmark::State & state )
{
   const Table table = tableOf( tableSize );
   Vok::EntityVokNboAttrLogSa writer( table );
   Vok::NboAttrLog::Out out;
   for ( auto _ : state ) {
      writer.resync();
      out.clear();
      writer.write( out );
   }
   countMembers( state, out.size() );

   // A reader of the same stream starts anywhere with a whole tree.
   require( Vok::treeDigest( *replicaOf( out ) ) == Vok::treeDigest( *table ), "encode" );
}

void encodeMessage( benchmark::State & state, Message & message )
{
   fill( message, tableSize );
   std::string out;
   for ( auto _ : state ) {
      require( message.SerializeToString( &out ), "serialize" );
   }
   countMembers( state, out.size() );
   Message read;
   require( read.ParseFromString( out ) && equal( read, *tableOf( tableSize ) ), "encode" );
}

void encodeHeap( benchmark::State & state )
{
   Message message;
   encodeMessage( state, message );
}

void encodeArena( benchmark::State & state )
{
   Arena arena;
   encodeMessage( state, *Arena::CreateMessage< Message >( &arena ) );
}

// What is made is destroyed again, in all three.
void decodeVok( benchmark::State & state )
{
   const Table table = tableOf( tableSize );
   Vok::NboAttrLog::Out out;
   Vok::EntityVokNboAttrLogSa( table ).write( out );
   for ( auto _ : state ) {
      require( replicaOf( out )->application().size() == tableSize, "decode" );
   }
   countMembers( state, out.size() );
   require( Vok::treeDigest( *replicaOf( out ) ) == Vok::treeDigest( *table ), "decode" );
}

std::string serialized()
{
   Message message;
   fill( message, tableSize );
   return message.SerializeAsString();
}

void decodeHeap( benchmark::State & state )
{
   const std::string bytes = serialized();
   for ( auto _ : state ) {
      Message message;
      require( message.ParseFromString( bytes ), "parse" );
   }
   countMembers( state, bytes.size() );
   Message message;
   require( message.ParseFromString( bytes ) && equal( message, *tableOf( tableSize ) ), "decode" );
}

void decodeArena( benchmark::State & state )
{
   const std::string bytes = serialized();
   for ( auto _ : state ) {
      Arena arena;
      require( Arena::CreateMessage< Message >( &arena )->ParseFromString( bytes ), "parse" );
   }
   countMembers( state, bytes.size() );
   Arena arena;
   Message & message = *Arena::CreateMessage< Message >( &arena );
   require( message.ParseFromString( bytes ) && equal( message, *tableOf( tableSize ) ), "decode" );
}

// One member changes, one batch is written. The members that change are 64 from all over the
// table: what is measured is the work, not how much of the table the processor's caches hold.
void changeOne( benchmark::State & state, std::uint32_t size )
{
   const Table table = tableOf( size );
   Vok::EntityVokNboAttrLogSa writer( table );
   Vok::NboAttrLog::Out out;
   writer.write( out );
   const Table replica = replicaOf( out );
   TestSupport::Random random( 64 );
   std::uint32_t ids[ 64 ];
   for ( std::uint32_t & id : ids ) {
      id = 1 + random.below( size );
   }
   std::uint32_t changes = 0;
   std::size_t most = 0;
   for ( auto _ : state ) {
      const ApplicationId id( ids[ changes % std::size( ids ) ] );
      ++changes;
      table->applicationIs( id, Application( ApplicationId( changes ), "name", "Web", "Safe" ) );
      out.clear();
      writer.write( out );
      most = std::max( most, out.size() );
   }
   require( most != 0 && most < 100, "the batch of one change has the size of one member" );
   state.SetItemsProcessed( state.iterations() );
   state.counters[ "bytes" ] = static_cast< double >( most );
}

void registerChanges()
{
   const std::pair< const char *, std::uint32_t > sizes[] = {
      { "1e3", 1000 },
      { "1e4", 10'000 },
      { "1e5", 100'000 },
      { "1e6", 1'000'000 },
   };
   for ( const auto & [ name, size ] : sizes ) {
      const std::string caseName = std::string( "one-change/" ) + name;
      for ( const auto & [ contender, members ] :
            { std::pair{ "/Vok", size }, std::pair{ "/of-1e2", 100u } } ) {
         benchmark::RegisterBenchmark( ( caseName + contender ).c_str(),
               [ of = members ]( benchmark::State & state ) { changeOne( state, of ); } );
      }
   }
}

BENCHMARK( encodeVok )->Name( "encode/1e4/Vok" );
BENCHMARK( encodeHeap )->Name( "encode/1e4/protobuf" );
BENCHMARK( encodeArena )->Name( "encode/1e4/protobuf-arena" );
BENCHMARK( decodeVok )->Name( "decode/1e4/Vok" );
BENCHMARK( decodeHeap )->Name( "decode/1e4/protobuf" );
BENCHMARK( decodeArena )->Name( "decode/1e4/protobuf-arena" );

} // namespace
} // namespace Bench

int main( int argc, char ** argv )
{
   Bench::registerChanges();
   return Bench::runBenchmarks( argc, argv );
}
