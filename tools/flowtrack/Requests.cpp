// flowtrack request: what operators ask of the agents. The one file of the program that knows types
// of the data model.
#include "FlowTracker/FlowTrackerStatus.h"
#include "FlowTracker/FlowTrackingConfigReq.h"
#include "tools/derive/Followed.h"
#include "tools/derive/Paths.h"
#include "tools/flowtrack/Commands.h"
#include "tools/flowtrack/Context.h"
#include "tools/flowtrack/Session.h"
#include "tools/flowtrack/Table.h"
#include "tools/flowtrack/Time.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Flowtrack {

namespace {

using FlowTracking::AgentReq;
using FlowTracking::ConfigReq;
using FlowTracking::PktDropCounterUpdateRequest;
using FlowTracking::PktDropReason;
using FlowTracking::Status;

/// What all requests are told.
struct Wanted {
   std::string kind = "sampled";
   std::string tracker;
   std::string exporter;
};
using WantedPtr = std::shared_ptr< Wanted >;

Vok::Seconds requestTime()
{
   return Vok::Seconds( std::chrono::duration< double >( now() ).count() );
}

template< class Request > void edit(
      Context & context, const std::string & path, const std::function< void( Request & ) > & make )
{
   context.edit( path, std::string( Request::vokType().name() ),
         [ & ]( Vok::Entity & entity ) { make( dynamic_cast< Request & >( entity ) ); } );
}

void clearCounters( Context & context, const Wanted & wanted )
{
   edit< ConfigReq >(
         context, Derive::Paths( wanted.kind ).configRequests, [ & ]( ConfigReq & request ) {
            FlowTracking::ClearCountersReq clear;
            clear.trackerIs( wanted.tracker );
            clear.exporterIs( wanted.exporter );
            clear.reqTimeIs( requestTime() );
            request.clearCountersIs( clear );
         } );
}

void clearStatistics( Context & context, const Wanted & wanted )
{
   edit< ConfigReq >(
         context, Derive::Paths( wanted.kind ).configRequests, [ & ]( ConfigReq & request ) {
            request.clearFtStatisticsIs( FlowTracking::ClearFtStatisticsReq( requestTime() ) );
         } );
}

void exportTemplates( Context & context, const Wanted & wanted )
{
   edit< AgentReq >( context, Derive::Paths( wanted.kind ).agentRequests,
         []( AgentReq & request ) { request.templateExportReqInc( 1 ); } );
}

std::vector< PktDropReason > reasons()
{
   std::vector< PktDropReason > all;
   const auto & type = *Corvo::ModuleInspectData::findType( "FlowTracking::PktDropReason" );
   for ( const auto & [ code, name ] : type.enumerators() ) {
      all.push_back( static_cast< PktDropReason >( code ) );
   }
   return all;
}

/// Whether a reason's answer carries a number.
bool isAnswered( const Status & status, PktDropReason reason, std::uint8_t number )
{
   return status.pktDropResp().contains( reason ) &&
         status.pktDropResp( reason ).writerSeqNo() == number;
}

/// Raises the number of the request, beyond those that old answers carry: numbers come again.
void dropCounters( Context & context, const Wanted & wanted )
{
   const Derive::Paths paths( wanted.kind );
   const std::vector< PktDropReason > all = reasons();
   Session & session = context.session();
   Derive::Followed< Status > status( session.client(), paths.status );
   session.wait( [ & ] { return status.known(); }, "the store does not send " + paths.status );
   std::uint8_t number = 0;
   edit< PktDropCounterUpdateRequest >(
         context, paths.dropRequest, [ & ]( PktDropCounterUpdateRequest & request ) {
            const auto tree = status.tree();
            do {
               number = request.readerSeqNoInc( 1 );
            } while ( tree && std::any_of( all.begin(), all.end(), [ & ]( PktDropReason reason ) {
               return isAnswered( *tree, reason, number );
            } ) );
         } );
   session.wait(
         [ & ] {
            const auto tree = status.tree();
            return tree && std::all_of( all.begin(), all.end(), [ & ]( PktDropReason reason ) {
               return isAnswered( *tree, reason, number );
            } );
         },
         "no agent answers for " + wanted.kind );
   Table table( { "REASON", "DROPPED", "OF" } );
   for ( const PktDropReason reason : all ) {
      const auto & answer = status.tree()->pktDropResp( reason );
      table.add( { FlowTracking::stringValue( reason ), std::to_string( answer.pktDrops() ),
            std::to_string( answer.pkts() ) } );
   }
   table.print( context.out, context.colours );
}

CLI::App * addOne( CLI::App & requests, Context & context, const char * name,
      const char * description, const WantedPtr & wanted,
      void ( *run )( Context &, const Wanted & ) )
{
   CLI::App * const command = requests.add_subcommand( name, description );
   command->add_option( "--kind", wanted->kind, "the kind of flow tracking" )
         ->type_name( "KIND" )
         ->check( CLI::IsMember( Derive::allKinds() ) )
         ->capture_default_str();
   command->callback( [ &context, wanted, run ] { run( context, *wanted ); } );
   return command;
}

} // namespace

void addRequest( CLI::App & app, Context & context )
{
   CLI::App * const requests =
         app.add_subcommand( "request",
               "Asks the agents to do something once; only drop-counters waits for it." );
   requests->require_subcommand( 1 );
   const auto wanted = std::make_shared< Wanted >();
   CLI::App * const clear = addOne( *requests, context, "clear-counters",
         "Has the platform clear the counters of a tracker, of one exporter of it, or of all "
         "trackers: sets clearCounters of ConfigReq, with the time.",
         wanted, clearCounters );
   clear->add_option( "TRACKER", wanted->tracker, "whose counters; of all without it" );
   clear->add_option( "EXPORTER", wanted->exporter,
         "an exporter of that tracker; a platform that counts by tracker clears all of it" );
   addOne( *requests, context, "clear-statistics",
         "Has the platform clear the statistics of flow tracking, the counters of all trackers: "
         "sets clearFtStatistics of ConfigReq, with the time.",
         wanted, clearStatistics );
   addOne( *requests, context, "export-templates",
         "Has every exporter send its IPFIX templates now: raises templateExportReq of AgentReq.",
         wanted, exportTemplates );
   addOne( *requests, context, "drop-counters",
         "Asks for the counters of dropped packets by a new number, waits until the answers carry "
         "it, ten seconds at most, and prints them.",
         wanted, dropCounters );
}

} // namespace Flowtrack
