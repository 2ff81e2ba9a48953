// What a change of the configuration changes in the hardware configuration: all that depends on it
// and nothing else.
#include "Switch.h"
#include "TreeRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace DeriveTest {
namespace {

using Wyre::HostAndPort;
using Wyre::IntfId;
using Wyre::IpAddr;

const char * const campus = "/hwFtConfig[campus]";
const IntfId eth1( "Ethernet1" );
const IntfId eth2( "Ethernet2" );

/// Two trackers, two exporters, three groups, two bindings.
class DeriverTest : public ::testing::Test {
 protected:
   DeriverTest()
   {
      s.config->enabledIs( true );
      const auto tracker = s.config->flowTrackerConfigIs( "campus" );
      tracker->expConfigIs( "fixed" )->collectorHostAndPortIs( HostAndPort( "192.0.2.1", 4739 ) );
      tracker->expConfigIs( "named" )->collectorHostAndPortIs( HostAndPort( "host", 4739 ) );
      tracker->fgConfigIs( "voice", 10 )->expNameIs( "fixed" );
      tracker->fgConfigIs( "web", 20 );
      s.config->flowTrackerConfigIs( "servers" )->fgConfigIs( "all", 10 );
      s.bindings->flowTrackerIntfConfigIs( eth1, "campus", Ft::sampleModeAll );
      s.bindings->flowTrackerEgressIntfConfigIs( eth2, "servers", Ft::sampleModeAll );
      s.restart();
      s.derive();
   }

   Hw::FtConfig & hwTracker() const { return *s.hw->hwFtConfig( "campus" ); }

   Switch s;
};

using Heard = std::vector< std::string >;

/// A step, and what is heard behind the path of the root or of the tracker `campus`.
struct Step {
   const char * what;
   std::function< void( Switch & s, Ft::FlowTrackerConfig & tracker ) > step;
   Heard heard;
};

const Step rootSteps[] = {
   { "sampling rate", []( auto & s, auto & ) { s.config->sampleRateIs( Ft::SampleRate( 5 ) ); },
         { "/sampleRate" } },
   { "the same again", []( auto & s, auto & ) { s.config->sampleRateIs( Ft::SampleRate( 5 ) ); },
         {} },
   { "sample limit",
         []( auto & s, auto & ) { s.config->sampleLimitIs( Ft::SampleLimit( 9 ) ); },
         { "/sampleLimit" } },
   { "default limit under a configured one",
         []( auto & s, auto & ) { s.capabilities->defaultSampleLimitIs( 7 ); }, {} },
   { "no configured limit", []( auto & s, auto & ) { s.config->sampleLimitIs( std::nullopt ); },
         { "/sampleLimit" } },
   { "encapsulation", []( auto & s, auto & ) { s.config->encapIs( Ft::encapGre ); },
         { "/encapFlags" } },
   { "no encapsulation", []( auto & s, auto & ) { s.config->encapIs( Ft::encapNone ); }, {} },
   { "filter", []( auto & s, auto & ) { s.config->filterIs( Ft::filterRpf ); },
         { "/filterTypes" } },
   { "queue pair", []( auto & s, auto & ) { s.config->ignorableRocev2QpIdIs( 17 ); },
         { "/ignorableRocev2QpId[17]" } },
   { "offload", []( auto & s, auto & ) { s.config->hwOffloadIpv4Is( true ); },
         { "/hwOffloadIpv4", "/hwOffloadIpv4StartTime" } },
   { "offload with several agents", []( auto & s, auto & ) { s.config->sftAgentCountIs( 2 ); },
         { "/hwOffloadIpv4", "/hwOffloadIpv4ConflictWithMultipleInstances",
               "/hwOffloadIpv4StartTime" } },
   { "offload of RoCEv2", []( auto & s, auto & ) { s.config->hwOffloadRocev2Is( true ); },
         { "/hwOffloadIpv4Rocev2", "/hwOffloadIpv6Rocev2" } },
   { "samples before offload: 0 counts as 1",
         []( auto & s, auto & ) { s.config->minSamplesBeforeHwOffloadIs( 0 ); }, {} },
   { "all probabilities",
         []( auto & s, auto & ) {
            s.config->packetBufferSampleProb50Is( Ft::SampleProbability( 0 ) );
            s.config->packetBufferSampleProbIs( Ft::SampleProbability( 5 ) );
         },
         { "/packetBufferSampleProb25", "/packetBufferSampleProb75",
               "/packetBufferSampleProb100" } },
   { "trap suppression by default",
         []( auto & s, auto & ) { s.capabilities->modDefaultTrapSuppressionIs( true ); },
         { "/trapSuppression" } },
   { "trap suppression off", []( auto & s, auto & ) { s.config->trapSuppressionIs( false ); },
         { "/trapSuppression" } },
   { "what hardware has nothing of", []( auto & s, auto & ) { s.config->bgpExportIs( false ); },
         {} },
};

const Step trackerSteps[] = {
   { "timeout",
         []( auto &, auto & t ) { t.inactiveTimeoutIs( Ft::InactiveTimeout( 5000 ) ); },
         { ".inactiveTimeout" } },
   { "interval", []( auto &, auto & t ) { t.activeIntervalIs( Ft::ActiveInterval( 0 ) ); },
         { ".activeInterval" } },
   { "interval out of bounds: the default",
         []( auto &, auto & t ) { t.activeIntervalIs( Ft::ActiveInterval( 5 ) ); },
         { ".activeInterval" } },
   { "congestion", []( auto &, auto & t ) { t.congestionConfigIs( "c" ); },
         { ".congestionConfig" } },
   { "its interval",
         []( auto &, auto & t ) {
            t.congestionConfig()->intervalIs( Ft::CongestionInterval( 1, 2 ) );
         },
         { "/congestionConfig.interval" } },
   { "no congestion", []( auto &, auto & t ) { t.congestionConfigDel(); },
         { ".congestionConfig" } },
   { "CPU queue", []( auto &, auto & t ) { t.monitoredCpuQueueIs( "bgp" ); },
         { ".monitoredCpuQueue[bgp]", "/monitoredCpuQueue[bgp].status" } },
   { "CPU queue known",
         []( auto & s, auto & ) { s.capabilities->monitoredCpuQueueSupportedIs( "bgp", 4 ); },
         { "/monitoredCpuQueue[bgp].cpuQueueId", "/monitoredCpuQueue[bgp].status" } },
   { "CPU queue gone", []( auto &, auto & t ) { t.monitoredCpuQueueDel( "bgp" ); },
         { ".monitoredCpuQueue[bgp]" } },
};

const Step exporterSteps[] = {
   { "DSCP",
         []( auto &, auto & t ) { t.expConfig( "fixed" )->dscpValueIs( Wyre::DscpValue( 9 ) ); },
         { "/expConfig[fixed].dscpValue" } },
   { "port",
         []( auto &, auto & t ) {
            t.expConfig( "fixed" )->collectorHostAndPortIs( HostAndPort( "192.0.2.1", 1 ) );
         },
         { "/expConfig[fixed].collectorIpAndPort[192.0.2.1]" } },
   { "another family",
         []( auto &, auto & t ) {
            t.expConfig( "fixed" )->collectorHostAndPortIs( HostAndPort( "2001:db8::1", 1 ) );
         },
         { "/expConfig[fixed].collectorIp6AndPort[2001:db8::1]",
               "/expConfig[fixed].exporter6Ready", "/expConfig[fixed].exporter6Resolved" } },
   { "an answer",
         []( auto & s, auto & ) { s.hosts().answerIs( "host", { IpAddr( "192.0.2.5" ), {} } ); },
         { "/expConfig[named].collectorIpAndPort[host]", "/expConfig[named].exporter4Ready",
               "/expConfig[named].exporter4Resolved", ".resolvedExporter[named]",
               ".waitingExporter[named]" } },
   { "another answer",
         []( auto & s, auto & ) { s.hosts().answerIs( "host", { IpAddr( "192.0.2.6" ), {} } ); },
         { "/expConfig[named].collectorIpAndPort[host]" } },
   { "the answer of another host",
         []( auto & s, auto & ) { s.hosts().answerIs( "other", { IpAddr( "192.0.2.7" ), {} } ); },
         {} },
   { "a failure", []( auto & s, auto & ) { s.hosts().answerIs( "host", {} ); },
         { "/expConfig[named].collectorIpAndPort[host]", "/expConfig[named].exporter4Ready",
               "/expConfig[named].exporter4Resolved", ".resolvedExporter[named]",
               ".waitingExporter[named]" } },
   { "local interface",
         []( auto &, auto & t ) { t.expConfig( "fixed" )->localIntfNameIs( "Loopback0" ); },
         { "/expConfig[fixed].exporter4Ready", "/expConfig[fixed].exporter6Ready",
               "/expConfig[fixed].localIntfName" } },
   { "its address",
         []( auto & s, auto & ) {
            s.interfaces().answerIs( "Loopback0", { IpAddr( "10.0.0.1" ), {} } );
         },
         { "/expConfig[fixed].exporter4Ready", "/expConfig[fixed].srcIpAddr" } },
   { "a collector on the switch",
         []( auto &, auto & t ) {
            t.expConfig( "named" )->collectorHostAndPortIs( HostAndPort( "127.0.0.1", 2055 ) );
         },
         { "/expConfig[named].collectorIpAndPort[127.0.0.1]", "/expConfig[named].exporter4Ready",
               "/expConfig[named].exporter4Resolved", ".localCollectorConfig",
               "/localCollectorConfig.destIp", "/localCollectorConfig.destPort",
               "/localCollectorConfig.expName", "/localCollectorConfig.exporterReady",
               "/localCollectorConfig.srcIp" } },
   { "templates requested", []( auto & s, auto & ) { s.requests->templateExportReqInc( 1 ); },
         { "/expConfig[fixed].templateExportReq", "/expConfig[named].templateExportReq" } },
   { "the exporter goes, and the groups that named it no longer do",
         []( auto &, auto & t ) { t.expConfigDel( "fixed" ); },
         { ".expConfig[fixed]", ".resolvedExporter[fixed]", "/hwFgConfig[100].expName[fixed]",
               "/hwFgConfig[100].genId" } },
};

const Step bindingSteps[] = {
   { "a binding",
         []( auto & s, auto & ) {
            s.bindings->flowTrackerIntfConfigIs( eth2, "campus", Ft::sampleModeAll );
         },
         { "/hwIntfFtConfig[Ethernet2]" } },
   { "a binding to nothing",
         []( auto & s, auto & ) {
            s.bindings->flowTrackerIntfConfigIs( IntfId( "Ethernet3" ), "none", Ft::sampleModeAll );
         },
         {} },
   { "another mode",
         []( auto & s, auto & ) {
            s.bindings->flowTrackerIntfConfigDel( eth2 );
            s.bindings->flowTrackerIntfConfigIs( eth2, "campus", Ft::sampleModeTargeted );
         },
         { "/hwIntfFtConfig[Ethernet2]", "/hwIntfFtConfig[Ethernet2]" } },
   { "the same binding made again",
         []( auto & s, auto & ) {
            s.bindings->flowTrackerIntfConfigDel( eth2 );
            s.bindings->flowTrackerIntfConfigIs( eth2, "campus", Ft::sampleModeTargeted );
         },
         {} },
   { "its tracker comes",
         []( auto & s, auto & ) { s.config->flowTrackerConfigIs( "none" ); },
         { "/hwFtConfig[none]", "/hwIntfFtConfig[Ethernet3]" } },
   { "its tracker goes", []( auto & s, auto & ) { s.config->flowTrackerConfigDel( "none" ); },
         { "/hwFtConfig[none]", "/hwIntfFtConfig[Ethernet3]" } },
   { "off", []( auto & s, auto & ) { s.config->enabledIs( false ); },
         { "/hwEgressIntfFtConfig[Ethernet2]", "/hwFtConfig[campus]", "/hwFtConfig[servers]",
               "/hwIntfFtConfig[Ethernet1]", "/hwIntfFtConfig[Ethernet2]" } },
};

void expectSteps( Switch & s, std::span< const Step > steps, const char * path )
{
   TreeRecorder recorder( *s.hw );
   for ( const Step & step : steps ) {
      step.step( s, *s.config->flowTrackerConfig( "campus" ) );
      s.derive();
      Heard expected = step.heard;
      for ( std::string & text : expected ) {
         text.insert( 0, path );
      }
      std::sort( expected.begin(), expected.end() );
      EXPECT_EQ( recorder.take(), expected ) << step.what;
   }
}

TEST_F( DeriverTest, whatChangesInTheRoot ) { expectSteps( s, rootSteps, "" ); }
TEST_F( DeriverTest, whatChangesInATracker ) { expectSteps( s, trackerSteps, campus ); }
TEST_F( DeriverTest, whatChangesInExporters ) { expectSteps( s, exporterSteps, campus ); }
TEST_F( DeriverTest, whatChangesInBindings ) { expectSteps( s, bindingSteps, "" ); }

TEST_F( DeriverTest, aRestartChangesNothing )
{
   s.hosts().answerIs( "host", { IpAddr( "192.0.2.5" ), {} } );
   s.derive();
   TreeRecorder recorder( *s.hw );
   TreeRecorder ids( *s.ids );
   s.restart();
   s.derive();
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( ids.take(), Heard{} );
}

TEST_F( DeriverTest, aCollectorStaysUntilItsNameIsAnsweredAgain )
{
   s.hosts().answerIs( "host", { IpAddr( "192.0.2.5" ), {} } );
   s.derive();
   s.loseAnswers();
   s.restart();
   s.derive();
   const auto exporter = hwTracker().expConfig( "named" );
   EXPECT_EQ( exporter->collectorIpAndPort( "host" ).ip(), IpAddr( "192.0.2.5" ) );
   EXPECT_TRUE( hwTracker().resolvedExporter( "named" ) );
   s.hosts().answerIs( "host", { IpAddr( "192.0.2.9" ), {} } );
   s.derive();
   EXPECT_EQ( exporter->collectorIpAndPort( "host" ).ip(), IpAddr( "192.0.2.9" ) );
}

TEST_F( DeriverTest, numbersStayWhileItIsOff )
{
   const auto number = hwTracker().ftId();
   s.config->enabledIs( false );
   s.derive();
   EXPECT_TRUE( s.hw->hwFtConfig().empty() );
   s.config->enabledIs( true );
   s.config->flowTrackerConfigIs( "a" );
   s.derive();
   EXPECT_EQ( hwTracker().ftId(), number );
   EXPECT_EQ( s.hw->hwFtConfig( "a" )->ftId().value(), 2U );
   EXPECT_EQ( s.hw->hwIntfFtConfig( eth1 )->hwFtConfig(), s.hw->hwFtConfig( "campus" ) );
}

TEST_F( DeriverTest, aTrackerThatIsMadeAgainKeepsItsNumberWithinOneDerivation )
{
   const auto number = hwTracker().ftId();
   const auto hwBefore = s.hw->hwFtConfig( "campus" );
   s.config->flowTrackerConfigDel( "campus" );
   s.config->flowTrackerConfigIs( "campus" )->mplsExportIs( true );
   s.derive();
   EXPECT_EQ( s.hw->hwFtConfig( "campus" ), hwBefore );
   EXPECT_EQ( hwTracker().ftId(), number );
   EXPECT_TRUE( hwTracker().mplsExport() );
   EXPECT_TRUE( hwTracker().hwFgConfig().empty() && hwTracker().expConfig().empty() );
   s.config->flowTrackerConfig( "campus" )->mplsExportIs( false );
   s.derive();
   EXPECT_FALSE( hwTracker().mplsExport() ) << "the new one is followed";
}

TEST_F( DeriverTest, aTrackerOfAnotherNumberIsMadeAnewWithItsBindings )
{
   const auto before = s.hw->hwFtConfig( "campus" );
   s.stop();
   s.ids->ftNameToFtIdIs( "campus", Ft::FtId( 30 ) );
   s.ids->ftIdToFtNameIs( Ft::FtId( 30 ), "campus" );
   s.restart();
   s.derive();
   EXPECT_NE( s.hw->hwFtConfig( "campus" ), before );
   EXPECT_EQ( hwTracker().ftId().value(), 30U );
   EXPECT_EQ( s.hw->hwIntfFtConfig( eth1 )->hwFtConfig(), s.hw->hwFtConfig( "campus" ) );
}

} // namespace
} // namespace DeriveTest
