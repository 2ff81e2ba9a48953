// The pass over a batch that only checks.
#pragma once

#include "Vok/detail/BatchReader.h"
#include "Vok/detail/NumberIndex.h"

namespace Vok::Detail {

/// Reads every record and every value of a batch and keeps none. Throws NboAttrLog::Exception or
/// Corvo::RangeException for what could not be applied to a replica of this root type. Returns what
/// the batch introduces.
Introduced checkRecords(
      const BatchFrame & frame, const ReadTypes & types, const TypeData & root );

} // namespace Vok::Detail
