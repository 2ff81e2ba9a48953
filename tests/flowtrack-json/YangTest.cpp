// Names in YANG, and data of its modules. That modules and data are right is yanglint's to say.
#include "tests/flowtrack-json/Trees.h"

#include "tools/flowtrack/json/Yang.h"

#include "FlowTracker/FlowTrackerConfig.h"
#include "FlowTracker/FlowTrackerStatus.h"
#include "FlowTracker/HwFlowTrackingConfig.h"

#include <gtest/gtest.h>

using FlowtrackJson::Json;

namespace {

TEST( YangTest, NamesOfAllTypesAndAttributesComeBack )
{
   std::size_t names = 0;
   for ( const auto & module : Corvo::ModuleInspectData::modules() ) {
      for ( const Vok::TypeData & type : module.types() ) {
         const std::string yang = FlowtrackJson::yangTypeName( type.name() );
         EXPECT_EQ( FlowtrackJson::typeNameOfYang( yang ), type.name() ) << yang;
         for ( const Vok::AttributeData & a : type.attributes() ) {
            EXPECT_EQ( FlowtrackJson::nameOfYang( FlowtrackJson::yangName( a.name() ) ), a.name() );
            ++names;
         }
      }
   }
   EXPECT_GT( names, 400U );
   EXPECT_EQ( FlowtrackJson::yangTypeName( "FlowTracking::PacketBuffer::Status" ),
         "flow-tracking.packet-buffer.status" );
   EXPECT_EQ( FlowtrackJson::yangName( "ignorableRocev2QpId" ), "ignorable-rocev2-qp-id" );
}

TEST( YangTest, DataHaveTheFormsOfYang )
{
   const auto config = FlowTracking::configFactory( "any" );
   config->flowTrackerConfigIs( "t" )->expConfigIs( "e" )->collectorHostAndPortIs( { "h", 7 } );
   const Json data = FlowtrackJson::rfc7951( *config )[ "flow-tracking.config:config" ];
   EXPECT_EQ( data[ "flow-tracker-config" ][ 0 ][ "name" ], Json( "t" ) );
   EXPECT_EQ( data[ "flow-tracker-config" ][ 0 ][ "exp-config" ][ 0 ][ "collector-host-and-port" ]
                    .dump(),
         R"([{"hostname":"h","port":7}])" );
   EXPECT_FALSE( data.contains( "sample-limit" ) );
   const auto hardware = HwFlowTracking::configFactory( "any" );
   hardware->encapFlagsIs( FlowTracking::EncapFlags( 0x21 ) );
   const Json hw = FlowtrackJson::rfc7951( *hardware )[ "hw-flow-tracking.config:config" ];
   EXPECT_EQ( hw[ "encap-flags" ], Json( "ipv4 ro-c-ev2" ) );
   EXPECT_EQ( hw[ "hw-offload-ipv4-start-time" ], Json( "inf" ) );
   const auto status = FlowTracking::statusFactory( "any" );
   status->pktDropRespIs(
         FlowTracking::PktDropCounterUpdateResponse( FlowTracking::kernelDrops, 5, 6, 7 ) );
   EXPECT_EQ( FlowtrackJson::rfc7951( *status )[ "flow-tracking.status:status" ].dump(),
         R"({"pkt-drop-resp":[{"pkt-drop-reason":"kernelDrops","pkt-drops":"5","pkts":"6",)"
         R"("writer-seq-no":7}]})" );
}

TEST( YangTest, TypesThatHoldTheirOwnHaveNoModule )
{
   EXPECT_THROW( FlowtrackJson::yangModule( *Corvo::ModuleInspectData::findType( "Test::Tree" ) ),
         std::invalid_argument );
}

} // namespace
