// Every enumeration of the vocabulary and of the configuration: codes, names, width.
#include "tests/support/EnumTable.h"

#include "FlowTracker/FlowTrackerConfig.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using namespace FlowTracking;
using TestSupport::enumOps;
using TestSupport::EnumTable;

const std::vector< EnumTable > table = {
   { "FlowTracking::FlowTrackingType",
         enumOps< FlowTrackingType, FlowTrackingTypeInstance, FlowTrackingTypeInstance >(), 8,
         { { 0, "none" }, { 1, "sampled" }, { 2, "hardware" }, { 3, "inbandTelemetry" },
               { 4, "mirrorOnDrop" }, { 5, "cpuQueue" }, { 6, "dfw" } } },
   { "FlowTracking::ExportFormat",
         enumOps< ExportFormat, ExportFormatInstance, ExportFormatInstance >(), 8,
         { { 0, "formatDefault" }, { 1, "formatNone" }, { 2, "formatDropReport" },
               { 3, "formatSflow" }, { 4, "formatIpfix" }, { 5, "formatPcap" } } },
   { "FlowTracking::ForwardingStatus::Status",
         enumOps< ForwardingStatus::Status, ForwardingStatus::StatusInstance,
               ForwardingStatus::StatusInstance >(),
         8,
         { { 0, "unknown" }, { 1, "forwarded" }, { 2, "dropped" }, { 3, "consumed" } } },
   { "FlowTracking::FlowRecordFormat::Format",
         enumOps< FlowRecordFormat::Format, FlowRecordFormat::FormatInstance,
               FlowRecordFormat::FormatInstance >(),
         8,
         { { 0, "none" }, { 1, "monitor" }, { 2, "enforcement" } } },
   { "FlowTracking::MirrorSelectorAlgo",
         enumOps< MirrorSelectorAlgo, MirrorSelectorAlgoInstance, MirrorSelectorAlgoInstance >(), 8,
         { { 0, "sampleModeNone" }, { 1, "fixed" }, { 2, "random" } } },
   { "FlowTracking::EncapType",
         enumOps< EncapType, EncapTypeInstance, EncapTypeInstance >(), 8,
         { { 0, "encapNone" }, { 1, "encapIpv4" }, { 2, "encapIpv6" }, { 3, "encapVxlan" },
               { 4, "encapMpls" }, { 5, "encapGre" }, { 6, "encapRoCEv2" } } },
   { "FlowTracking::FilterType",
         enumOps< FilterType, FilterTypeInstance, FilterTypeInstance >(), 8,
         { { 0, "filterRpf" } } },
   { "FlowTracking::CollectorInactiveReason",
         enumOps< CollectorInactiveReason, CollectorInactiveReasonInstance,
               CollectorInactiveReasonInstance >(),
         8,
         { { 0, "collectorInactiveReasonUnknown" }, { 1, "maxCollectorsLimit" },
               { 2, "collectorNotProcessed" } } },
   { "FlowTracking::ExporterInactiveReasonEnum",
         enumOps< ExporterInactiveReasonEnum, ExporterInactiveReasonEnumInstance,
               ExporterInactiveReasonEnumInstance >(),
         8,
         { { 0, "exporterInactiveReasonUnknown" }, { 1, "exporterNotProcessed" },
               { 2, "maxExportersLimit" }, { 3, "invalidCollector" }, { 4, "invalidVrf" },
               { 5, "invalidLocalIntf" }, { 6, "waitingForUDPPort" },
               { 7, "invalidExportFormat" } } },
   { "FlowTracking::TrackerInactiveReason",
         enumOps< TrackerInactiveReason, TrackerInactiveReasonInstance,
               TrackerInactiveReasonInstance >(),
         8,
         { { 0, "trackerInactiveReasonUnknown" }, { 1, "maxTrackersLimit" },
               { 2, "trackerNotProcessed" } } },
   { "FlowTracking::HoFlowState",
         enumOps< HoFlowState, HoFlowStateInstance, HoFlowStateInstance >(), 8,
         { { 0, "hoFlowStateUnknown" }, { 1, "inProgress" }, { 2, "inHardware" },
               { 3, "outOfResources" } } },
   { "FlowTracking::StaticGroupSeqnoOffset",
         enumOps< StaticGroupSeqnoOffset, StaticGroupSeqnoOffsetInstance,
               StaticGroupSeqnoOffsetInstance >(),
         8,
         { { 0, "offsetIpv4" }, { 1, "offsetIpv6" }, { 2, "offsetVxlanIpv4" },
               { 3, "offsetVxlanIpv6" } } },
   { "FlowTracking::ModHwStatus",
         enumOps< ModHwStatus, ModHwStatusInstance, ModHwStatusInstance >(), 8,
         { { 0, "disable" }, { 1, "enable" }, { 2, "error" } } },
   { "FlowTracking::PacketBuffer::Status",
         enumOps< PacketBuffer::Status, PacketBuffer::StatusInstance,
               PacketBuffer::StatusInstance >(),
         8,
         { { 0, "disabled" }, { 1, "enabled" }, { 2, "insufficientBufferSpace" } } },
   { "FlowTracking::StaticTemplateId",
         enumOps< StaticTemplateId, StaticTemplateIdInstance, StaticTemplateIdInstance >(), 16,
         { { 0, "optionsTemplateVrfTable" }, { 1, "optionsTemplateIntfTable" },
               { 2, "optionsTemplateFlowKeys" }, { 3, "optionsTemplateFlowTrackerTable" },
               { 4, "optionsTemplateMeteringProcessStats" }, { 5, "dataTemplateIpv4" },
               { 6, "dataTemplateIpv6" }, { 7, "dataTemplateSwExportIpv4" },
               { 8, "dataTemplateSwExportIpv6" }, { 9, "dataTemplateSwExportVxlanIpv4" },
               { 10, "dataTemplateSwExportVxlanIpv6" }, { 11, "dataTemplateIntIpv4" },
               { 12, "dataTemplateIntIpv6" }, { 13, "dataTemplateVRouterIpv4" },
               { 14, "dataTemplateMplsIpv4" }, { 15, "dataTemplateMplsIpv6" },
               { 16, "dataTemplateNonIp" }, { 17, "dataTemplateEgressIpv4" },
               { 18, "dataTemplateEgressIpv6" }, { 19, "dataTemplateDfwItorEnforcementIpv4" },
               { 20, "dataTemplateIcmpv4" }, { 21, "dataTemplateDfwFwEnforcementIpv4" },
               { 22, "dataTemplateRocev2Ipv4" }, { 23, "dataTemplateRocev2Ipv6" },
               { 24, "dataTemplateVRouterEgressIpv4" }, { 25, "staticTemplateIdMax" },
               { 32512, "dataTemplateHwIpv4" }, { 32513, "dataTemplateHwIpv6" },
               { 32514, "dataTemplateHwVxlanIpv4" }, { 32515, "dataTemplateHwVxlanIpv6" } } },
   { "FlowTracking::FlowTrackerSampleMode",
         enumOps< FlowTrackerSampleMode, FlowTrackerSampleModeInstance,
               FlowTrackerSampleModeInstance >(),
         8,
         { { 0, "sampleModeAll" }, { 1, "sampleModeFiltered" }, { 2, "sampleModeTargeted" } } },
};

TEST( EnumerationsDeathTest, areAsTheTableSays )
{
   for ( const EnumTable & enumeration : table ) {
      TestSupport::expectEnumeration( enumeration );
   }
}

TEST( EnumerationsTest, enumeratorsAreReachedWithAndWithoutTheEnumeration )
{
   static_assert( FlowTracking::dfw == FlowTrackingType::dfw );
   static_assert( FlowTracking::sampleModeNone == MirrorSelectorAlgo::sampleModeNone );
   static_assert( PacketBuffer::enabled == PacketBuffer::Status::enabled );
   static_assert( FlowRecordFormat::none == FlowRecordFormat::Format::none );
   static_assert( FlowTracking::none == FlowTrackingType::none );
   static_assert( FlowTracking::sampleModeTargeted == FlowTrackerSampleMode::sampleModeTargeted );
}

TEST( EnumerationsTest, hardwareTemplatesStandBehindAGap )
{
   EXPECT_EQ( static_cast< unsigned >( staticTemplateIdMax ), 25U );
   EXPECT_EQ( static_cast< unsigned >( dataTemplateHwIpv4 ), 32512U );
   EXPECT_THROW( StaticTemplateIdInstance( 26 ), Corvo::EnumRangeException );
   EXPECT_THROW( StaticTemplateIdInstance( 32511 ), Corvo::EnumRangeException );
   EXPECT_THROW( StaticTemplateIdInstance( 32516 ), Corvo::EnumRangeException );
}

TEST( EnumerationsTest, aNameIsReadOutOfALongerText )
{
   Vok::CharRange range( "encapGre,encapMpls" );
   EncapType encap = encapNone;
   sequenceToValue( range, &encap );
   EXPECT_EQ( encap, encapGre );
   EXPECT_EQ( range.offset(), 8U );
   Vok::CharRange unknown( "encapNoneSuch" );
   EXPECT_THROW( sequenceToValue( unknown, &encap ), Corvo::EnumRangeException );
   EXPECT_EQ( unknown.offset(), 0U );
   EXPECT_EQ( encap, encapGre );
}

} // namespace
