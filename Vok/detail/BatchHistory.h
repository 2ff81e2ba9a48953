// What a stream keeps for readers that stopped: which attributes and which keys were written since,
// each once, the last one written first. Part of BatchWriter.h.
//
// It follows what differs, not how often it changed. Of members that are gone it keeps no more than
// their collection has members: beyond that it knows only that the whole collection changed.
#pragma once

#include "Vok/HashMap2018.h"
#include "Vok/MapNodes.h"
#include "Vok/String.h"
#include "Vok/detail/BatchWriter.h"
#include "Vok/detail/LinkedList.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace Vok::Detail {

/// Where a reader stopped. Places stand in the order of their batches.
struct BatchPlace {
   explicit BatchPlace( BatchWriter & stream );
   BatchPlace( const BatchPlace & ) = delete;
   BatchPlace & operator=( const BatchPlace & ) = delete;
   ~BatchPlace();

   BatchWriter * writer; ///< null: it is gone
   std::uint64_t batch = 0; ///< the last one that the reader has
   ListLink< BatchPlace > links[ 1 ];
};

/// Something that was written: an attribute, a key of a collection, or that an entity left the
/// tree.
struct HistoryItem {
   /// What stands for an attribute where the entity left the tree.
   static constexpr std::uint32_t leftTree = 0xffffffff;

   BatchWriter::Node * node = nullptr;
   Corvo::String place; ///< the attribute's number in its table, and the key as a log has it
   std::uint64_t batch = 0; ///< the last one with it
   bool gone = false; ///< there is no member under the key
   ListLink< HistoryItem > links[ 1 ];

   static constexpr std::size_t headSize = sizeof( std::uint32_t );

   std::uint32_t index() const noexcept;
   bool hasKey() const noexcept { return place.size() != headSize; }
   std::string_view key() const noexcept { return place.view().substr( headSize ); }
};

struct HistoryPlace {
   const Corvo::String & operator()( const std::unique_ptr< HistoryItem > & item ) const noexcept
   {
      return item->place;
   }
};

/// What was written of one entity.
class NodeHistory {
 public:
   explicit NodeHistory( BatchWriter::Node & node ) noexcept : node_( node ) {}
   NodeHistory( const NodeHistory & ) = delete;
   NodeHistory & operator=( const NodeHistory & ) = delete;
   ~NodeHistory();

   /// Takes note of what stands in batch `batch`. Throws std::bad_alloc.
   void note( std::uint64_t batch, std::uint32_t index, std::string_view key, bool gone );

   /// How many keys of a collection are noted that have no member.
   std::size_t gone( std::uint32_t index ) const noexcept;

   /// Notes the whole collection in place of its keys.
   void noteWhole( std::uint64_t batch, std::uint32_t index );

   void forget( const HistoryItem & item ) noexcept;
   bool empty() const noexcept { return items_.empty(); }

 private:
   using Item = KeyedNode< std::unique_ptr< HistoryItem >, HistoryPlace >;

   void count( const HistoryItem & item, bool gone );

   BatchWriter::Node & node_;
   HashMap2018< Item, Corvo::String, std::unique_ptr< HistoryItem > > items_;
   std::vector< std::pair< std::uint32_t, std::size_t > > gone_; // by attribute
};

/// What one reader is told that is not where the stream is.
struct BatchWriter::CatchUp {
   std::uint64_t since; ///< the last batch that it has; 0: it has nothing
   HSet< const Node * > outside; ///< introduced
   bool impossible = false; ///< it would have to take an entity from one place to another
};

} // namespace Vok::Detail
