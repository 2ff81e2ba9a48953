// One change that a batch makes to an attribute of a replica: prepared while anything may still
// fail, committed when nothing can, told when all is committed.
#pragma once

#include "Vok/Entity.h"
#include "Vok/Ptr.h"
#include "Vok/Publisher.h"
#include "Vok/detail/FunctionRef.h"
#include "Vok/detail/ValueOps.h"

#include <optional>
#include <utility>

namespace Vok::Detail {

/// Tells the notifiees of the change of one member, or of the attribute.
using Tell = FunctionRef< void( AnyValue key, AnyValue oldValue ) >;

/// What becomes of one key of a collection of entities.
struct EntityOp {
   Corvo::Ptr< const Entity > member; ///< null: the key goes
   std::optional< OwnedValue > key; ///< of a deletion
};

class Staged {
 public:
   Staged() = default;
   Staged( const Staged & ) = delete;
   Staged & operator=( const Staged & ) = delete;
   virtual ~Staged() = default;

   /// Stores the change, and keeps what was there before for `notify`.
   virtual void commit() noexcept = 0;

   /// Tells what changed.
   virtual void notify( const Tell & tell ) = 0;

   Corvo::Ptr< Entity > owner; ///< the entity that changes
   AttrId id = 0; ///< which attribute
};

/// A plain or optional attribute: the new value, and after the commit the old one.
class StagedValue final : public Staged {
 public:
   StagedValue( void * storage, OwnedValue next ) : storage_( storage ),
                                                    value_( std::move( next ) ) {}

   void commit() noexcept override { value_.ops().swap( storage_, value_.data() ); }
   void notify( const Tell & tell ) override { tell( {}, { &value_.ops(), value_.data() } ); }

 private:
   void * storage_;
   OwnedValue value_;
};

} // namespace Vok::Detail
