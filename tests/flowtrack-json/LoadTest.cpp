// Documents that are taken, those that are not, and what notifiees hear.
#include "tests/flowtrack-json/Trees.h"

#include "tools/flowtrack/json/Diff.h"
#include "tools/flowtrack/json/Json.h"

#include "FlowTracker/FlowTrackerConfig.h"
#include "FlowTracker/HwFlowTrackingConfig.h"
#include "FlowTracker/HwFlowTrackingStatus.h"

#include <gtest/gtest.h>

using FlowtrackJson::toJson;

namespace {

/// Notes what it hears.
class Ear : public Corvo::Notifiee {
 public:
   void onChange( const Corvo::Change & change ) override
   {
      const auto & type = change.entity.typeData();
      for ( const Vok::AttributeData & a : type.attributes() ) {
         if ( a.id() == change.attrId ) {
            heard += std::string( a.name() ) + "[" + std::string( change.keyText() ) + "] ";
         }
      }
   }

   std::string heard;
};

TEST( LoadTest, WhatIsNotNamedStays )
{
   const auto config = FlowTracking::configFactory( "any" );
   config->flowTrackerConfigIs( "old" )->mplsExportIs( true );
   config->sampleSizeIs( FlowTracking::SampleSize( 7 ) );
   EXPECT_EQ( loaded( R"({ "enabled": true, "flowTrackerConfig": { "new": {}, "old": {
         "tcpStateChangeExport": true } } })",
                    *config ),
         "" );
   EXPECT_TRUE( config->enabled() );
   EXPECT_TRUE( config->flowTrackerConfig( "new" ) );
   EXPECT_TRUE( config->flowTrackerConfig( "old" )->mplsExport() );
   EXPECT_TRUE( config->flowTrackerConfig( "old" )->tcpStateChangeExport() );
   EXPECT_EQ( config->sampleSize(), FlowTracking::SampleSize( 7 ) );
}

TEST( LoadTest, ReplacingTakesAwayWhatIsNotNamed )
{
   const auto config = FlowTracking::configFactory( "any" );
   config->flowTrackerConfigIs( "old" );
   config->flowTrackerConfigIs( "both" )->mplsExportIs( true );
   config->sampleSizeIs( FlowTracking::SampleSize( 7 ) );
   config->encapIs( FlowTracking::encapGre );
   EXPECT_EQ( loaded( R"({ "flowTrackerConfig": { "both": {} } })", *config, true ), "" );
   EXPECT_EQ( toJson( *config, FlowtrackJson::Extent::changed ).dump(),
         R"({"flowTrackerConfig":{"both":{}}})" );
}

TEST( LoadTest, NullIsNoValue )
{
   const auto config = FlowTracking::configFactory( "any" );
   config->sampleSizeIs( FlowTracking::SampleSize( 7 ) );
   config->flowTrackerConfigIs( "t" )->congestionConfigIs( "c" );
   EXPECT_EQ( loaded( R"({ "sampleSize": null,
         "flowTrackerConfig": { "t": { "congestionConfig": null } } })",
                    *config ),
         "" );
   EXPECT_FALSE( config->sampleSize() );
   EXPECT_FALSE( config->flowTrackerConfig( "t" )->congestionConfig() );
}

TEST( LoadTest, NotifieesHearTheDifferencesAlone )
{
   const auto config = FlowTracking::configFactory( "any" );
   const auto tracker = config->flowTrackerConfigIs( "t" );
   tracker->mplsExportIs( true );
   Ear ear;
   config->publisher().notifieeIs( &ear );
   tracker->publisher().notifieeIs( &ear );
   EXPECT_EQ( loaded( R"({ "bgpExport": false, "enabled": false, "encap": [ "encapGre" ],
         "flowTrackerConfig": { "t": { "mplsExport": true, "monitoredCpuQueue": [ "q" ] } } })",
                    *config ),
         "" );
   EXPECT_EQ( ear.heard, "bgpExport[] encap[encapGre] monitoredCpuQueue[q] " );
   EXPECT_EQ( config->flowTrackerConfig( "t" ), tracker );
}

TEST( LoadTest, AllThatIsWrongIsToldAtOnceAndNothingIsDone )
{
   const auto config = FlowTracking::configFactory( "any" );
   Ear ear;
   config->publisher().notifieeIs( &ear );
   EXPECT_EQ( loaded( R"({
  "enabled": 1,
  "sampleRate": 0,
  "sftAgentCount": 9,
  "encap": [ "encapVxlan", "encapVxlam" ],
  "filter": {},
  "flowTrackerConfig": {
    "t": {
      "inactiveTimeout": "15",
      "inactiveTimeot": 15000,
      "expConfig": { "e": { "dscpValue": 64, "collectorHostAndPort": { "h": { "prt": 1 } } } },
      "fgConfig": { "g": { "mirrorConfig": { "initialCopy": 1024 } } }
    }
  }
})",
                    *config ),
         "2:14: /enabled: found 1; allowed: true or false (FlowTracking::Config::enabled)\n"
         "3:17: /sampleRate: found 0; allowed: a whole number from 1 to 4294967295 "
         "(FlowTracking::Config::sampleRate, FlowTracking::SampleRate)\n"
         "4:20: /sftAgentCount: found 9; allowed: a whole number from 1 to 8 "
         "(FlowTracking::Config::sftAgentCount)\n"
         "5:28: /encap/1: found \"encapVxlam\"; allowed: one of encapNone, encapIpv4, encapIpv6, "
         "encapVxlan, encapMpls, encapGre, encapRoCEv2, did you mean encapVxlan "
         "(FlowTracking::Config::encap, FlowTracking::EncapType)\n"
         "6:13: /filter: found an empty object; allowed: an array, each filterRpf "
         "(FlowTracking::Config::filter, FlowTracking::FilterType)\n"
         "9:26: /flowTrackerConfig/t/inactiveTimeout: found \"15\"; allowed: a whole number from "
         "3000 to 900000 (FlowTracking::FlowTrackerConfig::inactiveTimeout, "
         "FlowTracking::InactiveTimeout)\n"
         "10:7: /flowTrackerConfig/t/inactiveTimeot: found \"inactiveTimeot\"; allowed: one of "
         "expConfig, fgConfig, monitoredCpuQueue, congestionConfig, inactiveTimeout, "
         "activeInterval, flowTableSize, tcpStateChangeExport, mplsExport, ingressLabelExport, "
         "groupResequencingInProgress, groupResequencingDone and 4 more, did you mean "
         "inactiveTimeout (FlowTracking::FlowTrackerConfig)\n"
         "11:42: /flowTrackerConfig/t/expConfig/e/dscpValue: found 64; allowed: a whole number "
         "from 0 to 63 (FlowTracking::ExporterConfig::dscpValue, Wyre::DscpValue)\n"
         "11:79: /flowTrackerConfig/t/expConfig/e/collectorHostAndPort/h/prt: found \"prt\"; "
         "allowed: port, did you mean port (Wyre::HostAndPort)\n"
         "12:26: /flowTrackerConfig/t/fgConfig/g/seqno: found nothing; allowed: a whole number "
         "from 0 to 4294967295 (FlowTracking::FlowGroup::seqno)\n"
         "12:61: /flowTrackerConfig/t/fgConfig/g/mirrorConfig/initialCopy: found 1024; allowed: a "
         "whole number from 0 to 1023 (FlowTracking::MirrorConfig::initialCopy, "
         "FlowTracking::InitialCopy)" );
   EXPECT_EQ( ear.heard, "" );
   EXPECT_EQ( toJson( *config, FlowtrackJson::Extent::changed ).dump(), "{}" );
}

TEST( LoadTest, AnEntityWhoseArgumentsDifferIsMadeAnew )
{
   const auto configs = FlowTracking::flowTrackerIntfConfigsFactory( "any" );
   const auto before = configs->flowTrackerIntfConfigIs(
         Wyre::IntfId( "Ethernet1" ), "t", FlowTracking::sampleModeAll );
   const auto kept = configs->flowTrackerIntfConfigIs(
         Wyre::IntfId( "Ethernet2" ), "t", FlowTracking::sampleModeAll );
   EXPECT_EQ( loaded( R"({ "flowTrackerIntfConfig": { "Ethernet1": { "trackerName": "u" },
         "Ethernet2": { "trackerName": "t" } } })",
                    *configs ),
         "" );
   const auto after = configs->flowTrackerIntfConfig( Wyre::IntfId( "Ethernet1" ) );
   EXPECT_NE( after, before );
   EXPECT_EQ( after->trackerName(), "u" );
   EXPECT_EQ( after->sampleMode(), FlowTracking::sampleModeAll );
   EXPECT_EQ( configs->flowTrackerIntfConfig( Wyre::IntfId( "Ethernet2" ) ), kept );
}

TEST( LoadTest, ReferencesAreFollowedWhereverTheyStand )
{
   const auto config = HwFlowTracking::configFactory( "any" );
   EXPECT_EQ( loaded( R"({ "hwIntfFtConfig": { "e1": { "hwFtConfig": "/hwFtConfig[t]",
         "sampleMode": "sampleModeAll" } }, "hwFtConfig": { "t": { "ftId": 4 } } })",
                    *config ),
         "" );
   EXPECT_EQ( config->hwIntfFtConfig( Wyre::IntfId( "e1" ) )->hwFtConfig(),
         config->hwFtConfig( "t" ) );
   EXPECT_EQ( loaded( R"({ "hwIntfFtConfig": { "e2": { "hwFtConfig": "/hwFtConfig[u]",
         "sampleMode": "sampleModeAll" } } })",
                    *config ),
         "1:45: /hwIntfFtConfig/e2/hwFtConfig: found \"/hwFtConfig[u]\"; allowed: the path of a "
         "HwFlowTracking::FtConfig in this tree (HwFlowTracking::IntfFtConfig::hwFtConfig, "
         "HwFlowTracking::FtConfig)" );
   const auto status = HwFlowTracking::statusFactory( "any" );
   const std::string refers =
         R"({ "hwFtStatus": { "t": { "templateStatus": [ "/templateStatus[300]" ] } } })";
   EXPECT_NE( loaded( refers, *status ), "" );
   status->templateStatusIs( Ipfix::TemplateId( 300 ) );
   EXPECT_EQ( loaded( refers, *status ), "" );
   EXPECT_EQ( status->hwFtStatus( "t" )->templateStatus().size(), 1U );
}

TEST( LoadTest, WhatRefersToEntitiesThatLeftStays )
{
   const auto config = HwFlowTracking::configFactory( "any" );
   const auto tracker = config->hwFtConfigIs( "t", FlowTracking::FtId( 3 ) );
   config->hwIntfFtConfigIs( Wyre::IntfId( "e1" ), tracker, FlowTracking::sampleModeAll );
   config->hwFtConfigDel( "t" );
   EXPECT_EQ( loaded( R"({ "swExport": true })", *config ), "" );
   EXPECT_TRUE( config->swExport() );
   EXPECT_EQ( config->hwIntfFtConfig( Wyre::IntfId( "e1" ) )->hwFtConfig()->ftId(),
         FlowTracking::FtId( 3 ) );
}

TEST( LoadTest, KeysAreValuesOfTheirType )
{
   const auto config = FlowTracking::configFactory( "any" );
   EXPECT_EQ( loaded( R"({ "templateConfig": { "255": {} } })", *config ),
         "1:23: /templateConfig/255: found \"255\"; allowed: a whole number from 256 to 65535, as "
         "the name of the member (FlowTracking::Config::templateConfig, "
         "FlowTracking::TemplateConfig)" );
   EXPECT_NE( loaded( R"({ "templateConfig": { "0300": {} } })", *config ), "" );
   EXPECT_NE( loaded( R"({ "templateConfig": { "300": { "templateId": 300 } } })", *config ), "" );
   EXPECT_NE( loaded( R"({ "templateConfig": { "300": { "field": [
         { "key": 1, "value": {} }, { "key": 1, "value": {} } ] } } })",
                    *config ),
         "" );
   EXPECT_EQ( loaded( R"({ "templateConfig": { "300": { "field": [
         { "key": 1, "value": {} }, { "key": 2, "value": {} } ] } } })",
                    *config ),
         "" );
   EXPECT_EQ( config->templateConfig( Ipfix::TemplateId( 300 ) ).field().size(), 2U );
}

TEST( LoadTest, NumbersMayBeWrittenInAnyWayThatJsonHas )
{
   const auto config = FlowTracking::configFactory( "any" );
   EXPECT_EQ( loaded( R"({ "sampleRate": 1e3, "sftAgentCount": 2.0 })", *config ), "" );
   EXPECT_EQ( config->sampleRate(), FlowTracking::SampleRate( 1000 ) );
   EXPECT_EQ( config->sftAgentCount(), 2 );
   for ( const char * const number :
         { "1.5", "-1", "1e20", "4294967296", "18446744073709551616" } ) {
      EXPECT_NE( loaded( R"({ "sampleRate": )" + std::string( number ) + " }", *config ), "" )
            << number;
   }
}

} // namespace
