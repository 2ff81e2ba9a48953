// Derives the hardware configuration of flow tracking from what is configured.
#pragma once

#include "tools/derive/DeriveTracker.h"
#include "tools/derive/Sources.h"
#include "tools/derive/TrackerIds.h"

#include "FlowTracker/FlowTrackerStatus.h"
#include "FlowTracker/HwFlowTrackingConfig.h"

#include <map>
#include <memory>
#include <set>

namespace Derive {

struct Egress;
struct Ingress;

/// Keeps a HwFlowTracking::Config like the configuration, and the numbers of its trackers in a
/// FlowTracking::FtIdStatus.
///
/// It follows the sources, whose changes only note what has to be derived again: the root, the set
/// of trackers, one tracker's settings, one tracker's groups, one exporter, one binding. Whatever
/// the two trees hold at the beginning, after derive() they are what the sources say; what already
/// is so stays untouched.
class Deriver {
 public:
   Deriver( Sources sources, Corvo::Ptr< HwFlowTracking::Config > hw,
         Corvo::Ptr< FlowTracking::FtIdStatus > ids );
   Deriver( const Deriver & ) = delete;
   Deriver & operator=( const Deriver & ) = delete;

   /// Derives what changed since the last time; the first time everything.
   void derive();

 private:
   /// The interfaces of one direction whose bindings have to be derived again.
   template< class Direction > struct Bindings {
      bool all = true;
      std::set< Wyre::IntfId > some;
      std::unique_ptr< EntityFollower > follower;
   };

   void hear( const Corvo::Change & change );
   void hearCapabilities( const Corvo::Change & change );
   void trackers();
   void eachTracker( void ( TrackerDeriver::*act )() );
   void dropStrangers( const TrackerIds::Names & names );
   template< class Direction > void follow( Bindings< Direction > & bindings );
   template< class Direction > void derive( Bindings< Direction > & bindings );

   const Sources sources_;
   Corvo::Ptr< HwFlowTracking::Config > hw_;
   TrackerIds ids_;
   Vok::Deferred root_;
   Vok::Deferred trackerSet_;
   Vok::KeyMirror queuePairs_;
   EntityFollower config_;
   EntityFollower capabilities_;
   Vok::Follower templates_;
   std::map< Corvo::String, std::unique_ptr< TrackerDeriver > > trackers_;
   Bindings< Ingress > ingress_;
   Bindings< Egress > egress_;
};

} // namespace Derive
