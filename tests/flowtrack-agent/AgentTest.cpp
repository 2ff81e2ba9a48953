// What the agent and the platform do when mounts come, go, and are not there.
#include "StoreWorld.h"

#include "tests/support/DescribeTree.h"

#include <gtest/gtest.h>

namespace AgentTest {
namespace {

class AgentTest : public testing::Test {
 protected:
   void beginAll()
   {
      w.beginOperator();
      w.beginAgent();
      w.beginPlatform();
      w.settle();
   }

   StoreWorld w;
};

TEST_F( AgentTest, nothingIsWrittenBeforeAConfigurationHasCome )
{
   w.beginAgent();
   w.settle();
   EXPECT_TRUE( w.store.server->mounts().empty() );
   EXPECT_FALSE( w.agent->agent.settled() );
   w.s.config->flowTrackerConfigIs( "t" );
   w.beginOperator();
   w.settle();
   EXPECT_TRUE( w.agent->agent.settled() );
   EXPECT_TRUE( w.agent->agent.hw()->hwFtConfig( "t" ) );
}

TEST_F( AgentTest, whatIsConfiguredIsInForce )
{
   w.s.config->flowTrackerConfigIs( "t" );
   w.s.bindings->flowTrackerIntfConfigIs( Wyre::IntfId( "Ethernet1" ), "t", Ft::sampleModeAll );
   beginAll();
   EXPECT_TRUE( w.agent->agent.status()->ftStatus( "t" )->active() );
   EXPECT_EQ( w.platform->tracking.ports().size(), 1 );
   w.s.config->flowTrackerConfigDel( "t" );
   w.settle();
   EXPECT_FALSE( w.agent->agent.status()->ftStatus( "t" ) );
   EXPECT_TRUE( w.platform->tracking.ports().empty() );
}

TEST_F( AgentTest, anAgentThatComesBackGoesOnWithItsNumbers )
{
   w.s.config->flowTrackerConfigIs( "b" );
   beginAll();
   w.s.config->flowTrackerConfigIs( "a" );
   w.settle();
   const auto before = TestSupport::describeTree( *w.agent->agent.ids() );
   const auto hw = Vok::treeDigest( *w.agent->agent.hw() );
   EXPECT_EQ( w.agent->agent.ids()->ftNameToFtId( "b" ).value(), 0 );
   w.agent.reset();
   w.settle();
   w.beginAgent();
   w.settle();
   EXPECT_EQ( TestSupport::describeTree( *w.agent->agent.ids() ), before );
   EXPECT_EQ( Vok::treeDigest( *w.agent->agent.hw() ), hw );
}

TEST_F( AgentTest, aConfigurationThatIsTakenAwayIsEmpty )
{
   w.s.config->flowTrackerConfigIs( "t" );
   beginAll();
   ASSERT_TRUE( w.agent->agent.hw()->hwFtConfig( "t" ) );
   w.operator_->writings[ 0 ]->remove();
   w.operator_->writings.clear();
   w.settle();
   EXPECT_FALSE( w.agent->agent.hw()->hwFtConfig( "t" ) );
   EXPECT_TRUE( w.platform->agent.status()->hwFtStatus().empty() );
   w.beginOperator();
   w.settle();
   EXPECT_TRUE( w.agent->agent.hw()->hwFtConfig( "t" ) );
}

TEST_F( AgentTest, aStoreThatBeginsAnewTakesNothingAway )
{
   w.s.config->flowTrackerConfigIs( "t" );
   beginAll();
   const auto hw = Vok::treeDigest( *w.agent->agent.hw() );
   for ( TestClient * const client : w.clients() ) {
      client->disconnect();
   }
   w.store.restart();
   w.agent->client.connect();
   w.platform->client.connect();
   w.settle();
   EXPECT_EQ( Vok::treeDigest( *w.agent->agent.hw() ), hw );
   EXPECT_TRUE( w.platform->agent.status()->hwFtStatus( "t" ) );
}

TEST_F( AgentTest, aSecondAgentIsRefusedWithTheNameOfTheFirst )
{
   beginAll();
   AgentProcess other( w.store, w.s );
   other.client.connect();
   for ( unsigned i = 0; i != 5; ++i ) {
      other.agent.step();
      TestSupport::settle( w.store, { &w.agent->client, &other.client } );
   }
   EXPECT_NE( other.agent.refusal().find( "agent" ), std::string::npos );
   EXPECT_EQ( w.agent->agent.refusal(), "" );
}

TEST_F( AgentTest, aMountOfAnotherTypeIsToldAndNotRead )
{
   TestClient stranger( w.store, "stranger" );
   stranger.connect();
   const auto writing =
         stranger.client.write( w.paths.bindings, Ft::statusFactory( "no bindings" ) );
   TestSupport::settle( w.store, { &stranger } );
   w.s.config->flowTrackerConfigIs( "t" );
   w.operator_ = std::make_unique< Operator >( w.store, w.s, w.paths );
   w.operator_->writings.erase( w.operator_->writings.begin() + 1 );
   w.operator_->client.connect();
   w.beginAgent();
   w.settle();
   ASSERT_EQ( w.agent->agent.failures().size(), 1 );
   EXPECT_EQ( w.agent->agent.failures()[ 0 ],
         w.paths.bindings + ": its type is FlowTracking::Status" );
   EXPECT_TRUE( w.agent->agent.hw()->hwFtConfig( "t" ) );
}

// ---- Counters of dropped packets ----------------------------------------------------------------

TEST_F( AgentTest, thePlatformsCountersAnswerARequest )
{
   beginAll();
   w.platform->captured = { 1000, 7 };
   const std::uint8_t number = w.operator_->drops->readerSeqNoInc( 1 );
   w.settle();
   const auto & answer = w.agent->agent.status()->pktDropResp( Ft::kernelDrops );
   EXPECT_EQ( answer.writerSeqNo(), number );
   EXPECT_EQ( answer.pktDrops(), 7 );
   EXPECT_EQ( answer.pkts(), 1000 );
   EXPECT_EQ( w.agent->agent.status()->pktDropResp( Ft::ftFullDrops ).writerSeqNo(), number );
}

TEST_F( AgentTest, anAnswerIsNeverOlderThanItsRequest )
{
   beginAll();
   w.platform->captured = { 1000, 7 };
   w.operator_->drops->readerSeqNoInc( 1 );
   w.deliver();
   w.agent->agent.step(); // the platform has not looked yet
   EXPECT_EQ( w.agent->agent.status()->pktDropResp( Ft::kernelDrops ).writerSeqNo(), 0 );
   w.settle();
   EXPECT_EQ( w.agent->agent.status()->pktDropResp( Ft::kernelDrops ).pktDrops(), 7 );
}

TEST_F( AgentTest, withoutAPlatformWhatWasToldLastStands )
{
   beginAll();
   w.platform->captured = { 1000, 7 };
   w.operator_->drops->readerSeqNoInc( 1 );
   w.settle();
   w.platform->client.disconnect();
   w.operator_->drops->readerSeqNoInc( 1 );
   w.settle();
   const auto & answer = w.agent->agent.status()->pktDropResp( Ft::kernelDrops );
   EXPECT_EQ( answer.writerSeqNo(), 2 );
   EXPECT_EQ( answer.pktDrops(), 7 );
}

TEST_F( AgentTest, numbersGoRound )
{
   beginAll();
   for ( unsigned i = 0; i != 300; ++i ) {
      w.operator_->drops->readerSeqNoInc( 1 );
      w.settle();
      ASSERT_EQ( w.agent->agent.status()->pktDropResp( Ft::kernelDrops ).writerSeqNo(),
            ( i + 1 ) % 256 );
   }
}

TEST_F( AgentTest, statisticsAreClearedOnceForEachRequest )
{
   w.beginOperator();
   w.operator_->requests->clearFtStatisticsIs( Ft::ClearFtStatisticsReq( Vok::Seconds( 1 ) ) );
   w.beginAgent();
   w.beginPlatform();
   w.platform->captured = { 5, 1 };
   w.settle();
   EXPECT_EQ( w.platform->captured.packets, 5 ); // asked for before it began
   w.operator_->requests->clearFtStatisticsIs( Ft::ClearFtStatisticsReq( Vok::Seconds( 2 ) ) );
   w.settle();
   EXPECT_EQ( w.platform->captured.packets, 0 );
   w.platform->captured = { 6, 1 };
   w.settle();
   EXPECT_EQ( w.platform->captured.packets, 6 );
}

TEST_F( AgentTest, templatesAreAskedForOfAllExporters )
{
   w.s.config->flowTrackerConfigIs( "t" )->expConfigIs( "e" );
   beginAll();
   w.s.requests->templateExportReqInc( 1 );
   w.settle();
   EXPECT_EQ(
         w.agent->agent.hw()->hwFtConfig( "t" )->expConfig( "e" )->templateExportReq(), 1 );
}

} // namespace
} // namespace AgentTest
