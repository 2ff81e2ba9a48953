// Uses the types that the generator made from this project's definition file.
#include "Garden/GardenConfig.h"

#include <iostream>

int main()
{
   const auto config = Garden::configFactory( "front" );
   const auto bed = config->bedIs( "roses" );
   bed->valveIs( Wyre::IntfId( "Ethernet3/1" ) );
   bed->litresIs( 40 );
   config->pumpIs( FlowTracking::ApplicationId( 7 ) );
   std::cout << config->bed().size() << ' ' << config->bed( "roses" )->litres() << '\n';
   try {
      bed->litresIs( 101 );
   } catch ( const Corvo::RangeException & error ) {
      std::cout << error.what() << '\n';
      return bed->litres() == 40 && config->pump().value() == 7 ? 0 : 1;
   }
   return 1;
}
