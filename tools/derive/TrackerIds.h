// Which number each tracker has.
#pragma once

#include "FlowTracker/FlowTrackerStatus.h"

#include <map>
#include <optional>
#include <set>
#include <utility>

namespace Derive {

/// Gives out the numbers of trackers, and keeps them in a FlowTracking::FtIdStatus.
///
/// Numbers are given out in order and, behind the last one, again from 0: a number that became free
/// is given out as late as possible, for collectors may still hold records that carry it.
class TrackerIds {
 public:
   using Names = std::set< Corvo::String >;
   using Ids = std::map< Corvo::String, FlowTracking::FtId >;

   explicit TrackerIds( Corvo::Ptr< FlowTracking::FtIdStatus > status )
         : status_( std::move( status ) )
   {
   }

   /// Numbers for exactly these trackers. A tracker keeps the number that it has; one that has none
   /// takes the one in `used`, which hardware knows it by, if that is free; else the next one. Of
   /// more trackers than there are numbers, the last ones by name get none.
   void assign( const Names & names, const Ids & used );

   std::optional< FlowTracking::FtId > idOf( const Corvo::String & name ) const;

 private:
   using Owners = std::map< std::uint32_t, Corvo::String >;

   Owners kept( const Names & names, const Ids & used ) const;
   std::optional< std::uint32_t > nextFree( const Owners & owners ) const;
   void store( const Owners & owners );

   Corvo::Ptr< FlowTracking::FtIdStatus > status_;
};

} // namespace Derive
