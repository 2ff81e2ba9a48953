// What change streams need of a collection type: the set of changed keys that a writer keeps, and
// how a reader loads members, or stages the difference to a replica and commits it without
// failing.
#pragma once

#include "Vok/Entity.h"
#include "Vok/NboAttrLog.h"
#include "Vok/detail/DirtyKeys.h"
#include "Vok/detail/FunctionRef.h"
#include "Vok/detail/Staged.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace Vok::Detail {

/// The operations of a payload on children or references, one after the other.
struct EntityOps {
   FunctionRef< bool( EntityOp & op ) > next; ///< false at the end
   FunctionRef< std::size_t() > atMost; ///< how many there are, or more
};

/// How a payload is staged.
struct StageMode {
   bool whole = false; ///< the collection becomes what the payload says; else that is done to it
   bool heard = true; ///< somebody may have to be told
};

/// Called with a child or a referred entity; leaves the collection as it is.
using EntityVisit = FunctionRef< void( const Entity & member ) >;

/// Null where an operation does not fit the collection.
struct StreamOps {
   /// An empty set of keys. Not of a single child.
   std::unique_ptr< DirtyKeys > ( *dirtyKeys )() = nullptr;

   /// Writes all members, or what stands under each of the keys, or that nothing does. Maps and
   /// sets only.
   void ( *write )( const void * collection, NboAttrLog::Out & out ) = nullptr;
   void ( *writeChanged )(
         const void * collection, const DirtyKeys & keys, NboAttrLog::Out & out ) = nullptr;

   /// Calls `visit` for each child or reference. Children and references only.
   void ( *eachEntity )( const void * collection, EntityVisit visit ) = nullptr;

   /// Reads a payload to its end and keeps nothing of it: throws for what could not be applied.
   /// Maps and sets only.
   void ( *check )( NboAttrLog::In & in, bool whole ) = nullptr;

   /// Reads all members into the collection of a fresh entity. Maps and sets only.
   void ( *load )( void * collection, NboAttrLog::In & in ) = nullptr;

   /// Stages what a payload asks for. Maps and sets only; null where nothing differs.
   std::unique_ptr< Staged > ( *stage )(
         void * collection, NboAttrLog::In & in, StageMode mode ) = nullptr;

   /// Stages changes of children or references: what each key becomes. Null where nothing differs.
   std::unique_ptr< Staged > ( *stageEntities )(
         void * collection, const EntityOps & ops, StageMode mode ) = nullptr;

   /// Puts a fresh child, or a reference, into the collection of a fresh entity.
   void ( *adopt )( Entity & owner, void * collection, const Entity & member ) = nullptr;
};

/// Operations in the payload of a collection.
enum class MemberOp : std::uint8_t {
   del = 0,
   put = 1,
   keep = 2 ///< of a whole collection of children: one that the reader has stays
};

inline void putOp( NboAttrLog::Out & out, MemberOp op )
{
   out.put( static_cast< std::uint8_t >( op ) );
}

inline MemberOp readOp( NboAttrLog::In & in )
{
   const auto op = in.get< std::uint8_t >();
   if ( op > static_cast< std::uint8_t >( MemberOp::keep ) ) {
      throw NboAttrLog::Exception( "a batch names no such operation on a member" );
   }
   return static_cast< MemberOp >( op );
}

[[noreturn]] VOK_EXPORT void memberTwice();

} // namespace Vok::Detail
