// Who the store is told is at the other end of a connection.
#include "tests/store/NetWorld.h"

#include <gtest/gtest.h>

#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace Vok::Store;
using TestSupport::Kind;
using TestSupport::NetWorld;
using TestSupport::RawClient;

/// Remembers who was asked for.
class Asked final : public Access {
 public:
   bool allows( const Peer & peer, Right, std::string_view ) const override
   {
      peers.push_back( peer );
      return false;
   }

   mutable std::vector< Peer > peers;
};

class PeerTest : public testing::TestWithParam< Kind > {
 protected:
   Asked asked;
   NetWorld world{ GetParam(), ServerSetup{ .access = &asked } };
};

TEST_P( PeerTest, isWhoTheTransportVouchesFor )
{
   RawClient & one = world.greeted();
   one.send( OpenReader{ 1, "a", {} } );
   ASSERT_TRUE( world.until( [ & ] { return one.refusal( 1 ).has_value(); } ) );
   ASSERT_EQ( asked.peers.size(), 1U );
   const Peer & peer = asked.peers.front();
   if ( GetParam() == Kind::unixSocket ) {
      EXPECT_EQ( peer.name,
            "pid " + std::to_string( getpid() ) + " user " + std::to_string( geteuid() ) );
      EXPECT_EQ( peer.user, geteuid() );
      std::vector< gid_t > groups( static_cast< std::size_t >( getgroups( 0, nullptr ) ) );
      ASSERT_GE( getgroups( static_cast< int >( groups.size() ), groups.data() ), 0 );
      groups.push_back( getegid() );
      EXPECT_EQ( peer.groups, groups );
   } else {
      const std::string start = GetParam() == Kind::tls ? "CN=agent 127.0.0.1:" : "127.0.0.1:";
      EXPECT_EQ( peer.name.substr( 0, start.size() ), start );
      EXPECT_NE( peer.name, start + std::to_string( world.address.port ) ) << "the client's port";
      EXPECT_FALSE( peer.user );
      EXPECT_TRUE( peer.groups.empty() );
   }
   EXPECT_EQ( peer.certificate.has_value(), GetParam() == Kind::tls );
   EXPECT_EQ( peer.certificate.value_or( "agent" ), "agent" );
}

TEST( PeerAddressTest, ofTheSixthVersionStandsInBrackets )
{
   const Asked asked;
   const SystemClock clock;
   Loop loop;
   Server server( clock, ServerSetup{ .access = &asked } );
   std::unique_ptr< Listener > listener;
   try {
      listener = std::make_unique< Listener >( loop, server, Address::parse( "tcp:[::1]:0" ) );
   } catch ( const std::system_error & e ) {
      GTEST_SKIP() << e.what();
   }
   TestSupport::Mounts mounts;
   Wire wire( "reader" );
   Client client( wire );
   const Connection connection( loop, wire, listener->address() );
   const auto reading = client.read( "a", mounts );
   ASSERT_TRUE( loop.runUntil(
         [ & ] { return !asked.peers.empty(); }, std::chrono::seconds( 20 ) ) );
   EXPECT_EQ( asked.peers.front().name.substr( 0, 6 ), "[::1]:" );
}

INSTANTIATE_TEST_SUITE_P( Kinds, PeerTest, TestSupport::eachKind, TestSupport::nameOf );

} // namespace
