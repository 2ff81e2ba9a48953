// What operators are told of trackers, exporters and collectors.
#include "Switch.h"
#include "TreeRecorder.h"

#include "tools/derive/Platform.h"
#include "tools/derive/StatusReport.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace DeriveTest {
namespace {

using Wyre::AddressFamily;
using Wyre::HostAndPort;

/// A tracker with two exporters, of which the platform takes one, with two collectors each.
class StatusReportTest : public ::testing::Test {
 protected:
   StatusReportTest()
   {
      s.config->enabledIs( true );
      tracker = s.config->flowTrackerConfigIs( "t" );
      exporter = tracker->expConfigIs( "e" );
      exporter->collectorHostAndPortIs( HostAndPort( "192.0.2.1", 1 ) );
      s.capabilities->supportedIs( true );
      s.capabilities->maxCollectorsPerExporterIs( 2 );
      s.restart();
   }

   void report()
   {
      s.derive();
      platform.report();
      reportAlone();
   }
   void reportAlone()
   {
      Derive::reportStatus( { *s.config, *s.hw, *s.capabilities, *hwStatus }, *told );
   }

   const Ft::ExporterStatus & of( const char * name ) const
   {
      return *told->ftStatus( "t" )->expStatus( name );
   }

   /// The reasons why a side of an exporter is not in service, as a word.
   unsigned why( const char * name, AddressFamily family ) const
   {
      return of( name ).inactiveReason( family ).value();
   }

   Switch s;
   Corvo::Ptr< Ft::FlowTrackerConfig > tracker;
   Corvo::Ptr< Ft::ExporterConfig > exporter;
   Corvo::Ptr< Hw::Status > hwStatus = Hw::statusFactory( "hw" );
   Derive::Platform platform{ s.hw, s.capabilities, hwStatus };
   Corvo::Ptr< Ft::Status > told = Ft::statusFactory( "told" );
};

constexpr unsigned notProcessed = 1;
constexpr unsigned maxExporters = 2;
constexpr unsigned invalidCollector = 4;
constexpr unsigned invalidLocalIntf = 16;
constexpr unsigned invalidFormat = 64;

TEST_F( StatusReportTest, allIsInService )
{
   const auto left = told->ftStatusIs( "t" )->expStatusIs( "e" );
   for ( const unsigned code : { 0U, 1U, 2U } ) {
      left->inactiveReasonIs(
            Wyre::AddressFamilyInstance( code ), Ft::ExporterInactiveReason( 1 ) );
   }
   report();
   EXPECT_TRUE( told->ftStatus( "t" )->active() );
   EXPECT_TRUE( of( "e" ).active() );
   EXPECT_TRUE( of( "e" ).inactiveReason().empty() );
   EXPECT_TRUE( of( "e" ).collectorStatus( "192.0.2.1" )->active() );
}

TEST_F( StatusReportTest, trackersAreNotProcessedOrTooMany )
{
   s.derive();
   reportAlone();
   EXPECT_EQ( told->ftStatus( "t" )->inactiveReason(), Ft::trackerNotProcessed );
   EXPECT_FALSE( told->ftStatus( "t" )->active() || of( "e" ).active() );
   s.config->flowTrackerConfigIs( "a" );
   report();
   EXPECT_TRUE( told->ftStatus( "t" )->active() );
   EXPECT_EQ( told->ftStatus( "a" )->inactiveReason(), Ft::maxTrackersLimit );
   s.config->flowTrackerConfigDel( "a" );
   report();
   EXPECT_FALSE( told->ftStatus( "a" ) );
}

TEST_F( StatusReportTest, exportersBeyondTheLimitAreNotInService )
{
   tracker->expConfigIs( "f" )->collectorHostAndPortIs( HostAndPort( "192.0.2.2", 1 ) );
   report();
   EXPECT_TRUE( of( "e" ).active() );
   EXPECT_EQ( why( "f", AddressFamily::ipv4 ), maxExporters );
   tracker->expConfig( "f" )->exportFormatIs( Ft::ExportFormat::formatSflow );
   report();
   EXPECT_EQ( why( "f", AddressFamily::ipv4 ), invalidFormat ) << "it counts by itself";
   s.capabilities->exportFormatHwSupportedIs( Ft::ExportFormat::formatSflow );
   report();
   EXPECT_TRUE( of( "f" ).active() );
}

TEST_F( StatusReportTest, aSideMayFailAlone )
{
   exporter->collectorHostAndPortIs( HostAndPort( "2001:db8::1", 1 ) );
   exporter->localIntfNameIs( "Loopback0" );
   s.interfaces().answerIs( "Loopback0", { Wyre::IpAddr( "10.0.0.1" ), {} } );
   report();
   EXPECT_TRUE( of( "e" ).active() );
   EXPECT_EQ( why( "e", AddressFamily::ipv6 ), invalidLocalIntf );
   EXPECT_FALSE( of( "e" ).inactiveReason().contains( AddressFamily::ipv4 ) );
   s.interfaces().answerIs( "Loopback0", {} );
   report();
   EXPECT_FALSE( of( "e" ).active() );
}

TEST_F( StatusReportTest, collectorsWaitOrAreTooMany )
{
   exporter->collectorHostAndPortDelAll();
   exporter->collectorHostAndPortIs( HostAndPort( "host", 1 ) );
   report();
   EXPECT_EQ( why( "e", AddressFamily::ipv4 ), invalidCollector );
   EXPECT_EQ( of( "e" ).collectorStatus( "host" )->inactiveReason(), Ft::collectorNotProcessed );
   s.hosts().answerIs( "host", { Wyre::IpAddr( "192.0.2.7" ), {} } );
   exporter->collectorHostAndPortIs( HostAndPort( "192.0.2.1", 1 ) );
   exporter->collectorHostAndPortIs( HostAndPort( "zoo", 1 ) );
   report();
   EXPECT_TRUE( of( "e" ).collectorStatus( "host" )->active() );
   EXPECT_EQ( of( "e" ).collectorStatus( "zoo" )->inactiveReason(), Ft::maxCollectorsLimit );
   exporter->collectorHostAndPortDel( "zoo" );
   report();
   EXPECT_FALSE( of( "e" ).collectorStatus( "zoo" ) );
}

TEST_F( StatusReportTest, anExporterThatIsNotDerivedYetIsNotProcessed )
{
   reportAlone();
   EXPECT_EQ( why( "e", AddressFamily::ipv6 ), notProcessed );
   tracker->expConfigDel( "e" );
   reportAlone();
   EXPECT_FALSE( told->ftStatus( "t" )->expStatus( "e" ) );
}

TEST_F( StatusReportTest, toldAgainChangesNothing )
{
   report();
   TreeRecorder recorder( *told );
   report();
   EXPECT_EQ( recorder.take(), std::vector< std::string >{} );
}

} // namespace
} // namespace DeriveTest
