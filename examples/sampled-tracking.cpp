// Builds the configuration of sampled flow tracking in a switch of 48 ports, and prints it: two
// trackers, their exporters and flow groups, two templates, and which interface is bound to which
// tracker.
#include "TreeText.h"

#include "FlowTracker/FlowTrackerConfig.h"
#include "Vok/Vok.h"

#include <exception>
#include <initializer_list>
#include <iostream>
#include <string>

namespace {

using namespace FlowTracking;
using Ipfix::RecordType;
using Wyre::HostAndPort;

constexpr std::uint16_t ipfixPort = 4739;
constexpr std::uint16_t sflowPort = 6343;

/// A template of these elements, in this order.
TemplateConfig templateOf( std::uint32_t id, std::initializer_list< RecordType > elements )
{
   TemplateConfig config{ Ipfix::TemplateId( id ) };
   std::uint32_t position = 0;
   for ( const RecordType element : elements ) {
      const auto number = static_cast< std::uint32_t >( element );
      config.fieldIs( ++position, FieldSpecifierConfig( number, 0 ) );
   }
   return config;
}

Corvo::Ptr< Config > rootConfig()
{
   const auto config = configFactory( "sampled" );
   config->enabledIs( true );
   config->sampleRateIs( SampleRate( 16384 ) );
   config->sampleSizeIs( SampleSize( 256 ) );
   config->sftAgentCountIs( 2 );
   config->encapIs( encapIpv4 );
   config->encapIs( encapVxlan );
   const std::uint32_t firstId = Constants::unreservedTemplateIdBase().value();
   config->templateConfigIs( templateOf( firstId,
         { RecordType::sourceIPv4Address, RecordType::destinationIPv4Address,
               RecordType::protocolIdentifier, RecordType::octetDeltaCount } ) );
   config->templateConfigIs( templateOf( firstId + 1,
         { RecordType::sourceIPv6Address, RecordType::destinationIPv6Address,
               RecordType::octetDeltaCount } ) );
   return config;
}

/// Users' traffic, exported to the operators' collectors and to an archive.
void addCampus( Config & config )
{
   const auto tracker = config.flowTrackerConfigIs( "campus" );
   tracker->inactiveTimeoutIs( InactiveTimeout( 10000 ) );
   tracker->tcpStateChangeExportIs( true );
   const auto operators = tracker->expConfigIs( "operators" );
   operators->exportFormatIs( formatIpfix );
   operators->localIntfNameIs( "Loopback0" );
   operators->dscpValueIs( Wyre::DscpValue( 16 ) );
   operators->collectorHostAndPortIs( HostAndPort( "192.0.2.10", ipfixPort ) );
   operators->collectorHostAndPortIs( HostAndPort( "2001:db8::10", ipfixPort ) );
   const auto archive = tracker->expConfigIs( "archive" );
   archive->ipfixMtuIs( IpfixMtu( 1500 ) );
   archive->templateIntervalIs( TemplateInterval( 600000 ) );
   archive->collectorHostAndPortIs( HostAndPort( "2001:db8:1::5", ipfixPort ) );

   const auto voice = tracker->fgConfigIs( "voice", Constants::fgSeqnoInterval() );
   voice->ipAccessListIs( AccessList( 10, "voice-v4", Acl::AclType::ip ) );
   voice->ip6AccessListIs( AccessList( 10, "voice-v6", Acl::AclType::ipv6 ) );
   voice->expNameIs( "operators" );
   const auto web = tracker->fgConfigIs( "web", 2 * Constants::fgSeqnoInterval() );
   web->ipAccessListIs( AccessList( 20, "web-v4", Acl::AclType::ip ) );
   web->expNameIs( "operators" );
   web->expNameIs( "archive" );
}

/// Traffic between servers; the first packets of storage flows are mirrored to a probe.
void addServers( Config & config )
{
   const auto tracker = config.flowTrackerConfigIs( "servers" );
   const ActiveInterval interval( 60000 );
   interval.validate();
   tracker->activeIntervalIs( interval );
   tracker->flowTableSizeIs( FlowTableSize( 1000000 ) );
   tracker->congestionConfigIs( "congestion" )->intervalIs( CongestionInterval( 10, 60 ) );
   const auto security = tracker->expConfigIs( "security" );
   security->exportFormatIs( formatSflow );
   security->collectorHostAndPortIs( HostAndPort( "198.51.100.7", sflowPort ) );

   const auto storage = tracker->fgConfigIs( "storage", Constants::fgSeqnoInterval() );
   storage->encapTypeIs( encapRoCEv2 );
   storage->mirrorConfigIs( MirrorConfig( "probe", InitialCopy( 5 ), MirrorSelectorAlgo::fixed,
         MirrorIntervalFixed( 1000 ), MirrorIntervalRandom( 0 ) ) );
   storage->expNameIs( "security" );
   const auto overlay = tracker->fgConfigIs( "overlay", 2 * Constants::fgSeqnoInterval() );
   overlay->encapTypeIs( encapVxlan );
   overlay->ipAccessListIs( AccessList( 30, "overlay-v4", Acl::AclType::ip ) );
   overlay->expNameIs( "security" );
}

/// Ports 1 to 32 are users', 33 to 46 servers'; 47 and 48 lead out of the building.
Corvo::Ptr< FlowTrackerIntfConfigs > bindings()
{
   const auto configs = flowTrackerIntfConfigsFactory( "bindings" );
   for ( unsigned port = 1; port <= 48; ++port ) {
      const Wyre::IntfId intf( "Ethernet" + std::to_string( port ) );
      configs->flowTrackerIntfConfigIs( intf, port <= 32 ? "campus" : "servers",
            port <= 46 ? sampleModeAll : sampleModeFiltered );
      if ( port > 46 ) {
         configs->flowTrackerEgressIntfConfigIs( intf, "servers", sampleModeFiltered );
      }
   }
   return configs;
}

} // namespace

int main()
{
   try {
      const auto config = rootConfig();
      addCampus( *config );
      addServers( *config );
      std::cout << config->sampledFlowTrackingCliConfigPath() << "\n";
      printTree( std::cout, *config );
      printTree( std::cout, *bindings() );
   } catch ( const std::exception & e ) {
      std::cerr << "sampled-tracking: " << e.what() << "\n";
      return 1;
   }
}
