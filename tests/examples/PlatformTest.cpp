// What a platform takes, and what it says of trackers, groups and interfaces.
#include "Switch.h"
#include "TreeRecorder.h"

#include "tools/derive/Platform.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace DeriveTest {
namespace {

using Wyre::IntfId;

const IntfId eth1( "Ethernet1" );

/// A platform that is able to do what it is asked for: two trackers, one group, one binding.
class PlatformTest : public ::testing::Test {
 protected:
   PlatformTest()
   {
      able->supportedIs( true );
      able->maxTrackersIs( 2 );
      able->flowGroupConfigSupportedIs( true );
      able->mirroringSupportedIs( true );
      able->egressFlowTrackerIntfSupportedIs( true );
      able->subIntfSupportedIs( true );
      tracker->flowTableSizeIs( Ft::FlowTableSize( 1000 ) );
      const auto group = tracker->hwFgConfigIs( "g", 50 );
      tracker->hwFgConfigMapIs( "g", 5 );
      group->templateIdIs( Ipfix::TemplateId( 300 ) );
      hw->hwFtConfigIs( "u", Ft::FtId( 4 ) )->flowTableSizeIs( Ft::FlowTableSize( 1000 ) );
      bind( "Ethernet1" );
      platform.report();
   }

   void bind( const char * intf )
   {
      hw->hwIntfFtConfigIs( IntfId( intf ), tracker, Ft::sampleModeAll );
   }

   Hw::FgStatus & group() const { return *status->hwFtStatus( "t" )->hwFgStatus( "g" ); }

   /// What is said of an interface; "active" where flows are tracked.
   std::string ingress( const IntfId & intf )
   {
      platform.report();
      const auto said = status->hwIntfFtStatus( intf );
      return !said ? "nothing" : said->active() ? "active" + std::string( said->reason() )
                                                : std::string( said->reason() );
   }

   Corvo::Ptr< Hw::Config > hw = Hw::configFactory( "hw" );
   Corvo::Ptr< Hw::FtConfig > tracker = hw->hwFtConfigIs( "t", Ft::FtId( 7 ) );
   Corvo::Ptr< Hw::Capabilities > able = Hw::capabilitiesFactory( "c" );
   Corvo::Ptr< Hw::Status > status = Hw::statusFactory( "s" );
   Derive::Platform platform{ hw, able, status };
};

TEST_F( PlatformTest, saysWhyAnInterfaceIsNotTracked )
{
   EXPECT_EQ( ingress( eth1 ), "active" );
   able->maxTrackersIs( 1 );
   EXPECT_EQ( ingress( eth1 ), "tracker t is beyond the limit of 1" ) << "u has the lower number";
   able->maxTrackersIs( 2 );
   able->maxFlowsPerTrackerIs( 999 );
   EXPECT_EQ( ingress( eth1 ), "tracker t asks for 1000 flows, at most 999" );
   able->maxFlowsPerTrackerIs( 0 );
   able->maxFlowsIs( 1500 );
   EXPECT_EQ( ingress( eth1 ), "tracker t asks for 1000 flows, 500 are left" );
   tracker->flowTableSizeIs( Ft::FlowTableSize( 500 ) );
   EXPECT_EQ( ingress( eth1 ), "active" );
   able->supportedIs( false );
   EXPECT_EQ( ingress( eth1 ), "flow tracking is not supported" );
   EXPECT_FALSE( status->enabled() );
   able->supportedIs( true );
   hw->hwFtConfigDel( "t" );
   EXPECT_EQ( ingress( eth1 ), "tracker t has left the configuration" );
   hw->hwIntfFtConfigDel( eth1 );
   EXPECT_EQ( ingress( eth1 ), "nothing" );
}

TEST_F( PlatformTest, knowsKindsOfInterfaces )
{
   const struct {
      const char * intf;
      const char * reason;
      void ( Hw::Capabilities::*able )( bool );
   } kinds[] = {
      { "Ethernet1.5", "subinterfaces are not supported",
            &Hw::Capabilities::subIntfSupportedIs },
      { "Tunnel1", "tunnel interfaces are not supported",
            &Hw::Capabilities::tunnelIntfSupportedIs },
      { "Dps1", "interfaces of DPS are not supported", &Hw::Capabilities::dpsIntfSupportedIs },
   };
   for ( const auto & kind : kinds ) {
      bind( kind.intf );
      ( able.get()->*kind.able )( false );
      EXPECT_EQ( ingress( IntfId( kind.intf ) ), kind.reason );
      ( able.get()->*kind.able )( true );
      EXPECT_EQ( ingress( IntfId( kind.intf ) ), "active" );
   }
   hw->hwEgressIntfFtConfigIs( eth1, tracker, Ft::sampleModeAll );
   platform.report();
   EXPECT_TRUE( status->egressHwIntfFtStatus( eth1 )->active() );
   able->egressFlowTrackerIntfSupportedIs( false );
   EXPECT_EQ( ingress( eth1 ), "active" );
   EXPECT_EQ( status->egressHwIntfFtStatus( eth1 )->reason(),
         "packets that leave an interface are not tracked" );
}

TEST_F( PlatformTest, reportsGroups )
{
   EXPECT_EQ( group().seqno(), 5U ) << "that of the configuration";
   EXPECT_EQ( group().hwFgId().size(), 1U );
   EXPECT_EQ( group().genId(), 1U );
   const auto config = tracker->hwFgConfig( 50 );
   config->accessListIs( Ft::AccessList( 1, "v4", Acl::AclType::ip ) );
   config->accessListIs( Ft::AccessList( 2, "v6", Acl::AclType::ipv6 ) );
   config->mirrorConfigIs( Ft::MirrorConfig( "m", Ft::InitialCopy( 1 ),
         Ft::MirrorSelectorAlgo::sampleModeNone, Ft::MirrorIntervalFixed( 0 ),
         Ft::MirrorIntervalRandom( 0 ) ) );
   platform.report();
   EXPECT_EQ( group().hwFgId().size(), 2U );
   EXPECT_TRUE( group().mirrorStatus()->active() );
   EXPECT_EQ( group().genId(), 2U );
   config->flowDomainIs( "d" );
   platform.report();
   EXPECT_EQ( group().genId(), 2U ) << "its status is the same";
   able->mirroringSupportedIs( false );
   platform.report();
   EXPECT_FALSE( group().mirrorStatus()->active() );
   EXPECT_EQ( group().genId(), 3U );
   able->flowGroupConfigSupportedIs( false );
   platform.report();
   EXPECT_TRUE( status->hwFtStatus( "t" )->hwFgStatus().empty() );
}

TEST_F( PlatformTest, waitsForTheGeneration )
{
   tracker->hwFgConfigGenIdUpdateNeededIs( true );
   tracker->hwFgConfigIs( "h", 60 );
   tracker->inactiveTimeoutIs( Ft::InactiveTimeout( 5000 ) );
   platform.report();
   const auto to = status->hwFtStatus( "t" );
   EXPECT_EQ( to->inactiveTimeout().value(), 5000U );
   EXPECT_EQ( to->hwFgStatus().size(), 1U );
   tracker->hwFgConfigGenIdUpdateNeededIs( false );
   platform.report();
   EXPECT_EQ( to->hwFgStatus().size(), 2U );
}

TEST_F( PlatformTest, reportsTemplatesWhileTheyAreUsed )
{
   const Ipfix::TemplateId used( 300 );
   const auto said = status->templateStatus( used );
   ASSERT_TRUE( said );
   EXPECT_EQ( status->hwFtStatus( "t" )->templateStatus( used ), said );
   EXPECT_TRUE( status->hwFtStatus( "u" )->templateStatus().empty() );
   tracker->hwFgConfig( 50 )->templateIdIs( Ipfix::TemplateId( 301 ) );
   platform.report();
   EXPECT_FALSE( status->templateStatus( used ) );
   EXPECT_EQ( status->hwFtStatus( "t" )->templateStatus().size(), 1U );
   hw->hwFtConfigDel( "t" );
   platform.report();
   EXPECT_TRUE( status->templateStatus().empty() );
}

TEST_F( PlatformTest, writesWhatDependsOnAChange )
{
   using Heard = std::vector< std::string >;
   const struct {
      const char * what;
      std::function< void() > step;
      Heard heard;
   } steps[] = {
      { "sampling rate", [ & ] { hw->sampleRateIs( 5 ); }, { "/sampleRate" } },
      { "timeout",
            [ & ] { tracker->inactiveTimeoutIs( Ft::InactiveTimeout( 4000 ) ); },
            { "/hwFtStatus[t].inactiveTimeout" } },
      { "what is not reported", [ & ] { tracker->mplsExportIs( true ); }, {} },
      { "a binding", [ & ] { bind( "Ethernet2" ); }, { "/hwIntfFtStatus[Ethernet2]" } },
      { "a group's template",
            [ & ] { tracker->hwFgConfig( 50 )->templateIdIs( Ipfix::TemplateId() ); },
            { "/hwFtStatus[t].templateStatus[300]", "/hwFtStatus[t]/hwFgStatus[g].genId",
                  "/hwFtStatus[t]/hwFgStatus[g].templateId", "/templateStatus[300]" } },
      { "a tracker goes", [ & ] { hw->hwFtConfigDel( "u" ); }, { "/hwFtStatus[u]" } },
   };
   TreeRecorder recorder( *status );
   for ( const auto & step : steps ) {
      step.step();
      platform.report();
      EXPECT_EQ( recorder.take(), step.heard ) << step.what;
   }
   Derive::Platform( hw, able, status ).report();
   EXPECT_EQ( recorder.take(), Heard{} ) << "after a restart";
}

TEST_F( PlatformTest, followsATrackerThatIsMadeAgain )
{
   hw->hwFtConfigDel( "t" );
   const auto again = hw->hwFtConfigIs( "t", Ft::FtId( 9 ) );
   platform.report();
   EXPECT_TRUE( status->hwFtStatus( "t" )->hwFgStatus().empty() );
   again->inactiveTimeoutIs( Ft::InactiveTimeout( 4000 ) );
   platform.report();
   EXPECT_EQ( status->hwFtStatus( "t" )->inactiveTimeout().value(), 4000U );
}

TEST_F( PlatformTest, noTwoGroupsGetTheSameHardware )
{
   const auto copy = Hw::statusFactory( "copy" );
   const auto one = copy->hwFtStatusIs( "t" )->hwFgStatusIs( "g" );
   const auto other = copy->hwFtStatusIs( "u" )->hwFgStatusIs( "g" );
   one->hwFgIdIs( 9 );
   other->hwFgIdIs( 9 );
   hw->hwFtConfig( "u" )->hwFgConfigIs( "g", 10 );
   Derive::Platform( hw, able, copy ).report();
   EXPECT_EQ( one->hwFgId().size(), 1U );
   EXPECT_EQ( other->hwFgId().size(), 1U );
   EXPECT_NE( *one->hwFgId().begin(), *other->hwFgId().begin() );
}

} // namespace
} // namespace DeriveTest
