// Who may read and write which mounts, as a configuration file says.
#pragma once

#include "store/Access.h"
#include "store/Path.h"

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Flowtrackd {

/// Some of those that may connect.
struct Peers {
   bool anyone = false;
   std::set< std::uint32_t > users;
   std::set< std::uint32_t > groups;
   std::set< std::string > certificates; ///< by the common names of their subjects

   bool has( const Vok::Store::Peer & peer ) const;
};

/// What is said of the paths of a pattern. Who is not named has not the right.
struct AccessRule {
   Vok::Store::PathPattern paths;
   Peers read;
   Peers write;
   Peers takeOver; ///< of those that may write
};

/// A path that no rule has is everybody's. Of one that some have, whoever any of them names.
class AccessRules final : public Vok::Store::Access {
 public:
   explicit AccessRules( std::vector< AccessRule > rules ) : rules_( std::move( rules ) ) {}

   bool allows( const Vok::Store::Peer & peer, Vok::Store::Right right,
         std::string_view path ) const override;

 private:
   std::vector< AccessRule > rules_;
};

} // namespace Flowtrackd
