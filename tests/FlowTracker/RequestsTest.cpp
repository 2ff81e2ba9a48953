// Requests of operators, as a command handler writes them and an agent hears them.
#include "tests/support/Recorder.h"
#include "tests/support/ValueForms.h"
#include "tests/support/ValueTable.h"

#include "FlowTracker/FlowTrackingConfigReq.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace FlowTracking;
using TestSupport::AttributeRow;
using TestSupport::expectForms;
using TestSupport::Heard;
using TestSupport::plain;
using TestSupport::Recorder;
using Vok::Seconds;

ClearCountersReq clearOperators( double time )
{
   return ClearCountersReq( "campus", "operators", Seconds( time ) );
}

// ---- Values -------------------------------------------------------------------------------------

TEST( ClearCountersReqTest, isAsItsTableSays )
{
   const std::vector< AttributeRow > fields = {
      { 2, "tracker", plain( "Corvo::String" ), R"("")", "campus" },
      { 3, "exporter", plain( "Corvo::String" ), R"("")", "operators" },
      { 4, "reqTime", plain( "Vok::Seconds" ), "0", "12.5" },
   };
   TestSupport::expectValue( { "FlowTracking::ClearCountersReq", fields } );
}

TEST( ClearCountersReqTest, isTrueWhereAnyFieldDiffersFromItsDefault )
{
   EXPECT_FALSE( ClearCountersReq() );
   EXPECT_FALSE( ClearCountersReq( "", "", Seconds( 0 ) ) );
   EXPECT_FALSE( ClearCountersReq( "", "", Seconds( -0.0 ) ) );
   EXPECT_TRUE( ClearCountersReq( "campus", "", Seconds( 0 ) ) );
   EXPECT_TRUE( ClearCountersReq( "", "operators", Seconds( 0 ) ) );
   EXPECT_TRUE( ClearCountersReq( "", "", Seconds( 0.001 ) ) );
   static_assert( !std::convertible_to< ClearCountersReq, bool > );
}

TEST( ClearCountersReqTest, isEqualWhereAllThreeFieldsAre )
{
   EXPECT_EQ( clearOperators( 1 ), clearOperators( 1 ) );
   EXPECT_NE( clearOperators( 1 ), clearOperators( 2 ) );
   EXPECT_NE( clearOperators( 1 ), ClearCountersReq( "edge", "operators", Seconds( 1 ) ) );
   EXPECT_NE( clearOperators( 1 ), ClearCountersReq( "campus", "archive", Seconds( 1 ) ) );
}

TEST( ClearCountersReqTest, textAndLog )
{
   expectForms( clearOperators( 1.5 ),
         "FlowTracking::ClearCountersReq[tracker=campus,exporter=operators,reqTime=1.5]",
         "00000006"
         "63616d707573"
         "00000009"
         "6f70657261746f7273"
         "3ff8000000000000" );
   expectForms( ClearCountersReq(),
         R"(FlowTracking::ClearCountersReq[tracker="",exporter="",reqTime=0])",
         "00000000"
         "00000000"
         "0000000000000000" );
}

TEST( ClearCountersReqTest, aTextWithoutItsNameItsFieldsOrTheirOrderIsRefused )
{
   const std::string head = "FlowTracking::ClearCountersReq[";
   const std::string texts[] = {
      "[tracker=a,exporter=b,reqTime=1]",
      "FlowTracking::ClearFtStatisticsReq[tracker=a,exporter=b,reqTime=1]",
      head + "exporter=b,tracker=a,reqTime=1]",
      head + "tracker=a,reqTime=1]",
      head + "tracker=a,exporter=b]",
      head + "tracker=a,exporter=b,reqTime=1",
      head + "tracker=a,exporter=b,reqTime=noon]",
   };
   for ( const std::string & text : texts ) {
      EXPECT_THROW( Corvo::strepToValue< ClearCountersReq >( text ), Corvo::ParseException )
            << text;
   }
}

TEST( ClearFtStatisticsReqTest, isAsItsTableSays )
{
   const std::vector< AttributeRow > fields = {
      { 2, "reqTime", plain( "Vok::Seconds" ), "0", "12.5" },
   };
   TestSupport::expectValue( { "FlowTracking::ClearFtStatisticsReq", fields } );
   expectForms( ClearFtStatisticsReq( Seconds( 12.5 ) ), "12.5", "4029000000000000" );
   static_assert( !std::constructible_from< bool, ClearFtStatisticsReq > );
}

// ---- Requests to the configuration's agents -----------------------------------------------------

TEST( ConfigReqTest, aFreshOneAsksNothing )
{
   const auto requests = configReqFactory( "requests" );
   EXPECT_EQ( requests->name(), "requests" );
   EXPECT_EQ( requests->nameString(), "requests" );
   EXPECT_EQ( requests->parent(), nullptr );
   EXPECT_FALSE( requests->clearCounters() );
   EXPECT_EQ( requests->clearCounters(), ClearCountersReq() );
   EXPECT_EQ( requests->clearFtStatistics(), ClearFtStatisticsReq() );
   EXPECT_EQ( ConfigReq::ConfigReqIs( "b" )->name(), "b" );
}

TEST( ConfigReqTest, theSameRequestTwiceIsHeardOnce )
{
   const auto requests = configReqFactory( "requests" );
   Recorder agent( *requests );
   requests->clearCountersIs( clearOperators( 1 ) );
   requests->clearCountersIs( clearOperators( 1 ) );
   requests->clearCountersIs( requests->clearCounters() );
   EXPECT_EQ( agent.take(),
         Heard{ R"(258 was FlowTracking::ClearCountersReq[tracker="",exporter="",reqTime=0])" } );
}

TEST( ConfigReqTest, aRepeatedRequestIsToldApartByItsTimeAlone )
{
   const auto requests = configReqFactory( "requests" );
   requests->clearCountersIs( clearOperators( 1 ) );
   Recorder agent( *requests );
   requests->clearCountersIs( clearOperators( 1.25 ) );
   EXPECT_EQ( agent.take(),
         Heard{ "258 was FlowTracking::ClearCountersReq[tracker=campus,exporter=operators,"
                "reqTime=1]" } );
   EXPECT_EQ( requests->clearCounters(), clearOperators( 1.25 ) );
}

TEST( ConfigReqTest, aLaterRequestReplacesAnEarlierOne )
{
   const auto requests = configReqFactory( "requests" );
   requests->clearCountersIs( clearOperators( 1 ) );
   Recorder agent( *requests );
   bool told = false;
   agent.then = [ & ]( const Corvo::Change & change ) {
      told = true;
      ASSERT_NE( change.oldValue< ClearCountersReq >(), nullptr );
      EXPECT_EQ( *change.oldValue< ClearCountersReq >(), clearOperators( 1 ) );
      EXPECT_FALSE( change.hasKey() );
      EXPECT_EQ( requests->clearCounters().tracker(), "edge" );
   };
   requests->clearCountersIs( ClearCountersReq( "edge", "", Seconds( 1 ) ) );
   EXPECT_TRUE( told );
   requests->clearCountersIs( ClearCountersReq( "edge", "", Seconds( 1 ) ) );
   EXPECT_EQ( agent.take().size(), 1U );
}

TEST( ConfigReqTest, statisticsAreClearedAgainAtAnotherTime )
{
   const auto requests = configReqFactory( "requests" );
   Recorder agent( *requests );
   requests->clearFtStatisticsIs( ClearFtStatisticsReq( Seconds( 0 ) ) );
   EXPECT_EQ( agent.take(), Heard{} );
   requests->clearFtStatisticsIs( ClearFtStatisticsReq( Seconds( 7 ) ) );
   requests->clearFtStatisticsIs( ClearFtStatisticsReq( Seconds( 7 ) ) );
   EXPECT_EQ( agent.take(), Heard{ "259 was 0" } );
   requests->clearFtStatisticsIs( ClearFtStatisticsReq( Seconds( 8 ) ) );
   EXPECT_EQ( agent.take(), Heard{ "259 was 7" } );
   EXPECT_FALSE( requests->clearCounters() );
}

TEST( ConfigReqTest, instantiatingGivesAFreshOneOfTheSameName )
{
   const auto requests = configReqFactory( "requests" );
   requests->clearCountersIs( clearOperators( 1 ) );
   const Corvo::Ptr< ConfigReq > fresh = requests->instantiate();
   EXPECT_NE( fresh, requests );
   EXPECT_EQ( fresh->name(), "requests" );
   EXPECT_EQ( fresh->refCount(), 1U );
   EXPECT_EQ( fresh->parent(), nullptr );
   EXPECT_FALSE( fresh->clearCounters() );
   EXPECT_EQ( requests->typeData().attribute( "instantiate" ), nullptr );
}

// ---- Requests to the agents themselves ----------------------------------------------------------

TEST( AgentReqTest, aFreshOneHasCountedNothing )
{
   const auto requests = agentReqFactory( "agents" );
   EXPECT_EQ( requests->name(), "agents" );
   EXPECT_EQ( requests->templateExportReq(), 0U );
   EXPECT_EQ( AgentReq::AgentReqIs( "b" )->name(), "b" );
}

TEST( AgentReqTest, eachRaiseIsHeardAndGivesTheNewCount )
{
   const auto requests = agentReqFactory( "agents" );
   Recorder agent( *requests );
   EXPECT_EQ( requests->templateExportReqInc( 1 ), 1U );
   EXPECT_EQ( requests->templateExportReqInc( 2 ), 3U );
   EXPECT_EQ( requests->templateExportReq(), 3U );
   EXPECT_EQ( agent.take(), ( Heard{ "258 was 0", "258 was 1" } ) );
}

TEST( AgentReqTest, raisingByNothingAndSettingTheSameAreSilent )
{
   const auto requests = agentReqFactory( "agents" );
   requests->templateExportReqIs( 5 );
   Recorder agent( *requests );
   EXPECT_EQ( requests->templateExportReqInc( 0 ), 5U );
   requests->templateExportReqIs( 5 );
   EXPECT_EQ( agent.take(), Heard{} );
   requests->templateExportReqIs( 4 );
   EXPECT_EQ( agent.take(), Heard{ "258 was 5" } );
}

TEST( AgentReqTest, behind4294967295TheCountWrapsAndIsHeard )
{
   const auto requests = agentReqFactory( "agents" );
   requests->templateExportReqIs( 4294967295 );
   Recorder agent( *requests );
   EXPECT_EQ( requests->templateExportReqInc( 1 ), 0U );
   EXPECT_EQ( agent.take(), Heard{ "258 was 4294967295" } );
   requests->templateExportReqIs( 4294967290 );
   agent.take();
   EXPECT_EQ( requests->templateExportReqInc( 10 ), 4U );
   EXPECT_EQ( agent.take(), Heard{ "258 was 4294967290" } );
}

TEST( AgentReqTest, instantiatingGivesAFreshOneOfTheSameName )
{
   const auto requests = agentReqFactory( "agents" );
   requests->templateExportReqIs( 9 );
   const Corvo::Ptr< AgentReq > fresh = requests->instantiate();
   EXPECT_NE( fresh, requests );
   EXPECT_EQ( fresh->name(), "agents" );
   EXPECT_EQ( fresh->templateExportReq(), 0U );
   EXPECT_EQ( requests->typeData().attribute( "instantiate" ), nullptr );
}

} // namespace
