// An operator, the agent, the platform and a store, each a process that may end and begin again.
#pragma once

#include "RandomSwitch.h"

#include "tests/store/World.h"
#include "tools/flowtrack-agent/Agent.h"
#include "tools/flowtrack-platform/PlatformAgent.h"

#include <memory>
#include <string>
#include <vector>

namespace AgentTest {

namespace Ft = FlowTracking;
namespace Hw = HwFlowTracking;
using TestSupport::TestClient;

/// What the trees of a switch are for, who writes them, and where.
class Operator {
 public:
   Operator( TestSupport::TestStore & store, DeriveTest::Switch & s, const Derive::Paths & paths )
         : client( store, "operator" )
   {
      const auto write = [ this ]( const std::string & path,
                               const Corvo::Ptr< Vok::Entity > & tree ) {
         writings.push_back( client.client.write( path, tree, true ) );
      };
      write( paths.config, s.config );
      write( paths.bindings, s.bindings );
      write( paths.agentRequests, s.requests );
      write( paths.dropRequest, drops );
      write( paths.configRequests, requests );
   }

   TestClient client;
   Corvo::Ptr< Ft::PktDropCounterUpdateRequest > drops =
         Ft::pktDropCounterUpdateRequestFactory( "drops" );
   Corvo::Ptr< Ft::ConfigReq > requests = Ft::configReqFactory( "requests" );
   std::vector< std::unique_ptr< Vok::Store::Writing > > writings;
};

struct AgentProcess {
   AgentProcess( TestSupport::TestStore & store, DeriveTest::Switch & s )
         : client( store, "agent" ),
           agent( { client.client, s.hosts(), s.interfaces(),
                        [ &s ] { return Corvo::Duration( s.clock ); } },
                 "sampled" )
   {
   }

   TestClient client;
   FlowtrackAgent::Agent agent;
};

class NoSender final : public FlowtrackPlatform::Sender {
 public:
   void send( std::span< const std::uint8_t > /*message*/ ) override {}
};

struct PlatformProcess {
   PlatformProcess(
         TestSupport::TestStore & store, const Corvo::Ptr< Hw::Capabilities > & capabilities )
         : client( store, "platform" ),
           agent( { client.client, capabilities, tracking, [ this ] { return captured; },
                        [ this ] { captured = {}; } },
                 "sampled" )
   {
   }

   FlowtrackPlatform::CaptureCounters captured;
   TestClient client;
   FlowtrackPlatform::Tracking tracking{
      []( const FlowtrackPlatform::DestinationPlan & ) { return std::make_unique< NoSender >(); },
      []( const std::string & ) { return 1U; }
   };
   FlowtrackPlatform::PlatformAgent agent;
};

/// All of them. What a process had for itself is lost with it; the trees of the operator and what
/// hardware is able to do stand in `s`.
class StoreWorld {
 public:
   StoreWorld()
   {
      s.config->enabledIs( true );
      s.capabilities->supportedIs( true );
      s.capabilities->flowGroupConfigSupportedIs( true );
      s.capabilities->maxTrackersIs( 3 );
   }

   void beginOperator()
   {
      operator_.reset();
      operator_ = std::make_unique< Operator >( store, s, paths );
      operator_->client.connect();
   }
   void beginAgent()
   {
      agent.reset();
      agent = std::make_unique< AgentProcess >( store, s );
      agent->client.connect();
   }
   void beginPlatform()
   {
      platform.reset();
      platform = std::make_unique< PlatformProcess >( store, s.capabilities );
      platform->client.connect();
   }

   std::vector< TestClient * > clients()
   {
      std::vector< TestClient * > all;
      if ( operator_ ) {
         all.push_back( &operator_->client );
      }
      if ( agent ) {
         all.push_back( &agent->client );
      }
      if ( platform ) {
         all.push_back( &platform->client );
      }
      return all;
   }

   /// Each does what there is to do, once.
   void step()
   {
      if ( agent ) {
         agent->agent.step();
      }
      if ( platform ) {
         platform->agent.step();
      }
   }

   /// Until nothing changes any more.
   void settle()
   {
      for ( unsigned quiet = 0; quiet != 3; ) {
         step();
         quiet = deliver() ? 0 : quiet + 1;
      }
   }

   /// All that is on its way arrives; says whether there was anything.
   bool deliver()
   {
      bool any = false;
      for ( bool moved = true; moved; any = any || moved ) {
         moved = false;
         for ( TestClient * const client : clients() ) {
            moved = deliver( *client, std::size_t( -1 ) ) || moved;
         }
      }
      return any;
   }

   /// Some bytes of one client's connection, in both directions.
   bool deliver( TestClient & client, std::size_t most )
   {
      if ( !client.connected() ) {
         return false;
      }
      client.client.flush();
      const bool out = client.toStore( most );
      store.server->publish();
      return client.toClient( most ) || out;
   }

   DeriveTest::Switch s;
   Derive::Paths paths{ "sampled" };
   TestSupport::TestStore store;
   std::unique_ptr< Operator > operator_;
   std::unique_ptr< AgentProcess > agent;
   std::unique_ptr< PlatformProcess > platform;
};

} // namespace AgentTest
