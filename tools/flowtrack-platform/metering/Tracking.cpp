// From the configuration to trackers and samplers, and from frames to flows.
#include "tools/flowtrack-platform/metering/Tracking.h"

#include <algorithm>
#include <utility>

namespace FlowtrackPlatform {

namespace Ft = FlowTracking;
namespace Hw = HwFlowTracking;

void Tracking::trackers( const Hw::Config & config, const Hw::Status & status,
      const Hw::Capabilities & capabilities )
{
   complaints_.clear();
   for ( auto at = meters_.begin(); at != meters_.end(); ) {
      if ( config.hwFtConfig( at->first ) && status.hwFtStatus( at->first ) ) {
         ++at;
         continue;
      }
      at->second->end( 0 );
      gone_.packets += at->second->counters().packets;
      gone_.tableFull += at->second->counters().tableFull;
      at = meters_.erase( at );
   }
   for ( const auto & tracker : config.hwFtConfig() ) {
      if ( !status.hwFtStatus( tracker->name() ) ) {
         continue;
      }
      auto & meter = meters_[ std::string( tracker->name() ) ];
      const TrackerPlan plan = planOf(
            config, *tracker, capabilities, meter ? &meter->plan() : nullptr, complaints_ );
      if ( meter ) {
         meter->planIs( plan );
      } else {
         meter = std::make_unique< TrackerMeter >( plan, makeSender_ );
      }
   }
}

/// A sampler goes on counting while its binding stays.
void Tracking::bind(
      const Port & port, const Hw::IntfFtConfig & binding, std::map< Port, Bound > & to )
{
   const auto meter = meters_.find( std::string( binding.hwFtConfig()->name() ) );
   if ( meter == meters_.end() ) {
      return;
   }
   const TrackerPlan & plan = meter->second->plan();
   const auto before = bound_.find( port );
   Bound bound{ plan.name, binding.sampleMode() != Ft::sampleModeAll, indexOf_( port.intf ),
      before != bound_.end() ? before->second.sampler : Sampler() };
   bound.sampler.settingsAre( plan.sampleRate, plan.sampleLimit );
   to.emplace( port, std::move( bound ) );
}

namespace {

bool isWanted( const Hw::IntfFtStatus & said, const Tracking::Troubles & troubles )
{
   const auto trouble = troubles.find( std::string( said.intfId().stringValue() ) );
   return said.active() || ( trouble != troubles.end() && said.reason() == trouble->second );
}

} // namespace

void Tracking::follow( const Hw::Config & config, const Hw::Status & status,
      const Hw::Capabilities & capabilities, const Troubles & troubles )
{
   trackers( config, status, capabilities );
   std::map< Port, Bound > bound;
   for ( const auto & binding : config.hwIntfFtConfig() ) {
      const Port port{ std::string( binding->intfId().stringValue() ), Direction::ingress };
      const auto said = status.hwIntfFtStatus( binding->intfId() );
      if ( said && isWanted( *said, troubles ) ) {
         bind( port, *binding, bound );
      }
   }
   for ( const auto & binding : config.hwEgressIntfFtConfig() ) {
      const Port port{ std::string( binding->intfId().stringValue() ), Direction::egress };
      const auto said = status.egressHwIntfFtStatus( binding->intfId() );
      if ( said && isWanted( *said, troubles ) ) {
         bind( port, *binding, bound );
      }
   }
   bound_ = std::move( bound );
   for ( const auto & [ name, meter ] : meters_ ) {
      InterfaceNames names;
      for ( const auto & [ port, one ] : bound_ ) {
         if ( one.tracker == name ) {
            names.emplace( one.index, port.intf );
         }
      }
      meter->interfacesAre( names );
   }
}

std::vector< Port > Tracking::ports() const
{
   std::vector< Port > all;
   for ( const auto & [ port, one ] : bound_ ) {
      all.push_back( port );
   }
   return all;
}

bool Tracking::exports( const Port & port ) const
{
   const auto bound = bound_.find( port );
   if ( bound == bound_.end() ) {
      return false;
   }
   const auto & exporters = meters_.at( bound->second.tracker )->plan().exporters;
   return std::any_of( exporters.begin(), exporters.end(), []( const ExporterPlan & exporter ) {
      return !exporter.destination.collectors.empty();
   } );
}

/// Frames are read only once they are taken, but where groups say which are to be sampled.
void Tracking::frame( const Port & port, int linkType, std::span< const std::uint8_t > bytes,
      std::uint32_t length, Time time )
{
   const auto at = bound_.find( port );
   if ( at == bound_.end() ) {
      return;
   }
   Bound & bound = at->second;
   TrackerMeter & meter = *meters_.at( bound.tracker );
   if ( !bound.filtered && bound.sampler.next( time ) != Sampler::Verdict::taken ) {
      return;
   }
   auto packet = decode( linkType, bytes, length, meter.plan().decode );
   if ( !packet ) {
      return;
   }
   packet->time = time;
   packet->direction = port.direction;
   packet->interface = bound.index;
   if ( bound.filtered &&
         ( !meter.selects( *packet ) || bound.sampler.next( time ) != Sampler::Verdict::taken ) ) {
      return;
   }
   meter.count( *packet );
}

void Tracking::tick( Time now )
{
   for ( const auto & [ name, meter ] : meters_ ) {
      meter->tick( now );
   }
}

void Tracking::end( Time now )
{
   for ( const auto & [ name, meter ] : meters_ ) {
      meter->end( now );
   }
}

TrackerMeter::Counters Tracking::counters() const
{
   TrackerMeter::Counters sum = gone_;
   for ( const auto & [ name, meter ] : meters_ ) {
      sum.packets += meter->counters().packets;
      sum.tableFull += meter->counters().tableFull;
   }
   return sum;
}

void Tracking::clearCounters()
{
   gone_ = {};
   for ( const auto & [ name, meter ] : meters_ ) {
      meter->clearCounters();
   }
}

void Tracking::clearCounters( const std::string & tracker )
{
   if ( tracker.empty() ) {
      clearCounters();
   } else if ( const auto at = meters_.find( tracker ); at != meters_.end() ) {
      at->second->clearCounters();
   }
}

} // namespace FlowtrackPlatform
