// The constants of flow tracking, and where reserved template ids and sequence numbers lie.
#include "tests/support/ValueTable.h"

#include "FlowTracker/FlowTrackingOrreryTypes.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace {

using namespace FlowTracking;
using TestSupport::AttributeRow;
using TestSupport::constant;
using TestSupport::function;
using Rows = std::vector< AttributeRow >;

template< class Call > std::string refusal( Call call )
{
   try {
      call();
   } catch ( const Corvo::RangeException & e ) {
      return e.what();
   }
   return "";
}

TEST( ConstantsTest, areAsTheirTableSays )
{
   const Rows members = {
      { 2, "confNameMaxLen", constant( "u16" ), "128" },
      { 3, "intfNameDefault", constant( "Corvo::String" ), R"("")" },
      { 4, "nullVrfName", constant( "L3::VrfName" ), R"("")" },
      { 5, "ipAddrDefault", constant( "Corvo::String" ), "0.0.0.0" },
      { 6, "ip6AddrDefault", constant( "Corvo::String" ), "::" },
      { 7, "dscpValueDefault", constant( "u8" ), "0" },
      { 8, "tcpStateChangeExportDefault", constant( "bool" ), "false" },
      { 9, "mplsExportDefault", constant( "bool" ), "false" },
      { 10, "ingressLabelExportDefault", constant( "bool" ), "false" },
      { 11, "variableLengthIe", constant( "u16" ), "65535" },
      { 12, "templateIdBase", constant( "u16" ), "256" },
      { 13, "fgSeqnoInterval", constant( "u16" ), "100" },
      { 14, "reservedFgSeqnoBase", constant( "u32" ), "4294966295" },
      { 15, "hwFgSeqnoMultiple", constant( "u16" ), "10" },
      { 16, "dataTemplateMin", constant( "FlowTracking::StaticTemplateId" ), "dataTemplateIpv4" },
      { 17, "dataTemplateMax", constant( "FlowTracking::StaticTemplateId" ),
            "dataTemplateHwVxlanIpv6" },
      { 18, "reservedTemplateIdValue", function() },
      { 19, "reservedTemplateId", function() },
      { 20, "unreservedTemplateIdBase", constant( "Ipfix::TemplateId" ), "281" },
      { 21, "groupSeqnoOffset", function() },
      { 22, "reservedGroupSeqno", function() },
   };
   TestSupport::expectConstants( { "FlowTracking::Constants", members } );
}

TEST( ConstantsTest, heuristicsAndReservedNames )
{
   const Rows heuristics = {
      { 2, "minSamplesLb", constant( "u32" ), "1" },
      { 3, "minSamplesUb", constant( "u32" ), "4294967295" },
      { 4, "minSamplesDefault", constant( "u32" ), "1" },
   };
   TestSupport::expectConstants( { "FlowTracking::HoHeuristicsConstants", heuristics } );
   const Rows names = {
      { 2, "groupHwIpv4", constant( "Corvo::String" ), "IPv4" },
      { 3, "groupHwIpv6", constant( "Corvo::String" ), "IPv6" },
      { 4, "groupHwVxlanIpv4", constant( "Corvo::String" ), "VxlanIPv4" },
      { 5, "groupHwVxlanIpv6", constant( "Corvo::String" ), "VxlanIPv6" },
   };
   TestSupport::expectConstants( { "FlowTracking::ReservedGroupNames", names } );
   TestSupport::expectConstants( { "FlowTracking::PacketBuffer", {} } );
}

TEST( ConstantsTest, asAClientWritesThem )
{
   static_assert( Constants::confNameMaxLen() == 128 && Constants::templateIdBase() == 256 );
   static_assert( Constants::dataTemplateMin() == StaticTemplateId::dataTemplateIpv4 );
   static_assert( Constants::reservedFgSeqnoBase() == 4294966295 );
   static_assert( HoHeuristicsConstants::minSamplesUb() == 4294967295 );
   EXPECT_EQ( ReservedGroupNames::groupHwVxlanIpv6(), "VxlanIPv6" );
   EXPECT_EQ( Constants::ip6AddrDefault(), "::" );
   EXPECT_TRUE( Constants::intfNameDefault().empty() );
   EXPECT_EQ( Constants::unreservedTemplateIdBase(), Ipfix::TemplateId( 281 ) );
}

TEST( ConstantsTest, noVrfIsTheEmptyName )
{
   EXPECT_EQ( Constants::nullVrfName(), L3::VrfName( "" ) );
   EXPECT_EQ( Constants::nullVrfName().stringValue(), "" );
   EXPECT_EQ( refusal( [] { L3::VrfName( std::string( 101, 'x' ) ); } ),
         "Vok::String::bytes > maxLength() not allowed" );
}

TEST( ConstantsTest, reservedTemplateIdsStartAt256 )
{
   const auto id = []( unsigned code ) { return static_cast< StaticTemplateId >( code ); };
   EXPECT_EQ( Constants::reservedTemplateId( id( 0 ) ).value(), 256 );
   EXPECT_EQ( Constants::reservedTemplateId( dataTemplateIpv4 ).value(), 261 );
   EXPECT_EQ( Constants::reservedTemplateId( dataTemplateHwVxlanIpv6 ).value(), 32771 );
   EXPECT_EQ( Constants::reservedTemplateId( id( 65279 ) ).value(), 65535 );
   const char * message =
         "Ipfix::TemplateId::value < Ipfix::TemplateId::minTemplateId or > "
         "Ipfix::TemplateId::maxTemplateId not allowed";
   EXPECT_EQ( refusal( [ & ] { Constants::reservedTemplateId( id( 65280 ) ); } ), message );
   EXPECT_EQ( refusal( [ & ] { Constants::reservedTemplateId( id( 65535 ) ); } ), message );
   EXPECT_EQ( Constants::reservedTemplateIdValue( id( 0 ) ), 256U );
   EXPECT_EQ( Constants::reservedTemplateIdValue( id( 65535 ) ), 65791U );
   EXPECT_EQ( Constants::unreservedTemplateIdBase(),
         Constants::reservedTemplateId( staticTemplateIdMax ) );
}

TEST( ConstantsTest, builtInGroupsStandAtTheTopOf32Bits )
{
   EXPECT_EQ( Constants::reservedGroupSeqno( offsetIpv4 ), 4294966295U );
   EXPECT_EQ( Constants::reservedGroupSeqno( offsetIpv6 ), 4294966296U );
   EXPECT_EQ( Constants::reservedGroupSeqno( offsetVxlanIpv4 ), 4294966297U );
   EXPECT_EQ( Constants::reservedGroupSeqno( offsetVxlanIpv6 ), 4294966298U );
   EXPECT_EQ( Constants::reservedGroupSeqno( offsetIpv4 ), std::uint32_t( 0 ) - 1001 );
}

TEST( ConstantsTest, offsetsOfBuiltInGroups )
{
   for ( std::uint8_t code = 0; code != 4; ++code ) {
      const auto offset = static_cast< StaticGroupSeqnoOffset >( code );
      EXPECT_EQ( Constants::groupSeqnoOffset( offset ), GroupSeqnoOffset( code ) );
   }
   EXPECT_EQ( refusal( [] {
      Constants::groupSeqnoOffset( static_cast< StaticGroupSeqnoOffset >( 4 ) );
   } ),
         "FlowTracking::GroupSeqnoOffset::value < FlowTracking::GroupSeqnoOffset::minOffset or > "
         "FlowTracking::GroupSeqnoOffset::maxOffset not allowed" );
}

} // namespace
