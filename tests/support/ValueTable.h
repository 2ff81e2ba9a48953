// The fields of a value type, or the members of a constants type, as the table of a manual, and the
// check that the type is as its table says.
#pragma once

#include "tests/support/EntityTable.h"

#include <string_view>
#include <vector>

namespace TestSupport {

/// One value type. A row's `preset` is its default, `other` another value of the field; `bounds`
/// with an empty message are not checked. Constants are rows too.
struct ValueTable {
   std::string_view type; ///< its full name
   std::vector< AttributeRow > fields; ///< in declared order
   bool hashable = true;
};

/// Checks every row with the records of reflection, and every field that can be set: on a default
/// value, to another value and back, which makes it another value and the same again.
void expectValue( const ValueTable & table );

/// The same for a type that has constants and functions only.
void expectConstants( const ValueTable & table );

/// Each flag, from bit 0 of the field `value` on, is its bit, read and written without another's.
void expectFlags( std::string_view type, const std::vector< std::string_view > & flags );

/// That the record of one attribute is as its row says.
void expectRecord( const Vok::AttributeData & record, const AttributeRow & row );

} // namespace TestSupport
