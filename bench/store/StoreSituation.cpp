// Plays one situation with one subject and prints its figures as a line of JSON:
//
//    StoreSituation updates Vok sessions=100 seconds=3
//
// `--subjects` lists the subjects, with what is missing for each. A wrong answer ends the program
// with status 1. What may be set, and what it is otherwise, is the struct Setup.
#include "bench/Check.h"
#include "bench/store/Situations.h"

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Bench {
namespace {

void set( Setup & setup, const std::string & argument )
{
   const auto equals = argument.find( '=' );
   require( equals != std::string::npos, "arguments are name=value" );
   const std::string name = argument.substr( 0, equals );
   const double value = std::strtod( argument.c_str() + equals + 1, nullptr );
   const auto number = static_cast< std::uint32_t >( value );
   const std::map< std::string, std::function< void() > > known{
      { "members", [ & ] { setup.members = number; } },
      { "sessions", [ & ] { setup.sessions = number; } },
      { "processes", [ & ] { setup.processes = number; } },
      { "batch", [ & ] { setup.batch = number; } },
      { "changes", [ & ] { setup.changes = static_cast< std::uint64_t >( value ); } },
      { "seconds", [ & ] { setup.seconds = value; } },
      { "apart", [ & ] { setup.apart = number != 0; } },
      { "hears", [ & ] { setup.hears = number != 0; } },
      { "limits", [ & ] { setup.limits = number != 0; } },
   };
   const auto at = known.find( name );
   require( at != known.end(), "an argument that is known" );
   at->second();
}

void play( const std::vector< std::string > & arguments )
{
   const auto at = std::find_if( situations().begin(), situations().end(),
         [ & ]( const Situation & one ) { return one.name == arguments[ 0 ]; } );
   require( at != situations().end(), "a situation of this name" );
   Setup setup;
   for ( std::size_t i = 2; i != arguments.size(); ++i ) {
      set( setup, arguments[ i ] );
   }
   Stage stage( findSubject( arguments[ 1 ] ), setup );
   std::string line = "{\"situation\": \"" + arguments[ 0 ] + "\", \"subject\": \"" +
         arguments[ 1 ] + "\"";
   for ( const auto & [ name, figure ] : at->play( stage ) ) {
      line += ", \"" + name + "\": " + std::to_string( figure );
   }
   std::printf( "%s}\n", line.c_str() );
}

// A server has a descriptor for each session.
void raiseLimit()
{
   rlimit files{};
   getrlimit( RLIMIT_NOFILE, &files );
   files.rlim_cur = files.rlim_max;
   setrlimit( RLIMIT_NOFILE, &files );
}

int runProgram( const std::vector< std::string > & arguments )
{
   if ( arguments.size() == 1 && arguments[ 0 ] == "--subjects" ) {
      for ( const auto & subject : subjects() ) {
         std::printf( "%s\t%s\n", subject->name().c_str(), subject->missing().c_str() );
      }
      return 0;
   }
   if ( arguments.size() == 7 && arguments[ 0 ] == "--read" ) {
      const auto number = [ & ]( std::size_t i ) { return std::atoi( arguments[ i ].c_str() ); };
      playReader( { arguments[ 1 ], arguments[ 2 ], number( 3 ),
            static_cast< std::uint32_t >( number( 4 ) ),
            static_cast< std::uint32_t >( number( 5 ) ), number( 6 ) != 0 } );
   }
   if ( arguments.size() < 2 ) {
      std::fputs( "usage: StoreSituation SITUATION SUBJECT [NAME=VALUE...]\n"
                  "       StoreSituation --subjects\n",
            stderr );
      for ( const Situation & situation : situations() ) {
         std::fprintf( stderr, "   %-8s %s\n", situation.name, situation.what );
      }
      return 2;
   }
   raiseLimit();
   play( arguments );
   return 0;
}

} // namespace
} // namespace Bench

int main( int argc, char ** argv )
{
   try {
      return Bench::runProgram( { argv + 1, argv + argc } );
   } catch ( const std::exception & e ) {
      std::fprintf( stderr, "StoreSituation: %s\n", e.what() );
      return 1;
   }
}
