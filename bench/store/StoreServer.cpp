// A store at an address, for as long as it runs: StoreServer unix:PATH.
#include "bench/store/BenchTables.h"
#include "store/Server.h"
#include "store/net/Listener.h"
#include "store/net/Loop.h"

#include <chrono>
#include <cstdio>
#include <exception>

int main( int argc, char ** argv )
{
   if ( argc != 2 ) {
      std::fputs( "usage: StoreServer unix:PATH\n", stderr );
      return 2;
   }
   try {
      const Vok::Store::SystemClock clock;
      Vok::Store::Server server( clock );
      Vok::Store::Loop loop;
      const Vok::Store::Listener listener(
            loop, server, Vok::Store::Address::parse( argv[ 1 ] ) );
      while ( true ) {
         loop.runUntil( [] { return false; }, std::chrono::hours( 1 ) );
      }
   } catch ( const std::exception & e ) {
      std::fprintf( stderr, "StoreServer: %s\n", e.what() );
      return 1;
   }
}
