// A status under load: flags and counters that change by the million, with readers that keep up and
// readers that sleep. What is counted is changes and bytes, never time.
#include "tests/FlowTracker/StatusReplica.h"
#include "tests/support/HeapMeter.h"
#include "tests/support/Random.h"
#include "tests/support/Recorder.h"
#include "tests/support/Sanitizers.h"
#include "tests/support/SpareSlabs.h"

#include "FlowTracker/FlowTrackerStatus.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace FlowTracking;
using Corvo::Ptr;
using FlowTrackerTest::attach;
using FlowTrackerTest::StatusReplica;
using TestSupport::Counter;
using TestSupport::HeapMeter;
using TestSupport::Heard;
using TestSupport::Random;
using TestSupport::Recorder;
using Response = PktDropCounterUpdateResponse;

// Sanitizers take an order of magnitude more of all. A quarter of the trackers still has to be
// large beside the slab of each size that a tree begins.
constexpr bool sanitized =
      TestSupport::underAddressSanitizer || TestSupport::underThreadSanitizer;
constexpr std::uint32_t trackers = sanitized ? 200 : 1000;
constexpr std::uint32_t flips = sanitized ? 200'000 : 10'000'000;
constexpr std::uint32_t answers = sanitized ? 20'000 : 1'000'000;

/// An `active` flag, of an entity of any type that has one.
struct Flag {
   Vok::Entity * entity;
   void ( *flip )( Vok::Entity & );
   bool ( *isSet )( const Vok::Entity & );
};

template< class T > Flag flagOf( const Ptr< T > & entity )
{
   return { entity.get(),
      []( Vok::Entity & e ) {
         T & holder = static_cast< T & >( e );
         holder.activeIs( !holder.active() );
      },
      []( const Vok::Entity & e ) { return static_cast< const T & >( e ).active(); } };
}

/// A status whose trackers have 4 exporters of 4 collectors each.
class Load {
 public:
   static constexpr std::uint32_t flagsOfATracker = 1 + 4 + 4 * 4;

   explicit Load( std::uint32_t count )
   {
      for ( std::uint32_t i = 0; i != count; ++i ) {
         const auto tracker = root->ftStatusIs( "tracker " + std::to_string( i ) );
         flags.push_back( flagOf( tracker ) );
         for ( const char * name : { "operators", "archive", "security", "billing" } ) {
            const auto exporter = tracker->expStatusIs( name );
            flags.push_back( flagOf( exporter ) );
            for ( const char * host : { "192.0.2.1", "192.0.2.2", "2001:db8::1", "host" } ) {
               flags.push_back( flagOf( exporter->collectorStatusIs( host ) ) );
            }
         }
      }
   }

   void flip( std::size_t which ) { flags[ which ].flip( *flags[ which ].entity ); }

   void flipAll()
   {
      for ( std::size_t i = 0; i != flags.size(); ++i ) {
         flip( i );
      }
   }

   /// Flips flags at random among the first `among`.
   void flipAtRandom( std::uint32_t times, std::uint32_t among )
   {
      Random random( times );
      for ( std::uint32_t i = 0; i != times; ++i ) {
         flip( random.below( among ) );
      }
   }

   std::size_t flagsSet() const
   {
      std::size_t count = 0;
      for ( const Flag & flag : flags ) {
         count += flag.isSet( *flag.entity ) ? 1U : 0U;
      }
      return count;
   }

   const Ptr< Status > root = statusFactory( "sampled" );
   std::vector< Flag > flags;
};

/// Counts the changes of each attribute of each entity of a tree.
class PerAttribute : public Corvo::Notifiee {
 public:
   explicit PerAttribute( const Ptr< Status > & root )
   {
      attach( *this, *root );
   }

   void onChange( const Corvo::Change & change ) override
   {
      ++heard[ { &change.entity, change.attrId } ];
   }

   /// How often the attribute was heard that was heard most.
   std::size_t most() const
   {
      std::size_t most = 0;
      for ( const auto & [ attribute, times ] : heard ) {
         most = std::max( most, times );
      }
      return most;
   }

   std::map< std::pair< const Vok::Entity *, Vok::AttrId >, std::size_t > heard;
};

TEST( StatusLoadTest, everyFlagFlipsAndTheReplicaConverges )
{
   Load load( trackers );
   ASSERT_EQ( load.flags.size(), trackers * Load::flagsOfATracker );
   StatusReplica replica( load.root );
   replica.follow();
   ASSERT_EQ( Vok::treeDigest( *load.root ), Vok::treeDigest( *replica.root ) );
   Counter counter;
   attach( counter, *replica.root );
   for ( unsigned round = 0; round != 4; ++round ) {
      load.flipAll();
      replica.follow();
      EXPECT_EQ( counter.heard, ( round + 1 ) * load.flags.size() );
      ASSERT_EQ( Vok::treeDigest( *load.root ), Vok::treeDigest( *replica.root ) );
   }
}

TEST( StatusLoadTest, aReaderThatReadsInBetweenConverges )
{
   Load load( trackers );
   StatusReplica replica( load.root );
   Random random( 6 );
   for ( unsigned batch = 0; batch != 200; ++batch ) {
      load.flipAtRandom( random.below( 500 ), static_cast< std::uint32_t >( load.flags.size() ) );
      if ( random.oneIn( 40 ) ) {
         replica.writer.resync();
      }
      replica.follow();
   }
   EXPECT_GT( load.flagsSet(), 0U );
   EXPECT_EQ( Vok::treeDigest( *load.root ), Vok::treeDigest( *replica.root ) );
}

/// What a writer takes while its reader sleeps, and what it writes when the reader wakes; in bytes.
struct Sleep {
   std::size_t heap = 0; ///< at most
   std::size_t batch = 0;
};

/// The reader sleeps while `flip` flips flags of a status of that many trackers.
Sleep sleepThrough( std::uint32_t count, const std::function< void( Load & ) > & flip )
{
   Load load( count );
   const HeapMeter ofWriter;
   Vok::EntityVokNboAttrLogSa writer( load.root );
   {
      Vok::NboAttrLog::Out whole;
      writer.write( whole );
   }
   const std::size_t before = ofWriter.held();
   const HeapMeter ofFlips;
   flip( load );
   Sleep sleep;
   sleep.heap = before + ofFlips.peak();
   Vok::NboAttrLog::Out changes;
   writer.write( changes );
   sleep.batch = changes.size();
   return sleep;
}

void flipOften( Load & load )
{
   load.flipAtRandom( flips, static_cast< std::uint32_t >( load.flags.size() ) );
}

void flipOneTrackerOften( Load & load )
{
   load.flipAtRandom( flips, Load::flagsOfATracker );
}

TEST( StatusLoadTest, aReaderThatSleepsCostsInProportionToTheTreeAndNotToTheFlips )
{
   const Sleep once = sleepThrough( trackers, []( Load & load ) { load.flipAll(); } );
   const Sleep often = sleepThrough( trackers, flipOften );
   const Sleep quarter = sleepThrough( trackers / 4, flipOften );
   const Sleep few = sleepThrough( trackers, flipOneTrackerOften );

   constexpr std::size_t mostOfAnEntity = 512;
   EXPECT_LE( often.heap, trackers * Load::flagsOfATracker * mostOfAnEntity );
   EXPECT_LE( often.heap, once.heap + once.heap / 100 );
   EXPECT_LE( often.heap, quarter.heap * 4 * 5 / 4 );
   EXPECT_LE( few.heap, once.heap + once.heap / 100 );

   constexpr std::size_t mostOfAFlag = 8;
   constexpr std::size_t frame = 64;
   EXPECT_EQ( often.batch, once.batch );
   EXPECT_LE( often.batch, trackers * Load::flagsOfATracker * mostOfAFlag + frame );
   EXPECT_LE( few.batch, Load::flagsOfATracker * mostOfAFlag + frame );
}

TEST( StatusLoadTest, aReaderThatWakesHearsEachFlagAtMostOnce )
{
   Load load( trackers );
   StatusReplica replica( load.root );
   load.flipAll();
   replica.follow();
   PerAttribute heard( replica.root );
   flipOften( load );
   const std::size_t cleared = load.flags.size() - load.flagsSet(); // all were set before
   replica.follow();
   EXPECT_EQ( heard.most(), 1U );
   EXPECT_EQ( heard.heard.size(), cleared );
   EXPECT_GT( cleared, load.flags.size() / 3 );
   EXPECT_LT( cleared, load.flags.size() * 2 / 3 );
   EXPECT_EQ( Vok::treeDigest( *load.root ), Vok::treeDigest( *replica.root ) );
}

TEST( StatusLoadTest, flagsThatAreAsBeforeAreNotHeard )
{
   Load load( trackers );
   StatusReplica replica( load.root );
   replica.follow();
   PerAttribute heard( replica.root );
   for ( unsigned i = 0; i != 10; ++i ) {
      load.flipAll();
   }
   replica.follow();
   EXPECT_TRUE( heard.heard.empty() );
   load.flip( 0 );
   replica.follow();
   EXPECT_EQ( heard.heard.size(), 1U );
}

TEST( StatusLoadTest, aBatchHasOnlyWhatChangedSinceTheOneBefore )
{
   const auto status = statusFactory( "sampled" );
   const auto tracker = status->ftStatusIs( "campus" );
   StatusReplica replica( status );
   replica.follow();
   tracker->inactiveReasonIs( maxTrackersLimit );
   const std::size_t ofReason = replica.follow();
   tracker->activeIs( true );
   const std::size_t ofFlag = replica.follow();
   tracker->inactiveReasonIs( trackerNotProcessed );
   EXPECT_EQ( replica.follow(), ofReason );
   tracker->activeIs( false );
   EXPECT_EQ( replica.follow(), ofFlag );
   EXPECT_EQ( replica.follow(), 0U );
}

// ---- Counters -----------------------------------------------------------------------------------

TEST( StatusLoadTest, answersWhileAReaderSleepsAreOneChangeForEachReason )
{
   const auto status = statusFactory( "sampled" );
   status->pktDropRespIs( Response( kernelDrops, 1, 10, 0 ) );
   status->pktDropRespIs( Response( ftFullDrops, 2, 20, 0 ) );
   StatusReplica replica( status );
   replica.follow();
   Recorder recorder( *replica.root );
   status->pktDropRespIs( Response( kernelDrops, 3, 30, 1 ) );
   status->pktDropRespIs( Response( ftFullDrops, 4, 40, 1 ) );
   const std::size_t ofOne = replica.follow();
   EXPECT_EQ( recorder.take().size(), 2U );

   const HeapMeter heap;
   std::uint8_t request = 1;
   for ( std::uint32_t i = 0; i != answers; ++i ) {
      ++request;
      status->pktDropRespIs( Response( kernelDrops, 5 + i, 50 + i, request ) );
      status->pktDropRespIs( Response( ftFullDrops, 6 + i, 60 + i, request ) );
   }
   EXPECT_LT( heap.peak(), 4096U );
   EXPECT_EQ( replica.follow(), ofOne );
   EXPECT_EQ( recorder.take().size(), 2U );
   EXPECT_EQ( replica.root->pktDropResp( ftFullDrops ),
         Response( ftFullDrops, 5 + answers, 59 + answers, request ) );
}

TEST( StatusLoadTest, aRequestNumberThatWentAllTheWayRoundIsNotHeard )
{
   const auto request = pktDropCounterUpdateRequestFactory( "drops" );
   const auto replica = pktDropCounterUpdateRequestFactory( "drops" );
   Vok::EntityVokNboAttrLogSa writer( request );
   Vok::EntityVokNboAttrLogReader reader( replica );
   const auto follow = [ & ] {
      Vok::NboAttrLog::Out out;
      writer.write( out );
      Vok::NboAttrLog::In in( out.bytes() );
      reader.read( in );
   };
   follow();
   Recorder recorder( *replica );
   for ( unsigned i = 0; i != 255; ++i ) {
      request->readerSeqNoInc( 1 );
   }
   follow();
   EXPECT_EQ( recorder.take(), Heard{ "258 was 0" } );
   for ( unsigned i = 0; i != 256; ++i ) {
      request->readerSeqNoInc( 1 );
   }
   follow();
   EXPECT_EQ( recorder.take(), Heard{} );
   EXPECT_EQ( replica->readerSeqNo(), 255U );
}

// Of what came and went while a reader slept, nothing is left to be told.
TEST( StatusLoadTest, trackersThatCameAndWentWhileAReaderSleptCostNothing )
{
   const auto status = statusFactory( "sampled" );
   Vok::EntityVokNboAttrLogSa writer( status );
   Vok::NboAttrLog::Out out;
   writer.write( out );
   TestSupport::makeSpareSlabs();
   const TestSupport::HeapMeter heap;
   for ( std::uint32_t i = 0; i != 100'000; ++i ) {
      const std::string name = "tracker " + std::to_string( i );
      status->ftStatusIs( name );
      status->ftStatusDel( name );
   }
   EXPECT_LT( heap.held(), 65536U );
   EXPECT_FALSE( writer.hasChanges() );
}

} // namespace
