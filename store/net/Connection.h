// A client's connection to a store, over a socket.
//
//    Vok::Store::Loop loop;
//    Vok::Store::Wire wire( "show" );
//    Vok::Store::Client client( wire );
//    Vok::Store::Connection connection( loop, wire, Vok::Store::Address::parse( address ) );
//    const auto reading = client.read( "flowtracking/status/*", listener );
//    loop.runUntil( [ & ] { return listener.done(); }, std::chrono::seconds( 5 ) );
#pragma once

#include "Vok/Export.h"
#include "store/Wire.h"
#include "store/net/Address.h"
#include "store/net/Loop.h"
#include "store/net/Tls.h"

#include <memory>
#include <string>

namespace Vok::Store {

namespace Detail {
class ConnectionState;
} // namespace Detail

/// Connects a wire to a store, and again whenever the connection is lost, or does not come about
/// within ten seconds, after growing times (`Backoff`). Neither the loop nor the wire ends before
/// it. Used from the loop's thread.
class VOK_EXPORT Connection {
 public:
   /// Begins to connect. `tls` is for addresses with TLS, and outlives this; the certificate of the
   /// store is for the name `server`, or where that is empty for the address. Throws
   /// std::invalid_argument for TLS without `tls`, TlsException for a name that cannot be one, and
   /// std::bad_alloc.
   Connection( Loop & loop, Wire & wire, const Address & address,
         const TlsContext * tls = nullptr, const std::string & server = {} );
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
