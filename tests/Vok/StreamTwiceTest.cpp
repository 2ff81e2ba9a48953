// Batches made by hand that give a collection a key twice.
#include "tests/Vok/Streams.h"
#include "tests/support/Recorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <string>
#include <utility>

namespace {

using TestSupport::Bytes;
using TestSupport::expectEqual;
using TestSupport::Recorder;
using TestSupport::Replica;
using TestSupport::signedAgain;
using TestSupport::Source;

/// A collection that gets two members, whose keys end in `A` and `B`, and differ in nothing else.
struct TwoMembers {
   const char * name;
   void ( *fill )( ::Test::Root & root );
   std::string key = "key"; ///< before the end, as a log has it

   friend void PrintTo( const TwoMembers & two, std::ostream * out ) { *out << two.name; }
};

constexpr std::uint32_t numberA = 0xFEDCBA41; // big-endian: FE DC BA 'A'
constexpr std::uint32_t numberB = numberA + 1;

const TwoMembers twoMembers[] = {
   { "map",
         []( ::Test::Root & root ) {
            root.namesIs( numberA, "a" );
            root.namesIs( numberB, "b" );
         },
         "\xFE\xDC\xBA" },
   { "mapByText",
         []( ::Test::Root & root ) {
            root.byNameIs( "keyA", {} );
            root.byNameIs( "keyB", {} );
         } },
   { "orderedMap",
         []( ::Test::Root & root ) {
            root.stepsIs( numberA, 1 );
            root.stepsIs( numberB, 2 );
         },
         "\xFE\xDC\xBA" },
   { "set",
         []( ::Test::Root & root ) {
            root.wordsIs( "keyA" );
            root.wordsIs( "keyB" );
         } },
   { "children",
         []( ::Test::Root & root ) {
            root.treeIs( "keyA" );
            root.treeIs( "keyB" );
         } },
};

class StreamTwiceTest : public testing::TestWithParam< TwoMembers > {
 protected:
   void SetUp() override
   {
      replica.read( source.batch() );
      GetParam().fill( *source.root );
   }

   /// The second key becomes the first one.
   static Bytes forged( Bytes batch )
   {
      const auto bytesOf = []( char end ) {
         const std::string key = GetParam().key + end;
         const auto * const first = reinterpret_cast< const std::byte * >( key.data() );
         return Bytes( first, first + key.size() );
      };
      const Bytes a = bytesOf( 'A' );
      const Bytes b = bytesOf( 'B' );
      auto at = std::search( batch.begin(), batch.end(), b.begin(), b.end() );
      EXPECT_NE( at, batch.end() );
      for ( ; at != batch.end(); at = std::search( at, batch.end(), b.begin(), b.end() ) ) {
         std::copy( a.begin(), a.end(), at );
      }
      return signedAgain( std::move( batch ) );
   }

   void expectRefused( const Bytes & batch )
   {
      EXPECT_EQ( replica.refusal( forged( batch ) ), "a collection in a batch holds a key twice" );
      replica.read( batch );
      ASSERT_NO_FATAL_FAILURE( expectEqual( *source.root, *replica.root ) );
   }

   Source source;
   Replica replica;
};

TEST_P( StreamTwiceTest, amongChanges )
{
   expectRefused( source.batch() );
}

TEST_P( StreamTwiceTest, inAWholeTreeThatNobodyHears )
{
   expectRefused( source.whole() );
}

TEST_P( StreamTwiceTest, inAWholeTreeThatIsHeard )
{
   Recorder recorder;
   replica.root->publisher().notifieeIs( &recorder );
   expectRefused( source.whole() );
}

INSTANTIATE_TEST_SUITE_P( ofACollection, StreamTwiceTest, testing::ValuesIn( twoMembers ),
      []( const auto & one ) { return std::string( one.param.name ); } );

} // namespace
