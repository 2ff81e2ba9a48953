// TLS between a socket and who uses it.
#include "store/net/uv/TlsFilter.h"

#include <openssl/err.h>
#include <openssl/x509.h>

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace Vok::Store::Detail {

namespace {

// What the other side may send before it has proved who it is.
constexpr std::size_t mostHandBytes = std::size_t{ 64 } << 10;

// Records that are made before they are sent.
constexpr unsigned recordsAtOnce = 4;
constexpr std::size_t recordSize = std::size_t{ 16 } << 10;

// Pieces that are looked at for a record.
constexpr std::size_t piecesAtOnce = 64;

} // namespace

// ---- What OpenSSL reads from and writes to ----------------------------------------------------

int TlsFilter::bioRead( BIO * bio, char * into, std::size_t size, std::size_t * count )
{
   auto * const self = static_cast< TlsFilter * >( BIO_get_data( bio ) );
   BIO_clear_retry_flags( bio );
   *count = std::min( size, self->input_.size() );
   if ( *count == 0 ) {
      BIO_set_retry_read( bio );
      return 0;
   }
   std::copy_n( self->input_.begin(), *count, reinterpret_cast< std::byte * >( into ) );
   self->input_ = self->input_.subspan( *count );
   return 1;
}

int TlsFilter::bioWrite( BIO * bio, const char * from, std::size_t size, std::size_t * count )
{
   auto * const self = static_cast< TlsFilter * >( BIO_get_data( bio ) );
   const auto * const begin = reinterpret_cast< const std::byte * >( from );
   try {
      self->made_.insert( self->made_.end(), begin, begin + size );
   } catch ( const std::bad_alloc & ) {
      return 0; // OpenSSL is written in C: what is thrown does not pass it
   }
   *count = size;
   return 1;
}

const BIO_METHOD * TlsFilter::bioMethod()
{
   static const auto made = [] {
      std::unique_ptr< BIO_METHOD, Release< BIO_meth_free > > method(
            BIO_meth_new( BIO_get_new_index() | BIO_TYPE_SOURCE_SINK, "store" ) );
      if ( !method || BIO_meth_set_read_ex( method.get(), bioRead ) != 1 ||
            BIO_meth_set_write_ex( method.get(), bioWrite ) != 1 ||
            BIO_meth_set_ctrl( method.get(), []( BIO *, int command, long, void * ) {
               return command == BIO_CTRL_FLUSH ? 1L : 0L;
            } ) != 1 ) {
         throw std::bad_alloc();
      }
      return method;
   }();
   return made.get();
}

// ---- Between the stream and the user ----------------------------------------------------------

TlsFilter::TlsFilter( LoopState & loop, Ssl ssl, Stream & stream, TlsUser & user )
      : loop_( loop ),
        stream_( stream ),
        user_( user ),
        ssl_( std::move( ssl ) )
{
   BIO * const bio = BIO_new( bioMethod() );
   if ( !bio ) {
      throw std::bad_alloc();
   }
   BIO_set_data( bio, this );
   BIO_set_init( bio, 1 );
   SSL_set_bio( ssl_.get(), bio, bio ); // owns it
}

void TlsFilter::start()
{
   stream_.start( *this );
   shakeHands();
}

void TlsFilter::received( std::span< const std::byte > piece )
{
   if ( failed_ ) {
      return;
   }
   input_ = piece;
   if ( !secure_ ) {
      handBytes_ += piece.size();
   }
   if ( secure_ || shakeHands() ) {
      read();
   }
   input_ = {};
}

bool TlsFilter::shakeHands()
{
   ERR_clear_error();
   const int code = SSL_do_handshake( ssl_.get() );
   if ( code == 1 ) {
      secure_ = true;
      user_.secured();
      stream_.send();
      return true;
   }
   if ( SSL_get_error( ssl_.get(), code ) != SSL_ERROR_WANT_READ ) {
      fail();
   } else if ( handBytes_ > mostHandBytes ) {
      fail( "TLS: more than " + std::to_string( mostHandBytes ) + " bytes of a handshake" );
   } else {
      stream_.send();
   }
   return false;
}

void TlsFilter::read()
{
   while ( !failed_ ) {
      std::size_t size = 0;
      ERR_clear_error();
      const int code =
            SSL_read_ex( ssl_.get(), loop_.decrypted.data(), loop_.decrypted.size(), &size );
      if ( code == 1 ) {
         user_.received( std::span( loop_.decrypted ).first( size ) );
         continue;
      }
      switch ( SSL_get_error( ssl_.get(), code ) ) {
      case SSL_ERROR_WANT_READ:
         stream_.send(); // an answer to what TLS itself asks
         return;
      case SSL_ERROR_ZERO_RETURN:
         failed_ = true;
         user_.ended( "the other side has closed the connection" );
         return;
      default:
         fail();
      }
   }
}

void TlsFilter::fail()
{
   const long verified = SSL_get_verify_result( ssl_.get() );
   if ( verified == X509_V_OK ) {
      fail( "TLS: " + tlsReason() );
   } else {
      fail( std::string( "TLS: certificate verify failed: " ) +
            X509_verify_cert_error_string( verified ) );
   }
}

void TlsFilter::fail( const std::string & why )
{
   if ( !std::exchange( failed_, true ) ) {
      stream_.send(); // why, as TLS tells it
      user_.unsecured( why );
   }
}

void TlsFilter::finish()
{
   finishing_ = true;
}

void TlsFilter::ended( const std::string & why )
{
   failed_ = true;
   user_.ended( why );
}

std::size_t TlsFilter::outputs( std::span< std::span< const std::byte > > into )
{
   if ( sending_.empty() ) {
      if ( made_.empty() ) {
         encrypt();
      }
      sending_ = std::exchange( made_, {} );
   }
   if ( sending_.empty() ) {
      return 0;
   }
   into.front() = std::span( sending_ ).subspan( sent_ );
   return 1;
}

void TlsFilter::sent( std::size_t count )
{
   sent_ += count;
   if ( sent_ == sending_.size() ) {
      sending_ = {}; // gives the memory back
      sent_ = 0;
   }
}

void TlsFilter::encrypt()
{
   if ( !secure_ || failed_ ) {
      return;
   }
   std::array< std::byte, recordSize > plain;
   for ( unsigned i = 0; i != recordsAtOnce; ++i ) {
      const std::size_t size = gather( plain );
      if ( size == 0 ) {
         if ( std::exchange( finishing_, false ) ) {
            SSL_shutdown( ssl_.get() );
         }
         return;
      }
      std::size_t written = 0;
      ERR_clear_error();
      if ( SSL_write_ex( ssl_.get(), plain.data(), size, &written ) != 1 || written != size ) {
         fail();
         return;
      }
      user_.sent( size );
   }
}

std::size_t TlsFilter::gather( std::span< std::byte > into )
{
   std::array< std::span< const std::byte >, piecesAtOnce > pieces;
   const std::size_t count = user_.outputs( pieces );
   std::size_t size = 0;
   for ( std::size_t i = 0; i != count && size != into.size(); ++i ) {
      const auto part = pieces[ i ].first( std::min( pieces[ i ].size(), into.size() - size ) );
      std::copy( part.begin(), part.end(), into.begin() + static_cast< std::ptrdiff_t >( size ) );
      size += part.size();
   }
   return size;
}

std::optional< std::string > TlsFilter::commonName() const
{
   const X509 * const certificate = SSL_get0_peer_certificate( ssl_.get() );
   const X509_NAME * const subject = certificate ? X509_get_subject_name( certificate ) : nullptr;
   const int at = subject ? X509_NAME_get_index_by_NID( subject, NID_commonName, -1 ) : -1;
   if ( at < 0 || X509_NAME_get_index_by_NID( subject, NID_commonName, at ) >= 0 ) {
      return std::nullopt; // none, or more than one
   }
   unsigned char * text = nullptr;
   const X509_NAME_ENTRY * const entry = X509_NAME_get_entry( subject, at );
   const int size = ASN1_STRING_to_UTF8( &text, X509_NAME_ENTRY_get_data( entry ) );
   if ( size <= 0 ) {
      return std::nullopt;
   }
   std::string name( reinterpret_cast< const char * >( text ), static_cast< std::size_t >( size ) );
   OPENSSL_free( text );
   const bool shown = std::none_of( name.begin(), name.end(), []( char c ) {
      return static_cast< unsigned char >( c ) < ' ' || c == '\x7F';
   } );
   return shown ? std::optional( std::move( name ) ) : std::nullopt;
}

} // namespace Vok::Store::Detail
