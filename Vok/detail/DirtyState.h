// Which attributes and which keys of one entity changed since the last batch.
#pragma once

#include "Vok/Export.h"
#include "Vok/Publisher.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

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
   ~DirtyState();

   /// Takes note of a change. Throws std::bad_alloc, and then nothing is noted.
   void note( const Corvo::Change & change );

   bool any() const noexcept;

   /// Whether a collection has changed, though it may be again as it was.
   bool hasKeys() const noexcept { return keysChanged_; }
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
   void writtenWhole( const Corvo::Publisher & publisher ) noexcept;

   /// The number of an attribute in the table of its type.
   static std::size_t indexOf( const TypeData & type, AttrId id ) noexcept;

 private:
   struct KeySet {
      std::size_t index;
      std::unique_ptr< DirtyKeys > keys;
   };

   // What most entities do without.
   struct Rest {
      std::unique_ptr< std::uint64_t[] > words; // the bits of a type of more than 64 attributes
      std::vector< KeySet > keySets;
   };

   const std::uint64_t * words() const noexcept
   {
      return rest_ && rest_->words ? rest_->words.get() : &one_;
   }
   std::uint64_t * words() noexcept
   {
      return rest_ && rest_->words ? rest_->words.get() : &one_;
   }
   std::size_t wordCount() const noexcept;
   void noteKey( const Corvo::Change & change, std::size_t index, const AttributeRow & row );
   DirtyKeys & keysOf( std::size_t index, const AttributeRow & row );

   const TypeData * type_;
   std::uint64_t one_ = 0; // the bits of a type of at most 64 attributes
   std::unique_ptr< Rest > rest_;
   bool keysChanged_ = false;
   bool trusting_ = true; // a first insertion tells that a reader has no such member
};

} // namespace Detail
} // namespace Vok
