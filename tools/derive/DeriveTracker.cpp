// A tracker's settings, and who derives what is below it.
#include "tools/derive/DeriveTracker.h"

#include "tools/derive/Bring.h"
#include "tools/derive/DeriveGroups.h"

#include <optional>
#include <set>
#include <tuple>
#include <utility>

namespace Derive {

namespace Ft = FlowTracking;
namespace Hw = HwFlowTracking;

TrackerDeriver::TrackerDeriver( const Sources & sources,
      Corvo::Ptr< const Ft::FlowTrackerConfig > from, Corvo::Ptr< Hw::FtConfig > to )
      : sources_( sources ),
        from_( std::move( from ) ),
        to_( std::move( to ) ),
        settings_( [ this ] { settings(); } ),
        exporterSet_( [ this ] { exporters(); } ),
        groups_( [ this ] { groups(); } ),
        localCollector_( [ this ] { localCollector(); } ),
        follower_( *from_, [ this ]( const Corvo::Change & change ) { hear( change ); } ),
        exporterKeys_( *from_, "expConfig", *to_, "expConfig" )
{
   settings_.request();
   exporterSet_.request();
   groups_.request();
   localCollector_.request();
}

void TrackerDeriver::hear( const Corvo::Change & change )
{
   switch ( change.attrId ) {
   case Ft::FlowTrackerConfig::expConfigAttrId:
      exporterSet_.request();
      localCollector_.request();
      groups_.request(); // they name exporters
      return;
   case Ft::FlowTrackerConfig::fgConfigAttrId:
   case Ft::FlowTrackerConfig::groupsCommitInProgressAttrId:
   case Ft::FlowTrackerConfig::groupResequencingInProgressAttrId:
      return groups_.request();
   default:
      return settings_.request();
   }
}

void TrackerDeriver::templatesRequested()
{
   exporters_.each( []( ExporterDeriver & exporter ) { exporter.request(); } );
}

void TrackerDeriver::derive()
{
   settings_.run();
   exporterSet_.run();
   exporters_.each( [ this ]( ExporterDeriver & exporter ) {
      if ( exporter.derive() ) {
         localCollector_.request();
      }
   } );
   groups_.run();
   localCollector_.run();
}

void TrackerDeriver::settings()
{
   to_->inactiveTimeoutIs( from_->inactiveTimeout() );
   // The configuration takes any interval. One that is out of bounds leaves the default.
   Ft::ActiveInterval interval;
   try {
      from_->activeInterval().validate();
      interval = from_->activeInterval();
   } catch ( const Corvo::RangeException & ) {
   }
   to_->activeIntervalIs( interval );
   to_->flowTableSizeIs( from_->flowTableSize() );
   to_->tcpStateChangeExportIs( from_->tcpStateChangeExport() );
   to_->mplsExportIs( from_->mplsExport() );
   to_->ingressLabelExportIs( from_->ingressLabelExport() );
   to_->systemObserverIs( from_->systemObserver() );
   congestion();
   cpuQueues();
}

void TrackerDeriver::congestion()
{
   if ( const auto config = from_->congestionConfig(); !( congestion_ == config ) ) {
      congestionFollower_.reset();
      congestion_ = config;
      if ( config ) {
         congestionFollower_ = std::make_unique< EntityFollower >(
               *config, [ this ]( const Corvo::Change & ) { settings_.request(); } );
      }
   }
   if ( !congestion_ ) {
      to_->congestionConfigDel();
      return;
   }
   const auto effective = to_->congestionConfigIs( congestion_->name() );
   effective->dampingTimeoutIs( congestion_->dampingTimeout().value_or(
         Ft::DampingTimeout( Ft::DampingTimeout::defaultTimeout() ) ) );
   effective->intervalIs( congestion_->interval().value_or( Ft::CongestionInterval() ) );
}

/// A queue that the platform does not know is there, and not active.
void TrackerDeriver::cpuQueues()
{
   for ( const Corvo::Ptr< Hw::MonitoredCpuQueue > & queue : to_->monitoredCpuQueue() ) {
      if ( !from_->monitoredCpuQueue( queue->cpuQueueName() ) ) {
         to_->monitoredCpuQueueDel( queue->cpuQueueName() );
      }
   }
   const auto known = sources_.capabilities->monitoredCpuQueueSupported();
   for ( const Corvo::String & name : from_->monitoredCpuQueue() ) {
      const auto queue = to_->monitoredCpuQueueIs(
            name, sources_.capabilities->monitoredCpuQueueSupported( name ) );
      queue->statusIs( known.contains( name )
                  ? Hw::MonitoredCpuQueueStatus::monitoredCpuQueueActive
                  : Hw::MonitoredCpuQueueStatus::monitoredCpuQueueInactiveUnknown );
   }
}

/// Which exporters there are in hardware is kept by their mirror; here they get who derives them.
void TrackerDeriver::exporters()
{
   exporters_.follow( from_->expConfig(), [ this ]( const auto & exporter ) {
      return std::make_unique< ExporterDeriver >( sources_, exporter, to_ );
   } );
   const auto configured = from_->expConfig();
   for ( const Corvo::String & name : to_->resolvedExporter() ) {
      if ( !configured.contains( name ) ) {
         to_->resolvedExporterDel( name );
      }
   }
   for ( const Corvo::String & name : to_->waitingExporter() ) {
      if ( !configured.contains( name ) ) {
         to_->waitingExporterDel( name );
      }
   }
}

void TrackerDeriver::groups()
{
   groupFollowers_.follow( from_->fgConfig(), [ this ]( const auto & group ) {
      return std::make_unique< EntityFollower >(
            *group, [ this ]( const Corvo::Change & ) { groups_.request(); } );
   } );
   deriveGroups( *from_, *to_ );
}

namespace {

bool onThisSwitch( const Wyre::IpAddr & ip )
{
   return ip.value() >> 24 == 127;
}

bool onThisSwitch( const Wyre::Ip6Addr & ip )
{
   return ip == Wyre::Ip6Addr( "::1" );
}

/// A collector at a loopback address.
struct LocalCollector {
   Corvo::Ptr< Hw::ExporterConfig > exporter;
   Corvo::String host;
   Wyre::IpGenAddr address;
   std::uint16_t port;
   bool ready;
};

/// The first one by exporter, host and family, of which a tracker has at most one.
std::optional< LocalCollector > firstLocalCollector( const Hw::FtConfig & tracker )
{
   std::optional< LocalCollector > first;
   const auto consider = [ &first ]( const LocalCollector & other ) {
      const auto place = []( const LocalCollector & c ) {
         return std::tuple( c.exporter->name(), c.host, c.address.family() );
      };
      if ( !first || place( other ) < place( *first ) ) {
         first = other;
      }
   };
   for ( const Corvo::Ptr< Hw::ExporterConfig > & exporter : tracker.expConfig() ) {
      for ( const auto & [ host, at ] : exporter->collectorIpAndPort() ) {
         if ( onThisSwitch( at.ip() ) ) {
            consider( { exporter, host, Wyre::IpGenAddr( at.ip() ), at.port(),
                  exporter->exporter4Ready() } );
         }
      }
      for ( const auto & [ host, at ] : exporter->collectorIp6AndPort() ) {
         if ( onThisSwitch( at.ip() ) ) {
            consider( { exporter, host, Wyre::IpGenAddr( at.ip() ), at.port(),
                  exporter->exporter6Ready() } );
         }
      }
   }
   return first;
}

} // namespace

void TrackerDeriver::localCollector()
{
   const auto local = firstLocalCollector( *to_ );
   if ( !local ) {
      to_->localCollectorConfigDel();
      return;
   }
   const auto to = to_->localCollectorConfigIs( local->host );
   to->expNameIs( local->exporter->name() );
   to->vrfNameIs( local->exporter->vrfName() );
   to->srcIpIs( local->address );
   to->destIpIs( local->address );
   to->srcPortIs( 0 );
   to->destPortIs( local->port );
   to->dscpValueIs( local->exporter->dscpValue() );
   to->exporterReadyIs( local->ready );
}

} // namespace Derive
