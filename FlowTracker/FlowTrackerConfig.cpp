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

void MirrorOnDropConfig::setDefaultEncapFlags()
{
   encapIs( EncapType::encapIpv4 );
   encapIs( EncapType::encapIpv6 );
}

} // namespace FlowTracking
