// What each kind of attribute looks like.
#include "tests/flowtrack-json/Trees.h"

#include "tools/flowtrack/json/Json.h"

#include "FlowTracker/ApplicationId.h"
#include "FlowTracker/FlowTrackerConfig.h"
#include "FlowTracker/FlowTrackerStatus.h"
#include "FlowTracker/HwFlowTrackingConfig.h"
#include "FlowTracker/HwFlowTrackingStatus.h"

#include <gtest/gtest.h>

using FlowtrackJson::Extent;
using FlowtrackJson::Json;
using FlowtrackJson::toJson;

namespace {

TEST( JsonTest, PlainAttributesAndOptionals )
{
   const auto config = FlowTracking::configFactory( "any" );
   config->enabledIs( true );
   config->sampleSizeIs( FlowTracking::SampleSize( 200 ) );
   const Json json = toJson( *config );
   EXPECT_EQ( json.begin().key(), "flowTrackerConfig" );
   EXPECT_EQ( json[ "enabled" ], Json( true ) );
   EXPECT_EQ( json[ "sampleRate" ], Json( 1048576 ) );
   EXPECT_EQ( json[ "sampleSize" ], Json( 200 ) );
   EXPECT_FALSE( json.contains( "sampleLimit" ) ); // an optional without a value
   EXPECT_FALSE( json.contains( "sftAgentCountDefault" ) ); // a constant
   EXPECT_FALSE( json.contains( "flowTrackingCliConfigPath" ) ); // a function
   EXPECT_FALSE( json.contains( "name" ) ); // the mount's matter
   EXPECT_EQ( json[ "bgpSimCacheConfig" ].dump(), R"({"size":500000,"lifetime":30})" );
}

TEST( JsonTest, SetsAndMapsAndValuesThatHoldCollections )
{
   const auto config = FlowTracking::configFactory( "any" );
   config->ignorableRocev2QpIdIs( 10 );
   config->ignorableRocev2QpIdIs( 9 );
   config->encapIs( FlowTracking::encapVxlan );
   FlowTracking::TemplateConfig templ( Ipfix::TemplateId( 300 ) );
   templ.fieldIs( 2, FlowTracking::FieldSpecifierConfig( 8, 0 ) );
   templ.fieldIs( 10, FlowTracking::FieldSpecifierConfig( 12, 9 ) );
   config->templateConfigIs( templ );
   const Json json = toJson( *config );
   EXPECT_EQ( json[ "ignorableRocev2QpId" ].dump(), "[9,10]" );
   EXPECT_EQ( json[ "encap" ].dump(), R"(["encapVxlan"])" );
   EXPECT_EQ( json[ "templateConfig" ].dump(),
         R"({"300":{"field":[{"key":2,"value":{"elementId":8,"enterpriseNum":0}},)"
         R"({"key":10,"value":{"elementId":12,"enterpriseNum":9}}]}})" );
}

TEST( JsonTest, ChildrenByKeyAndSingleChildren )
{
   const auto config = FlowTracking::configFactory( "any" );
   const auto tracker = config->flowTrackerConfigIs( "two words" );
   tracker->congestionConfigIs( "c" )->intervalIs( FlowTracking::CongestionInterval( 1, 2 ) );
   tracker->fgConfigIs( "g", 7 );
   tracker->expConfigIs( "e" )->collectorHostAndPortIs( Wyre::HostAndPort( "h", 4739 ) );
   const Json json = toJson( *config )[ "flowTrackerConfig" ][ "two words" ];
   EXPECT_EQ( json[ "congestionConfig" ].dump(),
         R"({"name":"c","interval":{"before":1,"after":2}})" );
   EXPECT_EQ( json[ "fgConfig" ][ "g" ][ "seqno" ], Json( 7 ) );
   EXPECT_EQ( json[ "expConfig" ][ "e" ][ "collectorHostAndPort" ].dump(),
         R"({"h":{"port":4739}})" );
   config->flowTrackerConfigIs( "none" )->congestionConfigDel();
   const Json none = toJson( *config )[ "flowTrackerConfig" ][ "none" ];
   EXPECT_TRUE( none.contains( "congestionConfig" ) && none[ "congestionConfig" ].is_null() );
}

TEST( JsonTest, OrderedCollectionsAreArrays )
{
   const auto config = HwFlowTracking::configFactory( "any" );
   const auto tracker = config->hwFtConfigIs( "t", FlowTracking::FtId( 3 ) );
   tracker->hwFgConfigIs( "late", 200 );
   const auto group = tracker->hwFgConfigIs( "soon", 100 );
   FlowTracking::EncapFlags flags( 0x42 );
   group->encapFlagsIs( flags );
   const Json json = toJson( *config )[ "hwFtConfig" ][ "t" ];
   EXPECT_EQ( json[ "ftId" ], Json( 3 ) );
   EXPECT_EQ( json[ "hwFgConfig" ][ 0 ][ "seqno" ], Json( 100 ) );
   EXPECT_EQ( json[ "hwFgConfig" ][ 0 ][ "fgName" ], Json( "soon" ) );
   EXPECT_EQ( json[ "hwFgConfig" ][ 0 ][ "encapFlags" ].dump(), R"(["ipv6","bit6"])" );
   EXPECT_EQ( json[ "hwFgConfig" ][ 1 ][ "fgName" ], Json( "late" ) );
}

TEST( JsonTest, ReferencesArePaths )
{
   const auto config = HwFlowTracking::configFactory( "any" );
   const auto tracker = config->hwFtConfigIs( "t", FlowTracking::FtId( 3 ) );
   config->hwIntfFtConfigIs( Wyre::IntfId( "Ethernet1" ), tracker, FlowTracking::sampleModeAll );
   EXPECT_EQ( toJson( *config )[ "hwIntfFtConfig" ].dump(),
         R"({"Ethernet1":{"hwFtConfig":"/hwFtConfig[t]","sampleMode":"sampleModeAll"}})" );
   const auto status = HwFlowTracking::statusFactory( "any" );
   const auto templ = status->templateStatusIs( Ipfix::TemplateId( 256 ) );
   status->hwFtStatusIs( "t" )->templateStatusIs( templ );
   EXPECT_EQ( toJson( *status )[ "hwFtStatus" ][ "t" ][ "templateStatus" ].dump(),
         R"(["/templateStatus[256]"])" );
}

TEST( JsonTest, BigNumbersAddressesAndTimes )
{
   const auto status = FlowTracking::statusFactory( "any" );
   status->pktDropRespIs(
         FlowTracking::PktDropCounterUpdateResponse( FlowTracking::ftFullDrops, ~0ULL, 1, 2 ) );
   EXPECT_EQ( toJson( *status )[ "pktDropResp" ].dump(),
         R"({"ftFullDrops":{"pktDrops":"18446744073709551615","pkts":"1","writerSeqNo":2}})" );
   const auto config = HwFlowTracking::configFactory( "any" );
   config->hwOffloadIpv6StartTimeIs( Corvo::Duration( 1.5 ) );
   const auto exporter =
         config->hwFtConfigIs( "t", FlowTracking::FtId( 3 ) )->expConfigIs( "e" );
   exporter->srcIp6AddrIs( Wyre::Ip6Addr( "fd00::1" ) );
   exporter->collectorIpAndPortIs( "c", Wyre::IpAndPort( Wyre::IpAddr( "10.0.0.1" ), 80 ) );
   const Json json = toJson( *config );
   EXPECT_EQ( json[ "hwOffloadIpv4StartTime" ], Json( "inf" ) );
   EXPECT_EQ( json[ "hwOffloadIpv6StartTime" ], Json( 1.5 ) );
   const Json & hw = json[ "hwFtConfig" ][ "t" ][ "expConfig" ][ "e" ];
   EXPECT_EQ( hw[ "srcIp6Addr" ], Json( "fd00::1" ) );
   EXPECT_EQ( hw[ "collectorIpAndPort" ].dump(), R"({"c":{"ip":"10.0.0.1","port":80}})" );
}

TEST( JsonTest, OnlyWhatIsChanged )
{
   const auto config = FlowTracking::configFactory( "any" );
   EXPECT_EQ( toJson( *config, Extent::changed ).dump(), "{}" );
   config->flowTrackerConfigIs( "t" )->fgConfigIs( "g", 1 );
   config->bgpExportIs( false );
   EXPECT_EQ( toJson( *config, Extent::changed ).dump(),
         R"({"flowTrackerConfig":{"t":{"fgConfig":{"g":{"seqno":1}}}},"bgpExport":false})" );
}

TEST( JsonTest, KeysAreInOrder )
{
   const auto map = FlowTracking::applicationIdMapFactory( "any" );
   for ( const unsigned id : { 100U, 20U, 3U } ) {
      map->applicationIs( FlowTracking::ApplicationId( id ), FlowTracking::Application() );
   }
   std::string keys;
   const Json json = toJson( *map );
   for ( const auto & [ key, value ] : json[ "application" ].items() ) {
      keys += key + " ";
   }
   EXPECT_EQ( keys, "3 20 100 " );
}

} // namespace
