// Generations, change bit maps and start times.
#include "tools/derive/History.h"

namespace Derive {

void takeHistory( const HwFlowTracking::Config & from, HwFlowTracking::Config & to )
{
   to.hwOffloadIpv4StartTimeIs( from.hwOffloadIpv4StartTime() );
   to.hwOffloadIpv6StartTimeIs( from.hwOffloadIpv6StartTime() );
   for ( const auto & tracker : to.hwFtConfig() ) {
      const auto before = from.hwFtConfig( tracker->name() );
      if ( !before ) {
         continue;
      }
      tracker->hwFgConfigGenIdIs( before->hwFgConfigGenId() );
      tracker->hwFgConfigGenIdUpdateNeededIs( before->hwFgConfigGenIdUpdateNeeded() );
      for ( const auto & group : tracker->hwFgConfig() ) {
         if ( const auto was = before->hwFgConfig( group->seqno() ) ) {
            group->genIdIs( was->genId() );
            group->fgConfigChangeBitMapIs( was->fgConfigChangeBitMap() );
         }
      }
   }
}

} // namespace Derive
