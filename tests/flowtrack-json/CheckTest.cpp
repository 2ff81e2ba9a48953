// Each rule: a configuration that breaks it, and one that is like it and does not.
#include "tools/flowtrack/check/Rules.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using FlowtrackCheck::Checked;
using FlowtrackCheck::Finding;

namespace {

class CheckTest : public testing::Test {
 protected:
   /// What a rule finds, a line each.
   std::string found( const std::string & rule ) const
   {
      std::string text;
      for ( const Finding & finding : FlowtrackCheck::check(
                  { config.get(), bindings.get(), hardware.get(), capabilities.get() } ) ) {
         if ( finding.rule == rule ) {
            text += finding.path + ": " + finding.message + "\n";
         }
      }
      return text;
   }

   Corvo::Ptr< FlowTracking::FlowTrackerConfig > tracker() const
   {
      return config->flowTrackerConfigIs( "t" );
   }

   Corvo::Ptr< FlowTracking::Config > config = FlowTracking::configFactory( "any" );
   Corvo::Ptr< FlowTracking::FlowTrackerIntfConfigs > bindings =
         FlowTracking::flowTrackerIntfConfigsFactory( "any" );
   Corvo::Ptr< HwFlowTracking::Config > hardware = HwFlowTracking::configFactory( "any" );
   Corvo::Ptr< HwFlowTracking::Capabilities > capabilities;
};

TEST_F( CheckTest, ATrackerHasAnExporter )
{
   tracker();
   EXPECT_EQ( found( "tracker-without-exporter" ),
         "/flowTrackerConfig[t]: tracker 't' has no exporter: its flow records go nowhere\n" );
   tracker()->expConfigIs( "e" );
   EXPECT_EQ( found( "tracker-without-exporter" ), "" );
}

TEST_F( CheckTest, AnExporterHasACollector )
{
   const auto exporter = tracker()->expConfigIs( "e" );
   EXPECT_EQ( found( "exporter-without-collector" ),
         "/flowTrackerConfig[t]/expConfig[e]: exporter 'e' has no collector: it stays inactive, as "
         "it has nobody to send to\n" );
   exporter->useSflowCollectorConfigIs( true );
   EXPECT_EQ( found( "exporter-without-collector" ), "" );
   exporter->useSflowCollectorConfigIs( false );
   exporter->exportFormatIs( FlowTracking::formatNone );
   EXPECT_EQ( found( "exporter-without-collector" ), "" );
   exporter->exportFormatIs( FlowTracking::formatIpfix );
   exporter->collectorHostAndPortIs( Wyre::HostAndPort( "h", 4739 ) );
   EXPECT_EQ( found( "exporter-without-collector" ), "" );
}

TEST_F( CheckTest, ACollectorIsNamedOnce )
{
   const auto exporter = tracker()->expConfigIs( "e" );
   exporter->collectorHostAndPortIs( Wyre::HostAndPort( "fd00::1", 4739 ) );
   exporter->collectorHostAndPortIs( Wyre::HostAndPort( "FD00:0::1", 4740 ) );
   EXPECT_EQ( found( "collector-twice" ), "" ); // another port
   exporter->collectorHostAndPortIs( Wyre::HostAndPort( "FD00:0::1", 4739 ) );
   EXPECT_EQ( found( "collector-twice" ),
         "/flowTrackerConfig[t]: port 4739 of 'FD00:0::1' of exporter 'e' and 'fd00::1' of "
         "exporter 'e' is one collector: it gets each record twice, and counts flows twice\n" );
   exporter->collectorHostAndPortDel( "FD00:0::1" );
   tracker()->expConfigIs( "f" )->collectorHostAndPortIs( Wyre::HostAndPort( "Host.example", 1 ) );
   exporter->collectorHostAndPortIs( Wyre::HostAndPort( "host.EXAMPLE", 1 ) );
   EXPECT_NE( found( "collector-twice" ), "" );
}

TEST_F( CheckTest, AnActiveIntervalIsNotBelowTheInactiveTimeout )
{
   tracker()->inactiveTimeoutIs( FlowTracking::InactiveTimeout( 15000 ) );
   tracker()->activeIntervalIs( FlowTracking::ActiveInterval( 14999 ) );
   EXPECT_EQ( found( "active-interval" ),
         "/flowTrackerConfig[t]: active interval 14999 ms: below the inactive timeout, 15000 ms: "
         "flows that go on are reported before silence could end them, or not as the agents "
         "expect\n" );
   tracker()->activeIntervalIs( FlowTracking::ActiveInterval( 15000 ) );
   EXPECT_EQ( found( "active-interval" ), "" );
   tracker()->activeIntervalIs( FlowTracking::ActiveInterval( 0 ) ); // no such reports
   EXPECT_EQ( found( "active-interval" ), "" );
   tracker()->activeIntervalIs( FlowTracking::ActiveInterval( 36000001 ) );
   EXPECT_NE( found( "active-interval" ).find( "out of bounds" ), std::string::npos );
}

TEST_F( CheckTest, AGroupNamesExportersThatAreThere )
{
   const auto group = tracker()->fgConfigIs( "g", 1 );
   group->expNameIs( "e" );
   EXPECT_EQ( found( "group-with-missing-exporter" ),
         "/flowTrackerConfig[t]/fgConfig[g]: group 'g' names exporter 'e', which tracker 't' has "
         "not: its records do not get there\n" );
   tracker()->expConfigIs( "e" );
   EXPECT_EQ( found( "group-with-missing-exporter" ), "" );
   hardware->hwFtConfigIs( "t", FlowTracking::FtId( 1 ) )->hwFgConfigIs( "g", 1 )->expNameIs( "e" );
   EXPECT_NE( found( "group-with-missing-exporter" ), "" );
}

TEST_F( CheckTest, AGroupNamesTemplatesThatAreThere )
{
   const auto group =
         hardware->hwFtConfigIs( "t", FlowTracking::FtId( 1 ) )->hwFgConfigIs( "g", 1 );
   EXPECT_EQ( found( "group-with-missing-template" ), "" ); // it names none
   group->templateIdIs( Ipfix::TemplateId( 281 ) );
   EXPECT_EQ( found( "group-with-missing-template" ),
         "/hwFtConfig[t]/hwFgConfig[1]: group 'g' names template 281, which is neither built in "
         "nor configured: collectors cannot read its records\n" );
   config->templateConfigIs( FlowTracking::TemplateConfig( Ipfix::TemplateId( 281 ) ) );
   EXPECT_EQ( found( "group-with-missing-template" ), "" );
   group->templateIdIs( Ipfix::TemplateId( 261 ) ); // the built-in one of IPv4 flows
   EXPECT_EQ( found( "group-with-missing-template" ), "" );
}

TEST_F( CheckTest, AnInterfaceIsBoundToATrackerThatIsThere )
{
   bindings->flowTrackerEgressIntfConfigIs(
         Wyre::IntfId( "Ethernet1" ), "t", FlowTracking::sampleModeAll );
   EXPECT_EQ( found( "binding-to-missing-tracker" ),
         "/flowTrackerEgressIntfConfig[Ethernet1]: interface 'Ethernet1' is bound to tracker 't', "
         "which is not configured: nothing is tracked on it\n" );
   tracker();
   EXPECT_EQ( found( "binding-to-missing-tracker" ), "" );
   bindings->flowTrackerIntfConfigIs(
         Wyre::IntfId( "Ethernet1" ), "u", FlowTracking::sampleModeAll );
   EXPECT_NE( found( "binding-to-missing-tracker" ), "" );
}

TEST_F( CheckTest, NothingIsBeyondThePlatform )
{
   const std::string end = ": the platform does not do it, or does less\n";
   capabilities = HwFlowTracking::capabilitiesFactory( "any" );
   const auto exporter = tracker()->expConfigIs( "e" );
   EXPECT_EQ( found( "beyond-capabilities" ), "" );
   config->sampleLimitIs( FlowTracking::SampleLimit( 10 ) );
   EXPECT_EQ( found( "beyond-capabilities" ),
         "/: sample limit 10 is above the platform's 0" + end );
   capabilities->sampleLimitSupportedIs( true );
   capabilities->maxSampleLimitIs( 10 );
   EXPECT_EQ( found( "beyond-capabilities" ), "" );
   config->packetBufferShaperRateIs( FlowTracking::PacketBufferRate( 2 ) );
   EXPECT_EQ( found( "beyond-capabilities" ),
         "/: packet buffer's shaper rate 2 is above the platform's 0" + end );
   capabilities->packetBufferShaperSupportIs( true );
   capabilities->packetBufferShaperMaxRateIs( 2 );
   EXPECT_EQ( found( "beyond-capabilities" ), "" );
   exporter->collectorHostAndPortIs( Wyre::HostAndPort( "h", 1 ) );
   exporter->collectorHostAndPortIs( Wyre::HostAndPort( "i", 1 ) );
   tracker()->expConfigIs( "f" );
   tracker()->flowTableSizeIs( FlowTracking::FlowTableSize( 100 ) );
   config->flowTrackerConfigIs( "u" )->flowTableSizeIs( FlowTracking::FlowTableSize( 51 ) );
   capabilities->maxFlowsPerTrackerIs( 99 );
   capabilities->maxFlowsIs( 150 );
   EXPECT_EQ( found( "beyond-capabilities" ),
         "/: number of trackers 2 is above the platform's 1" + end +
               "/: size of all flow tables 151 is above the platform's 150" + end +
               "/flowTrackerConfig[t]: flow table size 100 is above the platform's 99" + end +
               "/flowTrackerConfig[t]: number of exporters 2 is above the platform's 1" + end +
               "/flowTrackerConfig[t]/expConfig[e]: number of collectors 2 is above the platform's "
               "1" +
               end );
}

/// What asks for one ability, what is found then, and what a platform that has it says.
struct Asked {
   std::string found;
   std::function< void( FlowTracking::Config & ) > ask;
   std::function< void( HwFlowTracking::Capabilities & ) > allow;
};

FlowTracking::FlowTrackerConfig & trackerOf( FlowTracking::Config & config )
{
   return *config.flowTrackerConfigIs( "t" );
}

FlowTracking::SampleProbability half() { return FlowTracking::SampleProbability( 50 ); }

const std::vector< Asked > & asked()
{
   using Config = FlowTracking::Config;
   using Can = HwFlowTracking::Capabilities;
   static const std::vector< Asked > all = {
      { "/: flow tracking", []( Config & c ) { c.enabledIs( true ); },
            []( Can & can ) { can.supportedIs( true ); } },
      { "/: export by software", []( Config & c ) { c.swExportIs( true ); },
            []( Can & can ) { can.swExportSupportedIs( true ); } },
      { "/: offload of IPv4 flows", []( Config & c ) { c.hwOffloadIpv4Is( true ); },
            []( Can & can ) { can.hwOffloadIpv4Is( true ); } },
      { "/: offload of IPv6 flows", []( Config & c ) { c.hwOffloadIpv6Is( true ); },
            []( Can & can ) { can.hwOffloadIpv6Is( true ); } },
      { "/: offload of RoCEv2 flows", []( Config & c ) { c.hwOffloadRocev2Is( true ); },
            []( Can & can ) { can.hwOffloadIpv4RoCEv2Is( true ); } },
      { "/: offload of RoCEv2 flows", []( Config & c ) { c.hwOffloadRocev2Is( true ); },
            []( Can & can ) { can.hwOffloadIpv6RoCEv2Is( true ); } },
      { "/: selection by encapsulation",
            []( Config & c ) { c.encapIs( FlowTracking::encapMpls ); },
            []( Can & can ) { can.encapFilterSupportedIs( true ); } },
      { "/: suppression of traps", []( Config & c ) { c.trapSuppressionIs( true ); },
            []( Can & can ) { can.trapSuppressionSupportedIs( true ); } },
      { "/: shaping of IPFIX messages", []( Config & c ) { c.ipfixExportShapingRateIs( 1 ); },
            []( Can & can ) { can.ipfixExportShapingSupportedIs( true ); } },
      { "/: accelerated software flow tracking",
            []( Config & c ) { c.acceleratedSftIs( true ); },
            []( Can & can ) { can.acceleratedSftSupportedIs( true ); } },
      { "/: sampling from the packet buffer",
            []( Config & c ) { c.packetBufferSampleProbIs( half() ); },
            []( Can & can ) { can.packetBufferSamplingProbSupportIs( true ); } },
      { "/: sampling from the packet buffer",
            []( Config & c ) { c.packetBufferSampleProb25Is( half() ); },
            []( Can & can ) { can.packetBufferSamplingProbSupportIs( true ); } },
      { "/: sampling from the packet buffer",
            []( Config & c ) { c.packetBufferSampleProb50Is( half() ); },
            []( Can & can ) { can.packetBufferSamplingProbSupportIs( true ); } },
      { "/: sampling from the packet buffer",
            []( Config & c ) { c.packetBufferSampleProb75Is( half() ); },
            []( Can & can ) { can.packetBufferSamplingProbSupportIs( true ); } },
      { "/: sampling from the packet buffer",
            []( Config & c ) { c.packetBufferSampleProb100Is( half() ); },
            []( Can & can ) { can.packetBufferSamplingProbSupportIs( true ); } },
      { "/flowTrackerConfig[t]: export of changes of TCP state",
            []( Config & c ) { trackerOf( c ).tcpStateChangeExportIs( true ); },
            []( Can & can ) { can.exportOnTcpStateSupportedIs( true ); } },
      { "/flowTrackerConfig[t]: the configuration of flow groups",
            []( Config & c ) { trackerOf( c ).fgConfigIs( "g", 1 ); },
            []( Can & can ) { can.flowGroupConfigSupportedIs( true ); } },
      { "/flowTrackerConfig[t]: monitoring CPU queue 'bgp'",
            []( Config & c ) { trackerOf( c ).monitoredCpuQueueIs( "bgp" ); },
            []( Can & can ) { can.monitoredCpuQueueSupportedIs( "bgp", 4 ); } },
      { "/flowTrackerConfig[t]/expConfig[e]: export format formatIpfix",
            []( Config & c ) {
               trackerOf( c ).expConfigIs( "e" )->exportFormatIs( FlowTracking::formatIpfix );
            },
            []( Can & can ) { can.exportFormatHwSupportedIs( FlowTracking::formatIpfix ); } },
   };
   return all;
}

TEST_F( CheckTest, NothingIsAskedForThatThePlatformLacks )
{
   for ( const Asked & one : asked() ) {
      config = FlowTracking::configFactory( "any" );
      capabilities = HwFlowTracking::capabilitiesFactory( "any" );
      one.ask( *config );
      EXPECT_EQ( found( "beyond-capabilities" ),
            one.found + " is not supported: the platform does not do it, or does less\n" );
      one.allow( *capabilities );
      EXPECT_EQ( found( "beyond-capabilities" ), "" ) << one.found;
   }
}

TEST_F( CheckTest, WhatIsNotAskedForNeedNotBeSupported )
{
   capabilities = HwFlowTracking::capabilitiesFactory( "any" );
   config->trapSuppressionIs( false );
   config->ipfixExportShapingRateIs( 1 );
   config->ipfixExportShapingDisabledIs( true );
   config->packetBufferSampleProb25Is( FlowTracking::SampleProbability( 0 ) );
   config->sampleLimitIs( FlowTracking::SampleLimit( 0 ) );
   const auto exporter = tracker()->expConfigIs( "e" );
   exporter->exportFormatIs( FlowTracking::formatNone );
   tracker()->systemObserverIs( true ); // whether there is one is not known
   EXPECT_EQ( found( "beyond-capabilities" ), "" );
   capabilities->systemObserverSupportedIs( false );
   EXPECT_EQ( found( "beyond-capabilities" ),
         "/flowTrackerConfig[t]: the system observer is not supported: the platform does not do "
         "it, or does less\n" );
   capabilities->systemObserverSupportedIs( true );
   exporter->exportFormatIs( FlowTracking::formatIpfix );
   config->swExportIs( true ); // software has all formats
   capabilities->swExportSupportedIs( true );
   EXPECT_EQ( found( "beyond-capabilities" ), "" );
   capabilities->flowGroupConfigSupportedIs( true );
   const auto group = tracker()->fgConfigIs( "g", 1 );
   FlowTracking::MirrorConfig mirror;
   group->mirrorConfigIs( mirror ); // a default mirrors nothing
   EXPECT_EQ( found( "beyond-capabilities" ), "" );
   mirror.sessionNameIs( "s" );
   group->mirrorConfigIs( mirror );
   EXPECT_EQ( found( "beyond-capabilities" ),
         "/flowTrackerConfig[t]/fgConfig[g]: mirroring is not supported: the platform does not do "
         "it, or does less\n" );
   capabilities->mirroringSupportedIs( true );
   EXPECT_EQ( found( "beyond-capabilities" ), "" );
}

TEST_F( CheckTest, ALimitOfSamplesIsLiftedWhereThePlatformCan )
{
   capabilities = HwFlowTracking::capabilitiesFactory( "any" );
   capabilities->sampleLimitSupportedIs( true );
   config->sampleLimitIs( FlowTracking::SampleLimit( 0 ) );
   EXPECT_EQ( found( "beyond-capabilities" ), "" );
   capabilities->sampleLimitDisabledSupportedIs( false );
   EXPECT_EQ( found( "beyond-capabilities" ),
         "/: sampling without a limit is not supported: the platform does not do it, or does "
         "less\n" );
   config->sampleLimitIs( FlowTracking::SampleLimit( 1 ) );
   EXPECT_EQ( found( "beyond-capabilities" ), "" );
}

TEST_F( CheckTest, MirrorOnDropTakesMplsWhereThePlatformCan )
{
   capabilities = HwFlowTracking::capabilitiesFactory( "any" );
   capabilities->encapFilterSupportedIs( true );
   config->encapIs( FlowTracking::encapMpls );
   EXPECT_EQ( found( "beyond-capabilities" ), "" );
   config = FlowTracking::mirrorOnDropConfigFactory( "any" );
   config->encapIs( FlowTracking::encapIpv4 );
   EXPECT_EQ( found( "beyond-capabilities" ), "" );
   config->encapIs( FlowTracking::encapMpls );
   EXPECT_EQ( found( "beyond-capabilities" ),
         "/: mirror-on-drop of MPLS packets is not supported: the platform does not do it, or "
         "does less\n" );
   capabilities->modMplsEncapSupportedIs( true );
   EXPECT_EQ( found( "beyond-capabilities" ), "" );
}

TEST_F( CheckTest, ExportersOfSFlowAreCountedByThemselves )
{
   capabilities = HwFlowTracking::capabilitiesFactory( "any" );
   capabilities->exportFormatHwSupportedIs( FlowTracking::formatSflow );
   tracker()->expConfigIs( "e" );
   tracker()->expConfigIs( "s" )->exportFormatIs( FlowTracking::formatSflow );
   EXPECT_EQ( found( "beyond-capabilities" ), "" );
   tracker()->expConfigIs( "s2" )->exportFormatIs( FlowTracking::formatSflow );
   EXPECT_EQ( found( "beyond-capabilities" ),
         "/flowTrackerConfig[t]: number of sFlow exporters 2 is above the platform's 1: the "
         "platform does not do it, or does less\n" );
   capabilities->maxSflowExportersPerTrackerIs( 2 );
   EXPECT_EQ( found( "beyond-capabilities" ), "" );
}

TEST_F( CheckTest, InterfacesAreOfAKindThatThePlatformTracks )
{
   const std::string end = " is not supported: the platform does not do it, or does less\n";
   capabilities = HwFlowTracking::capabilitiesFactory( "any" );
   for ( const char * const name : { "Ethernet1", "Ethernet1.100", "Tunnel3", "Dps1" } ) {
      bindings->flowTrackerIntfConfigIs( Wyre::IntfId( name ), "t", FlowTracking::sampleModeAll );
   }
   EXPECT_EQ( found( "beyond-capabilities" ),
         "/flowTrackerIntfConfig[Dps1]: tracking on interfaces of DPS" + end +
               "/flowTrackerIntfConfig[Ethernet1.100]: tracking on subinterfaces" + end +
               "/flowTrackerIntfConfig[Tunnel3]: tracking on tunnel interfaces" + end );
   capabilities->dpsIntfSupportedIs( true );
   capabilities->subIntfSupportedIs( true );
   capabilities->tunnelIntfSupportedIs( true );
   EXPECT_EQ( found( "beyond-capabilities" ), "" );
   bindings->flowTrackerEgressIntfConfigIs(
         Wyre::IntfId( "Ethernet1" ), "t", FlowTracking::sampleModeAll );
   EXPECT_EQ( found( "beyond-capabilities" ),
         "/: tracking of packets that leave an interface" + end );
   capabilities->egressFlowTrackerIntfSupportedIs( true );
   EXPECT_EQ( found( "beyond-capabilities" ), "" );
   config->hwOffloadIpv4Is( true );
   config->hwOffloadIpv6Is( true );
   capabilities->hwOffloadIpv4Is( true );
   capabilities->hwOffloadIpv6Is( true );
   EXPECT_EQ( found( "beyond-capabilities" ),
         "/: offload of IPv4 flows for egress" + end + "/: offload of IPv6 flows for egress" +
               end );
   capabilities->egressHwOffloadIpv4Is( true );
   capabilities->egressHwOffloadIpv6Is( true );
   EXPECT_EQ( found( "beyond-capabilities" ), "" );
}

TEST_F( CheckTest, WithoutTreesNothingIsFound )
{
   EXPECT_TRUE( FlowtrackCheck::check( {} ).empty() );
   EXPECT_EQ( FlowtrackCheck::rules().size(), 8U );
}

} // namespace
