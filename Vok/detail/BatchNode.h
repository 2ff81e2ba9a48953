// What a writer keeps of one entity that it follows. Part of BatchWriter.h.
#pragma once

#include "Vok/detail/BatchHistory.h"
#include "Vok/detail/BatchWriter.h"
#include "Vok/detail/Slab.h"
#include "Vok/detail/StreamOps.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace Vok::Detail {

class BatchWriter::Node final : public FlowOutBase {
 public:
   Node( BatchWriter & owner, Entity & followed );
   ~Node() override;

   static void * operator new( std::size_t size ) { return slabAllocate( size ); }
   static void operator delete( void * memory, std::size_t size ) noexcept
   {
      slabFree( memory, size );
   }

   void onChange( const Corvo::Change & change ) override;

   /// Puts the node among its parent's children, and takes it from there.
   void adoptedBy( Node & above ) noexcept;
   void unlink() noexcept;

   bool changed( std::size_t index ) const noexcept { return dirty().attribute( index ); }
   const DirtyKeys * changedKeys( std::size_t index ) const noexcept
   {
      return dirty().keys( index );
   }
   void written() noexcept
   {
      dirty().clear( entity->publisher() );
      left = false;
   }

   static constexpr std::uint16_t noType = 0xffff;

   /// As if no batch had been written; the node keeps its numbers, its birth and its place.
   void forget() noexcept
   {
      dirty().writtenWhole( entity->publisher() );
      known = 0;
      references = 0;
      outside = false;
      left = false;
   }

   BatchWriter * writer;
   Entity * entity;
   std::uint32_t number = 0; ///< under which the reader knows it; 2^32 would fill 512 GiB
   std::uint32_t met = 0; ///< the whole tree that it was last met in
   std::uint64_t birth = 0; ///< the batch that introduced it first; 0 while none has
   std::uint64_t known = 0; ///< the batch that introduced it last; 0 while none has
   std::uint32_t references = 0; ///< written references that lead here; 2^32 would fill 32 GiB
   bool outside = false; ///< no part of the tree
   bool left = false; ///< the reader has not been told that it is outside
   std::uint16_t type = noType; ///< the number of its type, once that was looked for
   std::uint64_t leftAt = 0; ///< the batch that told it last; 0 while none has
   std::unique_ptr< NodeHistory > history; ///< null where nothing is noted

   Node * parent = nullptr;
   LinkedList< Node, amongSiblings > children;
   ListLink< Node > links[ 3 ]; ///< among its siblings, the dirty and the loose

 protected:
   void publisherGone( Corvo::Publisher & publisher ) noexcept override;

 private:
   void memberLeft( const Corvo::Change & change, std::size_t index, const AttributeRow & row );
};

/// The node of an entity that is written. Where a whole tree is, what the node knew before counts
/// for nothing.
[[gnu::always_inline]] inline BatchWriter::Node & BatchWriter::nodeOf( const Entity & entity )
{
   Node & node =
         *nodes_.findOrInsert( &entity, [ & ] { return newEntry( entity ); } ).first->value;
   if ( node.met != wholes_ ) {
      node.met = wholes_;
      node.forget();
   }
   return node;
}

inline std::uint64_t BatchWriter::typeIndexOf( Node & node )
{
   return node.type != Node::noType ? node.type : findTypeOf( node );
}

} // namespace Vok::Detail
