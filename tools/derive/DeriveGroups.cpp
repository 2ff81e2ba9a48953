// Flow groups: their order, their contents and their generations.
#include "tools/derive/DeriveGroups.h"

#include "tools/derive/Bring.h"
#include "tools/derive/DeriveRoot.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <vector>

namespace Derive {

namespace {

namespace Ft = FlowTracking;
namespace Hw = HwFlowTracking;

using Group = Corvo::Ptr< const Ft::FlowGroup >;
using Groups = std::map< std::uint32_t, Group >; ///< by number in hardware
using Generations = std::map< Corvo::String, std::uint32_t >; ///< of groups by name

/// A built-in group, if a name is reserved for one.
struct BuiltIn {
   std::uint32_t seqno;
   Ipfix::TemplateId templateId;
};

std::optional< BuiltIn > builtIn( const Corvo::String & name )
{
   using Ft::Constants, Ft::ReservedGroupNames, Ft::StaticGroupSeqnoOffset, Ft::StaticTemplateId;
   const std::tuple< Corvo::String, StaticGroupSeqnoOffset, StaticTemplateId > all[] = {
      { ReservedGroupNames::groupHwIpv4(), StaticGroupSeqnoOffset::offsetIpv4,
            StaticTemplateId::dataTemplateHwIpv4 },
      { ReservedGroupNames::groupHwIpv6(), StaticGroupSeqnoOffset::offsetIpv6,
            StaticTemplateId::dataTemplateHwIpv6 },
      { ReservedGroupNames::groupHwVxlanIpv4(), StaticGroupSeqnoOffset::offsetVxlanIpv4,
            StaticTemplateId::dataTemplateHwVxlanIpv4 },
      { ReservedGroupNames::groupHwVxlanIpv6(), StaticGroupSeqnoOffset::offsetVxlanIpv6,
            StaticTemplateId::dataTemplateHwVxlanIpv6 },
   };
   for ( const auto & [ reserved, offset, templateId ] : all ) {
      if ( name == reserved ) {
         return BuiltIn{ Constants::reservedGroupSeqno( offset ),
            Constants::reservedTemplateId( templateId ) };
      }
   }
   return std::nullopt;
}

/// Numbers in hardware rise with the configured ones, and stay below the reserved ones.
Groups numbered( const Ft::FlowTrackerConfig & from )
{
   Groups groups;
   std::vector< Group > ordered;
   for ( const Group group : from.fgConfig() ) {
      if ( const auto reserved = builtIn( group->name() ) ) {
         groups.emplace( reserved->seqno, group );
      } else {
         ordered.push_back( group );
      }
   }
   std::sort( ordered.begin(), ordered.end(), []( const Group & a, const Group & b ) {
      return std::tuple( a->seqno(), a->name() ) < std::tuple( b->seqno(), b->name() );
   } );
   std::uint64_t next = 0;
   std::uint64_t room = Ft::Constants::reservedFgSeqnoBase() - ordered.size();
   for ( const Group & group : ordered ) {
      const std::uint64_t multiple = Ft::Constants::hwFgSeqnoMultiple();
      const std::uint64_t number = std::min( std::max( group->seqno() * multiple, next ), room++ );
      groups.emplace( static_cast< std::uint32_t >( number ), group );
      next = number + 1;
   }
   return groups;
}

/// What a group has in hardware besides its name and number.
struct Content {
   Ipfix::TemplateId templateId;
   Corvo::String flowDomain;
   std::map< std::uint32_t, Ft::AccessList > accessList;
   Ft::EncapFlags encapFlags;
   Ft::MirrorConfig mirrorConfig;
   std::set< Corvo::String > expName;
};

/// Both access lists by number; where that is the same, the one of IPv4 comes first.
std::map< std::uint32_t, Ft::AccessList > accessLists( const Ft::FlowGroup & from )
{
   Ft::AccessList ip = from.ipAccessList();
   Ft::AccessList ip6 = from.ip6AccessList();
   if ( ip && ip6 && ip.seqno() == ip6.seqno() ) {
      if ( ip6.seqno() + 1 != 0 ) {
         ip6.seqnoIs( ip6.seqno() + 1 );
      } else {
         ip.seqnoIs( ip.seqno() - 1 );
      }
   }
   std::map< std::uint32_t, Ft::AccessList > lists;
   for ( const Ft::AccessList & list : { ip, ip6 } ) {
      if ( list ) {
         lists.emplace( list.seqno(), list );
      }
   }
   return lists;
}

Content contentOf( const Ft::FlowGroup & from, const Ft::FlowTrackerConfig & tracker )
{
   Content content;
   if ( const auto reserved = builtIn( from.name() ) ) {
      content.templateId = reserved->templateId;
   }
   content.flowDomain = from.flowDomain();
   content.accessList = accessLists( from );
   content.encapFlags = encapFlags( from.encapType() );
   content.mirrorConfig = from.mirrorConfig();
   for ( const Corvo::String & name : from.expName() ) {
      if ( tracker.expConfig().contains( name ) ) {
         content.expName.insert( name );
      }
   }
   return content;
}

/// Notes an update and the kinds of change that it makes: the first call of the update clears what
/// the one before changed, and each call records one kind.
void noteUpdate( Hw::FgConfig & to, std::uint32_t generation, const bool ( &kinds )[ 4 ] )
{
   to.genIdIs( generation );
   bool first = true;
   for ( unsigned kind = 0; kind != 4; ++kind ) {
      if ( kinds[ kind ] ) {
         to.updateFgConfigChangeBitMap( first, kind == 0, kind == 1, kind == 2, kind == 3 );
         first = false;
      }
   }
   if ( first ) {
      to.updateFgConfigChangeBitMap( true, false, false, false, false );
   }
}

/// Brings a group to its content. One that was made now had `before` as its generation.
void deriveContent(
      const Content & from, Hw::FgConfig & to, std::optional< std::uint32_t > before )
{
   const bool encap = !( to.encapFlags() == from.encapFlags );
   const bool acl = !sameMap( to.accessList(), from.accessList );
   const bool exporter = !sameSet( to.expName(), from.expName );
   const bool mirroring = !( to.mirrorConfig() == from.mirrorConfig );
   const bool other = !( to.templateId() == from.templateId ) ||
         !( to.flowDomain() == from.flowDomain ) || !to.flowParam().empty();
   if ( !before && !encap && !acl && !exporter && !mirroring && !other ) {
      return;
   }
   noteUpdate( to, before.value_or( to.genId() ) + 1, { encap, acl, exporter, mirroring } );
   to.templateIdIs( from.templateId );
   to.flowDomainIs( from.flowDomain );
   to.flowParamDelAll();
   to.encapFlagsIs( from.encapFlags );
   to.mirrorConfigIs( from.mirrorConfig );
   bringMap(
         to.accessList(), from.accessList,
         [ & ]( std::uint32_t, const Ft::AccessList & list ) { to.accessListIs( list ); },
         [ & ]( std::uint32_t seqno ) { to.accessListDel( seqno ); } );
   bringSet(
         to.expName(), from.expName, [ & ]( const Corvo::String & name ) { to.expNameIs( name ); },
         [ & ]( const Corvo::String & name ) { to.expNameDel( name ); } );
}

/// Takes out the groups that have another place now or none, and says which generations they had.
Generations deleteMisplaced( const Groups & wanted, Hw::FtConfig & to )
{
   Generations gone;
   for ( const Corvo::Ptr< Hw::FgConfig > & group : to.hwFgConfig() ) {
      const auto found = wanted.find( group->seqno() );
      if ( found == wanted.end() || !( found->second->name() == group->fgName() ) ) {
         std::uint32_t & generation = gone[ group->fgName() ];
         generation = std::max( generation, group->genId() );
         to.hwFgConfigGenIdUpdateNeededIs( true );
         to.hwFgConfigDel( group->seqno() );
      }
   }
   return gone;
}

/// The index: under a group's name and configured number stands its number in hardware.
void deriveIndex( const Groups & groups, Hw::FtConfig & to )
{
   std::map< Corvo::String, std::pair< std::uint32_t, std::uint32_t > > wanted;
   for ( const auto & [ number, group ] : groups ) {
      wanted[ group->name() ] = { group->seqno(), number };
   }
   for ( const Corvo::Ptr< Hw::HwFgConfigMap > & index : to.hwFgConfigMap() ) {
      const auto found = wanted.find( index->fgName() );
      if ( found == wanted.end() || found->second.first != index->seqno() ) {
         to.hwFgConfigMapDel( index->fgName() );
      }
   }
   for ( const auto & [ name, seqnos ] : wanted ) {
      const auto index = to.hwFgConfigMapIs( name, seqnos.first );
      const std::map< std::uint32_t, Hw::FgNameAndSeqno > entry = {
         { seqnos.second, Hw::FgNameAndSeqno( name, seqnos.second ) }
      };
      bringMap(
            index->hwFgNameAndSeqno(), entry,
            [ & ]( std::uint32_t, const auto & value ) { index->hwFgNameAndSeqnoIs( value ); },
            [ & ]( std::uint32_t seqno ) { index->hwFgNameAndSeqnoDel( seqno ); } );
   }
}

} // namespace

void deriveGroups( const Ft::FlowTrackerConfig & from, Hw::FtConfig & to )
{
   const Groups groups = numbered( from );
   Generations gone = deleteMisplaced( groups, to );
   for ( const auto & [ number, group ] : groups ) {
      std::optional< std::uint32_t > before;
      if ( !to.hwFgConfig( number ) ) {
         // It comes, or comes back from another place: its generation goes on.
         before = gone[ group->name() ];
         to.hwFgConfigGenIdUpdateNeededIs( true );
      }
      deriveContent(
            contentOf( *group, from ), *to.hwFgConfigIs( group->name(), number ), before );
   }
   deriveIndex( groups, to );
   const bool inProgress = from.groupsCommitInProgress() || from.groupResequencingInProgress();
   if ( to.hwFgConfigGenIdUpdateNeeded() && !inProgress ) {
      to.hwFgConfigGenIdInc( 1 );
      to.hwFgConfigGenIdUpdateNeededIs( false );
   }
}

} // namespace Derive
