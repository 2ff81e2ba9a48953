// Attribute by attribute of the capabilities, as far as something in the configuration asks for it.
#include "tools/flowtrack/check/Capabilities.h"

#include "Vok/Vok.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace FlowtrackCheck {

namespace {

using FlowTracking::ExporterConfig;
using FlowTracking::ExportFormat;
using FlowTracking::FlowTrackerConfig;
using HwFlowTracking::Capabilities;

/// A number that must not be above what the platform can.
struct Limit {
   std::string what;
   std::uint64_t number;
   std::uint64_t most;
};

/// Something that is asked for, and that a platform may lack.
struct Ability {
   std::string what;
   bool asked;
   bool there;
};

class Judge {
 public:
   Judge( const Capabilities & capabilities, std::vector< Finding > & findings )
         : can_( capabilities ),
           findings_( findings )
   {
   }

   void config( const FlowTracking::Config & config );
   void bindings( const FlowTracking::FlowTrackerIntfConfigs & bindings );
   void egressOffload( const FlowTracking::Config & config,
         const FlowTracking::FlowTrackerIntfConfigs & bindings );

 private:
   void sampling( const FlowTracking::Config & config );
   void packetBuffer( const FlowTracking::Config & config );
   void tracker( const FlowTracking::Config & config, const FlowTrackerConfig & tracker );
   void exporter( const FlowTracking::Config & config, const ExporterConfig & exporter );
   void binding( const FlowTracking::FlowTrackerIntfConfig & binding );

   void add( const Vok::Entity & entity, const std::string & message )
   {
      findings_.push_back( { "", std::string( Vok::pathOf( entity ) ), message } );
   }
   void atMost( const Vok::Entity & entity, const std::vector< Limit > & limits );
   void need( const Vok::Entity & entity, const std::vector< Ability > & abilities );

   const Capabilities & can_;
   std::vector< Finding > & findings_;
};

void Judge::atMost( const Vok::Entity & entity, const std::vector< Limit > & limits )
{
   for ( const Limit & limit : limits ) {
      if ( limit.number > limit.most ) {
         add( entity,
               limit.what + " " + std::to_string( limit.number ) + " is above the platform's " +
                     std::to_string( limit.most ) );
      }
   }
}

void Judge::need( const Vok::Entity & entity, const std::vector< Ability > & abilities )
{
   for ( const Ability & ability : abilities ) {
      if ( ability.asked && !ability.there ) {
         add( entity, ability.what + " is not supported" );
      }
   }
}

/// 0 stands for a number of flows that the platform does not tell.
std::uint64_t flows( std::uint32_t most ) { return most == 0 ? ~std::uint64_t{ 0 } : most; }

// ---- The root ---------------------------------------------------------------------------------

void Judge::config( const FlowTracking::Config & config )
{
   std::uint64_t asked = 0;
   for ( const auto & one : config.flowTrackerConfig() ) {
      asked += one->flowTableSize().value();
      tracker( config, *one );
   }
   atMost( config,
         { { "number of trackers", config.flowTrackerConfig().size(), can_.maxTrackers() },
               { "size of all flow tables", asked, flows( can_.maxFlows() ) } } );
   const bool shaped =
         config.ipfixExportShapingRate() != 0 && !config.ipfixExportShapingDisabled();
   const auto * const drops = dynamic_cast< const FlowTracking::MirrorOnDropConfig * >( &config );
   need( config,
         {
               { "flow tracking", config.enabled(), can_.supported() },
               { "export by software", config.swExport(), can_.swExportSupported() },
               { "offload of IPv4 flows", config.hwOffloadIpv4(), can_.hwOffloadIpv4() },
               { "offload of IPv6 flows", config.hwOffloadIpv6(), can_.hwOffloadIpv6() },
               { "offload of RoCEv2 flows", config.hwOffloadRocev2(),
                     can_.hwOffloadIpv4RoCEv2() || can_.hwOffloadIpv6RoCEv2() },
               { "selection by encapsulation", !config.encap().empty(),
                     can_.encapFilterSupported() },
               { "mirror-on-drop of MPLS packets",
                     drops && config.encap( FlowTracking::encapMpls ),
                     can_.modMplsEncapSupported() },
               { "suppression of traps", config.trapSuppression().value_or( false ),
                     can_.trapSuppressionSupported() },
               { "shaping of IPFIX messages", shaped, can_.ipfixExportShapingSupported() },
               { "accelerated software flow tracking", config.acceleratedSft(),
                     can_.acceleratedSftSupported() },
         } );
   sampling( config );
   packetBuffer( config );
}

/// A limit of 0 is none.
void Judge::sampling( const FlowTracking::Config & config )
{
   if ( !config.sampleLimit() ) {
      return;
   }
   const std::uint32_t limit = config.sampleLimit()->value();
   atMost( config,
         { { "sample limit", limit, can_.sampleLimitSupported() ? can_.maxSampleLimit() : 0 } } );
   need( config,
         { { "sampling without a limit", limit == 0 && can_.sampleLimitSupported(),
               can_.sampleLimitDisabledSupported() } } );
}

void Judge::packetBuffer( const FlowTracking::Config & config )
{
   const bool shaper = can_.packetBufferShaperSupport();
   atMost( config,
         { { "packet buffer's shaper rate", config.packetBufferShaperRate().value(),
                 shaper ? can_.packetBufferShaperMaxRate() : 0 },
               { "packet buffer's shaper burst", config.packetBufferShaperBurst().value(),
                     shaper ? can_.packetBufferShaperMaxBurst() : 0 } } );
   const std::array< Vok::Optional< FlowTracking::SampleProbability >, 5 > probabilities = {
      config.packetBufferSampleProb(), config.packetBufferSampleProb25(),
      config.packetBufferSampleProb50(), config.packetBufferSampleProb75(),
      config.packetBufferSampleProb100()
   };
   const bool sampled = std::any_of( probabilities.begin(), probabilities.end(),
         []( const auto & probability ) { return probability && probability->value() != 0; } );
   need( config,
         { { "sampling from the packet buffer", sampled,
               can_.packetBufferSamplingProbSupport() } } );
}

// ---- Trackers ---------------------------------------------------------------------------------

void Judge::tracker( const FlowTracking::Config & config, const FlowTrackerConfig & tracker )
{
   std::uint64_t sflow = 0;
   for ( const auto & one : tracker.expConfig() ) {
      sflow += one->exportFormat() == ExportFormat::formatSflow ? 1U : 0U;
      exporter( config, *one );
   }
   atMost( tracker,
         { { "number of exporters", tracker.expConfig().size() - sflow,
                 can_.maxExportersPerTracker() },
               { "number of sFlow exporters", sflow, can_.maxSflowExportersPerTracker() },
               { "flow table size", tracker.flowTableSize().value(),
                     flows( can_.maxFlowsPerTracker() ) } } );
   need( tracker,
         { { "export of changes of TCP state", tracker.tcpStateChangeExport(),
                 can_.exportOnTcpStateSupported() },
               { "the configuration of flow groups", !tracker.fgConfig().empty(),
                     can_.flowGroupConfigSupported() },
               { "the system observer", tracker.systemObserver(),
                     can_.systemObserverSupported().value_or( true ) } } );
   for ( const auto & queue : tracker.monitoredCpuQueue() ) {
      const bool known = can_.monitoredCpuQueueSupported().contains( queue );
      need( tracker, { { "monitoring CPU queue '" + std::string( queue ) + "'", true, known } } );
   }
   for ( const auto & group : tracker.fgConfig() ) {
      need( *group,
            { { "mirroring", static_cast< bool >( group->mirrorConfig() ),
                  can_.mirroringSupported() } } );
   }
}

/// What software exports may have any format.
void Judge::exporter( const FlowTracking::Config & config, const ExporterConfig & exporter )
{
   const std::size_t collectors = exporter.collectorHostAndPort().size();
   atMost( exporter, { { "number of collectors", collectors, can_.maxCollectorsPerExporter() } } );
   const ExportFormat format = exporter.exportFormat();
   const bool particular =
         format != ExportFormat::formatDefault && format != ExportFormat::formatNone;
   need( exporter,
         { { std::string( "export format " ) + FlowTracking::stringValue( format ),
               particular && !config.swExport(), can_.exportFormatHwSupported( format ) } } );
}

// ---- Bindings ---------------------------------------------------------------------------------

void Judge::binding( const FlowTracking::FlowTrackerIntfConfig & binding )
{
   const std::string_view name = binding.intfId().stringValue();
   need( binding,
         { { "tracking on subinterfaces", name.find( '.' ) != std::string_view::npos,
                 can_.subIntfSupported() },
               { "tracking on tunnel interfaces", name.starts_with( "Tunnel" ),
                     can_.tunnelIntfSupported() },
               { "tracking on interfaces of DPS", name.starts_with( "Dps" ),
                     can_.dpsIntfSupported() } } );
}

void Judge::bindings( const FlowTracking::FlowTrackerIntfConfigs & bindings )
{
   for ( const auto & one : bindings.flowTrackerIntfConfig() ) {
      binding( *one );
   }
   for ( const auto & one : bindings.flowTrackerEgressIntfConfig() ) {
      binding( *one );
   }
   need( bindings,
         { { "tracking of packets that leave an interface",
               !bindings.flowTrackerEgressIntfConfig().empty(),
               can_.egressFlowTrackerIntfSupported() } } );
}

/// Of hardware that offloads flows in the other direction alone.
void Judge::egressOffload( const FlowTracking::Config & config,
      const FlowTracking::FlowTrackerIntfConfigs & bindings )
{
   if ( !bindings.flowTrackerEgressIntfConfig().empty() ) {
      need( bindings,
            { { "offload of IPv4 flows for egress", config.hwOffloadIpv4() && can_.hwOffloadIpv4(),
                    can_.egressHwOffloadIpv4() },
                  { "offload of IPv6 flows for egress",
                        config.hwOffloadIpv6() && can_.hwOffloadIpv6(),
                        can_.egressHwOffloadIpv6() } } );
   }
}

} // namespace

void beyondCapabilities( const Checked & checked, std::vector< Finding > & findings )
{
   if ( !checked.capabilities ) {
      return;
   }
   Judge judge( *checked.capabilities, findings );
   if ( checked.config ) {
      judge.config( *checked.config );
   }
   if ( checked.bindings ) {
      judge.bindings( *checked.bindings );
   }
   if ( checked.config && checked.bindings ) {
      judge.egressOffload( *checked.config, *checked.bindings );
   }
}

} // namespace FlowtrackCheck
