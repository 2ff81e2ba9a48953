// The rows that reflection tables are made of. Generated code fills them in with designated
// initialisers, the framework loops over them.
#pragma once

#include "Vok/EnumTable.h"
#include "Vok/Export.h"
#include "Vok/Ptr.h"
#include "Vok/String.h"
#include "Vok/detail/ValueOps.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
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
   Rows< AttributeData > attributes = {};
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
