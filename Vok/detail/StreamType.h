// What a stream tells of a type at its start, and how both sides number the type's attributes.
#pragma once

#include "Vok/NboAttrLog.h"
#include "Vok/TypeData.h"
#include "Vok/detail/FunctionRef.h"
#include "Vok/detail/Tables.h"
#include "Vok/detail/ValueOps.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

namespace Vok::Detail {

/// Whether an attribute travels: it has state of its own that can change.
bool isStreamed( const AttributeRow & row ) noexcept;

/// Whether an attribute's members are entities.
bool holdsEntities( const AttributeRow & row ) noexcept;

/// A number that tells apart types of different layout in a log: of a value type it follows from
/// the names and types of its fields, of an enumeration from its name alone.
std::uint64_t layoutOf( std::string_view typeName );

/// The same for the keys of a collection, which also tells where they stand: beside the members, or
/// in which field of them. 0 where there are none.
std::uint64_t keyLayoutOf( const AttributeRow & row );

/// Whether nothing was ever put into a collection: each is one pointer, null until then.
inline bool neverFilled( const void * collection ) noexcept
{
   return *static_cast< const void * const * >( collection ) == nullptr;
}

/// What a plain or optional attribute of a fresh entity holds.
OwnedValue defaultOf( const AttributeRow & row );

/// The referred entity of a constructor argument.
const Entity * referred( const Entity & entity, const AttributeRow & row );

/// One attribute as the writer streams it.
struct WrittenRow {
   WrittenRow( const AttributeRow & attribute, std::size_t number );

   const void * storageIn( const Entity & entity ) const noexcept
   {
      return reinterpret_cast< const std::byte * >( &entity ) + offset;
   }

   /// Whether an attribute, at `storage`, is surely at its default, or a collection empty, as its
   /// bytes are. Most are, and found so without a call.
   bool sameBytes( const void * storage ) const noexcept
   {
      switch ( width ) {
      case 1:
         return std::memcmp( storage, bytes, 1 ) == 0;
      case 2:
         return std::memcmp( storage, bytes, 2 ) == 0;
      case 4:
         return std::memcmp( storage, bytes, 4 ) == 0;
      case 8:
         return std::memcmp( storage, bytes, 8 ) == 0;
      case 16:
         return std::memcmp( storage, bytes, 16 ) == 0;
      default:
         return false;
      }
   }

   const AttributeRow * row;
   std::uint32_t offset; ///< of the storage in an entity
   std::uint16_t index; ///< in the type's table
   std::uint8_t width = 0; ///< how many bytes the default has, where they are few; else 0
   std::byte bytes[ 16 ] = {};
   std::optional< OwnedValue > initial;
};

/// One type as every writer of this process streams it.
class WrittenType {
 public:
   explicit WrittenType( const TypeData & type );

   const TypeData * type;
   std::vector< const AttributeRow * > arguments;
   std::vector< WrittenRow > rows;

   /// Under which number an attribute stands in records of this type: 0 ends one.
   std::uint64_t numberOf( const WrittenRow & row ) const noexcept
   {
      return static_cast< std::uint64_t >( &row - rows.data() ) + 1;
   }

   /// Describes the type. `typeIndex` gives the number of a type in the stream.
   void describe( NboAttrLog::Out & out,
         FunctionRef< std::uint64_t( const TypeData & ) > typeIndex ) const;

 private:
   void describeArguments();
   void describeRow( const WrittenRow & written );

   /// The description, but for the numbers of the types of children, which each stream has its own
   /// of: they stand where `members_` say.
   struct Member {
      std::size_t at;
      const TypeData * type;
   };
   NboAttrLog::Out description_;
   std::vector< Member > members_;
};

/// What is known of a type, found out when it is first asked for. It never ends. Any thread may
/// ask. Throws std::bad_alloc.
const WrittenType & writtenType( const TypeData & type );

} // namespace Vok::Detail
