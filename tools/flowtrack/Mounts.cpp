// flowtrack mounts: what the store has.
#include "tools/flowtrack/Commands.h"
#include "tools/flowtrack/Context.h"
#include "tools/flowtrack/Session.h"
#include "tools/flowtrack/Table.h"
#include "tools/flowtrack/Time.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

namespace Flowtrack {

namespace {

std::string state( const Vok::Store::MountEntry & entry )
{
   const std::string since = timeText( std::chrono::milliseconds( entry.since ) );
   return ( entry.stale ? "no writer since " : "written since " ) + since +
         ( entry.problem.empty() ? "" : "; cannot be kept: " + entry.problem );
}

} // namespace

void addMounts( CLI::App & app, Context & context )
{
   struct Wanted {
      std::string pattern = "**";
      bool trees = false;
   };
   CLI::App * const command = app.add_subcommand( "mounts",
         "Lists the mounts of the store: path, type, who writes it or did, how many read it." );
   const auto wanted = std::make_shared< Wanted >();
   command->add_option( "PATTERN", wanted->pattern,
                "paths in which * stands for a name, ** at the end for one or more" )
         ->capture_default_str();
   command->add_flag( "--trees", wanted->trees, "shows sizes and digests of the trees, too" );
   command->callback( [ &context, wanted ] {
      Table table( { "PATH", "TYPE", "WRITER", "STATE", "KEPT", "READERS", "BYTES", "DIGEST" } );
      for ( const auto & entry : context.session().list( wanted->pattern, wanted->trees ) ) {
         const std::string digest(
               Vok::Digest( entry.digestHigh, entry.digestLow ).text().view() );
         table.add( { entry.path, entry.type, entry.writer, state( entry ),
               entry.kept ? "yes" : "no", std::to_string( entry.readers ),
               wanted->trees ? std::to_string( entry.bytes ) : "", wanted->trees ? digest : "" } );
      }
      if ( table.empty() ) {
         context.exitCode = notFound;
         return;
      }
      table.dropEmptyColumns();
      table.print( context.out, context.colours );
   } );
}

} // namespace Flowtrack
