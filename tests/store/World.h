// A store and its clients without sockets or clocks: connections are bytes on their way, which a
// test delivers, holds back or loses.
#pragma once

#include "tests/model/Everything.h"
#include "tests/model/RandomTree.h"

#include "store/Client.h"
#include "store/Server.h"
#include "store/Wire.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace TestSupport {

/// A clock that goes when it is told to.
class TestClock final : public Vok::Store::Clock {
 public:
   Wall wall() const noexcept override { return Wall( passed_ ); }
   void advance( std::chrono::milliseconds time ) noexcept { passed_ += time; }

 private:
   std::chrono::milliseconds passed_{ 1000 };
};

/// What a client of the store is told, and the trees that it reads.
class Mounts : public Vok::Store::MountListener {
 public:
   void mounted( const std::string & path, const Corvo::Ptr< Vok::Entity > & root ) override
   {
      roots[ path ] = root;
   }
   void stateIs( const std::string & path, const Vok::Store::MountState & state ) override
   {
      states[ path ] = state;
   }
   void unmounted( const std::string & path ) override { gone.push_back( path ); }
   void failed( const std::string & path, const std::string & text ) override
   {
      failures.push_back( path + ": " + text );
   }
   void passedOver( const std::string & path, const std::vector< std::string > & texts ) override
   {
      for ( const std::string & text : texts ) {
         missed.push_back( path + ": " + text );
      }
   }

   std::map< std::string, Corvo::Ptr< Vok::Entity > > roots;
   std::map< std::string, Vok::Store::MountState > states;
   std::vector< std::string > gone;
   std::vector< std::string > failures;
   std::vector< std::string > missed;
};

/// A store whose process can end and begin again.
struct TestStore {
   explicit TestStore( const Vok::Store::ServerSetup & how = {} ) : setup( how ) {}

   void restart()
   {
      server.reset();
      server = std::make_unique< Vok::Store::Server >( clock, setup );
   }

   TestClock clock;
   Vok::Store::ServerSetup setup;
   std::unique_ptr< Vok::Store::Server > server =
         std::make_unique< Vok::Store::Server >( clock, setup );
};

/// A client and its connection.
class TestClient {
 public:
   TestClient( TestStore & store, const std::string & program ) : wire( program ),
                                                                  client( wire ),
                                                                  store_( store ) {}

   bool connected() const noexcept { return session_ != nullptr; }

   void connect()
   {
      session_ = store_.server->connected( peer );
      wire.connected();
   }

   /// What is on its way is lost.
   void disconnect()
   {
      session_.reset();
      wire.disconnected();
   }

   /// Up to so many bytes reach the other side.
   bool toStore( std::size_t most )
   {
      const auto bytes = wire.output().first( std::min( most, wire.output().size() ) );
      const std::vector< std::byte > moved( bytes.begin(), bytes.end() );
      wire.sent( moved.size() );
      session_->receive( moved );
      return !moved.empty();
   }
   bool toClient( std::size_t most )
   {
      const auto bytes = session_->output().first( std::min( most, session_->output().size() ) );
      const std::vector< std::byte > moved( bytes.begin(), bytes.end() );
      session_->sent( moved.size() );
      wire.receive( moved );
      received += moved.size();
      return !moved.empty();
   }

   bool finished() const noexcept { return session_->finished(); }

   Vok::Store::Peer peer;
   Vok::Store::Wire wire;
   Vok::Store::Client client;
   std::size_t received = 0; ///< bytes

 private:
   TestStore & store_;
   std::unique_ptr< Vok::Store::Session > session_;
};

/// Until nothing is on its way any more.
inline void settle( TestStore & store, const std::vector< TestClient * > & clients )
{
   for ( bool moved = true; moved; ) {
      moved = false;
      for ( TestClient * const client : clients ) {
         if ( client->connected() ) {
            client->client.flush();
            moved = client->toStore( std::size_t( -1 ) ) || moved;
         }
      }
      store.server->publish();
      for ( TestClient * const client : clients ) {
         moved = ( client->connected() && client->toClient( std::size_t( -1 ) ) ) || moved;
      }
   }
}

} // namespace TestSupport
