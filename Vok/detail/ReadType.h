// A type as a stream describes it, held against the reader's own.
#pragma once

#include "Vok/NboAttrLog.h"
#include "Vok/String.h"
#include "Vok/TypeData.h"
#include "Vok/detail/Tables.h"
#include "Vok/detail/ValueOps.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace Vok::Detail {

/// One attribute that the writer streams.
struct ReadRow {
   Corvo::String name;
   const AttributeRow * own = nullptr; ///< null: this side does not know it
   std::optional< OwnedValue >
         initial; ///< what a fresh entity of the writer holds; of known ones without members
   bool initialIsOwn = false; ///< a fresh entity of this side surely holds it
   bool isText = false; ///< a known one, stored as a Corvo::String
   AttributeKind kind = AttributeKind::plain;
   std::uint32_t fixedSize = 0;
   std::uint32_t memberType = 0; ///< of children: the number of their type in the stream, plus 1

   bool isCollection() const noexcept
   {
      using enum AttributeKind;
      return isOneOf< map, set, children, child, references >();
   }
   bool hasEntities() const noexcept
   {
      using enum AttributeKind;
      return isOneOf< children, child, references >();
   }
   bool hasChildren() const noexcept
   {
      using enum AttributeKind;
      return isOneOf< children, child >();
   }

 private:
   template< AttributeKind... kinds > bool isOneOf() const noexcept
   {
      constexpr unsigned mask = ( ( 1U << static_cast< unsigned >( kinds ) ) | ... );
      return ( mask >> static_cast< unsigned >( kind ) & 1 ) != 0;
   }
};

struct ReadArgument {
   const AttributeRow * own = nullptr;
   bool reference = false;
   bool isName = false; ///< the name, as a text
};

/// One type of the stream. A type that this side lacks has no record, and neither have its
/// arguments.
struct ReadType {
   Corvo::String name;
   const TypeData * own = nullptr;
   std::vector< ReadArgument > arguments;
   std::vector< ReadRow > rows;
   /// Rows of which a fresh entity of this side may hold something else than one of the writer.
   std::vector< std::uint32_t > otherDefaults;
   bool hasEntities = false; ///< one of the rows has
   bool refers = false; ///< one of the arguments is a reference
};

using ReadTypes = std::vector< std::shared_ptr< const ReadType > >;

/// Reads the descriptions that a batch carries. Returns the types that are known from it on: those
/// before, and behind them the described ones; none where it describes none. Throws
/// NboAttrLog::Exception for what is no description, and for a type whose definition cannot be
/// reconciled with this side's, naming it.
std::optional< ReadTypes > readTypes( NboAttrLog::In & in, const ReadTypes & before );

} // namespace Vok::Detail
