// Headers of frames; and of frames that are cut short or damaged, nothing that is not there.
#include "Frames.h"

#include "tools/flowtrack-platform/flows/Packet.h"

#include "tests/support/Random.h"

#include <gtest/gtest.h>

namespace {

using namespace FlowTest;
using namespace FlowtrackPlatform;
using Encapsulation = Packet::Encapsulation;

constexpr int linkEthernet = 1;

Packet decoded( const Bytes & frame, const DecodeOptions & options = {}, int link = linkEthernet )
{
   const auto packet =
         decode( link, frame, static_cast< std::uint32_t >( frame.size() ), options );
   EXPECT_TRUE( packet );
   return packet.value_or( Packet() );
}

std::array< std::uint8_t, 16 > address( std::initializer_list< std::uint8_t > bytes )
{
   std::array< std::uint8_t, 16 > all{};
   std::copy( bytes.begin(), bytes.end(), all.begin() );
   return all;
}

TEST( DecodeTest, ipv4AndTcp )
{
   const Packet packet =
         decoded( joined( { ethernet( 0x0800 ), ipv4( 6, tcp( 1024, 443, 0x12 ) ) } ) );
   EXPECT_EQ( packet.version, 4 );
   EXPECT_EQ( packet.source, address( { 10, 0, 0, 1 } ) );
   EXPECT_EQ( packet.destination, address( { 10, 0, 1, 1 } ) );
   EXPECT_EQ( packet.octets, 40 );
   EXPECT_EQ( packet.protocol, 6 );
   EXPECT_EQ( packet.trafficClass, 0x28 );
   EXPECT_EQ( packet.ttl, 63 );
   EXPECT_EQ( packet.fragment, 0x1234 );
   EXPECT_EQ( packet.sourcePort, 1024 );
   EXPECT_EQ( packet.destinationPort, 443 );
   EXPECT_EQ( packet.tcpFlags, 0x12 );
   EXPECT_EQ( packet.sourceMac[ 5 ], 8 );
   EXPECT_EQ( packet.destinationMac[ 5 ], 9 );
}

TEST( DecodeTest, ipv6BehindTwoTags )
{
   const Packet packet = decoded( joined( { ethernet( 0x88a8 ), Bytes{ 0, 7, 0x81, 0 },
         Bytes{ 0x20, 9, 0x86, 0xdd }, ipv6( 17, udp( 53, 5353 ) ) } ) );
   EXPECT_EQ( packet.vlan, 9 );
   EXPECT_EQ( packet.version, 6 );
   EXPECT_EQ( packet.octets, 48 );
   EXPECT_EQ( packet.trafficClass, 0x28 );
   EXPECT_EQ( packet.flowLabel, 0x12345 );
   EXPECT_EQ( packet.ttl, 61 );
   EXPECT_EQ( packet.source[ 15 ], 1 );
   EXPECT_EQ( packet.destination[ 15 ], 2 );
   EXPECT_EQ( packet.sourcePort, 53 );
   EXPECT_EQ( packet.destinationPort, 5353 );
}

TEST( DecodeTest, extensionHeadersAreSkipped )
{
   const Bytes hopByHop = { 44, 0, 1, 4, 0, 0, 0, 0 };
   const Bytes fragment = { 58, 0, 0, 0, 0, 0, 0, 99 };
   const Packet packet = decoded( joined(
         { ethernet( 0x86dd ), ipv6( 0, joined( { hopByHop, fragment, Bytes{ 128, 3 } } ) ) } ) );
   EXPECT_EQ( packet.protocol, 58 );
   EXPECT_EQ( packet.fragment, 99 );
   EXPECT_EQ( packet.icmp, 0x8003 );
}

TEST( DecodeTest, laterFragmentsHaveNoPorts )
{
   Bytes packet = ipv4( 17, udp( 1, 2 ) );
   packet[ 7 ] = 3;
   const Packet seen = decoded( joined( { ethernet( 0x0800 ), packet } ) );
   EXPECT_EQ( seen.fragmentOffset, 3 );
   EXPECT_EQ( seen.sourcePort, 0 );
}

TEST( DecodeTest, vxlanIsLookedIntoWhereItIsAskedFor )
{
   const Bytes inside = joined( { ethernet( 0x86dd ), ipv6( 6, tcp( 80, 81, 2 ) ) } );
   const Bytes frame =
         joined( { ethernet( 0x0800 ), ipv4( 17, udp( 5, 4789, vxlan( inside ) ) ) } );
   const Packet outer = decoded( frame );
   EXPECT_EQ( outer.version, 4 );
   EXPECT_EQ( outer.destinationPort, 4789 );
   const Packet inner = decoded( frame, { false, true } );
   EXPECT_EQ( inner.encapsulation, Encapsulation::vxlan );
   EXPECT_EQ( inner.vni, 0x010203 );
   EXPECT_EQ( inner.version, 6 );
   EXPECT_EQ( inner.octets, 60 );
   EXPECT_EQ( inner.sourcePort, 80 );
}

TEST( DecodeTest, labelsAreReadWhereTheyAreAskedFor )
{
   const Bytes frame = joined( { ethernet( 0x8847 ), Bytes{ 0, 1, 0x60, 64 },
         Bytes{ 0, 2, 0x61, 64 }, ipv4( 17, udp( 1, 2 ) ) } );
   EXPECT_EQ( decoded( frame ).version, 0 );
   const Packet packet = decoded( frame, { true, false } );
   EXPECT_EQ( packet.encapsulation, Encapsulation::mpls );
   EXPECT_EQ( packet.label, 0x000160 );
   EXPECT_EQ( packet.version, 4 );
   EXPECT_EQ( packet.destinationPort, 2 );
}

TEST( DecodeTest, queuePairsOfRoceAreRead )
{
   const Bytes header = { 4, 0, 0xff, 0xff, 0, 0, 0x12, 0x34, 0, 0, 0, 1 };
   const Packet packet =
         decoded( joined( { ethernet( 0x0800 ), ipv4( 17, udp( 9, 4791, header ) ) } ) );
   EXPECT_EQ( packet.queuePair, 0x1234 );
}

TEST( DecodeTest, otherLinks )
{
   const Bytes packet = ipv4( 17, udp( 1, 2 ) );
   Bytes cooked( 14 );
   append( cooked, Bytes{ 8, 0 } );
   Bytes cooked2 = { 8, 0 };
   cooked2.resize( 20 );
   EXPECT_EQ( decoded( packet, {}, 101 ).destinationPort, 2 );
   EXPECT_EQ( decoded( joined( { cooked, packet } ), {}, 113 ).destinationPort, 2 );
   EXPECT_EQ( decoded( joined( { cooked2, packet } ), {}, 276 ).destinationPort, 2 );
   EXPECT_FALSE( decode( 105, packet, 28, {} ) );
   EXPECT_FALSE( decode( linkEthernet, Bytes( 13 ), 13, {} ) );
}

// What was cut off reads as 0; sanitizers see to it that nothing is read behind the end.
TEST( DecodeTest, anyBytesAreRead )
{
   TestSupport::Random random( 1 );
   const Bytes inside = joined( { ethernet( 0x86dd ), ipv6( 0, tcp( 80, 81, 2 ) ) } );
   const Bytes whole = joined( { ethernet( 0x8847 ), Bytes{ 0, 1, 0x61, 64 },
         ipv4( 17, udp( 5, 4789, vxlan( inside ) ) ) } );
   for ( unsigned i = 0; i != 50000; ++i ) {
      Bytes frame( whole.begin(),
            whole.begin() + static_cast< std::ptrdiff_t >( 14 + random.below( 86 ) ) );
      for ( std::uint32_t damages = random.below( 4 ); damages != 0; --damages ) {
         frame[ random.below( static_cast< std::uint32_t >( frame.size() ) ) ] =
               static_cast< std::uint8_t >( random.word() );
      }
      const auto packet = decode( linkEthernet, frame, 2000, { true, true } );
      ASSERT_TRUE( packet );
      EXPECT_TRUE( packet->version == 0 || packet->version == 4 || packet->version == 6 );
   }
}

} // namespace
