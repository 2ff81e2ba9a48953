// Capabilities of JSON files, the shipped ones among them.
#include "tools/flowtrack-platform/CapabilitiesFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

using FlowtrackPlatform::CapabilitiesException;
using FlowtrackPlatform::readCapabilities;
using HwFlowTracking::Capabilities;

std::string refusal( const std::string & text )
{
   const auto able = HwFlowTracking::capabilitiesFactory( "able" );
   try {
      readCapabilities( text, "file", *able );
   } catch ( const CapabilitiesException & e ) {
      return e.what();
   }
   return "none";
}

TEST( CapabilitiesFileTest, eachKindOfAttributeIsRead )
{
   const auto able = HwFlowTracking::capabilitiesFactory( "able" );
   readCapabilities( R"( { "supported": true, "maxTrackers": 7, "defaultSampleLimit": 9,
      "exportFormatHwSupported": [ "formatIpfix", "formatSflow" ],
      "packetTruncation": "networkHeaders", "systemObserverSupported": false,
      "monitoredCpuQueueSupported": { "bgp": 4, "two words": 5 } } )",
         "file", *able );
   EXPECT_TRUE( able->supported() );
   EXPECT_EQ( able->maxTrackers(), 7 );
   EXPECT_EQ( able->maxExportersPerTracker(), 1 );
   EXPECT_EQ( able->defaultSampleLimit(), 9U );
   EXPECT_EQ( able->exportFormatHwSupported().size(), 2 );
   EXPECT_TRUE( able->exportFormatHwSupported( FlowTracking::ExportFormat::formatIpfix ) );
   EXPECT_EQ( able->packetTruncation(), HwFlowTracking::networkHeaders );
   EXPECT_EQ( able->systemObserverSupported(), false );
   EXPECT_EQ( able->monitoredCpuQueueSupported( "bgp" ), 4 );
   EXPECT_EQ( able->monitoredCpuQueueSupported( "two words" ), 5 );
}

TEST( CapabilitiesFileTest, whatIsWrongIsNamed )
{
   EXPECT_EQ( refusal( "{" ), "file: byte 2: no JSON" );
   EXPECT_EQ( refusal( "[]" ), "file: found []; expected an object" );
   EXPECT_EQ( refusal( R"( { "maxTracker": 1 } )" ),
         "file: /maxTracker: found 1; expected an attribute of HwFlowTracking::Capabilities" );
   EXPECT_EQ(
         refusal( R"( { "maxTrackers": -1 } )" ), "file: /maxTrackers: found -1; expected u32" );
   EXPECT_EQ( refusal( R"( { "maxTrackers": true } )" ),
         "file: /maxTrackers: found true; expected u32" );
   EXPECT_EQ( refusal( R"( { "supported": 1 } )" ), "file: /supported: found 1; expected bool" );
   EXPECT_EQ( refusal( R"( { "maxTrackers": 4294967296 } )" ).substr( 0, 44 ),
         "file: /maxTrackers: found 4294967296; expect" );
   EXPECT_EQ( refusal( R"( { "exportFormatHwSupported": "formatIpfix" } )" ),
         "file: /exportFormatHwSupported: found \"formatIpfix\"; expected an array of "
         "FlowTracking::ExportFormat" );
   EXPECT_NE( refusal( R"( { "packetTruncation": "nothing" } )" ), "none" );
   EXPECT_NE( refusal( R"( { "name": "x" } )" ), "none" );
}

TEST( CapabilitiesFileTest, theShippedFilesAreRead )
{
   const std::filesystem::path folder =
         std::filesystem::path( TEST_SOURCE_DIR ) / "../../tools/flowtrack-platform/capabilities";
   unsigned count = 0;
   for ( const auto & entry : std::filesystem::directory_iterator( folder ) ) {
      const auto able = FlowtrackPlatform::capabilitiesOfFile( entry.path() );
      EXPECT_EQ( able->supported(), entry.path().stem() != "none" ) << entry.path();
      ++count;
   }
   EXPECT_EQ( count, 4 );
   EXPECT_THROW( FlowtrackPlatform::capabilitiesOfFile( folder / "absent.json" ),
         CapabilitiesException );
}

} // namespace
