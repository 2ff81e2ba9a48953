// flowtrack: the command line of switch engineers.
#include "tools/flowtrack/CommandLine.h"

#include <csignal>
#include <iostream>

int main( int argc, char ** argv )
{
   std::signal( SIGPIPE, SIG_IGN ); // of a store that ends
   return Flowtrack::run( argc, argv, std::cout, std::cerr );
}
