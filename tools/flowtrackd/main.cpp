// flowtrackd: the state store of a switch.
#include "tools/flowtrackd/Config.h"
#include "tools/flowtrackd/Daemon.h"
#include "tools/flowtrackd/Log.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace {

/// What a program of the store exits with.
enum ExitCode {
   done = 0,
   failed = 1,
   wrongConfig = 2
};

int run( const std::string & file, const std::vector< std::string > & listen, bool checkOnly )
{
   Flowtrackd::Log log;
   try {
      Flowtrackd::Config config;
      if ( !file.empty() ) {
         config = Flowtrackd::readConfig( file );
      }
      for ( const std::string & text : listen ) {
         config.listen.push_back( Vok::Store::Address::parse( text ) );
      }
      if ( config.listen.empty() ) {
         throw Flowtrackd::ConfigException(
               "there is nothing to listen at: expected --listen, or listen in the configuration" );
      }
      if ( checkOnly ) {
         return done;
      }
      Flowtrackd::serve( config, log );
      return done;
   } catch ( const Flowtrackd::ConfigException & e ) {
      std::cerr << "flowtrackd: " << e.what() << '\n';
      return wrongConfig;
   } catch ( const Vok::Store::AddressException & e ) {
      std::cerr << "flowtrackd: " << e.what() << '\n';
      return wrongConfig;
   } catch ( const std::exception & e ) {
      log.line( Flowtrackd::Level::error, "failed", { { "text", e.what() } } );
      return failed;
   }
}

} // namespace

int main( int argc, char ** argv )
{
   std::signal( SIGPIPE, SIG_IGN );
   CLI::App app( "The state store: trees are mounted at paths, one process writes a mount, any "
                 "number read it.",
         "flowtrackd" );
   std::string file;
   std::vector< std::string > listen;
   bool checkOnly = false;
   app.add_option( "--config", file, "configuration file" );
   app.add_option( "--listen", listen,
         "an address besides those of the file: unix:/PATH, tcp:127.0.0.1:PORT or "
         "tls:ADDRESS:PORT" );
   app.add_flag(
         "--check", checkOnly, "reads the configuration, says what is wrong in it, and ends" );
   CLI11_PARSE( app, argc, argv );
   return run( file, listen, checkOnly );
}
