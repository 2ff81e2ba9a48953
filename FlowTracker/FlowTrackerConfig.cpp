// Where configurations are mounted, what clients' sample modes mean, and the defaults of
// mirror-on-drop.
#include "FlowTracker/FlowTrackerConfig.h"

#include "Vok/Assert.h"

#include <string>

namespace FlowTracking {

FlowTrackerSampleMode convertClientSampleMode( const Client::FlowTrackerSampleMode & mode )
{
   switch ( mode ) {
   case Client::FlowTrackerSampleMode::sampleModeAll:
      return FlowTrackerSampleMode::sampleModeAll;
   case Client::FlowTrackerSampleMode::sampleModeTargeted:
      return FlowTrackerSampleMode::sampleModeTargeted;
   }
   Vok::assertionFailed( "FlowTracker/FlowTrackerConfig", 57,
         "FlowTracking::FlowTrackerSampleMode "
         "FlowTracking::convertClientSampleMode(FlowTracking::Client::FlowTrackerSampleMode)",
         "false" );
}

Corvo::String Config::flowTrackingCliConfigPath( const Corvo::String & ftrTypeStr ) const
{
   return Corvo::String(
         "flowtracking/input/config/" + std::string( ftrTypeStr ) + "/cli" );
}

Corvo::String Config::sampledFlowTrackingCliConfigPath() const
{
   return "flowtracking/input/config/sampled/cli";
}

Corvo::String Config::hardwareFlowTrackingCliConfigPath() const
{
   return "flowtracking/input/config/hardware/cli";
}

// The flow watcher is no kind of tracker: its path ends in another word than theirs.
Corvo::String Config::hardwareFlowTrackingFlowWatcherConfigPath() const
{
   return "flowtracking/input/config/hardware/flowwatcher";
}

Corvo::String Config::inbandTelemetryFlowTrackingCliConfigPath() const
{
   return "flowtracking/input/config/inbandTelemetry/cli";
}

Corvo::String Config::mirrorOnDropFlowTrackingCliConfigPath() const
{
   return "flowtracking/input/config/mirrorOnDrop/cli";
}

Corvo::String Config::cpuQueueFlowTrackingCliConfigPath() const
{
   return "flowtracking/input/config/cpuQueue/cli";
}

Corvo::String Config::dfwFlowTrackingCliConfigPath() const
{
   return "flowtracking/input/config/dfw/cli";
}

void MirrorOnDropConfig::setDefaultEncapFlags()
{
   encapIs( EncapType::encapIpv4 );
   encapIs( EncapType::encapIpv6 );
}

} // namespace FlowTracking
