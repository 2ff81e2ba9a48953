// Every attribute of the hardware configuration is as its table says.
#include "tests/FlowTracker/HwConfigTables.h"

#include "FlowTracker/HwFlowTrackingConfig.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace FlowTrackerTest;
using namespace HwFlowTracking;
using TestSupport::EntityTable;
using TestSupport::expectConsecutive;

class HwConfigAttributes : public testing::TestWithParam< EntityTable > {
};

TEST_P( HwConfigAttributes, areAsTheTableSays )
{
   TestSupport::expectEntity( GetParam() );
}

std::string typeOf( const testing::TestParamInfo< EntityTable > & table )
{
   return std::string( table.param.type.substr( table.param.type.rfind( ':' ) + 1 ) );
}

INSTANTIATE_TEST_SUITE_P( Of, HwConfigAttributes,
      testing::Values( fgConfig(), hwFgConfigMap(), hwExporterConfig(), localCollectorConfig(),
            monitoredCpuQueue(), ftConfig(), hwConfig() ),
      typeOf );

TEST( HwConfigAttributesTest, aBindingIsAsItsTableSays )
{
   const auto config = configFactory( "hardware" );
   const auto tracker = config->hwFtConfigIs( "tracker", FlowTracking::FtId( 7 ) );
   const auto binding = config->hwIntfFtConfigIs(
         Wyre::IntfId( "Ethernet1" ), tracker, FlowTracking::sampleModeTargeted );
   TestSupport::expectEntity( *binding, intfFtConfig() );
}

TEST( HwConfigAttributesTest, idsOfGroupsAreConstantsOfTheTypes )
{
   expectConsecutive( { FgConfig::fgNameAttrId, FgConfig::seqnoAttrId, FgConfig::templateIdAttrId,
         FgConfig::flowDomainAttrId, FgConfig::flowParamAttrId, FgConfig::genIdAttrId,
         FgConfig::accessListAttrId, FgConfig::encapFlagsAttrId, FgConfig::mirrorConfigAttrId,
         FgConfig::expNameAttrId, FgConfig::fgConfigChangeBitMapAttrId,
         FgConfig::updateFgConfigChangeBitMapAttrId } );
   expectConsecutive( { HwFgConfigMap::fgNameAttrId, HwFgConfigMap::seqnoAttrId,
         HwFgConfigMap::hwFgNameAndSeqnoAttrId } );
}

TEST( HwConfigAttributesTest, idsOfExportersAreConstantsOfTheTypes )
{
   using Exporter = HwFlowTracking::ExporterConfig;
   expectConsecutive( { Exporter::vrfNameAttrId, Exporter::localIntfNameAttrId,
         Exporter::ipfixMtuAttrId, Exporter::ip6HdrSizeAttrId, Exporter::udpHdrLenAttrId,
         Exporter::ipfixMaxMsgSizeAttrId, Exporter::dscpValueAttrId, Exporter::ipfixVersionAttrId,
         Exporter::templateIntervalAttrId, Exporter::srcIpAddrAttrId, Exporter::srcIp6AddrAttrId,
         Exporter::collectorIpAndPortAttrId, Exporter::collectorIp6AndPortAttrId,
         Exporter::exporter4ResolvedAttrId, Exporter::exporter6ResolvedAttrId,
         Exporter::exporter4ReadyAttrId, Exporter::exporter6ReadyAttrId, Exporter::rxPort4AttrId,
         Exporter::rxPort6AttrId, Exporter::useSflowCollectorConfigAttrId,
         Exporter::exportFormatAttrId, Exporter::templateExportReqAttrId,
         Exporter::instantiateAttrId } );
   using Local = LocalCollectorConfig;
   expectConsecutive( { Local::expNameAttrId, Local::vrfNameAttrId, Local::srcIpAttrId,
         Local::destIpAttrId, Local::srcPortAttrId, Local::destPortAttrId, Local::dscpValueAttrId,
         Local::exporterReadyAttrId } );
}

TEST( HwConfigAttributesTest, idsOfTrackersAreConstantsOfTheTypes )
{
   expectConsecutive( { FtConfig::ftIdAttrId, FtConfig::hwFgConfigAttrId,
         FtConfig::hwFgConfigMapAttrId, FtConfig::hwFgConfigGenIdAttrId,
         FtConfig::hwFgConfigGenIdUpdateNeededAttrId, FtConfig::monitoredCpuQueueAttrId,
         FtConfig::congestionConfigAttrId, FtConfig::inactiveTimeoutAttrId,
         FtConfig::activeIntervalAttrId, FtConfig::flowTableSizeAttrId,
         FtConfig::tcpStateChangeExportAttrId, FtConfig::mplsExportAttrId,
         FtConfig::ingressLabelExportAttrId, FtConfig::expConfigAttrId,
         FtConfig::resolvedExporterAttrId, FtConfig::waitingExporterAttrId,
         FtConfig::localCollectorConfigAttrId, FtConfig::systemObserverAttrId,
         FtConfig::instantiateAttrId } );
   expectConsecutive( { IntfFtConfig::intfIdAttrId, IntfFtConfig::hwFtConfigAttrId,
         IntfFtConfig::sampleModeAttrId } );
   expectConsecutive( { MonitoredCpuQueue::cpuQueueNameAttrId, MonitoredCpuQueue::cpuQueueIdAttrId,
         MonitoredCpuQueue::statusAttrId, MonitoredCpuQueue::activeAttrId } );
}

TEST( HwConfigAttributesTest, idsOfTheRootAreConstantsOfTheType )
{
   using Root = HwFlowTracking::Config;
   expectConsecutive( { Root::sampleRateDefaultAttrId, Root::sampleRateAttrId,
         Root::sampleLimitAttrId, Root::sampleSizeAttrId, Root::ignorableRocev2QpIdAttrId,
         Root::hwOffloadIpv4AttrId, Root::hwOffloadIpv4Rocev2AttrId, Root::hwOffloadIpv6AttrId,
         Root::hwOffloadIpv6Rocev2AttrId, Root::hwOffloadIpv4ConflictWithMultipleInstancesAttrId,
         Root::hwOffloadIpv6ConflictWithMultipleInstancesAttrId,
         Root::hwOffloadIpv4StartTimeAttrId, Root::hwOffloadIpv6StartTimeAttrId,
         Root::minSamplesBeforeHwOffloadAttrId, Root::ipfixExportShapingDisabledAttrId,
         Root::ipfixExportShapingRateAttrId, Root::hwFtConfigAttrId, Root::hwIntfFtConfigAttrId,
         Root::hwEgressIntfFtConfigAttrId, Root::swExportAttrId, Root::encapFlagsAttrId,
         Root::filterTypesAttrId, Root::trapSuppressionAttrId,
         Root::packetBufferSampleProb25AttrId, Root::packetBufferSampleProb50AttrId,
         Root::packetBufferSampleProb75AttrId, Root::packetBufferSampleProb100AttrId,
         Root::packetBufferShaperRateAttrId, Root::packetBufferShaperBurstAttrId,
         Root::instantiateAttrId } );
}

} // namespace
