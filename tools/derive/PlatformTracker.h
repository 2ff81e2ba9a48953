// One tracker as hardware has it.
#pragma once

#include "tools/derive/Following.h"

#include "FlowTracker/HwFlowTrackingConfig.h"
#include "FlowTracker/HwFlowTrackingStatus.h"

namespace Derive {

/// Keeps the status of one tracker, and of its groups, like its hardware configuration.
///
/// While the generation of the groups has still to be raised, more changes of them are to come: the
/// status of the groups stays as it is until then.
class PlatformTracker {
 public:
   PlatformTracker( Corvo::Ptr< const HwFlowTracking::FtConfig > from,
         Corvo::Ptr< const HwFlowTracking::Capabilities > capabilities,
         Corvo::Ptr< HwFlowTracking::Status > status );

   bool isOf( const HwFlowTracking::FtConfig & from ) const { return from_.get() == &from; }
   void request() { work_.request(); }

   /// Does what was requested, and says whether that was anything.
   bool report();

 private:
   void work();
   void groups( HwFlowTracking::FtStatus & to );
   void group( const HwFlowTracking::FgConfig & from, HwFlowTracking::FgStatus & to );
   bool hardwareGroups( std::size_t count, HwFlowTracking::FgStatus & to );

   Corvo::Ptr< const HwFlowTracking::FtConfig > from_;
   Corvo::Ptr< const HwFlowTracking::Capabilities > capabilities_;
   Corvo::Ptr< HwFlowTracking::Status > status_;
   Vok::Deferred work_;
   EntityFollower follower_;
   PerChild< HwFlowTracking::FgConfig, EntityFollower > groupFollowers_;
};

} // namespace Derive
