// Each metric, a line of a table.
#include "tools/flowtrackd/Metrics.h"

#include <chrono>
#include <cstdint>
#include <prometheus/metric_family.h>
#include <prometheus/text_serializer.h>
#include <vector>

namespace Flowtrackd {

namespace {

using Vok::Store::Counters;
using Vok::Store::MountInfo;

struct Count {
   const char * name; ///< behind `flowtrackd_` or `flowtrackd_mount_`
   const char * help;
   std::uint64_t Counters::*field;
};

constexpr Count counts[] = {
   { "batches_in_total", "Batches that writers sent.", &Counters::batchesIn },
   { "bytes_in_total", "Bytes of batches that writers sent.", &Counters::bytesIn },
   { "batches_out_total", "Batches sent to readers, each reader's counted.",
         &Counters::batchesOut },
   { "bytes_out_total", "Bytes of batches sent to readers, each reader's counted.",
         &Counters::bytesOut },
   { "differences_total", "Batches of what a reader missed that was behind or away.",
         &Counters::differences },
   { "whole_trees_total", "Whole trees sent to readers.", &Counters::wholeTrees },
};

struct Gauge {
   const char * name; ///< behind `flowtrackd_mount_`
   const char * help;
   double ( *value )( const MountInfo & );
};

constexpr Gauge gauges[] = {
   { "readers", "Readers of a mount.",
         []( const MountInfo & m ) { return static_cast< double >( m.readers ); } },
   { "stale", "1 where a mount has no writer.",
         []( const MountInfo & m ) { return double( m.stale ); } },
   { "since_seconds", "When a mount got its writer, or lost it: seconds from 1970.",
         []( const MountInfo & m ) {
            return std::chrono::duration< double >( m.since.time_since_epoch() ).count();
         } },
   { "not_kept", "1 where batches of a mount cannot be kept at present.",
         []( const MountInfo & m ) { return double( !m.problem.empty() ); } },
};

class Families {
 public:
   prometheus::MetricFamily & add(
         const std::string & name, const char * help, prometheus::MetricType type )
   {
      prometheus::MetricFamily & family = all_.emplace_back();
      family.name = name;
      family.help = help;
      family.type = type;
      return family;
   }

   void addOne( const std::string & name, const char * help, prometheus::MetricType type,
         double value )
   {
      put( add( name, help, type ), {}, value );
   }

   static void put( prometheus::MetricFamily & family, const std::string & path, double value )
   {
      prometheus::ClientMetric & metric = family.metric.emplace_back();
      if ( !path.empty() ) {
         metric.label.push_back( { "path", path } );
      }
      if ( family.type == prometheus::MetricType::Counter ) {
         metric.counter.value = value;
      } else {
         metric.gauge.value = value;
      }
   }

   std::string text() const { return prometheus::TextSerializer().Serialize( all_ ); }

 private:
   std::vector< prometheus::MetricFamily > all_;
};

} // namespace

std::string metricsText( const Vok::Store::Server & server )
{
   using Type = prometheus::MetricType;
   const Counters & all = server.counters();
   const std::vector< MountInfo > mounts = server.mounts();
   Families families;
   families.addOne( "flowtrackd_sessions", "Connections.", Type::Gauge,
         static_cast< double >( server.sessions() ) );
   families.addOne( "flowtrackd_sessions_total", "Connections that came.", Type::Counter,
         static_cast< double >( all.sessions ) );
   families.addOne( "flowtrackd_refusals_total", "Refusals of connections and of channels.",
         Type::Counter, static_cast< double >( all.refusals ) );
   families.addOne( "flowtrackd_mounts", "Mounts.", Type::Gauge,
         static_cast< double >( mounts.size() ) );
   for ( const Count & count : counts ) {
      families.addOne( std::string( "flowtrackd_" ) + count.name, count.help, Type::Counter,
            static_cast< double >( all.*count.field ) );
      prometheus::MetricFamily & each = families.add(
            std::string( "flowtrackd_mount_" ) + count.name, count.help, Type::Counter );
      for ( const MountInfo & mount : mounts ) {
         Families::put( each, mount.path, static_cast< double >( mount.counters.*count.field ) );
      }
   }
   for ( const Gauge & gauge : gauges ) {
      prometheus::MetricFamily & each = families.add(
            std::string( "flowtrackd_mount_" ) + gauge.name, gauge.help, Type::Gauge );
      for ( const MountInfo & mount : mounts ) {
         Families::put( each, mount.path, gauge.value( mount ) );
      }
   }
   return families.text();
}

} // namespace Flowtrackd
