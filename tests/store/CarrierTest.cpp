// A client over another carrier than a connection to a store: batches go from writers to readers as
// they are, and nobody in between knows what is in them.
#include "tests/model/Everything.h"
#include "tests/store/World.h"
#include "tests/support/AlteredBatch.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using Corvo::Ptr;
using ::Test::Root;
using TestSupport::Mounts;
using TestSupport::renamed;
using namespace Vok::Store;

class EngineCarrier;

/// Keeps the batches of each path since its writer told the whole tree.
struct Engine {
   struct Log {
      std::uint32_t number = 0;
      std::string type;
      std::vector< std::shared_ptr< const Bytes > > batches;
      std::vector< std::pair< EngineCarrier *, std::uint32_t > > readers;
   };

   Log & log( const std::string & path ) { return logs[ path ]; }

   std::map< std::string, Log > logs;
   std::uint32_t lastNumber = 0;
};

/// One client's way to it. What is told waits for `run`, as it would elsewhere.
class EngineCarrier final : public Carrier {
 public:
   explicit EngineCarrier( Engine & engine ) : engine_( engine ) {}

   void userIs( CarrierUser * user ) override { user_ = user; }
   bool isConnected() const noexcept override { return true; }
   bool busy() const noexcept override { return false; }

   void send( const Message & message ) override
   {
      if ( const auto * const open = std::get_if< OpenWriter >( &message ) ) {
         Engine::Log & log = engine_.log( open->path );
         log.number = ++engine_.lastNumber;
         log.type = open->type;
         paths_[ open->channel ] = open->path;
         tell( Opened{ open->channel, 0, 0, false } );
      } else if ( const auto * const reader = std::get_if< OpenReader >( &message ) ) {
         Engine::Log & log = engine_.log( reader->pattern );
         log.readers.emplace_back( this, reader->channel );
         for ( const auto & batch : log.batches ) {
            give( reader->channel, log, reader->pattern, batch );
         }
      } else {
         ASSERT_TRUE( std::holds_alternative< Close >( message ) );
         for ( auto & [ path, log ] : engine_.logs ) {
            std::erase( log.readers, std::pair( this, std::get< Close >( message ).channel ) );
         }
      }
   }

   void sendBatch( std::uint32_t channel, const std::shared_ptr< const Bytes > & batch ) override
   {
      Engine::Log & log = engine_.log( paths_.at( channel ) );
      log.batches.push_back(
            std::make_shared< const Bytes >( altered ? altered( *batch ) : *batch ) );
      for ( const auto & [ reader, number ] : log.readers ) {
         reader->give( number, log, paths_.at( channel ), log.batches.back() );
      }
   }

   bool run()
   {
      const bool any = !told_.empty();
      for ( ; !told_.empty(); told_.pop_front() ) {
         told_.front()();
      }
      return any;
   }

   std::function< Bytes( const Bytes & ) > altered;

 private:
   void tell( const Message & message )
   {
      told_.push_back( [ this, message ] { user_->received( message ); } );
   }

   void give( std::uint32_t channel, const Engine::Log & log, const std::string & path,
         const std::shared_ptr< const Bytes > & batch )
   {
      if ( !std::exchange( announced_[ channel ], true ) ) {
         tell( Mounted{ channel, log.number, path, log.type } );
      }
      told_.push_back( [ this, channel, number = log.number, batch ] {
         user_->received( channel, number, *batch );
      } );
   }

   Engine & engine_;
   CarrierUser * user_ = nullptr;
   std::map< std::uint32_t, std::string > paths_;
   std::map< std::uint32_t, bool > announced_;
   std::deque< std::function< void() > > told_;
};

class CarrierTest : public testing::Test {
 protected:
   void settled()
   {
      for ( bool moved = true; moved; ) {
         writer.flush();
         moved = one.run();
         moved = two.run() || moved;
      }
   }

   Root & replica() { return static_cast< Root & >( *mounts.roots.at( "a" ) ); }

   Engine engine;
   EngineCarrier one{ engine };
   EngineCarrier two{ engine };
   Client writer{ one };
   Client reader{ two };
   Mounts mounts;
   Ptr< Root > root = Root::RootIs( "root" );
};

TEST_F( CarrierTest, treesAreTheSameOverAnother )
{
   const auto writing = writer.write( "a", root );
   root->midIs( 7 );
   settled();
   const auto reading = reader.read( "a", mounts );
   settled();
   EXPECT_EQ( replica().mid(), 7 );
   root->treeIs( "t" )->depthIs( 3 );
   settled();
   EXPECT_EQ( Vok::treeDigest( replica() ), Vok::treeDigest( *root ) );
   Mounts late;
   const auto again = reader.read( "a", late );
   settled();
   EXPECT_EQ( Vok::treeDigest( *late.roots.at( "a" ) ), Vok::treeDigest( *root ) );
}

TEST_F( CarrierTest, aReaderSaysWhatItPassesOver )
{
   one.altered = []( const Bytes & batch ) { return renamed( batch, "title", "titlQ" ); };
   const auto writing = writer.write( "a", root );
   const auto reading = reader.read( "a", mounts );
   for ( const char * const title : { "one", "two", "three" } ) {
      root->titleIs( title );
      root->midIs( static_cast< std::uint16_t >( root->mid() + 1 ) );
      settled();
      one.altered = nullptr; // the name comes once
   }
   EXPECT_EQ( replica().mid(), root->mid() );
   EXPECT_EQ( replica().title(), "none" );
   EXPECT_EQ( mounts.missed, std::vector< std::string >{ "a: Test::Root::titlQ" } );
}

/// What the store's own definitions lack does not reach readers, and both sides know.
TEST( PassedOverTest, theStoreTellsTheWriterAndTheReaders )
{
   TestSupport::TestStore store;
   TestSupport::TestClient two( store, "two" );
   TestSupport::TestClient three( store, "three" );
   two.connect();
   three.connect();
   Mounts mounts;
   // The writer of another version, a message at a time.
   const Ptr< Root > root = Root::RootIs( "root" );
   Vok::EntityVokNboAttrLogSa stream( root );
   root->titleIs( "title" );
   root->midIs( 7 );
   Vok::NboAttrLog::Out out;
   stream.write( out );
   three.wire.send( OpenWriter{ 1, "b", "Test::Root", false } );
   three.wire.sendBatch( 1,
         std::make_shared< const Bytes >( renamed(
               Bytes( out.bytes().begin(), out.bytes().end() ), "title", "titlQ" ) ) );
   const auto reading = two.client.read( "b", mounts );
   settle( store, { &three, &two } );
   EXPECT_EQ( static_cast< Root & >( *mounts.roots.at( "b" ) ).mid(), 7 );
   EXPECT_EQ( mounts.missed, std::vector< std::string >{ "b: Test::Root::titlQ" } );
   // Whoever writes it next is told too.
   const auto next = two.client.write( "b", Root::RootIs( "next" ), true );
   settle( store, { &two } );
   EXPECT_EQ( next->passedOver(), std::vector< std::string >{ "Test::Root::titlQ" } );
}

} // namespace
