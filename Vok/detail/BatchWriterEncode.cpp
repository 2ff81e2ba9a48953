// How a writer puts its tree into a batch, or what a batch introduces of it.
#include "Vok/detail/BatchNode.h"
#include "Vok/detail/BatchWriter.h"

#include "Vok/TypeData.h"
#include "Vok/detail/BatchFormat.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Pen.h"
#include "Vok/detail/Storage.h"

#include <cstring>

namespace Vok::Detail {

namespace {

// Up to this many bytes a block has a length of one byte before it.
constexpr std::size_t shortBlock = 0x7f;

// Whether a plain or optional attribute is at its default, or a collection empty.
bool isInitial( const WrittenRow & written, const void * storage )
{
   const AttributeRow & row = *written.row;
   if ( row.collection ) {
      return neverFilled( storage ) || row.collection->size( storage ) == 0;
   }
   if ( !row.storage ) {
      return written.initial && row.value->equal( storage, written.initial->data() );
   }
   OwnedValue value( *row.value );
   row.storage->load( storage, value.data() );
   return row.value->equal( value.data(), written.initial->data() );
}

} // namespace

// Makes room for a longer length.
void BatchWriter::closeLong( std::size_t start )
{
   const std::size_t size = body_.size() - start - 1;
   scratch_.clear();
   scratch_.putVarint( size );
   const std::size_t more = scratch_.size() - 1;
   std::byte * const end = body_.room( more );
   std::memmove( end - size + more, end - size, size );
   std::memcpy( end - size - 1, scratch_.data(), scratch_.size() );
   body_.wrote( end + more );
}

template< class Put > inline void BatchWriter::putSized( Put && put )
{
   const std::size_t start = openBlock();
   put();
   closeBlock( start );
}

void BatchWriter::writeWhole()
{
   described_ = 0;
   while ( Node * const node = loose_.first() ) {
      loose_.remove( *node );
   }
   forgetHistory();
   noted_ = written_; // whoever stopped before needs the whole tree as well
   ++wholes_;
   Node & root = nodeOf( *root_ );
   root.known = written_;
   queue_.push_back( &root );
   writeArguments( root );
   writeQueue();
   if ( queue_.size() != nodes_.size() ) {
      eraseUnknown();
   }
}

// Entities that were followed once, and are no part of what the reader of a whole tree knows.
void BatchWriter::eraseUnknown() noexcept
{
   const auto isUnknown = [ this ]( const Node & node ) { return node.known != written_; };
   nodes_.eachNode( [ & ]( const NodeEntry & entry ) {
      if ( Node & node = *entry.value; isUnknown( node ) ) {
         node.unlink();
         node.forget();
      }
   } );
   for ( decltype( nodes_ )::Cursor cursor( nodes_ ); !cursor.atEnd(); cursor.next() ) {
      if ( Node & node = *cursor.node()->value; isUnknown( node ) ) {
         erase( node );
      }
   }
}

// Entities that the batch introduces, parents before their children.
void BatchWriter::writeQueue()
{
   for ( std::size_t i = 0; i != queue_.size(); ++i ) {
      writeNode( *queue_[ i ] );
   }
}

// A text is a block as it is.
inline void BatchWriter::putText( std::string_view text )
{
   if ( text.size() <= shortBlock ) [[likely]] {
      Pen pen( body_, 1 + shortBlock );
      pen.byte( static_cast< std::uint8_t >( text.size() ) );
      pen.bytes( text );
   } else {
      body_.putVarint( text.size() );
      body_.putBytes( text.data(), text.size() );
   }
}

// Behind a value of a fixed size stands the next; any other has its length before it.
inline void BatchWriter::putValue( const ValueOps & ops, const void * value )
{
   if ( ops.fixedLogSize != 0 ) {
      ops.encode( body_, value );
   } else {
      putSized( [ & ] { ops.encode( body_, value ); } );
   }
}

// A value that is stored as something else.
[[gnu::noinline]] void BatchWriter::putLoaded( const AttributeRow & row, const void * storage )
{
   OwnedValue value( *row.value );
   row.storage->load( storage, value.data() );
   putValue( *row.value, value.data() );
}

inline void BatchWriter::putStored( const WrittenRow & written, const void * storage )
{
   if ( written.coding == WrittenRow::Coding::number ) {
      Pen( body_, Pen::numberRoom ).number( written.numberAt( storage ), written.logged );
   } else if ( written.coding == WrittenRow::Coding::text ) {
      putText( *static_cast< const Corvo::String * >( storage ) );
   } else if ( written.row->storage ) {
      putLoaded( *written.row, storage );
   } else {
      putValue( *written.row->value, storage );
   }
}

void BatchWriter::writeValue( const Entity & entity, const WrittenRow & written )
{
   putStored( written, written.storageIn( entity ) );
}

// All members, as a reader that has none needs them.
[[gnu::always_inline]] inline void BatchWriter::putMembers(
      Node & node, const WrittenRow & written )
{
   const AttributeRow & row = *written.row;
   const bool keeping = reader_ && mayKeep( row );
   const std::size_t payload = beginPayload( keeping ? Batch::keepMode : Batch::wholeMode );
   if ( keeping ) {
      writeMissedEntities( node, row );
   } else if ( row.collection->entity ) {
      writeAllEntities( node, row );
   } else {
      row.collection->stream->write( written.storageIn( *node.entity ), body_ );
   }
   endPayload( payload );
}

void BatchWriter::writeMembers( Node & node, const WrittenRow & written )
{
   putMembers( node, written );
}

// Says whether an attribute was written.
[[gnu::always_inline]] inline bool BatchWriter::writeUnlessInitial(
      Node & node, const WrittenRow & written )
{
   const Entity & entity = *node.entity;
   const void * const storage = written.storageIn( entity );
   if ( written.coding == WrittenRow::Coding::number ) {
      const std::uint64_t number = written.numberAt( storage );
      if ( written.initial && number == written.initialNumber ) {
         return false;
      }
      Pen pen( body_, Pen::varintRoom + Pen::numberRoom );
      pen.varint( written.number );
      pen.number( number, written.logged );
      return true;
   }
   if ( isInitial( written, storage ) ) {
      return false;
   }
   body_.putVarint( written.number );
   if ( written.row->collection ) {
      putMembers( node, written );
   } else {
      putStored( written, storage );
   }
   return true;
}

void BatchWriter::writeNode( Node & node )
{
   const Entity & entity = *node.entity;
   const std::size_t start = body_.size();
   const Batch::Successive before = introduced_;
   const bool outside = node.outside;
   const std::uint64_t index = typeIndexOf( node );
   const WrittenType & type = *types_[ index ].written;
   putHead( node.number, outside ? Batch::RecordKind::outside : Batch::RecordKind::whole, index );
   if ( outside ) {
      body_.putVarint( node.birth );
      writeArguments( node );
   }
   bool any = outside || &entity == root_.get();
   type.eachSuspect( entity, [ & ]( const WrittenRow & written ) {
      any |= writeUnlessInitial( node, written );
   } );
   if ( any ) {
      body_.putVarint( 0 );
   } else {
      body_.truncate( start ); // all at their defaults: no record needed
      introduced_ = before;
   }
}

void BatchWriter::writeAllEntities( Node & node, const AttributeRow & row )
{
   const void * const storage = storageOf( *node.entity, row );
   if ( row.kind == AttributeKind::references ) {
      row.collection->stream->eachEntity( storage, [ & ]( const Entity & target ) {
         body_.putVarint( referenceNumber( target ) );
      } );
   } else if ( reader_ ) {
      row.collection->stream->eachEntity(
            storage, [ & ]( const Entity & child ) { writeMissedChild( child ); } );
   } else {
      row.collection->stream->eachEntity( storage, [ & ]( const Entity & child ) {
         putChild( introduce( node, child ) );
      } );
   }
}

void BatchWriter::writeChild( Node & parent, const Entity & child )
{
   if ( reader_ ) {
      writeMissedChild( child );
   } else {
      putChild( introduce( parent, child ) );
   }
}

// Inlined always: a whole tree has one for each of its entities.
[[gnu::always_inline]] inline BatchWriter::Node & BatchWriter::introduce(
      Node & parent, const Entity & child )
{
   Node & node = nodeOf( child );
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
   return node;
}

void BatchWriter::writeChildHead( Node & node )
{
   putChild( node );
}

// What makes a child.
[[gnu::always_inline]] inline void BatchWriter::putChild( Node & node )
{
   const bool nameAlone = types_[ typeIndexOf( node ) ].written->nameAlone;
   const std::string_view name = node.entity->name();
   const bool atOnce = nameAlone && name.size() <= shortBlock;
   const bool otherBirth = node.birth != childBirth_;
   {
      Pen pen( body_, 2 * Pen::varintRoom + 1 + shortBlock );
      pen.varint( children_.code( node.number ) * 2 + ( otherBirth ? 1 : 0 ) );
      if ( otherBirth ) [[unlikely]] {
         pen.varint( node.birth );
         childBirth_ = node.birth;
      }
      if ( atOnce ) [[likely]] {
         pen.byte( static_cast< std::uint8_t >( name.size() ) );
         pen.bytes( name );
      }
   }
   if ( !atOnce ) {
      writeArguments( node );
   }
}

// The name stands last, and needs no length of its own.
void BatchWriter::writeArguments( Node & node )
{
   const Entity & entity = *node.entity;
   const WrittenType & type = *types_[ typeIndexOf( node ) ].written;
   putSized( [ & ] {
      bool named = false;
      for ( const WrittenRow & argument : type.arguments ) {
         const AttributeRow & row = *argument.row;
         const void * const storage = argument.storageIn( entity );
         if ( row.reference ) {
            const Entity * const target = referred( entity, row );
            body_.putVarint( target ? referenceNumber( *target ) + 1 : 0 );
         } else if ( argument.isName ) {
            named = true;
         } else if ( argument.coding == WrittenRow::Coding::number ) {
            Pen( body_, Pen::numberRoom ).number( argument.numberAt( storage ), argument.logged );
         } else {
            row.value->encode( body_, storage );
         }
      }
      if ( named ) {
         body_.putBytes( entity.name().data(), entity.name().size() );
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
   Node & node = nodeOf( target );
   if ( node.known == 0 && !belongs( target ) ) {
      node.outside = true;
      node.known = written_;
      node.birth = node.birth == 0 ? written_ : node.birth;
      queue_.push_back( &node );
   }
   ++node.references;
   return node.number;
}

} // namespace Vok::Detail
