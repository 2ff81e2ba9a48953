// A store over sockets of each kind, those who use it as they should, and time for both.
#pragma once

#include "tests/store/Certificates.h"
#include "tests/store/Folder.h"
#include "tests/store/RawClient.h"
#include "tests/store/World.h"

#include "store/net/Connection.h"
#include "store/net/Listener.h"

#include <gtest/gtest.h>

#include <poll.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace TestSupport {

/// The kinds of addresses, for parameterised suites.
using Kind = Vok::Store::Address::Kind;

inline std::string nameOf( const testing::TestParamInfo< Kind > & test )
{
   if ( test.param == Kind::unixSocket ) {
      return "unixSocket";
   }
   return test.param == Kind::tcp ? "tcp" : "tls";
}

inline const auto eachKind = testing::Values( Kind::unixSocket, Kind::tcp, Kind::tls );

/// Certificates of a store and of a client that trust each other.
struct Trust {
   Folder folder;
   Authority authority{ folder.path(), "authority" };
   Vok::Store::TlsContext store{ authority.issue( { { "store" }, "IP:127.0.0.1,DNS:store" } ) };
   Vok::Store::TlsFiles clientFiles = authority.issue( { { "agent" }, {} } );
   Vok::Store::TlsContext client{ clientFiles };

   /// For a raw client that is set up as it should.
   Ssl ssl() const;
};

/// A store, its socket, and a loop that both and all clients share.
class NetWorld {
 public:
   explicit NetWorld( Kind kind, const Vok::Store::ServerSetup & setup = {} );

   /// Lets time pass until it is so; false where that takes too long.
   bool until( const std::function< bool() > & done );
   void pass( std::chrono::milliseconds time );

   RawClient & raw();

   /// A raw client that has said who it is, and was heard.
   RawClient & greeted();

   const Vok::Store::TlsContext * tls() const { return trust ? &trust->client : nullptr; }

   Kind kind;
   Folder folder;
   std::unique_ptr< Trust > trust; ///< with TLS
   Vok::Store::SystemClock clock;
   Vok::Store::Loop loop;
   Vok::Store::Server server;
   std::unique_ptr< Vok::Store::Listener > listener;
   Vok::Store::Address address;
   std::vector< std::unique_ptr< RawClient > > raws;
};

/// A writer and a reader of a mount: what hostile clients do is nothing to them.
class Bystanders {
 public:
   explicit Bystanders( NetWorld & world );

   /// The writer changes what it writes, the reader gets it, and both have the connection that they
   /// had all the time.
   bool undisturbed();

   Corvo::Ptr< Test::Root > root = Test::Root::RootIs( "root" );

 private:
   bool agree();
   std::string errors() const { return one_->error() + two_->error(); }

   NetWorld & world_;
   Vok::Store::Wire writerWire_{ "writer" };
   Vok::Store::Wire readerWire_{ "reader" };
   Vok::Store::Client writer_{ writerWire_ };
   Vok::Store::Client reader_{ readerWire_ };
   Mounts mounts_;
   std::unique_ptr< Vok::Store::Writing > writing_;
   std::unique_ptr< Vok::Store::Reading > reading_;
   std::unique_ptr< Vok::Store::Connection > one_;
   std::unique_ptr< Vok::Store::Connection > two_;
   std::string before_; // what the connections had to tell at first
   std::uint16_t changes_ = 0;
};

} // namespace TestSupport
