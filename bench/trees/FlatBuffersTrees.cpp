// FlatBuffers by its object API: structures that it makes, packed and unpacked. Its lists are
// vectors, in which nothing is found by name.
#include "bench/Check.h"
#include "bench/trees/BenchFlat_generated.h"
#include "bench/trees/Trees.h"

#include <utility>

namespace Bench::Trees {
namespace {

template< class T > std::unique_ptr< T > & add( std::vector< std::unique_ptr< T > > & list )
{
   return list.emplace_back( std::make_unique< T >() );
}

void fill( std::unique_ptr< BenchFlat::AccessListT > & to, const AccessList & list )
{
   if ( list != AccessList() ) {
      to = std::make_unique< BenchFlat::AccessListT >();
      to->seqno = list.seqno;
      to->name = list.name;
      to->type = list.type;
   }
}

void fill( BenchFlat::GroupT & to, const std::string & name, const Group & group )
{
   to.name = name;
   to.seqno = group.seqno;
   fill( to.ip, group.ip );
   fill( to.ip6, group.ip6 );
   if ( group.mirror != Mirror() ) {
      to.mirror = std::make_unique< BenchFlat::MirrorT >();
      to.mirror->session = group.mirror.session;
      to.mirror->initial_copy = group.mirror.initialCopy;
      to.mirror->selector = group.mirror.selector;
      to.mirror->interval = group.mirror.interval;
   }
   to.exporters.assign( group.exporters.begin(), group.exporters.end() );
}

void fill( BenchFlat::ExporterT & to, const std::string & name, const Exporter & exporter )
{
   to.name = name;
   to.local_intf = exporter.localIntf;
   to.mtu = exporter.mtu;
   to.dscp = exporter.dscp;
   to.template_interval = exporter.templateInterval;
   for ( const auto & [ host, port ] : exporter.collectors ) {
      auto & collector = add( to.collectors );
      collector->host = host;
      collector->port = port;
   }
}

void fill( BenchFlat::ConfigT & to, const Config & config )
{
   to.enabled = config.enabled;
   to.sample_rate = config.sampleRate;
   for ( const auto & [ name, tracker ] : config.trackers ) {
      BenchFlat::TrackerT & made = *add( to.trackers );
      made.name = name;
      for ( const auto & [ exporterName, exporter ] : tracker.exporters ) {
         fill( *add( made.exporters ), exporterName, exporter );
      }
      for ( const auto & [ groupName, group ] : tracker.groups ) {
         fill( *add( made.groups ), groupName, group );
      }
      made.inactive_timeout = tracker.inactiveTimeout;
      made.active_interval = tracker.activeInterval;
      made.flow_table_size = tracker.flowTableSize;
      made.tcp_states = tracker.tcpStates;
   }
}

void fill( BenchFlat::StatusT & to, const Status & status )
{
   for ( const auto & [ name, tracker ] : status.trackers ) {
      BenchFlat::TrackerStatusT & made = *add( to.trackers );
      made.name = name;
      made.reason = tracker.reason;
      made.active = tracker.active;
      for ( const auto & [ exporterName, exporter ] : tracker.exporters ) {
         BenchFlat::ExporterStatusT & madeExporter = *add( made.exporters );
         madeExporter.name = exporterName;
         madeExporter.active = exporter.active;
         for ( const auto & [ family, reason ] : exporter.reasons ) {
            madeExporter.reasons.emplace_back( family, reason );
         }
         for ( const auto & [ host, collector ] : exporter.collectors ) {
            auto & madeCollector = add( madeExporter.collectors );
            madeCollector->host = host;
            madeCollector->reason = collector.reason;
            madeCollector->active = collector.active;
         }
      }
   }
}

AccessList dataOf( const std::unique_ptr< BenchFlat::AccessListT > & list )
{
   return list ? AccessList{ list->seqno, list->name, list->type } : AccessList();
}

Group dataOf( const BenchFlat::GroupT & group )
{
   Group data{ group.seqno, dataOf( group.ip ), dataOf( group.ip6 ), {},
      { group.exporters.begin(), group.exporters.end() } };
   if ( group.mirror ) {
      data.mirror = { group.mirror->session, group.mirror->initial_copy, group.mirror->selector,
         group.mirror->interval };
   }
   return data;
}

Exporter dataOf( const BenchFlat::ExporterT & exporter )
{
   Exporter data{ exporter.local_intf, exporter.mtu, exporter.dscp, exporter.template_interval,
      {} };
   for ( const auto & collector : exporter.collectors ) {
      data.collectors.emplace( collector->host, collector->port );
   }
   return data;
}

Config dataOf( const BenchFlat::ConfigT & config )
{
   Config data{ {}, config.enabled, config.sample_rate };
   for ( const auto & tracker : config.trackers ) {
      Tracker & to = data.trackers[ tracker->name ];
      for ( const auto & exporter : tracker->exporters ) {
         to.exporters.emplace( exporter->name, dataOf( *exporter ) );
      }
      for ( const auto & group : tracker->groups ) {
         to.groups.emplace( group->name, dataOf( *group ) );
      }
      to.inactiveTimeout = tracker->inactive_timeout;
      to.activeInterval = tracker->active_interval;
      to.flowTableSize = tracker->flow_table_size;
      to.tcpStates = tracker->tcp_states;
   }
   return data;
}

Status dataOf( const BenchFlat::StatusT & status )
{
   Status data;
   for ( const auto & tracker : status.trackers ) {
      TrackerStatus & to = data.trackers[ tracker->name ];
      to.reason = tracker->reason;
      to.active = tracker->active;
      for ( const auto & exporter : tracker->exporters ) {
         ExporterStatus & toExporter = to.exporters[ exporter->name ];
         toExporter.active = exporter->active;
         for ( const BenchFlat::Reason & reason : exporter->reasons ) {
            toExporter.reasons.emplace( reason.family(), reason.reason() );
         }
         for ( const auto & collector : exporter->collectors ) {
            toExporter.collectors[ collector->host ] = { collector->reason, collector->active };
         }
      }
   }
   return data;
}

template< class Tree > struct RootOf;
template<> struct RootOf< Config > {
   using Type = BenchFlat::Config;
};
template<> struct RootOf< Status > {
   using Type = BenchFlat::Status;
};

// As bytes from elsewhere, the tables are verified before they are read, as all others do.
template< class Tree > class FlatBuffersCodec {
   using Root = typename RootOf< Tree >::Type;
   using Object = typename Root::NativeTableType;

 public:
   explicit FlatBuffersCodec( const Tree & tree )
   {
      fill( object_, tree );
      encode();
   }

   void encode()
   {
      builder_.Clear();
      builder_.Finish( Root::Pack( builder_, &object_ ) );
   }
   void decode() { unpacked(); }
   Tree data() const { return dataOf( unpacked() ); }
   std::size_t bytes() const { return builder_.GetSize(); }

 private:
   Object unpacked() const
   {
      flatbuffers::Verifier verifier(
            builder_.GetBufferPointer(), builder_.GetSize(), 64, 1'000'000'000 );
      require( verifier.VerifyBuffer< Root >( nullptr ), "verify" );
      Object object;
      flatbuffers::GetRoot< Root >( builder_.GetBufferPointer() )->UnPackTo( &object );
      return object;
   }

   Object object_;
   flatbuffers::FlatBufferBuilder builder_;
};

} // namespace

Codecs< Config > flatBuffers( const Config & config )
{
   return codecsOf< FlatBuffersCodec< Config > >( config );
}

Codecs< Status > flatBuffers( const Status & status )
{
   return codecsOf< FlatBuffersCodec< Status > >( status );
}

} // namespace Bench::Trees
