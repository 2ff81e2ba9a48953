// What bench/load measures: a program that makes one message, and changes it.
#include "bench/LoadMessages.pb.h"

int main()
{
   BenchLoad::Type1 message;
   message.set_name( "first" );
   message.set_id( 1 );
   return message.id() == 1 && message.name() == "first" ? 0 : 1;
}
