// Random changes, each of one thing.
#include "RandomSwitch.h"

namespace DeriveTest {

using Wyre::HostAndPort;
using Wyre::IntfId;

void RandomSwitch::changes( unsigned count )
{
   for ( unsigned i = 0; i != count; ++i ) {
      change();
   }
}

void RandomSwitch::change()
{
   switch ( random_.below( 12 ) ) {
   case 0:
      return changeRoot();
   case 1:
      return changeCapabilities();
   case 2:
      return answer();
   case 3:
   case 4:
      return changeBinding();
   case 5:
      return TestSupport::RandomEntity( *s_.config, random_ ).change();
   case 6:
      if ( random_.oneIn( 2 ) ) {
         s_.config->flowTrackerConfigDel( name( "t", 5 ) );
      } else {
         s_.config->flowTrackerConfigIs( name( "t", 5 ) );
      }
      return;
   default:
      return changeTracker( *s_.config->flowTrackerConfigIs( name( "t", 5 ) ) );
   }
}

void RandomSwitch::changeRoot()
{
   switch ( random_.below( 8 ) ) {
   case 0:
      return s_.config->enabledIs( !random_.oneIn( 3 ) );
   case 1:
      return s_.config->sampleRateIs( Ft::SampleRate( 1 + random_.below( 3 ) ) );
   case 2:
      return s_.config->hwOffloadIpv4Is( random_.oneIn( 2 ) );
   case 3:
      return s_.config->sftAgentCountIs( static_cast< std::uint8_t >( 1 + random_.below( 2 ) ) );
   case 4:
      return s_.config->ignorableRocev2QpIdIs( random_.below( 4 ) );
   case 5:
      return s_.config->ignorableRocev2QpIdDel( random_.below( 4 ) );
   case 6:
      return s_.config->encapIs( Ft::EncapTypeInstance( random_.below( 7 ) ) );
   default:
      s_.clock += 1;
      s_.requests->templateExportReqInc( random_.below( 2 ) );
   }
}

void RandomSwitch::changeTracker( Ft::FlowTrackerConfig & tracker )
{
   switch ( random_.below( 10 ) ) {
   case 0:
      return tracker.groupsCommitInProgressIs( random_.oneIn( 3 ) );
   case 1:
      return tracker.groupResequencingInProgressIs( random_.oneIn( 3 ) );
   case 2:
      return tracker.flowTableSizeIs( Ft::FlowTableSize( 1000 * ( 1 + random_.below( 4 ) ) ) );
   case 3:
      return random_.oneIn( 3 ) ? tracker.monitoredCpuQueueDel( name( "q", 3 ) )
                                : tracker.monitoredCpuQueueIs( name( "q", 3 ) );
   case 4:
      tracker.congestionConfigIs( name( "c", 2 ) )
            ->dampingTimeoutIs( Ft::DampingTimeout(
                  static_cast< std::uint16_t >( random_.below( 3 ) ) ) );
      return;
   case 5:
   case 6:
      return changeExporter( tracker );
   default:
      return changeGroup( tracker );
   }
}

std::string RandomSwitch::collector()
{
   switch ( random_.below( 4 ) ) {
   case 0:
      return name( "192.0.2.", 3 );
   case 1:
      return name( "2001:db8::", 3 );
   case 2:
      return random_.oneIn( 3 ) ? name( "127.0.0.", 3 ) : "";
   default:
      return name( "host", 4 );
   }
}

void RandomSwitch::changeExporter( Ft::FlowTrackerConfig & tracker )
{
   const std::string key = name( "e", 3 );
   if ( random_.oneIn( 8 ) ) {
      tracker.expConfigDel( key );
      return;
   }
   const auto exporter = tracker.expConfigIs( key );
   switch ( random_.below( 6 ) ) {
   case 0:
      return exporter->localIntfNameIs( random_.oneIn( 2 ) ? "" : name( "Loopback", 3 ) );
   case 1:
      return exporter->dscpValueIs(
            Wyre::DscpValue( static_cast< std::uint8_t >( random_.below( 3 ) ) ) );
   case 2:
      exporter->collectorHostAndPortDel( collector() );
      return;
   default:
      const std::string host = collector();
      exporter->collectorHostAndPortIs(
            HostAndPort( host, static_cast< std::uint16_t >( random_.below( 3 ) ) ) );
   }
}

void RandomSwitch::changeGroup( Ft::FlowTrackerConfig & tracker )
{
   const std::string key = random_.oneIn( 9 ) ? "IPv4" : name( "g", 4 );
   if ( random_.oneIn( 6 ) ) {
      tracker.fgConfigDel( key );
      return;
   }
   const std::uint32_t seqno = random_.oneIn( 9 ) ? 0xffffffff : random_.below( 4 );
   auto group = tracker.fgConfig( key );
   if ( !group || random_.oneIn( 4 ) ) {
      group = tracker.fgConfigIs( key, seqno );
   }
   changeContent( *group );
}

void RandomSwitch::changeContent( Ft::FlowGroup & group )
{
   switch ( random_.below( 6 ) ) {
   case 0:
      return group.expNameIs( name( "e", 4 ) );
   case 1:
      return group.expNameDel( name( "e", 4 ) );
   case 2: {
      const std::uint32_t seqno = random_.oneIn( 5 ) ? 0xffffffff : random_.below( 2 );
      const Ft::AccessList list( seqno, name( "acl", 2 ), Acl::AclType::ip );
      return random_.oneIn( 2 ) ? group.ipAccessListIs( list ) : group.ip6AccessListIs( list );
   }
   case 3:
      return group.flowDomainIs( name( "d", 2 ) );
   case 4:
      return group.encapTypeIs( Ft::EncapTypeInstance( random_.below( 7 ) ) );
   default:
      return group.mirrorConfigIs( Ft::MirrorConfig( name( "m", 2 ), Ft::InitialCopy( 0 ),
            Ft::MirrorSelectorAlgo::sampleModeNone, Ft::MirrorIntervalFixed( 0 ),
            Ft::MirrorIntervalRandom( 0 ) ) );
   }
}

void RandomSwitch::changeBinding()
{
   const char * const kinds[] = { "Ethernet", "Ethernet1.", "Tunnel", "Dps" };
   const char * const kind = kinds[ random_.below( 4 ) ];
   const IntfId intf( name( kind, 2 ) );
   const bool egress = random_.oneIn( 2 );
   if ( egress ) {
      s_.bindings->flowTrackerEgressIntfConfigDel( intf );
   } else {
      s_.bindings->flowTrackerIntfConfigDel( intf );
   }
   if ( random_.oneIn( 4 ) ) {
      return;
   }
   const std::string tracker = name( "t", 6 );
   const auto mode = Ft::FlowTrackerSampleModeInstance( random_.below( 3 ) );
   if ( egress ) {
      s_.bindings->flowTrackerEgressIntfConfigIs( intf, tracker, mode );
   } else {
      s_.bindings->flowTrackerIntfConfigIs( intf, tracker, mode );
   }
}

void RandomSwitch::changeCapabilities()
{
   switch ( random_.below( 7 ) ) {
   case 0:
      return s_.capabilities->supportedIs( !random_.oneIn( 4 ) );
   case 1:
      return s_.capabilities->maxTrackersIs( random_.below( 5 ) );
   case 2:
      return s_.capabilities->maxFlowsIs( 2000 * random_.below( 4 ) );
   case 3:
      return s_.capabilities->flowGroupConfigSupportedIs( !random_.oneIn( 4 ) );
   case 4: {
      const std::string queue = name( "q", 3 );
      return s_.capabilities->monitoredCpuQueueSupportedIs(
            queue, static_cast< std::uint16_t >( random_.below( 3 ) ) );
   }
   default:
      return TestSupport::RandomEntity( *s_.capabilities, random_ ).change();
   }
}

Derive::Addresses RandomSwitch::addresses()
{
   Derive::Addresses found;
   if ( random_.oneIn( 2 ) ) {
      found.ip = Wyre::IpAddr( name( "198.51.100.", 3 ) );
   }
   if ( random_.oneIn( 2 ) ) {
      found.ip6 = Wyre::Ip6Addr( name( "2001:db8:1::", 3 ) );
   }
   return found;
}

void RandomSwitch::answer()
{
   const bool host = random_.oneIn( 2 );
   const std::string asked = host ? name( "host", 4 ) : name( "Loopback", 3 );
   ( host ? s_.hosts() : s_.interfaces() ).answerIs( asked, addresses() );
}

void RandomSwitch::answerAll()
{
   for ( Table * const table : { &s_.hosts(), &s_.interfaces() } ) {
      for ( const Corvo::String & asked : table->names ) {
         table->answerIs( asked, addresses() );
      }
   }
}

void RandomSwitch::finish()
{
   for ( const auto & tracker : s_.config->flowTrackerConfig() ) {
      tracker->groupsCommitInProgressIs( false );
      tracker->groupResequencingInProgressIs( false );
   }
}

} // namespace DeriveTest
