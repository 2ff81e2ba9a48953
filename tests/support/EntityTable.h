// The attributes of an entity type as the table of a manual, and the check that the type is as its
// table says. A table is typed by hand, never made from a definition file.
#pragma once

#include "Vok/Vok.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TestSupport {

/// What an attribute is. Made by the functions below, which read as the types of a manual do.
struct Form {
   Vok::AttributeKind kind;
   std::string_view type;
   std::string_view keyType;
   std::string_view keyField;
   bool settable = true;
   bool constructed = false; ///< a child that is there from the start
   bool ordered = false; ///< a collection in the order of its keys
};

Form plain( std::string_view type );
Form optional( std::string_view type );
Form constant( std::string_view type );
Form derived( std::string_view type );
Form argument( std::string_view type );
Form settableArgument( std::string_view type );
Form set( std::string_view type );
Form map( std::string_view keyType, std::string_view type );
Form mapBy( std::string_view field, std::string_view keyType, std::string_view type );
Form children( std::string_view type, std::string_view field = "name",
      std::string_view keyType = "Corvo::String" );
Form child( std::string_view type );
Form constructedChild( std::string_view type );
Form references( std::string_view type, std::string_view field = "name",
      std::string_view keyType = "Corvo::String" );
Form function();
Form ordered( Form collection );

/// Bounds that the mutator of a number checks, and what it says of a number beyond them.
struct SetBounds {
   std::uint64_t lower;
   std::uint64_t upper;
   std::string_view message;
};

std::vector< SetBounds > within(
      std::uint64_t lower, std::uint64_t upper, std::string_view message );

/// One attribute. Values are texts; what is not used stays empty.
struct AttributeRow {
   Vok::AttrId id;
   std::string_view name;
   Form form;
   /// The default. Of a constructor argument: what the entity of the test is made with; of one that
   /// refers to an entity, its path. Of a derived attribute: what a fresh entity gives.
   std::string_view preset = {};
   /// Another value, for the notification. Of a collection: a key.
   std::string_view other = {};
   /// Of a map: two values for the key, or none where they have no text. Of children: the arguments
   /// besides the key; among them may be a path to the member of an earlier row. Of a child: its
   /// arguments.
   std::vector< Corvo::String > more = {};
   std::vector< SetBounds > bounds = {}; ///< one or none
};

/// One entity type.
struct EntityTable {
   std::string_view type; ///< its full name
   /// `nameString`, which stands as attribute 154 before the table's own; or the argument that is
   /// the identity under another name; or nothing.
   std::string_view identity;
   std::vector< AttributeRow > attributes; ///< all in declared order, a base's first
};

/// Checks every row of a table, with the records of reflection, with a fresh entity, and with one
/// change after another: each is heard once, with id, key and old value; an equal value is silent.
/// Of references only deletions are: reflection makes none.
void expectEntity( const EntityTable & table );

/// The same with an entity that its table cannot make, because an argument refers to another.
void expectEntity( Vok::Entity & fresh, const EntityTable & table );

/// The ids that a type's constants give, in declared order, are the numbers from 258 on.
void expectConsecutive( const std::vector< Vok::AttrId > & ids );

/// The changes of one row alone, on an entity that is as new as far as that row goes.
void expectChanges( Vok::Entity & entity, const AttributeRow & row );

/// Gives the attribute of a row, if it can have one, its other value, or the collection the member
/// of the row.
void setOther( Vok::Entity & entity, const AttributeRow & row );

/// The same with every row of a table; references are left alone.
void setAll( Vok::Entity & entity, const EntityTable & table );

/// A fresh entity, made with the constructor arguments of its table.
Corvo::Ptr< Vok::Entity > entityOf( const EntityTable & table );

} // namespace TestSupport
