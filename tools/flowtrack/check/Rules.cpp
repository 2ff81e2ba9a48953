// A rule is a function and a line of the table at the end.
#include "tools/flowtrack/check/Rules.h"

#include "Vok/Vok.h"
#include "tools/flowtrack/check/Capabilities.h"

#include <algorithm>
#include <map>
#include <set>

namespace FlowtrackCheck {

namespace {

using FlowTracking::FlowTrackerConfig;
using Findings = std::vector< Finding >;

std::string text( const Corvo::String & name ) { return "'" + std::string( name ) + "'"; }

void add( Findings & findings, const Vok::Entity & entity, const std::string & message )
{
   findings.push_back( { "", std::string( Vok::pathOf( entity ) ), message } );
}

template< class Check > void eachTracker( const Checked & checked, Check check )
{
   if ( checked.config ) {
      for ( const auto & tracker : checked.config->flowTrackerConfig() ) {
         check( *tracker );
      }
   }
}

template< class Check > void eachExporter( const Checked & checked, Check check )
{
   eachTracker( checked, [ & ]( const FlowTrackerConfig & tracker ) {
      for ( const auto & exporter : tracker.expConfig() ) {
         check( *exporter );
      }
   } );
}

/// A host in one spelling: an address in its canonical one, a name in small letters.
std::string spelledOnce( const Corvo::String & host )
{
   try {
      return std::string( Wyre::IpGenAddr( host ).stringValue() );
   } catch ( const Corvo::ParseException & ) {
      std::string name( host );
      std::transform( name.begin(), name.end(), name.begin(), []( unsigned char c ) {
         return static_cast< char >( c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c );
      } );
      return name;
   }
}

void trackerWithoutExporter( const Checked & checked, Findings & findings )
{
   eachTracker( checked, [ & ]( const FlowTrackerConfig & tracker ) {
      if ( tracker.expConfig().empty() ) {
         add( findings, tracker, "tracker " + text( tracker.name() ) + " has no exporter" );
      }
   } );
}

void exporterWithoutCollector( const Checked & checked, Findings & findings )
{
   eachExporter( checked, [ & ]( const FlowTracking::ExporterConfig & exporter ) {
      if ( exporter.collectorHostAndPort().empty() && !exporter.useSflowCollectorConfig() &&
            exporter.exportFormat() != FlowTracking::formatNone ) {
         add( findings, exporter, "exporter " + text( exporter.name() ) + " has no collector" );
      }
   } );
}

void collectorTwice( const Checked & checked, Findings & findings )
{
   eachTracker( checked, [ & ]( const FlowTrackerConfig & tracker ) {
      std::map< std::pair< std::string, std::uint16_t >, std::set< std::string > > seen;
      for ( const auto & exporter : tracker.expConfig() ) {
         for ( const auto & [ host, collector ] : exporter->collectorHostAndPort() ) {
            seen[ { spelledOnce( host ), collector.port() } ].insert(
                  text( host ) + " of exporter " + text( exporter->name() ) );
         }
      }
      for ( const auto & [ collector, names ] : seen ) {
         if ( names.size() > 1 ) {
            std::string message = "port " + std::to_string( collector.second ) + " of ";
            for ( const std::string & name : names ) {
               message += ( name == *names.begin() ? "" : " and " ) + name;
            }
            add( findings, tracker, message + " is one collector" );
         }
      }
   } );
}

void activeInterval( const Checked & checked, Findings & findings )
{
   eachTracker( checked, [ & ]( const FlowTrackerConfig & tracker ) {
      const auto active = tracker.activeInterval();
      const std::string is = "active interval " + std::to_string( active.value() ) + " ms: ";
      try {
         active.validate();
      } catch ( const Corvo::RangeException & e ) {
         add( findings, tracker, is + e.what() );
         return;
      }
      if ( active.value() != 0 && active.value() < tracker.inactiveTimeout().value() ) {
         const std::string timeout = std::to_string( tracker.inactiveTimeout().value() );
         add( findings, tracker, is + "below the inactive timeout, " + timeout + " ms" );
      }
   } );
}

/// Groups of the configuration or of the hardware: both name exporters of their tracker.
template< class Tracker, class Groups > void exportersOf(
      const Tracker & tracker, const Groups & groups, Findings & findings )
{
   for ( const auto & group : groups ) {
      for ( const auto & name : group->expName() ) {
         if ( !tracker.expConfig().contains( name ) ) {
            const std::string message = "group " + text( group->name() ) + " names exporter " +
                  text( name ) + ", which tracker " + text( tracker.name() ) + " has not";
            add( findings, *group, message );
         }
      }
   }
}

void groupWithMissingExporter( const Checked & checked, Findings & findings )
{
   eachTracker( checked, [ & ]( const FlowTrackerConfig & tracker ) {
      exportersOf( tracker, tracker.fgConfig(), findings );
   } );
   if ( checked.hardware ) {
      for ( const auto & tracker : checked.hardware->hwFtConfig() ) {
         exportersOf( *tracker, tracker->hwFgConfig(), findings );
      }
   }
}

bool isBuiltIn( Ipfix::TemplateId id )
{
   const auto & type = *Corvo::ModuleInspectData::findType( "FlowTracking::StaticTemplateId" );
   const auto enumerators = type.enumerators();
   return std::any_of( enumerators.begin(), enumerators.end(), [ & ]( const auto & one ) {
      return one.first + FlowTracking::Constants::templateIdBase() == id.value() &&
            one.second != "staticTemplateIdMax";
   } );
}

void groupWithMissingTemplate( const Checked & checked, Findings & findings )
{
   if ( !checked.hardware || !checked.config ) {
      return;
   }
   for ( const auto & tracker : checked.hardware->hwFtConfig() ) {
      for ( const auto & group : tracker->hwFgConfig() ) {
         const Ipfix::TemplateId id = group->templateId();
         if ( id != Ipfix::TemplateId() && !isBuiltIn( id ) &&
               !checked.config->templateConfig().contains( id ) ) {
            const std::string message = "group " + text( group->fgName() ) + " names template " +
                  std::to_string( id.value() ) + ", which is neither built in nor configured";
            add( findings, *group, message );
         }
      }
   }
}

template< class Bindings > void trackersOf(
      const FlowTracking::Config & config, const Bindings & bindings, Findings & findings )
{
   for ( const auto & binding : bindings ) {
      if ( !config.flowTrackerConfig().contains( binding->trackerName() ) ) {
         const std::string message = "interface " + text( binding->name() ) +
               " is bound to tracker " + text( binding->trackerName() ) +
               ", which is not configured";
         add( findings, *binding, message );
      }
   }
}

void bindingToMissingTracker( const Checked & checked, Findings & findings )
{
   if ( checked.config && checked.bindings ) {
      trackersOf( *checked.config, checked.bindings->flowTrackerIntfConfig(), findings );
      trackersOf( *checked.config, checked.bindings->flowTrackerEgressIntfConfig(), findings );
   }
}

} // namespace

const std::vector< Rule > & rules()
{
   static const std::vector< Rule > all = {
      { "tracker-without-exporter", "its flow records go nowhere", trackerWithoutExporter },
      { "exporter-without-collector", "it stays inactive, as it has nobody to send to",
            exporterWithoutCollector },
      { "collector-twice", "it gets each record twice, and counts flows twice", collectorTwice },
      { "active-interval", "flows that go on are reported before silence could end them, or not "
                           "as the agents expect",
            activeInterval },
      { "group-with-missing-exporter", "its records do not get there", groupWithMissingExporter },
      { "group-with-missing-template", "collectors cannot read its records",
            groupWithMissingTemplate },
      { "binding-to-missing-tracker", "nothing is tracked on it", bindingToMissingTracker },
      { "beyond-capabilities", "the platform does not do it, or does less", beyondCapabilities },
   };
   return all;
}

std::vector< Finding > check( const Checked & checked )
{
   Findings all;
   for ( const Rule & rule : rules() ) {
      Findings findings;
      rule.check( checked, findings );
      std::sort( findings.begin(), findings.end(), []( const Finding & a, const Finding & b ) {
         return std::pair( a.path, a.message ) < std::pair( b.path, b.message );
      } );
      for ( Finding & finding : findings ) {
         finding.rule = rule.name;
         finding.message += std::string( ": " ) + rule.reason;
         all.push_back( std::move( finding ) );
      }
   }
   return all;
}

} // namespace FlowtrackCheck
