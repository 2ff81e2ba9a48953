// The framework's trees.
#include "FlowTracker/FlowTrackerConfig.h"
#include "FlowTracker/FlowTrackerStatus.h"
#include "Vok/Vok.h"
#include "bench/Check.h"
#include "bench/trees/Trees.h"

namespace Bench::Trees {
namespace {

using Corvo::Ptr;

FlowTracking::AccessList listOf( const AccessList & list )
{
   return { list.seqno, list.name, static_cast< Acl::AclType >( list.type ) };
}

AccessList dataOf( const FlowTracking::AccessList & list )
{
   return { list.seqno(), std::string( list.aclName() ),
      static_cast< std::uint8_t >( list.aclType() ) };
}

void fill( FlowTracking::FlowGroup & to, const Group & group )
{
   to.ipAccessListIs( listOf( group.ip ) );
   to.ip6AccessListIs( listOf( group.ip6 ) );
   to.mirrorConfigIs( { group.mirror.session, FlowTracking::InitialCopy( group.mirror.initialCopy ),
         static_cast< FlowTracking::MirrorSelectorAlgo >( group.mirror.selector ),
         FlowTracking::MirrorIntervalFixed( group.mirror.interval ), {} } );
   for ( const std::string & exporter : group.exporters ) {
      to.expNameIs( exporter );
   }
}

void fill( FlowTracking::ExporterConfig & to, const Exporter & exporter )
{
   to.localIntfNameIs( exporter.localIntf );
   to.ipfixMtuIs( FlowTracking::IpfixMtu( exporter.mtu ) );
   to.dscpValueIs( Wyre::DscpValue( exporter.dscp ) );
   to.templateIntervalIs( FlowTracking::TemplateInterval( exporter.templateInterval ) );
   for ( const auto & [ host, port ] : exporter.collectors ) {
      to.collectorHostAndPortIs( { host, port } );
   }
}

void fill( FlowTracking::Config & to, const Config & config )
{
   to.enabledIs( config.enabled );
   to.sampleRateIs( FlowTracking::SampleRate( config.sampleRate ) );
   for ( const auto & [ name, tracker ] : config.trackers ) {
      const auto made = to.flowTrackerConfigIs( name );
      for ( const auto & [ exporterName, exporter ] : tracker.exporters ) {
         fill( *made->expConfigIs( exporterName ), exporter );
      }
      for ( const auto & [ groupName, group ] : tracker.groups ) {
         fill( *made->fgConfigIs( groupName, group.seqno ), group );
      }
      made->inactiveTimeoutIs( FlowTracking::InactiveTimeout( tracker.inactiveTimeout ) );
      made->activeIntervalIs( FlowTracking::ActiveInterval( tracker.activeInterval ) );
      made->flowTableSizeIs( FlowTracking::FlowTableSize( tracker.flowTableSize ) );
      made->tcpStateChangeExportIs( tracker.tcpStates );
   }
}

Group dataOf( const FlowTracking::FlowGroup & group )
{
   const FlowTracking::MirrorConfig & mirror = group.mirrorConfig();
   Group data{ group.seqno(), dataOf( group.ipAccessList() ), dataOf( group.ip6AccessList() ),
      { std::string( mirror.sessionName() ), mirror.initialCopy().value(),
            static_cast< std::uint8_t >( mirror.mirrorSelectorAlgo() ),
            mirror.mirrorIntervalFixed().value() },
      {} };
   for ( const auto & exporter : group.expName() ) {
      data.exporters.insert( std::string( exporter ) );
   }
   return data;
}

Exporter dataOf( const FlowTracking::ExporterConfig & exporter )
{
   Exporter data{ std::string( exporter.localIntfName() ), exporter.ipfixMtu().value(),
      static_cast< std::uint8_t >( exporter.dscpValue().value() ),
      exporter.templateInterval().value(), {} };
   for ( const auto & [ host, collector ] : exporter.collectorHostAndPort() ) {
      data.collectors.emplace( std::string( host ), collector.port() );
   }
   return data;
}

Config dataOf( const FlowTracking::Config & config )
{
   Config data{ {}, config.enabled(), config.sampleRate().value() };
   for ( const auto & tracker : config.flowTrackerConfig() ) {
      Tracker & to = data.trackers[ std::string( tracker->name() ) ];
      for ( const auto & exporter : tracker->expConfig() ) {
         to.exporters.emplace( std::string( exporter->name() ), dataOf( *exporter ) );
      }
      for ( const auto & group : tracker->fgConfig() ) {
         to.groups.emplace( std::string( group->name() ), dataOf( *group ) );
      }
      to.inactiveTimeout = tracker->inactiveTimeout().value();
      to.activeInterval = tracker->activeInterval().value();
      to.flowTableSize = tracker->flowTableSize().value();
      to.tcpStates = tracker->tcpStateChangeExport();
   }
   return data;
}

void fill( FlowTracking::Status & to, const Status & status )
{
   for ( const auto & [ name, tracker ] : status.trackers ) {
      const auto made = to.ftStatusIs( name );
      made->inactiveReasonIs(
            static_cast< FlowTracking::TrackerInactiveReason >( tracker.reason ) );
      made->activeIs( tracker.active );
      for ( const auto & [ exporterName, exporter ] : tracker.exporters ) {
         const auto madeExporter = made->expStatusIs( exporterName );
         for ( const auto & [ family, reason ] : exporter.reasons ) {
            madeExporter->inactiveReasonIs( static_cast< Wyre::AddressFamily >( family ),
                  FlowTracking::ExporterInactiveReason( reason ) );
         }
         madeExporter->activeIs( exporter.active );
         for ( const auto & [ host, collector ] : exporter.collectors ) {
            const auto madeCollector = madeExporter->collectorStatusIs( host );
            madeCollector->inactiveReasonIs(
                  static_cast< FlowTracking::CollectorInactiveReason >( collector.reason ) );
            madeCollector->activeIs( collector.active );
         }
      }
   }
}

ExporterStatus dataOf( const FlowTracking::ExporterStatus & exporter )
{
   ExporterStatus data{ {}, exporter.active(), {} };
   for ( const auto & [ family, reason ] : exporter.inactiveReason() ) {
      data.reasons.emplace( static_cast< std::uint8_t >( family ), reason.value() );
   }
   for ( const auto & collector : exporter.collectorStatus() ) {
      data.collectors[ std::string( collector->hostname() ) ] = {
         static_cast< std::uint8_t >( collector->inactiveReason() ), collector->active()
      };
   }
   return data;
}

Status dataOf( const FlowTracking::Status & status )
{
   Status data;
   for ( const auto & tracker : status.ftStatus() ) {
      TrackerStatus & to = data.trackers[ std::string( tracker->name() ) ];
      to.reason = static_cast< std::uint8_t >( tracker->inactiveReason() );
      to.active = tracker->active();
      for ( const auto & exporter : tracker->expStatus() ) {
         to.exporters.emplace( std::string( exporter->name() ), dataOf( *exporter ) );
      }
   }
   return data;
}

template< class Tree > struct RootOf;
template<> struct RootOf< Config > {
   static Ptr< FlowTracking::Config > make() { return FlowTracking::configFactory( "sampled" ); }
};
template<> struct RootOf< Status > {
   static Ptr< FlowTracking::Status > make() { return FlowTracking::statusFactory( "sampled" ); }
};

// A reader of the same stream starts anywhere with a whole tree.
template< class Tree > class VokCodec {
 public:
   explicit VokCodec( const Tree & tree )
   {
      fill( *root_, tree );
      encode();
   }

   void encode()
   {
      writer_.resync();
      out_.clear();
      writer_.write( out_ );
   }
   void decode() { replica(); }
   Tree data()
   {
      const auto read = replica();
      require( Vok::treeDigest( *read ) == Vok::treeDigest( *root_ ), "a replica is alike" );
      return dataOf( *read );
   }
   std::size_t bytes() const { return out_.size(); }

 private:
   auto replica() const
   {
      const auto made = RootOf< Tree >::make();
      Vok::EntityVokNboAttrLogReader reader( made );
      Vok::NboAttrLog::In in( out_.data(), out_.size() );
      reader.read( in );
      require( in.remaining() == 0, "all of a batch is read" );
      return made;
   }

   decltype( RootOf< Tree >::make() ) root_ = RootOf< Tree >::make();
   Vok::EntityVokNboAttrLogSa writer_{ root_ };
   Vok::NboAttrLog::Out out_;
};

} // namespace

Codecs< Config > vok( const Config & config )
{
   return codecsOf< VokCodec< Config > >( config );
}

Codecs< Status > vok( const Status & status )
{
   return codecsOf< VokCodec< Status > >( status );
}

} // namespace Bench::Trees
