// flowtrack load and import: what a document says, whole or not at all.
#include "tools/flowtrack/Commands.h"
#include "tools/flowtrack/FileTree.h"
#include "tools/flowtrack/Trees.h"
#include "tools/flowtrack/json/Diff.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <ostream>
#include <string>

namespace Flowtrack {

namespace {

using FlowtrackJson::How;

struct Wanted {
   std::string path;
   std::string file;
   bool dryRun = false;
   bool replace = false;
};

/// Prints what would differ.
void tryOut( Context & context, const Wanted & wanted, How how )
{
   const auto document = readDocument( wanted.file );
   const auto entity = context.read( wanted.path );
   Vok::Entity * root = entity.get();
   while ( root->parent() ) {
      root = root->parent();
   }
   const auto copy = copyOf( root );
   loadFile( document, wanted.file, *Vok::entityAt( *copy, Vok::pathOf( *entity ) ), how );
   context.out << textOf( FlowtrackJson::differences( *root, *copy ) );
}

void load( Context & context, const Wanted & wanted, How how )
{
   const auto document = readDocument( wanted.file );
   context.edit( wanted.path, context.options.type, [ & ]( Vok::Entity & entity ) {
      loadFile( document, wanted.file, entity, how );
   } );
}

CLI::App * addCommand( CLI::App & app, const char * name, const char * description,
      const std::shared_ptr< Wanted > & wanted )
{
   CLI::App * const command = app.add_subcommand( name, description );
   command->add_option( "PATH", wanted->path, "the entity that changes" )->required();
   command->add_option( "FILE", wanted->file, "the document; - is standard input" )->required();
   return command;
}

} // namespace

void addLoad( CLI::App & app, Context & context )
{
   const auto wanted = std::make_shared< Wanted >();
   CLI::App * const command = addCommand( app, "load",
         "Changes an entity as a JSON file says, whole or not at all; what it does not name stays.",
         wanted );
   command->add_flag( "--dry-run", wanted->dryRun, "only prints what would differ" );
   command->add_flag( "--replace", wanted->replace,
         "also takes away what the file does not name" );
   command->callback( [ &context, wanted ] {
      const How how = wanted->replace ? How::replace : How::merge;
      wanted->dryRun ? tryOut( context, *wanted, how ) : load( context, *wanted, how );
   } );
}

void addImport( CLI::App & app, Context & context )
{
   const auto wanted = std::make_shared< Wanted >();
   CLI::App * const command = addCommand( app, "import",
         "Makes a tree what export wrote; with --type where there is none at PATH.", wanted );
   command->callback( [ &context, wanted ] { load( context, *wanted, How::replace ); } );
}

} // namespace Flowtrack
