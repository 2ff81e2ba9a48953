// Every attribute of the status and of the requests is as its table says, and follows as a change
// stream.
#include "tests/FlowTracker/RequestTables.h"
#include "tests/FlowTracker/StatusTables.h"
#include "tests/support/ReplicatedTree.h"

#include "FlowTracker/FlowTrackerStatus.h"
#include "FlowTracker/FlowTrackingConfigReq.h"

#include <gtest/gtest.h>

#include <concepts>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace FlowTracking;
using namespace FlowTrackerTest;
using TestSupport::Away;
using TestSupport::EntityPtr;
using TestSupport::EntityTable;

std::string shortName( std::string_view type )
{
   return std::string( type.substr( type.rfind( ':' ) + 1 ) );
}

class StatusAttributes : public testing::TestWithParam< EntityTable > {
};

TEST_P( StatusAttributes, areAsTheTableSays )
{
   TestSupport::expectEntity( GetParam() );
}

INSTANTIATE_TEST_SUITE_P( Of, StatusAttributes,
      testing::Values( exporterStatus(), collectorStatus(), pktDropCounterUpdateRequest(),
            ftIdStatus(), status(), trackerStatus(), configReq(), agentReq() ),
      []( const auto & table ) { return shortName( table.param.type ); } );

/// The tables of all types of a tree, that of its root first.
using TreeTables = std::vector< EntityTable >;

/// Gives every attribute of an entity, and of all below it, another value than its default.
void setTree( const EntityPtr & entity, const TreeTables & tables )
{
   for ( const EntityTable & table : tables ) {
      if ( table.type == entity->typeData().name() ) {
         TestSupport::setAll( *entity, table );
         for ( const TestSupport::AttributeRow & row : table.attributes ) {
            if ( row.form.kind == Vok::AttributeKind::children ) {
               setTree( TestSupport::childOf( entity, row.name, row.other ), tables );
            }
         }
      }
   }
}

class StatusReplication : public testing::TestWithParam< TreeTables > {
};

TEST_P( StatusReplication, everyAttributeAwayFromItsDefaultReplicatesAndSurvivesAResync )
{
   TestSupport::ReplicatedTree tree( GetParam().front() );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   const Vok::Digest before = Vok::treeDigest( *tree.root );
   setTree( tree.root, GetParam() );
   Away away;
   away.add( *tree.root );
   EXPECT_EQ( away.missing( GetParam() ), "" );
   ASSERT_NO_FATAL_FAILURE( tree.follow() );
   EXPECT_FALSE( before == Vok::treeDigest( *tree.replica ) );
   tree.resync();
}

TEST_P( StatusReplication, randomTreesFollow )
{
   Away away;
   ASSERT_NO_FATAL_FAILURE(
         TestSupport::expectRandomTreesFollow( GetParam().front(), { 60, 40, 60 }, away ) );
   EXPECT_EQ( away.missing( GetParam() ), "" );
}

const TreeTables trees[] = {
   { status(), trackerStatus(), exporterStatus(), collectorStatus() },
   { ftIdStatus() },
   { pktDropCounterUpdateRequest() },
   { configReq() },
   { agentReq() },
};

INSTANTIATE_TEST_SUITE_P( Of, StatusReplication, testing::ValuesIn( trees ),
      []( const auto & tables ) { return shortName( tables.param.front().type ); } );

TEST( StatusAttributesTest, idsAreConstantsOfTheTypes )
{
   static_assert( Status::ftStatusAttrId == 258 && Status::pktDropRespAttrId == 259 );
   static_assert( TrackerStatus::inactiveReasonAttrId == 258 &&
         TrackerStatus::activeAttrId == 259 && TrackerStatus::expStatusAttrId == 260 );
   static_assert( ExporterStatus::inactiveReasonAttrId == 258 &&
         ExporterStatus::activeAttrId == 259 && ExporterStatus::collectorStatusAttrId == 260 );
   static_assert( CollectorStatus::hostnameAttrId == 258 &&
         CollectorStatus::inactiveReasonAttrId == 259 && CollectorStatus::activeAttrId == 260 );
   static_assert( PktDropCounterUpdateRequest::readerSeqNoAttrId == 258 );
   static_assert( FtIdStatus::nextFtIdAttrId == 258 && FtIdStatus::ftIdToFtNameAttrId == 259 &&
         FtIdStatus::ftNameToFtIdAttrId == 260 );
   static_assert( ConfigReq::clearCountersAttrId == 258 &&
         ConfigReq::clearFtStatisticsAttrId == 259 );
   static_assert( AgentReq::templateExportReqAttrId == 258 );
}

TEST( StatusAttributesTest, everyTypeIsMadeOfItsNameAlone )
{
   for ( const EntityTable & table : { exporterStatus(), collectorStatus(),
               pktDropCounterUpdateRequest(), ftIdStatus(), status(), trackerStatus(),
               configReq(), agentReq() } ) {
      const Vok::TypeData & type = *Corvo::ModuleInspectData::findType( table.type );
      EXPECT_EQ( type.instantiate( "entity" )->name(), "entity" ) << table.type;
      EXPECT_THROW( type.instantiate( "entity", { "more" } ), Corvo::ConstructorArgsException )
            << table.type;
   }
}

template< class T >
constexpr bool hasFlowOut = std::derived_from< typename T::FlowOut, Corvo::Notifiee > &&
      std::constructible_from< typename T::FlowOut, Corvo::Ptr< T > >;

TEST( StatusAttributesTest, everyTypeHasItsFlowOut )
{
   static_assert( hasFlowOut< Status > && hasFlowOut< TrackerStatus > );
   static_assert( hasFlowOut< ExporterStatus > && hasFlowOut< CollectorStatus > );
   static_assert( hasFlowOut< FtIdStatus > && hasFlowOut< PktDropCounterUpdateRequest > );
   static_assert( hasFlowOut< ConfigReq > && hasFlowOut< AgentReq > );
   const auto ids = ftIdStatusFactory( "ids" );
   FtIdStatus::FlowOut out( ids );
   ids->nextFtIdIs( 1 );
   EXPECT_FALSE( out.hasDirtyCollKeys() );
   ids->ftNameToFtIdIs( "campus", FtId( 1 ) );
   EXPECT_TRUE( out.hasDirtyCollKeys() );
   EXPECT_EQ( ids->refCount(), 1U );
}

/// The modules hold these types, in their order.
std::string typesOf( std::string_view name )
{
   std::string types;
   for ( const auto & module : Corvo::ModuleInspectData::modules() ) {
      for ( const Vok::TypeData & type : module.types() ) {
         if ( module.name() == name ) {
            types.append( type.name() ).append( " " );
         }
      }
   }
   return types;
}

TEST( StatusAttributesTest, modulesAreRegisteredWithTheirTypes )
{
   EXPECT_EQ( typesOf( "FlowTrackerStatus" ),
         "FlowTracking::CollectorStatus FlowTracking::ExporterStatus FlowTracking::PktDropReason "
         "FlowTracking::PktDropCounterUpdateResponse FlowTracking::PktDropCounterUpdateRequest "
         "FlowTracking::FtIdStatus FlowTracking::TrackerStatus FlowTracking::Status " );
   EXPECT_EQ( typesOf( "FlowTrackingConfigReq" ),
         "FlowTracking::ClearCountersReq FlowTracking::ClearFtStatisticsReq "
         "FlowTracking::ConfigReq FlowTracking::AgentReq " );
}

} // namespace
