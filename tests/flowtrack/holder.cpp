// holder NAME ADDRESS PATH: writes a mount, as a program of that name, until it is killed.
#include "FlowTracker/FlowTrackerConfig.h"
#include "store/Client.h"
#include "store/Wire.h"
#include "store/net/Connection.h"
#include "store/net/Loop.h"

#include <chrono>
#include <exception>
#include <iostream>

int main( int argc, char ** argv )
{
   if ( argc != 4 ) {
      return 2;
   }
   try {
      Vok::Store::Loop loop;
      Vok::Store::Wire wire( argv[ 1 ] );
      Vok::Store::Client client( wire );
      Vok::Store::Connection connection( loop, wire, Vok::Store::Address::parse( argv[ 2 ] ) );
      const auto root = FlowTracking::configFactory( argv[ 3 ] );
      const auto writing = client.write( argv[ 3 ], root );
      if ( !loop.runUntil( [ & ] { return writing->open() && writing->settled(); },
                 std::chrono::seconds( 60 ) ) ) {
         return 1;
      }
      std::cout << "open" << std::endl;
      loop.runUntil( [] { return false; }, std::chrono::minutes( 5 ) );
   } catch ( const std::exception & e ) {
      std::cerr << "holder: " << e.what() << '\n';
      return 1;
   }
}
