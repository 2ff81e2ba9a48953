// Options, the environment, and what TLS needs of them.
#include "tools/derive/StoreOptions.h"

#include <CLI/CLI.hpp>

namespace Derive {

void addStoreOptions( CLI::App & app, StoreOptions & options )
{
   app.add_option( "--store", options.address, "address of the store" )
         ->envname( "FLOWTRACK_STORE" )
         ->type_name( "ADDRESS" )
         ->capture_default_str();
   const auto file = [ & ]( const char * name, const char * variable, std::string & value,
                           const char * description ) {
      app.add_option( name, value, description )->envname( variable )->type_name( "FILE" );
   };
   file( "--certificate", "FLOWTRACK_CERTIFICATE", options.files.certificate,
         "for a store at tls:ADDRESS:PORT: the certificate to show, PEM" );
   file( "--key", "FLOWTRACK_KEY", options.files.key, "the certificate's key" );
   file( "--authority", "FLOWTRACK_AUTHORITY", options.files.authority,
         "who has signed the certificate of the store" );
}

StoreAddress::StoreAddress( const StoreOptions & options )
      : address_( Vok::Store::Address::parse( options.address ) )
{
   if ( address_.kind != Vok::Store::Address::Kind::tls ) {
      return;
   }
   const Vok::Store::TlsFiles & files = options.files;
   if ( files.certificate.empty() || files.key.empty() || files.authority.empty() ) {
      throw Vok::Store::AddressException(
            options.address + " needs --certificate, --key and --authority" );
   }
   tls_.emplace( files );
}

} // namespace Derive
