// Values and enumerations of the hardware configuration: fields, text forms, log forms.
#include "tests/support/EnumTable.h"
#include "tests/support/ValueForms.h"
#include "tests/support/ValueTable.h"

#include "FlowTracker/HwFlowTrackingConfig.h"

#include <gtest/gtest.h>

#include <unordered_set>
#include <vector>

namespace {

using namespace HwFlowTracking;
using TestSupport::AttributeRow;
using TestSupport::expectForms;
using TestSupport::plain;
using Rows = std::vector< AttributeRow >;

TEST( HwValuesTest, fgConfigChangeBitMap )
{
   const Rows fields = {
      { 2, "value", plain( "u32" ), "0", "4294967295" },
      { 3, "encapChanged", plain( "bool" ), "false", "true" },
      { 4, "aclChanged", plain( "bool" ), "false", "true" },
      { 5, "exporterChanged", plain( "bool" ), "false", "true" },
      { 6, "mirroringChanged", plain( "bool" ), "false", "true" },
   };
   TestSupport::expectValue( { "HwFlowTracking::FgConfigChangeBitMap", fields } );
   TestSupport::expectFlags( "HwFlowTracking::FgConfigChangeBitMap",
         { "encapChanged", "aclChanged", "exporterChanged", "mirroringChanged" } );
   expectForms( FgConfigChangeBitMap( 10 ), "10", "0000000a" );
}

TEST( HwValuesTest, aBitMapOf15HasAllFourFlags )
{
   const FgConfigChangeBitMap all( 15 );
   EXPECT_TRUE( all.encapChanged() && all.aclChanged() && all.exporterChanged() &&
         all.mirroringChanged() );
   EXPECT_FALSE( FgConfigChangeBitMap( 4294967280 ).encapChanged() );
   EXPECT_FALSE( FgConfigChangeBitMap( 4294967280 ).mirroringChanged() );
   const FgConfigChangeBitMap none;
   EXPECT_EQ( none.value(), 0U );
}

TEST( HwValuesTest, settingAclChangedThroughReflectionSetsBitOneOnly )
{
   const Vok::TypeData & type =
         *Corvo::ModuleInspectData::findType( "HwFlowTracking::FgConfigChangeBitMap" );
   FgConfigChangeBitMap changes;
   type.fieldSet( &changes, "aclChanged", "true" );
   EXPECT_EQ( changes.value(), 2U );
   FgConfigChangeBitMap others( 13 );
   type.fieldSet( &others, "aclChanged", "true" );
   EXPECT_EQ( others.value(), 15U );
}

TEST( HwValuesTest, bitMapsAreKeysOfHashedCollections )
{
   std::unordered_set< FgConfigChangeBitMap > seen;
   seen.insert( FgConfigChangeBitMap( 5 ) );
   EXPECT_TRUE( seen.contains( FgConfigChangeBitMap( 5 ) ) );
   EXPECT_FALSE( seen.contains( FgConfigChangeBitMap( 4 ) ) );
}

TEST( HwValuesTest, fgNameAndSeqno )
{
   const Rows fields = {
      { 2, "fgName", plain( "Corvo::String" ), R"("")", "group" },
      { 3, "seqno", plain( "u32" ), "0", "4294967295" },
   };
   TestSupport::expectValue(
         { .type = "HwFlowTracking::FgNameAndSeqno", .fields = fields, .hashable = false } );
   expectForms( FgNameAndSeqno( "ab", 7 ), "HwFlowTracking::FgNameAndSeqno[fgName=ab,seqno=7]",
         "00000002"
         "6162"
         "00000007" );
   EXPECT_EQ( attrLogSize( FgNameAndSeqno( "abc", 1 ) ), 11U );
}

TEST( HwValuesTest, aPairIsTheSameByNameAndNumberAndFalseByDefault )
{
   EXPECT_EQ( FgNameAndSeqno( "a", 7 ), FgNameAndSeqno( "a", 7 ) );
   EXPECT_NE( FgNameAndSeqno( "a", 7 ), FgNameAndSeqno( "a", 8 ) );
   EXPECT_NE( FgNameAndSeqno( "a", 7 ), FgNameAndSeqno( "b", 7 ) );
   EXPECT_FALSE( FgNameAndSeqno() );
   EXPECT_TRUE( FgNameAndSeqno( "a", 0 ) );
   EXPECT_TRUE( FgNameAndSeqno( "", 1 ) );
}

TEST( HwValuesTest, aPairHasNoHash )
{
   static_assert( !std::is_default_constructible_v< std::hash< FgNameAndSeqno > > );
   const FgNameAndSeqno pair( "a", 7 );
   EXPECT_THROW( Corvo::ModuleInspectData::findType( "HwFlowTracking::FgNameAndSeqno" )
                       ->hash( &pair ),
         Corvo::NotHashableException );
}

TEST( HwValuesDeathTest, monitoredCpuQueueStatus )
{
   TestSupport::expectEnumeration( { "HwFlowTracking::MonitoredCpuQueueStatus",
         TestSupport::enumOps< MonitoredCpuQueueStatus, MonitoredCpuQueueStatusInstance,
               MonitoredCpuQueueStatusInstance >(),
         8,
         { { 0, "monitoredCpuQueueActive" }, { 1, "monitoredCpuQueueInactiveUnknown" } } } );
   static_assert( HwFlowTracking::monitoredCpuQueueInactiveUnknown ==
         MonitoredCpuQueueStatus::monitoredCpuQueueInactiveUnknown );
}

} // namespace
