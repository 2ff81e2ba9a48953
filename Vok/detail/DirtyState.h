// Which attributes and which keys of one entity changed since the last batch.
#pragma once

#include "Vok/Export.h"
#include "Vok/Publisher.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace Vok {

class TypeData;

namespace Detail {

class DirtyKeys;
struct AttributeRow;

/// A bit per attribute, and for each collection that has any the set of its changed keys.
/// Attributes are counted as the type's table lists them.
class VOK_EXPORT DirtyState {
 public:
   explicit DirtyState( const TypeData & type );
   DirtyState( const DirtyState & ) = delete;
   DirtyState & operator=( const DirtyState & ) = delete;
   ~DirtyState();

   /// Takes note of a change. Throws std::bad_alloc, and then nothing is noted.
   void note( const Corvo::Change & change );

   /// The same where the attribute's number and row are known.
   void note( const Corvo::Change & change, std::size_t index, const AttributeRow & row );

   bool any() const noexcept { return wide_ ? anyOfMany() : bits_.one != 0; }

   /// Whether a collection has changed, though it may be again as it was.
   bool hasKeys() const noexcept { return keys_ != nullptr; }
   bool attribute( std::size_t index ) const noexcept
   {
      return ( words()[ index / 64 ] >> index % 64 & 1 ) != 0;
   }

   /// The changed keys of a collection; null where there are none.
   const DirtyKeys * keys( std::size_t index ) const noexcept;

   /// All of it is in a batch. `publisher` is that of the entity.
   void clear( const Corvo::Publisher & publisher ) noexcept;

   /// The entity is written as it is, with changes that are perhaps not noted yet: of those noted
   /// from now on, none tells what a reader has not.
   void writtenWhole( const Corvo::Publisher & publisher ) noexcept
   {
      trusting_ = trusting_ && !publisher.busy();
   }

   /// The number of an attribute in the table of its type: an entity's are numbered without gaps
   /// from 258, behind its name where that is listed.
   std::size_t indexOf( AttrId id ) const noexcept
   {
      return id < firstId ? 0 : id - firstId + ( named_ ? 1 : 0 );
   }
   const AttributeRow & row( std::size_t index ) const noexcept;

 private:
   static constexpr AttrId firstId = 258;

   const std::uint64_t * words() const noexcept { return wide_ ? bits_.many : &bits_.one; }
   std::uint64_t * words() noexcept { return wide_ ? bits_.many : &bits_.one; }
   std::size_t wordCount() const noexcept;
   bool anyOfMany() const noexcept;
   void noteKey( const Corvo::Change & change, std::size_t index, const AttributeRow & row );
   DirtyKeys * keysOf( std::size_t index ) const noexcept;
   void forgetKeys() noexcept;

   const TypeData * type_;
   union {
      std::uint64_t one = 0;
      std::uint64_t * many; // of a type of more than 64 attributes: so many words, owned
   } bits_;
   std::unique_ptr< DirtyKeys > keys_; // of each collection that has changed
   std::uint32_t keysBefore_ = 0; // how many there were, of all collections, at the last batch
   bool wide_ = false;
   bool named_; // the table of the type begins with the name
   bool trusting_ = true; // a first insertion tells that a reader has no such member
};

} // namespace Detail
} // namespace Vok
