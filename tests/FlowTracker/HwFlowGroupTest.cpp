// Flow groups of the hardware configuration, and the index of their names, as a client writes them.
#include "tests/support/Recorder.h"

#include "FlowTracker/HwFlowTrackingConfig.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace HwFlowTracking;
using FlowTracking::AccessList;
using FlowTracking::FlowParam;
using Ipfix::RecordType;
using TestSupport::Heard;
using TestSupport::Recorder;

/// The word of a group whose bit map was `before`, after one update.
std::uint32_t updated( std::uint32_t before, bool reset, bool encap, bool acl, bool exporter,
      bool mirroring )
{
   const auto group = fgConfigFactory( "g", 10 );
   group->fgConfigChangeBitMapIs( FgConfigChangeBitMap( before ) );
   group->updateFgConfigChangeBitMap( reset, encap, acl, exporter, mirroring );
   return group->fgConfigChangeBitMap().value();
}

TEST( HwFlowGroupTest, aFreshGroupHasItsDefaults )
{
   const auto group = fgConfigFactory( "g", 10 );
   EXPECT_EQ( group->name(), "g" );
   EXPECT_EQ( group->fgName(), "g" );
   EXPECT_EQ( group->seqno(), 10U );
   EXPECT_EQ( group->templateId().value(), 65535 );
   EXPECT_TRUE( group->flowDomain().empty() );
   EXPECT_EQ( group->genId(), 0U );
   EXPECT_EQ( group->encapFlags(), FlowTracking::EncapFlags( 0 ) );
   EXPECT_EQ( group->fgConfigChangeBitMap(), FgConfigChangeBitMap( 0 ) );
   EXPECT_FALSE( group->mirrorConfig() );
   EXPECT_TRUE( group->flowParam().empty() && group->accessList().empty() );
   EXPECT_TRUE( group->expName().empty() );
   EXPECT_EQ( FgConfig::FgConfigIs( "h", 5 )->seqno(), 5U );
}

TEST( HwFlowGroupTest, onlyTheFirstOfSeveralChangesIsAddedToTheBitMap )
{
   EXPECT_EQ( updated( 2, false, true, true, false, false ), 3U );
   EXPECT_EQ( updated( 0, false, true, true, true, true ), 1U );
   EXPECT_EQ( updated( 0, false, false, true, true, true ), 2U );
   EXPECT_EQ( updated( 0, false, false, false, true, true ), 4U );
   EXPECT_EQ( updated( 0, false, false, false, false, true ), 8U );
   EXPECT_EQ( updated( 3, false, false, false, false, false ), 3U );
}

TEST( HwFlowGroupTest, anUpdateThatResetsTheBitMapLeavesItsOwnBitAlone )
{
   EXPECT_EQ( updated( 5, true, false, false, false, true ), 8U );
   EXPECT_EQ( updated( 15, true, true, false, false, false ), 1U );
   EXPECT_EQ( updated( 15, true, false, false, false, false ), 0U );
   EXPECT_EQ( updated( 4294967280, false, true, false, false, false ), 4294967281U );
}

TEST( HwFlowGroupTest, anUpdateThatChangesNothingIsSilent )
{
   const auto group = fgConfigFactory( "g", 10 );
   group->fgConfigChangeBitMapIs( FgConfigChangeBitMap( 1 ) );
   Recorder recorder( *group );
   group->updateFgConfigChangeBitMap( false, true, false, false, false );
   group->updateFgConfigChangeBitMap( true, true, false, false, false );
   group->updateFgConfigChangeBitMap( false, false, false, false, false );
   EXPECT_EQ( recorder.take(), Heard{} );
   group->updateFgConfigChangeBitMap( false, false, true, false, false );
   EXPECT_EQ( recorder.take(), Heard{ "268 was 1" } );
   group->updateFgConfigChangeBitMap( true, false, false, false, false );
   EXPECT_EQ( recorder.take(), Heard{ "268 was 3" } );
}

TEST( HwFlowGroupTest, theBitMapIsUpdatedThroughReflectionToo )
{
   const auto group = fgConfigFactory( "g", 10 );
   const Vok::AttributeData & update =
         *group->typeData().attribute( "updateFgConfigChangeBitMap" );
   update.call( *group, { "false", "false", "false", "true", "false" } );
   EXPECT_EQ( group->fgConfigChangeBitMap().value(), 4U );
   EXPECT_THROW( update.call( *group, { "true" } ), Corvo::ConstructorArgsException );
}

TEST( HwFlowGroupTest, parametersAreLookedUpInTwoWays )
{
   const auto group = fgConfigFactory( "g", 10 );
   const FlowParam param( 7, RecordType::packetDeltaCount, true );
   group->flowParamIs( param );
   EXPECT_EQ( group->flowParam( 7 ), param );
   EXPECT_EQ( group->flowParamGet( 7 ), param );
   EXPECT_EQ( group->flowParam( 8 ), FlowParam() );
   EXPECT_FALSE( group->flowParamGet( 8 ).has_value() );
   EXPECT_EQ( group->flowParamDel( 8 ), FlowParam() );
   EXPECT_EQ( group->flowParamDel( 7 ), param );
   EXPECT_FALSE( group->flowParamGet( 7 ).has_value() );
}

TEST( HwFlowGroupTest, accessListsAreLookedUpInTwoWays )
{
   const auto group = fgConfigFactory( "g", 10 );
   const AccessList list( 10, "web", Acl::AclType::ip );
   Recorder recorder( *group );
   group->accessListIs( list );
   group->accessListIs( list );
   EXPECT_EQ( recorder.take(), Heard{ "264[10]" } );
   EXPECT_EQ( group->accessList( 10 ), list );
   EXPECT_EQ( group->accessListGet( 10 ), list );
   EXPECT_EQ( group->accessList( 11 ), AccessList() );
   EXPECT_FALSE( group->accessListGet( 11 ).has_value() );
}

TEST( HwFlowGroupTest, parametersAndAccessListsIterateByNumber )
{
   const auto group = fgConfigFactory( "g", 10 );
   for ( const std::uint32_t seqno : { 30U, 4294967295U, 10U, 0U, 20U } ) {
      group->flowParamIs( FlowParam( seqno, RecordType::octetDeltaCount, false ) );
      group->accessListIs( AccessList( seqno, "web", Acl::AclType::ip ) );
   }
   const std::vector< std::uint32_t > ascending = { 0, 10, 20, 30, 4294967295 };
   std::vector< std::uint32_t > params;
   for ( const auto & [ seqno, param ] : group->flowParam() ) {
      EXPECT_EQ( param.seqno(), seqno );
      params.push_back( seqno );
   }
   EXPECT_EQ( params, ascending );
   std::vector< std::uint32_t > lists;
   for ( const auto & [ seqno, list ] : group->accessList() ) {
      EXPECT_EQ( list.seqno(), seqno );
      lists.push_back( seqno );
   }
   EXPECT_EQ( lists, ascending );
}

TEST( HwFlowGroupTest, itsGenerationWrapsAroundAndStandsStillForNought )
{
   const auto group = fgConfigFactory( "g", 10 );
   Recorder recorder( *group );
   EXPECT_EQ( group->genIdInc( 0 ), 0U );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( group->genIdInc( 3 ), 3U );
   group->genIdIs( 4294967295 );
   EXPECT_EQ( group->genIdInc( 1 ), 0U );
   EXPECT_EQ( recorder.take(), ( Heard{ "263 was 0", "263 was 3", "263 was 4294967295" } ) );
}

TEST( HwFlowGroupTest, anIndexHoldsOnePairForEachNumber )
{
   const auto index = hwFgConfigMapFactory( "g", 10 );
   EXPECT_EQ( index->name(), "g" );
   EXPECT_EQ( index->seqno(), 10U );
   EXPECT_TRUE( index->hwFgNameAndSeqno().empty() );
   Recorder recorder( *index );
   index->hwFgNameAndSeqnoIs( FgNameAndSeqno( "a", 7 ) );
   index->hwFgNameAndSeqnoIs( FgNameAndSeqno( "a", 7 ) );
   index->hwFgNameAndSeqnoIs( FgNameAndSeqno( "b", 7 ) );
   EXPECT_EQ( recorder.take(),
         ( Heard{ "260[7]",
               "260[7] was HwFlowTracking::FgNameAndSeqno[fgName=a,seqno=7]" } ) );
   EXPECT_EQ( index->hwFgNameAndSeqno().size(), 1U );
   EXPECT_EQ( index->hwFgNameAndSeqno( 7 ), FgNameAndSeqno( "b", 7 ) );
   EXPECT_EQ( index->hwFgNameAndSeqno( 8 ), FgNameAndSeqno() );
   index->hwFgNameAndSeqnoDelAll();
   EXPECT_EQ( recorder.take().size(), 1U );
   EXPECT_TRUE( index->hwFgNameAndSeqno().empty() );
}

} // namespace
