// How a writer puts its tree, or what changed of it, into a batch.
#include "Vok/detail/BatchNode.h"
#include "Vok/detail/BatchWriter.h"

#include "Vok/TypeData.h"
#include "Vok/detail/BatchFormat.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Storage.h"

#include <limits>

namespace Vok::Detail {

namespace {

void putHead( NboAttrLog::Out & out, std::uint64_t number, Batch::RecordKind kind )
{
   out.putVarint( number * 4 + static_cast< unsigned >( kind ) );
}

// Whether a plain or optional attribute is at its default, or a collection empty.
bool isInitial( const WrittenRow & written, const void * storage )
{
   const AttributeRow & row = *written.row;
   if ( row.collection ) {
      return row.collection->size( storage ) == 0;
   }
   if ( !written.initial ) {
      return false;
   }
   if ( !row.storage ) {
      return row.value->equal( storage, written.initial->data() );
   }
   OwnedValue value( *row.value );
   row.storage->load( storage, value.data() );
   return row.value->equal( value.data(), written.initial->data() );
}

} // namespace

// Puts what `put` puts into the body, with its length before it. That of most takes one byte, for
// which room is left.
template< class Put > inline void BatchWriter::putSized( Put && put )
{
   const std::size_t start = body_.size();
   body_.put( std::uint8_t{ 0 } );
   put();
   const std::size_t size = body_.size() - start - 1;
   if ( size < 0x80 ) [[likely]] {
      body_.patch8( start, static_cast< std::uint8_t >( size ) );
   } else {
      putLong( start );
   }
}

// Makes room for a longer length.
void BatchWriter::putLong( std::size_t start )
{
   scratch_.clear();
   scratch_.putBytes( body_.data() + start + 1, body_.size() - start - 1 );
   body_.truncate( start );
   body_.putVarint( scratch_.size() );
   body_.putBytes( scratch_.data(), scratch_.size() );
}

void BatchWriter::write( NboAttrLog::Out & out )
{
   if ( !hasChanges() ) {
      return;
   }
   const std::size_t start = out.size();
   ++written_;
   body_.clear();
   queue_.clear();
   belonging_.clear();
   try {
      if ( whole_ ) {
         writeWhole();
      } else {
         writeChanges();
      }
      finish( out, start, whole_ ? Batch::wholeFlag : std::uint8_t{ 0 } );
   } catch ( ... ) {
      out.truncate( start );
      --written_;
      whole_ = true; // nodes may have been made and counted that no reader knows
      throw;
   }
   while ( Node * const node = dirty_.first() ) {
      node->written();
      dirty_.remove( *node );
   }
   belonging_.clear();
   whole_ = false;
   for ( ; described_ != types_.size(); ++described_ ) {
      types_[ described_ ].describedAt = written_;
   }
   sweepLoose();
}

void BatchWriter::writeWhole()
{
   described_ = 0;
   loose_ = {};
   forgetHistory();
   noted_ = written_; // whoever stopped before needs the whole tree as well
   for ( decltype( nodes_ )::Cursor cursor( nodes_ ); !cursor.atEnd(); cursor.next() ) {
      cursor.node()->value->forget();
   }
   Node & root = nodeOf( *root_, nullptr );
   root.known = written_;
   queue_.push_back( &root );
   writeArguments( root );
   writeQueue();
   if ( queue_.size() == nodes_.size() ) {
      return; // each was introduced
   }
   for ( decltype( nodes_ )::Cursor cursor( nodes_ ); !cursor.atEnd(); cursor.next() ) {
      if ( Node * const node = cursor.node()->value.get(); node->known == 0 ) {
         erase( *node ); // followed once, and no part of what the reader knows now
      }
   }
}

void BatchWriter::writeChanges()
{
   for ( Node * node = dirty_.first(); node; node = dirty_.next( *node ) ) {
      writeChangesOf( *node );
   }
   writeQueue();
}

// Entities that the batch introduces, parents before their children.
void BatchWriter::writeQueue()
{
   for ( std::size_t i = 0; i != queue_.size(); ++i ) {
      writeNode( *queue_[ i ] );
   }
}

void BatchWriter::writeNode( Node & node )
{
   const Entity & entity = *node.entity;
   const std::size_t start = body_.size();
   const bool outside = node.outside;
   putHead( body_, node.number, outside ? Batch::RecordKind::outside : Batch::RecordKind::whole );
   const std::uint64_t index = typeIndexOf( node );
   const WrittenType & type = *types_[ index ].written;
   body_.putVarint( index );
   if ( outside ) {
      body_.putVarint( node.birth );
      writeArguments( node );
   }
   bool any = outside || &entity == root_.get();
   for ( const WrittenRow & written : type.rows ) {
      const void * const storage = written.storageIn( entity );
      if ( written.sameBytes( storage ) || isInitial( written, storage ) ) {
         continue;
      }
      any = true;
      body_.putVarint( type.numberOf( written ) );
      if ( written.row->collection ) {
         writeMembers( node, written );
      } else {
         writeValue( entity, written );
      }
   }
   if ( any ) {
      body_.putVarint( 0 );
   } else {
      body_.truncate( start ); // all at their defaults: no record needed
   }
}

void BatchWriter::writeValue( const Entity & entity, const WrittenRow & written )
{
   const AttributeRow & row = *written.row;
   const void * const storage = storageOf( entity, row );
   if ( row.storage ) {
      OwnedValue value( *row.value );
      row.storage->load( storage, value.data() );
      putValue( *row.value, value.data() );
   } else {
      putValue( *row.value, storage );
   }
}

// Behind a value of a fixed size stands the next; any other has its length before it.
void BatchWriter::putValue( const ValueOps & ops, const void * value )
{
   if ( ops.fixedLogSize != 0 ) {
      ops.encode( body_, value );
   } else {
      putSized( [ & ] { ops.encode( body_, value ); } );
   }
}

std::size_t BatchWriter::beginPayload( std::uint8_t mode )
{
   const std::size_t start = body_.size();
   body_.put( std::uint32_t{ 0 } );
   body_.put( mode );
   return start;
}

void BatchWriter::endPayload( std::size_t start )
{
   const std::size_t size = body_.size() - start - sizeof( std::uint32_t );
   if ( size > std::numeric_limits< std::uint32_t >::max() ) {
      throw NboAttrLog::Exception( "a collection is too large for a batch" );
   }
   body_.patch32( start, static_cast< std::uint32_t >( size ) );
}

// All members, as a reader that has none needs them.
void BatchWriter::writeMembers( Node & node, const WrittenRow & written )
{
   const AttributeRow & row = *written.row;
   const void * const storage = storageOf( *node.entity, row );
   const std::size_t payload = beginPayload( Batch::wholeMode );
   if ( !row.collection->entity ) {
      row.collection->stream->write( storage, body_ );
   } else {
      writeAllEntities( node, row );
   }
   endPayload( payload );
}

void BatchWriter::writeAllEntities( Node & node, const AttributeRow & row )
{
   const void * const storage = storageOf( *node.entity, row );
   if ( !reader_ && row.kind != AttributeKind::references ) {
      row.collection->each( storage, [ & ]( const void *, const void * value ) {
         putOp( body_, MemberOp::put );
         writeChild( node, *row.collection->pointee( value ) );
         return true;
      } );
      return;
   }
   row.collection->each( storage, [ & ]( const void * key, const void * value ) {
      const bool keep = keeps( row, value );
      putOp( body_, keep ? MemberOp::keep : MemberOp::put );
      if ( keep ) {
         row.key->encode( body_, key );
      } else {
         writeMember( node, row, key, value );
      }
      return true;
   } );
}

void BatchWriter::writeMember(
      Node & node, const AttributeRow & row, const void * key, const void * value )
{
   if ( row.kind == AttributeKind::references ) {
      body_.putVarint( referenceNumber( *row.collection->pointee( value ) ) );
   } else if ( holdsEntities( row ) ) {
      writeChild( node, *row.collection->pointee( value ) );
   } else {
      if ( row.keyField.empty() ) {
         row.key->encode( body_, key );
      }
      if ( row.kind == AttributeKind::map ) {
         row.value->encode( body_, value );
      }
   }
}

void BatchWriter::writeChild( Node & parent, const Entity & child )
{
   if ( reader_ ) {
      writeMissedChild( child );
      return;
   }
   Node & node = nodeOf( child, nullptr );
   if ( node.parent != &parent ) {
      node.unlink();
      node.adoptedBy( parent );
   }
   node.outside = false;
   if ( node.birth == 0 ) {
      node.birth = written_;
   }
   if ( node.known != written_ ) {
      // It may be known from outside, and comes in with all that is below it: what a batch
      // introduces it describes whole.
      if ( node.known != 0 ) {
         releaseReferences( node );
      }
      node.known = written_;
      queue_.push_back( &node );
   }
   writeChildHead( node );
}

void BatchWriter::writeChildHead( Node & node )
{
   body_.putVarint( node.number );
   body_.putVarint( node.birth );
   writeArguments( node );
}

void BatchWriter::writeArguments( Node & node )
{
   const Entity & entity = *node.entity;
   putSized( [ & ] {
      for ( const AttributeRow * row : types_[ typeIndexOf( node ) ].written->arguments ) {
         if ( row->reference ) {
            const Entity * const target = referred( entity, *row );
            body_.putVarint( target ? referenceNumber( *target ) + 1 : 0 );
         } else if ( row->identity && !row->fromName ) {
            row->value->encode( body_, &entity.name() );
         } else {
            row->value->encode( body_, storageOf( entity, *row ) );
         }
      }
   } );
}

// The number of a referred entity. One of the tree that no batch has introduced is introduced by
// its parent in this one; one outside the tree by a record of its own.
std::uint64_t BatchWriter::referenceNumber( const Entity & target )
{
   if ( reader_ ) {
      return missedReference( target );
   }
   Node & node = nodeOf( target, nullptr );
   if ( node.known == 0 && !belongs( target ) ) {
      node.outside = true;
      node.known = written_;
      node.birth = node.birth == 0 ? written_ : node.birth;
      queue_.push_back( &node );
   }
   ++node.references;
   return node.number;
}

void BatchWriter::writeChangesOf( Node & node )
{
   const Entity & entity = *node.entity;
   if ( node.known == written_ ) {
      return; // introduced by this batch, and written whole
   }
   putHead( body_, node.number, node.left ? Batch::RecordKind::left : Batch::RecordKind::change );
   const std::uint64_t index = typeIndexOf( node );
   const WrittenType & type = *types_[ index ].written;
   body_.putVarint( index );
   for ( const WrittenRow & written : type.rows ) {
      if ( node.changed( written.index ) ) {
         body_.putVarint( type.numberOf( written ) );
         if ( written.row->collection ) {
            writeChangedMembers( node, written );
         } else {
            writeValue( entity, written );
            note( node, written.index, {}, false );
         }
      }
   }
   body_.putVarint( 0 );
   if ( node.left ) {
      node.leftAt = written_;
      note( node, HistoryItem::leftTree, {}, false );
   }
}

void BatchWriter::writeChangedMembers( Node & node, const WrittenRow & written )
{
   const AttributeRow & row = *written.row;
   const std::size_t payload = beginPayload( Batch::deltaMode );
   const auto writeKey = [ & ]( const void * key ) {
      if ( writeChangedMember( node, row, key ) ) {
         noteMember( node, written, key );
      }
   };
   if ( row.kind == AttributeKind::child ) {
      writeKey( nullptr );
   } else if ( const DirtyKeys * const keys = node.changedKeys( written.index ) ) {
      if ( row.collection->entity ) {
         keys->each( writeKey );
      } else {
         row.collection->stream->writeChanged( storageOf( *node.entity, row ), *keys, body_ );
         if ( places_.first() ) {
            keys->each( [ & ]( const void * key ) { noteMember( node, written, key ); } );
         }
      }
   }
   endPayload( payload );
}

// What stands under a key, unless it is a child that the reader has.
bool BatchWriter::writeChangedMember( Node & node, const AttributeRow & row, const void * key )
{
   const void * const value = row.collection->find( storageOf( *node.entity, row ), key );
   if ( value && row.kind != AttributeKind::references && holdsEntities( row ) ) {
      const Node * const child = find( *row.collection->pointee( value ) );
      if ( child && readerHas( *child ) && child->parent == &node ) {
         return false;
      }
   }
   putOp( body_, value ? MemberOp::put : MemberOp::del );
   if ( value ) {
      writeMember( node, row, key, value );
   } else if ( key ) {
      row.key->encode( body_, key );
   }
   return true;
}

} // namespace Vok::Detail
