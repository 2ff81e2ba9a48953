// The status of exporters and their collectors, as an agent writes it.
#include "tests/support/Recorder.h"

#include "FlowTracker/FlowTrackerStatus.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace FlowTracking;
using TestSupport::Heard;
using TestSupport::Recorder;
using Reason = ExporterInactiveReason;
using Wyre::AddressFamily;

TEST( ExporterStatusTest, aFreshExporterIsInactiveWithoutAReason )
{
   const auto exporter = exporterStatusFactory( "operators" );
   EXPECT_EQ( exporter->name(), "operators" );
   EXPECT_EQ( exporter->nameString(), "operators" );
   EXPECT_EQ( exporter->parent(), nullptr );
   EXPECT_FALSE( exporter->active() );
   EXPECT_TRUE( exporter->inactiveReason().empty() );
   EXPECT_TRUE( exporter->collectorStatus().empty() );
   EXPECT_EQ( exporter->inactiveReason( AddressFamily::ipv4 ), Reason() );
   EXPECT_EQ( ExporterStatus::ExporterStatusIs( "archive" )->name(), "archive" );
}

TEST( ExporterStatusTest, familiesHaveReasonsOfTheirOwnAndDeletingOneLeavesTheOther )
{
   const auto exporter = exporterStatusFactory( "operators" );
   Reason vrf;
   vrf.invalidVrfIs( true );
   Reason port;
   port.waitingForUDPPortIs( true );
   exporter->inactiveReasonIs( AddressFamily::ipv4, vrf );
   exporter->inactiveReasonIs( AddressFamily::ipv6, port );
   EXPECT_EQ( exporter->inactiveReason().size(), 2U );
   EXPECT_TRUE( exporter->inactiveReason( AddressFamily::ipv4 ).invalidVrf() );
   EXPECT_TRUE( exporter->inactiveReason( AddressFamily::ipv6 ).waitingForUDPPort() );
   EXPECT_EQ( exporter->inactiveReasonDel( AddressFamily::ipv4 ), vrf );
   EXPECT_EQ( exporter->inactiveReason( AddressFamily::ipv4 ), Reason() );
   EXPECT_EQ( exporter->inactiveReason( AddressFamily::ipv6 ), port );
}

TEST( ExporterStatusTest, oneFamilyHasSeveralReasonsAtOnce )
{
   const auto exporter = exporterStatusFactory( "operators" );
   Reason reason;
   reason.invalidVrfIs( true );
   reason.invalidLocalIntfIs( true );
   reason.invalidExportFormatIs( true );
   exporter->inactiveReasonIs( AddressFamily::ipv4, reason );
   const Reason & stored = exporter->inactiveReason( AddressFamily::ipv4 );
   EXPECT_TRUE( stored.invalidVrf() && stored.invalidLocalIntf() && stored.invalidExportFormat() );
   EXPECT_FALSE( stored.exporterNotProcessed() || stored.maxExportersLimit() ||
         stored.invalidCollector() || stored.waitingForUDPPort() );
}

TEST( ExporterStatusTest, aReasonIsHeardOncePerChangeWithItsFamily )
{
   const auto exporter = exporterStatusFactory( "operators" );
   Recorder recorder( *exporter );
   exporter->inactiveReasonIs( AddressFamily::ipv4, Reason( 8 ) );
   exporter->inactiveReasonIs( AddressFamily::ipv4, Reason( 8 ) );
   EXPECT_EQ( recorder.take(), Heard{ "258[ipv4]" } );
   exporter->inactiveReasonIs( AddressFamily::ipv4, Reason( 72 ) );
   EXPECT_EQ( recorder.take(), Heard{ "258[ipv4] was 8" } );
   exporter->inactiveReasonIs( AddressFamily::ipv6, Reason( 72 ) );
   EXPECT_EQ( recorder.take(), Heard{ "258[ipv6]" } );
   EXPECT_EQ( exporter->inactiveReasonDel( AddressFamily::ipv4 ), Reason( 72 ) );
   EXPECT_EQ( recorder.take(), Heard{ "258[ipv4] was 72" } );
   EXPECT_EQ( exporter->inactiveReasonDel( AddressFamily::ipv4 ), Reason() );
   EXPECT_EQ( recorder.take(), Heard{} );
   exporter->inactiveReasonDelAll();
   EXPECT_EQ( recorder.take(), Heard{ "258[ipv6] was 72" } );
   EXPECT_TRUE( exporter->inactiveReason().empty() );
}

TEST( ExporterStatusTest, noReasonRecordedIsNotTheSameAsAReasonWithoutFlags )
{
   const auto exporter = exporterStatusFactory( "operators" );
   Recorder recorder( *exporter );
   exporter->inactiveReasonIs( AddressFamily::ipunknown, Reason() );
   EXPECT_EQ( recorder.take(), Heard{ "258[ipunknown]" } );
   EXPECT_TRUE( exporter->inactiveReason().contains( AddressFamily::ipunknown ) );
   EXPECT_FALSE( exporter->inactiveReason().contains( AddressFamily::ipv4 ) );
   EXPECT_EQ( exporter->inactiveReason( AddressFamily::ipunknown ), Reason() );
}

TEST( ExporterStatusTest, beingActiveLeavesTheReasonsAlone )
{
   const auto exporter = exporterStatusFactory( "operators" );
   exporter->inactiveReasonIs( AddressFamily::ipv4, Reason( 8 ) );
   Recorder recorder( *exporter );
   exporter->activeIs( true );
   exporter->activeIs( true );
   EXPECT_EQ( recorder.take(), Heard{ "259 was false" } );
   EXPECT_EQ( exporter->inactiveReason( AddressFamily::ipv4 ), Reason( 8 ) );
}

TEST( CollectorStatusTest, aFreshCollectorIsInactiveWithoutAKnownReason )
{
   const auto collector = collectorStatusFactory( "192.0.2.1" );
   EXPECT_EQ( collector->hostname(), "192.0.2.1" );
   EXPECT_EQ( collector->parent(), nullptr );
   EXPECT_EQ( collector->inactiveReason(), collectorInactiveReasonUnknown );
   EXPECT_FALSE( collector->active() );
   EXPECT_EQ( CollectorStatus::CollectorStatusIs( "host" )->hostname(), "host" );
}

TEST( CollectorStatusTest, itsNameIsItsHostAndItHasNoOtherName )
{
   const auto collector = collectorStatusFactory( "host" );
   EXPECT_EQ( collector->name(), "host" );
   EXPECT_EQ( collector->typeData().attribute( "nameString" ), nullptr );
   EXPECT_EQ( collector->typeData().attribute( "hostname" )->get( *collector ), "host" );
}

TEST( CollectorStatusTest, isFoundAgainUnderExactlyItsText )
{
   const auto exporter = exporterStatusFactory( "operators" );
   Recorder recorder( *exporter );
   const auto collector = exporter->collectorStatusIs( "2001:db8::1" );
   EXPECT_EQ( collector->hostname(), "2001:db8::1" );
   EXPECT_EQ( collector->parent(), exporter.get() );
   EXPECT_EQ( exporter->collectorStatusIs( "2001:db8::1" ), collector );
   EXPECT_EQ( recorder.take().size(), 1U );
   EXPECT_EQ( exporter->collectorStatus( "2001:db8::1" ), collector );
   EXPECT_EQ( exporter->collectorStatus( "2001:DB8::1" ), nullptr );
   EXPECT_EQ( exporter->collectorStatus( "2001:db8:0::1" ), nullptr );
}

TEST( CollectorStatusTest, twoTextsForOneAddressAreTwoCollectors )
{
   const auto exporter = exporterStatusFactory( "operators" );
   const auto brief = exporter->collectorStatusIs( "2001:db8::1" );
   const auto full = exporter->collectorStatusIs( "2001:db8:0:0:0:0:0:1" );
   EXPECT_NE( brief, full );
   EXPECT_EQ( exporter->collectorStatus().size(), 2U );
   brief->activeIs( true );
   EXPECT_FALSE( full->active() );
   EXPECT_EQ( exporter->collectorStatusDel( "2001:db8::1" ), brief );
   EXPECT_EQ( exporter->collectorStatus( "2001:db8:0:0:0:0:0:1" ), full );
}

TEST( CollectorStatusTest, changesAreHeardWithWhatWasBefore )
{
   const auto collector = collectorStatusFactory( "host" );
   Recorder recorder( *collector );
   collector->inactiveReasonIs( collectorInactiveReasonUnknown );
   collector->activeIs( false );
   EXPECT_EQ( recorder.take(), Heard{} );
   collector->inactiveReasonIs( maxCollectorsLimit );
   collector->activeIs( true );
   EXPECT_EQ( recorder.take(),
         ( Heard{ "259 was collectorInactiveReasonUnknown", "260 was false" } ) );
}

TEST( CollectorStatusTest, deletingIsHeardOncePerCollector )
{
   const auto exporter = exporterStatusFactory( "operators" );
   const auto a = exporter->collectorStatusIs( "a" );
   const auto b = exporter->collectorStatusIs( "b" );
   Recorder recorder( *exporter );
   EXPECT_EQ( exporter->collectorStatusDel( "c" ), nullptr );
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( exporter->collectorStatusDel( "a" ), a );
   EXPECT_EQ( recorder.take(), Heard{ "260[a] was a" } );
   EXPECT_EQ( a->parent(), nullptr );
   exporter->collectorStatusIs( "a" );
   recorder.take();
   exporter->collectorStatusDelAll();
   EXPECT_EQ( recorder.take().size(), 2U );
   EXPECT_EQ( b->parent(), nullptr );
   EXPECT_TRUE( exporter->collectorStatus().empty() );
}

} // namespace
