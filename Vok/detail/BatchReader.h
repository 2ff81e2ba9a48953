// The reader of a change stream: what it knows between batches.
//
// A batch is read in four passes. Its frame is checked: length, checksum, place in the stream.
// Then every record and every value is checked, and nothing of them is kept. Then the batch is
// prepared: entities that it introduces are made or found, and every change to what exists is
// staged, with all memory that it will need; until here anything may throw and nothing has
// changed. At last the staged changes are committed, which cannot fail, and told.
#pragma once

#include "Vok/Entity.h"
#include "Vok/NboAttrLog.h"
#include "Vok/NboAttrLogSa.h"
#include "Vok/detail/ReadType.h"
#include "Vok/detail/ReplicaSlots.h"

#include <cstdint>
#include <vector>

namespace Vok::Detail {

/// What stands before the records of a batch.
struct BatchFrame {
   bool whole = false;
   std::uint64_t stream = 0;
   std::uint64_t number = 0; ///< of the batch
   std::uint64_t since = 0; ///< the batch that it follows, unless it is a whole tree
   NboAttrLog::In content{ nullptr, 0 };
};

class BatchReader {
 public:
   explicit BatchReader( const Corvo::Ptr< Entity > & root ) : root_( root ) {}

   void read( NboAttrLog::In & in );
   StreamPosition position() const noexcept { return { stream_, last_ }; }
   const std::vector< Corvo::String > & passedOver() const noexcept { return passedOver_; }

 private:
   friend class BatchApply;

   /// Reads and checks the frame; `in` goes on behind the batch.
   static BatchFrame readFrame( NboAttrLog::In & in );
   void checkPlace( const BatchFrame & frame ) const;

   Corvo::Ptr< Entity > root_;
   std::uint64_t stream_ = 0;
   std::uint64_t last_ = 0; // the last batch read; 0 while there is none
   ReadTypes types_;
   std::uint64_t shapeChanges_ = 1; // counted up when an entity of the replica leaves its parent
   ReplicaSlots slots_{ shapeChanges_ };
   std::vector< Corvo::String > passedOver_;
};

} // namespace Vok::Detail
