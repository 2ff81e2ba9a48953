// A client's connection to a store, over a socket.
//
//    Vok::Store::Loop loop;
//    Vok::Store::Client client( "show" );
//    Vok::Store::Connection connection( loop, client, Vok::Store::Address::parse( address ) );
//    const auto reading = client.read( "flowtracking/status/*", listener );
//    loop.runUntil( [ & ] { return listener.done(); }, std::chrono::seconds( 5 ) );
#pragma once

#include "Vok/Export.h"
#include "store/Client.h"
#include "store/net/Address.h"
#include "store/net/Loop.h"

#include <memory>
#include <string>

namespace Vok::Store {

namespace Detail {
class ConnectionState;
} // namespace Detail

/// Connects a client to a store, and again whenever the connection is lost, after growing times
/// (`Backoff`). Neither the loop nor the client ends before it.
class VOK_EXPORT Connection {
 public:
   /// Begins to connect. Throws std::bad_alloc.
   Connection( Loop & loop, Client & client, const Address & address );
   Connection( const Connection & ) = delete;
   Connection & operator=( const Connection & ) = delete;
   ~Connection();

   bool connected() const noexcept;

   /// Why there is no connection, or why the last one was lost; empty where none was.
   const std::string & error() const noexcept;

 private:
   std::unique_ptr< Detail::ConnectionState > state_;
};

} // namespace Vok::Store
