// One tracker.
#pragma once

#include "tools/derive/DeriveExporter.h"
#include "tools/derive/Following.h"
#include "tools/derive/Sources.h"

#include "FlowTracker/HwFlowTrackingConfig.h"

namespace Derive {

/// Keeps one tracker in hardware like its configuration: its settings, its exporters one by one,
/// its groups together, its local collector.
class TrackerDeriver {
 public:
   TrackerDeriver( const Sources & sources,
         Corvo::Ptr< const FlowTracking::FlowTrackerConfig > from,
         Corvo::Ptr< HwFlowTracking::FtConfig > to );

   /// Whether it is that of these two.
   bool isOf( const FlowTracking::FlowTrackerConfig & from,
         const HwFlowTracking::FtConfig & to ) const
   {
      return from_.get() == &from && to_.get() == &to;
   }

   void capabilitiesChanged() { settings_.request(); }
   void templatesRequested();

   /// Does what was requested since the last time; at first everything.
   void derive();

 private:
   void hear( const Corvo::Change & change );
   void settings();
   void congestion();
   void cpuQueues();
   void exporters();
   void groups();
   void localCollector();

   const Sources & sources_;
   Corvo::Ptr< const FlowTracking::FlowTrackerConfig > from_;
   Corvo::Ptr< HwFlowTracking::FtConfig > to_;
   Vok::Deferred settings_;
   Vok::Deferred exporterSet_;
   Vok::Deferred groups_;
   Vok::Deferred localCollector_;
   EntityFollower follower_;
   Vok::KeyMirror exporterKeys_;
   Corvo::Ptr< const FlowTracking::CongestionConfig > congestion_;
   std::unique_ptr< EntityFollower > congestionFollower_;
   PerChild< FlowTracking::ExporterConfig, ExporterDeriver > exporters_;
   PerChild< FlowTracking::FlowGroup, EntityFollower > groupFollowers_;
};

} // namespace Derive
