// A value that is only referred to, and whose type is known by its operations.
#pragma once

#include "Vok/Export.h"
#include "Vok/String.h"

#include <typeinfo>

namespace Vok::Detail {

struct ValueOps;

/// The address of a value, or null, with the operations of its type.
struct VOK_EXPORT AnyValue {
   const ValueOps * ops = nullptr;
   const void * value = nullptr;

   /// The address if the value is of that type, else null.
   const void * as( const std::type_info & type ) const noexcept;

   /// The value's text; empty where there is none.
   Corvo::String text() const;
};

} // namespace Vok::Detail
