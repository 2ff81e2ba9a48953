// OpenSSL's objects, owned, for tests that use it themselves.
#pragma once

#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/ssl.h>
#include <openssl/x509.h>

#include <memory>
#include <string>

namespace TestSupport {

/// Calls one of OpenSSL's functions that free.
template< auto release > struct Release {
   template< class T > void operator()( T * object ) const noexcept { release( object ); }
};

using Key = std::unique_ptr< EVP_PKEY, Release< EVP_PKEY_free > >;
using Certificate = std::unique_ptr< X509, Release< X509_free > >;
using SslContext = std::unique_ptr< SSL_CTX, Release< SSL_CTX_free > >;
using Ssl = std::unique_ptr< SSL, Release< SSL_free > >;

/// What OpenSSL says was wrong.
inline std::string sslReason()
{
   const char * const text = ERR_reason_error_string( ERR_peek_error() );
   return text ? text : "no reason is known";
}

} // namespace TestSupport
