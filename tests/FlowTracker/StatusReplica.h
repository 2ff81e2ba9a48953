// A replica of a status that is brought up to date by hand, and notifiees for all of a subtree.
#pragma once

#include "FlowTracker/FlowTrackerStatus.h"
#include "Vok/Vok.h"

#include <cstddef>

namespace FlowTrackerTest {

/// A replica of a status, and the stream that it follows. It starts without a batch.
class StatusReplica {
 public:
   explicit StatusReplica( const Corvo::Ptr< FlowTracking::Status > & status );

   /// Writes what is pending and reads it; how many bytes that was.
   std::size_t follow();

   const Corvo::Ptr< FlowTracking::Status > root = FlowTracking::statusFactory( "replica" );
   Vok::EntityVokNboAttrLogSa writer;
   Vok::EntityVokNboAttrLogReader reader{ root };
};

/// Attaches a notifiee to a tracker, its exporters and their collectors.
void attach( Corvo::Notifiee & notifiee, const FlowTracking::TrackerStatus & tracker );

/// The same for a root and all its trackers.
void attach( Corvo::Notifiee & notifiee, const FlowTracking::Status & status );

} // namespace FlowTrackerTest
