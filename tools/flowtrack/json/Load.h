// What a document says, done to a tree.
#pragma once

#include "Vok/Vok.h"
#include "tools/flowtrack/json/Document.h"

#include <cstdint>

namespace FlowtrackJson {

enum class How : std::uint8_t {
   merge, ///< what the document does not name stays
   replace ///< it becomes as in a new entity
};

/// Changes an entity and what is below it. Throws DocumentError with all that is wrong; the entity
/// may then be changed in part: whoever keeps it works on a copy.
///
/// What only its constructor can give an entity is taken from the document when it is made; where
/// it differs later, the entity is made anew.
void load( const Document & document, Vok::Entity & entity, How how = How::merge );

} // namespace FlowtrackJson
