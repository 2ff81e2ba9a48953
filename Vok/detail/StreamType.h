// What a stream tells of a type at its start, and how both sides number the type's attributes.
#pragma once

#include "Vok/Entity.h"
#include "Vok/NboAttrLog.h"
#include "Vok/TypeData.h"
#include "Vok/detail/FunctionRef.h"
#include "Vok/detail/Tables.h"
#include "Vok/detail/ValueOps.h"

#include <bit>
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

/// Whether an argument is an entity's name as it is, and not a value that the name is the text of.
bool isNameText( const AttributeRow & argument ) noexcept;

/// Whether an attribute is a text, of which a record has the bytes and nothing else.
bool isText( const AttributeRow & row ) noexcept;

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

/// One attribute, or one constructor argument, as the writer streams it.
struct WrittenRow {
   /// What a value is, so that the most frequent ones are written without a call.
   enum class Coding : std::uint8_t {
      number, ///< also a truth value and an enumerator
      text,
      other
   };

   WrittenRow( const AttributeRow & attribute, std::size_t inTable, std::size_t inRecords );

   const void * storageIn( const Entity & entity ) const noexcept
   {
      return reinterpret_cast< const std::byte * >( &entity ) + offset;
   }

   /// What is stored, of a number.
   std::uint64_t numberAt( const void * storage ) const noexcept
   {
      const auto read = [ storage ]( auto v ) -> std::uint64_t {
         std::memcpy( &v, storage, sizeof v );
         return v;
      };
      switch ( stored ) {
      case 1:
         return read( std::uint8_t() );
      case 2:
         return read( std::uint16_t() );
      case 4:
         return read( std::uint32_t() );
      default:
         return read( std::uint64_t() );
      }
   }

   const AttributeRow * row;
   std::uint32_t offset; ///< of the storage in an entity
   std::uint16_t index; ///< in the type's table
   std::uint16_t number; ///< under which it stands in records of the type: 0 ends one
   Coding coding = Coding::other;
   std::uint8_t stored = 0; ///< bytes of a number in an entity
   std::uint8_t logged = 0; ///< bytes of a number in a log
   bool isName = false; ///< the argument that is the entity's name
   std::uint64_t initialNumber = 0;
   std::optional< OwnedValue > initial;
};

/// One type as every writer of this process streams it.
class WrittenType {
 public:
   explicit WrittenType( const TypeData & type );

   WrittenType( const WrittenType & ) = delete;
   WrittenType & operator=( const WrittenType & ) = delete;

   const TypeData * type;
   std::vector< WrittenRow > arguments;
   std::vector< WrittenRow > rows;
   bool nameAlone = false; ///< the name is the only argument

   /// Calls `f( row )` for each attribute of an entity, in the order of their numbers, but not for
   /// those that are surely at their defaults, or empty, as their bytes are. Most are.
   template< class F >
   [[gnu::always_inline]] void eachSuspect( const Entity & entity, F && f ) const
   {
      for ( const Part & part : parts_ ) {
         for ( std::uint64_t rest = part.suspects( entity ); rest != 0; rest &= rest - 1 ) {
            f( part.first[ std::countr_zero( rest ) ] );
         }
      }
   }

   /// Describes the type. `typeIndex` gives the number of a type in the stream.
   void describe( NboAttrLog::Out & out,
         FunctionRef< std::uint64_t( const TypeData & ) > typeIndex ) const;

 private:
   /// As many bytes of an entity as a pointer has, at once: those of the attributes `rows` have a
   /// one in `mask`, and are `bytes` where these attributes are at their defaults.
   struct Word {
      std::uint32_t offset = 0;
      std::uint64_t rows = 0;
      std::uintptr_t mask = 0;
      std::uintptr_t bytes = 0;
   };
   static_assert( alignof( Entity ) % sizeof( std::uintptr_t ) == 0, "words end within an entity" );

   /// Up to 64 attributes; each has a bit.
   struct Part {
      const WrittenRow * first = nullptr;
      std::uint64_t always = 0; ///< those whose bytes tell nothing
      std::vector< Word > words;

      std::uint64_t suspects( const Entity & entity ) const noexcept
      {
         std::uint64_t found = always;
         for ( const Word & word : words ) {
            std::uintptr_t now;
            std::memcpy( &now, reinterpret_cast< const std::byte * >( &entity ) + word.offset,
                  sizeof now );
            found |= ( ( now ^ word.bytes ) & word.mask ) != 0 ? word.rows : 0;
         }
         return found;
      }
      void add( std::size_t place );
   };

   void addParts();
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
   std::vector< Part > parts_;
};

/// What is known of a type, found out when it is first asked for. It never ends. Any thread may
/// ask. Throws std::bad_alloc.
const WrittenType & writtenType( const TypeData & type );

} // namespace Vok::Detail
