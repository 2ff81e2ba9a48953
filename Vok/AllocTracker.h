// Vok::AllocTracker, how many entities exist.
#pragma once

#include "Vok/Export.h"

#include <cstddef>
#include <string_view>

namespace Vok {

/// Counts entities by type. Entities themselves come from a slab allocator of their size.
class VOK_EXPORT AllocTracker {
 public:
   AllocTracker() = delete;

   /// How many entities of the type of that full name exist now; 0 for an unknown name.
   static std::size_t liveCount( std::string_view typeName ) noexcept;
};

} // namespace Vok
