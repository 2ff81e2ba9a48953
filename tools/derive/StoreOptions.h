// How programs are told where the store is, and who they are to it.
#pragma once

#include "store/net/Address.h"
#include "store/net/Tls.h"

#include <optional>
#include <string>

namespace CLI {
class App;
} // namespace CLI

namespace Derive {

/// What is said of the store; files are for addresses with TLS.
struct StoreOptions {
   std::string address = "unix:/run/flowtrackd/store.sock";
   Vok::Store::TlsFiles files;
};

/// Adds --store, --certificate, --key and --authority. FLOWTRACK_STORE, FLOWTRACK_CERTIFICATE,
/// FLOWTRACK_KEY and FLOWTRACK_AUTHORITY stand for them where they are not given.
void addStoreOptions( CLI::App & app, StoreOptions & options );

/// A store as connections take it. Outlives them.
class StoreAddress {
 public:
   /// Throws Vok::Store::AddressException, also where a file is not said that TLS needs, and
   /// Vok::Store::TlsException for one that is of no use.
   explicit StoreAddress( const StoreOptions & options );

   const Vok::Store::Address & address() const noexcept { return address_; }
   const Vok::Store::TlsContext * tls() const noexcept { return tls_ ? &*tls_ : nullptr; }

 private:
   Vok::Store::Address address_;
   std::optional< Vok::Store::TlsContext > tls_;
};

} // namespace Derive
