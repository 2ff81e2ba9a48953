// What is known of a mount, whenever the connection is lost.
#include "tests/store/World.h"
#include "tools/derive/Followed.h"

#include "FlowTracker/FlowTrackerConfig.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

namespace Ft = FlowTracking;
using Derive::Followed;
using TestSupport::TestClient;
using TestSupport::TestStore;

const std::string path = "a/config";

/// A store with one mount, of which it has so many bytes, and who follows it.
struct World {
   explicit World( std::size_t bytes = std::size_t( -1 ) )
         : writer( store, "writer" ),
           reader( store, "reader" )
   {
      config->sampleSizeIs( Ft::SampleSize( 100 ) );
      writer.connect();
      reader.connect();
      writing = writer.client.write( path, config );
      for ( bool moved = true; moved; ) {
         writer.client.flush();
         const std::size_t some = std::min( bytes, writer.wire.output().size() );
         moved = writer.toStore( some );
         bytes -= some;
         store.server->publish();
         moved = writer.toClient( std::size_t( -1 ) ) || moved;
      }
   }

   bool wholeMountSent() const { return writer.wire.output().empty(); }

   /// The store ends, and begins again without the mount.
   void loseStore()
   {
      writing.reset();
      writer.disconnect();
      reader.disconnect();
      store.restart();
      reader.connect();
   }

   TestStore store;
   TestClient writer;
   TestClient reader;
   Corvo::Ptr< Ft::Config > config = Ft::configFactory( "config" );
   std::unique_ptr< Vok::Store::Writing > writing;
};

TEST( FollowedMountTest, aTreeOrThatThereIsNone )
{
   World w;
   Followed< Ft::Config > there( w.reader.client, path );
   Followed< Ft::Config > absent( w.reader.client, "a/nothing" );
   EXPECT_FALSE( there.known() );
   EXPECT_FALSE( absent.known() );
   TestSupport::settle( w.store, { &w.reader } );
   EXPECT_TRUE( there.known() );
   ASSERT_TRUE( there.tree() );
   EXPECT_EQ( there.tree()->sampleSize(), Ft::SampleSize( 100 ) );
   EXPECT_TRUE( absent.known() );
   EXPECT_FALSE( absent.tree() );
}

/// A store that ends when it has that much of a new mount. Where the list has the mount, and its
/// tree is still to come, it never comes.
TEST( FollowedMountTest, aStoreThatIsLostWithAMountLeavesNothingUnknown )
{
   bool all = false;
   unsigned promised = 0; // how often that was so
   for ( std::size_t bytes = 0; !all; ++bytes ) {
      World w( bytes );
      all = w.wholeMountSent();
      Followed< Ft::Config > followed( w.reader.client, path );
      TestSupport::settle( w.store, { &w.reader } );
      const bool had = followed.tree() != nullptr;
      promised += followed.known() ? 0U : 1U;
      w.loseStore();
      for ( int step = 0; step != 3; ++step ) {
         followed.known(); // as programs do at each step
         TestSupport::settle( w.store, { &w.reader } );
      }
      EXPECT_TRUE( followed.known() ) << "lost after " << bytes << " bytes";
      EXPECT_EQ( followed.tree() != nullptr, had ) << "lost after " << bytes << " bytes";
   }
   EXPECT_GT( promised, 0U );
}

} // namespace
