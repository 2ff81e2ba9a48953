// Plays a platform: takes the hardware configuration, and reports what became of it.
#pragma once

#include "tools/derive/IntfReasons.h"
#include "tools/derive/PlatformTracker.h"

#include <map>
#include <memory>

namespace Derive {

/// Keeps a HwFlowTracking::Status like a hardware configuration, as far as the capabilities allow:
/// which trackers and groups are in hardware, which templates they use, and on which interfaces
/// flows are tracked, or why not.
///
/// It follows both, whose changes only note what has to be reported again: the root, one tracker,
/// the interfaces. Whatever the status holds at the beginning, after report() it is what the
/// configuration asks for; what already is so stays untouched.
class Platform {
 public:
   Platform( Corvo::Ptr< const HwFlowTracking::Config > config,
         Corvo::Ptr< const HwFlowTracking::Capabilities > capabilities,
         Corvo::Ptr< HwFlowTracking::Status > status );
   Platform( const Platform & ) = delete;
   Platform & operator=( const Platform & ) = delete;

   /// Why packets of an interface cannot be looked at, in either direction; empty: they can.
   void troubleIs( const Wyre::IntfId & intf, const std::string & why );

   /// Reports what changed since the last time; the first time everything.
   void report();

 private:
   void hear( const Corvo::Change & change );
   void hearCapabilities();
   void trackers();
   void interfaces();
   void root();
   void templates();

   Corvo::Ptr< const HwFlowTracking::Config > config_;
   Corvo::Ptr< const HwFlowTracking::Capabilities > capabilities_;
   Corvo::Ptr< HwFlowTracking::Status > status_;
   Vok::Deferred trackerSet_;
   Vok::Deferred interfaces_;
   Vok::Deferred root_;
   Vok::Deferred templates_;
   EntityFollower configFollower_;
   EntityFollower capabilitiesFollower_;
   PerChild< HwFlowTracking::FtConfig, EntityFollower > sizes_;
   Refusals refused_;
   Troubles troubles_;
   std::map< Corvo::String, std::unique_ptr< PlatformTracker > > trackers_;
};

} // namespace Derive
