// What is computed in a hardware configuration, and how a flow group notes its changes.
#include "FlowTracker/HwFlowTrackingConfig.h"

namespace HwFlowTracking {

void FgConfig::updateFgConfigChangeBitMap( bool resetBitMap, bool encapChanged, bool aclChanged,
      bool exporterChanged, bool mirroringChanged )
{
   FgConfigChangeBitMap changes = resetBitMap ? FgConfigChangeBitMap() : fgConfigChangeBitMap();
   if ( encapChanged ) {
      changes.encapChangedIs( true );
   } else if ( aclChanged ) {
      changes.aclChangedIs( true );
   } else if ( exporterChanged ) {
      changes.exporterChangedIs( true );
   } else if ( mirroringChanged ) {
      changes.mirroringChangedIs( true );
   }
   fgConfigChangeBitMapIs( changes );
}

std::uint32_t ExporterConfig::ipfixMaxMsgSize() const
{
   return ipfixMtu().value() - ip6HdrSize() - udpHdrLen();
}

bool MonitoredCpuQueue::active() const
{
   return status() == MonitoredCpuQueueStatus::monitoredCpuQueueActive;
}

} // namespace HwFlowTracking
