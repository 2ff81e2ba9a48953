// Groups, keys and records of one tracker.
#include "tools/flowtrack-platform/metering/TrackerMeter.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

namespace FlowtrackPlatform {

namespace {

std::vector< const Element * > elementsOf( const std::vector< Ipfix::RecordType > & numbers )
{
   std::vector< const Element * > elements;
   elements.reserve( numbers.size() );
   for ( const Ipfix::RecordType number : numbers ) {
      elements.push_back( findElement( number ) );
   }
   return elements;
}

/// Each template once; groups may share one.
std::vector< Template > templatesOf( const TrackerPlan & plan, const std::string & exporter )
{
   std::vector< Template > templates;
   std::set< std::uint16_t > ids;
   for ( const GroupPlan & group : plan.groups ) {
      if ( group.exporters.contains( exporter ) && ids.insert( group.layout.templateId ).second ) {
         templates.push_back( group.layout.asTemplate() );
      }
   }
   return templates;
}

} // namespace

TrackerMeter::TrackerMeter( const TrackerPlan & plan, MakeSender makeSender )
      : makeSender_( std::move( makeSender ) ),
        plan_( plan )
{
   apply();
}

void TrackerMeter::planIs( const TrackerPlan & plan )
{
   if ( plan == plan_ ) {
      return;
   }
   if ( !( plan.groups == plan_.groups ) || plan.domain != plan_.domain ||
         plan.sampleRate != plan_.sampleRate ) {
      end( now_ ); // what was counted by one rate is told with that
   }
   if ( plan.domain != plan_.domain ) {
      exporters_.clear();
   }
   plan_ = plan;
   apply();
}

void TrackerMeter::interfacesAre( const InterfaceNames & names )
{
   interfaces_ = names;
   for ( const auto & [ name, exporter ] : exporters_ ) {
      exporter->circumstancesAre( { plan_.name, plan_.sampleRate, interfaces_ } );
   }
}

void TrackerMeter::apply()
{
   table_.limitsAre( plan_.limits );
   groups_.clear();
   for ( const GroupPlan & group : plan_.groups ) {
      groups_.push_back( { elementsOf( group.layout.fields ), elementsOf( group.layout.keys ) } );
   }
   std::set< std::string > names;
   for ( const ExporterPlan & plan : plan_.exporters ) {
      names.insert( plan.name );
      auto & exporter = exporters_[ plan.name ];
      if ( exporter ) {
         exporter->planIs( plan, makeSender_ );
      } else {
         exporter = std::make_unique< Exporter >( plan_.domain, plan, makeSender_ );
      }
      exporter->templatesAre( templatesOf( plan_, plan.name ) );
   }
   std::erase_if( exporters_, [ & ]( const auto & one ) { return !names.contains( one.first ); } );
   interfacesAre( InterfaceNames( interfaces_ ) );
}

std::size_t TrackerMeter::groupOf( const Packet & packet ) const
{
   if ( packet.queuePair && plan_.ignoredQueuePairs.contains( *packet.queuePair ) ) {
      return none;
   }
   const auto found = std::find_if( plan_.groups.begin(), plan_.groups.end(),
         [ & ]( const GroupPlan & group ) { return group.selects( packet ); } );
   return found == plan_.groups.end()
         ? none
         : static_cast< std::size_t >( found - plan_.groups.begin() );
}

void TrackerMeter::count( const Packet & packet )
{
   now_ = std::max( now_, packet.time );
   const std::size_t group = groupOf( packet );
   if ( group == none ) {
      return;
   }
   key_.clear();
   for ( const Element * const element : groups_[ group ].keys ) {
      element->ofPacket( packet, key_ );
   }
   ++counters_.packets;
   const std::string_view key( reinterpret_cast< const char * >( key_.data() ), key_.size() );
   if ( !table_.add( group, key, packet ) ) {
      ++counters_.tableFull;
   }
}

void TrackerMeter::report( std::size_t group, const Flow & flow )
{
   record_.clear();
   for ( const Element * const element : groups_[ group ].fields ) {
      element->append( flow, record_ );
   }
   const GroupPlan & plan = plan_.groups[ group ];
   for ( const auto & [ name, exporter ] : exporters_ ) {
      if ( plan.exporters.contains( name ) ) {
         exporter->record( plan.layout.templateId, record_, now_ );
      }
   }
}

void TrackerMeter::tick( Time now )
{
   now_ = std::max( now_, now );
   table_.tick( now_ );
   for ( const auto & [ name, exporter ] : exporters_ ) {
      exporter->tick( now_ );
   }
}

void TrackerMeter::end( Time now )
{
   now_ = std::max( now_, now );
   table_.flush( EndReason::forced );
   tick( now_ );
}

} // namespace FlowtrackPlatform
