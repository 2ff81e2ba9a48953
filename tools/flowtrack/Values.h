// Values from what is typed: a whole text, or some fields of a value that is there.
#pragma once

#include "Vok/Vok.h"

#include <string>
#include <vector>

namespace Flowtrack {

/// Whether all of these are FIELD=VALUE: no text of a value begins so.
bool areFields( const std::vector< std::string > & words );

/// Changes fields of a value. A field is NAME, or NAME[KEY] in a collection. Throws CommandError
/// for an unknown one, and what the framework throws for its value.
void assignFields( Vok::Value & value, const std::vector< std::string > & words );

/// Sets an attribute of one value. Throws CommandError where it has no mutator, else as the
/// framework does.
void setAttribute( Vok::Entity & entity, const Vok::AttributeData & attribute,
      const std::vector< std::string > & words );

/// Sets a member of a map or a set.
void setMember( Vok::Entity & entity, const Vok::AttributeData & attribute,
      const std::string & key, const std::vector< std::string > & words );

} // namespace Flowtrack
