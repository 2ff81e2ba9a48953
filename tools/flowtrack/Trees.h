// Whole trees: copies, and making one like another.
#pragma once

#include "Vok/Vok.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Flowtrack {

/// The record of an entity type, by its full name. Throws CommandError.
const Vok::TypeData & entityType( const std::string & name );

/// A new tree with the content of another one: the same type and root's name.
Corvo::Ptr< Vok::Entity > copyOf( const Corvo::Ptr< Vok::Entity > & root );

/// Makes a tree like another one of its type. Its notifiees hear the differences.
void becomeLike(
      const Corvo::Ptr< Vok::Entity > & root, const Corvo::Ptr< Vok::Entity > & wanted );

/// The keys of a collection: in order for an ordered one; else so that Ethernet9 stands before
/// Ethernet10.
std::vector< std::string > keysOf(
      const Vok::Entity & entity, const Vok::AttributeData & attribute );

/// Whether an attribute is one value, which may be unset.
bool isSingle( const Vok::AttributeData & attribute );

/// Whether it has members under keys.
bool isCollection( const Vok::AttributeData & attribute );

/// Whether it holds entities that are its owner's.
bool isChild( const Vok::AttributeData & attribute );

/// Whether it is one value that the tree shows elsewhere: the name, or the key in the parent.
bool isKeyField( const Vok::Entity & entity, const Vok::AttributeData & attribute );

/// The value of an attribute or of a member as text: of a child and of a set's element the empty
/// text, of a reference its place. None where there is no such member.
std::optional< std::string > valueOf( const Vok::Entity & entity,
      const Vok::AttributeData & attribute, const std::string & key );

/// One value of a tree.
struct Item {
   const Vok::Entity & entity;
   const Vok::AttributeData & attribute;
   std::string key; ///< of a member
   std::string value; ///< of a child nothing
   bool isMember; ///< it has a key
   bool isDefault; ///< a new entity has the same, or it follows from other values
};

/// Every value of an entity and of what is below it, with the names and keys that lead there left
/// out, and constants: depth first, attributes in declared order.
void eachItem( const Vok::Entity & top, const std::function< void( const Item & ) > & f );

/// Those of the entity alone.
void eachOwnItem( const Vok::Entity & entity, const std::function< void( const Item & ) > & f );

} // namespace Flowtrack
