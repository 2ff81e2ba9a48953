// Attributes and fields by their rows: the steps that reflection of values and of entities share.
#pragma once

#include "Vok/TypeData.h"
#include "Vok/detail/Tables.h"
#include "Vok/detail/ValueOps.h"

#include <deque>
#include <string_view>
#include <vector>

namespace Vok::Detail {

/// A value from the whole of a text. Throws as Corvo::strepToValue does.
OwnedValue fromText( const ValueOps & ops, std::string_view text );

/// The value of a field or attribute that has storage of its own, as text; flags and words
/// unpacked.
Corvo::String valueText( const void * object, const AttributeRow & row );

/// Parses, checks and stores; tells nobody.
void setField( void * object, const AttributeRow & row, std::string_view text );

/// Fills the fields of a default value from texts, in constructor order.
void valueFromFields( const TypeData & type, TextList args, OwnedValue & value );

/// Whether the attribute has a mutator that takes its value.
inline bool isSettable( const AttributeRow & row ) noexcept
{
   return row.settable && !row.collection && row.kind != AttributeKind::constant;
}

/// Throws std::invalid_argument where the attribute is not settable, or is no map or set.
void needSettable( const TypeData & type, const AttributeRow & row );
void needCollection( const AttributeRow & row );

/// Throws std::invalid_argument where a member's key is read out of its value and is another.
void checkMemberKey( const AttributeRow & row, const void * key, const void * value );

/// The keys in order for an ordered collection, else in the order of their texts.
std::vector< Corvo::String > keyTexts( const void * collection, const AttributeRow & row );
Corvo::String memberText(
      const void * collection, const AttributeRow & row, std::string_view keyText );
void memberPut( Entity * owner, void * collection, const AttributeRow & row,
      std::string_view keyText, std::string_view valueText );

/// The constructor arguments of an entity type, gathered from texts and values.
class EntityArguments {
 public:
   explicit EntityArguments( const TypeData & type );

   /// The identity, bare; ignored where the type has none.
   void nameIs( std::string_view name );

   /// The argument that is the key of a collection: "name" for a plain name.
   void keyIs( std::string_view argument, const void * key );

   /// Those that are not given yet, in order. References are paths from `root`; without a root
   /// they are refused.
   void textsAre( TextList texts, Entity * root );

   /// The addresses, as EntityMaker takes them.
   const void * const * data() const noexcept { return addresses_.data(); }

 private:
   const void * reference( const AttributeRow & row, std::string_view path, Entity * root ) const;

   const TypeData & type_;
   std::deque< OwnedValue > values_;
   std::vector< const void * > addresses_;
   std::vector< bool > given_;
};

} // namespace Vok::Detail
