// Whatever changes, in whatever order it arrives, whoever is killed when: in the end the hardware
// configuration, the platform's status and the operators' status are what one derivation from
// nothing gives.
#include "StoreWorld.h"

#include "Vok/detail/Hash.h"
#include "tests/support/DescribeTree.h"
#include "tools/derive/History.h"
#include "tools/derive/StatusReport.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

namespace AgentTest {
namespace {

using TestSupport::Random;

class Life {
 public:
   explicit Life( std::uint64_t seed ) : random_( seed ) {}

   void run()
   {
      w_.beginOperator();
      w_.beginAgent();
      w_.beginPlatform();
      for ( unsigned step = 0; step != 60 && !testing::Test::HasFailure(); ++step ) {
         one();
         expectNumbers();
      }
      changes_.finish();
      everybodyComes();
      w_.settle();
      changes_.answerAll();
      w_.settle();
      expectAsFromNothing();
   }

 private:
   void one()
   {
      switch ( random_.below( 12 ) ) {
      case 0:
         return kill();
      case 1:
         return loseConnection();
      case 2:
         return settle();
      case 3:
      case 4:
      case 5:
         return changes_.changes( 1 + random_.below( 4 ) );
      case 6:
         return w_.step();
      default:
         return deliverSome();
      }
   }

   void settle()
   {
      w_.settle();
      if ( w_.agent && w_.agent->client.connected() && w_.operator_->client.connected() ) {
         fresh_.clear();
      }
   }

   void deliverSome()
   {
      const auto clients = w_.clients();
      if ( !clients.empty() ) {
         TestClient & client =
               *clients[ random_.below( static_cast< std::uint32_t >( clients.size() ) ) ];
         w_.deliver( client, 1 + random_.below( 2000 ) );
      }
   }

   void loseConnection()
   {
      for ( TestClient * const client : w_.clients() ) {
         if ( random_.oneIn( 2 ) ) {
            if ( client->connected() ) {
               client->disconnect();
            } else {
               client->connect();
            }
         }
      }
   }

   /// A process ends, and begins again at once or later. The store loses all that it had, but then
   /// the others live: who lost everything knows nothing of what was before.
   void kill()
   {
      switch ( random_.below( 4 ) ) {
      case 0:
         w_.agent.reset();
         if ( random_.oneIn( 2 ) ) {
            w_.s.loseAnswers();
         }
         if ( !random_.oneIn( 3 ) ) {
            w_.beginAgent();
         }
         return;
      case 1:
         w_.platform.reset();
         if ( !random_.oneIn( 3 ) ) {
            w_.beginPlatform();
         }
         return;
      case 2:
         return w_.beginOperator();
      default:
         if ( w_.agent && w_.agent->agent.ids() ) {
            restartStore();
         }
      }
   }

   void restartStore()
   {
      for ( TestClient * const client : w_.clients() ) {
         if ( client->connected() ) {
            client->disconnect();
         }
      }
      w_.store.restart();
      for ( TestClient * const client : w_.clients() ) {
         client->connect();
      }
      w_.settle(); // or the agent, killed now, loses its numbers with the store
   }

   void everybodyComes()
   {
      for ( TestClient * const client : w_.clients() ) {
         if ( !client->connected() ) {
            client->connect();
         }
      }
      if ( !w_.agent ) {
         w_.beginAgent();
      }
      if ( !w_.platform ) {
         w_.beginPlatform();
      }
   }

   /// What the store has shown of numbers stays so, as long as a tracker is configured. Of one that
   /// was made again the agent may still show the number that the one before had.
   void expectNumbers()
   {
      for ( const auto & tracker : w_.s.config->flowTrackerConfig() ) {
         if ( Corvo::Ptr< Ft::FlowTrackerConfig > & known = configured_[ tracker->name() ];
               known != tracker ) {
            known = tracker;
            fresh_.emplace( tracker->name().view() );
         }
      }
      if ( !w_.agent || !w_.agent->agent.ids() || !w_.agent->agent.settled() ) {
         return;
      }
      std::map< std::string, std::uint32_t > now;
      for ( const auto & [ name, id ] : w_.agent->agent.ids()->ftNameToFtId() ) {
         now.emplace( name, id.value() );
      }
      for ( const auto & [ name, tracker ] : seen_ ) {
         const auto still = w_.s.config->flowTrackerConfig( name );
         if ( const auto found = now.find( name ); found != now.end() && still == tracker.entity ) {
            EXPECT_EQ( found->second, tracker.number ) << name;
         }
      }
      seen_.clear();
      for ( const auto & [ name, number ] : now ) {
         const auto entity = w_.s.config->flowTrackerConfig( name );
         if ( entity && !fresh_.contains( name ) ) {
            seen_[ name ] = { entity, number };
         }
      }
   }

   void expectAsFromNothing()
   {
      const auto & agent = w_.agent->agent;
      ASSERT_TRUE( agent.settled() );
      ASSERT_TRUE( w_.platform->agent.settled() );
      const auto hw = Hw::configFactory( "scratch" );
      const auto ids = Ft::ftIdStatusFactory( "scratch" );
      DeriveTest::copyTree( agent.ids(), ids );
      Derive::Deriver( w_.s.sources(), hw, ids ).derive();
      Derive::takeHistory( *agent.hw(), *hw );
      EXPECT_EQ( TestSupport::describeTree( *agent.hw() ), TestSupport::describeTree( *hw ) );
      EXPECT_EQ( Vok::treeDigest( *agent.ids() ), Vok::treeDigest( *ids ) );
      const auto inStore = w_.store.server->tree( w_.paths.hwConfig );
      ASSERT_TRUE( inStore );
      EXPECT_EQ( inStore->digest, Vok::treeDigest( *agent.hw() ) );
      const auto status = Hw::statusFactory( "scratch" );
      Derive::Platform( hw, w_.s.capabilities, status ).report();
      takeHardwareGroups( *status );
      EXPECT_EQ( TestSupport::describeTree( *w_.platform->agent.status() ),
            TestSupport::describeTree( *status ) );
      const auto told = Ft::statusFactory( "scratch" );
      Derive::reportStatus( { *w_.s.config, *hw, *w_.s.capabilities, *status }, *told );
      for ( const auto & [ reason, answer ] : agent.status()->pktDropResp() ) {
         told->pktDropRespIs( answer );
      }
      EXPECT_EQ( TestSupport::describeTree( *agent.status() ), TestSupport::describeTree( *told ) );
   }

   /// Which groups of the hardware are occupied depends on what was before, but not how many.
   void takeHardwareGroups( Hw::Status & to ) const
   {
      for ( const auto & tracker : to.hwFtStatus() ) {
         const auto was = w_.platform->agent.status()->hwFtStatus( tracker->name() );
         for ( const auto & group : tracker->hwFgStatus() ) {
            const auto before = was ? was->hwFgStatus( group->fgName() ) : nullptr;
            if ( before && before->hwFgId().size() == group->hwFgId().size() ) {
               group->genIdIs( before->genId() );
               group->hwFgIdDelAll();
               for ( const std::uint16_t id : before->hwFgId() ) {
                  group->hwFgIdIs( id );
               }
            }
         }
      }
   }

   struct Seen {
      Corvo::Ptr< Ft::FlowTrackerConfig > entity;
      std::uint32_t number = 0;
   };

   Random random_;
   StoreWorld w_;
   DeriveTest::RandomSwitch changes_{ w_.s, random_ };
   std::map< std::string, Seen > seen_;
   std::map< Corvo::String, Corvo::Ptr< Ft::FlowTrackerConfig > > configured_;
   std::set< std::string > fresh_; ///< made since the agent surely knew the operator's trackers
};

TEST( RandomLifeTest, endsAsFromNothing )
{
   for ( std::uint64_t seed = 1; seed <= 1000 && !HasFailure(); ++seed ) {
      SCOPED_TRACE( "seed " + std::to_string( seed ) );
      // The order in which keys are written follows from it, and so the bytes that arrive together.
      Vok::Detail::pinHashSeed( { seed, seed << 32 | 1 } );
      Life( seed ).run();
   }
}

} // namespace
} // namespace AgentTest
