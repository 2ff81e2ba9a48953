// The rows that reflection tables are made of. Generated code fills them in with designated
// initialisers, the framework loops over them.
#pragma once

#include "Vok/EnumTable.h"
#include "Vok/Export.h"
#include "Vok/Ptr.h"
#include "Vok/String.h"
#include "Vok/detail/ValueOps.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>

namespace Corvo {
class ModuleInspectData;
} // namespace Corvo

namespace Vok {

class AttributeData;
class Entity;
class TypeData;
using AttrId = std::uint32_t;

/// What an attribute is.
enum class AttributeKind : std::uint8_t {
   plain,
   optional,
   constant,
   constructorArgument,
   derived,
   function,
   map,
   set,
   children,
   child,
   references
};

/// What a type is.
enum class TypeKind : std::uint8_t {
   value,
   enumeration,
   constants,
   entity
};

/// The name of a kind.
VOK_EXPORT const char * stringValue( AttributeKind kind );
VOK_EXPORT const char * stringValue( TypeKind kind );

/// Where the name of an entity comes from.
enum class IdentityKind : std::uint8_t {
   none,
   name, ///< constructor argument `name`
   argument ///< a constructor argument of another name
};

namespace Detail {

struct CollectionOps;

/// An array of static rows.
template< class T > struct Rows {
   const T * first = nullptr;
   std::size_t count = 0;

   constexpr Rows() noexcept = default;
   template< std::size_t n > constexpr Rows( const T ( &rows )[ n ] ) noexcept
         : first( rows ),
           count( n )
   {
   }

   const T * begin() const noexcept { return first; }
   const T * end() const noexcept { return first + count; }
};

/// A number of an attribute's name, for tables of names. Five characters and the length tell the
/// names of one type apart nearly always; they are read at once, whatever the length.
constexpr std::uint32_t nameHash( std::string_view name ) noexcept
{
   const std::size_t size = name.size();
   const auto at = [ name ]( std::size_t i ) { return static_cast< std::uint8_t >( name[ i ] ); };
   if ( size == 0 ) {
      return 0;
   }
   const std::uint32_t sum = static_cast< std::uint32_t >( size ) * 0x9e3779b1U +
         at( 0 ) * 0x85ebca77U + at( size / 4 ) * 0xc2b2ae3dU + at( size / 2 ) * 0x27d4eb2fU +
         at( size / 4 * 3 ) * 0x165667b1U + at( size - 1 ) * 0xd3a2646dU;
   return sum >> 16;
}

/// The rows of a type's attributes, and what is known of them when they are compiled: which row has
/// which name, and whether one is of children. The names are a hash table of 2^n places, each of
/// which has the number of a row or `none`; what finds its place taken stands in the next free one.
struct AttributeTable : Rows< AttributeData > {
   static constexpr std::uint16_t none = 65535;

   const std::uint16_t * places = nullptr;
   std::uint32_t lastPlace = 0;
   bool owns = false;
};

template< class T, std::size_t count > constexpr auto placesOfNames( const T ( &rows )[ count ] )
{
   static_assert( count < AttributeTable::none );
   std::array< std::uint16_t, std::bit_ceil( 2 * count ) > places{};
   places.fill( AttributeTable::none );
   for ( std::size_t i = 0; i != count; ++i ) {
      std::size_t place = nameHash( rows[ i ].name() ) % places.size();
      while ( places[ place ] != AttributeTable::none ) {
         place = ( place + 1 ) % places.size();
      }
      places[ place ] = static_cast< std::uint16_t >( i );
   }
   return places;
}

template< const auto & rows > inline constexpr auto placesIn = placesOfNames( rows );

/// The table of `rows`, which is an array of static rows.
template< const auto & rows > constexpr AttributeTable tableOf() noexcept
{
   const bool owns = std::any_of( std::begin( rows ), std::end( rows ), []( const auto & row ) {
      return row.kind() == AttributeKind::children || row.kind() == AttributeKind::child;
   } );
   return { Rows< AttributeData >( rows ), placesIn< rows >.data(),
      static_cast< std::uint32_t >( placesIn< rows >.size() - 1 ), owns };
}

/// How an optional that is stored in one word is read and written as an `Optional< V >`.
struct StorageOps {
   void ( *load )( const void * storage, void * into );
   void ( *store )( void * storage, const void * from );
};

/// A function that calls a member function of an entity with arguments given as texts.
using Call = Corvo::String ( * )( Entity & entity, std::span< const Corvo::String > args );

struct AttributeRow {
   AttrId id = 0;
   std::string_view name = {};
   std::string_view documentation = {};
   AttributeKind kind = AttributeKind::plain;
   bool ordered = false;
   bool settable = false;
   bool identity = false; ///< a constructor argument that gives the entity its name
   bool reference = false; ///< a constructor argument `Corvo::Ptr< const T >`
   std::string_view typeName = {};
   std::string_view keyTypeName = {};
   std::string_view keyField = {};
   std::string_view defaultText = {};
   std::string_view lowerText = {};
   std::string_view upperText = {};
   std::uint32_t offset = 0; ///< of the storage in the object
   std::uint64_t mask = 0; ///< of a flag: its bit in the word at `offset`
   std::uint8_t maskWidth = 0; ///< of a flag: bytes of that word
   const ValueOps * value = nullptr;
   const ValueOps * key = nullptr;
   void ( *check )( const void * value ) = nullptr; ///< the mutator's check of bounds
   const StorageOps * storage = nullptr; ///< null where storage and value are the same type
   const CollectionOps * collection = nullptr;
   Call call = nullptr;
   void ( *fromName )(
         std::string_view name, void * into ) = nullptr; ///< identity from its bare text
};

/// How entities of one type are made at run time. Each argument is the address of a value; for a
/// reference it is the entity itself, which has to be of the type that the argument names.
struct EntityMaker {
   Corvo::Ptr< Entity > ( *make )( const void * const * args );
   void ( *reinstantiate )( Entity & entity, const void * const * args );
};

/// How many entities of one type exist.
using LiveCount = std::atomic< std::size_t >;

struct TypeRow {
   std::string_view name = {};
   std::string_view documentation = {};
   TypeKind kind = TypeKind::value;
   const Corvo::ModuleInspectData & ( *module )() noexcept = nullptr;
   AttributeTable attributes = {};
   Rows< Enumerator > enumerators = {};
   std::uint32_t argumentCount = 0; ///< how many leading attributes the constructor takes
   IdentityKind identity = IdentityKind::none;
   const TypeData & ( *base )() noexcept = nullptr;
   const ValueOps * value = nullptr;
   const EntityMaker * make = nullptr;
   LiveCount * live = nullptr;
   std::string_view notext = {}; ///< of a value type without text constructor: what it says
};

} // namespace Detail
} // namespace Vok
