// The commands. Each adds itself to the command line, with its description; main.cpp calls them in
// the order in which --help lists them.
#pragma once

namespace CLI {
class App;
} // namespace CLI

namespace Flowtrack {

class Context;

void addShow( CLI::App & app, Context & context );
void addGet( CLI::App & app, Context & context );
void addSet( CLI::App & app, Context & context );
void addAdd( CLI::App & app, Context & context );
void addDel( CLI::App & app, Context & context );
void addWatch( CLI::App & app, Context & context );
void addTop( CLI::App & app, Context & context );
void addMounts( CLI::App & app, Context & context );
void addDigest( CLI::App & app, Context & context );
void addExport( CLI::App & app, Context & context );
void addImport( CLI::App & app, Context & context );
void addLoad( CLI::App & app, Context & context );
void addDiff( CLI::App & app, Context & context );
void addCheck( CLI::App & app, Context & context );
void addTypes( CLI::App & app, Context & context );
void addDescribe( CLI::App & app, Context & context );
void addSchema( CLI::App & app, Context & context );
void addRequest( CLI::App & app, Context & context );
void addCompletion( CLI::App & app, Context & context );

/// Hidden ones: what completion scripts ask, and the manual page.
void addComplete( CLI::App & app, Context & context );
void addMan( CLI::App & app, Context & context );

} // namespace Flowtrack
