// What the daemon is told by its configuration file. docs/flowtrackd.md describes each line of it.
#pragma once

#include "store/Limits.h"
#include "store/Path.h"
#include "store/net/Address.h"
#include "store/net/Tls.h"
#include "tools/flowtrackd/AccessRules.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace Flowtrackd {

struct Config {
   std::vector< Vok::Store::Address > listen;
   unsigned socketMode = 0600; ///< of Unix sockets
   std::optional< std::uint32_t > socketGroup;
   std::optional< Vok::Store::TlsFiles > tls;
   std::optional< Vok::Store::Address > metrics; ///< a Unix socket, or TCP on loopback
   std::string keptFolder;
   std::vector< Vok::Store::PathPattern > kept;
   std::vector< AccessRule > access;
   Vok::Store::Limits limits;
};

/// What is wrong in a configuration file: a line for each mistake, `file:line:column: what is
/// wrong; what was expected`.
class ConfigException : public std::runtime_error {
 public:
   using std::runtime_error::runtime_error;
};

/// Throws ConfigException.
Config readConfig( const std::string & file );

/// The same of a text; `file` is what messages call it.
Config parseConfig( const std::string & text, const std::string & file );

} // namespace Flowtrackd
