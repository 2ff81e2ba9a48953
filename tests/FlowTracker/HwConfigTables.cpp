// What each attribute of the hardware configuration is: id, name, form, default, another value or a
// key, and what a change of it needs besides.
#include "tests/FlowTracker/HwConfigTables.h"

namespace FlowTrackerTest {

using namespace TestSupport;

EntityTable fgConfig()
{
   const char * noMirroring =
         R"(FlowTracking::MirrorConfig[sessionName="",initialCopy=0,)"
         "mirrorSelectorAlgo=sampleModeNone,mirrorIntervalFixed=0,mirrorIntervalRandom=0]";
   const std::vector< Corvo::String > params = {
      "FlowTracking::FlowParam[seqno=7,type=octetDeltaCount,flowKey=false]",
      "FlowTracking::FlowParam[seqno=7,type=packetDeltaCount,flowKey=true]",
   };
   const std::vector< Corvo::String > lists = {
      "FlowTracking::AccessList[seqno=10,aclName=web,aclType=ip]",
      "FlowTracking::AccessList[seqno=10,aclName=web,aclType=ipv6]",
   };
   const std::vector< AttributeRow > rows = {
      { 258, "fgName", argument( "Corvo::String" ), "group" },
      { 259, "seqno", argument( "u32" ), "100" },
      { 260, "templateId", plain( "Ipfix::TemplateId" ), "65535", "256" },
      { 261, "flowDomain", plain( "Corvo::String" ), R"("")", "campus" },
      { 262, "flowParam", ordered( mapBy( "seqno", "u32", "FlowTracking::FlowParam" ) ), "", "7",
            params },
      { 263, "genId", plain( "u32" ), "0", "4294967295" },
      { 264, "accessList", ordered( mapBy( "seqno", "u32", "FlowTracking::AccessList" ) ), "",
            "10",
            lists },
      { 265, "encapFlags", plain( "FlowTracking::EncapFlags" ), "0", "63" },
      { 266, "mirrorConfig", plain( "FlowTracking::MirrorConfig" ), noMirroring,
            "FlowTracking::MirrorConfig[sessionName=probe,initialCopy=1023,"
            "mirrorSelectorAlgo=random,mirrorIntervalFixed=10000,mirrorIntervalRandom=4000]" },
      { 267, "expName", set( "Corvo::String" ), "", "exporter" },
      { 268, "fgConfigChangeBitMap", plain( "HwFlowTracking::FgConfigChangeBitMap" ), "0", "15" },
      { 269, "updateFgConfigChangeBitMap", function() },
   };
   return { "HwFlowTracking::FgConfig", "fgName", rows };
}

EntityTable hwFgConfigMap()
{
   const std::vector< Corvo::String > pairs = {
      "HwFlowTracking::FgNameAndSeqno[fgName=a,seqno=7]",
      "HwFlowTracking::FgNameAndSeqno[fgName=b,seqno=7]",
   };
   const std::vector< AttributeRow > rows = {
      { 258, "fgName", argument( "Corvo::String" ), "group" },
      { 259, "seqno", argument( "u32" ), "100" },
      { 260, "hwFgNameAndSeqno", mapBy( "seqno", "u32", "HwFlowTracking::FgNameAndSeqno" ), "",
            "7",
            pairs },
   };
   return { "HwFlowTracking::HwFgConfigMap", "fgName", rows };
}

EntityTable hwExporterConfig()
{
   const std::vector< Corvo::String > ipv4 = {
      "Wyre::IpAndPort[ip=10.0.0.1,port=4739]",
      "Wyre::IpAndPort[ip=10.0.0.1,port=2055]",
   };
   const std::vector< Corvo::String > ipv6 = {
      R"(Wyre::Ip6AndPort[ip=fd00::1,port=4739])",
      R"(Wyre::Ip6AndPort[ip=fd00::2,port=4739])",
   };
   const std::vector< AttributeRow > rows = {
      { 258, "vrfName", plain( "L3::VrfName" ), R"("")", "red" },
      { 259, "localIntfName", plain( "Corvo::String" ), R"("")", "Loopback0" },
      { 260, "ipfixMtu", plain( "FlowTracking::IpfixMtu" ), "9152", "512" },
      { 261, "ip6HdrSize", constant( "u32" ), "40" },
      { 262, "udpHdrLen", constant( "u32" ), "8" },
      { 263, "ipfixMaxMsgSize", derived( "u32" ), "9104" },
      { 264, "dscpValue", plain( "Wyre::DscpValue" ), "0", "255" },
      // There is no other version than the default.
      { 265, "ipfixVersion", plain( "FlowTracking::IpfixVersion" ), "10" },
      { 266, "templateInterval", plain( "FlowTracking::TemplateInterval" ), "3600000", "5000" },
      { 267, "srcIpAddr", plain( "Wyre::IpAddr" ), "0.0.0.0", "10.0.0.1" },
      { 268, "srcIp6Addr", plain( "Wyre::Ip6Addr" ), "::", "fd00::1" },
      { 269, "collectorIpAndPort", map( "Corvo::String", "Wyre::IpAndPort" ), "", "collector",
            ipv4 },
      { 270, "collectorIp6AndPort", map( "Corvo::String", "Wyre::Ip6AndPort" ), "", "collector",
            ipv6 },
      { 271, "exporter4Resolved", plain( "bool" ), "false", "true" },
      { 272, "exporter6Resolved", plain( "bool" ), "false", "true" },
      { 273, "exporter4Ready", plain( "bool" ), "false", "true" },
      { 274, "exporter6Ready", plain( "bool" ), "false", "true" },
      { 275, "rxPort4", plain( "u16" ), "0", "65535" },
      { 276, "rxPort6", plain( "u16" ), "0", "65535" },
      { 277, "useSflowCollectorConfig", plain( "bool" ), "false", "true" },
      { 278, "exportFormat", plain( "FlowTracking::ExportFormat" ), "formatDefault",
            "formatPcap" },
      { 279, "templateExportReq", plain( "u32" ), "0", "4294967295" },
      { 280, "instantiate", function() },
   };
   return { "HwFlowTracking::ExporterConfig", "nameString", rows };
}

EntityTable localCollectorConfig()
{
   const std::vector< AttributeRow > rows = {
      { 258, "expName", plain( "Corvo::String" ), R"("")", "exporter" },
      { 259, "vrfName", plain( "L3::VrfName" ), R"("")", "red" },
      { 260, "srcIp", plain( "Wyre::IpGenAddr" ), R"("")", "10.0.0.1" },
      { 261, "destIp", plain( "Wyre::IpGenAddr" ), R"("")", "fd00::1" },
      { 262, "srcPort", plain( "u16" ), "0", "65535" },
      { 263, "destPort", plain( "u16" ), "0", "65535" },
      { 264, "dscpValue", plain( "Wyre::DscpValue" ), "0", "63" },
      { 265, "exporterReady", plain( "bool" ), "false", "true" },
   };
   return { "HwFlowTracking::LocalCollectorConfig", "nameString", rows };
}

EntityTable monitoredCpuQueue()
{
   const std::vector< AttributeRow > rows = {
      { 258, "cpuQueueName", argument( "Corvo::String" ), "queue" },
      { 259, "cpuQueueId", settableArgument( "u16" ), "3", "65535" },
      { 260, "status", plain( "HwFlowTracking::MonitoredCpuQueueStatus" ),
            "monitoredCpuQueueActive", "monitoredCpuQueueInactiveUnknown" },
      { 261, "active", function() },
   };
   return { "HwFlowTracking::MonitoredCpuQueue", "cpuQueueName", rows };
}

EntityTable ftConfig()
{
   const std::vector< AttributeRow > rows = {
      { 258, "ftId", argument( "FlowTracking::FtId" ), "7" },
      { 259, "hwFgConfig", ordered( children( "HwFlowTracking::FgConfig", "seqno", "u32" ) ), "",
            "100", { "group" } },
      { 260, "hwFgConfigMap", children( "HwFlowTracking::HwFgConfigMap", "fgName" ), "", "group",
            { "100" } },
      { 261, "hwFgConfigGenId", plain( "u32" ), "0", "4294967295" },
      { 262, "hwFgConfigGenIdUpdateNeeded", plain( "bool" ), "false", "true" },
      { 263, "monitoredCpuQueue", children( "HwFlowTracking::MonitoredCpuQueue", "cpuQueueName" ),
            "", "queue", { "3" } },
      { 264, "congestionConfig", child( "FlowTracking::EffectiveCongestionConfig" ), "", "",
            { "congestion" } },
      { 265, "inactiveTimeout", plain( "FlowTracking::InactiveTimeout" ), "15000", "3000" },
      { 266, "activeInterval", plain( "FlowTracking::ActiveInterval" ), "300000", "0" },
      { 267, "flowTableSize", plain( "FlowTracking::FlowTableSize" ), "153600", "2097152" },
      { 268, "tcpStateChangeExport", plain( "bool" ), "false", "true" },
      { 269, "mplsExport", plain( "bool" ), "false", "true" },
      { 270, "ingressLabelExport", plain( "bool" ), "false", "true" },
      { 271, "expConfig", children( "HwFlowTracking::ExporterConfig" ), "", "exporter" },
      { 272, "resolvedExporter", set( "Corvo::String" ), "", "exporter" },
      { 273, "waitingExporter", set( "Corvo::String" ), "", "exporter" },
      { 274, "localCollectorConfig", child( "HwFlowTracking::LocalCollectorConfig" ), "", "",
            { "collector" } },
      { 275, "systemObserver", plain( "bool" ), "false", "true" },
      { 276, "instantiate", function() },
   };
   return { "HwFlowTracking::FtConfig", "nameString", rows };
}

EntityTable intfFtConfig()
{
   const std::vector< AttributeRow > rows = {
      { 258, "intfId", argument( "Wyre::IntfId" ), "Ethernet1" },
      { 259, "hwFtConfig", argument( "HwFlowTracking::FtConfig" ), "/hwFtConfig[tracker]" },
      { 260, "sampleMode", argument( "FlowTracking::FlowTrackerSampleMode" ),
            "sampleModeTargeted" },
   };
   return { "HwFlowTracking::IntfFtConfig", "intfId", rows };
}

EntityTable hwConfig()
{
   const auto sampleBounds = within( 1, 4294967295,
         "HwFlowTracking::Config::minSamplesBeforeHwOffload < "
         "FlowTracking::HoHeuristicsConstants::minSamplesLb or > "
         "FlowTracking::HoHeuristicsConstants::minSamplesUb not allowed" );
   const Form bindings = children( "HwFlowTracking::IntfFtConfig", "intfId", "Wyre::IntfId" );
   const std::vector< AttributeRow > rows = {
      { 258, "sampleRateDefault", constant( "u32" ), "1048576" },
      { 259, "sampleRate", plain( "u32" ), "1048576", "0" },
      { 260, "sampleLimit", plain( "u32" ), "0", "4294967295" },
      { 261, "sampleSize", plain( "FlowTracking::SampleSize" ), "1024", "65535" },
      { 262, "ignorableRocev2QpId", set( "u32" ), "", "4294967295" },
      { 263, "hwOffloadIpv4", plain( "bool" ), "false", "true" },
      { 264, "hwOffloadIpv4Rocev2", plain( "bool" ), "false", "true" },
      { 265, "hwOffloadIpv6", plain( "bool" ), "false", "true" },
      { 266, "hwOffloadIpv6Rocev2", plain( "bool" ), "false", "true" },
      { 267, "hwOffloadIpv4ConflictWithMultipleInstances", plain( "bool" ), "false", "true" },
      { 268, "hwOffloadIpv6ConflictWithMultipleInstances", plain( "bool" ), "false", "true" },
      { 269, "hwOffloadIpv4StartTime", plain( "Corvo::Duration" ), "inf", "0" },
      { 270, "hwOffloadIpv6StartTime", plain( "Corvo::Duration" ), "inf", "12.5" },
      { 271, "minSamplesBeforeHwOffload", plain( "u32" ), "1", "4294967295", {}, sampleBounds },
      { 272, "ipfixExportShapingDisabled", plain( "bool" ), "false", "true" },
      { 273, "ipfixExportShapingRate", plain( "u32" ), "0", "4294967295" },
      { 274, "hwFtConfig", children( "HwFlowTracking::FtConfig" ), "", "tracker", { "7" } },
      { 275, "hwIntfFtConfig", bindings, "", "Ethernet1",
            { "/hwFtConfig[tracker]", "sampleModeAll" } },
      { 276, "hwEgressIntfFtConfig", bindings, "", "Ethernet1",
            { "/hwFtConfig[tracker]", "sampleModeTargeted" } },
      { 277, "swExport", plain( "bool" ), "false", "true" },
      { 278, "encapFlags", plain( "FlowTracking::EncapFlags" ), "0", "63" },
      { 279, "filterTypes", plain( "FlowTracking::FilterTypes" ), "0", "1" },
      { 280, "trapSuppression", plain( "bool" ), "false", "true" },
      { 281, "packetBufferSampleProb25", plain( "FlowTracking::SampleProbability" ), "0", "25" },
      { 282, "packetBufferSampleProb50", plain( "FlowTracking::SampleProbability" ), "0", "50" },
      { 283, "packetBufferSampleProb75", plain( "FlowTracking::SampleProbability" ), "0", "75" },
      { 284, "packetBufferSampleProb100", plain( "FlowTracking::SampleProbability" ), "0", "100" },
      { 285, "packetBufferShaperRate", plain( "FlowTracking::PacketBufferRate" ), "0", "1000" },
      { 286, "packetBufferShaperBurst", plain( "FlowTracking::PacketBufferBurst" ), "0", "64" },
      { 287, "instantiate", function() },
   };
   return { "HwFlowTracking::Config", "nameString", rows };
}

} // namespace FlowTrackerTest
