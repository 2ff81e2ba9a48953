// Captures come and go as ports are wanted.
#include "tools/flowtrack-platform/capture/CaptureSet.h"

#include <net/if.h>
#include <set>

namespace FlowtrackPlatform {

namespace {

constexpr Time patience = 10000;
constexpr std::uint32_t firstOwnIndex = 1U << 30; ///< above those that a system gives

} // namespace

const std::string & CaptureSet::deviceOf( const std::string & intf ) const
{
   const auto found = devices_.find( intf );
   return found == devices_.end() ? intf : found->second;
}

std::uint32_t CaptureSet::indexOf( const std::string & intf )
{
   if ( const unsigned known = ::if_nametoindex( deviceOf( intf ).c_str() ) ) {
      return known;
   }
   const auto next = static_cast< std::uint32_t >( firstOwnIndex + indexes_.size() );
   return indexes_.emplace( intf, next ).first->second;
}

void CaptureSet::close( const Port & port )
{
   const auto at = captures_.find( port );
   const CaptureCounters counted = at->second->counters();
   gone_.packets += counted.packets;
   gone_.drops += counted.drops;
   captures_.erase( at );
}

void CaptureSet::wantedAre( const std::vector< Port > & ports, unsigned bytes, Time now )
{
   const std::set< Port > wanted( ports.begin(), ports.end() );
   std::vector< Port > open;
   for ( const auto & [ port, capture ] : captures_ ) {
      open.push_back( port );
   }
   for ( const Port & port : open ) {
      if ( bytes != sizes_.packet || !wanted.contains( port ) ) {
         close( port );
      }
   }
   sizes_.packet = bytes;
   std::set< std::string > names;
   for ( const Port & port : wanted ) {
      names.insert( port.intf );
      if ( captures_.contains( port ) || now < again_[ port.intf ] ) {
         continue;
      }
      try {
         captures_[ port ] = Capture::live( deviceOf( port.intf ), port.direction, sizes_ );
         troubles_.erase( port.intf );
      } catch ( const CaptureException & e ) {
         captures_.erase( port );
         troubles_[ port.intf ] = e.what();
         again_[ port.intf ] = now + patience;
      }
   }
   std::erase_if( troubles_, [ & ]( const auto & one ) { return !names.contains( one.first ); } );
   std::erase_if( again_, [ & ]( const auto & one ) { return !names.contains( one.first ); } );
}

/// A device that went is one that cannot be captured.
void CaptureSet::take( const Port & port, const std::function< void( const Frame & ) > & to )
{
   constexpr int most = 1000;
   const auto at = captures_.find( port );
   if ( at == captures_.end() ) {
      return;
   }
   try {
      at->second->take( to, most );
   } catch ( const CaptureException & e ) {
      troubles_[ port.intf ] = e.what();
      again_[ port.intf ] = 0;
      close( port );
   }
}

CaptureCounters CaptureSet::counters() const
{
   CaptureCounters sum = gone_;
   for ( const auto & [ port, capture ] : captures_ ) {
      const CaptureCounters counted = capture->counters();
      sum.packets += counted.packets;
      sum.drops += counted.drops;
   }
   return { sum.packets - cleared_.packets, sum.drops - cleared_.drops };
}

void CaptureSet::clearCounters()
{
   const CaptureCounters now = counters();
   cleared_.packets += now.packets;
   cleared_.drops += now.drops;
}

} // namespace FlowtrackPlatform
