// What headers that vokgen writes include of the framework.
#pragma once

#include "Vok/Attribute.h"
#include "Vok/AttributeChildren.h"
#include "Vok/AttributeMap.h"
#include "Vok/Collection.h"
#include "Vok/CollectionValue.h"
#include "Vok/Entity.h"
#include "Vok/EnumTable.h"
#include "Vok/Exceptions.h"
#include "Vok/Export.h"
#include "Vok/FlowOut.h"
#include "Vok/HSet.h"
#include "Vok/HashMap2018.h"
#include "Vok/MapNodes.h"
#include "Vok/ModuleInspectData.h"
#include "Vok/NboAttrLog.h"
#include "Vok/Optional.h"
#include "Vok/OrderedMap.h"
#include "Vok/Ptr.h"
#include "Vok/Strep.h"
#include "Vok/String.h"
#include "Vok/Time.h"
#include "Vok/TypeData.h"
#include "Vok/ValueType.h"
#include "Vok/View.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <ostream>
#include <string_view>
#include <tuple>
#include <utility>

namespace Vok {

/// Counted up whenever generated code has to be generated anew.
inline constexpr int generatedVersion = 1;

} // namespace Vok
