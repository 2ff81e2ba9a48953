// How a writer serves readers that stopped: what it notes for them, and what it tells one that goes
// on.
#include "Vok/detail/BatchHistory.h"
#include "Vok/detail/BatchNode.h"

#include "Vok/TypeData.h"
#include "Vok/detail/BatchFormat.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Storage.h"

#include <algorithm>
#include <stdexcept>
#include <tuple>

namespace Vok::Detail {

// So many more keys than members may be noted of a collection before it is noted as a whole.
inline constexpr std::size_t goneAtLeast = 64;

// ---- Places -----------------------------------------------------------------------------------

void BatchWriter::enter( BatchPlace & place ) noexcept
{
   place.batch = written_;
   places_.push( place );
}

void BatchWriter::leave( BatchPlace & place ) noexcept
{
   places_.remove( place );
   sweepHistory();
}

void BatchWriter::move( BatchPlace & place, std::uint64_t batch ) noexcept
{
   if ( batch <= place.batch || batch > written_ ) {
      return;
   }
   places_.remove( place );
   place.batch = batch;
   LinkedList< BatchPlace, 0 > later;
   while ( places_.first() && places_.first()->batch > batch ) {
      BatchPlace & other = *places_.first();
      places_.remove( other );
      later.push( other );
   }
   places_.push( place );
   while ( BatchPlace * const other = later.first() ) {
      later.remove( *other );
      places_.push( *other );
   }
   sweepHistory();
}

// ---- What is noted ----------------------------------------------------------------------------

void BatchWriter::note( Node & node, std::size_t index, std::string_view key, bool gone )
{
   if ( !places_.first() ) {
      return;
   }
   if ( !node.history ) {
      node.history = std::make_unique< NodeHistory >( node );
   }
   node.history->note( written_, static_cast< std::uint32_t >( index ), key, gone );
}

void BatchWriter::noteMember( Node & node, const WrittenRow & written, const void * key )
{
   if ( !places_.first() ) {
      return;
   }
   const AttributeRow & row = *written.row;
   const void * const collection = storageOf( *node.entity, row );
   if ( !key ) {
      note( node, written.index, {}, false );
      return;
   }
   scratch_.clear();
   row.key->encode( scratch_, key );
   const std::string_view bytes(
         reinterpret_cast< const char * >( scratch_.data() ), scratch_.size() );
   note( node, written.index, bytes, !row.collection->find( collection, key ) );
   const auto index = static_cast< std::uint32_t >( written.index );
   if ( node.history->gone( index ) > row.collection->size( collection ) + goneAtLeast ) {
      node.history->noteWhole( written_, index );
   }
}

// What all readers have that stopped.
void BatchWriter::sweepHistory() noexcept
{
   const BatchPlace * const oldest = places_.last();
   if ( !oldest ) {
      forgetHistory();
      return;
   }
   for ( HistoryItem * item = history_.last(); item && item->batch <= oldest->batch;
         item = history_.last() ) {
      Node & node = *item->node;
      node.history->forget( *item );
      if ( node.history->empty() ) {
         node.history.reset();
      }
   }
}

void BatchWriter::forgetHistory() noexcept
{
   while ( HistoryItem * const item = history_.last() ) {
      item->node->history.reset();
   }
}

// ---- What is told -----------------------------------------------------------------------------

bool BatchWriter::readerHas( const Node & node ) const noexcept
{
   return node.known != 0 && ( !reader_ || node.known <= reader_->since );
}

bool BatchWriter::catchUp( std::uint64_t since, NboAttrLog::Out & out )
{
   if ( hasChanges() ) {
      throw std::logic_error( "a reader catches up with a stream that has changes to be written" );
   }
   if ( since >= noted_ ) {
      CatchUp reader{ since, {}, false };
      if ( writeCatchUp( reader, out ) ) {
         return false;
      }
   }
   CatchUp reader{ 0, {}, false };
   writeCatchUp( reader, out );
   return true;
}

// Whether it could be written so.
bool BatchWriter::writeCatchUp( CatchUp & reader, NboAttrLog::Out & out )
{
   const std::size_t start = out.size();
   body_.clear();
   introduced_ = {};
   queue_.clear();
   reader_ = &reader;
   try {
      if ( reader.since == 0 ) {
         queue_.push_back( find( *root_ ) );
         writeArguments( *find( *root_ ) );
      } else {
         writeMissed( reader.since );
      }
      writeQueue();
      finish( out, start, reader.since == 0 ? Batch::wholeFlag : Batch::sinceFlag );
   } catch ( ... ) {
      reader_ = nullptr;
      out.truncate( start );
      throw;
   }
   reader_ = nullptr;
   if ( reader.impossible ) {
      out.truncate( start );
   }
   return !reader.impossible;
}

void BatchWriter::writeMissed( std::uint64_t since )
{
   std::vector< const HistoryItem * > items;
   for ( const HistoryItem * item = history_.first(); item && item->batch > since;
         item = history_.next( *item ) ) {
      if ( item->node->known <= since ) { // what came in since is told whole
         items.push_back( item );
      }
   }
   std::sort( items.begin(), items.end(), []( const HistoryItem * a, const HistoryItem * b ) {
      return std::tie( a->node->number, a->index, a->key ) <
            std::tie( b->node->number, b->index, b->key );
   } );
   for ( auto first = items.begin(); first != items.end(); ) {
      const auto last = std::find_if( first, items.end(),
            [ & ]( const HistoryItem * item ) { return item->node != ( *first )->node; } );
      writeMissedOf( { first, last }, since );
      first = last;
   }
}

void BatchWriter::writeMissedOf(
      std::span< const HistoryItem * const > items, std::uint64_t since )
{
   Node & node = *items.front()->node;
   const Batch::RecordKind kind =
         node.leftAt > since ? Batch::RecordKind::left : Batch::RecordKind::change;
   const std::uint64_t index = typeIndexOf( node );
   const WrittenType & type = *types_[ index ].written;
   putHead( node.number, kind, index );
   for ( const WrittenRow & written : type.rows ) {
      std::size_t count = 0;
      while ( count != items.size() && items[ count ]->index == written.index ) {
         ++count;
      }
      if ( count == 0 ) {
         continue;
      }
      body_.putVarint( written.number );
      if ( !written.row->collection ) {
         writeValue( *node.entity, written );
      } else {
         writeMissedMembers( items.first( count ), written );
      }
      items = items.subspan( count );
   }
   body_.putVarint( 0 );
}

void BatchWriter::writeMissedMembers(
      std::span< const HistoryItem * const > items, const WrittenRow & written )
{
   Node & node = *items.front()->node;
   const AttributeRow & row = *written.row;
   if ( !items.front()->hasKey() && row.kind != AttributeKind::child ) {
      writeMembers( node, written );
      return;
   }
   const std::size_t payload = beginPayload( Batch::deltaMode );
   for ( const HistoryItem * const item : items ) {
      if ( row.kind == AttributeKind::child ) {
         writeChangedMember( node, row, nullptr );
         continue;
      }
      OwnedValue key( *row.key );
      const std::string_view bytes = item->key.view();
      NboAttrLog::In in( reinterpret_cast< const std::byte * >( bytes.data() ), bytes.size() );
      row.key->decode( in, key.data() );
      writeChangedMember( node, row, key.data() );
   }
   endPayload( payload );
}

// All children, of which the reader has some perhaps.
void BatchWriter::writeMissedEntities( Node & node, const AttributeRow & row )
{
   const void * const storage = storageOf( *node.entity, row );
   row.collection->each( storage, [ & ]( const void * key, const void * value ) {
      const bool keep = readerHas( *find( *row.collection->pointee( value ) ) );
      putOp( body_, keep ? MemberOp::keep : MemberOp::put );
      if ( keep ) {
         row.key->encode( body_, key );
      } else {
         writeMember( node, row, key, value );
      }
      return true;
   } );
}

void BatchWriter::writeMissedChild( const Entity & child )
{
   Node & node = *find( child );
   introduceMissed( node );
   writeChildHead( node );
}

std::uint64_t BatchWriter::missedReference( const Entity & target )
{
   Node & node = *find( target );
   if ( node.outside && !readerHas( node ) && reader_->outside.insert( &node ) ) {
      introduceMissed( node );
   }
   return node.number;
}

// What the reader has already, in another place, it would have to make anew.
void BatchWriter::introduceMissed( Node & node )
{
   if ( node.birth <= reader_->since ) {
      reader_->impossible = true;
   }
   queue_.push_back( &node );
}

// Whether the reader may have some of a collection's children.
bool BatchWriter::mayKeep( const AttributeRow & row ) const noexcept
{
   return reader_->since != 0 && row.kind == AttributeKind::children;
}

std::size_t BatchWriter::typesBefore( std::uint64_t since ) const noexcept
{
   const auto last = std::find_if( types_.begin(), types_.end(),
         [ & ]( const auto & type ) { return type.describedAt > since; } );
   return static_cast< std::size_t >( last - types_.begin() );
}

} // namespace Vok::Detail
