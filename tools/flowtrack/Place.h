// Where something is: a mount, an entity in its tree, an attribute, a member.
#pragma once

#include "Vok/Vok.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Flowtrack {

/// What PATH says. See Context.
struct Place {
   /// `ofFile`: there is no mount. Throws CommandError.
   static Place parse( const std::string & path, bool ofFile );

   std::string mount; ///< empty in a file
   std::string inTree; ///< in the form of Vok::pathOf
};

/// An attribute, or a member of it: `name`, `name[key]`. The key is a text as the framework prints
/// it.
struct Member {
   /// Throws CommandError.
   static Member parse( const std::string & text );

   std::string attribute;
   std::optional< std::string > key;
};

/// Where NAME or NAME[KEY] ends that a text begins with; 0 where it begins otherwise.
std::size_t memberEnd( std::string_view text );

/// The steps of a place in a tree, as far as they are complete. `rest` is what follows them, with
/// its `/`. Throws CommandError for what cannot begin a place.
struct Steps {
   static Steps parse( std::string_view inTree );

   std::vector< Member > complete;
   std::string rest;
};

/// The entity that steps lead to, or as far as they do: `taken` is how many of them.
struct Reached {
   Corvo::Ptr< Vok::Entity > entity;
   std::size_t taken;
};
Reached follow( const Corvo::Ptr< Vok::Entity > & root, const std::vector< Member > & steps );

/// The entity at a place. Throws CommandError, with a hint.
Corvo::Ptr< Vok::Entity > entityAt(
      const Corvo::Ptr< Vok::Entity > & root, const std::string & inTree );

/// One attribute of a type by name. Throws CommandError, with a hint.
const Vok::AttributeData & attributeOf( const Vok::TypeData & type, const std::string & name );

} // namespace Flowtrack
