// What the test `load` compares with: loads the same but for the data model, and sets up the
// standard streams, as each of its modules makes sure that they are.
#include "tests/package/loads/Allocations.h"

#include <cstdio>
#include <iostream>

int main( int argc, char ** )
{
   const std::size_t allocations = allocationsSoFar();
   if ( argc != 1 ) {
      std::printf( "allocations %zu\n", allocations );
   }
}
