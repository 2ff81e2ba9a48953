// protobuf's messages, each on the heap or in an arena of its own.
#include "bench/Check.h"
#include "bench/trees/BenchTrees.pb.h"
#include "bench/trees/Trees.h"

#include <google/protobuf/arena.h>

namespace Bench::Trees {
namespace {

using google::protobuf::Arena;

// Sets what is not at its default.
#define SET( to, field, value )                         \
   if ( const auto & v = value; v != ( to ).field() ) { \
      ( to ).set_##field( v );                          \
   }

void fill( BenchProto::AccessList & to, const AccessList & list )
{
   SET( to, seqno, list.seqno )
   SET( to, name, list.name )
   SET( to, type, list.type )
}

void fill( BenchProto::Group & to, const Group & group )
{
   SET( to, seqno, group.seqno )
   if ( group.ip != AccessList() ) {
      fill( *to.mutable_ip(), group.ip );
   }
   if ( group.ip6 != AccessList() ) {
      fill( *to.mutable_ip6(), group.ip6 );
   }
   if ( group.mirror != Mirror() ) {
      BenchProto::Mirror & mirror = *to.mutable_mirror();
      SET( mirror, session, group.mirror.session )
      SET( mirror, initial_copy, group.mirror.initialCopy )
      SET( mirror, selector, group.mirror.selector )
      SET( mirror, interval, group.mirror.interval )
   }
   for ( const std::string & exporter : group.exporters ) {
      to.add_exporter( exporter );
   }
}

void fill( BenchProto::Exporter & to, const Exporter & exporter )
{
   SET( to, local_intf, exporter.localIntf )
   SET( to, mtu, exporter.mtu )
   SET( to, dscp, exporter.dscp )
   SET( to, template_interval, exporter.templateInterval )
   for ( const auto & [ host, port ] : exporter.collectors ) {
      ( *to.mutable_collector() )[ host ] = port;
   }
}

void fill( BenchProto::Config & to, const Config & config )
{
   SET( to, enabled, config.enabled )
   SET( to, sample_rate, config.sampleRate )
   for ( const auto & [ name, tracker ] : config.trackers ) {
      BenchProto::Tracker & made = ( *to.mutable_tracker() )[ name ];
      for ( const auto & [ exporterName, exporter ] : tracker.exporters ) {
         fill( ( *made.mutable_exporter() )[ exporterName ], exporter );
      }
      for ( const auto & [ groupName, group ] : tracker.groups ) {
         fill( ( *made.mutable_group() )[ groupName ], group );
      }
      SET( made, inactive_timeout, tracker.inactiveTimeout )
      SET( made, active_interval, tracker.activeInterval )
      SET( made, flow_table_size, tracker.flowTableSize )
      SET( made, tcp_states, tracker.tcpStates )
   }
}

void fill( BenchProto::Status & to, const Status & status )
{
   for ( const auto & [ name, tracker ] : status.trackers ) {
      BenchProto::TrackerStatus & made = ( *to.mutable_tracker() )[ name ];
      SET( made, reason, tracker.reason )
      SET( made, active, tracker.active )
      for ( const auto & [ exporterName, exporter ] : tracker.exporters ) {
         BenchProto::ExporterStatus & madeExporter = ( *made.mutable_exporter() )[ exporterName ];
         for ( const auto & [ family, reason ] : exporter.reasons ) {
            ( *madeExporter.mutable_reason() )[ family ] = reason;
         }
         SET( madeExporter, active, exporter.active )
         for ( const auto & [ host, collector ] : exporter.collectors ) {
            BenchProto::CollectorStatus & madeCollector =
                  ( *madeExporter.mutable_collector() )[ host ];
            SET( madeCollector, reason, collector.reason )
            SET( madeCollector, active, collector.active )
         }
      }
   }
}

#undef SET

AccessList dataOf( const BenchProto::AccessList & list )
{
   return { list.seqno(), list.name(), static_cast< std::uint8_t >( list.type() ) };
}

Group dataOf( const BenchProto::Group & group )
{
   const BenchProto::Mirror & mirror = group.mirror();
   return { group.seqno(), dataOf( group.ip() ), dataOf( group.ip6() ),
      { mirror.session(), static_cast< std::uint16_t >( mirror.initial_copy() ),
            static_cast< std::uint8_t >( mirror.selector() ),
            static_cast< std::uint16_t >( mirror.interval() ) },
      { group.exporter().begin(), group.exporter().end() } };
}

Exporter dataOf( const BenchProto::Exporter & exporter )
{
   Exporter data{ exporter.local_intf(), static_cast< std::uint16_t >( exporter.mtu() ),
      static_cast< std::uint8_t >( exporter.dscp() ), exporter.template_interval(), {} };
   for ( const auto & [ host, port ] : exporter.collector() ) {
      data.collectors.emplace( host, static_cast< std::uint16_t >( port ) );
   }
   return data;
}

Config dataOf( const BenchProto::Config & config )
{
   Config data{ {}, config.enabled(), config.sample_rate() };
   for ( const auto & [ name, tracker ] : config.tracker() ) {
      Tracker & to = data.trackers[ name ];
      for ( const auto & [ exporterName, exporter ] : tracker.exporter() ) {
         to.exporters.emplace( exporterName, dataOf( exporter ) );
      }
      for ( const auto & [ groupName, group ] : tracker.group() ) {
         to.groups.emplace( groupName, dataOf( group ) );
      }
      to.inactiveTimeout = tracker.inactive_timeout();
      to.activeInterval = tracker.active_interval();
      to.flowTableSize = tracker.flow_table_size();
      to.tcpStates = tracker.tcp_states();
   }
   return data;
}

ExporterStatus dataOf( const BenchProto::ExporterStatus & exporter )
{
   ExporterStatus data{ {}, exporter.active(), {} };
   for ( const auto & [ family, reason ] : exporter.reason() ) {
      data.reasons.emplace(
            static_cast< std::uint8_t >( family ), static_cast< std::uint8_t >( reason ) );
   }
   for ( const auto & [ host, collector ] : exporter.collector() ) {
      data.collectors[ host ] = {
         static_cast< std::uint8_t >( collector.reason() ), collector.active()
      };
   }
   return data;
}

Status dataOf( const BenchProto::Status & status )
{
   Status data;
   for ( const auto & [ name, tracker ] : status.tracker() ) {
      TrackerStatus & to = data.trackers[ name ];
      to.reason = static_cast< std::uint8_t >( tracker.reason() );
      to.active = tracker.active();
      for ( const auto & [ exporterName, exporter ] : tracker.exporter() ) {
         to.exporters.emplace( exporterName, dataOf( exporter ) );
      }
   }
   return data;
}

template< class Tree > struct MessageOf;
template<> struct MessageOf< Config > {
   using Type = BenchProto::Config;
};
template<> struct MessageOf< Status > {
   using Type = BenchProto::Status;
};

template< class Tree, bool inArena > class ProtobufCodec {
   using Message = typename MessageOf< Tree >::Type;

 public:
   explicit ProtobufCodec( const Tree & tree )
   {
      fill( message_, tree );
      encode();
   }

   void encode() { require( message_.SerializeToString( &out_ ), "serialize" ); }
   void decode()
   {
      if constexpr ( inArena ) {
         Arena arena;
         parse( *Arena::CreateMessage< Message >( &arena ) );
      } else {
         Message message;
         parse( message );
      }
   }
   Tree data()
   {
      Message message;
      parse( message );
      return dataOf( message );
   }
   std::size_t bytes() const { return out_.size(); }

 private:
   void parse( Message & message ) const { require( message.ParseFromString( out_ ), "parse" ); }

   Arena arena_;
   Message heap_;
   Message & message_ = inArena ? *Arena::CreateMessage< Message >( &arena_ ) : heap_;
   std::string out_;
};

} // namespace

Codecs< Config > protobuf( const Config & config )
{
   return codecsOf< ProtobufCodec< Config, false > >( config );
}

Codecs< Status > protobuf( const Status & status )
{
   return codecsOf< ProtobufCodec< Status, false > >( status );
}

Codecs< Config > protobufArena( const Config & config )
{
   return codecsOf< ProtobufCodec< Config, true > >( config );
}

Codecs< Status > protobufArena( const Status & status )
{
   return codecsOf< ProtobufCodec< Status, true > >( status );
}

} // namespace Bench::Trees
