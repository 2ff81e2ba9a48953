// Every attribute of the configuration is as its table says.
#include "tests/FlowTracker/ConfigTables.h"

#include "FlowTracker/FlowTrackerConfig.h"

#include <gtest/gtest.h>

namespace {

using namespace FlowTrackerTest;
using namespace FlowTracking;
using TestSupport::expectConsecutive;
using TestSupport::expectEntity;

TEST( ConfigAttributesTest, congestionConfigIsAsItsTableSays )
{
   expectEntity( congestionConfig() );
}

TEST( ConfigAttributesTest, effectiveCongestionConfigIsAsItsTableSays )
{
   expectEntity( effectiveCongestionConfig() );
}

TEST( ConfigAttributesTest, flowGroupIsAsItsTableSays )
{
   expectEntity( flowGroup() );
}

TEST( ConfigAttributesTest, flowTrackerIntfConfigIsAsItsTableSays )
{
   expectEntity( flowTrackerIntfConfig() );
}

TEST( ConfigAttributesTest, flowTrackerIntfConfigsIsAsItsTableSays )
{
   expectEntity( flowTrackerIntfConfigs() );
}

TEST( ConfigAttributesTest, dumpBuffersInstructionsIsAsItsTableSays )
{
   expectEntity( dumpBuffersInstructions() );
}

TEST( ConfigAttributesTest, exporterConfigIsAsItsTableSays )
{
   expectEntity( exporterConfig() );
}

TEST( ConfigAttributesTest, flowTrackerConfigIsAsItsTableSays )
{
   expectEntity( flowTrackerConfig() );
}

TEST( ConfigAttributesTest, configIsAsItsTableSays )
{
   expectEntity( config() );
}

TEST( ConfigAttributesTest, mirrorOnDropConfigIsAsItsTableSays )
{
   expectEntity( mirrorOnDropConfig() );
}

TEST( ConfigAttributesTest, idsAreConstantsOfTheTypes )
{
   expectConsecutive( { CongestionConfig::dampingTimeoutAttrId,
         CongestionConfig::intervalAttrId } );
   expectConsecutive( { EffectiveCongestionConfig::dampingTimeoutAttrId,
         EffectiveCongestionConfig::intervalAttrId } );
   expectConsecutive( { FlowGroup::seqnoAttrId, FlowGroup::flowDomainAttrId,
         FlowGroup::ipAccessListAttrId, FlowGroup::ip6AccessListAttrId, FlowGroup::encapTypeAttrId,
         FlowGroup::mirrorConfigAttrId, FlowGroup::expNameAttrId,
         FlowGroup::groupCommittedAttrId } );
   expectConsecutive( { FlowTrackerIntfConfig::intfIdAttrId,
         FlowTrackerIntfConfig::trackerNameAttrId, FlowTrackerIntfConfig::sampleModeAttrId } );
   expectConsecutive( { FlowTrackerIntfConfigs::flowTrackerIntfConfigAttrId,
         FlowTrackerIntfConfigs::flowTrackerEgressIntfConfigAttrId } );
   expectConsecutive( { DumpBuffersInstructions::pcapFilePathAttrId } );
   expectConsecutive( { ExporterConfig::localIntfNameAttrId, ExporterConfig::ipfixMtuAttrId,
         ExporterConfig::dscpValueAttrId, ExporterConfig::ipfixVersionAttrId,
         ExporterConfig::templateIntervalAttrId, ExporterConfig::useSflowCollectorConfigAttrId,
         ExporterConfig::exportFormatAttrId, ExporterConfig::collectorHostAndPortAttrId } );
   using Tracker = FlowTracking::FlowTrackerConfig;
   expectConsecutive( { Tracker::expConfigAttrId, Tracker::fgConfigAttrId,
         Tracker::monitoredCpuQueueAttrId, Tracker::congestionConfigAttrId,
         Tracker::inactiveTimeoutAttrId, Tracker::activeIntervalAttrId,
         Tracker::flowTableSizeAttrId, Tracker::tcpStateChangeExportAttrId,
         Tracker::mplsExportAttrId, Tracker::ingressLabelExportAttrId,
         Tracker::groupResequencingInProgressAttrId, Tracker::groupResequencingDoneAttrId,
         Tracker::groupsCommittedAttrId, Tracker::groupsCommitInProgressAttrId,
         Tracker::systemObserverAttrId, Tracker::cpuQueuesBuffersDumpLocationAttrId } );
}

TEST( ConfigAttributesTest, idsOfTheRootAreConstantsOfTheType )
{
   using Root = MirrorOnDropConfig;
   expectConsecutive( { Root::flowTrackerConfigAttrId, Root::enabledAttrId,
         Root::sftAgentCountDefaultAttrId, Root::sftAgentCountAttrId, Root::bgpExportAttrId,
         Root::sampleSizeAttrId, Root::sampleRateAttrId, Root::ipfixExportShapingDisabledAttrId,
         Root::ipfixExportShapingRateAttrId, Root::sampleLimitAttrId, Root::hwOffloadIpv4AttrId,
         Root::hwOffloadIpv6AttrId, Root::hwOffloadRocev2AttrId,
         Root::minSamplesBeforeHwOffloadAttrId, Root::swExportAttrId, Root::encapAttrId,
         Root::filterAttrId, Root::ignorableRocev2QpIdAttrId, Root::rewriteDscpAttrId,
         Root::trapSuppressionAttrId, Root::templateConfigAttrId,
         Root::packetBufferSampleProbAttrId, Root::packetBufferSampleProb25AttrId,
         Root::packetBufferSampleProb50AttrId, Root::packetBufferSampleProb75AttrId,
         Root::packetBufferSampleProb100AttrId, Root::packetBufferShaperRateAttrId,
         Root::packetBufferShaperBurstAttrId, Root::pktDropsThresholdAttrId,
         Root::routingSimCacheConfigAttrId, Root::bgpSimCacheConfigAttrId,
         Root::acceleratedSftAttrId, Root::flowTrackingCliConfigPathAttrId,
         Root::sampledFlowTrackingCliConfigPathAttrId,
         Root::hardwareFlowTrackingCliConfigPathAttrId,
         Root::hardwareFlowTrackingFlowWatcherConfigPathAttrId,
         Root::inbandTelemetryFlowTrackingCliConfigPathAttrId,
         Root::mirrorOnDropFlowTrackingCliConfigPathAttrId,
         Root::cpuQueueFlowTrackingCliConfigPathAttrId, Root::dfwFlowTrackingCliConfigPathAttrId,
         Root::setDefaultEncapFlagsAttrId } );
}

} // namespace
