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

   BatchWriter::Node * node;
   std::uint32_t index; ///< the attribute's number in its table
   bool gone = false; ///< there is no member under the key
   std::uint64_t batch = 0; ///< the last one with it
   Corvo::String key; ///< as a log has it; empty: the attribute as a whole
   ListLink< HistoryItem > links[ 1 ];

   bool hasKey() const noexcept { return !key.empty(); }
};

struct HistoryKey {
   const Corvo::String & operator()( const std::unique_ptr< HistoryItem > & item ) const noexcept
   {
      return item->key;
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
   std::size_t gone( std::uint32_t index ) noexcept;

   /// Notes the whole collection in place of its keys.
   void noteWhole( std::uint64_t batch, std::uint32_t index );

   void forget( const HistoryItem & item ) noexcept;
   bool empty() const noexcept { return attributes_.empty(); }

 private:
   using Item = KeyedNode< std::unique_ptr< HistoryItem >, HistoryKey >;
   using Keys = HashMap2018< Item, Corvo::String, std::unique_ptr< HistoryItem > >;

   /// One attribute of the entity. At least one of the two is there.
   struct Attribute {
      std::uint32_t index;
      std::unique_ptr< HistoryItem > whole;
      std::unique_ptr< Keys > keys;
      std::size_t gone = 0; ///< keys without member
   };
   using Attributes = std::vector< Attribute >; // entities have few that change

   Attributes::iterator find( std::uint32_t index ) noexcept;
   HistoryItem & item( std::uint32_t index, std::string_view key );
   std::unique_ptr< HistoryItem > newItem( std::uint32_t index, std::string_view key );

   BatchWriter::Node & node_;
   Attributes attributes_;
};

/// What one reader is told that is not where the stream is.
struct BatchWriter::CatchUp {
   std::uint64_t since; ///< the last batch that it has; 0: it has nothing
   HSet< const Node * > outside; ///< introduced
   bool impossible = false; ///< it would have to take an entity from one place to another
};

} // namespace Vok::Detail
