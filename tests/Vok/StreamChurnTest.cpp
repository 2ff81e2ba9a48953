// Members that come and go while no batch is written, and notifiees that change what they hear of:
// a writer forgets what no reader needs, and nothing else.
#include "tests/Vok/Streams.h"
#include "tests/support/HeapMeter.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>

namespace {

using Corvo::Ptr;
using ::Test::Root;
using TestSupport::expectEqual;
using TestSupport::Random;
using TestSupport::Replica;
using TestSupport::Source;

void comeAndGo( Root & root, std::uint32_t first, std::uint32_t behind )
{
   for ( std::uint32_t i = first; i != behind; ++i ) {
      root.namesIs( i, "x" );
      root.namesIs( i, "y" );
      root.marksIs( i );
      root.wordsIs( std::to_string( i ) );
      root.treeIs( std::to_string( i ) )->depthIs( i );
      root.groupsIs( "g", i );
      root.namesDel( i );
      root.marksDel( i );
      root.wordsDel( std::to_string( i ) );
      root.treeDel( std::to_string( i ) );
      root.groupsDel( i );
   }
}

TEST( StreamChurnTest, whatCameAndWentCostsNothing )
{
   Source source;
   source.root->namesIs( 1, "stays" );
   source.batch();
   comeAndGo( *source.root, 2, 10 ); // tables and slabs are there from the first on
   const TestSupport::HeapMeter heap;
   comeAndGo( *source.root, 10, 20000 );
   EXPECT_LT( heap.held(), 4096U );
   EXPECT_FALSE( source.writer.hasChanges() );
   EXPECT_TRUE( source.batch().empty() );
}

TEST( StreamChurnTest, whatAReaderHasIsDeletedHoweverOftenItCame )
{
   Source source;
   Replica replica;
   source.root->namesIs( 1, "one" );
   source.root->treeIs( "t" )->depthIs( 1 );
   replica.read( source.batch() );
   for ( int i = 0; i != 3; ++i ) {
      source.root->namesDel( 1 );
      source.root->treeDel( "t" );
      source.root->namesIs( 1, "again" );
      source.root->treeIs( "t" )->depthIs( 2 );
   }
   source.root->namesDel( 1 );
   source.root->treeDel( "t" );
   replica.read( source.batch() );
   ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
   EXPECT_TRUE( replica.root->names().empty() && replica.root->tree().empty() );
}

/// Changes a few members of a root at random, and answers changes that it hears of with others: now
/// and then it even has the writer write meanwhile.
class Meddler : public Corvo::Notifiee {
 public:
   Meddler( Root & root, Random & random ) : root_( root ),
                                             random_( random )
   {
      root.publisher().notifieeIs( this );
   }

   void change()
   {
      const std::uint32_t key = random_.below( 3 );
      switch ( random_.below( 7 ) ) {
      case 0:
      case 1:
         return root_.namesIs( key, std::to_string( random_.below( 3 ) ) );
      case 2:
         root_.namesDel( key );
         return;
      case 3:
         return root_.marksIs( key );
      case 4:
         return root_.marksDel( key );
      case 5:
         root_.treeIs( std::to_string( key ) )->depthIs( random_.below( 3 ) );
         return;
      default:
         root_.treeDel( std::to_string( key ) );
      }
   }

   void onChange( const Corvo::Change & ) override
   {
      if ( depth_ < 3 && random_.oneIn( 3 ) ) {
         ++depth_;
         change();
         --depth_;
      }
      if ( meanwhile && random_.oneIn( 12 ) ) {
         meanwhile();
      }
   }

   std::function< void() > meanwhile;

 private:
   Root & root_;
   Random & random_;
   int depth_ = 0;
};

class StreamMeddlingTest : public testing::TestWithParam< std::uint64_t > {
};

// Meddlers hear of changes before the writer and after it.
TEST_P( StreamMeddlingTest, aReplicaFollowsWhateverNotifieesChange )
{
   Random random( GetParam() );
   const Ptr< Root > root = Root::RootIs( "writer" );
   Meddler before( *root, random );
   Vok::EntityVokNboAttrLogSa writer( root );
   Meddler after( *root, random );
   Replica replica;
   Vok::NboAttrLog::Out out;
   const auto write = [ & ] {
      if ( random.oneIn( 6 ) ) {
         writer.resync();
      }
      writer.write( out );
   };
   before.meanwhile = write;
   after.meanwhile = write;
   for ( int round = 0; round != 400; ++round ) {
      for ( std::uint32_t changes = random.below( 4 ); changes != 0; --changes ) {
         before.change();
      }
      writer.write( out );
      replica.read( out.bytes() );
      out.clear();
      ASSERT_NO_FATAL_FAILURE( expectEqual( *root, *replica.root ) ) << round;
   }
}

// The replica of one stream is the source of the next, and notifiees change it in between. What
// they change the first stream does not know, so that it makes the whole tree good again.
TEST_P( StreamMeddlingTest, aReplicaOfAMeddledReplicaFollows )
{
   Random random( GetParam() );
   Source source;
   Meddler first( *source.root, random );
   const Ptr< Root > middle = Root::RootIs( "middle" );
   Vok::EntityVokNboAttrLogReader reader( middle );
   Meddler before( *middle, random );
   Vok::EntityVokNboAttrLogSa writer( middle );
   Meddler after( *middle, random );
   Replica replica;
   Vok::NboAttrLog::Out out;
   const auto write = [ & ] { writer.write( out ); };
   before.meanwhile = write;
   after.meanwhile = write;
   for ( int round = 0; round != 300; ++round ) {
      for ( std::uint32_t changes = 1 + random.below( 4 ); changes != 0; --changes ) {
         first.change();
      }
      const TestSupport::Bytes batch = random.oneIn( 3 ) ? source.whole() : source.batch();
      Vok::NboAttrLog::In in( batch );
      while ( in.remaining() != 0 ) {
         reader.read( in );
      }
      writer.write( out );
      replica.read( out.bytes() );
      out.clear();
      ASSERT_NO_FATAL_FAILURE( expectEqual( *middle, *replica.root ) ) << round;
   }
}

INSTANTIATE_TEST_SUITE_P( Seeds, StreamMeddlingTest, testing::Range< std::uint64_t >( 1, 21 ) );

} // namespace
