// The other translation unit includes the same headers, and reads the tree.
#include "consumer.h"

#include "Vok/Vok.h"
#include "Wyre/IntfId.h"

Corvo::String describe( const FlowTracking::ApplicationIdMap & map )
{
   return map.application( FlowTracking::ApplicationId( 5 ) ).appName();
}
