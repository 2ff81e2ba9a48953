// How the certificates of tests are made.
#include "tests/store/Certificates.h"

#include <openssl/ec.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <cstdio>
#include <stdexcept>
#include <utility>

namespace TestSupport {

namespace {

using File = std::unique_ptr< std::FILE, Release< std::fclose > >;

void need( bool held )
{
   if ( !held ) {
      throw std::runtime_error( "a certificate: " + sslReason() );
   }
}

Key newKey()
{
   Key key( EVP_EC_gen( "P-256" ) );
   need( key != nullptr );
   return key;
}

void extend( X509 & certificate, X509 & issuer, int kind, const std::string & value )
{
   X509V3_CTX context{};
   X509V3_set_ctx( &context, &issuer, &certificate, nullptr, nullptr, 0 );
   const std::unique_ptr< X509_EXTENSION, Release< X509_EXTENSION_free > > extension(
         X509V3_EXT_conf_nid( nullptr, &context, kind, value.c_str() ) );
   need( extension && X509_add_ext( &certificate, extension.get(), -1 ) == 1 );
}

Certificate newCertificate( const Subject & subject, EVP_PKEY & key, long serial )
{
   constexpr long day = 86400;
   Certificate made( X509_new() );
   need( made && X509_set_version( made.get(), X509_VERSION_3 ) == 1 &&
         ASN1_INTEGER_set( X509_get_serialNumber( made.get() ), serial ) == 1 &&
         X509_gmtime_adj( X509_getm_notBefore( made.get() ), -day ) &&
         X509_gmtime_adj( X509_getm_notAfter( made.get() ), subject.validFor ) &&
         X509_set_pubkey( made.get(), &key ) == 1 );
   for ( const std::string & name : subject.names ) {
      need( X509_NAME_add_entry_by_txt( X509_get_subject_name( made.get() ), "CN", MBSTRING_UTF8,
                  reinterpret_cast< const unsigned char * >( name.data() ),
                  static_cast< int >( name.size() ), -1, 0 ) == 1 );
   }
   return made;
}

void sign( X509 & certificate, X509 & issuer, EVP_PKEY & key )
{
   need( X509_set_issuer_name( &certificate, X509_get_subject_name( &issuer ) ) == 1 &&
         X509_sign( &certificate, &key, EVP_sha256() ) != 0 );
}

} // namespace

Authority::Authority( std::string folder, const std::string & name )
      : folder_( std::move( folder ) ),
        name_( name ),
        key_( newKey() ),
        certificate_( newCertificate( { { name }, {}, 3600 }, *key_, 1 ) )
{
   extend( *certificate_, *certificate_, NID_basic_constraints, "critical,CA:TRUE" );
   extend( *certificate_, *certificate_, NID_subject_key_identifier, "hash" );
   sign( *certificate_, *certificate_, *key_ );
   file_ = write( name, *certificate_ );
}

Vok::Store::TlsFiles Authority::issue( const Subject & subject )
{
   const Key key = newKey();
   const Certificate certificate = newCertificate( subject, *key, ++last_ );
   if ( !subject.place.empty() ) {
      extend( *certificate, *certificate_, NID_subject_alt_name, subject.place );
   }
   sign( *certificate, *certificate_, *key_ );
   const std::string name = name_ + "-" + std::to_string( last_ );
   const std::string keyFile = folder_ + "/" + name + ".key";
   const File file( std::fopen( keyFile.c_str(), "w" ) );
   need( file != nullptr );
   const int done =
         PEM_write_PrivateKey( file.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr );
   need( done == 1 );
   return { write( name, *certificate ), keyFile, file_ };
}

std::string Authority::write( const std::string & name, const X509 & certificate ) const
{
   const std::string path = folder_ + "/" + name + ".crt";
   const File file( std::fopen( path.c_str(), "w" ) );
   need( file && PEM_write_X509( file.get(), &certificate ) == 1 );
   return path;
}

} // namespace TestSupport
