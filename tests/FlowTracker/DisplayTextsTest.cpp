// What operators call kinds of trackers and export formats.
#include "FlowTracker/FlowTrackingOrreryTypes.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>

namespace {

using FlowTracking::ExportFormat;
using FlowTracking::FlowTrackingType;
using FlowTracking::formatTypeString;
using FlowTracking::trackingTypeString;

TEST( DisplayTextsTest, kindsOfTrackers )
{
   const char * texts[] = { "Sampled", "Hardware", "Inband Telemetry", "Mirror-On-Drop",
      "Cpu-Queue", "Distributed Firewall" };
   unsigned code = 1;
   for ( const char * text : texts ) {
      EXPECT_EQ( trackingTypeString( FlowTracking::FlowTrackingTypeInstance( code++ ) ), text );
   }
   EXPECT_EQ( code, 7U );
}

TEST( DisplayTextsTest, exportFormats )
{
   const char * texts[] = { "Default", "None", "Drop report", "sFlow", "IPFIX", "Pcap" };
   unsigned code = 0;
   for ( const char * text : texts ) {
      EXPECT_EQ( formatTypeString( FlowTracking::ExportFormatInstance( code++ ) ), text );
   }
   EXPECT_EQ( code, 6U );
}

TEST( DisplayTextsDeathTest, noneHasNoDisplayTextAndEndsTheProcess )
{
   for ( const unsigned code : { 0U, 7U, 255U } ) {
      EXPECT_EXIT( trackingTypeString( static_cast< FlowTrackingType >( code ) ),
            testing::KilledBySignal( SIGABRT ),
            "^FlowTracker/FlowTrackingOrreryTypes:24: Corvo::String "
            "FlowTracking::trackingTypeString\\(FlowTracking::FlowTrackingType\\): "
            "assertion \"false\" failed: Unknown flow tracking type " +
                  std::to_string( code ) + "\n$" );
   }
}

TEST( DisplayTextsDeathTest, anUnnamedExportFormatEndsTheProcess )
{
   for ( const unsigned code : { 6U, 255U } ) {
      EXPECT_EXIT( formatTypeString( static_cast< ExportFormat >( code ) ),
            testing::KilledBySignal( SIGABRT ),
            "^FlowTracker/FlowTrackingOrreryTypes:43: Corvo::String "
            "FlowTracking::formatTypeString\\(FlowTracking::ExportFormat\\): "
            "assertion \"false\" failed: Unknown export format " +
                  std::to_string( code ) + "\n$" );
   }
}

} // namespace
