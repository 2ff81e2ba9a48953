// Every attribute of the hardware status and of the capabilities is as its table says.
#include "tests/FlowTracker/HwStatusTables.h"

#include "FlowTracker/HwFlowTrackingStatus.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace FlowTrackerTest;
using namespace HwFlowTracking;
using TestSupport::EntityTable;
using TestSupport::expectConsecutive;

class HwStatusAttributes : public testing::TestWithParam< EntityTable > {
};

TEST_P( HwStatusAttributes, areAsTheTableSays )
{
   TestSupport::expectEntity( GetParam() );
}

std::string typeOf( const testing::TestParamInfo< EntityTable > & table )
{
   return std::string( table.param.type.substr( table.param.type.rfind( ':' ) + 1 ) );
}

INSTANTIATE_TEST_SUITE_P( Of, HwStatusAttributes,
      testing::Values( ftMirrorStatus(), fgStatus(), ftStatus(), intfFtStatus(), hwStatus(),
            mirrorOnDropHwStatus(), hwCapabilities() ),
      typeOf );

TEST( HwStatusAttributesTest, idsOfTheStatusAreConstantsOfTheTypes )
{
   expectConsecutive( { FtMirrorStatus::activeAttrId } );
   expectConsecutive( { FgStatus::fgNameAttrId, FgStatus::seqnoAttrId, FgStatus::templateIdAttrId,
         FgStatus::hwFgIdAttrId, FgStatus::mirrorStatusAttrId, FgStatus::genIdAttrId,
         FgStatus::instantiateAttrId } );
   expectConsecutive( { FtStatus::hwFgStatusAttrId, FtStatus::templateStatusAttrId,
         FtStatus::inactiveTimeoutAttrId, FtStatus::activeIntervalAttrId,
         FtStatus::flowRecordFormatAttrId, FtStatus::instantiateAttrId } );
   expectConsecutive( { IntfFtStatus::intfIdAttrId, IntfFtStatus::activeAttrId,
         IntfFtStatus::reasonAttrId } );
   expectConsecutive( { Status::sampleRateAttrId, Status::enabledAttrId,
         Status::samplingOnSubInterfaceEgressSupportedAttrId,
         Status::samplingOnSubInterfaceIngressSupportedAttrId,
         Status::maxSampleTruncateSizeAttrId, Status::hwFtStatusAttrId,
         Status::hwIntfFtStatusAttrId, Status::egressHwIntfFtStatusAttrId,
         Status::templateStatusAttrId } );
   using Mod = MirrorOnDropHwStatus;
   expectConsecutive( { Mod::modEnableAttrId, Mod::pbStatusAttrId, Mod::pbShaperRateAttrId,
         Mod::pbShaperBurstAttrId } );
}

TEST( HwStatusAttributesTest, idsOfTheCapabilitiesAreConstantsOfTheType )
{
   using Caps = HwFlowTracking::Capabilities;
   expectConsecutive( { Caps::supportedAttrId, Caps::swExportSupportedAttrId,
         Caps::exportOnTcpStateSupportedAttrId, Caps::maxTrackersAttrId,
         Caps::maxExportersPerTrackerAttrId, Caps::maxCollectorsPerExporterAttrId,
         Caps::maxSflowExportersPerTrackerAttrId, Caps::maxFlowsAttrId,
         Caps::maxFlowsPerTrackerAttrId, Caps::maxFlowsPerGroupAttrId,
         Caps::nonDefaultVrfExportAttrId, Caps::copyToCollectorSupportedAttrId,
         Caps::hwOffloadIpv4AttrId, Caps::hwOffloadIpv6AttrId, Caps::hwOffloadIpv4RoCEv2AttrId,
         Caps::hwOffloadIpv6RoCEv2AttrId, Caps::egressHwOffloadIpv4AttrId,
         Caps::egressHwOffloadIpv6AttrId, Caps::flowGroupConfigSupportedAttrId,
         Caps::mirroringSupportedAttrId, Caps::tunnelIntfSupportedAttrId,
         Caps::dpsIntfSupportedAttrId, Caps::subIntfSupportedAttrId,
         Caps::hwOffloadOnMemberSupportedAttrId,
         Caps::egressModifiedFlowTrackerIntfSupportedAttrId,
         Caps::egressFlowTrackerIntfSupportedAttrId, Caps::trapSuppressionSupportedAttrId,
         Caps::exportFormatHwSupportedAttrId, Caps::packetBufferDropsSupportAttrId,
         Caps::packetBufferSamplingProbSupportAttrId, Caps::packetBufferShaperSupportAttrId,
         Caps::packetBufferShaperMaxRateAttrId, Caps::packetBufferShaperMaxBurstAttrId,
         Caps::sampleLimitSupportedAttrId, Caps::defaultSampleLimitAttrId,
         Caps::maxSampleLimitAttrId, Caps::sampleLimitDisabledSupportedAttrId,
         Caps::encapFilterSupportedAttrId, Caps::modMplsEncapSupportedAttrId,
         Caps::modDefaultExportFormatAttrId, Caps::modDefaultTrapSuppressionAttrId,
         Caps::packetTruncationAttrId, Caps::monitoredCpuQueueSupportedAttrId,
         Caps::hwAggregationRequiredAttrId, Caps::systemObserverSupportedAttrId,
         Caps::modMulticastSupportedAttrId, Caps::ipfixExportShapingSupportedAttrId,
         Caps::acceleratedSftSupportedAttrId } );
}

} // namespace
