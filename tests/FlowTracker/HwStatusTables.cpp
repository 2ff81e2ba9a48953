// What each attribute of the hardware status and of the capabilities is: id, name, form, default,
// another value or a key, and what a change of it needs besides.
#include "tests/FlowTracker/HwStatusTables.h"

namespace FlowTrackerTest {

using namespace TestSupport;

EntityTable ftMirrorStatus()
{
   const std::vector< AttributeRow > rows = {
      { 258, "active", plain( "bool" ), "false", "true" },
   };
   return { "HwFlowTracking::FtMirrorStatus", "", rows };
}

EntityTable fgStatus()
{
   const std::vector< AttributeRow > rows = {
      { 258, "fgName", argument( "Corvo::String" ), "group" },
      { 259, "seqno", plain( "u32" ), "0", "4294967295" },
      { 260, "templateId", plain( "Ipfix::TemplateId" ), "65535", "256" },
      { 261, "hwFgId", set( "u16" ), "", "65535" },
      { 262, "mirrorStatus", constructedChild( "HwFlowTracking::FtMirrorStatus" ) },
      { 263, "genId", plain( "u32" ), "0", "4294967295" },
      { 264, "instantiate", function() },
   };
   return { "HwFlowTracking::FgStatus", "fgName", rows };
}

EntityTable ftStatus()
{
   const std::vector< AttributeRow > rows = {
      { 258, "hwFgStatus", children( "HwFlowTracking::FgStatus", "fgName" ), "", "group" },
      { 259, "templateStatus",
            references( "Ipfix::TemplateStatus", "templateId", "Ipfix::TemplateId" ), "", "300" },
      { 260, "inactiveTimeout", plain( "FlowTracking::InactiveTimeout" ), "15000", "3000" },
      { 261, "activeInterval", plain( "FlowTracking::ActiveInterval" ), "300000", "0" },
      { 262, "flowRecordFormat", plain( "FlowTracking::FlowRecordFormat" ), "none",
            "enforcement" },
      { 263, "instantiate", function() },
   };
   return { "HwFlowTracking::FtStatus", "nameString", rows };
}

EntityTable intfFtStatus()
{
   const std::vector< AttributeRow > rows = {
      { 258, "intfId", argument( "Wyre::IntfId" ), "Ethernet1" },
      { 259, "active", argument( "bool" ), "true" },
      { 260, "reason", argument( "Corvo::String" ), "busy" },
   };
   return { "HwFlowTracking::IntfFtStatus", "intfId", rows };
}

EntityTable hwStatus()
{
   const Form interfaces = children( "HwFlowTracking::IntfFtStatus", "intfId", "Wyre::IntfId" );
   const std::vector< AttributeRow > rows = {
      { 258, "sampleRate", plain( "u32" ), "1048576", "0" },
      { 259, "enabled", plain( "bool" ), "false", "true" },
      { 260, "samplingOnSubInterfaceEgressSupported", plain( "bool" ), "false", "true" },
      { 261, "samplingOnSubInterfaceIngressSupported", plain( "bool" ), "false", "true" },
      { 262, "maxSampleTruncateSize", optional( "Sflow::SampleTruncateSizeType" ), "",
            "4294967295" },
      { 263, "hwFtStatus", children( "HwFlowTracking::FtStatus" ), "", "tracker" },
      { 264, "hwIntfFtStatus", interfaces, "", "Ethernet1", { "true", R"("")" } },
      { 265, "egressHwIntfFtStatus", interfaces, "", "Ethernet1", { "false", "busy" } },
      { 266, "templateStatus",
            children( "Ipfix::TemplateStatus", "templateId", "Ipfix::TemplateId" ), "", "300" },
   };
   return { "HwFlowTracking::Status", "nameString", rows };
}

EntityTable mirrorOnDropHwStatus()
{
   const std::vector< AttributeRow > rows = {
      { 258, "modEnable", plain( "FlowTracking::ModHwStatus" ), "disable", "error" },
      { 259, "pbStatus", plain( "FlowTracking::PacketBuffer::Status" ), "disabled",
            "insufficientBufferSpace" },
      { 260, "pbShaperRate", optional( "u32" ), "", "0" },
      { 261, "pbShaperBurst", optional( "u32" ), "", "4294967295" },
   };
   return { "HwFlowTracking::MirrorOnDropHwStatus", "nameString", rows };
}

EntityTable hwCapabilities()
{
   const std::vector< AttributeRow > rows = {
      { 258, "supported", plain( "bool" ), "false", "true" },
      { 259, "swExportSupported", plain( "bool" ), "false", "true" },
      { 260, "exportOnTcpStateSupported", plain( "bool" ), "false", "true" },
      { 261, "maxTrackers", plain( "u32" ), "1", "0" },
      { 262, "maxExportersPerTracker", plain( "u32" ), "1", "0" },
      { 263, "maxCollectorsPerExporter", plain( "u32" ), "1", "4294967295" },
      { 264, "maxSflowExportersPerTracker", plain( "u32" ), "1", "2" },
      { 265, "maxFlows", plain( "u32" ), "0", "4294967295" },
      { 266, "maxFlowsPerTracker", plain( "u32" ), "0", "1" },
      { 267, "maxFlowsPerGroup", plain( "u32" ), "0", "1" },
      { 268, "nonDefaultVrfExport", plain( "bool" ), "false", "true" },
      { 269, "copyToCollectorSupported", plain( "bool" ), "false", "true" },
      { 270, "hwOffloadIpv4", plain( "bool" ), "false", "true" },
      { 271, "hwOffloadIpv6", plain( "bool" ), "false", "true" },
      { 272, "hwOffloadIpv4RoCEv2", plain( "bool" ), "false", "true" },
      { 273, "hwOffloadIpv6RoCEv2", plain( "bool" ), "false", "true" },
      { 274, "egressHwOffloadIpv4", plain( "bool" ), "false", "true" },
      { 275, "egressHwOffloadIpv6", plain( "bool" ), "false", "true" },
      { 276, "flowGroupConfigSupported", plain( "bool" ), "false", "true" },
      { 277, "mirroringSupported", plain( "bool" ), "false", "true" },
      { 278, "tunnelIntfSupported", plain( "bool" ), "false", "true" },
      { 279, "dpsIntfSupported", plain( "bool" ), "false", "true" },
      { 280, "subIntfSupported", plain( "bool" ), "false", "true" },
      { 281, "hwOffloadOnMemberSupported", plain( "bool" ), "false", "true" },
      { 282, "egressModifiedFlowTrackerIntfSupported", plain( "bool" ), "false", "true" },
      { 283, "egressFlowTrackerIntfSupported", plain( "bool" ), "false", "true" },
      { 284, "trapSuppressionSupported", plain( "bool" ), "false", "true" },
      { 285, "exportFormatHwSupported", set( "FlowTracking::ExportFormat" ), "", "formatSflow" },
      { 286, "packetBufferDropsSupport", plain( "bool" ), "false", "true" },
      { 287, "packetBufferSamplingProbSupport", plain( "bool" ), "false", "true" },
      { 288, "packetBufferShaperSupport", plain( "bool" ), "false", "true" },
      { 289, "packetBufferShaperMaxRate", plain( "u32" ), "0", "4294967295" },
      { 290, "packetBufferShaperMaxBurst", plain( "u32" ), "0", "4294967295" },
      { 291, "sampleLimitSupported", plain( "bool" ), "false", "true" },
      { 292, "defaultSampleLimit", optional( "u32" ), "", "0" },
      { 293, "maxSampleLimit", plain( "u32" ), "4294967295", "0" },
      { 294, "sampleLimitDisabledSupported", plain( "bool" ), "true", "false" },
      { 295, "encapFilterSupported", plain( "bool" ), "false", "true" },
      { 296, "modMplsEncapSupported", plain( "bool" ), "false", "true" },
      { 297, "modDefaultExportFormat", plain( "FlowTracking::ExportFormat" ), "formatDefault",
            "formatDropReport" },
      { 298, "modDefaultTrapSuppression", optional( "bool" ), "", "false" },
      { 299, "packetTruncation", plain( "HwFlowTracking::PacketTruncation" ), "noTruncation",
            "networkHeaders" },
      { 300, "monitoredCpuQueueSupported", map( "Corvo::String", "u16" ), "", "queue",
            { "3", "65535" } },
      { 301, "hwAggregationRequired", plain( "bool" ), "false", "true" },
      { 302, "systemObserverSupported", optional( "bool" ), "", "true" },
      { 303, "modMulticastSupported", plain( "bool" ), "false", "true" },
      { 304, "ipfixExportShapingSupported", plain( "bool" ), "false", "true" },
      { 305, "acceleratedSftSupported", plain( "bool" ), "false", "true" },
   };
   return { "HwFlowTracking::Capabilities", "nameString", rows };
}

EntityTable flowWatcherCapabilities()
{
   const std::vector< AttributeRow > rows = {
      { 258, "awakeSupported", plain( "bool" ), "false", "true" },
      { 259, "broadscanSupported", plain( "bool" ), "false", "true" },
      { 260, "feature", plain( "FlowTracking::FlowTrackingType" ), "none", "hardware" },
   };
   return { "HwFlowWatcher::Capabilities", "nameString", rows };
}

} // namespace FlowTrackerTest
