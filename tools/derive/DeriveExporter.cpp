// An exporter's settings, source and collectors.
#include "tools/derive/DeriveExporter.h"

#include "tools/derive/Bring.h"

#include "Wyre/IpGenAddr.h"

#include <optional>
#include <set>
#include <utility>

namespace Derive {

namespace {

namespace Ft = FlowTracking;
namespace Hw = HwFlowTracking;

/// The address that a text is; none where it is a name.
std::optional< Addresses > literal( const Corvo::String & text )
{
   try {
      const Wyre::IpGenAddr address( text );
      Addresses known;
      if ( address.family() == Wyre::AddressFamily::ipv4 ) {
         known.ip = address.ip();
      } else if ( address.family() == Wyre::AddressFamily::ipv6 ) {
         known.ip6 = address.ip6();
      }
      return known; // of the empty text, which nothing resolves, none
   } catch ( const Corvo::ParseException & ) {
      return std::nullopt;
   }
}

} // namespace

ExporterDeriver::ExporterDeriver( const Sources & sources,
      Corvo::Ptr< const Ft::ExporterConfig > from, Corvo::Ptr< Hw::FtConfig > tracker )
      : sources_( sources ),
        from_( std::move( from ) ),
        tracker_( std::move( tracker ) ),
        work_( [ this ] { work(); } ),
        follower_( *from_, [ this ]( const Corvo::Change & ) { work_.request(); } )
{
   work_.request();
}

bool ExporterDeriver::derive()
{
   const bool requested = work_.requested();
   work_.run();
   return requested;
}

void ExporterDeriver::work()
{
   const auto to = tracker_->expConfigIs( from_->name() );
   ask();
   source( *to );
   settings( *to );
   collectors( *to );
   ready( *to );
}

/// Asks for the names that there are, and no longer for those that there were.
void ExporterDeriver::ask()
{
   const auto bring = [ this ]( Asked & asked, const std::set< Corvo::String > & names,
                            Resolver & resolver ) {
      std::erase_if( asked, [ & ]( const auto & one ) { return !names.contains( one.first ); } );
      for ( const Corvo::String & name : names ) {
         if ( !asked.contains( name ) ) {
            asked.emplace( name,
                  std::make_unique< Resolver::Question >(
                        resolver, name, [ this ] { work_.request(); } ) );
         }
      }
   };
   std::set< Corvo::String > names;
   for ( const auto & [ host, collector ] : from_->collectorHostAndPort() ) {
      if ( !literal( host ) ) {
         names.insert( host );
      }
   }
   bring( hosts_, names, sources_.hosts );
   names.clear();
   if ( !from_->localIntfName().empty() ) {
      names.insert( from_->localIntfName() );
   }
   bring( interface_, names, sources_.interfaces );
}

/// Comes before the settings: whether the addresses are those of this interface is to be seen in
/// the name that hardware has.
void ExporterDeriver::source( Hw::ExporterConfig & to )
{
   Addresses addresses;
   for ( const auto & [ name, question ] : interface_ ) {
      if ( const auto answer = question->answer() ) {
         addresses = *answer;
      } else if ( to.localIntfName() == name ) {
         addresses = { to.srcIpAddr(), to.srcIp6Addr() };
      }
   }
   to.srcIpAddrIs( addresses.ip.value_or( Wyre::IpAddr() ) );
   to.srcIp6AddrIs( addresses.ip6.value_or( Wyre::Ip6Addr() ) );
}

void ExporterDeriver::settings( Hw::ExporterConfig & to )
{
   to.vrfNameIs( Ft::Constants::nullVrfName() );
   to.localIntfNameIs( from_->localIntfName() );
   to.ipfixMtuIs( from_->ipfixMtu() );
   to.dscpValueIs( from_->dscpValue() );
   to.ipfixVersionIs( from_->ipfixVersion() );
   to.templateIntervalIs( from_->templateInterval() );
   to.useSflowCollectorConfigIs( from_->useSflowCollectorConfig() );
   to.exportFormatIs( from_->exportFormat() );
   to.templateExportReqIs( sources_.requests->templateExportReq() );
   to.rxPort4Is( 0 );
   to.rxPort6Is( 0 );
}

Addresses ExporterDeriver::addressesOf(
      const Corvo::String & host, const Hw::ExporterConfig & to ) const
{
   const auto asked = hosts_.find( host );
   if ( asked == hosts_.end() ) {
      return *literal( host );
   }
   if ( const auto answer = asked->second->answer() ) {
      return *answer;
   }
   Addresses before;
   if ( to.collectorIpAndPort().contains( host ) ) {
      before.ip = to.collectorIpAndPort( host ).ip();
   }
   if ( to.collectorIp6AndPort().contains( host ) ) {
      before.ip6 = to.collectorIp6AndPort( host ).ip();
   }
   return before;
}

ExporterDeriver::Collectors ExporterDeriver::found( const Hw::ExporterConfig & to ) const
{
   Collectors found;
   for ( const auto & [ host, collector ] : from_->collectorHostAndPort() ) {
      const Addresses addresses = addressesOf( host, to );
      if ( addresses.ip ) {
         found.ip.emplace( host, Wyre::IpAndPort( *addresses.ip, collector.port() ) );
      }
      if ( addresses.ip6 ) {
         found.ip6.emplace( host, Wyre::Ip6AndPort( *addresses.ip6, collector.port() ) );
      }
      found.allKnown = found.allKnown && !addresses.empty();
   }
   return found;
}

void ExporterDeriver::collectors( Hw::ExporterConfig & to )
{
   const Collectors wanted = found( to );
   bringMap(
         to.collectorIpAndPort(), wanted.ip,
         [ & ]( const auto & host, const auto & at ) { to.collectorIpAndPortIs( host, at ); },
         [ & ]( const auto & host ) { to.collectorIpAndPortDel( host ); } );
   bringMap(
         to.collectorIp6AndPort(), wanted.ip6,
         [ & ]( const auto & host, const auto & at ) { to.collectorIp6AndPortIs( host, at ); },
         [ & ]( const auto & host ) { to.collectorIp6AndPortDel( host ); } );
   const bool any = !from_->collectorHostAndPort().empty();
   mark( any && wanted.allKnown, any && !wanted.allKnown );
}

void ExporterDeriver::mark( bool resolved, bool waiting )
{
   if ( resolved ) {
      tracker_->resolvedExporterIs( from_->name() );
   } else {
      tracker_->resolvedExporterDel( from_->name() );
   }
   if ( waiting ) {
      tracker_->waitingExporterIs( from_->name() );
   } else {
      tracker_->waitingExporterDel( from_->name() );
   }
}

/// A side is resolved when it has a collector, and ready when it also has an address to send from:
/// that of the local interface, where one is configured.
void ExporterDeriver::ready( Hw::ExporterConfig & to )
{
   const bool any = to.localIntfName().empty();
   to.exporter4ResolvedIs( !to.collectorIpAndPort().empty() );
   to.exporter6ResolvedIs( !to.collectorIp6AndPort().empty() );
   to.exporter4ReadyIs( to.exporter4Resolved() && ( any || to.srcIpAddr() != Wyre::IpAddr() ) );
   to.exporter6ReadyIs( to.exporter6Resolved() && ( any || to.srcIp6Addr() != Wyre::Ip6Addr() ) );
}

} // namespace Derive
