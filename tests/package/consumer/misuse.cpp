// What must not compile. MISUSE picks a case; without one the file compiles, which shows that each
// case fails for its own line.
#include "Acl/AclTypes.h"
#include "FlowTracker/ApplicationId.h"
#include "Ipfix/IpfixTypes.h"

using FlowTracking::ApplicationId;
using FlowTracking::ApplicationIdMap;

void misuse( const Corvo::Ptr< ApplicationIdMap > & map, const Corvo::Change & change )
{
   const Corvo::Ptr< const ApplicationIdMap > fixed = map;
   const ApplicationId id( 5 );
   const Ipfix::TemplateId other( 300 );

#if MISUSE == 1 // entities are not copied
   ApplicationIdMap copy( *map );
#elif MISUSE == 2 // nor assigned
   *map = *map;
#elif MISUSE == 3 // a const entity has no mutators
   fixed->applicationDelAll();
#elif MISUSE == 4 // const does not wear off
   const Corvo::Ptr< ApplicationIdMap > writable = fixed;
#elif MISUSE == 5 // a value is not made from a number unasked
   map->applicationDel( 5 );
#elif MISUSE == 6 // values of different types do not mix
   map->applicationDel( other );
#elif MISUSE == 7 // enumerations are not numbers
   const Acl::AclType type = 1;
#elif MISUSE == 8 // a view shows, it does not change
   map->application().clear();
#elif MISUSE == 9 // the name of an entity is fixed
   map->nameIs( "other" );
#elif MISUSE == 10 // a change that is told of has happened
   *change.oldValue< FlowTracking::Application >() = FlowTracking::Application();
#elif MISUSE == 11 // a null pointer is no attribute log
   const ApplicationId none( nullptr );
#endif

   static_cast< void >( fixed->application( id ) );
   static_cast< void >( change );
   static_cast< void >( other );
}
