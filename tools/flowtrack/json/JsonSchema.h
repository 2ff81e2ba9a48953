// The JSON form of a type as JSON Schema.
#pragma once

#include "Vok/Vok.h"
#include "tools/flowtrack/json/Json.h"

namespace FlowtrackJson {

/// A schema (draft 2020-12) of the documents that `load` takes for a new tree of this type, and of
/// what `toJson` writes. What a schema cannot say is left to `load`: that paths lead somewhere,
/// that keys of arrays differ.
Json jsonSchema( const Vok::TypeData & type );

} // namespace FlowtrackJson
