// Which trees there are, and what is done when something came.
#include "tools/flowtrack-platform/PlatformAgent.h"

#include <algorithm>

namespace FlowtrackPlatform {

namespace Ft = FlowTracking;
namespace Hw = HwFlowTracking;

PlatformAgent::PlatformAgent( const PlatformSetup & setup, const std::string & kind )
      : setup_( setup ),
        paths_( kind ),
        config_( setup.client, paths_.hwConfig ),
        dropRequest_( setup.client, paths_.dropRequest ),
        requests_( setup.client, paths_.configRequests ),
        before_( std::in_place, setup.client, paths_ ),
        empty_( Hw::configFactory( kind ) ),
        capabilities_( *setup.capabilities, [ this ]( const Corvo::Change & ) { changed_ = true; } )
{
}

/// Takes its own mounts over as they are, the groups that hardware has occupied among it. What
/// hardware is able to do comes first: who sees the status knows it.
bool PlatformAgent::ready()
{
   if ( !before_ ) {
      return true;
   }
   if ( !config_.known() || !before_->status.known() || !before_->drops.known() ) {
      return false;
   }
   status_ = before_->status.tree() ? before_->status.tree() : Hw::statusFactory( paths_.hwStatus );
   drops_ = before_->drops.tree() ? before_->drops.tree() : Ft::statusFactory( paths_.drops );
   before_.reset(); // nobody else changes these trees any more
   const auto write = [ this ]( const std::string & path, const Corvo::Ptr< Vok::Entity > & tree ) {
      writings_.push_back( setup_.client.write( path, tree, setup_.takeOver ) );
   };
   write( paths_.capabilities, setup_.capabilities );
   write( paths_.hwStatus, status_ );
   write( paths_.drops, drops_ );
   return true;
}

/// A configuration that is taken away is an empty one.
void PlatformAgent::follow()
{
   const auto tree = config_.tree() ? config_.tree() : empty_;
   if ( followed_ == tree ) {
      return;
   }
   platform_.reset(); // it stops following before another one follows
   followed_ = tree;
   platform_ = std::make_unique< Derive::Platform >( followed_, setup_.capabilities, status_ );
   for ( const auto & [ intf, why ] : troubles_ ) {
      platform_->troubleIs( Wyre::IntfId( intf ), why );
   }
   configChanges_ = std::make_unique< Vok::EntityVokNboAttrLogSa >( tree );
}

bool PlatformAgent::step()
{
   if ( !ready() ) {
      return false;
   }
   follow();
   hearRequests();
   answerDrops();
   if ( !configChanges_->hasChanges() && !changed_ ) {
      return false;
   }
   Vok::NboAttrLog::Out noted;
   configChanges_->write( noted ); // so that the next change is one
   changed_ = false;
   platform_->report();
   setup_.tracking.follow( *followed_, *status_, *setup_.capabilities, troubles_ );
   return true;
}

void PlatformAgent::troubleIs( const std::string & intf, const std::string & why )
{
   if ( !Derive::noteTrouble( troubles_, intf, why ) ) {
      return;
   }
   changed_ = true;
   if ( platform_ ) {
      platform_->troubleIs( Wyre::IntfId( intf ), why );
   }
}

/// The counters as they are when a number is first seen.
void PlatformAgent::answerDrops()
{
   const std::uint8_t number = dropRequest_.tree() ? dropRequest_.tree()->readerSeqNo() : 0;
   const auto told = drops_->pktDropResp();
   if ( told.contains( Ft::kernelDrops ) &&
         drops_->pktDropResp( Ft::kernelDrops ).writerSeqNo() == number ) {
      return;
   }
   const CaptureCounters captured = setup_.captured();
   const TrackerMeter::Counters tracked = setup_.tracking.counters();
   drops_->pktDropRespIs( Ft::PktDropCounterUpdateResponse(
         Ft::ftFullDrops, tracked.tableFull, tracked.packets, number ) );
   drops_->pktDropRespIs( Ft::PktDropCounterUpdateResponse(
         Ft::kernelDrops, captured.drops, captured.packets, number ) );
}

/// A request is a change: the one that stands there at first was made before. A tracker's counters
/// are cleared with those of any exporter of it; a request that names no tracker clears all.
void PlatformAgent::hearRequests()
{
   const auto requests = requests_.tree();
   if ( !requests ) {
      return;
   }
   const bool counters =
         clearCounters_ && !( *clearCounters_ == requests->clearCounters() );
   const bool statistics =
         clearStatistics_ && !( *clearStatistics_ == requests->clearFtStatistics() );
   clearCounters_ = requests->clearCounters();
   clearStatistics_ = requests->clearFtStatistics();
   if ( counters ) {
      setup_.tracking.clearCounters( std::string( clearCounters_->tracker() ) );
   }
   if ( statistics ) {
      setup_.tracking.clearCounters();
      setup_.clearCaptured();
   }
}

std::string PlatformAgent::refusal() const
{
   for ( const auto & writing : writings_ ) {
      if ( !writing->refusal().empty() ) {
         return writing->refusal();
      }
   }
   return {};
}

unsigned PlatformAgent::bytesOfPacket() const
{
   constexpr unsigned headers = 128;
   return followed_ ? std::max< unsigned >( followed_->sampleSize().value(), headers ) : headers;
}

bool PlatformAgent::settled() const
{
   return !writings_.empty() &&
         std::all_of( writings_.begin(), writings_.end(),
               []( const auto & one ) { return one->settled(); } );
}

} // namespace FlowtrackPlatform
