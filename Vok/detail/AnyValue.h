// A value that is only referred to, and whose type is known by its operations.
#pragma once

#include "Vok/Export.h"
#include "Vok/String.h"
#include "Vok/detail/ValueOps.h"

#include <typeinfo>

namespace Vok::Detail {

/// The address of a value, or null, with the operations of its type.
struct VOK_EXPORT AnyValue {
   const ValueOps * ops = nullptr;
   const void * value = nullptr;

   /// The address if the value is of that type, else null. A type has one record, but where
   /// libraries are loaded apart from each other.
   const void * as( const std::type_info & type ) const noexcept
   {
      return !value || ops->type == &type ? value : asEqual( type );
   }

   /// The value's text; empty where there is none.
   Corvo::String text() const;

 private:
   const void * asEqual( const std::type_info & type ) const noexcept;
};

} // namespace Vok::Detail
