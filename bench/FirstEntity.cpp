// What bench/load measures: a program that makes one entity, and changes it.
#include "FlowTracker/FlowTrackerConfig.h"

int main()
{
   const auto config = FlowTracking::configFactory( "first" );
   config->enabledIs( true );
   return config->enabled() && config->name() == "first" ? 0 : 1;
}
