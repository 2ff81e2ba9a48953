// Connections that nobody else reads or changes, between parties that prove who they are: TLS 1.3.
//
// Each side has a certificate, and an authority that it trusts for those of others. A store takes
// connections only from clients whose certificate its authority has signed; what the certificate
// calls them, its common name, is `Peer::certificate`. A client checks that the certificate of the
// store is for the name or the address that it connects to.
#pragma once

#include "Vok/Export.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace Vok::Store {

namespace Detail {
class TlsState;
} // namespace Detail

/// What a party has, as PEM files.
struct TlsFiles {
   std::string certificate; ///< its certificate, and those up to the authority that others trust
   std::string key; ///< of the certificate, without a password
   std::string authority; ///< the certificates by which those of others are judged
};

/// A file is of no use; what() names it and says why.
class VOK_EXPORT TlsException : public std::runtime_error {
 public:
   using std::runtime_error::runtime_error;
};

/// What a party's connections share. Files are read once: for others, make another one. Outlives
/// the listeners and connections that are given it.
class VOK_EXPORT TlsContext {
 public:
   /// Throws TlsException.
   explicit TlsContext( const TlsFiles & files );
   TlsContext( const TlsContext & ) = delete;
   TlsContext & operator=( const TlsContext & ) = delete;
   ~TlsContext();

   const Detail::TlsState & state() const noexcept { return *state_; }

 private:
   std::unique_ptr< Detail::TlsState > state_;
};

} // namespace Vok::Store
