// Values of several fields, wrappers and sets of flags: their fields, text forms and log forms.
#include "tests/support/NumberTable.h"
#include "tests/support/ValueForms.h"
#include "tests/support/ValueTable.h"

#include "FlowTracker/FlowTrackerConfig.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace FlowTracking;
using TestSupport::AttributeRow;
using TestSupport::expectForms;
using TestSupport::expectValue;
using TestSupport::plain;
using Rows = std::vector< AttributeRow >;

TEST( CompositeValuesTest, accessList )
{
   const Rows fields = {
      { 2, "seqno", plain( "u32" ), "0", "4294967295" },
      { 3, "aclName", plain( "Corvo::String" ), R"("")", "web" },
      { 4, "aclType", plain( "Acl::AclType" ), "ip", "mac" },
   };
   expectValue( { "FlowTracking::AccessList", fields } );
   expectForms( AccessList( 10, "web", Acl::AclType::ipv6 ),
         "FlowTracking::AccessList[seqno=10,aclName=web,aclType=ipv6]",
         "0000000a"
         "00000003"
         "776562"
         "00000001" );
}

TEST( CompositeValuesTest, mirrorConfig )
{
   const Rows fields = {
      { 2, "sessionName", plain( "Corvo::String" ), R"("")", "probe" },
      { 3, "initialCopy", plain( "FlowTracking::InitialCopy" ), "0", "1023" },
      { 4, "mirrorSelectorAlgo", plain( "FlowTracking::MirrorSelectorAlgo" ), "sampleModeNone",
            "random" },
      { 5, "mirrorIntervalFixed", plain( "FlowTracking::MirrorIntervalFixed" ), "0", "10000" },
      { 6, "mirrorIntervalRandom", plain( "FlowTracking::MirrorIntervalRandom" ), "0", "4000" },
   };
   expectValue( { "FlowTracking::MirrorConfig", fields } );
   expectForms( MirrorConfig( "m", InitialCopy( 1 ), MirrorSelectorAlgo::fixed,
                      MirrorIntervalFixed( 2 ), MirrorIntervalRandom( 3 ) ),
         "FlowTracking::MirrorConfig[sessionName=m,initialCopy=1,mirrorSelectorAlgo=fixed,"
         "mirrorIntervalFixed=2,mirrorIntervalRandom=3]",
         "00000001"
         "6d"
         "0001"
         "00000001"
         "0002"
         "0003" );
}

TEST( CompositeValuesTest, aDefaultIsFalseAndAnyOtherFieldMakesItTrue )
{
   EXPECT_FALSE( AccessList() );
   EXPECT_TRUE( AccessList( 1, "", Acl::AclType::ip ) );
   EXPECT_TRUE( AccessList( 0, "a", Acl::AclType::ip ) );
   EXPECT_TRUE( AccessList( 0, "", Acl::AclType::ipv6 ) );
   EXPECT_FALSE( MirrorConfig() );
   MirrorConfig config;
   config.sessionNameIs( "m" );
   EXPECT_TRUE( config );
   config = MirrorConfig();
   config.initialCopyIs( InitialCopy( 1 ) );
   EXPECT_TRUE( config );
   config = MirrorConfig();
   config.mirrorSelectorAlgoIs( MirrorSelectorAlgo::random );
   EXPECT_TRUE( config );
   config = MirrorConfig();
   config.mirrorIntervalFixedIs( MirrorIntervalFixed( 1 ) );
   EXPECT_TRUE( config );
   config = MirrorConfig();
   config.mirrorIntervalRandomIs( MirrorIntervalRandom( 1 ) );
   EXPECT_TRUE( config );
}

TEST( CompositeValuesTest, aDefaultFlowParamIsTypeOneAndNoFlowKey )
{
   const Rows fields = {
      { 2, "seqno", plain( "u32" ), "0", "1" },
      { 3, "type", plain( "Ipfix::RecordType" ), "octetDeltaCount", "packetDeltaCount" },
      { 4, "flowKey", plain( "bool" ), "false", "true" },
   };
   expectValue( { "FlowTracking::FlowParam", fields } );
   EXPECT_EQ( static_cast< unsigned >( FlowParam().type() ), 1U );
   EXPECT_FALSE( FlowParam().flowKey() );
   expectForms( FlowParam( 7, Ipfix::RecordType::protocolIdentifier, true ),
         "FlowTracking::FlowParam[seqno=7,type=protocolIdentifier,flowKey=true]",
         "00000007"
         "00000004"
         "01" );
}

TEST( CompositeValuesTest, aDefaultFieldSpecifierHasElementIdOne )
{
   const Rows fields = {
      { 2, "elementId", plain( "u32" ), "1", "0" },
      { 3, "enterpriseNum", plain( "u32" ), "0", "4294967295" },
   };
   expectValue( { "FlowTracking::FieldSpecifierConfig", fields } );
   EXPECT_EQ( FieldSpecifierConfig().elementId(), 1U );
   expectForms( FieldSpecifierConfig( 8, 29305 ),
         "FlowTracking::FieldSpecifierConfig[elementId=8,enterpriseNum=29305]",
         "00000008"
         "00007279" );
}

TEST( CompositeValuesTest, simulationCaches )
{
   const Rows routing = {
      { 2, "v4Size", plain( "u32" ), "100000", "0" },
      { 3, "v6Size", plain( "u32" ), "30000", "0" },
      { 4, "lifetime", plain( "u32" ), "30", "4294967295" },
   };
   expectValue( { "FlowTracking::RoutingSimCacheConfig", routing } );
   expectForms( RoutingSimCacheConfig( 1, 2, 3 ),
         "FlowTracking::RoutingSimCacheConfig[v4Size=1,v6Size=2,lifetime=3]",
         "00000001"
         "00000002"
         "00000003" );
   const Rows bgp = {
      { 2, "size", plain( "u32" ), "500000", "0" },
      { 3, "lifetime", plain( "u32" ), "30", "0" },
   };
   expectValue( { "FlowTracking::BgpSimCacheConfig", bgp } );
   expectForms( BgpSimCacheConfig( 1, 2 ), "FlowTracking::BgpSimCacheConfig[size=1,lifetime=2]",
         "00000001"
         "00000002" );
}

TEST( CompositeValuesTest, wrappersOfOneEnumeration )
{
   const Rows status = {
      { 2, "status", plain( "FlowTracking::ForwardingStatus::Status" ), "unknown", "consumed" },
   };
   expectValue( { "FlowTracking::ForwardingStatus", status } );
   ForwardingStatus forwarding;
   forwarding.statusIs( ForwardingStatus::dropped );
   expectForms( forwarding, "dropped", "00000002" );
   const Rows format = {
      { 2, "format", plain( "FlowTracking::FlowRecordFormat::Format" ), "none", "monitor" },
   };
   expectValue( { "FlowTracking::FlowRecordFormat", format } );
   FlowRecordFormat record;
   record.formatIs( FlowRecordFormat::enforcement );
   expectForms( record, "enforcement", "00000002" );
}

TEST( CompositeValuesTest, aCodeThatIsNoneIsRefusedFromALog )
{
   const std::vector< std::byte > bytes = TestSupport::bytesOf( "00000004" );
   Vok::NboAttrLog::In in( bytes.data(), bytes.size() );
   EXPECT_THROW( ForwardingStatus{ &in }, std::exception );
}

TEST( CompositeValuesTest, aFieldThatFailsIsNamed )
{
   try {
      Corvo::strepToValue< MirrorConfig >(
            "FlowTracking::MirrorConfig[sessionName=m,initialCopy=1024,mirrorSelectorAlgo=fixed,"
            "mirrorIntervalFixed=2,mirrorIntervalRandom=3]" );
      ADD_FAILURE() << "1024 was taken";
   } catch ( const Corvo::DeserializationException & e ) {
      EXPECT_EQ( e.attribute(), "initialCopy" );
      const std::string message =
            "FlowTracking::InitialCopy::value < FlowTracking::InitialCopy::minPkts or > "
            "FlowTracking::InitialCopy::maxPkts not allowed";
      EXPECT_NE( std::string( e.what() ).find( message ), std::string::npos ) << e.what();
   }
}

} // namespace
