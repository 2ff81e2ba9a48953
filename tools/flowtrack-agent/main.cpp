// flowtrack-agent: derives the hardware configuration from what is configured, over the store.
#include "tools/derive/StoreProgram.h"
#include "tools/derive/SystemResolver.h"
#include "tools/flowtrack-agent/Agent.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <chrono>
#include <exception>
#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace {

using Derive::ExitCode;
using FlowtrackAgent::Agent;

Corvo::Duration now()
{
   return Corvo::Duration( std::chrono::duration< double >(
         std::chrono::steady_clock::now().time_since_epoch() )
                                 .count() );
}

/// Tells of what cannot be read, each once.
void tellFailures( const Agent & agent, std::set< std::string > & told )
{
   for ( const std::string & line : agent.failures() ) {
      if ( told.insert( line ).second ) {
         std::cerr << "flowtrack-agent: " << line << std::endl;
      }
   }
}

/// How often the addresses of interfaces are looked at.
constexpr std::chrono::seconds interval( 1 );

ExitCode run(
      const Derive::StoreOptions & store, const std::vector< std::string > & kinds, bool takeOver )
{
   Derive::StoreProgram program( "flowtrack-agent", store );
   Derive::SystemResolver hosts;
   Derive::SystemInterfaces interfaces;
   std::vector< std::unique_ptr< Agent > > agents;
   agents.reserve( kinds.size() );
   for ( const std::string & kind : kinds ) {
      agents.push_back( std::make_unique< Agent >(
            FlowtrackAgent::Setup{ program.client(), hosts, interfaces, now, takeOver }, kind ) );
   }
   std::set< std::string > told;
   std::string refusal;
   auto refreshed = std::chrono::steady_clock::now();
   const auto step = [ & ] {
      if ( const auto time = std::chrono::steady_clock::now(); time - refreshed >= interval ) {
         interfaces.refresh();
         refreshed = time;
      }
      for ( const auto & agent : agents ) {
         agent->step();
         tellFailures( *agent, told );
         refusal = refusal.empty() ? agent->refusal() : refusal;
      }
      return refusal.empty();
   };
   const auto watched = [ & ] {
      return std::vector< Derive::StoreProgram::Watched >{
         { hosts.descriptor(), [ & ] { hosts.take(); } }
      };
   };
   program.run( watched, step, interval );
   if ( !refusal.empty() ) {
      std::cerr << "flowtrack-agent: the store refused: " << refusal << '\n';
      return ExitCode::refused;
   }
   return ExitCode::done;
}

} // namespace

int main( int argc, char ** argv )
{
   CLI::App app( "The flow-tracking agent: derives the hardware configuration from what operators "
                 "configure.",
         "flowtrack-agent" );
   Derive::StoreOptions store;
   std::vector< std::string > kinds = Derive::allKinds();
   bool takeOver = false;
   addStoreOptions( app, store );
   app.add_option( "--type", kinds, "kinds of flow tracking; all, where none is given" )
         ->check( CLI::IsMember( Derive::allKinds() ) );
   app.add_flag( "--take-over", takeOver, "takes its mounts from an agent that has them" );
   try {
      app.parse( argc, argv );
      return run( store, kinds, takeOver );
   } catch ( const CLI::ParseError & e ) {
      return app.exit( e ) == 0 ? ExitCode::done : ExitCode::wrongUsage;
   } catch ( const Vok::Store::AddressException & e ) {
      std::cerr << "flowtrack-agent: " << e.what() << '\n';
      return ExitCode::wrongUsage;
   } catch ( const std::exception & e ) {
      std::cerr << "flowtrack-agent: " << e.what() << '\n';
      return ExitCode::failed;
   }
}
