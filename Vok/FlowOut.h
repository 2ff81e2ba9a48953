// Vok::FlowOut, the notifiee through which the changes of one entity reach a change stream.
//
// It is state-based: it remembers which attributes and which keys of collections changed, each
// once, and nothing of how often or to what. A batch carries their values at the time of writing.
// However slow its reader, a stream costs memory in proportion to what differs.
#pragma once

#include "Vok/Export.h"
#include "Vok/Ptr.h"
#include "Vok/Publisher.h"
#include "Vok/detail/DirtyState.h"

namespace Vok {

class Entity;

/// Follows one entity from its construction on. Holds no reference to it.
class VOK_EXPORT FlowOutBase : public Corvo::Notifiee {
 public:
   explicit FlowOutBase( Entity & entity );
   ~FlowOutBase() override;

   /// Whether changed keys of a collection are pending.
   bool hasDirtyCollKeys() const noexcept { return dirty_.hasKeys(); }

   /// Whether anything is pending.
   bool hasChanges() const noexcept { return dirty_.any(); }

   void onChange( const Corvo::Change & change ) override;

 protected:
   Detail::DirtyState & dirty() noexcept { return dirty_; }
   const Detail::DirtyState & dirty() const noexcept { return dirty_; }

 private:
   Detail::DirtyState dirty_;
};

/// The FlowOut of an entity type; `T::FlowOut` names it.
template< class T > class FlowOut : public FlowOutBase {
 public:
   /// Attaches itself to the entity's publisher. Throws std::bad_alloc.
   explicit FlowOut( const Corvo::Ptr< T > & entity ) : FlowOutBase( *entity ) {}
};

} // namespace Vok
