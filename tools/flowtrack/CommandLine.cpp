// Options, commands, and what becomes of errors.
#include "tools/flowtrack/CommandLine.h"

#include "tools/flowtrack/Commands.h"
#include "tools/flowtrack/Context.h"
#include "tools/flowtrack/Manual.h"
#include "tools/flowtrack/json/Hint.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace Flowtrack {

namespace {

void addOptions( CLI::App & app, Context & context )
{
   addStoreOptions( app, context.options.store );
   app.add_option( "--file", context.options.file,
            "works on a tree in a JSON file, of the type that --type says, and on no store: a PATH "
            "is then a place, / or below" )
         ->type_name( "FILE" );
   app.add_option( "--type", context.options.type,
            "type of the tree in a file, or of a mount that is made where there is none" )
         ->type_name( "TYPE" );
   app.add_flag( "--take-over", context.options.takeOver,
         "writes a mount though another process does, which is told" );
}

void addCommands( CLI::App & app, Context & context )
{
   addShow( app, context );
   addGet( app, context );
   addSet( app, context );
   addAdd( app, context );
   addDel( app, context );
   addWatch( app, context );
   addTop( app, context );
   addMounts( app, context );
   addDigest( app, context );
   addExport( app, context );
   addImport( app, context );
   addLoad( app, context );
   addDiff( app, context );
   addCheck( app, context );
   addTypes( app, context );
   addDescribe( app, context );
   addSchema( app, context );
   addRequest( app, context );
   addCompletion( app, context );
   addComplete( app, context );
   addMan( app, context );
}

/// Arguments are called what they are; of which type they are read is nothing for people.
void plainArguments( CLI::App & command )
{
   const auto any = []( auto * ) { return true; };
   for ( CLI::Option * const option : command.get_options( any ) ) {
      if ( option->get_positional() ) {
         option->type_name( "" );
      }
   }
   for ( CLI::App * const one : command.get_subcommands( any ) ) {
      plainArguments( *one );
   }
}

ExitCode tell( std::ostream & err, ExitCode code, const std::string & text,
      const std::string & hint = {} )
{
   err << "flowtrack: " << text << '\n';
   if ( !hint.empty() ) {
      err << "   " << hint << '\n';
   }
   return code;
}

/// The names of options, with their dashes.
void optionNames( const CLI::App & app, std::vector< std::string > & names )
{
   for ( const CLI::Option * const option : optionsOf( app ) ) {
      for ( const std::string & name : option->get_lnames() ) {
         names.push_back( "--" + name );
      }
   }
}

/// What was not understood, and what it may have been.
ExitCode tellUsage( std::ostream & err, const CLI::App & app, const CLI::ParseError & e )
{
   const CLI::App * command = &app;
   std::vector< std::string > options;
   optionNames( app, options );
   while ( !command->get_subcommands().empty() ) {
      command = command->get_subcommands().front();
      optionNames( *command, options );
   }
   const std::vector< std::string > remaining = app.remaining( true );
   const std::string word = remaining.empty() ? "" : remaining.front();
   if ( word.starts_with( '-' ) ) {
      return tell( err, wrongUsage, "there is no option " + word,
            FlowtrackJson::didYouMean( word, options ) );
   }
   std::vector< std::string > commands;
   for ( const CLI::App * const one : visibleCommands( *command ) ) {
      commands.push_back( one->get_name() );
   }
   if ( !word.empty() && !commands.empty() ) {
      const std::string hint = FlowtrackJson::didYouMean( word, commands );
      return tell( err, wrongUsage, "there is no command " + word,
            hint.empty() ? "flowtrack --help lists them" : hint );
   }
   return tell( err, wrongUsage, e.what(), fullName( *command ) + " --help says what is expected" );
}

} // namespace

ExitCode run( int argc, char ** argv, std::ostream & out, std::ostream & err )
{
   Context context( out, err );
   CLI::App app( "Shows and changes the state of flow tracking in a running store.", "flowtrack" );
   app.fallthrough();
   app.require_subcommand( 1 );
   addOptions( app, context );
   addCommands( app, context );
   app.footer( helpFooter() ); // behind the commands, which would have it too
   plainArguments( app );
   try {
      app.parse( argc, argv );
      return context.exitCode;
   } catch ( const CLI::ParseError & e ) {
      if ( e.get_exit_code() == 0 ) {
         app.exit( e, out, err );
         return done;
      }
      return tellUsage( err, app, e );
   } catch ( const CommandError & e ) {
      return tell( err, e.code(), e.what(), e.hint() );
   } catch ( const Vok::Store::PathException & e ) {
      return tell( err, wrongUsage, e.what() );
   } catch ( const std::invalid_argument & e ) {
      return tell( err, wrongUsage, e.what() );
   } catch ( const std::out_of_range & e ) {
      return tell( err, notFound, e.what() );
   } catch ( const std::runtime_error & e ) { // what data do not allow
      return tell( err, invalidData, e.what() );
   } catch ( const std::exception & e ) {
      return tell( err, refused, e.what() );
   }
}

} // namespace Flowtrack
