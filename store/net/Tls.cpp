// How OpenSSL is set up: what is demanded of both sides.
#include "store/net/Tls.h"

#include "store/net/uv/TlsState.h"

#include <openssl/err.h>
#include <openssl/x509v3.h>

#include <new>
#include <system_error>

namespace Vok::Store {

namespace Detail {

namespace {

// The certificates that a side shows, in bytes.
constexpr long longestChain = 32 << 10;

void demand( bool held, const std::string & what )
{
   if ( !held ) {
      throw TlsException( what + ": " + tlsReason() );
   }
}

void demandFile( bool held, const char * what, const std::string & file )
{
   demand( held, std::string( what ) + " " + ( file.empty() ? "(no file)" : file ) );
}

} // namespace

std::string tlsReason()
{
   const unsigned long error = ERR_peek_error();
   ERR_clear_error();
   if ( ERR_SYSTEM_ERROR( error ) ) {
      return std::generic_category().message( ERR_GET_REASON( error ) );
   }
   const char * const text = ERR_reason_error_string( error );
   return text ? text : "no reason is known";
}

TlsState::TlsState( const TlsFiles & files ) : context_( SSL_CTX_new( TLS_method() ) )
{
   if ( !context_ ) {
      throw std::bad_alloc();
   }
   SSL_CTX * const context = context_.get();
   ERR_clear_error();
   demand( SSL_CTX_set_min_proto_version( context, TLS1_3_VERSION ) == 1, "TLS 1.3" );
   SSL_CTX_set_options( context, SSL_OP_NO_RENEGOTIATION | SSL_OP_NO_TICKET );
   // Each connection proves its identity anew: nothing is resumed.
   SSL_CTX_set_session_cache_mode( context, SSL_SESS_CACHE_OFF );
   demand( SSL_CTX_set_num_tickets( context, 0 ) == 1, "TLS without tickets" );
   SSL_CTX_set_mode( context, SSL_MODE_RELEASE_BUFFERS | SSL_MODE_NO_AUTO_CHAIN );
   SSL_CTX_set_max_cert_list( context, longestChain );
   SSL_CTX_set_verify( context, SSL_VERIFY_PEER | SSL_VERIFY_FAIL_IF_NO_PEER_CERT, nullptr );
   // Nobody is there to be asked for a password.
   SSL_CTX_set_default_passwd_cb( context, []( char *, int, int, void * ) { return 0; } );

   demandFile( SSL_CTX_use_certificate_chain_file( context, files.certificate.c_str() ) == 1,
         "certificate", files.certificate );
   demandFile( SSL_CTX_use_PrivateKey_file( context, files.key.c_str(), SSL_FILETYPE_PEM ) == 1,
         "key", files.key );
   demandFile( SSL_CTX_check_private_key( context ) == 1, "key", files.key );
   demandFile( SSL_CTX_load_verify_file( context, files.authority.c_str() ) == 1, "authority",
         files.authority );
}

Ssl TlsState::make() const
{
   Ssl made( SSL_new( context_.get() ) );
   if ( !made ) {
      throw std::bad_alloc();
   }
   return made;
}

Ssl TlsState::accepting() const
{
   Ssl made = make();
   SSL_set_accept_state( made.get() );
   return made;
}

Ssl TlsState::connecting( const std::string & server ) const
{
   Ssl made = make();
   SSL_set_connect_state( made.get() );
   X509_VERIFY_PARAM * const check = SSL_get0_param( made.get() );
   X509_VERIFY_PARAM_set_hostflags(
         check, X509_CHECK_FLAG_NO_PARTIAL_WILDCARDS | X509_CHECK_FLAG_NEVER_CHECK_SUBJECT );
   ERR_clear_error();
   if ( X509_VERIFY_PARAM_set1_ip_asc( check, server.c_str() ) != 1 ) {
      ERR_clear_error(); // it is a name
      demand( X509_VERIFY_PARAM_set1_host( check, server.c_str(), server.size() ) == 1 &&
                  SSL_ctrl( made.get(), SSL_CTRL_SET_TLSEXT_HOSTNAME, TLSEXT_NAMETYPE_host_name,
                        const_cast< char * >( server.c_str() ) ) == 1,
            "\"" + server + "\" cannot be checked" );
   }
   return made;
}

} // namespace Detail

TlsContext::TlsContext( const TlsFiles & files )
      : state_( std::make_unique< Detail::TlsState >( files ) )
{
}

TlsContext::~TlsContext() = default;

} // namespace Vok::Store
