// The count of a type lies beside its reflection record.
#include "Vok/AllocTracker.h"

#include "Vok/ModuleInspectData.h"

namespace Vok {

std::size_t AllocTracker::liveCount( std::string_view typeName ) noexcept
{
   const TypeData * const type = Corvo::ModuleInspectData::findType( typeName );
   return type && type->row().live ? type->row().live->load( std::memory_order_relaxed ) : 0;
}

} // namespace Vok
