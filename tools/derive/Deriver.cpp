// The root, the set of trackers, the bindings, and what a change of a source asks for.
#include "tools/derive/Deriver.h"

#include "tools/derive/DeriveBindings.h"
#include "tools/derive/DeriveRoot.h"

#include <utility>

namespace Derive {

namespace Ft = FlowTracking;
namespace Hw = HwFlowTracking;

Deriver::Deriver(
      Sources sources, Corvo::Ptr< Hw::Config > hw, Corvo::Ptr< Ft::FtIdStatus > ids )
      : sources_( std::move( sources ) ),
        hw_( std::move( hw ) ),
        ids_( std::move( ids ) ),
        root_( [ this ] { deriveRoot( sources_, *hw_ ); } ),
        trackerSet_( [ this ] { trackers(); } ),
        queuePairs_( *sources_.config, "ignorableRocev2QpId", *hw_, "ignorableRocev2QpId" ),
        config_( *sources_.config, [ this ]( const Corvo::Change & change ) { hear( change ); } ),
        capabilities_( *sources_.capabilities,
              [ this ]( const Corvo::Change & change ) { hearCapabilities( change ); } ),
        templates_( *sources_.requests, Ft::AgentReq::templateExportReqAttrId,
              [ this ]( const Corvo::Change & ) {
                 eachTracker( &TrackerDeriver::templatesRequested );
              } )
{
   root_.request();
   trackerSet_.request();
   follow( ingress_ );
   follow( egress_ );
}

void Deriver::hear( const Corvo::Change & change )
{
   switch ( change.attrId ) {
   case Ft::Config::flowTrackerConfigAttrId:
   case Ft::Config::enabledAttrId:
      return trackerSet_.request();
   case Ft::Config::ignorableRocev2QpIdAttrId:
      return; // mirrored
   default:
      return root_.request();
   }
}

void Deriver::hearCapabilities( const Corvo::Change & change )
{
   if ( change.attrId == Hw::Capabilities::monitoredCpuQueueSupportedAttrId ) {
      eachTracker( &TrackerDeriver::capabilitiesChanged );
   } else {
      root_.request();
   }
}

void Deriver::eachTracker( void ( TrackerDeriver::*act )() )
{
   for ( const auto & [ name, tracker ] : trackers_ ) {
      ( tracker.get()->*act )();
   }
}

template< class Direction > void Deriver::follow( Bindings< Direction > & bindings )
{
   bindings.follower = std::make_unique< EntityFollower >(
         *sources_.bindings, [ &bindings ]( const Corvo::Change & change ) {
            if ( change.attrId == Direction::attrId ) {
               bindings.some.insert( *change.key< Wyre::IntfId >() );
            }
         } );
}

template< class Direction > void Deriver::derive( Bindings< Direction > & bindings )
{
   if ( bindings.all ) {
      deriveBindings< Direction >( *sources_.bindings, *hw_ );
   } else {
      for ( const Wyre::IntfId & intf : bindings.some ) {
         deriveBinding< Direction >( *sources_.bindings, *hw_, intf );
      }
   }
   bindings.all = false;
   bindings.some.clear();
}

void Deriver::derive()
{
   root_.run();
   trackerSet_.run();
   eachTracker( &TrackerDeriver::derive );
   derive( ingress_ );
   derive( egress_ );
}

/// Takes out what no tracker is configured for or enabled, and what has another number. What is
/// bound to it follows with the bindings.
void Deriver::dropStrangers( const TrackerIds::Names & names )
{
   for ( const Corvo::Ptr< Hw::FtConfig > & tracker : hw_->hwFtConfig() ) {
      if ( !sources_.config->enabled() || !names.contains( tracker->name() ) ||
            !( ids_.idOf( tracker->name() ) == tracker->ftId() ) ) {
         trackers_.erase( tracker->name() );
         hw_->hwFtConfigDel( tracker->name() );
      }
   }
   std::erase_if( trackers_,
         [ this ]( const auto & one ) { return !hw_->hwFtConfig( one.first ); } );
}

void Deriver::trackers()
{
   TrackerIds::Names names;
   for ( const auto & tracker : sources_.config->flowTrackerConfig() ) {
      names.insert( tracker->name() );
   }
   TrackerIds::Ids used;
   for ( const auto & tracker : hw_->hwFtConfig() ) {
      used.emplace( tracker->name(), tracker->ftId() );
   }
   // Numbers stay while flow tracking is off.
   ids_.assign( names, used );
   dropStrangers( names );
   ingress_.all = egress_.all = true;
   if ( !sources_.config->enabled() ) {
      return;
   }
   for ( const auto & from : sources_.config->flowTrackerConfig() ) {
      if ( const auto id = ids_.idOf( from->name() ) ) {
         const auto to = hw_->hwFtConfigIs( from->name(), *id );
         auto & tracker = trackers_[ from->name() ];
         if ( !tracker || !tracker->isOf( *from, *to ) ) {
            tracker.reset(); // it stops following before another one follows
            tracker = std::make_unique< TrackerDeriver >( sources_, from, to );
         }
      }
   }
}

} // namespace Derive
