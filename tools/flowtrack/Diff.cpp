// flowtrack diff: what differs between two trees.
#include "tools/flowtrack/json/Diff.h"
#include "tools/flowtrack/Commands.h"
#include "tools/flowtrack/FileTree.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <ostream>
#include <string>

namespace Flowtrack {

void addDiff( CLI::App & app, Context & context )
{
   struct Wanted {
      std::string before;
      std::string after;
      bool json = false;
   };
   const auto wanted = std::make_shared< Wanted >();
   CLI::App * const command = app.add_subcommand( "diff",
         "Prints what differs between two trees of one type; exits with 1 where anything does." );
   command->add_option( "A", wanted->before, "a path, or FILE.json with --type" )->required();
   command->add_option( "B", wanted->after, "a path, or FILE.json with --type" )->required();
   command->add_flag( "--json", wanted->json, "as JSON" );
   command->callback( [ &context, wanted ] {
      const auto before = readTree( context, wanted->before );
      const auto after = readTree( context, wanted->after );
      const auto found = FlowtrackJson::differences( *before, *after );
      context.out << ( wanted->json ? jsonOf( found ).dump( 2 ) + "\n" : textOf( found ) );
      context.exitCode = found.empty() ? done : notFound;
   } );
}

} // namespace Flowtrack
