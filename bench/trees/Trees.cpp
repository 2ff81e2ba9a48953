// The data of the trees, the same in every run.
#include "bench/trees/Trees.h"

#include "tests/support/Random.h"

#include <iterator>
#include <utility>

namespace Bench::Trees {
namespace {

using TestSupport::Random;

template< std::size_t n > const char * oneOf( Random & random, const char * const ( &texts )[ n ] )
{
   return texts[ random.below( n ) ];
}

constexpr const char * exporterNames[] = { "archive", "operators", "storage", "audit-of-campus-2" };
constexpr const char * groupNames[] = { "voice", "web", "replication", "default-ipv6-traffic" };
constexpr const char * trackerNames[] = { "campus", "servers", "fabric" };

// Names are as operators give them, some shorter than what stands in place and some longer.
std::string numbered( const char * name, std::size_t number )
{
   return name + ( '-' + std::to_string( number ) );
}

std::string address( Random & random )
{
   if ( random.oneIn( 3 ) ) {
      return "2001:db8:0:" + std::to_string( random.below( 10'000 ) ) + "::1";
   }
   return "10." + std::to_string( random.below( 256 ) ) + '.' +
         std::to_string( random.below( 256 ) ) + '.' + std::to_string( random.below( 256 ) );
}

Exporter exporterOf( Random & random )
{
   Exporter exporter;
   exporter.localIntf = random.oneIn( 2 ) ? "" : "Loopback0";
   exporter.mtu = random.oneIn( 2 ) ? 1400 : 9152;
   exporter.dscp = random.oneIn( 2 ) ? 16 : 0;
   exporter.templateInterval = random.oneIn( 2 ) ? 60'000 : 3'600'000;
   exporter.collectors.emplace( address( random ), std::uint16_t{ 4739 } );
   if ( random.oneIn( 4 ) ) {
      exporter.collectors.emplace( address( random ), std::uint16_t{ 4740 } );
   }
   return exporter;
}

Group groupOf( Random & random, const std::string & name, const Named< Exporter > & exporters )
{
   Group group;
   group.seqno = 100 * ( 1 + random.below( 10 ) );
   group.ip = { 10, name + "-v4", 0 };
   if ( random.oneIn( 2 ) ) {
      group.ip6 = { 10, name + "-v6", 1 };
   }
   if ( random.oneIn( 4 ) ) {
      group.mirror = { "probe", 5, 1, 1000 };
   }
   for ( const auto & [ exporter, of ] : exporters ) {
      group.exporters.insert( exporter );
   }
   return group;
}

} // namespace

Config configOf( std::size_t trackers )
{
   Random random( trackers );
   Config config;
   config.enabled = true;
   config.sampleRate = 16'384;
   for ( std::size_t i = 0; i != trackers; ++i ) {
      Tracker tracker;
      for ( std::uint32_t left = 1 + random.below( 2 ); left != 0; --left ) {
         tracker.exporters.emplace( oneOf( random, exporterNames ), exporterOf( random ) );
      }
      for ( std::uint32_t left = 1 + random.below( 2 ); left != 0; --left ) {
         const std::string name = oneOf( random, groupNames );
         tracker.groups.emplace( name, groupOf( random, name, tracker.exporters ) );
      }
      tracker.inactiveTimeout = random.oneIn( 2 ) ? 3000 : 15'000;
      tracker.activeInterval = random.oneIn( 2 ) ? 60'000 : 300'000;
      tracker.flowTableSize = random.oneIn( 3 ) ? 100'000 : 153'600;
      tracker.tcpStates = random.oneIn( 3 );
      config.trackers.emplace( numbered( oneOf( random, trackerNames ), i ), std::move( tracker ) );
   }
   return config;
}

Status statusOf( std::size_t entities )
{
   Random random( entities );
   Status status;
   const std::size_t trackers = ( entities - 1 ) / 3;
   status.trackers.reserve( trackers );
   for ( std::size_t i = 0; i != trackers; ++i ) {
      TrackerStatus tracker;
      tracker.active = !random.oneIn( 8 );
      tracker.reason = tracker.active ? 0 : 2;
      ExporterStatus exporter;
      exporter.active = !random.oneIn( 8 );
      if ( !exporter.active ) {
         exporter.reasons.emplace( std::uint8_t{ 1 }, std::uint8_t{ 3 } );
         exporter.reasons.emplace( std::uint8_t{ 2 }, std::uint8_t{ 5 } );
      }
      CollectorStatus collector;
      collector.active = exporter.active;
      collector.reason = collector.active ? 0 : 2;
      exporter.collectors.emplace( address( random ), collector );
      tracker.exporters.emplace( oneOf( random, exporterNames ), std::move( exporter ) );
      status.trackers.emplace( numbered( oneOf( random, trackerNames ), i ), std::move( tracker ) );
   }
   return status;
}

std::size_t entitiesOf( const Config & config )
{
   std::size_t entities = 1;
   for ( const auto & [ name, tracker ] : config.trackers ) {
      entities += 1 + tracker.exporters.size() + tracker.groups.size();
   }
   return entities;
}

std::size_t entitiesOf( const Status & status )
{
   std::size_t entities = 1;
   for ( const auto & [ name, tracker ] : status.trackers ) {
      entities += 1 + tracker.exporters.size();
      for ( const auto & [ exporterName, exporter ] : tracker.exporters ) {
         entities += exporter.collectors.size();
      }
   }
   return entities;
}

} // namespace Bench::Trees
