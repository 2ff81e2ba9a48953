// Bringing one checked batch to a replica.
#pragma once

#include "Vok/HSet.h"
#include "Vok/detail/BatchReader.h"
#include "Vok/detail/FunctionRef.h"
#include "Vok/detail/NumberIndex.h"
#include "Vok/detail/PendingTell.h"
#include "Vok/detail/RecordCursor.h"
#include "Vok/detail/Staged.h"

#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <optional>
#include <vector>

namespace Vok::Detail {

class BatchApply {
 public:
   /// `described` are all types that are known, where the batch describes some.
   BatchApply( BatchReader & reader, const BatchFrame & frame,
         std::optional< ReadTypes > described, const Introduced & introduced );

   /// Makes and stages everything. Throws, and then the replica is as it was.
   void prepare();

   /// Stores everything that was staged.
   void commit() noexcept;

   /// Tells of it. The reader may be gone when this returns.
   void notify() { pending_.tell(); }

 private:
   /// An entity that the batch introduces: one to be made, or one that the replica has already.
   struct Intro {
      std::uint64_t number = 0;
      std::uint64_t birth = 0;
      std::uint64_t parent = 0;
      const Intro * above = nullptr; ///< the parent, where the batch introduces it
      const AttributeRow * row = nullptr; ///< of the parent; null where this side does not know it
      NboAttrLog::In arguments{ nullptr, 0 };
      const ReadType * type = nullptr;
      std::uint32_t typeNumber = 0;
      bool outside = false;
      enum class State : std::uint8_t {
         pending,
         waiting,
         ready
      } state = State::pending;
      bool fresh = false; ///< made for this batch
      bool recorded = false; ///< has a record
      Corvo::Ptr< Entity > entity; ///< null: ignored
   };

   struct Record {
      std::uint64_t number;
      const ReadType & type;
      bool whole;
   };

   /// Arguments of an introduced entity, read.
   struct Arguments {
      std::vector< OwnedValue > values;
      std::vector< Corvo::Ptr< Entity > > targets;
      std::vector< const void * > addresses;
      bool complete = true; ///< nothing that they refer to is gone

      /// Keeps the room, for the next entity's.
      void clear() noexcept
      {
         values.clear();
         targets.clear();
         addresses.clear();
         complete = true;
      }
   };

   /// Where the batch refers to an entity: a collection of references of the entity `number`, or
   /// an argument of it.
   struct Referrer {
      std::uint64_t number;
      const AttributeRow * row;
   };

   /// Whether the batch is the whole tree of a writer that the reader did not follow so far.
   bool otherStream() const noexcept { return frame_.whole && !sameStream_; }

   void checkRoot( NboAttrLog::In arguments );
   void scan();
   void introduceChildren( const Record & record, NboAttrLog::In & attributes );
   Intro & introduce( std::uint64_t number, std::uint32_t typeNumber );
   void noteReferences( std::uint64_t referrer, const AttributeRow & row, NboAttrLog::In payload );
   void noteArguments( const Intro & intro );
   void noteReference( std::uint64_t number, Referrer referrer );

   Intro * introOf( std::uint64_t number )
   {
      const std::uint32_t position = introByNumber_.find( number );
      return position != 0 ? intros_.data() + ( position - 1 ) : nullptr;
   }
   Entity * entityOf( std::uint64_t number );
   Entity * parentOf( const Intro & intro );
   Corvo::Ptr< Entity > targetOf( std::uint64_t number, const AttributeRow & row );
   bool inPlace( ReplicaSlot slot );

   void resolveAll();
   void resolve( Intro & intro );
   bool canBeMade( Intro & intro );
   bool waitsForOthers( Intro & intro, std::vector< Intro * > & stack );
   void readArguments( const Intro & intro, Arguments & arguments );
   Corvo::Ptr< Entity > known(
         const Intro & intro, const Entity * owner, const Arguments & arguments );
   bool mayStand( const Intro & intro, const Entity * owner );
   Corvo::Ptr< Entity > alike(
         const Intro & intro, const Entity * owner, const Arguments & arguments );
   Corvo::Ptr< Entity > referredThere( const Intro & intro, const Arguments & arguments );
   void eachReference( const Intro & intro,
         FunctionRef< void( std::uint64_t number, const AttributeRow & row ) > f );
   static Corvo::Ptr< Entity > member( const Entity & owner, const AttributeRow & row,
         const TypeData & type, const Arguments & arguments );
   static bool sameArguments(
         const Entity & entity, const TypeData & type, const Arguments & arguments );

   void applyAll();
   void apply( const Record & record, NboAttrLog::In & attributes );
   void applyFresh( Entity & entity, const Record & record, NboAttrLog::In & attributes );
   void applyExisting( Entity & entity, const Record & record, NboAttrLog::In & attributes );
   void loadDefault( Entity & entity, const ReadRow & row );
   void loadAttribute( Entity & entity, const ReadRow & row, NboAttrLog::In payload );
   void loadCollection(
         Entity & entity, const ReadRow & row, void * storage, NboAttrLog::In & payload );
   void stageAttribute( Entity & entity, const ReadRow & row, NboAttrLog::In payload );
   void stageValue( Entity & entity, const AttributeRow & row, OwnedValue next );
   void stageInitial( Entity & entity, const ReadRow & row );
   void loadEntities(
         Entity & entity, const ReadRow & row, void * storage, EntityMembers & members );
   bool nextEntityOp( const ReadRow & row, const void * collection, EntityMembers & members,
         EntityOp & next );
   void passOver( const ReadType & type, const ReadRow & row );
   void makeSlots();

   // Notes that live as long as the batch: those of a small one need no allocation.
   std::byte firstMemory_[ 512 ];
   std::pmr::monotonic_buffer_resource memory_{ firstMemory_, sizeof firstMemory_ };

   BatchReader & reader_;
   BatchFrame frame_;
   std::optional< ReadTypes > described_;
   const ReadTypes & types_; // described_, or the reader's
   bool sameStream_;

   std::vector< Intro > intros_; // has room for all from the beginning: they do not move
   NumberIndex introByNumber_; // positions in intros_, plus 1
   HashMap2018< MapNode< std::uint64_t, Referrer >, std::uint64_t, Referrer > referrers_;
   HSet< const Entity * > claimed_; // outside the tree, found again
   ReplicaSlots newSlots_; // of what the batch introduces
   Arguments arguments_; // of the entity that is resolved
   std::vector< std::uint8_t > mentioned_; // which rows a record has: 1, or 0
   std::pmr::vector< ReplicaSlot > line_; // used while an entity's place is checked
   std::pmr::vector< ReplicaSlot > left_; // whose entities are outside the tree from now on
   PendingTell pending_;
   std::vector< Corvo::String > passedOver_;
};

} // namespace Vok::Detail
