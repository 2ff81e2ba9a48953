// Sets of flags: one bit each, read and written alone.
#include "tests/support/NumberTable.h"
#include "tests/support/ValueTable.h"

#include "FlowTracker/FlowTrackingOrreryTypes.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace FlowTracking;
using TestSupport::AttributeRow;
using TestSupport::constant;
using TestSupport::expectFlags;
using TestSupport::plain;
using Rows = std::vector< AttributeRow >;

TEST( FlagsTest, exporterInactiveReason )
{
   const Rows fields = {
      { 2, "value", plain( "u8" ), "0", "255" },
      { 3, "exporterNotProcessed", plain( "bool" ), "false", "true" },
      { 4, "maxExportersLimit", plain( "bool" ), "false", "true" },
      { 5, "invalidCollector", plain( "bool" ), "false", "true" },
      { 6, "invalidVrf", plain( "bool" ), "false", "true" },
      { 7, "invalidLocalIntf", plain( "bool" ), "false", "true" },
      { 8, "waitingForUDPPort", plain( "bool" ), "false", "true" },
      { 9, "invalidExportFormat", plain( "bool" ), "false", "true" },
   };
   TestSupport::expectValue( { "FlowTracking::ExporterInactiveReason", fields } );
   expectFlags( "FlowTracking::ExporterInactiveReason",
         { "exporterNotProcessed", "maxExportersLimit", "invalidCollector", "invalidVrf",
               "invalidLocalIntf", "waitingForUDPPort", "invalidExportFormat" } );
}

TEST( FlagsTest, encapFlags )
{
   const Rows fields = {
      { 2, "value", plain( "u8" ), "0", "63" },
      { 3, "ipv4", plain( "bool" ), "false", "true" },
      { 4, "ipv6", plain( "bool" ), "false", "true" },
      { 5, "vxlan", plain( "bool" ), "false", "true" },
      { 6, "mpls", plain( "bool" ), "false", "true" },
      { 7, "gre", plain( "bool" ), "false", "true" },
      { 8, "roCEv2", plain( "bool" ), "false", "true" },
      { 9, "encapFlagIpv4", constant( "u8" ), "1" },
      { 10, "encapFlagIpv6", constant( "u8" ), "2" },
      { 11, "encapFlagVxlan", constant( "u8" ), "4" },
      { 12, "encapFlagMpls", constant( "u8" ), "8" },
      { 13, "encapFlagGre", constant( "u8" ), "16" },
      { 14, "encapFlagRoCEv2", constant( "u8" ), "32" },
   };
   TestSupport::expectValue( { "FlowTracking::EncapFlags", fields } );
   expectFlags( "FlowTracking::EncapFlags", { "ipv4", "ipv6", "vxlan", "mpls", "gre", "roCEv2" } );
}

TEST( FlagsTest, filterTypes )
{
   const Rows fields = {
      { 2, "value", plain( "u8" ), "0", "1" },
      { 3, "rpf", plain( "bool" ), "false", "true" },
      { 4, "filterTypeRpf", constant( "u8" ), "1" },
   };
   TestSupport::expectValue( { "FlowTracking::FilterTypes", fields } );
   expectFlags( "FlowTracking::FilterTypes", { "rpf" } );
}

TEST( FlagsTest, asAClientWritesThem )
{
   EncapFlags flags( 21 );
   EXPECT_TRUE( flags.ipv4() && flags.vxlan() && flags.gre() );
   EXPECT_FALSE( flags.ipv6() || flags.mpls() || flags.roCEv2() );
   flags.greIs( false );
   flags.roCEv2Is( true );
   const unsigned masks = EncapFlags::encapFlagIpv4() | EncapFlags::encapFlagVxlan() |
         EncapFlags::encapFlagRoCEv2();
   EXPECT_EQ( flags.value(), masks );
   ExporterInactiveReason reason;
   reason.invalidVrfIs( true );
   reason.waitingForUDPPortIs( true );
   EXPECT_EQ( reason, ExporterInactiveReason( 40 ) );
   FilterTypes filters;
   filters.rpfIs( true );
   EXPECT_EQ( filters.value(), FilterTypes::filterTypeRpf() );
}

TEST( FlagsTest, theTextAndTheLogAreTheWord )
{
   EXPECT_EQ( Corvo::valueToStrep( EncapFlags( 21 ) ), "21" );
   EXPECT_EQ( Corvo::strepToValue< ExporterInactiveReason >( "64" ).invalidExportFormat(), true );
   Vok::NboAttrLog::Out out;
   out << EncapFlags( 33 ) << FilterTypes( 1 ) << ExporterInactiveReason( 127 );
   EXPECT_EQ( TestSupport::hexOf( out ), "21017f" );
}

} // namespace
