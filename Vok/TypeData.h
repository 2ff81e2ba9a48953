// Reflection: Vok::TypeData and Vok::AttributeData, the records of types and of their attributes.
// They are data, laid out when the library is compiled; everything that the library can do with a
// type can be done through its record, without knowing the type at compile time.
#pragma once

#include "Vok/EnumTable.h"
#include "Vok/Export.h"
#include "Vok/Ptr.h"
#include "Vok/Publisher.h"
#include "Vok/String.h"
#include "Vok/Value.h"
#include "Vok/detail/Tables.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace Corvo {
class ModuleInspectData;
} // namespace Corvo

namespace Vok {

class Entity;

/// A list of texts, as arguments are given: a span, a vector or a braced list.
class TextList {
 public:
   TextList() noexcept = default;
   TextList( std::initializer_list< Corvo::String > texts ) noexcept
         : texts_( texts.begin(), texts.size() )
   {
   }
   TextList( std::span< const Corvo::String > texts ) noexcept : texts_( texts ) {}
   TextList( const std::vector< Corvo::String > & texts ) noexcept : texts_( texts ) {}

   std::size_t size() const noexcept { return texts_.size(); }
   const Corvo::String & operator[]( std::size_t i ) const noexcept { return texts_[ i ]; }
   std::span< const Corvo::String > span() const noexcept { return texts_; }

 private:
   std::span< const Corvo::String > texts_;
};

/// One attribute of an entity type, field of a value type, or member of a constants type.
///
/// Texts of values are their valueToStrep forms; the name of an entity stands bare. Reading and
/// changing go through the same checks and notifications as the generated accessors and mutators.
/// A call that does not fit the attribute's kind throws std::invalid_argument.
class VOK_EXPORT AttributeData {
 public:
   constexpr AttributeData( const Detail::AttributeRow & row ) noexcept : row_( row ) {}

   AttrId id() const noexcept { return row_.id; }
   constexpr std::string_view name() const noexcept { return row_.name; }
   std::string_view documentation() const noexcept { return row_.documentation; }
   constexpr AttributeKind kind() const noexcept { return row_.kind; }

   /// Of a collection: its members stand in the order of their keys.
   bool ordered() const noexcept { return row_.ordered; }

   /// The field or attribute of the member that is its key; empty for an external key.
   std::string_view keyField() const noexcept { return row_.keyField; }

   /// Whether a mutator exists.
   bool settable() const noexcept { return row_.settable; }

   /// Of the value or the child: a full type name, or bool, u8, u16, u32, u64, double,
   /// Corvo::String; of a set its element's, of an optional the value's; empty of a function.
   std::string_view typeName() const noexcept { return row_.typeName; }

   /// Of a collection's key, of a set its element's; empty for others.
   std::string_view keyTypeName() const noexcept { return row_.keyTypeName; }

   /// As texts, empty where there is none.
   std::string_view defaultText() const noexcept { return row_.defaultText; }
   std::string_view lowerText() const noexcept { return row_.lowerText; }
   std::string_view upperText() const noexcept { return row_.upperText; }

   /// The value as text; for an optional without value the empty text; for a reference the path
   /// of what it refers to from the root, and the empty text where it is not in the tree.
   Corvo::String get( const Entity & entity ) const;

   /// Parses, checks and stores through the mutator; the empty text unsets an optional.
   void set( Entity & entity, std::string_view text ) const;

   /// Calls a function attribute; its result as text, empty where it has none. Throws
   /// Corvo::ConstructorArgsException where the number of arguments does not fit.
   Corvo::String call( Entity & entity, TextList args = {} ) const;

   /// The keys of a collection, in order for ordered ones.
   std::vector< Corvo::String > keys( const Entity & entity ) const;

   /// Calls f( key, value ) for every member of a map or set; of a set both are the element.
   void each( const Entity & entity,
         const std::function< void( std::string_view, std::string_view ) > & f ) const;

   /// The member's value; throws std::out_of_range where there is none.
   Corvo::String member( const Entity & entity, std::string_view keyText ) const;

   /// Inserts or replaces; a set takes its element as the key and ignores the value.
   void memberIs( Entity & entity, std::string_view keyText, std::string_view valueText ) const;

   /// The same with a value that has no text.
   Value memberValue( const Entity & entity, std::string_view keyText ) const;
   void memberValueIs( Entity & entity, std::string_view keyText, const Value & value ) const;

   /// Deletes; silent where there is none. Of a single child the key is ignored.
   void memberDel( Entity & entity, std::string_view keyText ) const;

   /// The child, or null; the key is ignored for a single child. A referred entity too.
   Corvo::Ptr< Entity > child( const Entity & entity, std::string_view keyText ) const;

   /// Creates or returns the child. `args` are its constructor arguments without the key; a
   /// single child that has a name takes it there. A reference among them is a path from the root
   /// of `entity`.
   Corvo::Ptr< Entity > childIs(
         Entity & entity, std::string_view keyText, TextList args = {} ) const;

   /// The row itself, for the framework.
   const Detail::AttributeRow & row() const noexcept { return row_; }

 private:
   Detail::AttributeRow row_;
};

/// One type: value type, enumeration, constants type or entity type.
///
/// A call that does not fit the kind (a value of an entity type, an entity of a value type) throws
/// std::invalid_argument, except where another exception is named.
class VOK_EXPORT TypeData {
 public:
   constexpr TypeData( const Detail::TypeRow & row ) noexcept : row_( row ) {}

   /// The full name, such as `FlowTracking::Config`.
   std::string_view name() const noexcept { return row_.name; }
   std::string_view documentation() const noexcept { return row_.documentation; }
   TypeKind kind() const noexcept { return row_.kind; }
   const Corvo::ModuleInspectData & module() const;

   /// In declared order, the base's first.
   std::span< const AttributeData > attributes() const noexcept;

   /// One attribute by name, or null.
   const AttributeData * attribute( std::string_view name ) const noexcept;

   /// The record of the entity type that this one derives from, or null.
   const TypeData * base() const { return row_.base ? &row_.base() : nullptr; }

   /// What the constructor takes, in order; `nameString` first where the type has it.
   std::span< const AttributeData > constructorArguments() const noexcept;

   /// Codes and names in declared order; empty for what is not an enumeration.
   std::vector< std::pair< std::uint32_t, std::string_view > > enumerators() const;
   std::string_view enumeratorDocumentation( std::uint32_t code ) const noexcept;

   /// A new entity. `name` is the identity as `Entity::name()` gives it, bare, and ignored where
   /// there is none; `args` are the further constructor arguments. Throws
   /// Corvo::ConstructorArgsException for a wrong number of arguments, or a reference among them.
   Corvo::Ptr< Entity > instantiate( std::string_view name, TextList args = {} ) const;

   /// A new value from the fields' texts, in constructor order, or the default value for none.
   Value make( TextList args = {} ) const;

   /// `std::hash` of a value; throws Corvo::NotHashableException for a type without one.
   std::size_t hash( const void * value ) const;
   bool isEq( const void * a, const void * b ) const;

   /// The text of a value.
   Corvo::String valueToStrep( const void * value ) const;

   /// Reads a text into an existing value, which a bad text leaves as it was. Throws
   /// Corvo::ParseException for a type without text constructor.
   void strepToValue( CharRange & range, void * value ) const;

   /// One field of a value as text, single flags of a bit set included; constants may be read
   /// with a null pointer. An unknown field throws std::out_of_range.
   Corvo::String fieldGet( const void * value, std::string_view name ) const;

   /// Parses, checks as the field's mutator does, and stores.
   void fieldSet( void * value, std::string_view name, std::string_view text ) const;

   /// Members of a collection inside a value.
   std::vector< Corvo::String > fieldKeys( const void * value, std::string_view name ) const;
   Corvo::String fieldMember(
         const void * value, std::string_view name, std::string_view keyText ) const;
   void fieldMemberIs( void * value, std::string_view name, std::string_view keyText,
         std::string_view valueText ) const;
   void fieldMemberDel( void * value, std::string_view name, std::string_view keyText ) const;

   /// The row itself, for the framework.
   const Detail::TypeRow & row() const noexcept { return row_; }

 private:
   const Detail::ValueOps & values() const;
   const AttributeData & field( std::string_view name ) const;
   const Detail::AttributeRow & collection( std::string_view name ) const;

   Detail::TypeRow row_;
};

} // namespace Vok
