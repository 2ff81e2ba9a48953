// Every batch that was damaged on its way, in every way that touches one place, is refused whole.
#include "tests/Vok/Streams.h"
#include "tests/support/Recorder.h"
#include "tests/support/Sanitizers.h"

#include <gtest/gtest.h>

namespace {

using TestSupport::Bytes;
using TestSupport::Counter;
using TestSupport::expectEqual;
using TestSupport::Random;
using TestSupport::RandomTree;
using TestSupport::Replica;
using TestSupport::Source;

/// Whether a replica refuses bytes, having consumed none of them.
bool refuses( Replica & replica, std::span< const std::byte > bytes )
{
   Vok::NboAttrLog::In in( bytes );
   try {
      replica.reader.read( in );
   } catch ( const Vok::NboAttrLog::Exception & ) {
      return in.remaining() == bytes.size();
   }
   return false;
}

void everyPrefix( Replica & replica, const Bytes & batch )
{
   for ( std::size_t size = 0; size != batch.size(); ++size ) {
      ASSERT_TRUE( refuses( replica, std::span( batch ).first( size ) ) ) << size;
   }
}

// Flipped bits are among the changes of one byte. A sanitizer makes that some minutes: there it is
// the flipped bits.
void everyChangedByte( Replica & replica, Bytes batch )
{
   const bool all = !TestSupport::underAddressSanitizer && !TestSupport::underThreadSanitizer;
   for ( std::size_t at = 0; at != batch.size(); ++at ) {
      for ( unsigned change = 1; change < 256; change = all ? change + 1 : change * 2 ) {
         batch[ at ] ^= static_cast< std::byte >( change );
         ASSERT_TRUE( refuses( replica, batch ) ) << at << " " << change;
         batch[ at ] ^= static_cast< std::byte >( change );
      }
   }
}

// Every damage is refused, and has changed nothing and told nobody.
void everyDamage( Replica & replica, const Bytes & batch )
{
   const Vok::Digest before = Vok::treeDigest( *replica.root );
   const Counter counter( *replica.root );
   ASSERT_NO_FATAL_FAILURE( everyPrefix( replica, batch ) );
   ASSERT_NO_FATAL_FAILURE( everyChangedByte( replica, batch ) );
   ASSERT_EQ( Vok::treeDigest( *replica.root ), before );
   ASSERT_EQ( counter.heard, 0U );
}

class StreamDamageTest : public testing::TestWithParam< std::uint64_t > {
};

TEST_P( StreamDamageTest, isRefusedWhole )
{
   Source source;
   Replica replica;
   Random random( GetParam() );
   RandomTree tree( *source.root, random );
   tree.changes( 200 );
   replica.read( source.batch() );
   for ( int batches = 0; batches != 25; ) {
      tree.changes( 1 + random.below( 4 ) );
      const Bytes batch = source.batch();
      if ( !batch.empty() ) {
         ++batches;
         ASSERT_NO_FATAL_FAILURE( everyDamage( replica, batch ) );
         replica.read( batch );
         ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
      }
   }
}

INSTANTIATE_TEST_SUITE_P( Seeds, StreamDamageTest, testing::Range< std::uint64_t >( 1, 9 ) );

} // namespace
