// flowtrack man: the manual page, which the build installs.
#include "tools/flowtrack/Commands.h"
#include "tools/flowtrack/Context.h"
#include "tools/flowtrack/Manual.h"

#include <CLI/CLI.hpp>

#include <ostream>

namespace Flowtrack {

void addMan( CLI::App & app, Context & context )
{
   CLI::App * const command = app.add_subcommand( "man", "Prints the manual page as roff." );
   command->group( "" );
   command->callback( [ &app, &context ] { context.out << manualPage( app ); } );
}

} // namespace Flowtrack
