// OpenSSL's objects, owned, and its errors. Part of Tls.cpp and TlsFilter.cpp.
#pragma once

#include "store/net/Tls.h"

#include <openssl/bio.h>
#include <openssl/ssl.h>

#include <memory>
#include <string>

namespace Vok::Store::Detail {

/// Calls one of OpenSSL's functions that free.
template< auto release > struct Release {
   template< class T > void operator()( T * object ) const noexcept { release( object ); }
};

using SslContext = std::unique_ptr< SSL_CTX, Release< SSL_CTX_free > >;
using Ssl = std::unique_ptr< SSL, Release< SSL_free > >;

/// The reason of the first of OpenSSL's errors that this thread has not yet heard, for people; all
/// are heard then.
std::string tlsReason();

class TlsState {
 public:
   explicit TlsState( const TlsFiles & files );

   /// For a client's connection, as the store has it.
   Ssl accepting() const;

   /// For a connection to a store, whose certificate is for this name or address. Throws
   /// TlsException.
   Ssl connecting( const std::string & server ) const;

 private:
   Ssl make() const;

   SslContext context_;
};

} // namespace Vok::Store::Detail
