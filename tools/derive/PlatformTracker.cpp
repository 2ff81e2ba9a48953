// A tracker's timers, its groups, and which groups of the hardware those occupy.
#include "tools/derive/PlatformTracker.h"

#include <algorithm>
#include <limits>
#include <set>
#include <utility>

namespace Derive {

namespace Hw = HwFlowTracking;

PlatformTracker::PlatformTracker( Corvo::Ptr< const Hw::FtConfig > from,
      Corvo::Ptr< const Hw::Capabilities > capabilities, Corvo::Ptr< Hw::Status > status )
      : from_( std::move( from ) ),
        capabilities_( std::move( capabilities ) ),
        status_( std::move( status ) ),
        work_( [ this ] { work(); } ),
        follower_( *from_, [ this ]( const Corvo::Change & ) { work_.request(); } )
{
   work_.request();
}

bool PlatformTracker::report()
{
   const bool requested = work_.requested();
   work_.run();
   return requested;
}

void PlatformTracker::work()
{
   groupFollowers_.follow( from_->hwFgConfig(), [ this ]( const auto & group ) {
      return std::make_unique< EntityFollower >(
            *group, [ this ]( const Corvo::Change & ) { work_.request(); } );
   } );
   const auto to = status_->hwFtStatusIs( from_->name() );
   to->inactiveTimeoutIs( from_->inactiveTimeout() );
   to->activeIntervalIs( from_->activeInterval() );
   to->flowRecordFormatIs( FlowTracking::FlowRecordFormat() );
   if ( !from_->hwFgConfigGenIdUpdateNeeded() ) {
      groups( *to );
   }
}

void PlatformTracker::groups( Hw::FtStatus & to )
{
   std::set< Corvo::String > wanted;
   if ( capabilities_->flowGroupConfigSupported() ) {
      for ( const auto & group : from_->hwFgConfig() ) {
         wanted.insert( group->fgName() );
      }
   }
   for ( const Corvo::Ptr< Hw::FgStatus > & group : to.hwFgStatus() ) {
      if ( !wanted.contains( group->fgName() ) ) {
         to.hwFgStatusDel( group->fgName() );
      }
   }
   for ( const auto & from : from_->hwFgConfig() ) {
      if ( wanted.contains( from->fgName() ) ) {
         group( *from, *to.hwFgStatusIs( from->fgName() ) );
      }
   }
}

/// The number that a group has in the configuration stands in the index of the groups.
void PlatformTracker::group( const Hw::FgConfig & from, Hw::FgStatus & to )
{
   const auto index = from_->hwFgConfigMap( from.fgName() );
   const std::uint32_t seqno = index ? index->seqno() : from.seqno();
   const auto mirror = to.mirrorStatusIs();
   const bool mirrors = from.mirrorConfig() && capabilities_->mirroringSupported();
   const bool same = to.seqno() == seqno && to.templateId() == from.templateId() &&
         mirror->active() == mirrors;
   to.seqnoIs( seqno );
   to.templateIdIs( from.templateId() );
   mirror->activeIs( mirrors );
   // One for each access list; without any, one that takes all traffic.
   if ( hardwareGroups( std::max< std::size_t >( from.accessList().size(), 1 ), to ) || !same ) {
      to.genIdInc( 1 );
   }
}

/// Brings the hardware groups that a group occupies to so many: it keeps those that it has, and
/// gets those that are free. Says whether there was anything to change.
bool PlatformTracker::hardwareGroups( std::size_t count, Hw::FgStatus & to )
{
   const std::size_t before = to.hwFgId().size();
   while ( to.hwFgId().size() > count ) {
      to.hwFgIdDel( *to.hwFgId().begin() );
   }
   if ( to.hwFgId().size() < count ) {
      std::set< std::uint16_t > taken;
      for ( const auto & tracker : status_->hwFtStatus() ) {
         for ( const auto & group : tracker->hwFgStatus() ) {
            for ( const std::uint16_t id : group->hwFgId() ) {
               taken.insert( id );
            }
         }
      }
      for ( std::uint32_t id = 0; to.hwFgId().size() != count &&
            id <= std::numeric_limits< std::uint16_t >::max();
            ++id ) {
         if ( !taken.contains( static_cast< std::uint16_t >( id ) ) ) {
            to.hwFgIdIs( static_cast< std::uint16_t >( id ) );
         }
      }
   }
   return to.hwFgId().size() != before;
}

} // namespace Derive
