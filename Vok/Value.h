// Vok::Value, a value of any value type.
#pragma once

#include "Vok/Export.h"
#include "Vok/detail/ValueOps.h"

namespace Vok {

class TypeData;

/// A value that it owns, of a type known from its record. Copyable.
class VOK_EXPORT Value {
 public:
   Value( const TypeData & type, Detail::OwnedValue value ) noexcept
         : type_( &type ),
           value_( std::move( value ) )
   {
   }

   /// The record of its type.
   const TypeData & typeData() const noexcept { return *type_; }

   /// Its address, of an object of that type.
   void * data() noexcept { return value_.data(); }
   const void * data() const noexcept { return value_.data(); }

 private:
   const TypeData * type_;
   Detail::OwnedValue value_;
};

} // namespace Vok
