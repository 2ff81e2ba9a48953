// How rules are asked.
#include "tools/flowtrackd/AccessRules.h"

#include <algorithm>

namespace Flowtrackd {

namespace {

using Vok::Store::Right;

const Peers & peersOf( const AccessRule & rule, Right right ) noexcept
{
   switch ( right ) {
   case Right::read:
      return rule.read;
   case Right::write:
      return rule.write;
   case Right::takeOver:
      break;
   }
   return rule.takeOver;
}

} // namespace

bool Peers::has( const Vok::Store::Peer & peer ) const
{
   return anyone || ( peer.user && users.contains( *peer.user ) ) ||
         std::any_of( peer.groups.begin(), peer.groups.end(),
               [ this ]( std::uint32_t group ) { return groups.contains( group ); } ) ||
         ( peer.certificate && certificates.contains( *peer.certificate ) );
}

bool AccessRules::allows(
      const Vok::Store::Peer & peer, Right right, std::string_view path ) const
{
   bool ruled = false;
   for ( const AccessRule & rule : rules_ ) {
      if ( !rule.paths.matches( path ) ) {
         continue;
      }
      ruled = true;
      if ( peersOf( rule, right ).has( peer ) ) {
         return true;
      }
   }
   return !ruled;
}

} // namespace Flowtrackd
