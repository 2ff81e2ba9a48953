// Bringing a collection to the members that it should have, by the fewest changes.
#pragma once

namespace Derive {

/// Brings a set to `wanted`, a std::set: `del` takes out what is too many, `add` puts in what is
/// missing. The view may be of the very set that they change.
template< class View, class Wanted, class Add, class Del >
void bringSet( View present, const Wanted & wanted, Add add, Del del )
{
   for ( const auto & key : present ) {
      if ( !wanted.contains( key ) ) {
         del( key );
      }
   }
   for ( const auto & key : wanted ) {
      add( key );
   }
}

/// The same for a map and `wanted`, a std::map; `add` takes key and value.
template< class View, class Wanted, class Add, class Del >
void bringMap( View present, const Wanted & wanted, Add add, Del del )
{
   for ( const auto & [ key, value ] : present ) {
      if ( !wanted.contains( key ) ) {
         del( key );
      }
   }
   for ( const auto & [ key, value ] : wanted ) {
      add( key, value );
   }
}

/// Whether a map holds exactly what `wanted`, a std::map, holds.
template< class View, class Wanted > bool sameMap( View present, const Wanted & wanted )
{
   if ( present.size() != wanted.size() ) {
      return false;
   }
   for ( const auto & [ key, value ] : present ) {
      const auto found = wanted.find( key );
      if ( found == wanted.end() || !( found->second == value ) ) {
         return false;
      }
   }
   return true;
}

/// Whether a set holds exactly what `wanted`, a std::set, holds.
template< class View, class Wanted > bool sameSet( View present, const Wanted & wanted )
{
   if ( present.size() != wanted.size() ) {
      return false;
   }
   for ( const auto & key : present ) {
      if ( !wanted.contains( key ) ) {
         return false;
      }
   }
   return true;
}

} // namespace Derive
