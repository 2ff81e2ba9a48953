// A user's program of two translation units; this one writes a tree.
#include "consumer.h"

#include "Vok/Vok.h"

#include <iostream>

int main()
{
   const auto map = FlowTracking::applicationIdMapFactory( "applications" );
   const FlowTracking::ApplicationId id( 5 );
   map->applicationIs( id, FlowTracking::Application( id, "dns", "network", "naming" ) );
   const Corvo::String text = describe( *map );
   std::cout << text << '\n';
   return text == "dns" ? 0 : 1;
}
