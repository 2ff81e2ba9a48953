// Trees of every root type, and what is done with trees in these tests.
#pragma once

#include "tests/support/Random.h"
#include "tests/support/RandomEntity.h"

#include "Vok/Vok.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

using EntityPtr = Corvo::Ptr< Vok::Entity >;

/// The types that stand at the root of a tree: those of the data model that are nobody's children
/// and need nothing but a name.
std::vector< std::string > rootTypes();

/// A new tree.
EntityPtr newTree( std::string_view type );

/// A tree that a seed fixes. What it refers to is in it.
EntityPtr randomTree( std::string_view type, std::uint64_t seed, unsigned changes );

/// A new tree with the content of another one.
EntityPtr copyOf( const Vok::Entity & root );

/// Makes a tree like another one, by a stream of changes.
void becomeLike( Vok::Entity & root, const Vok::Entity & wanted );

/// The problems of a document for a tree, a line each; empty where there is none. The tree is then
/// changed.
std::string loaded( std::string_view text, Vok::Entity & root, bool replace = false );
