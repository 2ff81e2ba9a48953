// What the platform takes, and what it says of it.
#include "tools/derive/Platform.h"

#include <set>
#include <utility>

namespace Derive {

namespace Hw = HwFlowTracking;

namespace {

/// No two groups occupy the same hardware group.
void dropDoubles( Hw::Status & status )
{
   std::set< std::uint16_t > taken;
   for ( const auto & tracker : status.hwFtStatus() ) {
      for ( const auto & group : tracker->hwFgStatus() ) {
         for ( const std::uint16_t id : group->hwFgId() ) {
            if ( !taken.insert( id ).second ) {
               group->hwFgIdDel( id );
            }
         }
      }
   }
}

} // namespace

Platform::Platform( Corvo::Ptr< const Hw::Config > config,
      Corvo::Ptr< const Hw::Capabilities > capabilities, Corvo::Ptr< Hw::Status > status )
      : config_( std::move( config ) ),
        capabilities_( std::move( capabilities ) ),
        status_( std::move( status ) ),
        trackerSet_( [ this ] { trackers(); } ),
        interfaces_( [ this ] { interfaces(); } ),
        root_( [ this ] { root(); } ),
        templates_( [ this ] { templates(); } ),
        configFollower_( *config_, [ this ]( const Corvo::Change & change ) { hear( change ); } ),
        capabilitiesFollower_(
              *capabilities_, [ this ]( const Corvo::Change & ) { hearCapabilities(); } )
{
   dropDoubles( *status_ );
   hearCapabilities();
}

void Platform::hear( const Corvo::Change & change )
{
   switch ( change.attrId ) {
   case Hw::Config::hwFtConfigAttrId:
      return trackerSet_.request();
   case Hw::Config::hwIntfFtConfigAttrId:
   case Hw::Config::hwEgressIntfFtConfigAttrId:
      return interfaces_.request();
   default:
      return root_.request();
   }
}

/// Everything depends on what hardware is able to do.
void Platform::hearCapabilities()
{
   trackerSet_.request();
   for ( const auto & [ name, tracker ] : trackers_ ) {
      tracker->request();
   }
}

void Platform::troubleIs( const Wyre::IntfId & intf, const std::string & why )
{
   if ( noteTrouble( troubles_, intf, why ) ) {
      interfaces_.request();
   }
}

void Platform::report()
{
   trackerSet_.run();
   for ( const auto & [ name, tracker ] : trackers_ ) {
      if ( tracker->report() ) {
         templates_.request();
      }
   }
   root_.run();
   templates_.run();
   interfaces_.run();
}

void Platform::trackers()
{
   sizes_.follow( config_->hwFtConfig(), [ this ]( const auto & tracker ) {
      return std::make_unique< EntityFollower >(
            *tracker, [ this ]( const Corvo::Change & change ) {
               if ( change.attrId == Hw::FtConfig::flowTableSizeAttrId ) {
                  trackerSet_.request();
               }
            } );
   } );
   refused_ = refusals( *config_, *capabilities_ );
   const auto taken = [ this ]( const Corvo::String & name ) {
      return capabilities_->supported() && config_->hwFtConfig( name ) &&
            !refused_.contains( name );
   };
   std::erase_if( trackers_, [ & ]( const auto & one ) {
      return !taken( one.first ) || !one.second->isOf( *config_->hwFtConfig( one.first ) );
   } );
   for ( const Corvo::Ptr< Hw::FtStatus > & tracker : status_->hwFtStatus() ) {
      if ( !taken( tracker->name() ) ) {
         status_->hwFtStatusDel( tracker->name() );
      }
   }
   for ( const Corvo::Ptr< Hw::FtConfig > & tracker : config_->hwFtConfig() ) {
      if ( taken( tracker->name() ) && !trackers_.contains( tracker->name() ) ) {
         trackers_.emplace( tracker->name(),
               std::make_unique< PlatformTracker >( tracker, capabilities_, status_ ) );
      }
   }
   root_.request();
   templates_.request();
   interfaces_.request();
}

void Platform::root()
{
   status_->sampleRateIs( config_->sampleRate() );
   status_->enabledIs( !trackers_.empty() );
   const bool subinterfaces = capabilities_->subIntfSupported();
   status_->samplingOnSubInterfaceIngressSupportedIs( subinterfaces );
   status_->samplingOnSubInterfaceEgressSupportedIs(
         subinterfaces && capabilities_->egressFlowTrackerIntfSupported() );
   status_->maxSampleTruncateSizeIs( std::nullopt );
}

/// The templates that groups use stand in the root; each tracker refers to its own.
void Platform::templates()
{
   using Ids = std::set< Ipfix::TemplateId >;
   const Ipfix::TemplateId none;
   Ids all;
   for ( const auto & tracker : status_->hwFtStatus() ) {
      Ids used;
      for ( const auto & group : tracker->hwFgStatus() ) {
         if ( !( group->templateId() == none ) ) {
            used.insert( group->templateId() );
            tracker->templateStatusIs( status_->templateStatusIs( group->templateId() ) );
         }
      }
      for ( const auto & present : tracker->templateStatus() ) {
         if ( const Ipfix::TemplateId id = present->templateId(); !used.contains( id ) ) {
            tracker->templateStatusDel( id );
         }
      }
      all.merge( used );
   }
   for ( const auto & present : status_->templateStatus() ) {
      if ( const Ipfix::TemplateId id = present->templateId(); !all.contains( id ) ) {
         status_->templateStatusDel( id );
      }
   }
}

/// What is said of an interface is constant: what is no longer so is said anew.
void Platform::interfaces()
{
   const IntfReasons reasons( *config_, *capabilities_, refused_, troubles_ );
   for ( const Corvo::Ptr< Hw::IntfFtStatus > & said : status_->hwIntfFtStatus() ) {
      const auto binding = config_->hwIntfFtConfig( said->intfId() );
      if ( !binding || !( said->reason() == reasons.ingress( *binding ) ) ||
            said->active() != said->reason().empty() ) {
         status_->hwIntfFtStatusDel( said->intfId() );
      }
   }
   for ( const Corvo::Ptr< Hw::IntfFtConfig > & binding : config_->hwIntfFtConfig() ) {
      const std::string reason = reasons.ingress( *binding );
      status_->hwIntfFtStatusIs( binding->intfId(), reason.empty(), reason );
   }
   for ( const Corvo::Ptr< Hw::IntfFtStatus > & said : status_->egressHwIntfFtStatus() ) {
      const auto binding = config_->hwEgressIntfFtConfig( said->intfId() );
      if ( !binding || !( said->reason() == reasons.egress( *binding ) ) ||
            said->active() != said->reason().empty() ) {
         status_->egressHwIntfFtStatusDel( said->intfId() );
      }
   }
   for ( const Corvo::Ptr< Hw::IntfFtConfig > & binding : config_->hwEgressIntfFtConfig() ) {
      const std::string reason = reasons.egress( *binding );
      status_->egressHwIntfFtStatusIs( binding->intfId(), reason.empty(), reason );
   }
}

} // namespace Derive
