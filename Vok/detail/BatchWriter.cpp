// The nodes of a writer: which entities a stream follows, and what is noted of them.
#include "Vok/detail/BatchWriter.h"

#include "Vok/TypeData.h"
#include "Vok/detail/BatchNode.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Storage.h"

#include <algorithm>
#include <new>
#include <random>

namespace Vok::Detail {

// ---- Node -------------------------------------------------------------------------------------

BatchWriter::Node::Node( BatchWriter & owner, Entity & followed ) : FlowOutBase( followed ),
                                                                    writer( &owner ),
                                                                    entity( &followed )
{
}

BatchWriter::Node::~Node()
{
   unlink();
}

void BatchWriter::Node::adoptedBy( Node & above ) noexcept
{
   parent = &above;
   above.children.push( *this );
}

void BatchWriter::Node::unlink() noexcept
{
   if ( parent ) {
      parent->children.remove( *this );
      parent = nullptr;
   }
}

void BatchWriter::Node::onChange( const Corvo::Change & change )
{
   DirtyState & notes = dirty();
   const std::size_t index = notes.indexOf( change.attrId );
   const AttributeRow & row = notes.row( index );
   BatchWriter & owner = *writer;
   if ( row.collection && row.collection->entity && change.hasOldValue() ) {
      memberLeft( change, index, row );
   }
   if ( owner.whole_ ) {
      return; // the next batch has all of it
   }
   try {
      notes.note( change, index, row );
   } catch ( const std::bad_alloc & ) {
      owner.noteLost();
      return;
   }
   if ( notes.any() || left ) {
      owner.becameDirty( *this );
   } else {
      owner.dirty_.remove( *this ); // what came has gone, and all is as it was written
   }
}

// A child or a reference is not in its place any more.
void BatchWriter::Node::memberLeft(
      const Corvo::Change & change, std::size_t index, const AttributeRow & row )
{
   Node * const old = writer->find( *row.collection->pointee( change.oldValueAddress() ) );
   if ( !old ) {
      return;
   }
   if ( row.kind != AttributeKind::references ) {
      if ( old->parent == this ) {
         writer->drop( *old );
      }
   } else if ( const DirtyKeys * const keys = changedKeys( index );
               !keys || !keys->contains( change.keyAddress() ) ) {
      writer->release( *old ); // a reference that was written
   }
}

void BatchWriter::Node::publisherGone( Corvo::Publisher & ) noexcept
{
   writer->erase( *this );
}

// ---- Nodes of the writer ----------------------------------------------------------------------

namespace {

std::uint64_t newStream()
{
   std::random_device random;
   return std::uint64_t{ random() } << 32 | random();
}

} // namespace

BatchWriter::BatchWriter( const Corvo::Ptr< Entity > & root ) : root_( root ),
                                                                stream_( newStream() )
{
   nodeOf( *root_ );
}

BatchWriter::~BatchWriter()
{
   while ( BatchPlace * const place = places_.first() ) {
      leave( *place );
      place->writer = nullptr;
   }
   for ( decltype( nodes_ )::Cursor cursor( nodes_ ); !cursor.atEnd(); cursor.next() ) {
      cursor.node()->value->parent = nullptr; // all nodes go: no list of children needs mending
   }
   nodes_.clear();
}

BatchWriter::Node * BatchWriter::find( const Entity & entity ) const noexcept
{
   const auto * const found = nodes_.find( &entity );
   return found ? found->value.get() : nullptr;
}

BatchWriter::NodeEntry BatchWriter::newEntry( const Entity & entity )
{
   auto node = std::make_unique< Node >( *this, const_cast< Entity & >( entity ) );
   if ( freeNumbers_.capacity() <= nodes_.size() ) {
      // So that giving a number back cannot fail.
      freeNumbers_.reserve( nodes_.size() + nodes_.size() / 4 + 8 );
   }
   if ( freeNumbers_.empty() ) {
      node->number = nextNumber_++;
   } else {
      node->number = freeNumbers_.back();
      freeNumbers_.pop_back();
   }
   return { &entity, std::move( node ) };
}

// Whether an entity is below the root, or below what the stream follows outside.
bool BatchWriter::belongs( const Entity & entity )
{
   const Entity * top = &entity;
   for ( ; top && top != root_.get() && !belonging_.find( top ); top = top->parent() ) {
      if ( const Node * const node = find( *top );
            node && node->outside && node->met == wholes_ ) {
         break;
      }
   }
   if ( !top ) {
      return false;
   }
   // So that no part of the way is gone twice.
   for ( const Entity * e = &entity; e != top; e = e->parent() ) {
      belonging_.insert( e );
   }
   return true;
}

// The entity of `top` left the tree, with all below it. What a written reference still leads to
// stays.
void BatchWriter::drop( Node & top ) noexcept
{
   top.unlink();
   LinkedList< Node, amongSiblings > gone;
   gone.push( top );
   while ( Node * const node = gone.first() ) {
      gone.remove( *node );
      if ( node->references != 0 ) {
         node->outside = true;
         node->left = true;
         becameDirty( *node );
         continue;
      }
      while ( Node * const child = node->children.first() ) {
         child->unlink();
         gone.push( *child );
      }
      releaseReferences( *node );
      erase( *node );
   }
}

void BatchWriter::erase( Node & node ) noexcept
{
   while ( Node * const child = node.children.first() ) {
      drop( *child );
   }
   dirty_.remove( node );
   loose_.remove( node );
   freeNumbers_.push_back( node.number ); // has room: see nodeOf
   nodes_.take( node.entity );
}

// A reference that was written does not lead to a node any more.
void BatchWriter::release( Node & target ) noexcept
{
   if ( target.references != 0 && --target.references == 0 && target.outside ) {
      loose_.push( target );
   }
}

// The references that the node's entity was written with do not count any more.
void BatchWriter::releaseReferences( Node & node ) noexcept
{
   const auto releaseTarget = [ this ]( const Entity * target ) {
      if ( Node * const found = target ? find( *target ) : nullptr ) {
         release( *found );
      }
   };
   const auto attributes = node.entity->typeData().attributes();
   for ( std::size_t i = 0; i != attributes.size(); ++i ) {
      const AttributeRow & row = attributes[ i ].row();
      if ( row.reference ) {
         releaseTarget( referred( *node.entity, row ) );
      } else if ( row.kind == AttributeKind::references ) {
         const DirtyKeys * const changed = node.changedKeys( i );
         row.collection->each( storageOf( *node.entity, row ),
               [ & ]( const void * key, const void * pointer ) {
                  if ( !changed || !changed->contains( key ) ) {
                     releaseTarget( row.collection->pointee( pointer ) );
                  }
                  return true;
               } );
      }
   }
}

void BatchWriter::becameDirty( Node & node ) noexcept
{
   const bool first = !hasChanges();
   dirty_.push( node );
   if ( first && onPending_ ) {
      onPending_();
   }
}

// A change could not be noted: the next batch is the whole tree.
void BatchWriter::noteLost() noexcept
{
   const bool first = !hasChanges();
   whole_ = true;
   if ( first && onPending_ ) {
      onPending_();
   }
}

// Nodes outside that no written reference leads to any more; one that goes may let others go.
void BatchWriter::sweepLoose() noexcept
{
   while ( Node * const node = loose_.first() ) {
      loose_.remove( *node );
      if ( node->references == 0 && node->outside ) {
         drop( *node );
      }
   }
}

} // namespace Vok::Detail
