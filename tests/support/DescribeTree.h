// A tree as text, for the comparison of two trees.
#pragma once

#include <string>

namespace Vok {
class Entity;
} // namespace Vok

namespace TestSupport {

/// Every attribute and member of a tree as text, one a line, children below their parents: equal
/// trees have equal descriptions. References appear as paths, or as what they lead to outside the
/// tree.
std::string describeTree( const Vok::Entity & root );

} // namespace TestSupport
