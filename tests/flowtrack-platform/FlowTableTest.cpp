// Flows are counted and reported by timers; whatever comes in whatever order, nothing is lost.
#include "tools/flowtrack-platform/flows/FlowTable.h"
#include "tools/flowtrack-platform/flows/Sampler.h"

#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

using namespace FlowtrackPlatform;

Packet packetAt( Time time, std::uint32_t octets = 100, std::uint8_t tcpFlags = 0 )
{
   Packet packet;
   packet.time = time;
   packet.octets = octets;
   packet.protocol = 6;
   packet.tcpFlags = tcpFlags;
   packet.ttl = 64;
   return packet;
}

struct Report {
   std::size_t group;
   Flow flow;
};

class FlowTableTest : public testing::Test {
 protected:
   FlowTableTest() { limits( { 3000, 10000, 100, false } ); }

   void limits( const FlowLimits & limits ) { table.limitsAre( limits ); }

   std::vector< Report > reports;
   FlowTable table{ [ this ]( std::size_t group, const Flow & flow ) {
      reports.push_back( { group, flow } );
   } };
};

TEST_F( FlowTableTest, aFlowThatIsSilentIsReportedAndGone )
{
   table.add( 1, "a", packetAt( 1000, 60, 2 ) );
   table.add( 1, "a", packetAt( 1500, 1500, 16 ) );
   table.tick( 4499 );
   EXPECT_TRUE( reports.empty() );
   table.tick( 4500 );
   ASSERT_EQ( reports.size(), 1 );
   const Flow & flow = reports[ 0 ].flow;
   EXPECT_EQ( reports[ 0 ].group, 1 );
   EXPECT_EQ( flow.packets, 2 );
   EXPECT_EQ( flow.octets, 1560 );
   EXPECT_EQ( flow.start, 1000 );
   EXPECT_EQ( flow.end, 1500 );
   EXPECT_EQ( flow.tcpFlags, 18 );
   EXPECT_EQ( flow.shortest, 60 );
   EXPECT_EQ( flow.longest, 1500 );
   EXPECT_EQ( flow.reason, EndReason::idle );
   EXPECT_EQ( table.size(), 0 );
}

TEST_F( FlowTableTest, aFlowThatGoesOnIsReportedEveryInterval )
{
   for ( Time time = 0; time != 25000; time += 1000 ) {
      table.add( 0, "a", packetAt( time ) );
   }
   ASSERT_EQ( reports.size(), 2 );
   EXPECT_EQ( reports[ 0 ].flow.reason, EndReason::active );
   EXPECT_EQ( reports[ 0 ].flow.packets, 10 );
   EXPECT_EQ( reports[ 1 ].flow.packets, 10 );
   EXPECT_EQ( reports[ 1 ].flow.start, 10000 );
   EXPECT_EQ( table.size(), 1 );
}

TEST_F( FlowTableTest, withoutAnIntervalOnlySilenceEndsAFlow )
{
   limits( { 3000, 0, 100, false } );
   for ( Time time = 0; time != 100000; time += 1000 ) {
      table.add( 0, "a", packetAt( time ) );
   }
   EXPECT_TRUE( reports.empty() );
   table.tick( 102000 );
   ASSERT_EQ( reports.size(), 1 );
   EXPECT_EQ( reports[ 0 ].flow.packets, 100 );
}

TEST_F( FlowTableTest, aFlowWithoutPacketsSinceItsReportEndsInSilence )
{
   limits( { 3000, 2000, 100, false } );
   table.add( 0, "a", packetAt( 0 ) );
   table.tick( 2000 );
   EXPECT_EQ( reports.size(), 1 );
   table.tick( 9000 );
   EXPECT_EQ( reports.size(), 1 );
   EXPECT_EQ( table.size(), 0 );
}

TEST_F( FlowTableTest, aFullTableTakesNoNewFlows )
{
   limits( { 3000, 10000, 2, false } );
   EXPECT_TRUE( table.add( 0, "a", packetAt( 0 ) ) );
   EXPECT_TRUE( table.add( 0, "b", packetAt( 1 ) ) );
   EXPECT_FALSE( table.add( 0, "c", packetAt( 2 ) ) );
   EXPECT_TRUE( table.add( 0, "a", packetAt( 3 ) ) );
   table.tick( 3001 ); // b ends
   EXPECT_TRUE( table.add( 0, "c", packetAt( 3002 ) ) );
}

TEST_F( FlowTableTest, tcpEndsAFlowWhereThatIsExported )
{
   table.add( 0, "a", packetAt( 0, 100, 1 ) );
   EXPECT_TRUE( reports.empty() );
   limits( { 3000, 10000, 100, true } );
   table.add( 0, "b", packetAt( 0, 100, 4 ) );
   ASSERT_EQ( reports.size(), 1 );
   EXPECT_EQ( reports[ 0 ].flow.reason, EndReason::ended );
   EXPECT_EQ( table.size(), 1 );
}

TEST_F( FlowTableTest, theSameKeyInTwoGroupsIsTwoFlows )
{
   table.add( 0, "a", packetAt( 0 ) );
   table.add( 1, "a", packetAt( 0 ) );
   EXPECT_EQ( table.size(), 2 );
}

TEST_F( FlowTableTest, timeThatGoesBackCountsAsTheLatest )
{
   table.add( 0, "a", packetAt( 5000 ) );
   table.add( 0, "a", packetAt( 1000 ) );
   table.flush( EndReason::forced );
   ASSERT_EQ( reports.size(), 1 );
   EXPECT_EQ( reports[ 0 ].flow.start, 5000 );
   EXPECT_EQ( reports[ 0 ].flow.end, 5000 );
}

// Against a count by hand: every packet is in one report of its flow; no flow is silent in it for
// the timeout, and none is reported later than the interval.
TEST_F( FlowTableTest, randomPacketsAreAllReported )
{
   for ( std::uint64_t seed = 1; seed <= 200; ++seed ) {
      SCOPED_TRACE( "seed " + std::to_string( seed ) );
      TestSupport::Random random( seed );
      reports.clear();
      const FlowLimits some{ 1 + random.below( 50 ), random.below( 100 ), 1 + random.below( 20 ),
         false };
      limits( some );
      std::map< std::string, std::uint64_t > sent;
      std::map< std::string, std::uint64_t > reported;
      Time time = 1000 * seed * 1000;
      for ( unsigned i = 0; i != 500; ++i ) {
         time += random.below( 10 );
         const std::string key = std::to_string( random.below( 30 ) );
         Packet packet = packetAt( time );
         packet.sourcePort = static_cast< std::uint16_t >( std::stoul( key ) );
         if ( table.add( 0, key, packet ) ) {
            ++sent[ key ];
         }
         EXPECT_LE( table.size(), some.flows );
      }
      table.flush( EndReason::forced );
      for ( const Report & report : reports ) {
         reported[ std::to_string( report.flow.first.sourcePort ) ] += report.flow.packets;
         EXPECT_LE( report.flow.start, report.flow.end );
         if ( some.active != 0 ) {
            EXPECT_LE( report.flow.end - report.flow.start, some.active );
         }
      }
      EXPECT_EQ( reported, sent );
   }
}

TEST( SamplerTest, takesTheFirstOfEach )
{
   Sampler sampler;
   sampler.settingsAre( 4, 0 );
   std::string taken;
   for ( unsigned i = 0; i != 12; ++i ) {
      taken += sampler.next( 0 ) == Sampler::Verdict::taken ? '1' : '0';
   }
   EXPECT_EQ( taken, "100010001000" );
}

/// From one in ten to every packet, wherever in the ten it is: not one is passed over.
TEST( SamplerTest, aLowerRateHoldsFromTheNextPacketOn )
{
   for ( unsigned before = 0; before <= 10; ++before ) {
      Sampler sampler;
      sampler.settingsAre( 10, 0 );
      for ( unsigned i = 0; i < before; ++i ) {
         sampler.next( 0 );
      }
      sampler.settingsAre( 1, 0 );
      for ( unsigned i = 0; i < 3; ++i ) {
         EXPECT_EQ( sampler.next( 0 ), Sampler::Verdict::taken ) << before << " before, " << i;
      }
   }
}

/// The same rate once more, as whenever anything else of the configuration changed: the count goes
/// on.
TEST( SamplerTest, aRateThatStaysChangesNothing )
{
   Sampler sampler;
   std::string taken;
   for ( unsigned i = 0; i < 9; ++i ) {
      sampler.settingsAre( 4, 0 );
      taken += sampler.next( 0 ) == Sampler::Verdict::taken ? '1' : '0';
   }
   EXPECT_EQ( taken, "100010001" );
}

TEST( SamplerTest, takesNoMoreInASecondThanItMay )
{
   Sampler sampler;
   sampler.settingsAre( 1, 2 );
   EXPECT_EQ( sampler.next( 1000 ), Sampler::Verdict::taken );
   EXPECT_EQ( sampler.next( 1500 ), Sampler::Verdict::taken );
   EXPECT_EQ( sampler.next( 1999 ), Sampler::Verdict::limited );
   EXPECT_EQ( sampler.next( 2000 ), Sampler::Verdict::taken );
}

} // namespace
