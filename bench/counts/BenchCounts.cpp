// Runs every situation once, between two marks for callgrind, which counts its instructions; `run`
// beside this file reads them. By itself it only checks that each situation works. With the name of
// one situation it runs that one many times, for a profile of where its instructions go.
#include "Vok/detail/Hash.h"
#include "bench/counts/Situations.h"

#include <valgrind/callgrind.h>

#include <cstdio>

int main( int argc, char ** argv )
{
   // Which keys of a hash table crowd together follows from the seed of its hash, and with it some
   // per cent of the instructions. With one seed (digits of pi) they are the same in each run.
   Vok::Detail::pinHashSeed( { 0x243f6a8885a308d3, 0x13198a2e03707344 } );
   Bench::Situations situations;
   Bench::addChanges( situations );
   Bench::addMaps( situations );
   Bench::addStreams( situations );
   Bench::addTexts( situations );
   for ( const Bench::Situation & situation : situations ) {
      if ( argc > 1 ) {
         for ( int times = 0; times != 100 && situation.name == argv[ 1 ]; ++times ) {
            situation.run();
         }
         continue;
      }
      situation.run(); // what happens the first time only is not counted
      CALLGRIND_TOGGLE_COLLECT;
      situation.run();
      CALLGRIND_TOGGLE_COLLECT;
      CALLGRIND_DUMP_STATS_AT( situation.name.c_str() );
      std::printf( "%s %zu\n", situation.name.c_str(), situation.operations );
   }
}
