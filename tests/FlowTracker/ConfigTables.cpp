// What each attribute of the configuration is: id, name, form, default, another value or a key, and
// what a change of it needs besides.
#include "tests/FlowTracker/ConfigTables.h"

namespace FlowTrackerTest {

using namespace TestSupport;

EntityTable congestionConfig()
{
   const std::vector< AttributeRow > rows = {
      { 258, "dampingTimeout", optional( "FlowTracking::DampingTimeout" ), "", "65535" },
      { 259, "interval", optional( "FlowTracking::CongestionInterval" ), "",
            "FlowTracking::CongestionInterval[before=1,after=300]" },
   };
   return { "FlowTracking::CongestionConfig", "nameString", rows };
}

EntityTable effectiveCongestionConfig()
{
   const std::vector< AttributeRow > rows = {
      { 258, "dampingTimeout", plain( "FlowTracking::DampingTimeout" ), "300", "0" },
      { 259, "interval", plain( "FlowTracking::CongestionInterval" ),
            "FlowTracking::CongestionInterval[before=30,after=30]",
            "FlowTracking::CongestionInterval[before=30,after=31]" },
   };
   return { "FlowTracking::EffectiveCongestionConfig", "nameString", rows };
}

EntityTable flowGroup()
{
   const char * noMirroring =
         R"(FlowTracking::MirrorConfig[sessionName="",initialCopy=0,)"
         "mirrorSelectorAlgo=sampleModeNone,mirrorIntervalFixed=0,mirrorIntervalRandom=0]";
   const char * noAccessList = R"(FlowTracking::AccessList[seqno=0,aclName="",aclType=ip])";
   const std::vector< AttributeRow > rows = {
      { 258, "seqno", settableArgument( "u32" ), "100", "4294967295" },
      { 259, "flowDomain", plain( "Corvo::String" ), R"("")", "campus" },
      { 260, "ipAccessList", plain( "FlowTracking::AccessList" ), noAccessList,
            "FlowTracking::AccessList[seqno=10,aclName=web,aclType=ip]" },
      { 261, "ip6AccessList", plain( "FlowTracking::AccessList" ), noAccessList,
            R"(FlowTracking::AccessList[seqno=0,aclName="",aclType=ipv6])" },
      { 262, "encapType", set( "FlowTracking::EncapType" ), "", "encapVxlan" },
      { 263, "mirrorConfig", plain( "FlowTracking::MirrorConfig" ), noMirroring,
            "FlowTracking::MirrorConfig[sessionName=probe,initialCopy=1023,"
            "mirrorSelectorAlgo=random,mirrorIntervalFixed=10000,mirrorIntervalRandom=4000]" },
      { 264, "expName", set( "Corvo::String" ), "", "collector" },
      { 265, "groupCommitted", plain( "bool" ), "false", "true" },
   };
   return { "FlowTracking::FlowGroup", "nameString", rows };
}

EntityTable flowTrackerIntfConfig()
{
   const std::vector< AttributeRow > rows = {
      { 258, "intfId", argument( "Wyre::IntfId" ), "Ethernet1" },
      { 259, "trackerName", argument( "Corvo::String" ), "tracker" },
      { 260, "sampleMode", argument( "FlowTracking::FlowTrackerSampleMode" ),
            "sampleModeFiltered" },
   };
   return { "FlowTracking::FlowTrackerIntfConfig", "intfId", rows };
}

EntityTable flowTrackerIntfConfigs()
{
   const std::vector< AttributeRow > rows = {
      { 258, "flowTrackerIntfConfig",
            children( "FlowTracking::FlowTrackerIntfConfig", "intfId", "Wyre::IntfId" ), "",
            "Ethernet1", { "tracker", "sampleModeAll" } },
      { 259, "flowTrackerEgressIntfConfig",
            children( "FlowTracking::FlowTrackerIntfConfig", "intfId", "Wyre::IntfId" ), "",
            "Ethernet1", { "tracker", "sampleModeTargeted" } },
   };
   return { "FlowTracking::FlowTrackerIntfConfigs", "nameString", rows };
}

EntityTable dumpBuffersInstructions()
{
   const std::vector< AttributeRow > rows = {
      { 258, "pcapFilePath", plain( "Corvo::String" ), R"("")", "/var/tmp/cpu.pcap" },
   };
   return { "FlowTracking::DumpBuffersInstructions", "", rows };
}

EntityTable exporterConfig()
{
   const auto dscpBounds = within( 0, 63,
         "FlowTracking::ExporterConfig::dscpValue < Wyre::DscpValue::min or > "
         "Wyre::DscpValue::max not allowed" );
   const std::vector< Corvo::String > ports = {
      "Wyre::HostAndPort[hostname=collector,port=4739]",
      "Wyre::HostAndPort[hostname=collector,port=2055]",
   };
   const std::vector< AttributeRow > rows = {
      { 258, "localIntfName", plain( "Corvo::String" ), R"("")", "Loopback0" },
      { 259, "ipfixMtu", plain( "FlowTracking::IpfixMtu" ), "9152", "512" },
      { 260, "dscpValue", plain( "Wyre::DscpValue" ), "0", "46", {}, dscpBounds },
      // There is no other version than the default.
      { 261, "ipfixVersion", plain( "FlowTracking::IpfixVersion" ), "10" },
      { 262, "templateInterval", plain( "FlowTracking::TemplateInterval" ), "3600000", "5000" },
      { 263, "useSflowCollectorConfig", plain( "bool" ), "false", "true" },
      { 264, "exportFormat", plain( "FlowTracking::ExportFormat" ), "formatDefault",
            "formatIpfix" },
      { 265, "collectorHostAndPort", mapBy( "hostname", "Corvo::String", "Wyre::HostAndPort" ), "",
            "collector",
            ports },
   };
   return { "FlowTracking::ExporterConfig", "nameString", rows };
}

EntityTable flowTrackerConfig()
{
   const std::vector< AttributeRow > rows = {
      { 258, "expConfig", children( "FlowTracking::ExporterConfig" ), "", "exporter" },
      { 259, "fgConfig", children( "FlowTracking::FlowGroup" ), "", "group", { "100" } },
      { 260, "monitoredCpuQueue", set( "Corvo::String" ), "", "CoppSystemIpUcast" },
      { 261, "congestionConfig", child( "FlowTracking::CongestionConfig" ), "", "",
            { "congestion" } },
      { 262, "inactiveTimeout", plain( "FlowTracking::InactiveTimeout" ), "15000", "3000" },
      { 263, "activeInterval", plain( "FlowTracking::ActiveInterval" ), "300000", "0" },
      { 264, "flowTableSize", plain( "FlowTracking::FlowTableSize" ), "153600", "2097152" },
      { 265, "tcpStateChangeExport", plain( "bool" ), "false", "true" },
      { 266, "mplsExport", plain( "bool" ), "false", "true" },
      { 267, "ingressLabelExport", plain( "bool" ), "false", "true" },
      { 268, "groupResequencingInProgress", plain( "bool" ), "false", "true" },
      { 269, "groupResequencingDone", plain( "bool" ), "false", "true" },
      { 270, "groupsCommitted", plain( "bool" ), "false", "true" },
      { 271, "groupsCommitInProgress", plain( "bool" ), "false", "true" },
      { 272, "systemObserver", plain( "bool" ), "false", "true" },
      { 273, "cpuQueuesBuffersDumpLocation",
            constructedChild( "FlowTracking::DumpBuffersInstructions" ) },
   };
   return { "FlowTracking::FlowTrackerConfig", "nameString", rows };
}

EntityTable config()
{
   const auto agentBounds = within( 1, 8,
         "FlowTracking::Config::sftAgentCount < 1 or > (FlowTracking::InstanceId::max + 1) "
         "not allowed" );
   const std::vector< AttributeRow > rows = {
      { 258, "flowTrackerConfig", children( "FlowTracking::FlowTrackerConfig" ), "", "tracker" },
      { 259, "enabled", plain( "bool" ), "false", "true" },
      { 260, "sftAgentCountDefault", constant( "u8" ), "1" },
      { 261, "sftAgentCount", plain( "u8" ), "1", "8", {}, agentBounds },
      { 262, "bgpExport", plain( "bool" ), "true", "false" },
      { 263, "sampleSize", optional( "FlowTracking::SampleSize" ), "", "0" },
      { 264, "sampleRate", plain( "FlowTracking::SampleRate" ), "1048576", "1" },
      { 265, "ipfixExportShapingDisabled", plain( "bool" ), "false", "true" },
      { 266, "ipfixExportShapingRate", plain( "u32" ), "0", "4294967295" },
      { 267, "sampleLimit", optional( "FlowTracking::SampleLimit" ), "", "4294967295" },
      { 268, "hwOffloadIpv4", plain( "bool" ), "false", "true" },
      { 269, "hwOffloadIpv6", plain( "bool" ), "false", "true" },
      { 270, "hwOffloadRocev2", plain( "bool" ), "false", "true" },
      { 271, "minSamplesBeforeHwOffload", plain( "u32" ), "1", "0" },
      { 272, "swExport", plain( "bool" ), "false", "true" },
      { 273, "encap", set( "FlowTracking::EncapType" ), "", "encapGre" },
      { 274, "filter", set( "FlowTracking::FilterType" ), "", "filterRpf" },
      { 275, "ignorableRocev2QpId", set( "u32" ), "", "4294967295" },
      { 276, "rewriteDscp", plain( "bool" ), "false", "true" },
      { 277, "trapSuppression", optional( "bool" ), "", "false" },
      { 278, "templateConfig",
            mapBy( "templateId", "Ipfix::TemplateId", "FlowTracking::TemplateConfig" ), "", "281" },
      { 279, "packetBufferSampleProb", plain( "FlowTracking::SampleProbability" ), "0", "100" },
      { 280, "packetBufferSampleProb25", optional( "FlowTracking::SampleProbability" ), "", "25" },
      { 281, "packetBufferSampleProb50", optional( "FlowTracking::SampleProbability" ), "", "0" },
      { 282, "packetBufferSampleProb75", optional( "FlowTracking::SampleProbability" ), "", "1" },
      { 283, "packetBufferSampleProb100", optional( "FlowTracking::SampleProbability" ), "",
            "100" },
      { 284, "packetBufferShaperRate", plain( "FlowTracking::PacketBufferRate" ), "0", "1000" },
      { 285, "packetBufferShaperBurst", plain( "FlowTracking::PacketBufferBurst" ), "0", "64" },
      { 286, "pktDropsThreshold", plain( "FlowTracking::PktDropsThreshold" ), "50", "99" },
      { 287, "routingSimCacheConfig", plain( "FlowTracking::RoutingSimCacheConfig" ),
            "FlowTracking::RoutingSimCacheConfig[v4Size=100000,v6Size=30000,lifetime=30]",
            "FlowTracking::RoutingSimCacheConfig[v4Size=100000,v6Size=30000,lifetime=31]" },
      { 288, "bgpSimCacheConfig", plain( "FlowTracking::BgpSimCacheConfig" ),
            "FlowTracking::BgpSimCacheConfig[size=500000,lifetime=30]",
            "FlowTracking::BgpSimCacheConfig[size=0,lifetime=30]" },
      { 289, "acceleratedSft", plain( "bool" ), "false", "true" },
      { 290, "flowTrackingCliConfigPath", function() },
      { 291, "sampledFlowTrackingCliConfigPath", function() },
      { 292, "hardwareFlowTrackingCliConfigPath", function() },
      { 293, "hardwareFlowTrackingFlowWatcherConfigPath", function() },
      { 294, "inbandTelemetryFlowTrackingCliConfigPath", function() },
      { 295, "mirrorOnDropFlowTrackingCliConfigPath", function() },
      { 296, "cpuQueueFlowTrackingCliConfigPath", function() },
      { 297, "dfwFlowTrackingCliConfigPath", function() },
   };
   return { "FlowTracking::Config", "nameString", rows };
}

EntityTable mirrorOnDropConfig()
{
   EntityTable table = config();
   table.type = "FlowTracking::MirrorOnDropConfig";
   table.attributes.push_back( { 298, "setDefaultEncapFlags", function() } );
   return table;
}

} // namespace FlowTrackerTest
