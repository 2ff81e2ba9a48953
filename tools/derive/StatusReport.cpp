// Why trackers, exporters and collectors are not in service.
#include "tools/derive/StatusReport.h"

#include "tools/derive/IntfReasons.h"

#include <initializer_list>
#include <map>
#include <set>

namespace Derive {

namespace {

namespace Ft = FlowTracking;
namespace Hw = HwFlowTracking;
using Wyre::AddressFamily;

/// The keys of a collection in the order of their texts.
template< class View > std::set< Corvo::String > namesOf( View children )
{
   std::set< Corvo::String > names;
   for ( const auto & child : children ) {
      names.insert( child->name() );
   }
   return names;
}

/// One tracker, whose exporters are counted.
class TrackerReport {
 public:
   TrackerReport( const Reported & from, const Ft::FlowTrackerConfig & config, bool active )
         : from_( from ),
           config_( config ),
           hw_( from.hw.hwFtConfig( config.name() ) ),
           active_( active )
   {
   }

   void exporters( Ft::TrackerStatus & to )
   {
      for ( const Corvo::Ptr< Ft::ExporterStatus > & exporter : to.expStatus() ) {
         if ( !config_.expConfig().contains( exporter->name() ) ) {
            to.expStatusDel( exporter->name() );
         }
      }
      for ( const Corvo::String & name : namesOf( config_.expConfig() ) ) {
         exporter( *config_.expConfig( name ), *to.expStatusIs( name ) );
      }
   }

 private:
   bool beyondLimit( const Ft::ExporterConfig & config )
   {
      return config.exportFormat() == Ft::ExportFormat::formatSflow
            ? ++sflow_ > from_.capabilities.maxSflowExportersPerTracker()
            : ++exporters_ > from_.capabilities.maxExportersPerTracker();
   }

   bool formatFits( const Ft::ExporterConfig & config ) const
   {
      return config.exportFormat() == Ft::ExportFormat::formatDefault || from_.hw.swExport() ||
            from_.capabilities.exportFormatHwSupported( config.exportFormat() );
   }

   void exporter( const Ft::ExporterConfig & config, Ft::ExporterStatus & to )
   {
      const auto hw = hw_ ? hw_->expConfig( config.name() ) : nullptr;
      Ft::ExporterInactiveReason both;
      both.maxExportersLimitIs( beyondLimit( config ) );
      both.invalidExportFormatIs( !formatFits( config ) );
      both.exporterNotProcessedIs( !hw );
      both.invalidCollectorIs( hw && !hw->exporter4Resolved() && !hw->exporter6Resolved() );
      Ft::ExporterInactiveReason ip = both;
      ip.invalidLocalIntfIs( hw && hw->exporter4Resolved() && !hw->exporter4Ready() );
      Ft::ExporterInactiveReason ip6 = both;
      ip6.invalidLocalIntfIs( hw && hw->exporter6Resolved() && !hw->exporter6Ready() );
      reason( AddressFamily::ipv4, ip, to );
      reason( AddressFamily::ipv6, ip6, to );
      to.inactiveReasonDel( AddressFamily::ipunknown );
      const bool active = active_ && both.value() == 0 && hw &&
            ( hw->exporter4Ready() || hw->exporter6Ready() );
      to.activeIs( active );
      collectors( config, hw, active, to );
   }

   static void reason(
         AddressFamily family, const Ft::ExporterInactiveReason & reason, Ft::ExporterStatus & to )
   {
      if ( reason.value() == 0 ) {
         to.inactiveReasonDel( family );
      } else {
         to.inactiveReasonIs( family, reason );
      }
   }

   void collectors( const Ft::ExporterConfig & config, const Corvo::Ptr< Hw::ExporterConfig > & hw,
         bool active, Ft::ExporterStatus & to ) const
   {
      std::set< Corvo::String > hosts;
      for ( const auto & [ host, collector ] : config.collectorHostAndPort() ) {
         hosts.insert( host );
      }
      for ( const Corvo::Ptr< Ft::CollectorStatus > & collector : to.collectorStatus() ) {
         if ( !hosts.contains( collector->hostname() ) ) {
            to.collectorStatusDel( collector->hostname() );
         }
      }
      std::uint32_t count = 0;
      for ( const Corvo::String & host : hosts ) {
         const bool beyond = ++count > from_.capabilities.maxCollectorsPerExporter();
         const bool known = hw &&
               ( hw->collectorIpAndPort().contains( host ) ||
                     hw->collectorIp6AndPort().contains( host ) );
         const auto collector = to.collectorStatusIs( host );
         collector->activeIs( active && known && !beyond );
         collector->inactiveReasonIs( beyond ? Ft::maxCollectorsLimit
                     : known                 ? Ft::collectorInactiveReasonUnknown
                                             : Ft::collectorNotProcessed );
      }
   }

   const Reported & from_;
   const Ft::FlowTrackerConfig & config_;
   Corvo::Ptr< Hw::FtConfig > hw_;
   bool active_;
   std::uint32_t exporters_ = 0;
   std::uint32_t sflow_ = 0;
};

Ft::TrackerInactiveReason reasonOf(
      const Reported & from, const Refusals & refused, const Corvo::String & name )
{
   if ( const auto found = refused.find( name ); found != refused.end() ) {
      return found->second.beyondMaxTrackers ? Ft::maxTrackersLimit
                                             : Ft::trackerInactiveReasonUnknown;
   }
   return from.hwStatus.hwFtStatus( name ) ? Ft::trackerInactiveReasonUnknown
                                           : Ft::trackerNotProcessed;
}

} // namespace

void reportStatus( const Reported & from, Ft::Status & to )
{
   const Refusals refused = refusals( from.hw, from.capabilities );
   for ( const Corvo::Ptr< Ft::TrackerStatus > & tracker : to.ftStatus() ) {
      if ( !from.config.flowTrackerConfig().contains( tracker->name() ) ) {
         to.ftStatusDel( tracker->name() );
      }
   }
   for ( const auto & config : from.config.flowTrackerConfig() ) {
      const Corvo::String & name = config->name();
      const bool active = from.hw.hwFtConfig( name ) && from.hwStatus.hwFtStatus( name ) &&
            !refused.contains( name );
      const auto status = to.ftStatusIs( name );
      status->activeIs( active );
      status->inactiveReasonIs( reasonOf( from, refused, name ) );
      TrackerReport( from, *config, active ).exporters( *status );
   }
}

} // namespace Derive
