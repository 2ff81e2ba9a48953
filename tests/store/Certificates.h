// Authorities and the certificates that they sign, made when a test needs them.
#pragma once

#include "tests/store/OpenSsl.h"

#include "store/net/Tls.h"

#include <string>
#include <vector>

namespace TestSupport {

/// What stands in a certificate.
struct Subject {
   std::vector< std::string > names; ///< its common names: one, as a rule
   std::string place; ///< what it is a server at, such as `IP:127.0.0.1` or `DNS:store`
   long validFor = 3600; ///< seconds from now; below 0: it has expired
};

class Authority {
 public:
   /// Its files go to `folder`, which outlives it.
   Authority( std::string folder, const std::string & name );

   /// Makes a key and a certificate, and the files of a party that trusts this authority.
   Vok::Store::TlsFiles issue( const Subject & subject );

 private:
   std::string write( const std::string & name, const X509 & certificate ) const;

   std::string folder_;
   std::string name_;
   Key key_;
   Certificate certificate_;
   std::string file_;
   long last_ = 1; // serial number
};

} // namespace TestSupport
