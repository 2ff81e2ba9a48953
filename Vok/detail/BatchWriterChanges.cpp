// How a writer puts into a batch what changed.
#include "Vok/detail/BatchNode.h"
#include "Vok/detail/BatchWriter.h"

#include "Vok/TypeData.h"
#include "Vok/detail/BatchFormat.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Storage.h"

namespace Vok::Detail {

void BatchWriter::writeChanges()
{
   for ( Node * node = dirty_.first(); node; node = dirty_.next( *node ) ) {
      writeChangesOf( *node );
   }
   writeQueue();
}

void BatchWriter::writeChangesOf( Node & node )
{
   const Entity & entity = *node.entity;
   if ( node.known == written_ ) {
      return; // introduced by this batch, and written whole
   }
   const std::uint64_t index = typeIndexOf( node );
   const WrittenType & type = *types_[ index ].written;
   putHead( node.number, node.left ? Batch::RecordKind::left : Batch::RecordKind::change, index );
   for ( const WrittenRow & written : type.rows ) {
      if ( node.changed( written.index ) ) {
         body_.putVarint( written.number );
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

} // namespace Vok::Detail
