// Taking note of changes.
#include "Vok/FlowOut.h"

#include "Vok/Entity.h"

namespace Vok {

FlowOutBase::FlowOutBase( Entity & entity ) : dirty_( entity.typeData() )
{
   entity.publisher().notifieeIs( this );
}

FlowOutBase::~FlowOutBase() = default;

void FlowOutBase::onChange( const Corvo::Change & change )
{
   dirty_.note( change );
}

} // namespace Vok
