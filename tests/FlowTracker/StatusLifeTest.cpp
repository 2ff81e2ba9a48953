// Life and death of whole subtrees of the status: who owns them, who keeps them, who is told.
#include "tests/FlowTracker/StatusReplica.h"
#include "tests/support/HeapMeter.h"
#include "tests/support/Recorder.h"
#include "tests/support/SpareSlabs.h"

#include "FlowTracker/FlowTrackerStatus.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace {

using namespace FlowTracking;
using Corvo::Ptr;
using FlowTrackerTest::attach;
using FlowTrackerTest::StatusReplica;
using TestSupport::Counter;
using TestSupport::Heard;
using TestSupport::Recorder;

constexpr std::size_t exporters = 2000;
constexpr std::size_t collectors = 3 * exporters;

/// How many there are of Status, TrackerStatus, ExporterStatus and CollectorStatus.
using Live = std::array< std::size_t, 4 >;

Live live()
{
   using Vok::AllocTracker;
   return { AllocTracker::liveCount( "FlowTracking::Status" ),
      AllocTracker::liveCount( "FlowTracking::TrackerStatus" ),
      AllocTracker::liveCount( "FlowTracking::ExporterStatus" ),
      AllocTracker::liveCount( "FlowTracking::CollectorStatus" ) };
}

const Live nothing = { 0, 0, 0, 0 };
const Live rootOnly = { 1, 0, 0, 0 };

/// A tracker with thousands of exporters and collectors below it.
Ptr< TrackerStatus > grow( Status & status, const char * name )
{
   const auto tracker = status.ftStatusIs( name );
   for ( std::size_t i = 0; i != exporters; ++i ) {
      const auto exporter = tracker->expStatusIs( "exporter " + std::to_string( i ) );
      exporter->inactiveReasonIs( Wyre::AddressFamily::ipv4, ExporterInactiveReason( 8 ) );
      for ( const char * host : { "192.0.2.1", "2001:db8::1", "collector.example.org" } ) {
         exporter->collectorStatusIs( host )->activeIs( true );
      }
   }
   return tracker;
}

void flip( const Ptr< TrackerStatus > & tracker )
{
   tracker->activeIs( !tracker->active() );
   for ( const auto & exporter : tracker->expStatus() ) {
      exporter->activeIs( !exporter->active() );
      for ( const auto & collector : exporter->collectorStatus() ) {
         collector->activeIs( !collector->active() );
      }
   }
}

// ---- What is deleted is freed -------------------------------------------------------------------

TEST( StatusLifeTest, deletingATrackerFreesItsExportersAndCollectors )
{
   ASSERT_EQ( live(), nothing );
   const auto status = statusFactory( "sampled" );
   TestSupport::makeSpareSlabs();
   const TestSupport::HeapMeter heap;
   grow( *status, "campus" );
   EXPECT_EQ( live(), ( Live{ 1, 1, exporters, collectors } ) );
   status->ftStatusDel( "campus" );
   EXPECT_EQ( live(), rootOnly );
   EXPECT_LT( heap.held(), heap.peak() / 10 );
}

TEST( StatusLifeTest, deletingAllTrackersFreesThemWithAndWithoutANotifiee )
{
   for ( const bool heard : { false, true } ) {
      const auto status = statusFactory( "sampled" );
      grow( *status, "campus" );
      grow( *status, "edge" );
      Recorder recorder;
      if ( heard ) {
         status->publisher().notifieeIs( &recorder );
      }
      status->ftStatusDelAll();
      EXPECT_EQ( live(), rootOnly );
      EXPECT_EQ( recorder.heard.size(), heard ? 2U : 0U );
   }
   EXPECT_EQ( live(), nothing );
}

TEST( StatusLifeTest, releasingTheRootFreesEverything )
{
   Ptr< Status > status = statusFactory( "sampled" );
   grow( *status, "campus" );
   grow( *status, "edge" );
   EXPECT_EQ( live(), ( Live{ 1, 2, 2 * exporters, 2 * collectors } ) );
   status = nullptr;
   EXPECT_EQ( live(), nothing );
}

TEST( StatusLifeTest, aWriterKeepsNothingThatLeftTheTreeNorDoesItsReader )
{
   const auto status = statusFactory( "sampled" );
   grow( *status, "campus" );
   StatusReplica replica( status );
   replica.follow();
   EXPECT_EQ( live(), ( Live{ 2, 2, 2 * exporters, 2 * collectors } ) );
   flip( status->ftStatus( "campus" ) );
   EXPECT_TRUE( replica.writer.hasChanges() );
   status->ftStatusDel( "campus" );
   EXPECT_EQ( live(), ( Live{ 2, 1, exporters, collectors } ) ); // those of the replica
   replica.follow();
   EXPECT_EQ( live(), ( Live{ 2, 0, 0, 0 } ) );
}

// ---- What is held lives on ----------------------------------------------------------------------

TEST( StatusLifeTest, aHeldTrackerKeepsAllThatIsBelowIt )
{
   const auto status = statusFactory( "sampled" );
   grow( *status, "campus" );
   Ptr< TrackerStatus > tracker = status->ftStatusDel( "campus" );
   EXPECT_EQ( tracker->parent(), nullptr );
   EXPECT_EQ( tracker->refCount(), 1U );
   EXPECT_EQ( live(), ( Live{ 1, 1, exporters, collectors } ) );
   const auto exporter = tracker->expStatus( "exporter 7" );
   EXPECT_EQ( exporter->parent(), tracker.get() );
   EXPECT_EQ( exporter->collectorStatus( "192.0.2.1" )->parent(), exporter.get() );
   tracker = nullptr;
   EXPECT_EQ( live(), ( Live{ 1, 0, 1, 3 } ) );
}

TEST( StatusLifeTest, aHeldExporterStaysAliveAndParentlessWithItsCollectors )
{
   const auto status = statusFactory( "sampled" );
   Ptr< ExporterStatus > exporter = grow( *status, "campus" )->expStatus( "exporter 7" );
   exporter->activeIs( true );
   status->ftStatusDel( "campus" );
   EXPECT_EQ( exporter->parent(), nullptr );
   EXPECT_EQ( exporter->refCount(), 1U );
   EXPECT_EQ( exporter->name(), "exporter 7" );
   EXPECT_TRUE( exporter->active() );
   EXPECT_EQ( exporter->inactiveReason( Wyre::AddressFamily::ipv4 ), ExporterInactiveReason( 8 ) );
   EXPECT_EQ( exporter->collectorStatus().size(), 3U );
   EXPECT_EQ( live(), ( Live{ 1, 0, 1, 3 } ) );
   exporter->collectorStatusDel( "192.0.2.1" );
   exporter = nullptr;
   EXPECT_EQ( live(), rootOnly );
}

TEST( StatusLifeTest, everyHeldCollectorStaysAliveAndParentless )
{
   const auto status = statusFactory( "sampled" );
   std::vector< Ptr< CollectorStatus > > held;
   for ( const auto & exporter : grow( *status, "campus" )->expStatus() ) {
      for ( const auto & collector : exporter->collectorStatus() ) {
         held.push_back( collector );
      }
   }
   status->ftStatusDel( "campus" );
   EXPECT_EQ( live(), ( Live{ 1, 0, 0, collectors } ) );
   for ( const auto & collector : held ) {
      ASSERT_EQ( collector->parent(), nullptr );
      ASSERT_EQ( collector->refCount(), 1U );
      ASSERT_TRUE( collector->active() );
      collector->activeIs( false );
   }
   held.clear();
   EXPECT_EQ( live(), rootOnly );
}

TEST( StatusLifeTest, whatIsHeldIsHeardButTravelsNoMore )
{
   const auto status = statusFactory( "sampled" );
   const auto exporter = status->ftStatusIs( "campus" )->expStatusIs( "operators" );
   StatusReplica replica( status );
   replica.follow();
   Recorder recorder( *exporter );
   status->ftStatusDel( "campus" );
   replica.follow();
   exporter->activeIs( true );
   exporter->collectorStatusIs( "host" )->activeIs( true );
   EXPECT_EQ( recorder.take(), ( Heard{ "259 was false", "260[host]" } ) );
   EXPECT_FALSE( replica.writer.hasChanges() );
   EXPECT_TRUE( replica.root->ftStatus().empty() );
}

// ---- Who is told --------------------------------------------------------------------------------

TEST( StatusLifeTest, notifieesOfDeletedEntitiesAreNeverCalledAgain )
{
   const auto status = statusFactory( "sampled" );
   Counter below;
   attach( below, *grow( *status, "campus" ) );
   Recorder root( *status );
   flip( status->ftStatus( "campus" ) );
   EXPECT_EQ( below.heard, 1 + exporters + collectors );
   below.heard = 0;
   status->ftStatusDel( "campus" );
   EXPECT_EQ( root.take(), Heard{ "258[campus] was campus" } );
   const auto again = grow( *status, "campus" );
   flip( again );
   status->ftStatusDelAll();
   EXPECT_EQ( below.heard, 0U );
   EXPECT_EQ( again->parent(), nullptr );
   attach( below, *again );
   flip( again );
   EXPECT_EQ( below.heard, 1 + exporters + collectors );
}

TEST( StatusLifeTest, notifieesOfEntitiesThatLeftAReplicaAreNeverCalledAgain )
{
   const auto status = statusFactory( "sampled" );
   grow( *status, "campus" );
   StatusReplica replica( status );
   replica.follow();
   Counter below;
   attach( below, *replica.root->ftStatus( "campus" ) );
   Recorder root( *replica.root );
   status->ftStatusDel( "campus" );
   const auto again = grow( *status, "campus" );
   replica.follow(); // deleted and made again in one batch
   EXPECT_EQ( root.take(), ( Heard{ "258[campus] was campus", "258[campus]" } ) );
   flip( again );
   replica.follow();
   EXPECT_TRUE( replica.root->ftStatus( "campus" )->active() );
   EXPECT_EQ( below.heard, 0U );
   EXPECT_EQ( live(), ( Live{ 2, 2, 2 * exporters, 2 * collectors } ) );
}

TEST( StatusLifeTest, aNotifieeMayDeleteTheTrackerThatItHearsOf )
{
   const auto status = statusFactory( "sampled" );
   grow( *status, "campus" );
   // Not held: the tracker owns it alone.
   ExporterStatus & exporter = *status->ftStatus( "campus" )->expStatus( "exporter 7" );
   Recorder recorder( exporter );
   Counter later( exporter );
   Live inside{};
   recorder.then = [ & ]( const Corvo::Change & change ) {
      status->ftStatusDel( "campus" );
      EXPECT_EQ( change.entity.parent(), nullptr );
      EXPECT_EQ( change.entity.name(), "exporter 7" );
      inside = live();
   };
   exporter.activeIs( true );
   EXPECT_EQ( inside, ( Live{ 1, 0, 1, 3 } ) ); // what is being told of lives until all are told
   EXPECT_EQ( recorder.take().size(), 1U );
   EXPECT_EQ( later.heard, 1U );
   EXPECT_EQ( live(), rootOnly );
}

} // namespace
