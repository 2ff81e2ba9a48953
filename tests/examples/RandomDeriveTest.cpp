// Whatever changes in whatever order, with whatever restarts between: what was derived bit by bit
// is what one derivation from nothing gives.
#include "RandomSwitch.h"

#include "tests/support/DescribeTree.h"
#include "tools/derive/History.h"
#include "tools/derive/Platform.h"
#include "tools/derive/StatusReport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace DeriveTest {
namespace {

using TestSupport::Random;

/// What generations number: the groups of a tracker, and what each of them holds.
struct Generation {
   struct Group {
      std::uint32_t generation;
      std::string content;
   };
   std::uint32_t generation = 0;
   bool updateNeeded = false;
   std::vector< std::pair< std::uint32_t, std::string > > set;
   std::map< std::string, Group > groups;
};

std::string contentOf( const Hw::FgConfig & group )
{
   std::istringstream lines( TestSupport::describeTree( group ) );
   std::string content;
   for ( std::string line; std::getline( lines, line ); ) {
      if ( line.find( "genId" ) == std::string::npos &&
            line.find( "fgConfigChangeBitMap" ) == std::string::npos ) {
         content.append( line ).append( "\n" );
      }
   }
   return content;
}

using Generations = std::map< std::string, Generation >;

Generations generationsOf( const Hw::Config & hw )
{
   Generations all;
   for ( const auto & tracker : hw.hwFtConfig() ) {
      Generation & of = all[ std::string( tracker->name() ) ];
      of.generation = tracker->hwFgConfigGenId();
      of.updateNeeded = tracker->hwFgConfigGenIdUpdateNeeded();
      for ( const auto & group : tracker->hwFgConfig() ) {
         const std::string name( group->fgName() );
         of.set.emplace_back( group->seqno(), name );
         of.groups[ name ] = { group->genId(), contentOf( *group ) };
      }
   }
   return all;
}

/// One switch through one random life.
class Life {
 public:
   explicit Life( std::uint64_t seed ) : random_( seed )
   {
      if ( random_.oneIn( 3 ) ) {
         // Something stands there that nobody knows of.
         TestSupport::RandomEntity( *s_.hw, random_ ).changes( 60 );
         TestSupport::RandomEntity( *s_.ids, random_ ).changes( 10 );
         TestSupport::RandomEntity( *status_, random_ ).changes( 30 );
         TestSupport::RandomEntity( *told_, random_ ).changes( 30 );
         told_->pktDropRespDelAll(); // another's
      }
      s_.config->enabledIs( true );
      s_.capabilities->supportedIs( true );
      s_.capabilities->flowGroupConfigSupportedIs( true );
      s_.capabilities->maxTrackersIs( 3 );
   }

   void run()
   {
      s_.restart();
      connect();
      platform_ = std::make_unique< Derive::Platform >( replica_, s_.capabilities, status_ );
      for ( unsigned step = 0; step != 25 && !::testing::Test::HasFailure(); ++step ) {
         changes_.changes( random_.below( 6 ) );
         if ( random_.oneIn( 5 ) ) {
            restartAgent();
         }
         derive();
         if ( random_.oneIn( 2 ) ) {
            follow();
         }
      }
      changes_.finish();
      derive();
      changes_.answerAll();
      derive();
      follow();
      expectAsFromNothing();
   }

 private:
   void connect()
   {
      writer_ = std::make_unique< Vok::EntityVokNboAttrLogSa >( s_.hw );
      writer_->resync();
   }

   /// The agent comes back with its answers lost or not, and with the trees that stood before, of
   /// which one may be lost and the other damaged.
   void restartAgent()
   {
      s_.stop();
      if ( random_.oneIn( 2 ) ) {
         s_.loseAnswers();
      }
      const auto hw = Hw::configFactory( "again" );
      const auto ids = Ft::ftIdStatusFactory( "again" );
      const std::uint32_t lost = random_.below( 4 );
      if ( lost != 0 ) {
         copyTree( s_.hw, hw );
      } else {
         before_.clear();
      }
      if ( random_.oneIn( 4 ) ) {
         TestSupport::RandomEntity( *hw, random_ ).changes( 40 );
         before_.clear();
      }
      if ( lost != 1 ) {
         copyTree( s_.ids, ids );
      } else {
         std::erase_if( numbers_, [ & ]( const auto & one ) {
            const auto tracker = hw->hwFtConfig( one.first );
            return !tracker || tracker->ftId().value() != one.second;
         } );
      }
      if ( random_.oneIn( 4 ) ) {
         renumber( *ids );
      }
      s_.hw = hw;
      s_.ids = ids;
      s_.restart();
      connect();
   }

   /// Gives a tracker another number: it is made anew in hardware.
   void renumber( Ft::FtIdStatus & ids )
   {
      const std::string name = "t" + std::to_string( random_.below( 5 ) );
      const Ft::FtId id( 1000 + random_.below( 1000 ) );
      const bool taken = std::any_of( numbers_.begin(), numbers_.end(),
            [ & ]( const auto & one ) { return one.second == id.value(); } );
      if ( taken ) {
         return;
      }
      ids.ftIdToFtNameIs( id, name );
      ids.ftNameToFtIdIs( name, id );
      numbers_.erase( name );
      before_.erase( name );
   }

   void derive()
   {
      s_.derive();
      expectNumbers();
      expectGenerations();
   }

   /// The platform gets what changed, comes back or not, and reports; then the agent does.
   void follow()
   {
      Vok::NboAttrLog::Out out;
      writer_->write( out );
      Vok::NboAttrLog::In in( out.data(), out.size() );
      if ( out.size() != 0 ) {
         reader_.read( in );
      }
      if ( random_.oneIn( 5 ) ) {
         platform_.reset();
         const auto again = Hw::statusFactory( "again" );
         if ( random_.oneIn( 2 ) ) {
            copyTree( status_, again );
         }
         status_ = again;
         platform_ = std::make_unique< Derive::Platform >( replica_, s_.capabilities, status_ );
      }
      platform_->report();
      Derive::reportStatus( { *s_.config, *s_.hw, *s_.capabilities, *status_ }, *told_ );
      expectHardwareGroups();
   }

   /// Numbers and names are one to one, and who had a number has it still.
   void expectNumbers()
   {
      std::map< std::string, std::uint32_t > now;
      for ( const auto & [ name, id ] : s_.ids->ftNameToFtId() ) {
         now.emplace( name, id.value() );
         EXPECT_EQ( s_.ids->ftIdToFtName( id ), name );
         EXPECT_TRUE( s_.config->flowTrackerConfig( name ) ) << name;
      }
      EXPECT_EQ( s_.ids->ftIdToFtName().size(), now.size() );
      EXPECT_EQ( s_.config->flowTrackerConfig().size(), now.size() );
      for ( const auto & [ name, id ] : numbers_ ) {
         if ( const auto found = now.find( name ); found != now.end() ) {
            EXPECT_EQ( found->second, id ) << name;
         }
      }
      numbers_ = now;
   }

   void expectGenerations()
   {
      Generations now = generationsOf( *s_.hw );
      for ( const auto & [ name, was ] : before_ ) {
         if ( const auto found = now.find( name ); found != now.end() ) {
            expectGeneration( name, was, found->second );
         }
      }
      before_ = std::move( now );
   }

   void expectGeneration( const std::string & name, const Generation & was, const Generation & is )
   {
      const auto config = s_.config->flowTrackerConfig( name );
      const bool changed = was.updateNeeded || was.set != is.set;
      const bool waits = config->groupsCommitInProgress() || config->groupResequencingInProgress();
      EXPECT_EQ( is.generation, was.generation + ( changed && !waits ? 1 : 0 ) ) << name;
      EXPECT_EQ( is.updateNeeded, changed && waits ) << name;
      for ( const auto & [ group, old ] : was.groups ) {
         if ( const auto found = is.groups.find( group ); found != is.groups.end() ) {
            const bool same = found->second.content == old.content;
            EXPECT_EQ( found->second.generation, old.generation + ( same ? 0 : 1 ) ) << group;
         }
      }
   }

   /// No two groups occupy the same group of the hardware.
   void expectHardwareGroups()
   {
      std::set< std::uint16_t > taken;
      for ( const auto & tracker : status_->hwFtStatus() ) {
         for ( const auto & group : tracker->hwFgStatus() ) {
            for ( const std::uint16_t id : group->hwFgId() ) {
               EXPECT_TRUE( taken.insert( id ).second ) << id;
            }
         }
      }
   }

   void expectAsFromNothing()
   {
      const auto hw = Hw::configFactory( "scratch" );
      const auto ids = Ft::ftIdStatusFactory( "scratch" );
      copyTree( s_.ids, ids );
      Derive::Deriver( s_.sources(), hw, ids ).derive();
      Derive::takeHistory( *s_.hw, *hw );
      EXPECT_EQ( TestSupport::describeTree( *s_.hw ), TestSupport::describeTree( *hw ) );
      EXPECT_EQ( Vok::treeDigest( *s_.hw ), Vok::treeDigest( *hw ) );
      EXPECT_EQ( Vok::treeDigest( *replica_ ), Vok::treeDigest( *hw ) );
      EXPECT_EQ( Vok::treeDigest( *s_.ids ), Vok::treeDigest( *ids ) );
      const auto status = Hw::statusFactory( "scratch" );
      Derive::Platform( hw, s_.capabilities, status ).report();
      takeHardwareGroups( *status );
      EXPECT_EQ( TestSupport::describeTree( *status_ ), TestSupport::describeTree( *status ) );
      EXPECT_EQ( Vok::treeDigest( *status_ ), Vok::treeDigest( *status ) );
      const auto told = Ft::statusFactory( "scratch" );
      Derive::reportStatus( { *s_.config, *hw, *s_.capabilities, *status }, *told );
      EXPECT_EQ( TestSupport::describeTree( *told_ ), TestSupport::describeTree( *told ) );
   }

   /// Which groups of the hardware are occupied depends on what was before, but not how many.
   void takeHardwareGroups( Hw::Status & to ) const
   {
      for ( const auto & tracker : to.hwFtStatus() ) {
         const auto was = status_->hwFtStatus( tracker->name() );
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

   Random random_;
   Switch s_;
   RandomSwitch changes_{ s_, random_ };
   Corvo::Ptr< Hw::Config > replica_ = Hw::configFactory( "replica" );
   Corvo::Ptr< Hw::Status > status_ = Hw::statusFactory( "status" );
   Corvo::Ptr< Ft::Status > told_ = Ft::statusFactory( "told" );
   std::unique_ptr< Vok::EntityVokNboAttrLogSa > writer_;
   Vok::EntityVokNboAttrLogReader reader_{ replica_ };
   std::unique_ptr< Derive::Platform > platform_;
   std::map< std::string, std::uint32_t > numbers_; ///< of trackers, after the last derivation
   Generations before_; ///< after the last derivation
};

TEST( RandomDeriveTest, endsAsFromNothing )
{
   for ( std::uint64_t seed = 1; seed <= 300 && !HasFailure(); ++seed ) {
      SCOPED_TRACE( "seed " + std::to_string( seed ) );
      Life( seed ).run();
   }
}

} // namespace
} // namespace DeriveTest
