// Cap'n Proto. Its messages cannot be kept and changed for long, as what was replaced in them is
// never freed: a program has structures of its own, and writes them into messages.
#include "bench/trees/BenchCapn.capnp.h"
#include "bench/trees/Trees.h"

#include <capnp/message.h>
#include <capnp/serialize.h>

namespace Bench::Trees {
namespace {

template< class Text > std::string textOf( const Text & text )
{
   return { text.begin(), text.size() };
}

capnp::Text::Reader textOf( const std::string & text )
{
   return { text.data(), text.size() };
}

// Into a list that is as long as the map, each member by `fill`.
template< class List, class Map, class Fill > void fillList( List list, const Map & map, Fill fill )
{
   unsigned i = 0;
   for ( const auto & [ key, value ] : map ) {
      fill( list[ i++ ], key, value );
   }
}

template< class Map > unsigned sizeOf( const Map & map )
{
   return static_cast< unsigned >( map.size() );
}

void fill( BenchCapn::AccessList::Builder to, const AccessList & list )
{
   to.setSeqno( list.seqno );
   to.setName( textOf( list.name ) );
   to.setType( list.type );
}

void fill( BenchCapn::Group::Builder to, const std::string & name, const Group & group )
{
   to.setName( textOf( name ) );
   to.setSeqno( group.seqno );
   if ( group.ip != AccessList() ) {
      fill( to.initIp(), group.ip );
   }
   if ( group.ip6 != AccessList() ) {
      fill( to.initIp6(), group.ip6 );
   }
   if ( group.mirror != Mirror() ) {
      auto mirror = to.initMirror();
      mirror.setSession( textOf( group.mirror.session ) );
      mirror.setInitialCopy( group.mirror.initialCopy );
      mirror.setSelector( group.mirror.selector );
      mirror.setInterval( group.mirror.interval );
   }
   auto exporters = to.initExporters( sizeOf( group.exporters ) );
   unsigned i = 0;
   for ( const std::string & exporter : group.exporters ) {
      exporters.set( i++, textOf( exporter ) );
   }
}

void fill( BenchCapn::Exporter::Builder to, const std::string & name, const Exporter & exporter )
{
   to.setName( textOf( name ) );
   if ( !exporter.localIntf.empty() ) {
      to.setLocalIntf( textOf( exporter.localIntf ) );
   }
   to.setMtu( exporter.mtu );
   to.setDscp( exporter.dscp );
   to.setTemplateInterval( exporter.templateInterval );
   fillList( to.initCollectors( sizeOf( exporter.collectors ) ), exporter.collectors,
         []( auto made, const std::string & host, std::uint16_t port ) {
            made.setHost( textOf( host ) );
            made.setPort( port );
         } );
}

void fill( BenchCapn::Config::Builder to, const Config & config )
{
   to.setEnabled( config.enabled );
   to.setSampleRate( config.sampleRate );
   const auto one = []( auto made, const std::string & name, const auto & value ) {
      fill( made, name, value );
   };
   fillList( to.initTrackers( sizeOf( config.trackers ) ), config.trackers,
         [ & ]( auto made, const std::string & name, const Tracker & tracker ) {
            made.setName( textOf( name ) );
            fillList( made.initExporters( sizeOf( tracker.exporters ) ), tracker.exporters, one );
            fillList( made.initGroups( sizeOf( tracker.groups ) ), tracker.groups, one );
            made.setInactiveTimeout( tracker.inactiveTimeout );
            made.setActiveInterval( tracker.activeInterval );
            made.setFlowTableSize( tracker.flowTableSize );
            made.setTcpStates( tracker.tcpStates );
         } );
}

void fill( BenchCapn::ExporterStatus::Builder to, const std::string & name,
      const ExporterStatus & exporter )
{
   to.setName( textOf( name ) );
   to.setActive( exporter.active );
   if ( !exporter.reasons.empty() ) {
      fillList( to.initReasons( sizeOf( exporter.reasons ) ), exporter.reasons,
            []( auto made, std::uint8_t family, std::uint8_t reason ) {
               made.setFamily( family );
               made.setReason( reason );
            } );
   }
   fillList( to.initCollectors( sizeOf( exporter.collectors ) ), exporter.collectors,
         []( auto made, const std::string & host, const CollectorStatus & collector ) {
            made.setHost( textOf( host ) );
            made.setReason( collector.reason );
            made.setActive( collector.active );
         } );
}

void fill( BenchCapn::Status::Builder to, const Status & status )
{
   fillList( to.initTrackers( sizeOf( status.trackers ) ), status.trackers,
         []( auto made, const std::string & name, const TrackerStatus & tracker ) {
            made.setName( textOf( name ) );
            made.setReason( tracker.reason );
            made.setActive( tracker.active );
            fillList( made.initExporters( sizeOf( tracker.exporters ) ), tracker.exporters,
                  []( auto madeExporter, const std::string & exporterName,
                        const ExporterStatus & exporter ) {
                     fill( madeExporter, exporterName, exporter );
                  } );
         } );
}

AccessList dataOf( BenchCapn::AccessList::Reader list )
{
   return { list.getSeqno(), textOf( list.getName() ), list.getType() };
}

Group dataOf( BenchCapn::Group::Reader group )
{
   const auto mirror = group.getMirror();
   Group data{ group.getSeqno(), dataOf( group.getIp() ), dataOf( group.getIp6() ),
      { textOf( mirror.getSession() ), mirror.getInitialCopy(), mirror.getSelector(),
            mirror.getInterval() },
      {} };
   for ( const auto exporter : group.getExporters() ) {
      data.exporters.insert( textOf( exporter ) );
   }
   return data;
}

Exporter dataOf( BenchCapn::Exporter::Reader exporter )
{
   Exporter data{ textOf( exporter.getLocalIntf() ), exporter.getMtu(), exporter.getDscp(),
      exporter.getTemplateInterval(), {} };
   for ( const auto collector : exporter.getCollectors() ) {
      data.collectors.emplace( textOf( collector.getHost() ), collector.getPort() );
   }
   return data;
}

Config dataOf( BenchCapn::Config::Reader config )
{
   Config data{ {}, config.getEnabled(), config.getSampleRate() };
   data.trackers.reserve( config.getTrackers().size() );
   for ( const auto tracker : config.getTrackers() ) {
      Tracker & to = data.trackers[ textOf( tracker.getName() ) ];
      for ( const auto exporter : tracker.getExporters() ) {
         to.exporters.emplace( textOf( exporter.getName() ), dataOf( exporter ) );
      }
      for ( const auto group : tracker.getGroups() ) {
         to.groups.emplace( textOf( group.getName() ), dataOf( group ) );
      }
      to.inactiveTimeout = tracker.getInactiveTimeout();
      to.activeInterval = tracker.getActiveInterval();
      to.flowTableSize = tracker.getFlowTableSize();
      to.tcpStates = tracker.getTcpStates();
   }
   return data;
}

ExporterStatus dataOf( BenchCapn::ExporterStatus::Reader exporter )
{
   ExporterStatus data{ {}, exporter.getActive(), {} };
   for ( const auto reason : exporter.getReasons() ) {
      data.reasons.emplace( reason.getFamily(), reason.getReason() );
   }
   for ( const auto collector : exporter.getCollectors() ) {
      data.collectors[ textOf( collector.getHost() ) ] = {
         collector.getReason(), collector.getActive()
      };
   }
   return data;
}

Status dataOf( BenchCapn::Status::Reader status )
{
   Status data;
   data.trackers.reserve( status.getTrackers().size() );
   for ( const auto tracker : status.getTrackers() ) {
      TrackerStatus & to = data.trackers[ textOf( tracker.getName() ) ];
      to.reason = tracker.getReason();
      to.active = tracker.getActive();
      for ( const auto exporter : tracker.getExporters() ) {
         to.exporters.emplace( textOf( exporter.getName() ), dataOf( exporter ) );
      }
   }
   return data;
}

template< class Tree > struct RootOf;
template<> struct RootOf< Config > {
   using Type = BenchCapn::Config;
};
template<> struct RootOf< Status > {
   using Type = BenchCapn::Status;
};

template< class Tree > class CapnProtoCodec {
   using Root = typename RootOf< Tree >::Type;

 public:
   explicit CapnProtoCodec( const Tree & tree ) : tree_( tree ) { encode(); }

   void encode()
   {
      capnp::MallocMessageBuilder message;
      fill( message.initRoot< Root >(), tree_ );
      out_ = capnp::messageToFlatArray( message );
   }
   void decode() { data(); }
   Tree data() const
   {
      capnp::ReaderOptions options;
      options.traversalLimitInWords = 2 * out_.size() + 1'000'000;
      capnp::FlatArrayMessageReader reader( out_, options );
      return dataOf( reader.getRoot< Root >() );
   }
   std::size_t bytes() const { return out_.asBytes().size(); }

 private:
   const Tree tree_;
   kj::Array< capnp::word > out_;
};

} // namespace

Codecs< Config > capnProto( const Config & config )
{
   return codecsOf< CapnProtoCodec< Config > >( config );
}

Codecs< Status > capnProto( const Status & status )
{
   return codecsOf< CapnProtoCodec< Status > >( status );
}

} // namespace Bench::Trees
