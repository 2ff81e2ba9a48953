// The writer of a change stream.
//
// Every entity of the tree that has been written has a node: a FlowOut that notes its changes,
// with the number under which the reader knows the entity. Nodes are made when an entity is first
// written, not when it comes into being, so that a change of a child that the reader does not
// know yet costs nothing. A node is dropped as soon as its entity leaves the tree, unless a
// reference that was written still leads to it: then it stays, as the root of what the stream
// calls outside.
//
// Where readers stopped, what is written meanwhile is noted for them: see BatchHistory.h.
#pragma once

#include "Vok/Entity.h"
#include "Vok/FlowOut.h"
#include "Vok/HSet.h"
#include "Vok/HashMap2018.h"
#include "Vok/NboAttrLog.h"
#include "Vok/NboAttrLogSa.h"
#include "Vok/detail/BatchFormat.h"
#include "Vok/detail/LinkedList.h"
#include "Vok/detail/Pen.h"
#include "Vok/detail/StreamType.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace Vok::Detail {

struct BatchPlace;
struct HistoryItem;

class BatchWriter {
 public:
   explicit BatchWriter( const Corvo::Ptr< Entity > & root );
   BatchWriter( const BatchWriter & ) = delete;
   BatchWriter & operator=( const BatchWriter & ) = delete;
   ~BatchWriter();

   bool hasChanges() const noexcept { return whole_ || dirty_.first(); }
   void write( NboAttrLog::Out & out );
   void resync() noexcept { whole_ = true; }
   void onPending( std::function< void() > f ) { onPending_ = std::move( f ); }

   /// Brings a reader from a place to where the stream is: the place of one that has nothing is 0.
   /// Whether it took the whole tree.
   bool catchUp( std::uint64_t since, NboAttrLog::Out & out );
   StreamPosition position() const noexcept { return { stream_, written_ }; }

   void enter( BatchPlace & place ) noexcept;
   void leave( BatchPlace & place ) noexcept;
   void move( BatchPlace & place, std::uint64_t batch ) noexcept;

   class Node;

 private:
   friend class NodeHistory;
   struct CatchUp;

   using NodeEntry = MapNode< const Entity *, std::unique_ptr< Node > >;

   // The lists that a node may stand in.
   enum Links : std::size_t {
      amongSiblings,
      amongDirty,
      amongLoose
   };

   // Nodes.
   Node * find( const Entity & entity ) const noexcept;
   Node & nodeOf( const Entity & entity );
   NodeEntry newEntry( const Entity & entity );
   bool belongs( const Entity & entity );
   bool readerHas( const Node & node ) const noexcept;
   void drop( Node & top ) noexcept;
   void erase( Node & node ) noexcept;
   void release( Node & target ) noexcept;
   void releaseReferences( Node & node ) noexcept;
   void becameDirty( Node & node ) noexcept;
   void noteLost() noexcept;
   void sweepLoose() noexcept;

   // Writing.
   void writeWhole();
   void eraseUnknown() noexcept;
   void writeChanges();
   void writeQueue();
   void writeNode( Node & node );
   void writeChangesOf( Node & node );
   bool writeUnlessInitial( Node & node, const WrittenRow & written );
   void writeValue( const Entity & entity, const WrittenRow & written );
   void writeMembers( Node & node, const WrittenRow & written );
   void writeChangedMembers( Node & node, const WrittenRow & written );
   bool writeChangedMember( Node & node, const AttributeRow & row, const void * key );
   void writeAllEntities( Node & node, const AttributeRow & row );
   void writeMember( Node & node, const AttributeRow & row, const void * key, const void * value );
   void writeChild( Node & parent, const Entity & child );
   Node & introduce( Node & parent, const Entity & child );
   void putChild( Node & node );
   void writeChildHead( Node & node );
   void writeArguments( Node & node );
   void putHead( std::uint64_t number, Batch::RecordKind kind, std::uint64_t type );
   void putText( std::string_view text );
   void putValue( const ValueOps & ops, const void * value );
   void putLoaded( const AttributeRow & row, const void * storage );
   void putStored( const WrittenRow & written, const void * storage );
   void putMembers( Node & node, const WrittenRow & written );
   std::size_t openBlock();
   void closeBlock( std::size_t start );
   void closeLong( std::size_t start );
   template< class Put > void putSized( Put && put );
   std::uint64_t referenceNumber( const Entity & target );
   std::uint64_t typeIndex( const TypeData & type );
   std::uint64_t typeIndexOf( Node & node );
   std::uint64_t findTypeOf( Node & node );
   void describeTypes( NboAttrLog::Out & out, std::size_t described );
   void finish( NboAttrLog::Out & out, std::size_t start, std::uint8_t flags );
   std::size_t beginPayload( std::uint8_t mode );
   void endPayload( std::size_t start );

   // Readers that stopped.
   void note( Node & node, std::size_t index, std::string_view key, bool gone );
   void noteMember( Node & node, const WrittenRow & written, const void * key );
   void sweepHistory() noexcept;
   void forgetHistory() noexcept;
   bool writeCatchUp( CatchUp & reader, NboAttrLog::Out & out );
   void writeMissed( std::uint64_t since );
   void writeMissedOf( std::span< const HistoryItem * const > items, std::uint64_t since );
   void writeMissedMembers(
         std::span< const HistoryItem * const > items, const WrittenRow & written );
   void writeMissedEntities( Node & node, const AttributeRow & row );
   void writeMissedChild( const Entity & child );
   std::uint64_t missedReference( const Entity & target );
   void introduceMissed( Node & node );
   bool mayKeep( const AttributeRow & row ) const noexcept;
   std::size_t typesBefore( std::uint64_t since ) const noexcept;

   Corvo::Ptr< Entity > root_;
   std::uint64_t stream_;
   std::uint64_t written_ = 0; // batches
   bool whole_ = true;
   std::uint32_t wholes_ = 0; // whole trees that were begun
   CatchUp * reader_ = nullptr; // the one that is written for, where it is not all of them
   std::function< void() > onPending_;

   LinkedList< BatchPlace, 0 > places_;
   LinkedList< HistoryItem, 0 > history_; // outlives the nodes, whose items stand in it
   std::uint64_t noted_ = 1; // the first batch since which all is noted

   HashMap2018< NodeEntry, const Entity *, std::unique_ptr< Node > > nodes_;
   LinkedList< Node, amongDirty > dirty_; // those with something pending
   LinkedList< Node, amongLoose > loose_; // those outside that a written reference led to
   std::uint32_t nextNumber_ = 0;
   std::vector< std::uint32_t > freeNumbers_;

   struct NumberedType {
      const WrittenType * written;
      std::uint64_t describedAt; // the batch that described it; 0 while none has
   };
   std::vector< NumberedType > types_; // the root's first; none is ever forgotten
   std::size_t lastType_ = 0; // the number that was looked for last
   std::size_t described_ = 0; // types that the readers know

   NboAttrLog::Out body_;
   NboAttrLog::Out scratch_;
   Batch::Successive introduced_; // the numbers of entities that have a record, in this batch
   Batch::Successive children_; // those of children that were put into the payload
   std::uint64_t childBirth_ = 0; // of the last one of these
   std::vector< Node * > queue_; // nodes to be written whole
   HSet< const Entity * > belonging_; // entities that are known to belong, while a batch is written
};

// A block has its length before it. That of most takes one byte, for which room is left.
inline std::size_t BatchWriter::openBlock()
{
   const std::size_t start = body_.size();
   body_.put( std::uint8_t{ 0 } );
   return start;
}

inline void BatchWriter::closeBlock( std::size_t start )
{
   const std::size_t size = body_.size() - start - 1;
   if ( size < 0x80 ) [[likely]] {
      body_.patch8( start, static_cast< std::uint8_t >( size ) );
   } else {
      closeLong( start );
   }
}

// The payload of a collection is a block that begins with its mode.
inline std::size_t BatchWriter::beginPayload( std::uint8_t mode )
{
   const std::size_t start = body_.size();
   body_.put( static_cast< std::uint16_t >( mode ) ); // behind the length
   children_ = {};
   childBirth_ = 0;
   return start;
}

inline void BatchWriter::endPayload( std::size_t start )
{
   closeBlock( start );
}

inline void BatchWriter::putHead(
      std::uint64_t number, Batch::RecordKind kind, std::uint64_t type )
{
   Pen pen( body_, 2 * Pen::varintRoom );
   const std::uint64_t code = Batch::introduces( kind ) ? introduced_.code( number ) : number;
   pen.varint( code * 4 + static_cast< unsigned >( kind ) );
   pen.varint( type );
}

} // namespace Vok::Detail
