// Groups and their layouts; exporters.
#include "tools/flowtrack-platform/metering/Plan.h"

#include "tools/flowtrack-platform/flows/Elements.h"

#include "Ipfix/IpfixTypes.h"

#include <algorithm>
#include <initializer_list>
#include <map>
#include <optional>
#include <utility>

namespace FlowtrackPlatform {

namespace {

namespace Ft = FlowTracking;
namespace Hw = HwFlowTracking;
using Encapsulation = Packet::Encapsulation;
using Elements = std::initializer_list< Ipfix::RecordType >;

constexpr Elements ofIpv4 = { Ipfix::sourceIPv4Address, Ipfix::destinationIPv4Address,
   Ipfix::icmpTypeCodeIPv4 };
constexpr Elements ofIpv6 = { Ipfix::sourceIPv6Address, Ipfix::destinationIPv6Address,
   Ipfix::icmpTypeCodeIPv6 };
constexpr Elements ofBoth = { Ipfix::sourceTransportPort, Ipfix::destinationTransportPort,
   Ipfix::protocolIdentifier, Ipfix::ipClassOfService, Ipfix::ingressInterface,
   Ipfix::egressInterface, Ipfix::flowDirection };
constexpr Elements counted = { Ipfix::octetDeltaCount, Ipfix::packetDeltaCount,
   Ipfix::tcpControlBits, Ipfix::flowStartMilliseconds, Ipfix::flowEndMilliseconds,
   Ipfix::flowEndReason };

void append( std::vector< Ipfix::RecordType > & to, Elements elements )
{
   to.insert( to.end(), elements.begin(), elements.end() );
}

/// A kind of packet: a bit of the flags that select it, and the template that its flows have.
struct Kind {
   Encapsulation encapsulation;
   std::uint8_t version;
   std::uint8_t flag;
   Ft::StaticTemplateId id;
   Ft::StaticTemplateId swId; ///< where software exports
};

constexpr std::uint8_t flagIpv4 = 1;
constexpr std::uint8_t flagIpv6 = 2;
constexpr std::uint8_t flagVxlan = 4;
constexpr std::uint8_t flagMpls = 8;
constexpr std::uint8_t flagRoce = 32;

constexpr Kind kinds[] = {
   { Encapsulation::none, 4, flagIpv4, Ft::dataTemplateIpv4, Ft::dataTemplateSwExportIpv4 },
   { Encapsulation::none, 6, flagIpv6, Ft::dataTemplateIpv6, Ft::dataTemplateSwExportIpv6 },
   { Encapsulation::vxlan, 4, flagVxlan, Ft::dataTemplateSwExportVxlanIpv4,
         Ft::dataTemplateSwExportVxlanIpv4 },
   { Encapsulation::vxlan, 6, flagVxlan, Ft::dataTemplateSwExportVxlanIpv6,
         Ft::dataTemplateSwExportVxlanIpv6 },
   { Encapsulation::mpls, 4, flagMpls, Ft::dataTemplateMplsIpv4, Ft::dataTemplateMplsIpv4 },
   { Encapsulation::mpls, 6, flagMpls, Ft::dataTemplateMplsIpv6, Ft::dataTemplateMplsIpv6 },
};

/// The built-in layout of a kind of packet.
Layout builtIn( const Kind & kind, std::uint16_t id )
{
   Layout layout{ id, {}, {} };
   append( layout.keys, kind.version == 4 ? ofIpv4 : ofIpv6 );
   append( layout.keys, ofBoth );
   if ( kind.encapsulation == Encapsulation::vxlan ) {
      append( layout.keys, { Ipfix::layer2SegmentId } );
   } else if ( kind.encapsulation == Encapsulation::mpls ) {
      append( layout.keys, { Ipfix::mplsTopLabelStackSection } );
   }
   layout.fields = layout.keys;
   append( layout.fields, counted );
   return layout;
}

/// The kind of packet that a built-in group of hardware is for, by its template.
std::optional< std::pair< Encapsulation, std::uint8_t > > hardwareKind( Ipfix::TemplateId id )
{
   using Kinds = std::map< Ft::StaticTemplateId, std::pair< Encapsulation, std::uint8_t > >;
   static const Kinds all = { { Ft::dataTemplateHwIpv4, { Encapsulation::none, 4 } },
      { Ft::dataTemplateHwIpv6, { Encapsulation::none, 6 } },
      { Ft::dataTemplateHwVxlanIpv4, { Encapsulation::vxlan, 4 } },
      { Ft::dataTemplateHwVxlanIpv6, { Encapsulation::vxlan, 6 } } };
   for ( const auto & [ code, kind ] : all ) {
      if ( Ft::Constants::reservedTemplateId( code ) == id ) {
         return kind;
      }
   }
   return std::nullopt;
}

bool hasAny( const Layout & layout, Elements elements )
{
   return std::any_of( elements.begin(), elements.end(), [ & ]( Ipfix::RecordType element ) {
      return std::find( layout.fields.begin(), layout.fields.end(), element ) !=
            layout.fields.end();
   } );
}

/// The groups of a tracker, one after the other.
class Groups {
 public:
   Groups( const Hw::Config & config, const Hw::FtConfig & tracker,
         std::vector< std::string > & complaints )
         : config_( config ),
           tracker_( tracker ),
           complaints_( complaints )
   {
   }

   std::vector< GroupPlan > all( bool groupsSupported )
   {
      if ( !groupsSupported || tracker_.hwFgConfig().empty() ) {
         GroupPlan whole;
         for ( const auto & exporter : tracker_.expConfig() ) {
            whole.exporters.insert( std::string( exporter->name() ) );
         }
         add( whole, 0, nullptr );
      } else {
         for ( const auto & group : tracker_.hwFgConfig() ) {
            GroupPlan plan;
            plan.name = std::string( group->fgName() );
            for ( const Corvo::String & name : group->expName() ) {
               plan.exporters.insert( std::string( name ) );
            }
            add( plan, group->encapFlags().value(), group.get() );
         }
      }
      return plans_;
   }

 private:
   /// Adds a plan for each kind of packet that the flags of the root and of the group let through;
   /// of a group, that its access lists can match, and that its fields are of.
   void add( GroupPlan plan, std::uint8_t flags, const Hw::FgConfig * group )
   {
      const Layout configured = group ? layoutOf( *group ) : Layout();
      const auto fixed = group ? hardwareKind( group->templateId() ) : std::nullopt;
      plan.roceOnly = rocev2Only( flags ) || rocev2Only( config_.encapFlags().value() );
      for ( const Kind & kind : kinds ) {
         if ( !passes( config_.encapFlags().value(), kind, true ) ||
               !passes( flags, kind, false ) || ( group && !listsPass( *group, kind ) ) ||
               ( fixed && *fixed != std::pair( kind.encapsulation, kind.version ) ) ) {
            continue;
         }
         const bool only4 = hasAny( configured, ofIpv4 ) && !hasAny( configured, ofIpv6 );
         const bool only6 = hasAny( configured, ofIpv6 ) && !hasAny( configured, ofIpv4 );
         if ( ( only4 && kind.version != 4 ) || ( only6 && kind.version != 6 ) ) {
            continue;
         }
         plan.encapsulation = kind.encapsulation;
         plan.version = kind.version;
         plan.layout = configured.fields.empty()
               ? builtIn( kind, fixed ? group->templateId().value() : idOf( kind ) )
               : configured;
         plans_.push_back( plan );
      }
   }

   std::uint16_t idOf( const Kind & kind ) const
   {
      return Ft::Constants::reservedTemplateId( config_.swExport() ? kind.swId : kind.id ).value();
   }

   static bool rocev2Only( std::uint8_t flags )
   {
      return ( flags & flagRoce ) != 0 && ( flags & ( flagIpv4 | flagIpv6 ) ) == 0;
   }

   /// Without flags, the root looks for IPv4 and IPv6, and a group takes what the root looks for.
   bool passes( std::uint8_t flags, const Kind & kind, bool root ) const
   {
      if ( kind.encapsulation == Encapsulation::mpls && root && tracker_.mplsExport() ) {
         return true;
      }
      const bool plain = kind.encapsulation == Encapsulation::none;
      return flags == 0 ? !root || plain
                        : ( flags & kind.flag ) != 0 || ( plain && rocev2Only( flags ) );
   }

   /// The rules of an access list are not known here: it matches all that is of its type.
   static bool listsPass( const Hw::FgConfig & group, const Kind & kind )
   {
      bool any = group.accessList().empty();
      for ( const auto & [ seqno, list ] : group.accessList() ) {
         any = any || list.aclType() == Acl::mac ||
               ( list.aclType() == Acl::ip ? kind.version == 4 : kind.version == 6 );
      }
      return any;
   }

   /// The layout that the parameters of a group's flows make; empty where it has none.
   Layout layoutOf( const Hw::FgConfig & group )
   {
      Layout layout;
      layout.templateId = static_cast< std::uint16_t >( nextId_ );
      for ( const auto & [ seqno, param ] : group.flowParam() ) {
         const Element * const element = findElement( param.type() );
         const std::string what = "tracker " + std::string( tracker_.name() ) + ", group " +
               std::string( group.fgName() ) + ": element " +
               stringValue( param.type() );
         if ( !element ) {
            complaints_.push_back( what + " is not exported" );
            continue;
         }
         layout.fields.push_back( element->number );
         if ( param.flowKey() && element->ofPacket ) {
            layout.keys.push_back( element->number );
         } else if ( param.flowKey() ) {
            complaints_.push_back( what + " tells no flows apart" );
         }
      }
      nextId_ += layout.fields.empty() ? 0U : 1U;
      return layout;
   }

   const Hw::Config & config_;
   const Hw::FtConfig & tracker_;
   std::vector< std::string > & complaints_;
   std::vector< GroupPlan > plans_;
   /// The first two that are free are those of options.
   std::uint32_t nextId_ = Ft::Constants::unreservedTemplateIdBase().value() + 2U;
};

/// The first of a map, by key, as texts.
template< class View, class Add > void firstOf( View map, std::uint32_t most, Add add )
{
   std::set< Corvo::String > names;
   for ( const auto & [ name, value ] : map ) {
      names.insert( name );
   }
   std::uint32_t count = 0;
   for ( const Corvo::String & name : names ) {
      if ( count++ == most ) {
         return;
      }
      add( name );
   }
}

ExporterPlan exporterPlan( const Hw::ExporterConfig & from, std::uint32_t mostCollectors )
{
   ExporterPlan plan;
   plan.name = std::string( from.name() );
   plan.templateInterval = from.templateInterval().value();
   plan.templateRequests = from.templateExportReq();
   DestinationPlan & to = plan.destination;
   to.dscp = from.dscpValue().value();
   to.mostBytes = from.ipfixMaxMsgSize();
   std::map< Corvo::String, std::vector< CollectorPlan > > collectors;
   for ( const auto & [ host, at ] : from.collectorIpAndPort() ) {
      auto & known = collectors[ host ];
      if ( from.exporter4Ready() ) {
         known.push_back( { std::string( at.ip().stringValue() ), at.port() } );
      }
   }
   for ( const auto & [ host, at ] : from.collectorIp6AndPort() ) {
      auto & known = collectors[ host ];
      if ( from.exporter6Ready() ) {
         known.push_back( { std::string( at.ip().stringValue() ), at.port() } );
      }
   }
   firstOf( collectors, mostCollectors, [ & ]( const Corvo::String & host ) {
      const auto & known = collectors[ host ];
      to.collectors.insert( to.collectors.end(), known.begin(), known.end() );
   } );
   if ( from.srcIpAddr().value() != 0 ) {
      to.source4 = std::string( from.srcIpAddr().stringValue() );
   }
   if ( !( from.srcIp6Addr() == Wyre::Ip6Addr() ) ) {
      to.source6 = std::string( from.srcIp6Addr().stringValue() );
   }
   return plan;
}

/// The first exporters by name, of those that have a format which is exported here.
std::vector< ExporterPlan > exporterPlans(
      const Hw::FtConfig & tracker, const Hw::Capabilities & capabilities )
{
   std::map< Corvo::String, Corvo::Ptr< Hw::ExporterConfig > > exporters;
   for ( const Corvo::Ptr< Hw::ExporterConfig > & exporter : tracker.expConfig() ) {
      if ( exporter->exportFormat() != Ft::ExportFormat::formatSflow ) {
         exporters.emplace( exporter->name(), exporter );
      }
   }
   std::vector< ExporterPlan > plans;
   firstOf( exporters, capabilities.maxExportersPerTracker(), [ & ]( const Corvo::String & name ) {
      const auto & exporter = exporters[ name ];
      if ( exporter->exportFormat() == Ft::ExportFormat::formatDefault ||
            exporter->exportFormat() == Ft::ExportFormat::formatIpfix ) {
         plans.push_back( exporterPlan( *exporter, capabilities.maxCollectorsPerExporter() ) );
      }
   } );
   return plans;
}

} // namespace

Template Layout::asTemplate() const
{
   Template made{ templateId, 0, {} };
   for ( const Ipfix::RecordType field : fields ) {
      made.fields.push_back( { field, findElement( field )->length } );
   }
   return made;
}

TrackerPlan planOf( const Hw::Config & config, const Hw::FtConfig & tracker,
      const Hw::Capabilities & capabilities, const TrackerPlan * before,
      std::vector< std::string > & complaints )
{
   TrackerPlan plan;
   plan.name = std::string( tracker.name() );
   plan.domain = tracker.ftId().value();
   plan.sampleRate = std::max< std::uint32_t >( config.sampleRate(), 1 );
   plan.sampleLimit = capabilities.sampleLimitSupported() ? config.sampleLimit() : 0;
   plan.limits.inactive = tracker.inactiveTimeout().value();
   plan.limits.active = tracker.activeInterval().value();
   plan.limits.flows = tracker.flowTableSize().value();
   plan.limits.tcpEnds =
         tracker.tcpStateChangeExport() && capabilities.exportOnTcpStateSupported();
   for ( const std::uint32_t pair : config.ignorableRocev2QpId() ) {
      plan.ignoredQueuePairs.insert( pair );
   }
   plan.groups = before && tracker.hwFgConfigGenIdUpdateNeeded()
         ? before->groups
         : Groups( config, tracker, complaints ).all( capabilities.flowGroupConfigSupported() );
   for ( const GroupPlan & group : plan.groups ) {
      plan.decode.vxlan = plan.decode.vxlan || group.encapsulation == Encapsulation::vxlan;
      plan.decode.mpls = plan.decode.mpls || group.encapsulation == Encapsulation::mpls;
   }
   plan.exporters = exporterPlans( tracker, capabilities );
   return plan;
}

} // namespace FlowtrackPlatform
