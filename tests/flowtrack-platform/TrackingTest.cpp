// From a hardware configuration and frames to what collectors are sent.
#include "Frames.h"
#include "IpfixDecoder.h"

#include "tools/derive/Platform.h"
#include "tools/flowtrack-platform/metering/Tracking.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

namespace {

using namespace FlowTest;
using namespace FlowtrackPlatform;
namespace Ft = FlowTracking;
namespace Hw = HwFlowTracking;

constexpr Time start = 1600000000000;

/// What is sent to the collectors of one port: each has a decoder.
class DecoderSender final : public Sender {
 public:
   DecoderSender( const DestinationPlan & to, std::map< std::uint16_t, IpfixDecoder > & decoders )
         : to_( to ),
           decoders_( decoders )
   {
   }

   void send( std::span< const std::uint8_t > message ) override
   {
      for ( const CollectorPlan & collector : to_.collectors ) {
         decoders_[ collector.port ].take( message );
      }
   }

 private:
   DestinationPlan to_;
   std::map< std::uint16_t, IpfixDecoder > & decoders_;
};

class TrackingTest : public testing::Test {
 protected:
   TrackingTest()
   {
      able->supportedIs( true );
      able->maxTrackersIs( 4 );
      able->maxExportersPerTrackerIs( 2 );
      able->maxCollectorsPerExporterIs( 2 );
      able->flowGroupConfigSupportedIs( true );
      config->sampleRateIs( 1 );
      tracker = config->hwFtConfigIs( "t", Ft::FtId( 5 ) );
      tracker->inactiveTimeoutIs( Ft::InactiveTimeout( 3000 ) );
      exporter( "e", 2055 );
      bind( "Ethernet1" );
   }

   Corvo::Ptr< Hw::ExporterConfig > exporter( const char * name, std::uint16_t port )
   {
      const auto made = tracker->expConfigIs( name );
      made->collectorIpAndPortIs(
            "c", Wyre::IpAndPort( Wyre::IpAddr( "127.0.0.1" ), port ) );
      made->exporter4ReadyIs( true );
      return made;
   }

   void bind( const char * intf, Ft::FlowTrackerSampleMode mode = Ft::sampleModeAll )
   {
      config->hwIntfFtConfigDel( Wyre::IntfId( intf ) );
      config->hwIntfFtConfigIs(
            Wyre::IntfId( intf ), Corvo::Ptr< const Hw::FtConfig >( tracker ), mode );
   }

   void follow()
   {
      platform.report();
      tracking.follow( *config, *status, *able, {} );
   }

   void frame( const Bytes & ip, Time time = start, const char * intf = "Ethernet1" )
   {
      const Bytes whole = joined( { ethernet( ( ip[ 0 ] >> 4 ) == 4 ? 0x0800 : 0x86dd ), ip } );
      tracking.frame( { intf, Direction::ingress }, 1, whole,
            static_cast< std::uint32_t >( whole.size() ), time );
   }

   /// The packets of flows that a collector was told of.
   std::uint64_t packetsAt( std::uint16_t port )
   {
      std::uint64_t sum = 0;
      for ( const Record & record : decoders[ port ].flows ) {
         sum += record.number( Ipfix::packetDeltaCount );
      }
      return sum;
   }

   std::map< std::uint16_t, IpfixDecoder > decoders;
   Corvo::Ptr< Hw::Config > config = Hw::configFactory( "config" );
   Corvo::Ptr< Hw::Capabilities > able = Hw::capabilitiesFactory( "able" );
   Corvo::Ptr< Hw::Status > status = Hw::statusFactory( "status" );
   Corvo::Ptr< Hw::FtConfig > tracker;
   Derive::Platform platform{ config, able, status };
   Tracking tracking{
      [ this ]( const DestinationPlan & to ) {
         return std::make_unique< DecoderSender >( to, decoders );
      },
      []( const std::string & ) { return 3U; }
   };
};

TEST_F( TrackingTest, aFlowIsExportedWithItsKeysAndCounters )
{
   follow();
   frame( ipv4( 6, tcp( 1024, 443, 2 ) ), start );
   frame( ipv4( 6, tcp( 1024, 443, 16 ) ), start + 20 );
   tracking.tick( start + 3020 );
   const IpfixDecoder & seen = decoders[ 2055 ];
   ASSERT_EQ( seen.flows.size(), 1 );
   const Record & flow = seen.flows[ 0 ];
   EXPECT_EQ( flow.templateId, 261 );
   EXPECT_EQ( flow.number( Ipfix::sourceIPv4Address ), 0x0a000001 );
   EXPECT_EQ( flow.number( Ipfix::destinationIPv4Address ), 0x0a000101 );
   EXPECT_EQ( flow.number( Ipfix::sourceTransportPort ), 1024 );
   EXPECT_EQ( flow.number( Ipfix::destinationTransportPort ), 443 );
   EXPECT_EQ( flow.number( Ipfix::protocolIdentifier ), 6 );
   EXPECT_EQ( flow.number( Ipfix::ipClassOfService ), 0x28 );
   EXPECT_EQ( flow.number( Ipfix::ingressInterface ), 3 );
   EXPECT_EQ( flow.number( Ipfix::egressInterface ), 0 );
   EXPECT_EQ( flow.number( Ipfix::packetDeltaCount ), 2 );
   EXPECT_EQ( flow.number( Ipfix::octetDeltaCount ), 80 );
   EXPECT_EQ( flow.number( Ipfix::tcpControlBits ), 18 );
   EXPECT_EQ( flow.number( Ipfix::flowStartMilliseconds ), start );
   EXPECT_EQ( flow.number( Ipfix::flowEndMilliseconds ), start + 20 );
   EXPECT_EQ( flow.number( Ipfix::flowEndReason ), 1 );
   EXPECT_EQ( seen.messages.back().domain, 5 );
   EXPECT_EQ( seen.messages.back().time, ( start + 3020 ) / 1000 );
}

TEST_F( TrackingTest, collectorsAreToldOfSamplingAndNames )
{
   config->sampleRateIs( 100 );
   follow();
   tracking.tick( start );
   std::map< std::uint16_t, Record > options;
   for ( const Record & record : decoders[ 2055 ].options ) {
      options[ record.templateId ] = record;
   }
   EXPECT_EQ( options.at( 281 ).number( Ipfix::selectorAlgorithm ), 1 );
   EXPECT_EQ( options.at( 281 ).number( Ipfix::samplingPacketInterval ), 1 );
   EXPECT_EQ( options.at( 281 ).number( Ipfix::samplingPacketSpace ), 99 );
   EXPECT_EQ( options.at( 282 ).number( Ipfix::samplingInterval ), 100 );
   EXPECT_EQ( options.at( 259 ).fields.at( Ipfix::observationDomainName ), Bytes( { 't' } ) );
   EXPECT_EQ( options.at( 257 ).number( Ipfix::ingressInterface ), 3 );
   EXPECT_EQ( options.at( 257 ).fields.at( Ipfix::interfaceName ).size(), 9 );
}

TEST_F( TrackingTest, oneOfSoManyPacketsIsCounted )
{
   config->sampleRateIs( 10 );
   follow();
   for ( unsigned i = 0; i != 95; ++i ) {
      frame( ipv4( 17, udp( 1, 2 ) ), start + i );
   }
   tracking.end( start + 100 );
   EXPECT_EQ( packetsAt( 2055 ), 10 );
}

TEST_F( TrackingTest, whatWasCountedByOneRateIsToldWithIt )
{
   follow();
   frame( ipv4( 17, udp( 1, 2 ) ) );
   config->sampleRateIs( 10 );
   follow();
   EXPECT_EQ( packetsAt( 2055 ), 1 );
   EXPECT_EQ( decoders[ 2055 ].options[ 1 ].number( Ipfix::samplingInterval ), 1 );
   tracking.tick( start + 1 );
   EXPECT_EQ( decoders[ 2055 ].options.back().templateId, 257 );
   EXPECT_EQ( decoders[ 2055 ].options[ 5 ].number( Ipfix::samplingInterval ), 10 );
}

TEST_F( TrackingTest, templatesAreSentAgainWhenTheyAreDueAndWhenTheyAreAskedFor )
{
   tracker->expConfig( "e" )->templateIntervalIs( Ft::TemplateInterval( 5000 ) );
   follow();
   tracking.tick( start );
   const unsigned once = decoders[ 2055 ].templateRecords;
   tracking.tick( start + 4999 );
   EXPECT_EQ( decoders[ 2055 ].templateRecords, once );
   tracking.tick( start + 5000 );
   EXPECT_EQ( decoders[ 2055 ].templateRecords, 2 * once );
   tracker->expConfig( "e" )->templateExportReqInc( 1 );
   follow();
   tracking.tick( start + 5001 );
   EXPECT_EQ( decoders[ 2055 ].templateRecords, 3 * once );
}

TEST_F( TrackingTest, groupsSelectInOrderAndNameTheirExporters )
{
   exporter( "f", 2056 );
   const auto first = tracker->hwFgConfigIs( "six", 10 );
   Ft::EncapFlags flags;
   flags.ipv6Is( true );
   first->encapFlagsIs( flags );
   first->expNameIs( "e" );
   const auto second = tracker->hwFgConfigIs( "rest", 20 );
   second->expNameIs( "f" );
   follow();
   frame( ipv6( 17, udp( 1, 2 ) ) );
   frame( ipv4( 17, udp( 1, 2 ) ) );
   frame( ipv4( 17, udp( 1, 2 ) ) );
   tracking.end( start );
   EXPECT_EQ( packetsAt( 2055 ), 1 );
   EXPECT_EQ( packetsAt( 2056 ), 2 );
   EXPECT_EQ( decoders[ 2055 ].flows[ 0 ].templateId, 262 );
}

TEST_F( TrackingTest, theParametersOfAGroupAreItsFieldsAndKeys )
{
   const auto group = tracker->hwFgConfigIs( "byHost", 10 );
   group->expNameIs( "e" );
   group->flowParamIs( Ft::FlowParam( 1, Ipfix::sourceIPv4Address, true ) );
   group->flowParamIs( Ft::FlowParam( 2, Ipfix::packetDeltaCount, false ) );
   group->flowParamIs( Ft::FlowParam( 3, Ipfix::destinationTransportPort, false ) );
   group->flowParamIs( Ft::FlowParam( 4, Ipfix::bgpCommunity, false ) );
   follow();
   ASSERT_EQ( tracking.complaints().size(), 1 );
   EXPECT_EQ( tracking.complaints()[ 0 ],
         "tracker t, group byHost: element bgpCommunity is not exported" );
   frame( ipv4( 17, udp( 1, 2 ), 1 ) );
   frame( ipv4( 17, udp( 1, 3 ), 1 ) );
   frame( ipv4( 17, udp( 1, 4 ), 2 ) );
   frame( ipv6( 17, udp( 1, 4 ) ) ); // has no such address
   tracking.end( start );
   ASSERT_EQ( decoders[ 2055 ].flows.size(), 2 );
   EXPECT_EQ( decoders[ 2055 ].templates.at( 283 ).fields.size(), 3 );
   EXPECT_EQ( packetsAt( 2055 ), 3 );
   for ( const Record & flow : decoders[ 2055 ].flows ) {
      const bool one = flow.number( Ipfix::sourceIPv4Address ) == 0x0a000001;
      EXPECT_EQ( flow.number( Ipfix::packetDeltaCount ), one ? 2 : 1 );
      EXPECT_EQ( flow.number( Ipfix::destinationTransportPort ), one ? 2 : 4 );
   }
}

TEST_F( TrackingTest, aBuiltInGroupOfHardwareIsForOneKindOfPacket )
{
   const auto group = tracker->hwFgConfigIs( "IPv6", 10 );
   group->templateIdIs( Ft::Constants::reservedTemplateId( Ft::dataTemplateHwIpv6 ) );
   group->expNameIs( "e" );
   const auto other = tracker->hwFgConfigIs( "other", 20 );
   other->templateIdIs( Ipfix::TemplateId( 300 ) ); // is nobody's: a kind of packet has its own
   other->expNameIs( "e" );
   follow();
   frame( ipv6( 17, udp( 1, 2 ) ) );
   frame( ipv4( 17, udp( 1, 2 ) ) );
   tracking.end( start );
   ASSERT_EQ( decoders[ 2055 ].flows.size(), 2 );
   EXPECT_EQ( decoders[ 2055 ].flows[ 0 ].templateId, 32769 );
   EXPECT_EQ( decoders[ 2055 ].flows[ 1 ].templateId, 261 );
}

TEST_F( TrackingTest, groupsStayWhileTheirGenerationHasStillToBeRaised )
{
   follow();
   const auto group = tracker->hwFgConfigIs( "none", 10 );
   tracker->hwFgConfigGenIdUpdateNeededIs( true );
   follow();
   frame( ipv4( 17, udp( 1, 2 ) ) );
   tracking.end( start );
   EXPECT_EQ( packetsAt( 2055 ), 1 );
   tracker->hwFgConfigGenIdUpdateNeededIs( false );
   follow();
   frame( ipv4( 17, udp( 1, 2 ) ) );
   tracking.end( start );
   EXPECT_EQ( packetsAt( 2055 ), 1 );
}

TEST_F( TrackingTest, insideVxlanWhereFlowsAreLookedForThere )
{
   Ft::EncapFlags flags;
   flags.ipv4Is( true );
   flags.vxlanIs( true );
   config->encapFlagsIs( flags );
   follow();
   const Bytes inside = joined( { ethernet( 0x0800 ), ipv4( 6, tcp( 80, 81, 2 ) ) } );
   frame( ipv4( 17, udp( 5, 4789, vxlan( inside ) ) ) );
   tracking.end( start );
   ASSERT_EQ( decoders[ 2055 ].flows.size(), 1 );
   EXPECT_EQ( decoders[ 2055 ].flows[ 0 ].templateId, 265 );
   EXPECT_EQ( decoders[ 2055 ].flows[ 0 ].number( Ipfix::sourceTransportPort ), 80 );
   EXPECT_EQ(
         decoders[ 2055 ].flows[ 0 ].number( Ipfix::layer2SegmentId ), 0x0100000000010203 );
}

TEST_F( TrackingTest, ignoredQueuePairsAreNotCounted )
{
   config->ignorableRocev2QpIdIs( 0x1234 );
   follow();
   frame( ipv4( 17, udp( 9, 4791, { 4, 0, 0xff, 0xff, 0, 0, 0x12, 0x34, 0, 0, 0, 1 } ) ) );
   frame( ipv4( 17, udp( 9, 4791, { 4, 0, 0xff, 0xff, 0, 0, 0x12, 0x35, 0, 0, 0, 1 } ) ) );
   tracking.end( start );
   EXPECT_EQ( packetsAt( 2055 ), 1 );
}

TEST_F( TrackingTest, whereAFilterSelectsItComesBeforeSampling )
{
   config->sampleRateIs( 2 );
   Ft::EncapFlags flags;
   flags.ipv6Is( true );
   config->encapFlagsIs( flags );
   bind( "Ethernet1", Ft::sampleModeFiltered );
   bind( "Ethernet2" );
   follow();
   for ( unsigned i = 0; i != 4; ++i ) {
      for ( const char * const intf : { "Ethernet1", "Ethernet2" } ) {
         frame( ipv4( 17, udp( 1, 2 ) ), start, intf );
         frame( ipv6( 17, udp( 1, 2 ) ), start, intf );
      }
   }
   tracking.end( start );
   EXPECT_EQ( packetsAt( 2055 ), 2 ); // of the first: of the second only those of IPv4 were sampled
}

TEST_F( TrackingTest, aFullTableIsCounted )
{
   tracker->flowTableSizeIs( Ft::FlowTableSize( 1 ) );
   follow();
   frame( ipv4( 17, udp( 1, 2 ) ) );
   frame( ipv4( 17, udp( 1, 3 ) ) );
   EXPECT_EQ( tracking.counters().packets, 2 );
   EXPECT_EQ( tracking.counters().tableFull, 1 );
   tracking.clearCounters( "t" );
   EXPECT_EQ( tracking.counters().packets, 0 );
}

TEST_F( TrackingTest, whatHardwareDoesNotTakeIsNotTracked )
{
   able->maxExportersPerTrackerIs( 1 );
   exporter( "f", 2056 );
   bind( "Ethernet1.7" );
   follow();
   EXPECT_EQ( tracking.ports().size(), 1 ); // no subinterfaces
   frame( ipv4( 17, udp( 1, 2 ) ) );
   frame( ipv4( 17, udp( 1, 2 ) ), start, "Ethernet1.7" );
   tracking.end( start );
   EXPECT_EQ( packetsAt( 2055 ), 1 );
   EXPECT_EQ( packetsAt( 2056 ), 0 );
   able->supportedIs( false );
   follow();
   EXPECT_TRUE( tracking.ports().empty() );
}

TEST_F( TrackingTest, aPortInTroubleIsInactiveAndStillWanted )
{
   platform.troubleIs( Wyre::IntfId( "Ethernet1" ), "it is not there" );
   platform.report();
   tracking.follow( *config, *status, *able, { { "Ethernet1", "it is not there" } } );
   const auto said = status->hwIntfFtStatus( Wyre::IntfId( "Ethernet1" ) );
   EXPECT_FALSE( said->active() );
   EXPECT_EQ( said->reason(), "it is not there" );
   EXPECT_EQ( tracking.ports().size(), 1 );
   platform.troubleIs( Wyre::IntfId( "Ethernet1" ), "" );
   follow();
   EXPECT_TRUE( status->hwIntfFtStatus( Wyre::IntfId( "Ethernet1" ) )->active() );
}

TEST_F( TrackingTest, messagesFitInTheMtu )
{
   tracker->expConfig( "e" )->ipfixMtuIs( Ft::IpfixMtu( 512 ) );
   follow();
   for ( unsigned i = 0; i != 200; ++i ) {
      frame( ipv4( 17, udp( i, 2 ) ) );
   }
   tracking.end( start );
   EXPECT_EQ( packetsAt( 2055 ), 200 );
   for ( const auto & message : decoders[ 2055 ].messages ) {
      EXPECT_LE( message.bytes, 512 - 48 );
   }
}

} // namespace
