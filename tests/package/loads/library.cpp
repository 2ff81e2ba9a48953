// What the test `load` looks at: loads the data model. Does nothing, or, called with an argument,
// prints the allocations before main and the modules in their order, with their fingerprints.
#include "tests/package/loads/Allocations.h"

#include "Vok/ModuleInspectData.h"

#include <cinttypes>
#include <cstdio>

int main( int argc, char ** )
{
   const std::size_t allocations = allocationsSoFar();
   if ( argc == 1 ) {
      return 0;
   }
   std::printf( "allocations %zu\n", allocations );
   for ( const Corvo::ModuleInspectData & module : Corvo::ModuleInspectData::modules() ) {
      std::printf( "%.*s %016" PRIx64 "\n", static_cast< int >( module.name().size() ),
            module.name().data(), module.fingerprint() );
   }
}
